// Players, scores, turns and rounds, and the end of a game, driven through the
// window's buttons the way the host plays.
#include "GameWindow.h"
#include "TestMain.h"
#include "core/frmWin.h"
#include "ui_frmWin.h"
#include <QPushButton>
#include <QTimer>

namespace {
const QString CrLf = QStringLiteral("\r\n");

QString winnerMessage(const QString &name, int score)
{
    return QStringLiteral("Congratulations...") + CrLf + CrLf + name
           + QStringLiteral(" has won the game with a score of ") + QString::number(score) + CrLf + CrLf
           + QStringLiteral("Nicely Done!");
}

QString tieMessage(const QString &names, int score)
{
    return QStringLiteral("Congratulations...") + CrLf + CrLf + QStringLiteral("Players:") + CrLf + CrLf + names
           + CrLf + CrLf + QStringLiteral("Have tied with a score of ") + QString::number(score) + CrLf + CrLf
           + QStringLiteral("Play another round?");
}

// Next on the given tab, as the host presses it.
void pressNext(GameWindow &g, bool phraseTab)
{
    (phraseTab ? g.ui()->clkNextPhrase : g.ui()->clkNext)->click();
}

// Counts how often the countdown was restarted with music: with the timer and
// sound on, each restart tells the music to play.
int musicStarts(const GameWindow &g)
{
    return int(g.fake.mediaCalls.count(QStringLiteral("wmp1 play")));
}

void timerAndSoundOn(GameWindow &g)
{
    g.w().selectOption(g.w().OptTimer[0]);
    g.w().selectOption(g.w().optSound[0]);
    g.fake.mediaCalls.clear();
}
}  // namespace

class TestGame : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void scoreButtons_data();
    void scoreButtons();
    void turnMovesAndRoundsEnd_data();
    void turnMovesAndRoundsEnd();
    void winnerCheckAtTheEndOfARound_data();
    void winnerCheckAtTheEndOfARound();
    void wholeGameToOneWinner_data();
    void wholeGameToOneWinner();
    void tieAnswered_data();
    void tieAnswered();
    void tieClosedWithoutAnAnswerIsReported();
    void winDialogAnsweredForReal();
    void reloadShowsItInTheTitle();
};

void TestGame::scoreButtons_data()
{
    QTest::addColumn<int>("matches");
    QTest::addColumn<int>("phrases");
    QTest::addColumn<int>("start");
    QTest::addColumn<bool>("up");
    QTest::addColumn<QString>("expected");
    QTest::newRow("up") << 6 << 6 << 3 << true << "4";
    QTest::newRow("up to the cap") << 6 << 6 << 11 << true << "12";
    QTest::newRow("up stops at both decks' size") << 6 << 6 << 12 << true << "12";
    QTest::newRow("cap with one deck") << 4 << 0 << 4 << true << "4";
    QTest::newRow("no deck: up does nothing") << 0 << 0 << 0 << true << "0";
    QTest::newRow("down") << 6 << 6 << 3 << false << "2";
    QTest::newRow("down stops at 0") << 6 << 6 << 0 << false << "0";
}

void TestGame::scoreButtons()
{
    QFETCH(int, matches);
    QFETCH(int, phrases);
    QFETCH(int, start);
    QFETCH(bool, up);
    QFETCH(QString, expected);
    GameWindow g(matches, phrases);
    g.setScore(1, start);
    const qint16 turn = g.w().CurrentPlayer;
    const QString round = g.round();
    (up ? g.w().clkUp[1] : g.w().clkDown[1])->click();
    QCOMPARE(g.score(1), expected);
    QCOMPARE(g.w().CurrentPlayer, turn);
    QCOMPARE(g.round(), round);
    QVERIFY(g.fake.boxes.isEmpty());
}

void TestGame::turnMovesAndRoundsEnd_data()
{
    QTest::addColumn<bool>("phraseTab");
    QTest::newRow("match tab") << false;
    QTest::newRow("phrase tab") << true;
}

void TestGame::turnMovesAndRoundsEnd()
{
    QFETCH(bool, phraseTab);
    GameWindow g;
    g.setPlayers(3);
    QCOMPARE(g.highlightedRow(), 0);
    QList<int> turns;
    for (int i = 0; i < 3; ++i) {
        pressNext(g, phraseTab);
        turns << g.w().CurrentPlayer;
        QCOMPARE(g.highlightedRow(), int(g.w().CurrentPlayer));
    }
    QCOMPARE(turns, (QList<int>{1, 2, 0}));
    QCOMPARE(g.round(), QStringLiteral("Round 2"));
    QCOMPARE(g.w().RoundNumber, qint16(2));

    // Going back from row 0 gives the last player the turn, in the same round.
    (phraseTab ? g.ui()->clkPrevPhrase : g.ui()->clkPrev)->click();
    QCOMPARE(g.w().CurrentPlayer, qint16(2));
    QCOMPARE(g.highlightedRow(), 2);
    QCOMPARE(g.round(), QStringLiteral("Round 2"));

    // Either tab moves the same turn.
    pressNext(g, !phraseTab);
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.round(), QStringLiteral("Round 3"));
    QVERIFY(g.winMessages.isEmpty());
}

void TestGame::winnerCheckAtTheEndOfARound_data()
{
    QTest::addColumn<int>("players");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QList<int>>("scores");
    QTest::addColumn<int>("shownPlayers");  // the count when the round ends
    QTest::addColumn<QString>("message");   // empty: the game goes on
    QTest::newRow("best wins") << 2 << "10" << QList<int>{12, 10} << 2 << winnerMessage("Ann", 12);
    QTest::newRow("equal best tie") << 2 << "10" << QList<int>{10, 10} << 2 << tieMessage("Ann  Bob", 10);
    QTest::newRow("three tie of four") << 4 << "5" << QList<int>{5, 2, 5, 5} << 4 << tieMessage("Ann  Cy  Di", 5);
    QTest::newRow("below target") << 3 << "5" << QList<int>{4, 4, 0} << 3 << QString();
    QTest::newRow("hidden row never wins") << 4 << "5" << QList<int>{1, 2, 0, 9} << 3 << QString();
    QTest::newRow("name with commas") << 2 << "5" << QList<int>{0, 6} << 2 << winnerMessage("Bob, Jr.; the 2nd", 6);
}

void TestGame::winnerCheckAtTheEndOfARound()
{
    QFETCH(int, players);
    QFETCH(QString, target);
    QFETCH(QList<int>, scores);
    QFETCH(int, shownPlayers);
    QFETCH(QString, message);
    GameWindow g(20, 20);
    g.setPlayers(players);
    g.ui()->cmbScoreToWin->setCurrentText(target);
    const QStringList names = {"Ann", QString(QTest::currentDataTag()).startsWith("name") ? "Bob, Jr.; the 2nd" : "Bob",
                               "Cy", "Di"};
    for (int i = 0; i < scores.size(); ++i) {
        g.w().txtPlayer[size_t(i)]->setText(names[i]);
        g.setScore(i, scores[i]);
    }
    g.setPlayers(shownPlayers);

    // A score at the target in the middle of a round decides nothing.
    for (int i = 0; i < shownPlayers - 1; ++i)
        g.ui()->clkNext->click();
    QVERIFY(g.winMessages.isEmpty());
    QCOMPARE(g.round(), QStringLiteral("Round 1"));

    g.ui()->clkNext->click();  // the round ends
    if (message.isEmpty()) {
        QVERIFY(g.winMessages.isEmpty());
        QCOMPARE(g.round(), QStringLiteral("Round 2"));
        QCOMPARE(g.score(0), QString::number(scores[0]));
    } else {
        QCOMPARE(g.winMessages, QStringList{message});
    }
}

void TestGame::wholeGameToOneWinner_data()
{
    turnMovesAndRoundsEnd_data();
}

void TestGame::wholeGameToOneWinner()
{
    QFETCH(bool, phraseTab);
    GameWindow g;
    g.ui()->cmbScoreToWin->setCurrentText(QStringLiteral("5"));
    g.w().txtPlayer[0]->setText(QStringLiteral("Ann"));
    timerAndSoundOn(g);
    // Ann answers right on each of her turns; Bob never does.
    int presses = 0;
    while (g.winMessages.isEmpty() && presses < 40) {
        if (g.w().CurrentPlayer == 0)
            g.w().clkUp[0]->click();
        g.fake.mediaCalls.clear();
        pressNext(g, phraseTab);
        ++presses;
    }
    QCOMPARE(presses, 10);  // five rounds of two players
    QCOMPARE(g.winMessages, QStringList{winnerMessage("Ann", 5)});

    // A new game has begun: both decks dealt again, first questions shown.
    for (int i = 0; i < 10; ++i)
        QCOMPARE(g.score(i), QStringLiteral("0"));
    QCOMPARE(g.round(), QStringLiteral("Round 1"));
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.highlightedRow(), 0);
    QCOMPARE(g.ui()->clkStatusMatch->text(), QStringLiteral("Viewing Match 1 of 6 Matches..."));
    QCOMPARE(g.ui()->clkStatusPhrase->text(), QStringLiteral("Viewing Phrase 1 of 6 Phrases..."));
    QCOMPARE(g.w().MatchIndex, qint16(1));
    QCOMPARE(g.w().PhraseIndex, qint16(1));
    QVERIFY(g.fake.boxes.isEmpty());  // no start-over question
    QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
    // Both starts restart the count; the match tab's Next restarts it once
    // more, the phrase tab's Next does not.
    QCOMPARE(musicStarts(g), phraseTab ? 2 : 3);
    QCOMPARE(g.w().DecksRestarted, !phraseTab);
    QVERIFY(g.fake.logTexts().contains(QStringLiteral("Loading Form frmWin")));
    QVERIFY(g.fake.logTexts().contains(QStringLiteral("Unloading Form frmWin")));
}

void TestGame::tieAnswered_data()
{
    QTest::addColumn<bool>("phraseTab");
    QTest::addColumn<bool>("yes");
    QTest::newRow("match tab, another round") << false << true;
    QTest::newRow("phrase tab, another round") << true << true;
    QTest::newRow("match tab, new game") << false << false;
    QTest::newRow("phrase tab, new game") << true << false;
}

void TestGame::tieAnswered()
{
    QFETCH(bool, phraseTab);
    QFETCH(bool, yes);
    GameWindow g;
    g.answerWin(yes ? "clkYes" : "clkNo");
    g.setPlayers(3);
    g.setScore(0, 10);
    g.setScore(2, 10);
    g.setScore(1, 4);
    pressNext(g, phraseTab);
    pressNext(g, phraseTab);
    const qint16 match = g.w().MatchIndex;
    const qint16 phrase = g.w().PhraseIndex;
    pressNext(g, phraseTab);  // the round ends in a tie

    QCOMPARE(g.winMessages, QStringList{tieMessage("Name  Name", 10)});
    QVERIFY(g.w().Tag.isEmpty());
    QVERIFY(!g.w().AnotherRound);
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.highlightedRow(), 0);
    if (yes) {
        // Play goes on with the same scores; each deck moved on by one.
        QCOMPARE(g.score(0), QStringLiteral("10"));
        QCOMPARE(g.score(1), QStringLiteral("4"));
        QCOMPARE(g.round(), QStringLiteral("Round 2"));
        QCOMPARE(g.w().MatchIndex, qint16(match + 1));
        QCOMPARE(g.w().PhraseIndex, qint16(phrase + 1));
        QCOMPARE(g.ui()->clkStatusMatch->text(), QStringLiteral("Viewing Match %1 of 6 Matches...").arg(match + 1));
        QCOMPARE(g.ui()->clkStatusPhrase->text(), QStringLiteral("Viewing Phrase %1 of 6 Phrases...").arg(phrase + 1));
    } else {
        QCOMPARE(g.score(0), QStringLiteral("0"));
        QCOMPARE(g.round(), QStringLiteral("Round 1"));
        QCOMPARE(g.w().MatchIndex, qint16(1));
        QCOMPARE(g.w().PhraseIndex, qint16(1));
    }
}

void TestGame::tieClosedWithoutAnAnswerIsReported()
{
    GameWindow g;
    g.fake.onModal = [](QDialog &) { return int(QDialog::Rejected); };  // gone without Yes or No
    g.setScore(0, 10);
    g.setScore(1, 10);
    g.ui()->clkNext->click();
    g.ui()->clkNext->click();
    QCOMPARE(g.fake.boxes.size(), 1);
    QCOMPARE(g.fake.boxes[0].title, QStringLiteral("Error"));
    QVERIFY(g.fake.boxes[0].text.startsWith(QStringLiteral("Current SubRoutine is ChangePlayer\r\nError Number: 13\r\n")));
    // The game stays as it was.
    QCOMPARE(g.score(0), QStringLiteral("10"));
    QCOMPARE(g.round(), QStringLiteral("Round 2"));
    QVERIFY(!g.w().AnotherRound);
}

void TestGame::winDialogAnsweredForReal()
{
    GameWindow g;
    platform::install({platform::realServices().dialogs});
    g.setScore(0, 10);
    g.setScore(1, 10);
    g.ui()->clkNext->click();

    // Answer the real modal dialog; a watchdog ends a wrong one fast.
    QStringList seen;
    QTimer poll;
    poll.setInterval(20);
    connect(&poll, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        poll.stop();
        seen << dialog->windowTitle();
        seen << QString::number(dialog->ui()->clkClose->isVisible());
        QTest::keyClick(dialog, Qt::Key_Escape);  // a tie needs an answer
        seen << QString::number(dialog->isVisible());
        dialog->ui()->clkYes->click();
    });
    QTimer watchdog;
    watchdog.setSingleShot(true);
    bool timedOut = false;
    connect(&watchdog, &QTimer::timeout, this, [&] {
        timedOut = true;
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
        if (auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget()))
            dialog->ui()->clkYes->click();
    });
    poll.start();
    watchdog.start(5000);
    g.ui()->clkNext->click();  // the round ends in a tie
    watchdog.stop();
    QVERIFY(!timedOut);
    QCOMPARE(seen, (QStringList{"Congratulations...", "0", "1"}));
    QCOMPARE(g.score(0), QStringLiteral("10"));
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QVERIFY(g.w().Tag.isEmpty());
}

void TestGame::reloadShowsItInTheTitle()
{
    GameWindow g;
    g.setScore(1, 5);
    g.ui()->cmbScoreToWin->setCurrentText(QStringLiteral("5"));
    // The phrase file loses its questions; the new game's reload says so
    // while the title says what is going on.
    g.fake.writeFile(QStringLiteral("TandrelPhrases.txt"), questionFile({"// nothing left"}));
    QStringList titles;
    g.fake.onBox = [&](const ShownBox &) { titles << g.w().windowTitle(); };
    g.ui()->clkNext->click();
    g.ui()->clkNext->click();
    QCOMPARE(g.fake.boxTitles(), QStringList{"Exiting File Load"});
    QCOMPARE(titles, QStringList{"Tandrel is reloading and randomly sorting Tandrels..."});
    QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
    // The match deck was dealt again; the old phrase deck stays in use.
    QCOMPARE(g.ui()->clkStatusMatch->text(), QStringLiteral("Viewing Match 1 of 6 Matches..."));
    QCOMPARE(g.w().PhraseDeck.size(), 6);
}

TANDREL_TEST_MAIN(TestGame)
#include "tst_game.moc"
