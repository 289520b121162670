#pragma once
// The window in which the game is played. The game itself is a game::Game,
// the countdown a Countdown, the music a Sound; this window turns the host's
// clicks and keys into their operations and shows what they hold. Its
// handlers keep the names under which their failures are reported:
//   frmTandrel.cpp          start-up, closing, the questions on show
//   frmTandrelGame.cpp      scores, the turn, both tabs (one code, two words)
//   frmTandrelPanel.cpp     the two lists, giving the turn, keyboard paging
//   frmTandrelSettings.cpp  countdown, sound, the configuration file and dialog
//   frmTandrelLinks.cpp     editors, backups, rules, About and web pages
//   frmTandrelBig.cpp       full screen and the audience screen
//   frmTandrelKept.cpp      the game kept as it is played, brought back, undone
//
// The controls keep the names the program has always given them; by prefix,
// clk is a button, txt a text box, lbl a label, cmb a list, opt an option,
// chk a check box. The less obvious ones:
//   SSTab1               the two tabs: 0 match lines, 1 phrases
//   lblName_0, _1        the match line's left and right halves
//   lblPhrase            the phrase shown
//   clkStatusMatch/...Phrase  the status line ("Viewing Match 1 of 6 Matches...")
//   clkRound             the round ("Round 2"), a button used as a label
//   txtPlayer_N          player N's name; txtCounter_N their score (read-only)
//   clkUp_N, clkDown_N   a point up or down for player N
//   txtTimer             the count shown; Timer1 the one-second tick
//   OptTimer_0/_1        Timer On/Off; optSound_0/_1 Sound On/Off
//   chkBuzzer, chkSoundAlwaysOn  hidden switches the settings set
//   cmdUpdateButton      hidden: applies a new countdown length
//   hsc1                 the volume bar
//   rtb1                 (the editors and the rules viewer) their text box
#include "core/Game.h"
#include "files/ConfigFile.h"
#include "files/Journal.h"
#include "files/ShowSettings.h"
#include "shell/frmAudience.h"
#include <QHash>
#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace Ui {
class frmTandrel;
}
class Countdown;
namespace screenfit {
class Design;
}
class QAbstractButton;
class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QRadioButton;
class QShortcut;
class QTimer;
class QToolButton;
class Sound;

class frmTandrel : public QWidget, private game::Table {
    Q_OBJECT
public:
    explicit frmTandrel(QWidget *parent = nullptr);
    ~frmTandrel() override;

    Ui::frmTandrel *ui() const { return m_ui.get(); }
    const game::Game &game() const { return m_game; }
    Countdown &countdown() const { return *m_countdown; }

    // ---- The window ---------------------------------------------------------
    // Start-up: runs once, after the window is made and before it is shown.
    void Form_Load();
    // True once closing has been decided: the program is ending.
    bool isEnding() const { return m_ending; }
    // Set for a second copy of the program: closing then asks nothing.
    bool ExitWithoutPrompt = false;
    // The text through which modal dialogs hand a value back.
    QString Tag;

    // The control arrays, by index.
    std::array<QLineEdit *, 10> txtPlayer{}, txtCounter{};
    std::array<QToolButton *, 10> clkUp{}, clkDown{};
    std::array<QLabel *, 2> lblName{};
    std::array<QRadioButton *, 2> OptTimer{}, optSound{};

    // Selects an option as the program does: its handler runs even when the
    // option was already selected.
    static void selectOption(QRadioButton *option);

    static constexpr QRgb HighlightColour = qRgb(255, 224, 192);
    static constexpr QRgb PlainColour = qRgb(201, 207, 214);
    QRgb rowColour(int row) const { return m_rowColour[size_t(row)]; }

    // ---- Scores, turn and both tabs ----------------------------------------
    void clkUp_Click(qint16 index);
    void clkDown_Click(qint16 index);
    void ChangePlayer(game::Direction direction);

    void clkStart_Click();
    void clkNext_Click();
    void clkPrev_Click();
    void clkExit_Click();
    void clkStartPhrase_Click();
    void clkNextPhrase_Click();
    void clkPrevPhrase_Click();
    void clkExitPhrase_Click();

    // ---- The player panel and the keyboard ---------------------------------
    void cmbNumPlayers_Click();
    void cmbNumPlayers_KeyDown(qint16 keyCode, int shift);
    void cmbScoreToWin_Click();
    void cmbScoreToWin_KeyDown(qint16 keyCode, int shift);
    void txtPlayer_DblClick(qint16 index);
    void PageUpDown(qint16 &keyCode);
    // The key codes the game knows, numbered as the program always has.
    enum KeyCode : qint16 { KeyPageUp = 33, KeyPageDown = 34, KeyEnd = 35, KeyHome = 36, KeyLeft = 37, KeyUp = 38, KeyRight = 39, KeyDown = 40 };
    static qint16 keyCodeOf(int qtKey);

    // ---- Countdown, sound and settings -------------------------------------
    void CheckTimer();
    void Timer1_Timer();
    void OptTimer_Click(qint16 index);
    void cmdUpdateButton_Click();
    void SSTab1_Click(qint16 previousTab);
    void SSTab1_DblClick();
    void optSound_Click(qint16 index);
    void hsc1_Change();
    void hsc1_Scroll();
    // Applies the configuration file beside the program, line by line.
    void readInConfigFile();
    void clkConfig_Click();
    // F9: the show settings window (sound device, clicker keys), kept for this user.
    void openShowSettings();
    void applyShowSettings(const show::Settings &settings);
    const show::Settings &showSettings() const { return m_show; }

    // ---- Editors, backups, rules, About and web pages ----------------------
    void clkEdit_Click();
    void clkUpdate_Click();
    void clkHowToPlay_Click();
    void clkAbout_Click();
    void clkContact_Click();
    void clkDonate_Click();
    void clkVideo_Click();

    // ---- Shown big ----------------------------------------------------------
    // F11: full screen, the whole design scaled to fill it (maximised, it
    // fills the window the same way); F11 again: back to the design's size.
    void toggleFullScreen();
    // Full screen or maximised: the design scaled to fill the window.
    bool isBig() const { return windowState() & (Qt::WindowFullScreen | Qt::WindowMaximized); }
    static constexpr QSize DesignSize{944, 513};
    // F5: the audience screen opens on another display (on this one when
    // there is no other), or closes; Shift+F5 closes it.
    void toggleAudience();
    void closeAudience();
    bool audienceOpen() const;
    frmAudience *audience() const { return m_audience; }
    // What the room sees now, whether the audience screen is open or not.
    audience::View audienceView() const;

    // ---- The game kept, brought back and undone ------------------------------
    // Ctrl+R: the last game played from this program folder, as it was left.
    void resumeLastGame();
    // Ctrl+Z undoes the last change to the game; Ctrl+Shift+Z redoes it.
    void undoChange();
    void redoChange();
    // What keeps the game as it is played; null when nothing can.
    journal::Writer *journal() const { return m_journal.get(); }
    // The quiet notice on the host's window, while it shows.
    QString notice() const;

protected:
    void closeEvent(QCloseEvent *event) override;  // Form_Unload
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;  // Form_Resize
    void changeEvent(QEvent *event) override;

private:
    // What differs between the two tabs; the code is the same.
    struct TabWords;
    struct Tab {
        const TabWords *words;
        QList<QLabel *> labels;
        QAbstractButton *status, *next, *prev;
    };
    static const TabWords MatchWords, PhraseWords;

    void connectGame();
    void connectPanel();
    void connectSettings();
    void connectLinks();
    void connectBig();
    void connectKept();
    void openJournal();
    void keepGame();
    void showNotice(const QString &text);
    // The whole game shown again, after an undo or a game brought back.
    void paintGame();
    void showRows(int count);
    void closeOtherWindows();
    void setProgramTitle();

    Tab &tabOf(questions::Kind kind) { return m_tabs[size_t(kind)]; }
    void startTab(Tab &tab);
    void nextTab(Tab &tab);
    void prevTab(Tab &tab);
    bool tabShown(int index);

    // ---- The game's table: what its rules ask of this window ---------------
    bool questionFileFound(questions::Kind kind) override;
    bool askStartOver(questions::Kind kind) override;
    std::optional<QStringList> readDeck(questions::Kind kind) override;
    void showReloading(bool reloading) override;
    void showPlayers() override { paintPlayers(); }
    void showQuestion(questions::Kind kind) override;
    void restartCountdown() override { CheckTimer(); }
    game::Answer showEndOfGame(const game::TurnChange &change) override;
    void runStart(questions::Kind kind) override;
    void runNext(questions::Kind kind) override;
    void runChangePlayer(game::Direction direction) override { ChangePlayer(direction); }
    // Shrinks a question's font until the text fits its label.
    static void fitText(QLabel *label);

    // The scores, the row of the turn and the round, as the game holds them.
    void paintPlayers();
    void paintRow(int row, bool current);
    QString roundCaption() const;
    QString statusCaption(const Tab &tab) const;
    // The audience screen, when open, shows the game as it is now.
    void paintAudience();

    std::array<QWidget *, 4> rowWidgets(int row) const;
    bool keyMarksList(qint16 &keyCode);
    // With a clicker that sends arrows, Right and Down page forward, Left and Up back.
    qint16 clickerCode(qint16 keyCode) const;
    bool undoKeyedChange(bool &keyed, bool &restoring, QComboBox *list, const QString &before);
    bool listKeyPress(QObject *list, QKeyEvent *event);
    void applySettings(const config::Choices &choices);

    // Owned: a constructor that fails half-way must not leak the form.
    std::unique_ptr<Ui::frmTandrel> m_ui;
    game::Game m_game;
    std::unique_ptr<Sound> m_sound;
    Countdown *m_countdown = nullptr;
    std::array<Tab, 2> m_tabs{};
    bool m_ending = false;
    int m_lastTab = 1;
    std::array<QRgb, 10> m_rowColour{};
    std::unique_ptr<screenfit::Design> m_design;
    QObject *m_otherWindows = nullptr;  // a screenfit::OtherWindows, a child
    QPoint m_designOffset;
    QRect m_normalGeometry;
    void fitToWindow();
    QPointer<frmAudience> m_audience;
    std::vector<QShortcut *> m_blankKeys;
    // Keys (with the keypad's modifier) a host plays by, and what they do.
    QHash<int, std::function<void()>> m_hostKeys;
    // While the end-of-game dialog is up, the room sees its news.
    const game::TurnChange *m_endShown = nullptr;
    show::Settings m_show;
    bool m_scoreboard = false;  // S: the ranking over the question, until the next one
    // Controls whose keys go to PageUpDown, with the name of their handler.
    QHash<QObject *, QString> m_keyHandlers;
    // The lists' keys are undone: what the list showed before the key.
    bool m_numPlayersKeyed = false, m_numPlayersRestoring = false;
    QString m_numPlayersBefore;
    bool m_scoreToWinKeyed = false, m_scoreToWinRestoring = false;
    qint16 m_scoreToWinBefore = 0;
    std::unique_ptr<journal::Writer> m_journal;
    bool m_keptAny = false;  // this run's game has been written over the last one
    std::optional<journal::Read> m_lastGame;  // the unfinished game found at start-up
    QTimer *m_noticeTimer = nullptr;
};
