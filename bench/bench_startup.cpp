// Start-up through the splash to the game window, against a bare Qt window,
// and the drift of a two-minute countdown.
//   bench_startup compare [runs]   start both kinds in turn, print medians
//   bench_startup child bare|tandrel   (used by compare)
//   bench_startup drift [seconds]
#include "shell/frmSplash.h"
#include "shell/frmTandrel.h"
#include "timing/Countdown.h"
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

// Reports the splash's first paint, then ends the process at the first paint
// of the window that counts (the bare window, or the game window).
class FirstPaint : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || !watched->isWidgetType())
            return false;
        const QString name = watched->objectName();
        if (name == QLatin1String("frmSplash") && !m_splashShown) {
            m_splashShown = true;
            std::printf("splash\n");
            std::fflush(stdout);
        }
        if (name == QLatin1String("frmTandrel") || name == QLatin1String("bare")) {
            rusage usage{};
            getrusage(RUSAGE_SELF, &usage);
            std::printf("shown %ld\n", usage.ru_maxrss);
            std::fflush(stdout);
            _exit(0);  // nothing after the first paint is measured
        }
        return false;
    }

private:
    bool m_splashShown = false;
};

int child(int argc, char **argv, const char *kind)
{
    QApplication app(argc, argv);
    FirstPaint probe;
    app.installEventFilter(&probe);
    if (std::string(kind) == "bare") {
        auto *window = new QWidget;
        window->setObjectName(QStringLiteral("bare"));
        window->setFixedSize(944, 513);
        window->show();
    } else {
        // As the program starts: the splash, and a second later the game.
        auto *splash = new frmSplash;
        splash->setWindowFlag(Qt::SplashScreen);
        splash->Form_Load();
        splash->show();
    }
    return app.exec();
}

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

int compare(int runs, const char *self)
{
    std::vector<double> ms[2], kb[2], splash;
    const char *kinds[2] = {"bare", "tandrel"};
    for (int r = 0; r < runs; ++r) {
        for (int k = 0; k < 2; ++k) {
            QElapsedTimer clock;
            clock.start();
            QProcess p;
            p.start(QString::fromLocal8Bit(self), {QStringLiteral("child"), QString::fromLatin1(kinds[k])});
            QByteArray out;
            while (p.state() != QProcess::NotRunning && p.waitForReadyRead(30000)) {
                out += p.readAllStandardOutput();
                if (out.startsWith("splash\n") && splash.size() < size_t(r + 1))
                    splash.push_back(clock.nsecsElapsed() / 1e6);
            }
            p.waitForFinished(30000);
            out += p.readAllStandardOutput();
            const double elapsed = clock.nsecsElapsed() / 1e6;
            out.replace("splash\n", "");
            if (!out.startsWith("shown ")) {
                std::fprintf(stderr, "%s did not show: %s\n", kinds[k], p.readAllStandardError().constData());
                return 1;
            }
            ms[k].push_back(elapsed);
            kb[k].push_back(out.mid(6).trimmed().toDouble());
        }
    }
    // The splash stays up one second by design; the rest is the program's.
    const double own = median(ms[1]) - 1000.0;
    std::printf("start to splash shown: %.1f ms; bare window shown: %.1f ms (median of %d)\n", median(splash),
                median(ms[0]), runs);
    std::printf("start to game window shown: %.1f ms = the splash's 1000 ms tick + %.1f ms, ratio %.2f to the bare "
                "window\n",
                median(ms[1]), own, own / median(ms[0]));
    std::printf("peak memory at the game window's first paint: bare %.1f MB, Tandrel %.1f MB, ratio %.2f\n",
                median(kb[0]) / 1024, median(kb[1]) / 1024, median(kb[1]) / median(kb[0]));
    return 0;
}

int drift(int argc, char **argv, int seconds)
{
    QApplication app(argc, argv);
    frmTandrel window;
    window.Form_Load();
    window.countdown().setLength(qint16(seconds));
    window.selectOption(window.OptTimer[0]);
    QElapsedTimer clock;
    double worst = 0;
    int ticks = 0;
    QObject::connect(window.countdown().timer(), &QTimer::timeout, &window, [&] {
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
