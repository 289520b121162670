// Start-up of the game window against a bare Qt window, and the drift of a
// two-minute countdown.
//   bench_startup compare [runs]   start both kinds in turn, print medians
//   bench_startup child bare|tandrel   (used by compare)
//   bench_startup drift [seconds]
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// Reports the moment the window is first painted, then ends the process.
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            std::printf("shown %ld\n", usage.ru_maxrss);
            std::fflush(stdout);
            _exit(0);  // nothing after the first paint is measured
        }
        return false;
    }
};

int child(int argc, char **argv, const char *kind)
{
    QApplication app(argc, argv);
    FirstPaint probe;
    QWidget *window = nullptr;
    if (std::string(kind) == "bare") {
        window = new QWidget;
        window->setFixedSize(944, 513);
    } else {
        auto *main = new frmTandrel;
        main->Form_Load();
        window = main;
    }
    window->installEventFilter(&probe);
    window->show();
    return app.exec();
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

int compare(int runs, const char *self)
{
    std::vector<double> ms[2], kb[2];
    const char *kinds[2] = {"bare", "tandrel"};
    for (int r = 0; r < runs; ++r) {
        for (int k = 0; k < 2; ++k) {
            QElapsedTimer clock;
            clock.start();
            QProcess p;
            p.start(QString::fromLocal8Bit(self), {QStringLiteral("child"), QString::fromLatin1(kinds[k])});
            p.waitForFinished(30000);
            const QByteArray out = p.readAllStandardOutput();
            const double elapsed = clock.nsecsElapsed() / 1e6;
            if (!out.startsWith("shown ")) {
                std::fprintf(stderr, "%s did not show: %s\n", kinds[k], p.readAllStandardError().constData());
                return 1;
            }
            ms[k].push_back(elapsed);
            kb[k].push_back(out.mid(6).trimmed().toDouble());
        }
    }
    std::printf("start to first paint: bare %.1f ms, Tandrel %.1f ms, ratio %.2f (median of %d)\n", median(ms[0]),
                median(ms[1]), median(ms[1]) / median(ms[0]), runs);
    std::printf("peak memory at first paint: bare %.1f MB, Tandrel %.1f MB, ratio %.2f\n", median(kb[0]) / 1024,
                median(kb[1]) / 1024, median(kb[1]) / median(kb[0]));
    return 0;
}

int drift(int argc, char **argv, int seconds)
{
    QApplication app(argc, argv);
    frmTandrel window;
    window.Form_Load();
    window.TimerTime = qint16(seconds);
    window.selectOption(window.OptTimer[0]);
    QElapsedTimer clock;
    double worst = 0;
    int ticks = 0;
    QObject::connect(window.Timer1, &QTimer::timeout, &window, [&] {
        // Runs after the tick handler: the count just moved on.
        ++ticks;
        const double late = clock.nsecsElapsed() / 1e6 - ticks * 1000.0;
        worst = std::max(worst, std::abs(late));
        if (window.ui()->txtTimer->text() == QLatin1String("0")) {
            std::printf("countdown of %d s: zero after %.1f ms (drift %+.1f ms), worst tick %.1f ms off its second\n",
                        seconds, clock.nsecsElapsed() / 1e6, late, worst);
            app.quit();
        }
    });
    clock.start();
    window.CheckTimer();
    return app.exec();
}

}  // namespace

int main(int argc, char **argv)
{
    const std::string mode = argc > 1 ? argv[1] : "compare";
    if (mode == "child" && argc > 2)
        return child(argc, argv, argv[2]);
    if (mode == "drift")
        return drift(argc, argv, argc > 2 ? std::atoi(argv[2]) : 120);
    return compare(argc > 2 ? std::atoi(argv[2]) : 9, argv[0]);
}
