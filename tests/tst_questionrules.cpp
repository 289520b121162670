// The line rules of both question files, as data.
#include "TestMain.h"
#include "core/QuestionRules.h"

using questions::Kind;

namespace {
const QString U19 = questions::MatchBlank;
const QString U9 = questions::PhraseBlank;
}

class TestQuestionRules : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void matchFile_data();
    void matchFile();
    void phraseFile_data();
    void phraseFile();
    void splitShowsBothHalves();
};

void TestQuestionRules::matchFile_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("samples") << QStringList{"# Tandrel Match Lines ", "", "Blank Winter", "Christmas Blank"}
                             << QStringList{U19 + ",WINTER", "CHRISTMAS," + U19};
    QTest::newRow("part of an earlier line") << QStringList{"Shoe Blank", "hoe blank"}
                                             << QStringList{"SHOE," + U19};
    QTest::newRow("same line in other case") << QStringList{"Apple Blank", "APPLE BLANK", "apple blank"}
                                             << QStringList{"APPLE," + U19};
    QTest::newRow("placeholder twice") << QStringList{"Blank and Blank", "Snow BlankBlank"} << QStringList{};
    QTest::newRow("placeholder alone") << QStringList{"Blank", "  blank  "} << QStringList{};
    QTest::newRow("placeholder glued") << QStringList{"SnowBlank", "Blankety Cat"} << QStringList{};
    QTest::newRow("no placeholder") << QStringList{"Just words"} << QStringList{};
    QTest::newRow("text on both sides keeps the right half")
        << QStringList{"Once in a Blank Moon"} << QStringList{"ONCE IN A," + U19 + " MOON"};
    QTest::newRow("placeholder inside a longer word still counts once")
        << QStringList{"Blanket Fort"} << QStringList{};
    QTest::newRow("separators become spaces") << QStringList{"Ice;Cream,\tBlank"}
                                              << QStringList{"ICE CREAM," + U19};
    QTest::newRow("double spaces collapse") << QStringList{"Hot      Blank"} << QStringList{"HOT," + U19};
    QTest::newRow("comment after trim") << QStringList{"   # Comment Blank"} << QStringList{};
    QTest::newRow("tab then hash is not a comment") << QStringList{"\t#Hash Blank"}
                                                    << QStringList{" #HASH," + U19};
    QTest::newRow("a later longer line is not a repeat") << QStringList{"Hoe Blank", "Shoe Blank"}
                                                         << QStringList{"HOE," + U19, "SHOE," + U19};
    QTest::newRow("rejected lines do not count as repeats")
        << QStringList{"Blank Blank Shoe", "Blank Shoe"} << QStringList{U19 + ",SHOE"};
    QTest::newRow("bare spaces and empties") << QStringList{"", "    ", "#"} << QStringList{};
    QTest::newRow("overlong line skipped")
        << QStringList{QString(1200, 'A') + " Blank", "Short Blank"} << QStringList{"SHORT," + U19};
}

void TestQuestionRules::matchFile()
{
    QFETCH(QStringList, lines);
    QFETCH(QStringList, entries);
    QCOMPARE(questions::acceptLines(Kind::Match, lines), entries);
}

void TestQuestionRules::phraseFile_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("entries");

    QTest::newRow("three spellings") << QStringList{"A Blank b BLANK c blank d"}
                                     << QStringList{"A " + U9 + " b " + U9 + " c " + U9 + " d"};
    QTest::newRow("other spellings do not count") << QStringList{"A bLaNk here"} << QStringList{};
    QTest::newRow("case matters for repeats") << QStringList{"The Blank cat", "the Blank cat", "The Blank cat"}
                                              << QStringList{"The " + U9 + " cat", "the " + U9 + " cat"};
    QTest::newRow("part of an earlier phrase") << QStringList{"Mary has a Blank lamb.", "has a Blank"}
                                               << QStringList{"Mary has a " + U9 + " lamb."};
    QTest::newRow("inside a longer word") << QStringList{"Grab a Blanket now"}
                                          << QStringList{"Grab a " + U9 + "et now"};
    QTest::newRow("longer word first on the line") << QStringList{"Blankets for all"}
                                                   << QStringList{U9 + " ets for all"};
    QTest::newRow("at the start and the end") << QStringList{"Blank", "Blank."}
                                              << QStringList{U9 + " ", U9 + " ."};
    QTest::newRow("glued twice") << QStringList{"xBLANKBlanky"} << QStringList{"x" + U9 + " " + U9 + " y"};
    QTest::newRow("commas and semicolons") << QStringList{"Paul said, 'a Blank suit;' ok"}
                                           << QStringList{"Paul said 'a " + U9 + " suit ' ok"};
    QTest::newRow("comment and empty") << QStringList{"# Tandrel Phrase Questions ", "", "#Blank"}
                                       << QStringList{};
    QTest::newRow("tab kept by the trim, then a space")
        << QStringList{"\tWe Blank"} << QStringList{" We " + U9};
}

void TestQuestionRules::phraseFile()
{
    QFETCH(QStringList, lines);
    QFETCH(QStringList, entries);
    QCOMPARE(questions::acceptLines(Kind::Phrase, lines), entries);
}

void TestQuestionRules::splitShowsBothHalves()
{
    const auto halves = questions::splitMatch("ONCE IN A," + U19 + " MOON");
    QCOMPARE(halves.left, QStringLiteral("ONCE IN A"));
    QCOMPARE(halves.right, U19 + " MOON");
}

TANDREL_TEST_MAIN(TestQuestionRules)
#include "tst_questionrules.moc"
