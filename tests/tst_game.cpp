// The game's rules on the model alone: scores, the turn, rounds, the winner
// and the tie, the decks; the countdown and the sound with recording players.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Game.h"
#include "platform/Errors.h"
#include "timing/Countdown.h"
#include "timing/Sound.h"
#include <QTimer>

using game::Direction;
using game::Game;
using questions::Kind;

namespace {
QStringList entries(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QString::number(i + 1);
    return list;
}

// A game of that many players with these scores, on decks of that size.
Game gameWith(int players, const QList<int> &scores, int matches = 20, int phrases = 20)
{
    Game g;
    g.deck(Kind::Match).deal(entries(100));
    for (int row = 0; row < scores.size(); ++row)
        for (int i = 0; i < scores[row]; ++i)
            g.scoreUp(row);
    g.deck(Kind::Match).deal(entries(matches));
    g.deck(Kind::Phrase).deal(entries(phrases));
    g.setPlayerCount(players);
    return g;
}

QList<int> scoresOf(const Game &g)
{
    QList<int> list;
    for (int row = 0; row < game::MaxPlayers; ++row)
        list << g.score(row);
    return list;
}
struct Clock {
    FakePlatform fake;
    Sound sound;
    Countdown count{sound, nullptr};
    QStringList shown;  // every display change

    Clock(int length, bool soundOn, bool buzzer = true, bool continual = false)
    {
        QObject::connect(&count, &Countdown::displayChanged, [this](const QString &t) { shown << t; });
        count.setLength(qint16(length));
        sound.buzzer = buzzer;
        sound.continual = continual;
        sound.switchTo(soundOn);
        fake.mediaCalls.clear();
    }
    // Ticks until the count stops (at most n).
    void tickOut(int n = 10)
    {
        for (int i = 0; i < n && count.isRunning(); ++i)
            count.tick();
    }
};
}  // namespace

class TestGame : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void scorePoints_data()
    {
        QTest::addColumn<int>("matches");
        QTest::addColumn<int>("phrases");
        QTest::addColumn<int>("start");
        QTest::addColumn<bool>("up");
        QTest::addColumn<int>("expected");
        QTest::newRow("up") << 6 << 6 << 3 << true << 4;
        QTest::newRow("up to both decks' size") << 6 << 6 << 11 << true << 12;
        QTest::newRow("up stops there") << 6 << 6 << 12 << true << 12;
        QTest::newRow("one deck only") << 4 << 0 << 4 << true << 4;
        QTest::newRow("down") << 6 << 6 << 3 << false << 2;
        QTest::newRow("down stops at 0") << 6 << 6 << 0 << false << 0;
        QTest::newRow("no deck, no points") << 0 << 0 << 0 << true << 0;
    }
    void scorePoints()
    {
        QFETCH(int, matches);
        QFETCH(int, phrases);
        QFETCH(int, start);
        QFETCH(bool, up);
        QFETCH(int, expected);
        Game g = gameWith(3, {0, start}, matches, phrases);
        g.giveTurn(2);
        QCOMPARE(up ? g.scoreUp(1) : g.scoreDown(1), expected != start);
        QCOMPARE(g.score(1), qint16(expected));
        QCOMPARE(g.currentPlayer(), qint16(2));
        QCOMPARE(g.round(), qint16(1));
    }

    void fullDecksKeepScoresIn16Bits()
    {
        Game g;
        g.deck(Kind::Match).deal(entries(questions::MaxDeckEntries));
        g.deck(Kind::Phrase).deal(entries(questions::MaxDeckEntries));
        while (g.scoreUp(0)) {
        }
        QCOMPARE(g.score(0), qint16(32767));
    }

    void turnChanges_data()
    {
        QTest::addColumn<int>("players");
        QTest::addColumn<int>("start");
        QTest::addColumn<QString>("steps");  // f forward, b back
        QTest::addColumn<QList<int>>("turns");
        QTest::addColumn<int>("round");
        QTest::newRow("three players round") << 3 << 0 << "fff" << QList<int>{1, 2, 0} << 2;
        QTest::newRow("back from row 0 to the last") << 3 << 0 << "b" << QList<int>{2} << 1;
        QTest::newRow("back never ends a round") << 2 << 1 << "bbb" << QList<int>{0, 1, 0} << 1;
        QTest::newRow("from a given turn") << 5 << 3 << "f" << QList<int>{4} << 1;
        QTest::newRow("given the last turn") << 4 << 3 << "f" << QList<int>{0} << 2;
        QTest::newRow("ten players") << 10 << 8 << "ff" << QList<int>{9, 0} << 2;
    }
    void turnChanges()
    {
        QFETCH(int, players);
        QFETCH(int, start);
        QFETCH(QString, steps);
        QFETCH(QList<int>, turns);
        QFETCH(int, round);
        Game g = gameWith(players, {});
        g.giveTurn(start);
        QList<int> seen;
        int roundsEnded = 0;
        for (QChar step : steps) {
            const game::TurnChange change = g.changePlayer(step == 'f' ? Direction::Forward : Direction::Back);
            seen << g.currentPlayer();
            roundsEnded += change.roundEnded;
            QVERIFY(change.winners.isEmpty());
        }
        QCOMPARE(seen, turns);
        QCOMPARE(g.round(), qint16(round));
        QCOMPARE(roundsEnded, round - 1);
    }

    void winnerAtTheEndOfARound_data()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<QList<int>>("scores");
        QTest::addColumn<int>("players");  // when the round ends
        QTest::addColumn<QList<int>>("winners");
        QTest::addColumn<int>("best");
        QTest::newRow("best wins") << 10 << QList<int>{12, 10} << 2 << QList<int>{0} << 12;
        QTest::newRow("equal best tie") << 10 << QList<int>{10, 10} << 2 << QList<int>{0, 1} << 10;
        QTest::newRow("three of four tie") << 5 << QList<int>{5, 2, 5, 5} << 4 << QList<int>{0, 2, 3} << 5;
        QTest::newRow("below target") << 5 << QList<int>{4, 4, 0} << 3 << QList<int>{} << 4;
        QTest::newRow("row out of play never wins") << 5 << QList<int>{1, 2, 0, 9} << 3 << QList<int>{} << 2;
        QTest::newRow("last row wins") << 5 << QList<int>{0, 6} << 2 << QList<int>{1} << 6;
        QTest::newRow("all zero, target 5") << 5 << QList<int>{0, 0} << 2 << QList<int>{} << 0;
    }
    void winnerAtTheEndOfARound()
    {
        QFETCH(int, target);
        QFETCH(QList<int>, scores);
        QFETCH(int, players);
        QFETCH(QList<int>, winners);
        QFETCH(int, best);
        Game g = gameWith(players, scores);
        g.setScoreToWin(qint16(target));
        // A score at the target in the middle of a round decides nothing.
        for (int i = 0; i < players - 1; ++i)
            QVERIFY(!g.changePlayer(Direction::Forward).roundEnded);
        const game::TurnChange change = g.changePlayer(Direction::Forward);
        QVERIFY(change.roundEnded);
        QCOMPARE(change.winners, winners);
        QCOMPARE(change.best, qint16(best));
        QCOMPARE(scoresOf(g).mid(0, scores.size()), scores);  // deciding changes no score
    }

    void roundsEndAtTheLimitOf16Bits()
    {
        Game g;
        for (int i = 1; i < 2 * 32767; ++i)
            g.changePlayer(Direction::Forward);
        QCOMPARE(g.round(), qint16(32767));
        try {
            g.changePlayer(Direction::Forward);
            QFAIL("a round past 32767 must fail");
        } catch (const platform::RuntimeError &e) {
            QCOMPARE(e.number(), platform::err::Overflow);
        }
        QCOMPARE(g.round(), qint16(32767));
    }

    void deckWrapsBothWays_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<QString>("steps");  // n next, p previous
        QTest::addColumn<QList<int>>("positions");
        QTest::newRow("forward past the end") << 3 << "nnn" << QList<int>{2, 3, 1};
        QTest::newRow("back past the start") << 3 << "pp" << QList<int>{3, 2};
        QTest::newRow("one entry") << 1 << "npn" << QList<int>{1, 1, 1};
    }
    void deckWrapsBothWays()
    {
        QFETCH(int, size);
        QFETCH(QString, steps);
        QFETCH(QList<int>, positions);
        game::Deck deck;
        QVERIFY(!deck.shown());
        QVERIFY(!deck.inProgress());
        deck.deal(entries(size));
        QVERIFY(deck.shown());
        QVERIFY(deck.inProgress());
        QList<int> seen;
        for (QChar step : steps) {
            step == 'n' ? deck.next() : deck.previous();
            seen << deck.position();
            QCOMPARE(deck.current(), QString::number(deck.position()));
        }
        QCOMPARE(seen, positions);
        deck.deal(entries(size));
        QCOMPARE(deck.position(), qint16(1));
    }

    void endOfGameMessages()
    {
        const QString crlf = QStringLiteral("\r\n");
        QCOMPARE(game::winnerMessage(QStringLiteral("Bob, Jr.; the 2nd"), 6),
                 "Congratulations..." + crlf + crlf + "Bob, Jr.; the 2nd has won the game with a score of 6" + crlf
                     + crlf + "Nicely Done!");
        QCOMPARE(game::tieMessage({"Ann", "Cy", "Di"}, 5),
                 "Congratulations..." + crlf + crlf + "Players:" + crlf + crlf + "Ann  Cy  Di" + crlf + crlf
                     + "Have tied with a score of 5" + crlf + crlf + "Play another round?");
    }

    void countsDownWithTheZeroTimeSounds_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("soundOn");
        QTest::addColumn<bool>("buzzer");
        QTest::addColumn<bool>("continual");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("calls");
        const QStringList from3{"3", "2", "1", "0"};
        QTest::newRow("buzzer, music stops") << 3 << true << true << false << from3
                                             << QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"};
        QTest::newRow("buzzer, music plays on") << 3 << true << true << true << from3
                                                << QStringList{"wmp1 play", "wmp2 play"};
        QTest::newRow("music stops only") << 3 << true << false << false << from3
                                          << QStringList{"wmp1 play", "wmp1 stop"};
        QTest::newRow("silent, music on") << 3 << true << false << true << from3 << QStringList{"wmp1 play"};
        QTest::newRow("sound off: silence") << 3 << false << true << false << from3 << QStringList{};
        QTest::newRow("length 1: zero at once") << 1 << true << true << false << QStringList{"1", "0"}
                                                << QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"};
        QTest::newRow("length 0: stops in silence") << 0 << true << true << false << QStringList{"0"}
                                                    << QStringList{"wmp1 play"};
    }
    void countsDownWithTheZeroTimeSounds()
    {
        QFETCH(int, length);
        QFETCH(bool, soundOn);
        QFETCH(bool, buzzer);
        QFETCH(bool, continual);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, calls);
        Clock c(length, soundOn, buzzer, continual);
        c.count.setDisplay(QStringLiteral("x"));
        c.shown.clear();
        c.count.restart();
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.count.timer()->interval(), 1000);
        c.tickOut();
        QVERIFY(!c.count.isRunning());
        QCOMPARE(c.shown, shown);
        QCOMPARE(c.fake.mediaCalls, calls);
    }

    void newQuestionRestartsTheCount()
    {
        Clock c(30, true);
        c.count.restart();
        c.count.tick();
        c.count.restart();
        QCOMPARE(c.count.display(), QStringLiteral("30"));
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.fake.mediaCalls, (QStringList{"wmp1 play", "wmp1 play"}));
        // With the timer off a question leaves the count idle at the length.
        c.count.switchTo(false, false);
        c.count.setDisplay(QStringLiteral("7"));
        c.count.restart();
        QVERIFY(!c.count.isRunning());
        QCOMPARE(c.count.display(), QStringLiteral("30"));
        QCOMPARE(c.fake.mediaCalls.size(), 2);
    }

    void timerSwitch_data()
    {
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("question");
        QTest::addColumn<bool>("running");
        QTest::addColumn<QString>("display");
        QTest::newRow("off with a question: idle") << false << true << false << "20";
        QTest::newRow("on with a question: resumes") << true << true << true << "7";
        QTest::newRow("off without a question: no change") << false << false << true << "7";
        QTest::newRow("on without a question: no change") << true << false << false << "7";
    }
    void timerSwitch()
    {
        QFETCH(bool, on);
        QFETCH(bool, question);
        QFETCH(bool, running);
        QFETCH(QString, display);
        Clock c(20, true);
        c.count.setDisplay(QStringLiteral("7"));
        if (!on)
            c.count.timer()->start();
        c.count.switchTo(on, question);
        QCOMPARE(c.count.isRunning(), running);
        QCOMPARE(c.count.display(), display);
        QCOMPARE(c.count.isOn(), on);
        QVERIFY(c.fake.mediaCalls.isEmpty());  // the switch never starts the music
    }

    void tickThatCannotCountFailsAndKeepsTicking()
    {
        Clock c(30, true);
        c.count.timer()->start();
        c.count.setDisplay(QStringLiteral("-32768"));
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, c.count.tick());
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.count.display(), QStringLiteral("-32768"));
    }
};

TANDREL_TEST_MAIN(TestGame)
#include "tst_game.moc"
