#include "shell/frmTandrel.h"
#include "platform/Services.h"
#include "shell/Globals.h"
#include "ui_frmTandrel.h"
#include <QApplication>
#include <QCloseEvent>

using Globals::Guard;
using Globals::Guarded;
using Globals::WriteLogInfo;

frmTandrel::frmTandrel(QWidget *parent)
    : QWidget(parent), m_ui(new Ui::frmTandrel)
{
    m_ui->setupUi(this);
    setFixedSize(944, 513);
    for (int i = 0; i < 10; ++i) {
        txtPlayer[i] = findChild<QLineEdit *>(QStringLiteral("txtPlayer_%1").arg(i));
        txtCounter[i] = findChild<QLineEdit *>(QStringLiteral("txtCounter_%1").arg(i));
        clkUp[i] = findChild<QToolButton *>(QStringLiteral("clkUp_%1").arg(i));
        clkDown[i] = findChild<QToolButton *>(QStringLiteral("clkDown_%1").arg(i));
    }
    lblName = {m_ui->lblName_0, m_ui->lblName_1};
    OptTimer = {m_ui->OptTimer_0, m_ui->OptTimer_1};
    optSound = {m_ui->optSound_0, m_ui->optSound_1};
    for (int i = 0; i < 10; ++i)
        paintRow(i, i == 0);
    platform::registerLoadedWindow(this);
}

frmTandrel::~frmTandrel()
{
    delete m_ui;
}

void frmTandrel::paintRow(int row, bool current)
{
    const QColor c = QColor::fromRgb(current ? HighlightColour : PlainColour);
    const QString css = QStringLiteral("QLineEdit { background-color: %1; color: black; }").arg(c.name());
    txtPlayer[size_t(row)]->setStyleSheet(css);
    txtCounter[size_t(row)]->setStyleSheet(css);
}

void frmTandrel::Form_Load()
{
    Guard guard("Form_Load FrmTandrel");
    guard.logOnly = true;  // start-up goes on whatever fails
    Globals::GuardedSteps(guard, {
        [&] { WriteLogInfo(QStringLiteral("Loading Form ") + objectName()); },
        [&] {
            const QRect screen = platform::app().screenGeometry();
            move(screen.x() + (screen.width() - width()) / 2, screen.y() + (screen.height() - height()) / 2);
        },
        [&] {
            m_ui->cmbScoreToWin->clear();
            m_ui->cmbScoreToWin->addItems({"5", "10", "15", "20", "25", "30"});
            m_ui->cmbScoreToWin->setCurrentText(QStringLiteral("10"));
        },
        [&] { m_ui->clkRound->setText(QStringLiteral("Round 1")); },
        [&] {
            m_ui->cmbNumPlayers->clear();
            m_ui->cmbNumPlayers->addItems({"2", "3", "4", "5", "6", "7", "8", "9", "10"});
            m_ui->cmbNumPlayers->setCurrentText(QStringLiteral("2"));
        },
        [&] { m_ui->SSTab1->setCurrentIndex(0); },
    });
}

void frmTandrel::closeOtherWindows()
{
    for (QWidget *w : platform::loadedWindows())
        if (w->objectName() != objectName())
            w->close();
}

void frmTandrel::closeEvent(QCloseEvent *event)
{
    // Ending the program closes every window once more; by then the
    // question has been answered.
    if (m_ending) {
        event->accept();
        return;
    }
    event->ignore();
    Guarded("Form_Unload frmTandrel", [&] {
        WriteLogInfo(QStringLiteral("Unloading All Forms..."));
        if (ExitWithoutPrompt) {
            closeOtherWindows();
            WriteLogInfo(QStringLiteral("Unloading Final Form Prior to Program Ending..."));
        } else if (platform::msgBox(QStringLiteral("Do you wish to exit Tandrel?"), platform::mb::YesNoCancel,
                                    QStringLiteral("Exit Program?"))
                   == platform::mb::Yes) {
            closeOtherWindows();
        } else {
            return;  // No and Cancel change nothing
        }
        m_ending = true;
        event->accept();
        QCoreApplication::exit(0);
    });
}
