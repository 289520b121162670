// Every input the fuzzers were seeded with or ever found a fault with, and generated question files full
// of near repeats, through the fuzzers' checks: the single-pass reader must accept what the literal rules accept.
#include "TestMain.h"
#include "Checks.h"
#include <QDirIterator>
#include <QFile>
#include <random>

namespace {
// A question file for the check: its first byte, the seed, picks the kind (phrases when odd) and the size of
// the pieces the rest arrives in. Its lines are over a small alphabet, so that parts of other lines,
// placeholders glued to words and every kind of separator are common.
QByteArray generatedFile(int seed)
{
    static const QStringList words = u"a|ab|ba|abc|cab|b|Blank|blank|BLANK|bLaNk|bla|nk|x;y|c,d| |  |\t|#|ANK|Bl|é|ß|_|__________"_qs.split('|');
    std::mt19937 gen(seed);
    const auto below = [&](qsizetype n) { return std::uniform_int_distribution<int>(0, int(n) - 1)(gen); };
    QStringList lines;
    for (int i = 0; i < 600; ++i) {
        QString line;
        if (!lines.isEmpty() && below(10) < 3) {  // a part of an earlier line, or an earlier line again
            const QString &earlier = lines[below(lines.size())];
            line = earlier.sliced(below(earlier.size() + 1)).left(below(31));
        } else {
            for (int w = below(8); w >= 0; --w)
                line += words[below(words.size())] + (below(10) < 6 ? " " : "");
            if (seed % 2 == 0 && below(10) < 5)  // match lines
                line = below(10) < 5 ? line + " Blank" : "Blank " + line;
        }
        lines.append(line);
    }
    return char(seed) + lines.join("\r\n").toUtf8();
}

struct Row { QString (*check)(QByteArrayView); QByteArray bytes; };  // a fuzz target's check, and an input for it
}  // namespace

class FuzzFindings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void inputPassesItsCheck_data()
    {
        QTest::addColumn<Row>("row");
        const std::pair<const char *, QString (*)(QByteArrayView)> targets[] = {
            {"questions", fuzzcheck::questionFile}, {"config", fuzzcheck::configFile}, {"rules", fuzzcheck::rulesDocument}};
        for (const char *folder : {"seeds", "regressions"})
            for (const auto &[target, check] : targets)
                for (QDirIterator it(QStringLiteral(TANDREL_SOURCE_DIR "/fuzz/%1/%2").arg(folder, target), QDir::Files); it.hasNext();) {
                    QFile file(it.next());
                    QVERIFY(file.open(QIODevice::ReadOnly));
                    QTest::addRow("%s/%s/%s", folder, target, qPrintable(it.fileName())) << Row{check, file.readAll()};
                }
        for (int seed = 2; seed < 82; ++seed)  // match lines and phrases, each in pieces of 2 to 41 bytes
            QTest::addRow("generated %s %d", seed % 2 ? "phrases" : "match lines", seed) << Row{fuzzcheck::questionFile, generatedFile(seed)};
        QByteArray templated = "\xff";  // phrases in pieces of 128 bytes, sharing most of their text but not parts of each other
        for (int i = 0; i < 3000; ++i)
            templated += "My friend number " + QByteArray::number(i) + " never eats Blank at the party.\r\n";
        templated += "friend number 12 never eats Blank at the\r\nnumber 3000 eats Blank";
        QTest::newRow("templated phrases") << Row{fuzzcheck::questionFile, templated};
    }
    void inputPassesItsCheck()
    {
        QFETCH(Row, row);
        const QString failure = row.check(row.bytes);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
};

TANDREL_TEST_MAIN(FuzzFindings)
#include "tst_fuzzfindings.moc"
