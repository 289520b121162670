// The fast reader gives exactly the decks of the rules applied literally.
#include "TestMain.h"
#include "core/QuestionRules.h"
#include "core/RepeatFilter.h"
#include <random>

using questions::Kind;

namespace {
// The rules exactly as written: each step in turn, and a line repeats when it
// occurs anywhere in the text of the lines accepted so far, each followed by ";".
QStringList literalReader(Kind kind, const QStringList &lines)
{
    QString accepted;
    QStringList entries;
    for (const QString &line : lines) {
        if (entries.size() >= questions::MaxDeckEntries)
            break;
        const auto entry = kind == Kind::Match ? questions::literal::matchCandidate(line)
                                               : questions::literal::phraseCandidate(line);
        if (!entry || accepted.contains(*entry))
            continue;
        accepted += *entry + QLatin1Char(';');
        entries.append(*entry);
    }
    return entries;
}

// Lines over a small alphabet, so that parts of other lines, placeholders
// glued to words and every kind of separator are common.
QStringList generatedFile(std::mt19937 &gen, Kind kind, int count)
{
    static const QStringList words = {"a", "ab", "ba", "abc", "cab", "b", "Blank", "blank", "BLANK", "bLaNk",
                                      "bla", "nk", "x;y", "c,d", " ", "  ", "\t", "#", "ANK", "Bl", QString::fromUtf8("é"),
                                      QString::fromUtf8("ß"), "_", "__________"};
    QStringList lines;
    std::uniform_int_distribution<int> pick(0, int(words.size()) - 1), len(0, 7), roll(0, 9);
    for (int i = 0; i < count; ++i) {
        if (!lines.isEmpty() && roll(gen) < 3) {
            // A part of an earlier line, or an earlier line again.
            const QString &earlier = lines[std::uniform_int_distribution<int>(0, int(lines.size()) - 1)(gen)];
            const int from = std::uniform_int_distribution<int>(0, int(earlier.size()))(gen);
            lines.append(earlier.mid(from, std::uniform_int_distribution<int>(0, 30)(gen)));
            continue;
        }
        QString line;
        for (int w = len(gen); w >= 0; --w)
            line += words[pick(gen)] + (roll(gen) < 6 ? QStringLiteral(" ") : QString());
        if (kind == Kind::Match && roll(gen) < 5)
            line = roll(gen) < 5 ? line + " Blank" : "Blank " + line;
        lines.append(line);
    }
    return lines;
}
}  // namespace

class TestRepeatFilter : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void singlePassRulesEqualLiteral_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 20; ++seed)
            QTest::addRow("seed %d", seed) << seed;
    }
    void singlePassRulesEqualLiteral()
    {
        QFETCH(int, seed);
        std::mt19937 gen(seed);
        for (Kind kind : {Kind::Match, Kind::Phrase})
            for (const QString &line : generatedFile(gen, kind, 500)) {
                const auto fast = questions::candidate(kind, line);
                const auto slow = kind == Kind::Match ? questions::literal::matchCandidate(line)
                                                      : questions::literal::phraseCandidate(line);
                QVERIFY2(fast == slow, qPrintable(QStringLiteral("line '%1': '%2' against '%3'")
                                                      .arg(line, fast.value_or("(none)"), slow.value_or("(none)"))));
            }
    }
    void fastReaderEqualsLiteral_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("seed");
        for (int seed = 1; seed <= 40; ++seed) {
            QTest::addRow("match %d", seed) << int(Kind::Match) << seed;
            QTest::addRow("phrase %d", seed) << int(Kind::Phrase) << seed;
        }
    }
    void fastReaderEqualsLiteral()
    {
        QFETCH(int, kind);
        QFETCH(int, seed);
        std::mt19937 gen(seed);
        const QStringList lines = generatedFile(gen, Kind(kind), 600);
        const QStringList fast = questions::acceptLines(Kind(kind), lines);
        QCOMPARE(fast, literalReader(Kind(kind), lines));
        QVERIFY(!fast.isEmpty());
    }
    void templatedLinesStayDistinct()
    {
        // Lines that share most of their text but are not parts of each other.
        QStringList lines;
        for (int i = 0; i < 3000; ++i)
            lines << QStringLiteral("My friend number %1 never eats Blank at the party.").arg(i);
        lines << QStringLiteral("friend number 12 never eats Blank at the") << QStringLiteral("number 3000 eats Blank");
        const QStringList entries = questions::acceptLines(Kind::Phrase, lines);
        QCOMPARE(entries.size(), 3001);
        QCOMPARE(entries, literalReader(Kind::Phrase, lines));
    }
};


TANDREL_TEST_MAIN(TestRepeatFilter)
#include "tst_repeatfilter.moc"
