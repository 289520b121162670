// Loads of big question files, timed against just reading their lines.
//   bench_decks generate DIR            writes the two 32,766-line files
//   bench_decks time DIR [--literal]    times read+split and load+shuffle
//   bench_decks peak read|load FILE     one operation, for peak memory
#include "core/Decks.h"
#include "core/QuestionRules.h"
#include "platform/TextFiles.h"
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <cstdio>
#include <random>
#include <sys/resource.h>

using questions::Kind;

namespace {
const int Lines = 32766;

QString word(std::mt19937 &gen)
{
    static const char *syllables[] = {"ka", "lo", "mi", "ne", "ru", "sa", "ti", "vo", "zen", "bar", "dor", "fel",
                                      "gri", "hum", "jop", "kel", "mar", "nob", "pli", "quo", "ras", "sto", "tun"};
    QString w;
    const int n = 2 + int(gen() % 3);
    for (int i = 0; i < n; ++i)
        w += QLatin1String(syllables[gen() % (sizeof syllables / sizeof *syllables)]);
    w[0] = w[0].toUpper();
    return w;
}

void generate(const QString &dir)
{
    std::mt19937 gen(2026);
    QString match = QStringLiteral("# Tandrel Match Lines \r\n\r\n");
    QString phrase = QStringLiteral("# Tandrel Phrase Questions \r\n\r\n");
    for (int i = 0; i < Lines; ++i) {
        const QString a = word(gen), b = word(gen);
        match += (gen() % 2 ? a + QStringLiteral(" Blank") : QStringLiteral("Blank ") + a) + (gen() % 3 ? QString() : QLatin1Char(' ') + b) + QStringLiteral("\r\n");
        QString p = QStringLiteral("My friend ") + a + QStringLiteral(" said that ") + b + QStringLiteral(" never eats ");
        p += QStringLiteral("Blank at the ") + word(gen) + QStringLiteral(" party because the ") + word(gen)
             + QStringLiteral(" was too loud.\r\n");
        phrase += p;
    }
    platform::writeWhole(dir + QStringLiteral("/TandrelLines.txt"), match);
    platform::writeWhole(dir + QStringLiteral("/TandrelPhrases.txt"), phrase);
}

QStringList literalLoad(Kind kind, const QString &path)
{
    QString accepted;
    QStringList entries;
    for (const QString &line : platform::readAllLines(path)) {
        const auto e = questions::candidate(kind, line);
        if (e && !accepted.contains(*e)) {
            accepted += *e + QLatin1Char(';');
            entries.append(*e);
        }
    }
    return entries;
}

double best(int runs, const std::function<void()> &f)
{
    double bestMs = 1e300;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        bestMs = std::min(bestMs, t.nsecsElapsed() / 1e6);
    }
    return bestMs;
}

long peakKiB()
{
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return u.ru_maxrss;
}
}  // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() >= 3 && args[1] == QLatin1String("generate")) {
        generate(args[2]);
        return 0;
    }
    if (args.size() >= 3 && args[1] == QLatin1String("time")) {
        const bool literal = args.contains(QStringLiteral("--literal"));
        for (const auto &[name, kind] : {std::pair{QStringLiteral("TandrelLines.txt"), Kind::Match},
                                         std::pair{QStringLiteral("TandrelPhrases.txt"), Kind::Phrase}}) {
            const QString path = args[2] + QLatin1Char('/') + name;
            qsizetype count = 0;
            const double read = best(5, [&] { count = platform::readAllLines(path).size(); });
            qsizetype entries = 0;
            const double load = best(5, [&] { entries = decks::LoadDeck(kind, path)->size(); });
            std::printf("%-20s lines %6lld  entries %6lld  read+split %8.1f ms  load+shuffle %8.1f ms  ratio %.2f\n",
                        qPrintable(name), (long long)count, (long long)entries, read, load, load / read);
            if (literal) {
                qsizetype literalEntries = 0;
                const double slow = best(1, [&] { literalEntries = literalLoad(kind, path).size(); });
                std::printf("%-20s literal reader %10.1f ms (%lld entries)\n", qPrintable(name), slow,
                            (long long)literalEntries);
            }
        }
        return 0;
    }
    if (args.size() >= 4 && args[1] == QLatin1String("peak")) {
        const QString path = args[3];
        const Kind kind = path.contains(QLatin1String("Phrases")) ? Kind::Phrase : Kind::Match;
        const long before = peakKiB();
        qsizetype n = 0;
        if (args[2] == QLatin1String("read"))
            n = platform::readAllLines(path).size();
        else
            n = decks::LoadDeck(kind, path)->size();
        std::printf("%s %s: %lld items, peak %ld KiB (process start %ld KiB)\n", qPrintable(args[2]),
                    qPrintable(path.section(QLatin1Char('/'), -1)), (long long)n, peakKiB(), before);
        return 0;
    }
    std::fprintf(stderr, "usage: bench_decks generate DIR | time DIR [--literal] | peak read|load FILE\n");
    return 2;
}
