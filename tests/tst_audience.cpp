// The audience screen: it shows the room what the host's window shows at
// every step of a game, its keys work from both windows, and its blank key
// never takes a letter typed into a name.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/frmAudience.h"
#include "ui_frmAudience.h"
#include <QGuiApplication>
#include <QScreen>

namespace {
// On the audience screen or the host's window, a key with or without Shift; then the screen is open, blank
// or closed, or "M2": the next match is shown.
struct Key { bool onScreen; Qt::Key key; bool shift; QString after; };
}  // namespace

class tst_Audience : public QObject {
    Q_OBJECT

    static void activate(GameWindow &g)
    {
        g.w().show();
        g.w().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&g.w()));  // shortcuts reach an active window only
    }
    static frmAudience *opened(GameWindow &g)
    {
        QTest::keyClick(g.ui()->clkNext, Qt::Key_F5);
        return g.w().audienceOpen() ? g.w().audience() : nullptr;
    }

    // The first thing the audience screen shows otherwise than the host's
    // window, or nothing.
    static QString difference(GameWindow &g)
    {
        const frmAudience *a = g.w().audience();
        if (!g.w().audienceOpen())
            return QStringLiteral("closed");
        const bool phrase = g.ui()->SSTab1->currentIndex() == 1;
        QStringList host, room;
        for (QLabel *label : phrase ? QList<QLabel *>{g.ui()->lblPhrase} : QList<QLabel *>{g.w().lblName[0], g.w().lblName[1]})
            if (g.deck(phrase).shown())
                host << label->text().trimmed();
        for (QLabel *label : {a->ui()->lblQuestion_0, a->ui()->lblQuestion_1})
            if (label->isVisibleTo(a))
                room << label->text();
        if (room != host)
            return room.join('|') + " shown for " + host.join('|');
        const QString status = g.deck(phrase).shown() ? g.status(phrase) : QString();
        for (auto [shown, want] : {std::pair{a->ui()->lblStatus, status}, {a->ui()->lblRound, g.ui()->clkRound->text()},
                                   {a->ui()->lblCount, g.display()}})
            if (shown->text() != want)
                return shown->text() + " shown for " + want;
        for (int i = 0; i < 10; ++i) {
            const auto *name = a->findChild<QLabel *>(QStringLiteral("lblPlayer_%1").arg(i));
            const auto *score = a->findChild<QLabel *>(QStringLiteral("lblScore_%1").arg(i));
            const bool inPlay = g.game().inPlay(i);
            if (name->isVisibleTo(a) != inPlay || score->isVisibleTo(a) != inPlay)
                return QStringLiteral("row %1 shown wrongly").arg(i);
            // The style sheet draws the turn's row in dark letters on the highlight.
            const auto marked = [&](const QLabel *l) { return l->palette().color(QPalette::WindowText) == Qt::black; };
            if (inPlay && (name->text() != g.w().txtPlayer[size_t(i)]->text() || score->text() != g.score(i)
                           || marked(name) != (g.highlightedRow() == i) || marked(score) != marked(name)))
                return QStringLiteral("row %1: %2 %3").arg(i).arg(name->text(), score->text());
        }
        return {};
    }

private Q_SLOTS:
    void showsWhatTheHostSeesAtEveryStep()
    {
        GameWindow g;
        activate(g);
        QVERIFY(opened(g));
        // A tie played on, a win and the new game, the other tab, the count,
        // the turn given, players added and removed, a start over.
        const QString script = "c3 w5 =0:5 =1:5 yes n n n =0:6 n n n tab1 N P k2 c10 T v v t u9 tab0 c2 a6 s a6 S";
        for (const QString &step : script.split(' ')) {
            g.play(step);
            QVERIFY2(difference(g).isEmpty(), qPrintable(step + ": " + difference(g)));
        }
        QCOMPARE(g.shown, (QStringList{"tie Name  Name at 5", "won Name 6", "Start New Game", "Start New Game"}));
        // A name typed with the screen open keeps every letter, the blank's
        // included, and the room sees it.
        g.w().txtPlayer[1]->clear();
        QTest::keyClicks(g.w().txtPlayer[1], "Bob.");
        QCOMPARE(g.w().txtPlayer[1]->text(), QStringLiteral("Bob."));
        QVERIFY(!g.w().audience()->isBlank());
        QCOMPARE(difference(g), QString());
    }

    void keys_data()
    {
        QTest::addColumn<Key>("row");
        for (bool onScreen : {false, true}) {
            const auto row = [&](const char *name, Qt::Key key, bool shift, const char *after) {
                QTest::addRow("%s on the %s", name, onScreen ? "screen" : "host") << Key{onScreen, key, shift, after};
            };
            row("F5", Qt::Key_F5, false, "closed");
            row("Shift+F5", Qt::Key_F5, true, "closed");
            row("Escape", Qt::Key_Escape, false, onScreen ? "closed" : "open");
            row("B", Qt::Key_B, false, "blank");
            row(".", Qt::Key_Period, false, "blank");
            row("PageDown", Qt::Key_PageDown, false, "M2");
        }
        QTest::newRow("another key on the screen") << Key{true, Qt::Key_A, false, "open"};
    }
    void keys()
    {
        QFETCH(Key, row);
        const auto &[onScreen, key, shift, after] = row;
        GameWindow g;
        activate(g);
        frmAudience *a = opened(g);
        QVERIFY(a);
        // The screen's own keys, when it is the active window: the host's shortcuts do not reach it then.
        if (onScreen)
            QApplication::setActiveWindow(a);
        const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
        const auto press = [&] { QTest::keyClick(onScreen ? static_cast<QWidget *>(a) : g.ui()->clkNext, key, modifiers); };
        press();
        const QString state = !g.w().audienceOpen() ? "closed" : g.w().audience()->isBlank() ? "blank" : "open";
        QCOMPARE(after.startsWith('M') ? g.state().section(' ', 3, 3) : state, after);
        if (after == "blank") {  // the same key shows the game again
            press();
            QVERIFY(!a->isBlank());
        }
        if (after == "M2")
            QCOMPARE(difference(g), QString());
    }

    void blankKeysBelongToNamesWithoutTheScreen()
    {
        GameWindow g;
        activate(g);
        QTest::keyClick(g.ui()->clkNext, Qt::Key_B);
        QVERIFY(!g.w().audience());
        g.w().txtPlayer[0]->clear();
        QTest::keyClicks(g.w().txtPlayer[0], "b.B");
        QCOMPARE(g.w().txtPlayer[0]->text(), QStringLiteral("b.B"));
    }

    void unpluggedDisplayClosesTheScreen()
    {
        GameWindow g;
        activate(g);
        frmAudience *a = opened(g);
        QVERIFY(a);
        QCOMPARE(a->shownOn(), g.w().screen());  // one display: over the host's window
        QCOMPARE(a->geometry(), a->shownOn()->geometry());
        QVERIFY(a->isFullScreen() && a->windowFlags().testFlag(Qt::FramelessWindowHint));  // no title bar for the room
        // A short question at its largest once the screen has its size.
        QTRY_COMPARE(a->ui()->lblQuestion_0->font().pointSizeF(), a->height() * frmAudience::QuestionPoints);
        // Five players in one column, six in two.
        g.play("c5");
        QTRY_VERIFY(a->findChild<QLabel *>("lblPlayer_0")->width() > a->width() / 2);
        g.play("c6");
        QTRY_VERIFY(a->findChild<QLabel *>("lblPlayer_0")->width() < a->width() / 2);
        g.play("c2");
        // The halves of a match share the room; a phrase has all of it.
        const int half = a->ui()->lblQuestion_0->height();
        QVERIFY(qAbs(a->ui()->lblQuestion_1->height() - half) <= 1);
        g.play("tab1");
        QTRY_VERIFY(a->ui()->lblQuestion_0->height() > half + half / 4);
        Q_EMIT qApp->screenRemoved(a->shownOn());
        QVERIFY(!g.w().audienceOpen());
        QCOMPARE(g.fake.logTexts().filter("frmAudience"), (QStringList{"Loading Form frmAudience", "Unloading Form frmAudience"}));
        g.play("N");  // the game goes on
        QCOMPARE(g.state(), QStringLiteral("R1 T1 0,0 M1 P2"));
    }
};

TANDREL_TEST_MAIN(tst_Audience)
#include "tst_audience.moc"
