// The game's rules on the model alone: question lines into decks, scores,
// the turn, rounds, the winner and the tie; the countdown and the sound with
// recording players.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/AudienceView.h"
#include "core/Decks.h"
#include "core/Game.h"
#include "core/RepeatFilter.h"
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

QStringList entries(int count, const QString &suffix = {})
{
    QStringList list;
    for (int i = 1; i <= count; ++i)
        list << QString::number(i) + suffix;
    return list;
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
    audience::Moment moment;        // beside the game, for the room's view
    audience::View endView;         // what the room saw during the last end-of-game dialog
    std::optional<QStringList> readDeck(Kind k) override
    {
        if (files[int(k)] > 0)
            return entries(files[int(k)], k == Kind::Match ? "," + U19 : "");
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
        moment.ending = &c;
        endView = audience::viewOf(g, moment);
        moment.ending = nullptr;
        return c.won() ? game::Answer::Close : tie;
    }
    void runStart(Kind k) override { g.start(k, *this); }
    void runNext(Kind k) override { g.next(k, *this); }
    void runChangePlayer(Direction d) override { g.changePlayer(d, *this); }

    // Space-separated steps; lower case the match kind, upper case phrases:
    //   n N next, p P previous, s S start (y x: start over answered yes or not)
    //   u0 d0 a point up or down for row 0 ("no point" when refused); =0:5 row 0's score made 5
    //   c3 three players, w5 score to win 5, k2 row 2's turn
    //   yes no: the tie's answer; -m -p the file gone, 0m 0p without questions, +m +p four questions
    //   @0:Ann row 0 named Ann and done; ~0:Ann row 0's name typed, not finished
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
            else if (c == 'u' || c == 'd') {
                if (!(c == 'u' ? g.scoreUp(n) : g.scoreDown(n)))
                    seen << "no point";
            } else if (c == '=')
                for (int want = step.section(':', 1).toInt(); g.score(n) != want;)
                    g.score(n) < want ? g.scoreUp(n) : g.scoreDown(n);
            else if (c == 'c')
                g.setPlayerCount(n);
            else if (c == 'w')
                g.setScoreToWin(qint16(n));
            else if (c == 'k')
                g.giveTurn(n);
            else if (c == '@' || c == '~') {
                g.setName(n, step.section(':', 1));
                if (c == '@')
                    g.finishName(n);
            } else
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
// A kind, a file's lines, and the deck's entries in file order.
struct Lines { Kind kind; QStringList lines, entries; };
// Files of that many matches and phrases, a script, the state after, what the host was shown, the countdown's restarts.
struct Play { int matches, phrases; QString script, state; QStringList seen; int counts; };
// A script (from the program's start), the tab in front, the countdown (empty: timer off), the scoreboard asked
// for, and the room's view: scene, status, question, headline, players (* marked), count.
struct Room { QString script; Kind kind; QString count; bool scoreboard; QString view; int length = 30; };
// A countdown's length, its sound, a script, every change of the display ("!" a tick that failed), the
// players' calls, and whether it runs at the end.
// A script, the states seen undoing it step by step ("none": nothing left to undo), and what is
// played after those undos (then nothing is left to redo).
struct Undo { QString script; QStringList undone; QString then = {}; };
struct Ticks { int length; QString sound, script; QStringList shown, calls; bool running = false; };
}  // namespace

class TestGame : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lineRules_data()
    {
        QTest::addColumn<Lines>("row");
        const auto row = [](const char *name, const Lines &lines) { QTest::newRow(name) << lines; };
        const Kind m = Kind::Match, p = Kind::Phrase;
        const QString B301 = QString(281, 'B'), B300 = QString(280, 'B');  // entries of 301 and 300 characters
        row("samples", {m, {"# Tandrel Match Lines ", "", "Blank Wizard", "Christmas Blank"}, {U19 + ",WIZARD", "CHRISTMAS," + U19}});
        row("part of an earlier line, in any case", {m, {"Shoe Blank", "hoe blank", "SHOE BLANK"}, {"SHOE," + U19}});
        row("placeholder twice", {m, {"Blank and Blank", "Snow BlankBlank"}, {}});
        row("placeholder alone, glued or missing", {m, {"Blank", "  blank  ", "SnowBlank", "Blankety Cat", "Just words"}, {}});
        row("text on both sides keeps the right half", {m, {"Once in a Blank Moon"}, {"ONCE IN A," + U19 + " MOON"}});
        row("separators become spaces, runs of them one", {m, {"Ice;Cream,\tBlank"}, {"ICE CREAM," + U19}});
        row("comment after trim, tab then hash is not", {m, {"   # Comment Blank", "\t#Hash Blank"}, {" #HASH," + U19}});
        row("a later longer line is not a repeat", {m, {"Hoe Blank", "Shoe Blank"}, {"HOE," + U19, "SHOE," + U19}});
        row("rejected lines do not count as repeats", {m, {"Blank Blank Shoe", "Blank Shoe"}, {U19 + ",SHOE"}});
        row("longest line kept, one longer skipped", {m, {B301 + " Blank", B300 + " Blank"}, {B300 + "," + U19}});
        row("three spellings", {p, {"A Blank b BLANK c blank d"}, {"A " + U9 + " b " + U9 + " c " + U9 + " d"}});
        row("other spellings do not count", {p, {"A bLaNk here"}, {}});
        row("case matters for repeats", {p, {"The Blank cat", "the Blank cat", "The Blank cat"}, {"The " + U9 + " cat", "the " + U9 + " cat"}});
        row("inside a longer word", {p, {"Grab a Blanket now", "Blankets for all"}, {"Grab a " + U9 + "et now", U9 + " ets for all"}});
        row("at the start and the end", {p, {"Blank", "Blank."}, {U9 + " ", U9 + " ."}});
        row("glued twice", {p, {"xBLANKBlanky"}, {"x" + U9 + " " + U9 + " y"}});
        row("commas and semicolons", {p, {"Paul said, 'a Blank suit;' ok"}, {"Paul said 'a " + U9 + " suit ' ok"}});
        row("comment and empty", {p, {"# Tandrel Phrase Questions ", "", "#Blank"}, {}});
        row("tab kept by the trim, then a space", {p, {"\tWe Blank"}, {" We " + U9}});
    }
    void lineRules()
    {
        QFETCH(Lines, row);
        QCOMPARE(questions::acceptLines(row.kind, row.lines), row.entries);
        if (row.kind == Kind::Match && !row.entries.isEmpty()) {
            const auto halves = questions::splitMatch(row.entries.last());
            QCOMPARE(halves.left + ',' + halves.right, row.entries.last());
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

    void deckIsTheAcceptedLinesShuffled()
    {
        // i = 0: 0.5*3+0 = 1.5 rounds to 2; i = 1: 0.25*2+1 = 1.5 rounds to 2;
        // i = 2: 0.99*1+2 rounds to 3; i = 3: always itself.
        FakePlatform fake;
        fake.randomValues = {0.5f, 0.25f, 0.99f, 0.0f};
        const QString path = fake.writeFile("TandrelLines.txt", "A Blank\r\nB Blank\r\nC Blank\r\nD Blank\r\n");
        QCOMPARE(decks::LoadDeck(Kind::Match, path).value(), (QStringList{"C," + U19, "A," + U19, "D," + U19, "B," + U19}));
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

    void scoresAndRoundsStopAtTheLimitOf16Bits()
    {
        Game g;
        g.deck(Kind::Match).deal(entries(questions::MaxDeckEntries));
        g.deck(Kind::Phrase).deal(entries(questions::MaxDeckEntries));
        while (g.scoreUp(0)) {
        }
        QCOMPARE(g.score(0), qint16(32767));
        g.deck(Kind::Match).previous();  // a full deck steps round both ways
        QCOMPARE(g.deck(Kind::Match).position(), qint16(questions::MaxDeckEntries));
        g.deck(Kind::Match).next();
        QCOMPARE(g.deck(Kind::Match).position(), qint16(1));
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
        row("points up to both decks' size, down to 0", {6, 5, "=1:10 u1 u1 u0 d0 d0", "R1 T0 0,11 M1 P1", {"no point", "no point"}, 0});
        row("three players' round", {6, 6, "c3 n n n", "R2 T0 0,0,0 M4 P1", {}, 3});
        row("back from row 0 to the last, same round", {6, 6, "c3 n n n p", "R2 T2 0,0,0 M3 P1", {}, 4});
        row("ten players, from a given turn to the last and round", {6, 6, "c10 k8 n n", "R2 T0 0,0,0,0,0,0,0,0,0,0 M3 P1", {}, 2});
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
        QVERIFY(!t.reloading);  // the title never stays "reloading"
    }

    void undoRedo_data()
    {
        QTest::addColumn<Undo>("row");
        const auto row = [](const char *name, const Undo &undo) { QTest::newRow(name) << undo; };
        row("a round's end and the players chosen", {"c3 n n n", {"R1 T2 0,0,0 M3 P1 W10", "R1 T1 0,0,0 M2 P1 W10",
                                                                   "R1 T0 0,0,0 M1 P1 W10", "R1 T0 0,0 M1 P1 W10", "none"}});
        row("back and the round stays", {"c3 n n n p", {"R2 T0 0,0,0 M4 P1 W10", "R1 T2 0,0,0 M3 P1 W10"}});
        row("a tie played on, both kinds moved", {"yes c3 w5 =0:5 =2:5 =1:4 n n n", {"R1 T2 5,4,5 M3 P1 W5", "R1 T1 5,4,5 M2 P1 W5"}});
        row("points, a turn given, the target; names stay", {"@0:Ann u0 u1 k1 w15 d0", {"R1 T1 1,1 M1 P1 W15", "R1 T1 1,1 M1 P1 W10",
                                                                                       "R1 T0 1,1 M1 P1 W10", "R1 T0 1,0 M1 P1 W10", "R1 T0 0,0 M1 P1 W10", "none"}});
        row("a point refused is no change", {"u0 d1", {"R1 T0 0,0 M1 P1 W10", "none"}});
        row("a winner's new game ends the history", {"w5 =1:5 n n", {"none"}});
        row("a start ends it", {"n n sy", {"none"}});
        row("a change after an undo ends the redo", {"n n", {"R1 T1 0,0 M2 P1 W10"}, "u0"});
    }
    void undoRedo()
    {
        QFETCH(Undo, row);
        Script t;
        t.play("S s");
        t.play(row.script);
        const auto state = [&] { return t.state() + " W" + QString::number(t.g.scoreToWin()) + ' ' + t.g.name(0); };
        const QString end = state(), endSeen = t.seen.join('|');
        QStringList undone;
        while (undone.size() < row.undone.size())
            undone << (t.g.undo() ? state().chopped(1 + t.g.name(0).size()) : QStringLiteral("none"));
        QCOMPARE(undone, row.undone);
        QCOMPARE(t.g.name(0), end.section(' ', -1));
        if (!row.then.isEmpty()) {
            t.play(row.then);
            QVERIFY(!t.g.redo());
            return;
        }
        while (t.g.redo())
            ;
        QCOMPARE(state(), end);
        QCOMPARE(t.seen.join('|'), endSeen);  // no dialog again
    }

    void audienceViews_data()
    {
        QTest::addColumn<Room>("row");
        const auto row = [](const char *name, const Room &room) { QTest::newRow(name) << room; };
        const Kind m = Kind::Match, p = Kind::Phrase;
        const QString two = "Player 1 0,Player 2 0*";
        row("a match in halves, its number and round, never the deck's size; the share left", {"S s n", m, "12", false, "Q|Match 2 · Round 1|2/" + U19 + "||" + two + "|12 40%"});
        row("the phrase tab's own deck", {"S s N N", p, "30", false, "Q|Phrase 3 · Round 2|3||Player 1 0*,Player 2 0|30 100%"});
        row("time up until the next question", {"S s n", m, "0", false, "Q|Match 2 · Round 1|2/" + U19 + "||" + two + "|Time's up! up"});
        row("a countdown of no length: no count", {"S s n", m, "0", false, "Q|Match 2 · Round 1|2/" + U19 + "||" + two + "|-", 0});
        row("nothing dealt: no question, no count", {"-p S", p, "30", false, "Q|Round 1|||Player 1 0*,Player 2 0|-"});
        row("names once finished, blank or the default: Player N; timer off", {"S s c4 @0:Ann ~1:Bob @2: @3:Name", m, "", false, "Q|Match 1 · Round 1|1/" + U19 + "||Ann 0*,Player 2 0,Player 3 0,Player 4 0|-"});
        row("scoreboard: best first, equal scores in row order", {"S s c3 =1:3 =2:3 =0:1 n", m, "30", true, "S|Match 2 · Round 1|||Player 2 3*,Player 3 3,Player 1 1|30 100%"});
        row("winner: ranking and words, no question or count", {"S s w2 c3 =2:2 =1:1 n n n", m, "9", false, "W|Match 4 · Round 2||Player 3 wins with 2!|Player 3 2*,Player 2 1,Player 1 0|-"});
        row("tie of three; a phrase steps after the turn", {"S s w2 c4 =3:2 =0:2 =2:2 N N N N", p, "9", false, "T|Phrase 4 · Round 2||Player 1, Player 3 and Player 4 tie at 2: another round?|Player 1 2*,Player 3 2*,Player 4 2*,Player 2 0|-"});
    }
    void audienceViews()
    {
        QFETCH(Room, row);
        Script t;
        t.moment = {row.kind, !row.count.isEmpty(), row.count, qint16(row.length), nullptr, row.scoreboard};
        t.play(row.script);
        const audience::View v = QString("WT").contains(row.view[0]) ? t.endView : audience::viewOf(t.g, t.moment);
        QStringList players;
        for (const audience::Player &player : v.players)
            players << player.name + ' ' + QString::number(player.score) + (player.marked ? "*" : "");
        const QString clock = v.clock == audience::Clock::Hidden ? "-"
                              : v.clock == audience::Clock::TimeUp ? v.count + " up"
                                                                   : v.count + QString(" %1%").arg(qRound(v.timeLeft * 100));
        QCOMPARE(QStringList({QString("QWTS")[int(v.scene)], v.status, v.question.join('/'), v.headline, players.join(','), clock}).join('|'), row.view);
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
        row("sound off: silence", {3, "b", "r t t t t", from3, {}});
        row("length 1: zero at once", {1, "sb", "r t t", {"1", "0"}, zero});
        row("length 0: stops in silence", {0, "sb", "r t", {"0"}, {"wmp1 play"}});
        row("a new question restarts it", {30, "s", "r t r", {"29", "30"}, {"wmp1 play", "wmp1 play"}, true});
        row("timer off: a question leaves it idle at the length", {30, "s", "r t q d7 r", {"29", "30", "7", "30"}, {"wmp1 play"}});
        row("on with a question: resumes", {20, "s", "d7 Q", {"7"}, {}, true});
        row("off without a question: counts on to the next question", {20, "s", "d7 s x t r", {"7", "6", "20"}, {}});
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
        QCOMPARE(fake.mediaCalls.join('|').section('|', -1), sound.contains('s') ? "wmp1 loop on" : "wmp1 stop");  // the music loops, or stops
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

    void soundFollowsTheChosenOutput_data()
    {
        // The outputs plugged in, one after another ("*" the default); the
        // output chosen; the outputs both players were moved to, in order.
        QTest::addColumn<QStringList>("plugged");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("moves");
        QTest::newRow("chosen and there") << QStringList{"speakers* tv"} << "tv" << "tv";
        QTest::newRow("unplugged mid-song, then back") << QStringList{"speakers* tv", "speakers*", "speakers* tv"} << "tv" << "tv speakers tv";
        QTest::newRow("not there at the start") << QStringList{"speakers*", "speakers* tv"} << "tv" << "speakers tv";
        QTest::newRow("another device comes: stays") << QStringList{"speakers* tv", "speakers* tv usb", "usb* tv"} << "tv" << "tv";
        QTest::newRow("none chosen: the default, wherever it goes") << QStringList{"speakers* tv", "speakers tv*"} << "" << "speakers tv";
    }
    void soundFollowsTheChosenOutput()
    {
        QFETCH(QStringList, plugged);
        QFETCH(QString, chosen);
        QFETCH(QString, moves);
        FakePlatform fake;
        const auto plug = [](const QString &names) {
            QList<platform::AudioOutput> outputs;
            for (const QString &name : names.split(' '))
                outputs.append({QString(name).remove('*').toUtf8(), name, name.endsWith('*')});
            return outputs;
        };
        fake.outputs = plug(plugged.takeFirst());
        Sound s;
        s.switchTo(true);
        s.chooseOutput(chosen.toUtf8());
        for (const QString &names : plugged)
            fake.setOutputs(plug(names));
        QStringList music = fake.mediaCalls.filter("wmp1 output "), buzzer = fake.mediaCalls.filter("wmp2 output ");
        QCOMPARE(music.replaceInStrings("wmp1 output ", "").join(' '), moves);
        QCOMPARE(buzzer.replaceInStrings("wmp2 output ", ""), music);
        QVERIFY(!fake.mediaCalls.contains("wmp1 stop"));  // the song goes on
    }
};

TANDREL_TEST_MAIN(TestGame)
#include "tst_game.moc"
