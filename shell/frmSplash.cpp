#include "shell/frmSplash.h"
#include "platform/Errors.h"
#include "platform/Services.h"
#include "platform/Globals.h"
#include "shell/Links.h"
#include "shell/Look.h"
#include "shell/frmTandrel.h"
#include "ui_frmSplash.h"
#include <algorithm>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <memory>

using Globals::Guarded;
using Globals::WriteLogInfo;

bool frmSplash::RegistryFilesChecked = false;

frmSplash::frmSplash(QWidget *parent)
    : LoggedWindow(parent, QStringLiteral("Form_UnLoad frmSplash")), m_ui(new Ui::frmSplash)
{
    m_ui->setupUi(this);
    lbl1 = {m_ui->lbl1_0, m_ui->lbl1_1, m_ui->lbl1_2, m_ui->lbl1_3, m_ui->lbl1_4};
    for (QLabel *label : lbl1)
        label->installEventFilter(this);
    m_ui->pb1->setPixmap(QPixmap(QStringLiteral(":/Splash.png")));
    Timer1 = new QTimer(this);
    Timer1->setInterval(1000);
    connect(Timer1, &QTimer::timeout, this, &frmSplash::Timer1_Timer);
    connect(m_ui->clkClose, &QAbstractButton::clicked, this, &frmSplash::clkClose_Click);
}

frmSplash::~frmSplash()
{
    delete m_ui;
}

void frmSplash::Form_Load()
{
    const bool loaded = Guarded("Form_Load frmSplash", [&] {
        const QString version = platform::app().version().text();
        WriteLogInfo(QStringLiteral("Application Name ") + platform::app().exeName()
                     + QStringLiteral(" Software Version ") + version);
        platform::registerLoadedWindow(this);
        WriteLogInfo(QStringLiteral("Loading ") + objectName());
        if (!RegistryFilesChecked) {
            WriteLogInfo(QStringLiteral("Checking For Needed Registry Files"));
            checkRegistryFiles();
            RegistryFilesChecked = true;
        }
        WriteLogInfo(QStringLiteral("Loading Skinner..."));
        look::apply();
        adjustSize();
        const QRect screen = platform::app().screenGeometry();
        move(screen.x() + (screen.width() - width()) / 2, screen.y() + (screen.height() - height()) / 2);
        m_ui->lblVersion->setText(QStringLiteral("Tandrel Software Version ") + version);
        m_ui->Label1->setText(QStringLiteral(
            "Copyright \u00A9 2026 the Tandrel project. Questions, music and pictures are all our own."));
        const QStringList lines = {
            QStringLiteral("Tandrel is free software, made for game nights."),
            QStringLiteral("Write your own questions with the Edit button."),
            QStringLiteral("Share your question files with other hosts."),
            QStringLiteral("Ideas and new questions are always welcome."),
            links::ProjectSite,
        };
        for (int i = 0; i < 5; ++i)
            lbl1[size_t(i)]->setText(lines[i]);
        Timer1->start();
    });
    if (!loaded)
        offerClose();
}

void frmSplash::Timer1_Timer()
{
    Globals::Guard guard("Timer1_Timer");
    guard.shape = [](Globals::Report &report) {
        if (report.number != platform::err::ComponentMissing)
            return;
        report.before = {
            QStringLiteral("The main form appears to be having problems loading..."),
            QStringLiteral("There may be a problem with trying to access the Windows Media Player dll file 'wmp.dll'"),
            QStringLiteral("Please ensure you have the latest version of windows media player installed..."),
            QStringLiteral("Latest version of windows media player can be found at :"),
            links::MediaHelpPage,
            QString(),
        };
    };
    guard.afterReport = [this] { offerClose(); };
    Guarded(guard, [&] {
        Timer1->stop();
        auto main = std::make_unique<frmTandrel>();
        main->setAttribute(Qt::WA_DeleteOnClose);
        frmTandrel *window = main.release();
        window->Form_Load();
        // A second copy of the program has said so and closed its window.
        if (!window->isEnding())
            window->show();
        close();
    });
}

void frmSplash::offerClose()
{
    m_ui->clkClose->setVisible(true);
    m_ui->clkClose->setFocus();
}

void frmSplash::clkClose_Click()
{
    Guarded("clkClose_Click", [&] { close(); });
}

void frmSplash::lbl1_Click()
{
    Guarded("lbl1_Click", [&] { platform::shell().openUrl(links::ProjectSite); });
}

bool frmSplash::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && static_cast<QMouseEvent *>(event)->button() == Qt::LeftButton
        && std::find(lbl1.begin(), lbl1.end(), watched) != lbl1.end()) {
        lbl1_Click();
        return true;
    }
    return LoggedWindow::eventFilter(watched, event);
}

void frmSplash::keyPressEvent(QKeyEvent *event)
{
    // Escape leaves wherever Close is offered: About, or a start that stopped.
    if (event->key() == Qt::Key_Escape && !m_ui->clkClose->isHidden()) {
        clkClose_Click();
        return;
    }
    LoggedWindow::keyPressEvent(event);
}
