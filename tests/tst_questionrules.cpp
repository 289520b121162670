// Question files into decks: the line rules of both kinds as data, the
// repeat check and the shuffle.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "core/RepeatFilter.h"
#include "platform/Globals.h"

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
};

TANDREL_TEST_MAIN(TestQuestionRules)
#include "tst_questionrules.moc"
