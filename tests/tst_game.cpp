// The game's rules on the model alone: question lines into decks, scores,
// the turn, rounds, the winner and the tie; the countdown and the sound with
// recording players.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "core/Game.h"
#include "core/RepeatFilter.h"
#include "platform/Globals.h"
#include "platform/Errors.h"
#include "timing/Countdown.h"
#include "timing/Sound.h"
#include <QTimer>
#include <random>

using game::Direction;
using game::Game;
using questions::Kind;

namespace {
const QString U19 = questions::MatchBlank;
const QString U9 = questions::PhraseBlank;

QStringList entries(int count)
{
    QStringList list;
    for (int i = 1; i <= count; ++i)
        list << QString::number(i);
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

// A game played on a table of its own: question files of a known size
// (0: missing, -1: without questions), the host's answers from a script, and
// what the host was shown.
struct Script final : game::Table {
    Game g;
    int files[2] = {6, 6};
    bool startOver = false;         // the answer to "start over?"
    game::Answer tie = game::Answer::Yes;
    QStringList seen;               // dialogs and messages, in order
    int counts = 0;                 // countdown restarts
    bool reloading = false;

    bool questionFileFound(Kind k) override { return files[int(k)] || (seen << "File Does Not Exist", false); }
    bool askStartOver(Kind) override { return seen << "Start New Game", startOver; }
    std::optional<QStringList> readDeck(Kind k) override
    {
        if (files[int(k)] > 0)
            return entries(files[int(k)]);
        seen << (reloading ? "Exiting File Load while reloading" : "Exiting File Load");
        return std::nullopt;
    }
    void showReloading(bool r) override { reloading = r; }
    void showPlayers() override {}
    void showQuestion(Kind) override {}
    void restartCountdown() override { ++counts; }
    game::Answer showEndOfGame(const game::TurnChange &c) override
    {
        QStringList rows;
        for (int w : c.winners)
            rows << QString::number(w);
        seen << (c.won() ? "won " : "tie ") + rows.join(' ') + " at " + QString::number(c.best);
        return c.won() ? game::Answer::Close : tie;
    }
    void runStart(Kind k) override { g.start(k, *this); }
    void runNext(Kind k) override { g.next(k, *this); }
    void runChangePlayer(Direction d) override { g.changePlayer(d, *this); }

    // Space-separated steps; lower case the match kind, upper case phrases:
    //   n N next, p P previous, s S start (y x: start over answered yes or not)
    //   u0 d0 a point up or down for row 0; =0:5 row 0's score made 5
    //   c3 three players, w5 score to win 5, k2 row 2's turn
    //   yes no: the tie's answer; -m -p the file gone, 0m 0p without questions, +m +p four questions
    void play(const QString &script)
    {
        for (const QString &step : script.split(' ', Qt::SkipEmptyParts)) {
            const QChar c = step[0];
            const Kind kind = c.isUpper() || (step.size() == 2 && step.endsWith('p')) ? Kind::Phrase : Kind::Match;
            const int n = step.mid(1).section(':', 0, 0).toInt();
            if (step == "yes" || step == "no")
                tie = step == "yes" ? game::Answer::Yes : game::Answer::No;
            else if (c.toLower() == 'n')
                g.next(kind, *this);
            else if (c.toLower() == 'p')
                g.previous(kind, *this);
            else if (c.toLower() == 's')
                startOver = step.endsWith('y'), g.start(kind, *this);
            else if (c == 'u' || c == 'd')
                c == 'u' ? g.scoreUp(n) : g.scoreDown(n);
            else if (c == '=')
                for (int want = step.section(':', 1).toInt(); g.score(n) != want;)
                    g.score(n) < want ? g.scoreUp(n) : g.scoreDown(n);
            else if (c == 'c')
                g.setPlayerCount(n);
            else if (c == 'w')
                g.setScoreToWin(qint16(n));
            else if (c == 'k')
                g.giveTurn(n);
            else
                files[int(kind)] = c == '-' ? 0 : c == '0' ? -1 : 4;
        }
    }
    // "R2 T1 10,4 M3 P1": the round, the turn, the scores in play, each deck's position (0: none shown).
    QString state() const
    {
        QStringList scores;
        for (int i = 0; i < g.playerCount(); ++i)
            scores << QString::number(g.score(i));
        const auto at = [&](Kind k) { return g.deck(k).shown() ? g.deck(k).position() : 0; };
        return QStringLiteral("R%1 T%2 %3 M%4 P%5").arg(g.round()).arg(g.currentPlayer()).arg(scores.join(','))
            .arg(at(Kind::Match)).arg(at(Kind::Phrase));
    }
};
// Files of that many matches and phrases, a script, the state after, what the host was shown, the countdown's restarts.
struct Play { int matches, phrases; QString script, state; QStringList seen; int counts; };
// Decks of that many matches and phrases, a score, a point up or down, the score after.
struct Points { int matches, phrases, start; bool up; int expected; };
// The score to win, the rows' scores, the players when the round ends, the winners and the best score.
struct Ending { int target; QList<int> scores; int players; QList<int> winners; int best; };
// A countdown's length, its sound, a script, every change of the display ("!" a tick that failed), the
// players' calls, and whether it runs at the end.
struct Ticks { int length; QString sound, script; QStringList shown, calls; bool running = false; };
}  // namespace

class TestGame : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lineRules_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("entries");
        const auto row = [](Kind kind) {
            return [kind](const char *name, const QStringList &lines, const QStringList &entries) {
                QTest::newRow(name) << int(kind) << lines << entries;
            };
        };
        const auto match = row(Kind::Match), phrase = row(Kind::Phrase);
        match("samples", {"# Tandrel Match Lines ", "", "Blank Wizard", "Christmas Blank"}, {U19 + ",WIZARD", "CHRISTMAS," + U19});
        match("part of an earlier line", {"Shoe Blank", "hoe blank"}, {"SHOE," + U19});
        match("same line in other case", {"Apple Blank", "APPLE BLANK", "apple blank"}, {"APPLE," + U19});
        match("placeholder twice", {"Blank and Blank", "Snow BlankBlank"}, {});
        match("placeholder alone, glued or missing", {"Blank", "  blank  ", "SnowBlank", "Blankety Cat", "Just words", "Blanket Fort"}, {});
        match("text on both sides keeps the right half", {"Once in a Blank Moon"}, {"ONCE IN A," + U19 + " MOON"});
        match("separators become spaces", {"Ice;Cream,\tBlank"}, {"ICE CREAM," + U19});
        match("double spaces collapse", {"Hot      Blank"}, {"HOT," + U19});
        match("comment after trim, tab then hash is not", {"   # Comment Blank", "\t#Hash Blank"}, {" #HASH," + U19});
        match("a later longer line is not a repeat", {"Hoe Blank", "Shoe Blank"}, {"HOE," + U19, "SHOE," + U19});
        match("rejected lines do not count as repeats", {"Blank Blank Shoe", "Blank Shoe"}, {U19 + ",SHOE"});
        match("overlong line skipped", {QString(1200, 'A') + " Blank", "Short Blank"}, {"SHORT," + U19});
        phrase("three spellings", {"A Blank b BLANK c blank d"}, {"A " + U9 + " b " + U9 + " c " + U9 + " d"});
        phrase("other spellings do not count", {"A bLaNk here"}, {});
        phrase("case matters for repeats", {"The Blank cat", "the Blank cat", "The Blank cat"}, {"The " + U9 + " cat", "the " + U9 + " cat"});
        phrase("part of an earlier phrase", {"Mary has a Blank lamb.", "has a Blank"}, {"Mary has a " + U9 + " lamb."});
        phrase("inside a longer word", {"Grab a Blanket now", "Blankets for all"}, {"Grab a " + U9 + "et now", U9 + " ets for all"});
        phrase("at the start and the end", {"Blank", "Blank."}, {U9 + " ", U9 + " ."});
        phrase("glued twice", {"xBLANKBlanky"}, {"x" + U9 + " " + U9 + " y"});
        phrase("commas and semicolons", {"Paul said, 'a Blank suit;' ok"}, {"Paul said 'a " + U9 + " suit ' ok"});
        phrase("comment and empty", {"# Tandrel Phrase Questions ", "", "#Blank"}, {});
        phrase("tab kept by the trim, then a space", {"\tWe Blank"}, {" We " + U9});
    }
    void lineRules()
    {
        QFETCH(int, kind);
        QFETCH(QStringList, lines);
        QFETCH(QStringList, entries);
        QCOMPARE(questions::acceptLines(Kind(kind), lines), entries);
        if (Kind(kind) == Kind::Match && !entries.isEmpty()) {
            const auto halves = questions::splitMatch(entries.last());
            QCOMPARE(halves.left + ',' + halves.right, entries.last());
        }
    }

    void deckFillsUpPastRepeats()
    {
        // Repeats among the first lines leave room that later lines take; a full deck takes no more.
        QStringList lines;
        for (int i = 0; i < questions::MaxDeckEntries + 10; ++i) {
            lines << QStringLiteral("Line%1 Blank").arg(i);
            if (i % 1000 == 0)
                lines << lines.last();
        }
        const QStringList deck = questions::acceptLines(Kind::Match, lines);
        QCOMPARE(deck.size(), questions::MaxDeckEntries);
        QCOMPARE(deck.last(), "LINE32765," + U19);
    }

    void deckIsAShuffleOfTheAcceptedLines()
    {
        FakePlatform fake;
        QByteArray bytes;
        for (int i = 0; i < 200; ++i)
            bytes += "Item" + QByteArray::number(i) + "z Blank\r\n";
        const QString path = fake.writeFile("TandrelLines.txt", bytes);
        const QStringList deck = decks::LoadDeck(Kind::Match, path).value();
        const QStringList inOrder = decks::ReadEntries(Kind::Match, path);
        QCOMPARE(inOrder.size(), 200);
        QVERIFY(deck != inOrder);
        QCOMPARE(QSet<QString>(deck.begin(), deck.end()), QSet<QString>(inOrder.begin(), inOrder.end()));

        // i = 0: 0.5*3+0 = 1.5 rounds to 2; i = 1: 0.25*2+1 = 1.5 rounds to 2;
        // i = 2: 0.99*1+2 rounds to 3; i = 3: always itself.
        const QStringList entries{"a", "b", "c", "d"};
        fake.randomValues = {0.5f, 0.25f, 0.99f, 0.0f};
        QCOMPARE(Globals::ShuffleArray(entries), (QStringList{"c", "a", "d", "b"}));
        QCOMPARE(Globals::ShuffleArray(QStringList{"only"}), QStringList{"only"});
    }

    void everyWayKeepsWhatTheRuleKeeps_data()
    {
        QTest::addColumn<QStringList>("lines");
        // Random text over a few letters; most lines after the first ones a
        // part of an earlier line (so that line repeats), some changed in one place.
        std::mt19937 gen(5);
        const auto randomLines = [&](std::u16string_view letters, int width) {
            QStringList lines;
            for (int i = 0; i < 600; ++i) {
                QString line;
                for (int k = 1 + int(gen() % width); i < 100 && k > 0; --k)
                    line += QChar(letters[gen() % letters.size()]);
                if (i >= 100) {
                    const QString &earlier = lines[gen() % lines.size()];
                    const qsizetype from = gen() % earlier.size();
                    line = earlier.mid(from, 1 + gen() % (earlier.size() - from));
                    if (gen() % 3 == 0)
                        line[gen() % line.size()] = QChar(letters[gen() % letters.size()]);
                }
                lines << line;
            }
            return lines;
        };
        // Runs of one letter that differ in one place share every piece.
        QStringList runs;
        for (int i = 0; i < 600; ++i)
            runs << QString(200, QLatin1Char('a')).replace(i % 200, 1, QLatin1Char(i % 400 < 200 ? 'b' : 'c')) + " Blank";
        runs << QString(150, QLatin1Char('a')) << QString(190, QLatin1Char('a')) + 'b' << 'b' + QString(190, QLatin1Char('a'));
        runs.insert(300, QString());  // inside any line, and no line is inside it
        QTest::newRow("runs of one letter, an empty line") << runs;
        QTest::newRow("two letters") << randomLines(u"ab", 240);
        QTest::newRow("wide characters") << randomLines(std::u16string_view(u"\x0\x7f\x80\x7ff\x800\xd800\xffff", 7), 60);
        // Lines of one piece and shorter; the last would span the end of the first two were that a character.
        QTest::newRow("short lines") << QStringList{"xxabcdefghxx", "abcdefgh", "abc", "cccccccc", "xa", QString::fromUtf16(u"x\0a", 3)};
    }
    void everyWayKeepsWhatTheRuleKeeps()
    {
        QFETCH(QStringList, lines);
        std::vector<bool> literal;
        for (qsizetype i = 0; i < lines.size(); ++i)
            literal.push_back(std::none_of(lines.begin(), lines.begin() + i, [&](const QString &earlier) { return earlier.contains(lines[i]); }));
        QCOMPARE(RepeatFilter::keepBySuffixArray(lines), literal);
        QCOMPARE(RepeatFilter::keepByAnchors(lines).value_or(literal), literal);  // where they answer
        QCOMPARE(RepeatFilter::keep(lines), literal);
    }

    void scorePoints_data()
    {
        QTest::addColumn<Points>("row");
        QTest::newRow("up") << Points{6, 6, 3, true, 4};
        QTest::newRow("up to both decks' size") << Points{6, 6, 11, true, 12};
        QTest::newRow("up stops there") << Points{6, 6, 12, true, 12};
        QTest::newRow("one deck only") << Points{4, 0, 4, true, 4};
        QTest::newRow("down") << Points{6, 6, 3, false, 2};
        QTest::newRow("down stops at 0") << Points{6, 6, 0, false, 0};
        QTest::newRow("no deck, no points") << Points{0, 0, 0, true, 0};
    }
    void scorePoints()
    {
        QFETCH(Points, row);
        const auto [matches, phrases, start, up, expected] = row;
        Game g = gameWith(3, {0, start}, matches, phrases);
        g.giveTurn(2);
        QCOMPARE(up ? g.scoreUp(1) : g.scoreDown(1), expected != start);
        QCOMPARE(g.score(1), qint16(expected));
        QCOMPARE(g.currentPlayer(), qint16(2));
        QCOMPARE(g.round(), qint16(1));
    }

    void scoresAndRoundsStopAtTheLimitOf16Bits()
    {
        Game g;
        g.deck(Kind::Match).deal(entries(questions::MaxDeckEntries));
        g.deck(Kind::Phrase).deal(entries(questions::MaxDeckEntries));
        while (g.scoreUp(0)) {
        }
        QCOMPARE(g.score(0), qint16(32767));
        for (int i = 1; i < 2 * 32767; ++i)
            g.moveTurn(Direction::Forward);
        QCOMPARE(g.round(), qint16(32767));
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, g.moveTurn(Direction::Forward));
        QCOMPARE(g.round(), qint16(32767));
    }

    void plays_data()
    {
        QTest::addColumn<Play>("row");
        const auto row = [](const char *name, const Play &play) { QTest::newRow(name) << play; };
        const QStringList tie{"tie 0 2 at 10"}, again{"Start New Game"};
        row("three players' round", {6, 6, "c3 n n n", "R2 T0 0,0,0 M4 P1", {}, 3});
        row("back from row 0 to the last, same round", {6, 6, "c3 n n n p", "R2 T2 0,0,0 M3 P1", {}, 4});
        row("from a given turn to the last and round", {6, 6, "c10 k8 n n", "R2 T0 0,0,0,0,0,0,0,0,0,0 M3 P1", {}, 2});
        row("either kind moves the same turn", {6, 6, "N n", "R2 T0 0,0 M2 P2", {}, 2});
        row("decks wrap both ways", {6, 6, "p P n", "R1 T1 0,0 M1 P6", {}, 3});
        row("one question: still a step", {1, 6, "n n p", "R2 T1 0,0 M1 P1", {}, 3});
        row("winner on the match tab; the phrase's next step is the deal", {6, 6, "w5 =1:6 n n N", "R1 T1 0,0 M1 P1", {"won 1 at 6"}, 4});
        row("winner on the phrase tab", {6, 6, "w5 =1:6 N N N", "R1 T1 0,0 M1 P2", {"won 1 at 6"}, 4});
        row("only the end of a round decides, rows in play only", {6, 6, "c4 w5 =3:9 =0:4 c3 n n n", "R2 T0 4,0,0 M4 P1", {}, 3});
        row("tie, another round from the match tab", {6, 6, "yes c3 =0:10 =2:10 =1:4 n n n n", "R2 T1 10,4,10 M5 P2", tie, 5});
        row("tie, another round from the phrase tab", {6, 6, "yes c3 =0:10 =2:10 =1:4 N N N n", "R2 T1 10,4,10 M3 P4", tie, 5});
        row("tie, new game", {6, 6, "no c3 =0:10 =2:10 =1:4 N N N", "R1 T0 0,0,0 M1 P1", tie, 4});
        row("tie continued without phrases", {6, 0, "yes w5 =0:5 =1:5 n n", "R2 T0 5,5 M3 P0", {"tie 0 1 at 5"}, 2});
        row("start over: yes", {6, 6, "c3 n n n n =1:3 sy", "R1 T0 0,0,0 M1 P1", again, 5});
        row("start over: no; the match count restarts anyway", {6, 6, "c3 n n n n =1:3 s", "R2 T1 0,3,0 M5 P1", again, 5});
        row("start over: no, phrases; the count is left alone", {6, 6, "c3 N N N N =1:3 S", "R2 T1 0,3,0 M1 P5", again, 4});
        row("start with the file gone", {6, 6, "n n =0:4 -m s", "R2 T0 4,0 M3 P1", {"File Does Not Exist"}, 3});
        row("start with the file gone, phrases", {6, 6, "N N =0:4 -p S", "R2 T0 4,0 M1 P3", {"File Does Not Exist"}, 2});
        row("start without questions resets the game", {6, 6, "n n =0:4 0m sy", "R1 T0 0,0 M3 P1", {again[0], "Exiting File Load"}, 3});
        row("a game end's deal waits for its file", {6, 6, "w5 =1:5 -m 0p n n +m s", "R1 T0 0,0 M1 P1",
                                                     {"won 1 at 5", "File Does Not Exist", "Exiting File Load while reloading"}, 4});
        row("the turn given", {6, 6, "c5 n n n n n k3 N k4 n", "R3 T0 0,0,0,0,0 M1 P2", {}, 7});
        row("fewer players: turn to row 0, rows keep their scores", {6, 6, "c4 =3:6 n n n n n c2 c4", "R2 T0 0,0,0,6 M6 P1", {}, 5});
        row("nothing shown, nothing moves", {0, 6, "n p", "R1 T0 0,0 M0 P1", {}, 0});
    }
    void plays()
    {
        QFETCH(Play, row);
        Script t;
        t.files[0] = row.matches;
        t.files[1] = row.phrases;
        t.play("S s");  // as the program starts
        t.counts = 0;
        t.seen.clear();
        t.play(row.script);
        QCOMPARE(t.state(), row.state);
        QCOMPARE(t.seen, row.seen);
        QCOMPARE(t.counts, row.counts);
    }

    void winnerAtTheEndOfARound_data()
    {
        QTest::addColumn<Ending>("row");
        QTest::newRow("best wins") << Ending{10, {12, 10}, 2, {0}, 12};
        QTest::newRow("equal best tie") << Ending{10, {10, 10}, 2, {0, 1}, 10};
        QTest::newRow("three of four tie") << Ending{5, {5, 2, 5, 5}, 4, {0, 2, 3}, 5};
        QTest::newRow("below target") << Ending{5, {4, 4, 0}, 3, {}, 4};
        QTest::newRow("row out of play never wins") << Ending{5, {1, 2, 0, 9}, 3, {}, 2};
        QTest::newRow("last row wins") << Ending{5, {0, 6}, 2, {1}, 6};
        QTest::newRow("all zero, target 5") << Ending{5, {0, 0}, 2, {}, 0};
    }
    void winnerAtTheEndOfARound()
    {
        QFETCH(Ending, row);
        const auto &[target, scores, players, winners, best] = row;
        Game g = gameWith(players, scores);
        g.setScoreToWin(qint16(target));
        // A score at the target in the middle of a round decides nothing.
        for (int i = 0; i < players - 1; ++i)
            QVERIFY(!g.moveTurn(Direction::Forward).roundEnded);
        const game::TurnChange change = g.moveTurn(Direction::Forward);
        QVERIFY(change.roundEnded);
        QCOMPARE(change.winners, winners);
        QCOMPARE(int(change.best), best);
        for (int r = 0; r < scores.size(); ++r)  // deciding changes no score
            QCOMPARE(g.score(r), qint16(scores[r]));
    }

    void endOfGameMessages()
    {
        QCOMPARE(game::winnerMessage(QStringLiteral("Bob, Jr.; the 2nd"), 6),
                 "Congratulations...\r\n\r\nBob, Jr.; the 2nd has won the game with a score of 6\r\n\r\nNicely Done!");
        QCOMPARE(game::tieMessage({"Ann", "Cy", "Di"}, 5), "Congratulations...\r\n\r\nPlayers:\r\n\r\nAnn  Cy  Di\r\n\r\n"
                                                            "Have tied with a score of 5\r\n\r\nPlay another round?");
    }

    void countdown_data()
    {
        QTest::addColumn<Ticks>("row");
        // Sound: s sound on, b buzzer, c music plays on through zero. Script:
        // r a new question, t a tick, s the timer started, dN the display set,
        // Q q the timer switched on or off with a question on show, X x without one
        const QStringList from3{"3", "2", "1", "0"};
        const QStringList zero{"wmp1 play", "wmp2 play", "wmp1 stop"};
        auto row = [](const char *name, const Ticks &ticks) { QTest::newRow(name) << ticks; };
        row("buzzer, music stops", {3, "sb", "r t t t t", from3, zero});
        row("buzzer, music plays on", {3, "sbc", "r t t t t", from3, {"wmp1 play", "wmp2 play"}});
        row("music stops only", {3, "s", "r t t t t", from3, {"wmp1 play", "wmp1 stop"}});
        row("silent, music on", {3, "sc", "r t t t t", from3, {"wmp1 play"}});
        row("sound off: silence", {3, "b", "r t t t t", from3, {}});
        row("length 1: zero at once", {1, "sb", "r t t", {"1", "0"}, zero});
        row("length 0: stops in silence", {0, "sb", "r t", {"0"}, {"wmp1 play"}});
        row("a new question restarts it", {30, "s", "r t r", {"29", "30"}, {"wmp1 play", "wmp1 play"}, true});
        row("timer off: a question leaves it idle at the length", {30, "s", "r t q d7 r", {"29", "30", "7", "30"}, {"wmp1 play"}});
        row("off with a question: idle", {20, "s", "d7 s q", {"7", "20"}, {}});
        row("on with a question: resumes", {20, "s", "d7 Q", {"7"}, {}, true});
        row("off without a question: no change", {20, "s", "d7 s x", {"7"}, {}, true});
        row("on without a question: no change", {20, "s", "d7 X", {"7"}, {}});
        row("a tick that cannot count fails and keeps ticking", {30, "s", "d-32768 s t", {"-32768", "!"}, {}, true});
    }
    void countdown()
    {
        QFETCH(Ticks, row);
        const auto &[length, sound, script, expectedShown, calls, running] = row;
        FakePlatform fake;
        Sound s;
        Countdown count(s, nullptr);
        QCOMPARE(count.timer()->interval(), 1000);
        QCOMPARE(count.timer()->timerType(), Qt::PreciseTimer);  // a coarse timer drifts seconds in two minutes
        QStringList shown;
        QObject::connect(&count, &Countdown::displayChanged, [&](const QString &t) { shown << t; });
        count.setLength(qint16(length));
        s.buzzer = sound.contains('b');
        s.continual = sound.contains('c');
        s.switchTo(sound.contains('s'));
        fake.mediaCalls.clear();
        for (const QString &step : script.split(' ')) {
            const QChar c = step[0];
            if (c == 'r')
                count.restart();
            else if (c == 's')
                count.timer()->start();
            else if (c == 'd')
                count.setDisplay(step.mid(1));
            else if (c.toLower() == 'q' || c.toLower() == 'x')
                count.switchTo(c.isUpper(), c.toLower() == 'q');
            else if (!count.isRunning())
                QFAIL("a tick of a stopped count");
            else
                try {
                    count.tick();
                } catch (const platform::RuntimeError &) {
                    shown << "!";
                }
        }
        QCOMPARE(shown, expectedShown);
        QCOMPARE(fake.mediaCalls, calls);
        QCOMPARE(count.isRunning(), running);
    }
};

TANDREL_TEST_MAIN(TestGame)
#include "tst_game.moc"
