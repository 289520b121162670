// Plays a game in a window with the game kept, step after random step,
// until it is killed: the other half of the kept game's crash test. It
// prints its program folder first ("folder PATH"); after each step the game
// as it would be kept ("given ..."), and once that is written, "done".
//   journal_player DATA_FOLDER SEED
#include "GameWindow.h"
#include <QApplication>
#include <cstdio>
#include <random>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    GameWindow g(6, 6, {}, QString::fromLocal8Bit(argv[1]));
    const auto say = [](const QString &line) {
        std::puts(qPrintable(line));
        std::fflush(stdout);
    };
    say(QStringLiteral("folder ") + g.fake.dir);
    const QStringList steps{"u0", "u1", "u2", "d1", "n", "N", "p", "P", "k1", "c3", "c2", "w15",
                            "undo", "redo", "tab0", "tab1", "@1:Bo", "@2:Cy"};
    std::mt19937 random(unsigned(std::atoi(argv[2])));
    for (QString step = QStringLiteral("@0:Ann");; step = steps[int(random() % steps.size())]) {
        g.play(step);
        say(QStringLiteral("given ") + keptText(g.w()));
        g.w().journal()->flush();
        say(QStringLiteral("done"));
    }
}
