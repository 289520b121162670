// The audience screen: it shows the room what the host's window shows at
// every step of a game, its keys work from both windows, and its blank key
// never takes a letter typed into a name.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/frmAudience.h"
#include "ui_frmAudience.h"
#include <QScreen>

namespace {
// On the audience screen or the host's window, a key; then the screen is open, blank, closed, or the match shown ("M2").
struct Key { bool onScreen; QKeyCombination key; QString after; };
}  // namespace

class tst_Audience : public QObject {
    Q_OBJECT

    // F5 on the host's window, made active first: shortcuts reach an active window only.
    static frmAudience *opened(GameWindow &g)
    {
        g.w().show();
        g.w().activateWindow();
        if (QTest::qWaitForWindowActive(&g.w()))
            QTest::keyClick(g.ui()->clkNext, Qt::Key_F5);
        return g.w().audienceOpen() ? g.w().audience() : nullptr;
    }

    // The first thing the audience screen shows otherwise than the host's window, or nothing.
    static QString difference(GameWindow &g)
    {
        const frmAudience *a = g.w().audience();
        if (!g.w().audienceOpen())
            return QStringLiteral("closed");
        const bool phrase = g.ui()->SSTab1->currentIndex() == 1, shown = g.deck(phrase).shown();
        QStringList host, room;
        for (QLabel *label : phrase ? QList<QLabel *>{g.ui()->lblPhrase} : QList<QLabel *>{g.w().lblName[0], g.w().lblName[1]})
            if (shown)
                host << label->text().trimmed();
        host << (shown ? g.status(phrase) : QString()) << g.ui()->clkRound->text() << g.display();
        for (QLabel *label : {a->ui()->lblQuestion_0, a->ui()->lblQuestion_1})
            if (label->isVisibleTo(a))
                room << label->text();
        room << a->ui()->lblStatus->text() << a->ui()->lblRound->text() << a->ui()->lblCount->text();
        for (int i = 0; i < 10; ++i)  // "*": the turn's row
            if (const QString turn = g.highlightedRow() == i ? "*" : ""; g.game().inPlay(i))
                host << g.w().txtPlayer[size_t(i)]->text() + turn << g.score(i) + turn;
        for (QLabel *label : a->ui()->pnlPlayers->findChildren<QLabel *>())  // names and scores, row by row
            if (label->isVisibleTo(a))  // the style sheet marks the turn's row in dark letters
                room << label->text() + (label->palette().color(QPalette::WindowText) == Qt::black ? "*" : "");
        return room == host ? QString() : room.join('|') + " shown for " + host.join('|');
    }

private Q_SLOTS:
    void showsWhatTheHostSeesAtEveryStep()
    {
        GameWindow g;
        QVERIFY(opened(g));
        // A tie played on, a win and the new game, the other tab, the count,
        // the turn given, players added and removed, a start over.
        for (const QString &step : QStringLiteral("c3 w5 =0:5 =1:5 yes n n n =0:6 n n n tab1 N P k2 c10 T v v t u9 tab0 c2 a6 s a6 S").split(' ')) {
            g.play(step);
            QVERIFY2(difference(g).isEmpty(), qPrintable(step + ": " + difference(g)));
        }
        QCOMPARE(g.shown, (QStringList{"tie Name  Name at 5", "won Name 6", "Start New Game", "Start New Game"}));
        // A name typed with the screen open keeps every letter, the blank's
        // included, and the room sees it.
        QTest::keyClicks(g.w().txtPlayer[1], "Bob.");
        QCOMPARE(g.w().txtPlayer[1]->text(), QStringLiteral("NameBob."));
        QVERIFY(!g.w().audience()->isBlank());
        QCOMPARE(difference(g), QString());
    }

    void keys_data()
    {
        QTest::addColumn<Key>("row");
        for (bool onScreen : {false, true}) {
            const auto row = [&](const char *name, QKeyCombination key, const char *after) {
                QTest::addRow("%s on the %s", name, onScreen ? "screen" : "host") << Key{onScreen, key, after};
            };
            row("F5", Qt::Key_F5, "closed");
            row("Escape", Qt::Key_Escape, onScreen ? "closed" : "open");
            row("B", Qt::Key_B, "blank");
            row(".", Qt::Key_Period, "blank");
        }
        QTest::newRow("Shift+F5 on the host") << Key{false, Qt::SHIFT | Qt::Key_F5, "closed"};
        QTest::newRow("PageDown on the screen") << Key{true, Qt::Key_PageDown, "M2"};
        QTest::newRow("PageUp on the screen") << Key{true, Qt::Key_PageUp, "M6"};
        QTest::newRow("another key on the screen") << Key{true, Qt::Key_A, "open"};
    }
    void keys()
    {
        QFETCH(Key, row);
        GameWindow g;
        frmAudience *a = opened(g);
        QVERIFY(a);
        // The screen's own keys, when it is the active window: the host's shortcuts do not reach it then.
        if (row.onScreen)
            QApplication::setActiveWindow(a);
        QWidget *target = row.onScreen ? static_cast<QWidget *>(a) : g.ui()->clkNext;
        QTest::keyClick(target, row.key.key(), row.key.keyboardModifiers());
        const QString state = !g.w().audienceOpen() ? "closed" : a->isBlank() ? "blank" : "open";
        QCOMPARE(row.after.startsWith('M') ? g.state().section(' ', 3, 3) : state, row.after);
        if (row.after == "blank") {  // the same key shows the game again
            QTest::keyClick(target, row.key.key());
            QVERIFY(!a->isBlank());
        }
    }

    void unpluggedDisplayClosesTheScreen()
    {
        GameWindow g;
        frmAudience *a = opened(g);
        QVERIFY(a);
        QCOMPARE(a->shownOn(), g.w().screen());  // one display: over the host's window
        QCOMPARE(a->geometry(), a->shownOn()->geometry());
        QVERIFY(a->isFullScreen() && a->windowFlags().testFlag(Qt::FramelessWindowHint));  // no title bar for the room
        // A short question at its largest once the screen has its size.
        QTRY_COMPARE(a->ui()->lblQuestion_0->font().pointSizeF(), a->height() * frmAudience::QuestionPoints);
        Q_EMIT qApp->screenRemoved(a->shownOn());
        QVERIFY(!g.w().audienceOpen());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // closed, then gone: one record
        const QStringList once{"Loading Form frmAudience", "Unloading Form frmAudience"};
        QCOMPARE(g.fake.logTexts().filter("frmAudience"), once);
        g.play("N");  // the game goes on
        QCOMPARE(g.state(), QStringLiteral("R1 T1 0,0 M1 P2"));
        delete opened(g);  // gone without being closed: unloaded all the same
        QCOMPARE(g.fake.logTexts().filter("frmAudience"), once + once);
    }
};

TANDREL_TEST_MAIN(tst_Audience)
#include "tst_audience.moc"
