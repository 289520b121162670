// Every input the fuzzers were seeded with or ever found a fault with, and generated question files full
// of near repeats, through the fuzzers' checks: the single-pass reader must accept what the literal rules accept.
#include "TestMain.h"
#include "Checks.h"
#include <QDirIterator>
#include <QFile>
#include <random>

namespace {
// Lines over a small alphabet, so that parts of other lines, placeholders glued to words and every separator are common.
QByteArray generatedFile(int seed)
{
    static const QStringList words = u"a|ab|ba|abc|cab|b|Blank|blank|BLANK|bLaNk|bla|nk|x;y|c,d| |  |\t|#|ANK|Bl|é|ß|_|__________"_qs.split('|');
    auto below = [gen = std::mt19937(seed)](qsizetype n) mutable { return std::uniform_int_distribution<int>(0, int(n) - 1)(gen); };
    QStringList lines;
    for (int i = 0; i < 600; ++i) {
        QString &line = lines.emplace_back();
        if (i > 0 && below(10) < 3) {  // a part of an earlier line, or an earlier line again
            const QString &earlier = lines[below(i)];
            line = earlier.sliced(below(earlier.size() + 1)).left(below(31));
        } else {
            for (int w = below(8); w >= 0; --w)
                line += words[below(words.size())] + (below(10) < 6 ? " " : "");
            if (seed % 2 == 0 && below(10) < 5)  // match lines
                line = below(10) < 5 ? line + " Blank" : "Blank " + line;
        }
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
        const QHash<QString, QString (*)(QByteArrayView)> checks{  // fuzz/seeds/TARGET and fuzz/regressions/TARGET
            {"questions", fuzzcheck::questionFile}, {"config", fuzzcheck::configFile}, {"rules", fuzzcheck::rulesDocument},
            {"kept", fuzzcheck::keptGame}};
        for (QDirIterator it(TANDREL_SOURCE_DIR "/fuzz", QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
            if (QFile file(it.next()); const auto check = checks.value(it.fileInfo().dir().dirName())) {
                QVERIFY(file.open(QIODevice::ReadOnly));
                QTest::addRow("%s", qPrintable(it.filePath().section('/', -3))) << Row{check, file.readAll()};
            }
        for (int seed = 2; seed < 82; ++seed)  // match lines and phrases, each in pieces of 2 to 41 bytes
            QTest::addRow("generated %s %d", seed % 2 ? "phrases" : "match lines", seed) << Row{fuzzcheck::questionFile, generatedFile(seed)};
        QByteArray templated = "\xff";  // phrases in pieces of 128 bytes, sharing most of their text but not parts of each other
        for (int i = 0; i < 3000; ++i)
            templated += "My friend number " + QByteArray::number(i) + " never eats Blank at the party.\r\n";
        QTest::newRow("templated") << Row{fuzzcheck::questionFile, templated + "friend number 12 never eats Blank at the\r\nnumber 3000 eats Blank"};
    }
    void inputPassesItsCheck()
    {
        QFETCH(Row, row);
        QCOMPARE(row.check(row.bytes), QString());  // else what went wrong
    }
};

TANDREL_TEST_MAIN(FuzzFindings)
#include "tst_fuzzfindings.moc"
