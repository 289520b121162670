// Every input the fuzzers were seeded with or ever found a fault with, and
// generated question files full of near repeats, run through the fuzzers'
// checks: among them, the single-pass reader must accept exactly what the
// rules applied literally accept.
#include "TestMain.h"
#include "Checks.h"
#include "core/QuestionRules.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <random>

using questions::Kind;

namespace {
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

// A question file for the check: its first byte picks the kind and the size
// of the pieces the rest arrives in.
QByteArray checked(Kind kind, int piece, const QStringList &lines)
{
    return char((piece - 1) << 1 | (kind == Kind::Phrase)) + lines.join("\r\n").toUtf8();
}
}  // namespace

class FuzzFindings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void inputPassesItsCheck_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QByteArray>("bytes");
        const QDir fuzz(QStringLiteral(TANDREL_SOURCE_DIR "/fuzz"));
        for (const char *folder : {"seeds", "regressions"})
            for (const char *target : {"questions", "config", "rules"})
                for (QDirIterator it(fuzz.filePath(QStringLiteral("%1/%2").arg(folder, target)), QDir::Files); it.hasNext();) {
                    QFile file(it.next());
                    QVERIFY(file.open(QIODevice::ReadOnly));
                    QTest::addRow("%s/%s/%s", folder, target, qPrintable(it.fileName())) << QString(target) << file.readAll();
                }
        for (int seed = 1; seed <= 40; ++seed) {
            std::mt19937 gen(seed);
            for (Kind kind : {Kind::Match, Kind::Phrase})
                QTest::addRow("generated %s %d", kind == Kind::Match ? "match lines" : "phrases", seed)
                    << "questions" << checked(kind, 1 + seed % 64, generatedFile(gen, kind, 600));
        }
        // Lines that share most of their text but are not parts of each other.
        QStringList lines;
        for (int i = 0; i < 3000; ++i)
            lines << QStringLiteral("My friend number %1 never eats Blank at the party.").arg(i);
        lines << QStringLiteral("friend number 12 never eats Blank at the") << QStringLiteral("number 3000 eats Blank");
        QTest::newRow("templated phrases") << "questions" << checked(Kind::Phrase, 128, lines);
    }
    void inputPassesItsCheck()
    {
        QFETCH(QString, target);
        QFETCH(QByteArray, bytes);
        const QString failure = target == QLatin1String("questions") ? fuzzcheck::questionFile(bytes)
                                : target == QLatin1String("config")  ? fuzzcheck::configFile(bytes)
                                                                     : fuzzcheck::rulesDocument(bytes);
        QVERIFY2(failure.isEmpty(), qPrintable(failure));
    }
};

TANDREL_TEST_MAIN(FuzzFindings)
#include "tst_fuzzfindings.moc"
