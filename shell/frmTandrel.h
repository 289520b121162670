#pragma once
// The window in which the game is played. All game state lives here for the
// whole run; its handlers are written in the folders of their subsystems:
//   core/GameState.cpp    players, scores, turn, rounds, the end of a game
//   core/MatchRound.cpp   the match-line tab
//   core/PhraseRound.cpp  the phrase tab
//   core/PlayerPanel.cpp  the lists, giving the turn, keyboard paging
//   timing/Countdown.cpp  the countdown
//   timing/Sound.cpp      music, buzzer and volume
//   files/ConfigFile.cpp  the configuration file
//   files/frmConfig.cpp   the Config button
//   files/frmEdit.cpp     the Edit button
//   files/Backups.cpp     the backups and the Update button
//   shell/HelpAndLinks.cpp the rules, About and the web pages
//   shell/frmTandrel.cpp  the window itself: start-up and closing
#include <QHash>
#include <QStringList>
#include <QWidget>
#include <array>
#include <memory>

namespace Ui {
class frmTandrel;
}
namespace platform {
class MediaPlayer;
}
class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTimer;
class QToolButton;

class frmTandrel : public QWidget {
    Q_OBJECT
public:
    explicit frmTandrel(QWidget *parent = nullptr);
    ~frmTandrel() override;

    Ui::frmTandrel *ui() const { return m_ui.get(); }

    // ---- The window (shell/frmTandrel.cpp) --------------------------------
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
    void selectOption(QRadioButton *option);

    // ---- Players, scores, turn and rounds (core/GameState.cpp) -------------
    static constexpr QRgb HighlightColour = qRgb(255, 224, 192);
    static constexpr QRgb PlainColour = qRgb(201, 207, 214);
    void paintRow(int row, bool current);
    QRgb rowColour(int row) const { return m_rowColour[size_t(row)]; }
    // Every row plain, then the current player's row highlighted.
    void paintTurn();
    bool rowInPlay(int row) const;

    qint16 CurrentPlayer = 0;
    qint16 RoundNumber = 1;
    bool AnotherRound = false;
    bool DecksRestarted = false;
    bool ReloadMatches = false;
    bool ReloadPhrases = false;
    bool MatchGameInProgress = false;
    bool PhraseGameInProgress = false;

    void clkUp_Click(qint16 index);
    void clkDown_Click(qint16 index);
    void ChangePlayer(const QString &direction);

    // ---- The decks and both tabs (core/MatchRound.cpp, core/PhraseRound.cpp)
    QStringList MatchDeck, PhraseDeck;
    qint16 MatchIndex = 0;
    qint16 PhraseIndex = 0;
    bool matchShown() const;
    bool phraseShown() const;

    void clkStart_Click();
    void clkNext_Click();
    void clkPrev_Click();
    void clkExit_Click();
    void clkStartPhrase_Click();
    void clkNextPhrase_Click();
    void clkPrevPhrase_Click();
    void clkExitPhrase_Click();

    // ---- The player panel and the keyboard (core/PlayerPanel.cpp) ----------
    bool NumPlayersKeyed = false;
    bool NumPlayersRestoring = false;
    QString NumPlayersBefore;
    bool ScoreToWinKeyed = false;
    bool ScoreToWinRestoring = false;
    qint16 ScoreToWinBefore = 0;

    void cmbNumPlayers_Click();
    void cmbNumPlayers_KeyDown(qint16 keyCode, int shift);
    void cmbScoreToWin_Click();
    void cmbScoreToWin_KeyDown(qint16 keyCode, int shift);
    void txtPlayer_DblClick(qint16 index);
    void PageUpDown(qint16 &keyCode);
    // The key codes the game knows, numbered as the program always has.
    enum KeyCode : qint16 { KeyPageUp = 33, KeyPageDown = 34, KeyLeft = 37, KeyUp = 38, KeyRight = 39, KeyDown = 40 };
    static qint16 keyCodeOf(int qtKey);
    // The keyboard handler of a control, by its name ("txtPlayer_KeyDown"):
    // passes the key to PageUpDown under that name's report.
    void KeyDownHandler(const QString &handler, qint16 keyCode);

    // ---- The countdown (timing/Countdown.cpp) ------------------------------
    QTimer *Timer1 = nullptr;
    qint16 TimerTime = 0;
    void CheckTimer();
    void Timer1_Timer();
    void OptTimer_Click(qint16 index);
    void cmdUpdateButton_Click();
    void SSTab1_Click(qint16 previousTab);
    void SSTab1_DblClick();

    // ---- Music and buzzer (timing/Sound.cpp) -------------------------------
    std::unique_ptr<platform::MediaPlayer> wmp1, wmp2;
    void mediaSetUp();
    void optSound_Click(qint16 index);
    void hsc1_Change();
    void hsc1_Scroll();

    // ---- Settings and files (files/) ---------------------------------------
    // Applies the configuration file beside the program, line by line.
    void readInConfigFile();
    void clkConfig_Click();
    void clkEdit_Click();
    void clkUpdate_Click();
    // A folder in the program folder; false after a reported failure.
    bool createDirs(const QString &dirName);
    // Writes and deletes a test file there; false after a reported failure.
    bool testFileWrite(const QString &dirName);
    // Copies the question files into the backup folder, stamped with the time.
    void saveOldFiles();

    // ---- Rules, About and web pages (shell/HelpAndLinks.cpp) ---------------
    void clkHowToPlay_Click();
    void clkAbout_Click();
    void clkContact_Click();
    void clkDonate_Click();
    void clkVideo_Click();

protected:
    void closeEvent(QCloseEvent *event) override;  // Form_Unload
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectGame();
    void connectPanel();
    void connectCountdown();
    void connectSound();
    void connectFiles();
    void connectLinks();
    void closeOtherWindows();
    void showMatch();
    void showPhrase();
    void setProgramTitle();
    // Shrinks a question's font until the text fits its label.
    static void fitText(QLabel *label);
    void setReloadingTitle();
    void resetForNewGame();
    void continueTie(bool otherShown, void (frmTandrel::*otherNext)());
    void stepBack(qint16 &index, qsizetype size, void (frmTandrel::*show)(), QWidget *button);
    bool keyMarksList(qint16 &keyCode);
    bool undoKeyedChange(bool &keyed, bool &restoring, QComboBox *list, const QString &before);
    std::array<QWidget *, 4> rowWidgets(int row) const;
    void resetCount();
    bool mayStartOver(bool &reload, bool inProgress, const QString &question);
    void startNewGameAfterWin();
    void runWinDialog(const QString &message, bool tie);
    bool listKeyPress(QObject *list, QKeyEvent *event);

    // Owned: a constructor that fails half-way must not leak the form.
    std::unique_ptr<Ui::frmTandrel> m_ui;
    bool m_ending = false;
    int m_lastTab = 1;
    std::array<QRgb, 10> m_rowColour{};
    // Controls whose keys go to PageUpDown, with the name of their handler.
    QHash<QObject *, QString> m_keyHandlers;
};
