// From a Next to the new question painted on the host's window and on the
// audience screen, with ten players and the phrase tab in front.
//   bench_screens [presses]
// With the game kept as it is played, in the user's data folder (XDG_DATA_HOME),
// or without (nothing kept, as before):
//   bench_screens [presses] [--no-journal]
// Or the heap that 1,000 undo steps take:
//   bench_screens undo
// Or how large the audience screen's capitals are, over its height, for a
// match line and a phrase with 4 and with 10 players:
//   bench_screens legibility
// Run it from a folder holding the question files to show (bench/run.sh
// copies it beside such files): the program's files are the ones beside it.
#include "shell/frmAudience.h"
#include "shell/frmTandrel.h"
#include "ui_frmAudience.h"
#include "ui_frmTandrel.h"
#include <QLabel>
#include <QApplication>
#include <QElapsedTimer>
#include <QFontMetricsF>
#include "platform/Services.h"
#include <algorithm>
#include <cstdio>
#include <malloc.h>

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

void settle(int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms)
        QCoreApplication::processEvents();
}

// Capitals' height in percent of the screen's, the smallest of the labels shown.
double capitals(std::initializer_list<QLabel *> labels, int screenHeight)
{
    double smallest = 100;
    for (QLabel *label : labels)
        if (label->isVisible())
            smallest = std::min(smallest, 100 * QFontMetricsF(label->font()).capHeight() / screenHeight);
    return smallest;
}

int legibility(frmTandrel &window)
{
    window.toggleAudience();
    frmAudience *audience = window.audience();
    settle(500);
    const int h = audience->height();
    std::printf("Audience screen %dx%d: capitals over the screen's height\n", audience->width(), h);
    Ui::frmAudience *a = audience->ui();
    for (const char *players : {"4", "10"}) {
        window.ui()->cmbNumPlayers->setCurrentText(QString::fromLatin1(players));
        window.ui()->SSTab1->setCurrentIndex(0);
        window.clkNext_Click();
        settle(300);
        const double match = capitals({a->lblQuestion_0, a->lblQuestion_1}, h);
        const QString line = a->lblQuestion_0->text() + " / " + a->lblQuestion_1->text();
        window.ui()->SSTab1->setCurrentIndex(1);
        window.clkNextPhrase_Click();
        settle(300);
        std::printf("  %2s players: match line %.1f %% (\"%s\"), phrase of %lld characters %.1f %%, names %.1f %%, "
                    "scores %.1f %%\n",
                    players, match, qPrintable(line), qlonglong(a->lblQuestion_0->text().size()),
                    capitals({a->lblQuestion_0}, h), capitals({a->lblPlayer_0}, h), capitals({a->lblScore_0}, h));
    }
    return 0;
}

// The real program's services, but no data folder: nothing is kept.
class NoDataFolder final : public platform::AppObject {
public:
    explicit NoDataFolder(platform::AppObject &real) : m_real(real) {}
    QString programDir() const override { return m_real.programDir(); }
    QString dataDir() const override { return {}; }
    QString exeName() const override { return m_real.exeName(); }
    platform::Version version() const override { return m_real.version(); }
    bool previousInstance() override { return m_real.previousInstance(); }
    QString activeWindowName() const override { return m_real.activeWindowName(); }
    QRect screenGeometry() const override { return m_real.screenGeometry(); }
    void setNormalPointer() override { m_real.setNormalPointer(); }

private:
    platform::AppObject &m_real;
};

// A game on a table that asks nothing: for the model alone.
struct QuietTable final : game::Table {
    game::Game g;
    bool questionFileFound(questions::Kind) override { return true; }
    bool askStartOver(questions::Kind) override { return true; }
    std::optional<QStringList> readDeck(questions::Kind) override
    {
        QStringList deck;
        for (int i = 0; i < 500; ++i)
            deck << QStringLiteral("Question %1 with a Blank").arg(i);
        return deck;
    }
    void showReloading(bool) override {}
    void showPlayers() override {}
    void showQuestion(questions::Kind) override {}
    void restartCountdown() override {}
    game::Answer showEndOfGame(const game::TurnChange &) override { return game::Answer::Yes; }
    void runStart(questions::Kind k) override { g.start(k, *this); }
    void runNext(questions::Kind k) override { g.next(k, *this); }
    void runChangePlayer(game::Direction d) override { g.changePlayer(d, *this); }
};

int undoMemory()
{
    QuietTable t;
    t.g.setPlayerCount(10);
    t.g.setScoreToWin(30);
    t.runStart(questions::Kind::Match);
    t.runStart(questions::Kind::Phrase);
    const size_t before = mallinfo2().uordblks;
    // A host's evening: mostly Next, a point now and then, a turn given, a Previous.
    int steps = 0;
    for (int i = 0; steps < 1000; ++i) {
        if (i % 4 == 1)
            t.g.scoreUp((i / 4) % 10) && ++steps;
        else if (i % 25 == 7)
            (t.g.giveTurn(3), ++steps);
        else if (i % 31 == 5)
            (t.g.previous(questions::Kind::Phrase, t), ++steps);
        else
            (t.g.next(i % 3 ? questions::Kind::Phrase : questions::Kind::Match, t), ++steps);
    }
    const size_t after = mallinfo2().uordblks;
    int undone = 0;
    while (t.g.undo())
        ++undone;
    std::printf("1,000 changes (%d undone after): %zu bytes of heap, %.0f bytes a step; the whole game, "
                "decks aside, is %zu bytes\n",
                undone, after - before, double(after - before) / 1000, sizeof(game::Game::Snapshot));
    return undone == 1000 ? 0 : 1;
}

}  // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc > 1 && QByteArray(argv[1]) == "legibility") {
        frmTandrel window;
        window.Form_Load();
        window.show();
        return legibility(window);
    }
    if (argc > 1 && QByteArray(argv[1]) == "undo")
        return undoMemory();
    const int presses = argc > 1 ? std::atoi(argv[1]) : 1000;
    const bool kept = !(argc > 2 && QByteArray(argv[2]) == "--no-journal");
    NoDataFolder noData(platform::app());
    if (!kept)
        platform::install({nullptr, &noData});
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
    if (kept && window.journal())
        window.journal()->flush();
    std::printf("Next to the new question painted on both windows, %d presses, 10 players, phrases up to %lld "
                "characters, %s: median %.2f ms, 99th percentile %.2f ms, worst %.2f ms\n",
                presses, qlonglong(longest), !kept ? "nothing kept" : window.journal() && window.journal()->written()
                                                                          ? "the game kept" : "the game NOT kept (no data folder)",
                percentile(ms, 0.5), percentile(ms, 0.99), percentile(ms, 1.0));
    return 0;
}
