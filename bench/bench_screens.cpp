// From a Next to the new question painted on the host's window and on the
// audience screen, with ten players and the phrase tab in front.
//   bench_screens [presses]
// Run it from a folder holding the phrase file to show (bench/run.sh copies
// it beside such a file): the program's files are the ones beside it.
#include "shell/frmAudience.h"
#include "shell/frmTandrel.h"
#include "ui_frmAudience.h"
#include "ui_frmTandrel.h"
#include <QApplication>
#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>

namespace {

// Notes the paint of each watched label.
class Paints : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            painted.insert(watched);
        return false;
    }
    QSet<QObject *> painted;
};

double percentile(std::vector<double> v, double p)
{
    std::sort(v.begin(), v.end());
    return v[std::min(v.size() - 1, size_t(p * double(v.size())))];
}

}  // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int presses = argc > 1 ? std::atoi(argv[1]) : 1000;
    frmTandrel window;
    window.Form_Load();
    window.show();
    window.ui()->cmbNumPlayers->setCurrentText(QStringLiteral("10"));
    window.ui()->SSTab1->setCurrentIndex(1);
    frmTandrel::selectOption(window.OptTimer[0]);
    window.toggleAudience();
    frmAudience *audience = window.audience();
    if (!audience || !window.game().deck(questions::Kind::Phrase).shown()) {
        std::fprintf(stderr, "no audience screen or no phrases beside the program\n");
        return 1;
    }
    QElapsedTimer settle;
    settle.start();
    while (settle.elapsed() < 1000)
        app.processEvents();

    Paints paints;
    QObject *const labels[] = {window.ui()->lblPhrase, audience->ui()->lblQuestion_0};
    for (QObject *label : labels)
        label->installEventFilter(&paints);
    std::vector<double> ms;
    qsizetype longest = 0;
    for (int i = 0; i < presses; ++i) {
        paints.painted.clear();
        QElapsedTimer clock;
        clock.start();
        window.clkNextPhrase_Click();
        // Painting is done when the event that delivered both paints returns.
        while (!(paints.painted.contains(labels[0]) && paints.painted.contains(labels[1])))
            app.processEvents(QEventLoop::WaitForMoreEvents);
        ms.push_back(double(clock.nsecsElapsed()) / 1e6);
        longest = std::max(longest, audience->ui()->lblQuestion_0->text().size());
    }
    std::printf("Next to the new question painted on both windows, %d presses, 10 players, phrases up to %lld "
                "characters: median %.2f ms, 99th percentile %.2f ms, worst %.2f ms\n",
                presses, qlonglong(longest), percentile(ms, 0.5), percentile(ms, 0.99), percentile(ms, 1.0));
    return 0;
}
