// Question files into decks: the line rules of both kinds as data, the two
// messages of a start, the shuffle, and the shipped files.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "core/RepeatFilter.h"
#include "platform/Globals.h"
#include <QFile>

using questions::Kind;

namespace {
const QString U19 = questions::MatchBlank;
const QString U9 = questions::PhraseBlank;
}

class TestQuestionRules : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void lineRules_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QStringList>("entries");
        auto match = [](const char *name, const QStringList &lines, const QStringList &entries) {
            QTest::newRow(name) << int(Kind::Match) << lines << entries;
        };
        auto phrase = [](const char *name, const QStringList &lines, const QStringList &entries) {
            QTest::newRow(name) << int(Kind::Phrase) << lines << entries;
        };
        match("samples", {"# Tandrel Match Lines ", "", "Blank Winter", "Christmas Blank"}, {U19 + ",WINTER", "CHRISTMAS," + U19});
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

    void startMessages()
    {
        FakePlatform fake;
        const QString path = fake.path("TandrelLines.txt");
        QVERIFY(!decks::CheckQuestionFile(path));
        fake.writeFile("TandrelLines.txt", "# only a comment Blank\r\nBlank\r\n");
        QVERIFY(decks::CheckQuestionFile(path));
        QVERIFY(!decks::LoadMatchDeck(path));
        QCOMPARE(fake.boxes.size(), 2);
        QCOMPARE(fake.boxes[0].title, QStringLiteral("File Does Not Exist"));
        QCOMPARE(fake.boxes[0].text, "File " + path + " does not exist, please create it from the Config menu item, or \r\n"
                                     "performing an Update from the About menu pulldown will retrieve this file from the internet.\r\n\r\n");
        QCOMPARE(fake.boxes[1].title, QStringLiteral("Exiting File Load"));
        QCOMPARE(fake.boxes[1].text, "File " + path + " does not contain any questions.");
        QCOMPARE(fake.boxes[0].style + fake.boxes[1].style, 128);
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

    void fullDeckEndsTheReading_data()
    {
        QTest::addColumn<int>("repeatEvery");  // every n-th line repeats the one before; 0: none; 1: all do
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("stopsAt");  // the line whose add says the deck is full; -1: none
        QTest::addColumn<int>("entries");
        QTest::addColumn<int>("last");  // the number in the deck's last entry
        QTest::newRow("distinct lines: the deck's last ends it") << 0 << 40000 << 32765 << 32766 << 32765;
        QTest::newRow("every other line a repeat") << 2 << 70000 << 65531 << 32766 << 65530;
        QTest::newRow("one short of full") << 0 << 32765 << -1 << 32765 << 32764;
        QTest::newRow("repeats only: read to the end") << 1 << 50000 << -1 << 1 << 0;
    }
    void fullDeckEndsTheReading()
    {
        QFETCH(int, repeatEvery);
        QFETCH(int, lines);
        QFETCH(int, stopsAt);
        QFETCH(int, entries);
        QFETCH(int, last);
        questions::Reader reader(Kind::Match);
        QString line = QStringLiteral("Q0x Blank");
        int stopped = -1;
        for (int i = 0; i < lines && stopped < 0; ++i) {
            if (repeatEvery == 0 || (repeatEvery > 1 && i % repeatEvery == 0))
                line = QStringLiteral("Q%1x Blank").arg(i);
            if (!reader.add(line))
                stopped = i;
        }
        QCOMPARE(stopped, stopsAt);
        const QStringList deck = reader.finish();
        QCOMPARE(deck.size(), entries);
        QCOMPARE(deck.first(), "Q0X," + U19);
        QCOMPARE(deck.last(), QStringLiteral("Q%1X,").arg(last) + U19);
    }

    void linesBuiltAgainstTheQuickCheckGetTheSureOne()
    {
        // Runs of one letter that differ in one place share every piece.
        QStringList lines;
        for (int i = 0; i < 600; ++i)
            lines << QString(200, QLatin1Char('a')).replace(i % 200, 1, QLatin1Char(i % 400 < 200 ? 'b' : 'c')) + " Blank";
        lines << QString(150, QLatin1Char('a')) << QString(190, QLatin1Char('a')) + 'b' << 'b' + QString(190, QLatin1Char('a'));
        QVERIFY(!RepeatFilter::keepByAnchors(lines));
        const std::vector<bool> kept = RepeatFilter::keep(lines);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            bool inside = false;
            for (qsizetype j = 0; j < i && !inside; ++j)
                inside = lines[j].contains(lines[i]);
            QVERIFY2(kept[size_t(i)] == !inside, qPrintable(QString::number(i)));
        }
    }

    void shippedFilesLoseNoLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("kind");
        QTest::newRow("match lines") << "TandrelLines.txt" << int(Kind::Match);
        QTest::newRow("phrases") << "TandrelPhrases.txt" << int(Kind::Phrase);
    }
    void shippedFilesLoseNoLine()
    {
        QFETCH(QString, name);
        QFETCH(int, kind);
        QFile file(QStringLiteral(TANDREL_SOURCE_DIR "/assets/") + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(!bytes.contains("\n\n") && !bytes.contains("\r\r"));  // CR LF throughout
        int questionLines = 0;
        for (const QByteArray &line : bytes.split('\n'))
            questionLines += !line.trimmed().isEmpty() && !line.startsWith('#');
        QCOMPARE(decks::ReadEntries(Kind(kind), file.fileName()).size(), questionLines);
        QVERIFY(questionLines >= 100);
    }
};

TANDREL_TEST_MAIN(TestQuestionRules)
#include "tst_questionrules.moc"
