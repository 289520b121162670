// Loads of big question files, timed against just reading their lines.
//   bench_decks generate DIR            writes the 32,766-line files
//   bench_decks time DIR [--literal]    times read+split and load+shuffle
//   bench_decks peak read|load FILE     one operation in a fresh process: its
//                                       time and peak memory
//   bench_decks families DIR            writes files built against the repeat
//                                       check and times them the same way
#include "core/Decks.h"
#include "core/QuestionRules.h"
#include "core/RepeatFilter.h"
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

// A part of a phrase line, whole words around its blank.
QString partAroundBlank(const QString &line, std::mt19937 &gen)
{
    const QStringList words = line.split(QLatin1Char(' '));
    const qsizetype blank = words.indexOf(QStringLiteral("Blank"));
    const qsizetype from = qsizetype(gen() % quint32(blank + 1));
    const qsizetype to = blank + 2 + qsizetype(gen() % quint32(words.size() - blank - 1));
    return words.mid(from, to - from).join(QLatin1Char(' '));
}

void generate(const QString &dir)
{
    std::mt19937 gen(2026);
    const QString phraseHeader = QStringLiteral("# Tandrel Phrase Questions \r\n\r\n");
    QString match = QStringLiteral("# Tandrel Match Lines \r\n\r\n");
    QString phrase = phraseHeader;
    QStringList phrases;
    for (int i = 0; i < Lines; ++i) {
        const QString a = word(gen), b = word(gen);
        match += (gen() % 2 ? a + QStringLiteral(" Blank") : QStringLiteral("Blank ") + a) + (gen() % 3 ? QString() : QLatin1Char(' ') + b) + QStringLiteral("\r\n");
        QString p = QStringLiteral("My friend ") + a + QStringLiteral(" said that ") + b + QStringLiteral(" never eats ");
        p += QStringLiteral("Blank at the ") + word(gen) + QStringLiteral(" party because the ") + word(gen)
             + QStringLiteral(" was too loud.");
        phrase += p + QStringLiteral("\r\n");
        phrases << p;
    }
    // The same phrases where about one line in ten repeats an earlier one,
    // whole or a part of it, as hosts' files do.
    QString repeats = phraseHeader;
    for (int i = 0; i < Lines; ++i) {
        QString p = phrases[i];
        if (i > 0 && gen() % 10 == 0) {
            const QString &earlier = phrases[gen() % quint32(i)];
            p = gen() % 2 ? earlier : partAroundBlank(earlier, gen);
        }
        repeats += p + QStringLiteral("\r\n");
    }
    platform::writeWhole(dir + QStringLiteral("/TandrelLines.txt"), match);
    platform::writeWhole(dir + QStringLiteral("/TandrelPhrases.txt"), phrase);
    platform::writeWhole(dir + QStringLiteral("/TandrelPhrasesWithRepeats.txt"), repeats);
}

// Phrase files of 32,766 lines of about 180 characters (6 MB), each family
// aimed at one weakness of a quick repeat check:
//  - runs: one letter, one other letter at a moving place: every piece is
//    common, so no rare piece can anchor a line;
//  - two letters: random text over "a" and "b": all 256 pieces of 8
//    letters occur everywhere, so every hash slot is crowded;
//  - shared core: a 170-character text in every line after a short tag: a
//    sample of the lines sees the core's pieces as often as the tags'.
//  - growing: each line a longer part of one text: every line but the
//    last is inside a later one, never an earlier one.
// and two more whose lines differ in length, so that no line is new merely
// for being as long as the longest before it:
//  - two letters, mixed lengths: 120 to 219 random "a" and "b";
//  - runs, mixed lengths: as runs, 120 to 219 letters long: all pieces
//    of every line occur in earlier ones, so only the full search tells.
QString familyLine(const QString &family, int i, std::mt19937 &gen)
{
    const int width = 170;
    if (family == QLatin1String("runs"))
        return QString(width, QLatin1Char('a')).replace(i % width, 1, QLatin1Char('b' + i / width % 20)) + " Blank";
    if (family == QLatin1String("runs-mixed")) {
        const int length = 120 + i * 37 % 100;
        return QString(length, QLatin1Char('a')).replace(i % length, 1, QLatin1Char('b' + i / width % 20)) + " Blank";
    }
    if (family.startsWith(QLatin1String("two-letters"))) {
        QString line(family == QLatin1String("two-letters") ? width : 120 + int(gen() % 100), Qt::Uninitialized);
        for (QChar &c : line)
            c = QLatin1Char(gen() % 2 ? 'a' : 'b');
        return line + " Blank";
    }
    static QString core;
    if (core.isEmpty())
        for (int k = 0; k < 2 * width; ++k)
            core += QLatin1Char('a' + gen() % 26);
    if (family == QLatin1String("shared-core"))
        return QString::number(i, 36) + QLatin1Char(' ') + core.left(width) + " Blank";
    return core.left(i % (2 * width)) + " Blank " + QString::number(i / (2 * width));
}

// Reading and splitting alone: every line kept, nothing else done.
QStringList readAllLines(const QString &path)
{
    QStringList lines;
    platform::readLines(path, [&](const QString &line) {
        lines.append(line);
        return true;
    });
    return lines;
}

const QStringList Families = {"runs", "two-letters", "shared-core", "growing", "two-letters-mixed", "runs-mixed"};

QStringList literalLoad(Kind kind, const QString &path)
{
    QString accepted;
    QStringList entries;
    for (const QString &line : readAllLines(path)) {
        const auto e = questions::candidate(kind, line);
        if (e && !accepted.contains(*e)) {
            accepted += *e + QLatin1Char(';');
            entries.append(*e);
        }
    }
    return entries;
}

double msOf(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e6;
}

// The best of several runs of a plain read and of a load, taken in turn: both
// then meet the same heap and the same moments of a busy machine (timed one
// after the other, the read alone swung by a third between builds).
std::pair<double, double> bestInTurn(int runs, const std::function<void()> &read, const std::function<void()> &load)
{
    double bestRead = 1e300, bestLoad = 1e300;
    for (int i = 0; i < runs; ++i) {
        bestRead = std::min(bestRead, msOf(read));
        bestLoad = std::min(bestLoad, msOf(load));
    }
    return {bestRead, bestLoad};
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
                                         std::pair{QStringLiteral("TandrelPhrases.txt"), Kind::Phrase},
                                         std::pair{QStringLiteral("TandrelPhrasesWithRepeats.txt"), Kind::Phrase}}) {
            const QString path = args[2] + QLatin1Char('/') + name;
            qsizetype count = 0, entries = 0;
            const auto [read, load] = bestInTurn(11, [&] { count = readAllLines(path).size(); },
                                                 [&] { entries = decks::LoadDeck(kind, path)->size(); });
            std::printf("%-30s lines %6lld  entries %6lld  read+split %8.1f ms  load+shuffle %8.1f ms  ratio %.2f\n",
                        qPrintable(name), (long long)count, (long long)entries, read, load, load / read);
            if (literal) {
                qsizetype literalEntries = 0;
                const double slow = msOf([&] { literalEntries = literalLoad(kind, path).size(); });
                std::printf("%-30s literal reader %10.1f ms (%lld entries)\n", qPrintable(name), slow,
                            (long long)literalEntries);
            }
        }
        return 0;
    }
    if (args.size() >= 3 && args[1] == QLatin1String("families")) {
        for (const QString &family : Families) {
            std::mt19937 gen(7);
            QString text;
            for (int i = 0; i < Lines; ++i)
                text += familyLine(family, i, gen) + QStringLiteral("\r\n");
            const QString path = args[2] + QStringLiteral("/") + family + QStringLiteral("-Phrases.txt");
            platform::writeWhole(path, text);
            QStringList candidates;
            for (const QString &line : readAllLines(path))
                if (auto entry = questions::candidate(Kind::Phrase, line))
                    candidates << *entry;
            const bool anchored = RepeatFilter::keepByAnchors(candidates).has_value();
            qsizetype entries = 0;
            const auto [read, load] = bestInTurn(3, [&] { readAllLines(path); },
                                                 [&] { entries = decks::LoadDeck(Kind::Phrase, path)->size(); });
            std::printf("%-18s %5.1f MB  entries %6lld  read+split %7.1f ms  load+shuffle %8.1f ms  ratio %5.2f  %s\n",
                        qPrintable(family), text.size() / 1e6, (long long)entries, read, load, load / read,
                        anchored ? "anchors" : "suffix array");
        }
        return 0;
    }
    if (args.size() >= 4 && args[1] == QLatin1String("peak")) {
        const QString path = args[3];
        const Kind kind = path.contains(QLatin1String("Phrases")) ? Kind::Phrase : Kind::Match;
        const long before = peakKiB();
        qsizetype n = 0;
        const double ms = msOf([&] {
            if (args[2] == QLatin1String("read"))
                n = readAllLines(path).size();
            else
                n = decks::LoadDeck(kind, path)->size();
        });
        std::printf("%s %s: %lld items in %.1f ms, peak %ld KiB (process start %ld KiB)\n", qPrintable(args[2]),
                    qPrintable(path.section(QLatin1Char('/'), -1)), (long long)n, ms, peakKiB(), before);
        return 0;
    }
    std::fprintf(stderr, "usage: bench_decks generate DIR | time DIR [--literal] | families DIR | peak read|load FILE\n");
    return 2;
}
