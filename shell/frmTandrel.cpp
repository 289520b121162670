// The main window itself: its making, start-up, closing and the questions'
// fitting; the game's handlers are in the files named in the header.
#include "shell/frmTandrel.h"
#include "shell/ScreenFit.h"
#include "core/Decks.h"
#include "files/Backups.h"
#include "files/ConfigFile.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "timing/Countdown.h"
#include "timing/Sound.h"
#include "ui_frmTandrel.h"
#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <QWindowStateChangeEvent>
#include <QShortcut>

using Globals::Guard;
using Globals::Guarded;
using Globals::WriteLogInfo;

frmTandrel::frmTandrel(QWidget *parent)
    : QWidget(parent), m_ui(new Ui::frmTandrel), m_sound(std::make_unique<Sound>())
{
    m_ui->setupUi(this);
    // The layout is fixed: a larger window leaves every control in its place
    // (only full screen scales them).
    setMinimumSize(DesignSize);
    for (int i = 0; i < 10; ++i) {
        txtPlayer[size_t(i)] = findChild<QLineEdit *>(QStringLiteral("txtPlayer_%1").arg(i));
        txtCounter[size_t(i)] = findChild<QLineEdit *>(QStringLiteral("txtCounter_%1").arg(i));
        clkUp[size_t(i)] = findChild<QToolButton *>(QStringLiteral("clkUp_%1").arg(i));
        clkDown[size_t(i)] = findChild<QToolButton *>(QStringLiteral("clkDown_%1").arg(i));
    }
    lblName = {m_ui->lblName_0, m_ui->lblName_1};
    OptTimer = {m_ui->OptTimer_0, m_ui->OptTimer_1};
    optSound = {m_ui->optSound_0, m_ui->optSound_1};
    // A screen reader hears what a field shows, after what it is.
    const auto nameByText = [](QLineEdit *field, const QString &role) {
        const auto name = [field, role] { field->setAccessibleName(role + QStringLiteral(": ") + field->text()); };
        connect(field, &QLineEdit::textChanged, field, name);
        name();
    };
    nameByText(m_ui->txtTimer, QStringLiteral("Countdown"));
    for (int i = 0; i < 10; ++i) {
        nameByText(txtCounter[size_t(i)], QStringLiteral("Player %1 score").arg(i + 1));
        paintRow(i, i == 0);
    }
    // The match line is set wide, as a display face would be.
    for (QLabel *label : lblName) {
        QFont font = label->font();
        font.setStretch(QFont::Expanded);
        label->setFont(font);
    }
    for (QLabel *label : {lblName[0], lblName[1], m_ui->lblPhrase})
        label->setProperty("designPointSize", label->font().pointSizeF());
    m_tabs = {Tab{&MatchWords, {lblName[0], lblName[1]}, m_ui->clkStatusMatch, m_ui->clkNext, m_ui->clkPrev},
              Tab{&PhraseWords, {m_ui->lblPhrase}, m_ui->clkStatusPhrase, m_ui->clkNextPhrase, m_ui->clkPrevPhrase}};
    m_countdown = new Countdown(*m_sound, this);

    connectGame();
    connectPanel();
    connectSettings();
    connectLinks();
    connectKept();
    // Ctrl+Q ends the program as the close box does, exit question included.
    connect(new QShortcut(QKeySequence::Quit, this), &QShortcut::activated, this, &QWidget::close);
    connectBig();
    platform::registerLoadedWindow(this);
}

frmTandrel::~frmTandrel()
{
    // The controls outlive this window's members while it goes, and a name
    // box losing the focus then still reports it: nothing they say may
    // reach a window half gone.
    for (QObject *control : findChildren<QObject *>())
        QObject::disconnect(control, nullptr, this, nullptr);
}

void frmTandrel::selectOption(QRadioButton *option)
{
    if (option->isChecked())
        Q_EMIT option->toggled(true);
    else
        option->setChecked(true);
}

void frmTandrel::Form_Load()
{
    Guard guard("Form_Load FrmTandrel");
    guard.logOnly = true;  // start-up goes on whatever fails
    Globals::GuardedSteps(guard, {
        [&] { WriteLogInfo(QStringLiteral("Loading Form ") + objectName()); },
        [&] {
            if (!platform::app().previousInstance())
                return;
            const QString exe = platform::app().exeName();
            platform::msgBox(QStringLiteral("The ") + exe + QStringLiteral(" application is already running.  This instance of ")
                                 + exe + QStringLiteral(" will terminate..."),
                             platform::mb::OkOnly, QStringLiteral("Tandrel"));
            ExitWithoutPrompt = true;
            close();
        },
    });
    if (m_ending)
        return;

    bool questionFileFound = false;
    Globals::GuardedSteps(guard, {
        [&] {
            const QRect screen = platform::app().screenGeometry();
            move(screen.x() + (screen.width() - width()) / 2, screen.y() + (screen.height() - height()) / 2);
        },
        [&] {
            m_ui->cmbScoreToWin->addItems({"5", "10", "15", "20", "25", "30"});
            m_ui->cmbScoreToWin->setCurrentText(QStringLiteral("10"));
        },
        [&] { m_ui->clkRound->setText(roundCaption()); },
        [&] {
            m_ui->cmbNumPlayers->addItems({"2", "3", "4", "5", "6", "7", "8", "9", "10"});
            m_ui->cmbNumPlayers->setCurrentText(QStringLiteral("2"));
        },
        [&] { m_ui->SSTab1->setCurrentIndex(0); },
        [&] { m_countdown->takeLengthFromDisplay(); },
        [&] { m_sound->setUp(); },
        [&] {  // what saves cut off by a crash left (the files themselves are whole)
            platform::tidyUnfinishedSaves(platform::programPath(QStringLiteral(".")),
                                          {decks::MatchFileName, decks::PhraseFileName, config::FileName});
            platform::tidyUnfinishedSaves(platform::programPath(backups::FolderName), backups::copyNames());
        },
        [&] {
            if (!platform::fileExists(platform::programPath(QStringLiteral("tandrelPhrases.txt"))))
                return;
            clkStartPhrase_Click();
            m_ui->SSTab1->setCurrentIndex(1);
            questionFileFound = true;
        },
        [&] {
            if (!platform::fileExists(platform::programPath(decks::MatchFileName)))
                return;
            clkStart_Click();
            m_ui->SSTab1->setCurrentIndex(0);
            questionFileFound = true;
        },
        [&] {
            if (!questionFileFound)
                return;
            m_countdown->setLength(30);
            m_countdown->setDisplay(QStringLiteral("30"));
            selectOption(OptTimer[1]);
            selectOption(optSound[1]);
            m_sound->stopMusic();
        },
        [&] { readInConfigFile(); },
        [&] { openJournal(); },
    });
}

void frmTandrel::fitText(QLabel *label)
{
    screenfit::fitText(label, label->property("designPointSize").toReal());
}

void frmTandrel::setProgramTitle()
{
    setWindowTitle(platform::app().exeName());
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
        m_countdown->pause();
        if (m_journal)
            m_journal->flush();  // the last change reaches the disk before the program ends
        event->accept();
        QCoreApplication::exit(0);
    });
}
