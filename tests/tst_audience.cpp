// The audience screen: it shows the room what the host's window shows at
// every step of a game, its keys work from both windows, and its blank key
// never takes a letter typed into a name.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/BigText.h"
#include "shell/ScreenFit.h"
#include "shell/frmAudience.h"
#include "ui_frmAudience.h"
#include <QScreen>

namespace {
// On the screen or the host's window (in a name, a list or on a button), a key, then open, blank, closed, "scores"
// shown, "M2" the match, "2,1" the scores; with the clicker's arrows paging or not.
struct Key { bool onScreen; QKeyCombination key; QString after; QString in = {}; bool clicker = false; };
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

    // The first thing the audience screen shows otherwise than the room's view, with the question and the
    // count as the host's window shows them (the rest of the view comes from the game: tst_game), or nothing.
    static QString difference(GameWindow &g)
    {
        const frmAudience *a = g.w().audience();
        if (!g.w().audienceOpen())
            return QStringLiteral("closed");
        const audience::View v = g.w().audienceView();
        const bool phrase = g.ui()->SSTab1->currentIndex() == 1, shown = g.deck(phrase).shown();
        QStringList want{v.status}, room{a->ui()->lblStatus->text()};
        if (!v.headline.isEmpty())
            want << v.headline;
        for (QLabel *label : phrase ? QList<QLabel *>{g.ui()->lblPhrase} : QList<QLabel *>{g.w().lblName[0], g.w().lblName[1]})
            if (shown && v.scene == audience::Scene::Question)
                want << label->text().trimmed();
        const bool counting = g.w().OptTimer[0]->isChecked() && shown && v.headline.isEmpty();
        want << (!counting ? "" : g.display() == "0" ? "Time's up!" : g.display());
        for (QLabel *label : {a->ui()->lblQuestion_0, a->ui()->lblQuestion_1})
            if (label->isVisibleTo(a))
                room << label->text();
        room << (a->ui()->lblCount->isVisibleTo(a) ? a->ui()->lblCount->text() : "");
        for (const audience::Player &p : v.players)
            want << p.name + (p.marked ? "*" : "") << QString::number(p.score) + (p.marked ? "*" : "");
        for (QLabel *label : a->ui()->pnlPlayers->findChildren<QLabel *>())  // names and scores, row by row
            if (label->isVisibleTo(a))  // the style sheet marks the turn's row in dark letters
                room << label->text() + (label->palette().color(QPalette::WindowText) == Qt::black ? "*" : "");
        return room == want ? QString() : room.join('|') + " shown for " + want.join('|');
    }

private Q_SLOTS:
    void showsWhatTheHostSeesAtEveryStep()
    {
        GameWindow g;
        QVERIFY(opened(g));
        QStringList during;  // the room while each end-of-game dialog is up
        g.fake.onModal = [&, answer = g.fake.onModal](QDialog &dialog) {
            during << g.w().audience()->ui()->lblQuestion_0->text() + difference(g);
            return answer(dialog);
        };
        // A tie played on, a win and the new game, the other tab, the count,
        // the turn given, players added and removed, a start over.
        for (const QString &step : QStringLiteral("c3 w5 =0:5 =1:5 yes n n n =0:6 n n n tab1 N P k2 c10 T v v t u9 tab0 c2 a6 s a6 S").split(' ')) {
            g.play(step);
            QVERIFY2(difference(g).isEmpty(), qPrintable(step + ": " + difference(g)));
        }
        QCOMPARE(g.shown, (QStringList{"tie Name  Name at 5", "won Name 6", "Start New Game", "Start New Game"}));
        QCOMPARE(during, (QStringList{"Player 1 and Player 2 tie at 5: another round?", "Player 1 wins with 6!"}));
        // A name typed with the screen open keeps every letter, the blank's
        // included, and the room sees it once it is finished.
        QTest::keyClicks(g.w().txtPlayer[1], "Bob.");
        QCOMPARE(g.w().txtPlayer[1]->text(), QStringLiteral("NameBob."));
        QVERIFY(!g.w().audience()->isBlank());
        QCOMPARE(g.w().audienceView().players[1].name, "Player 2");
        QTest::keyClick(g.w().txtPlayer[1], Qt::Key_Return);
        QCOMPARE(g.w().audienceView().players[1].name, "NameBob.");
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
            row("+", Qt::Key_Plus, "2,1");
            row("-", Qt::Key_Minus, "0,1");
            row("S", Qt::Key_S, "scores");
        }
        QTest::newRow("= on the host") << Key{false, Qt::Key_Equal, "2,1"};
        QTest::newRow("keypad + on the host") << Key{false, Qt::KeypadModifier | Qt::Key_Plus, "2,1"};
        QTest::newRow("+ in a name") << Key{false, Qt::Key_Plus, "1,1", "name"};
        QTest::newRow("S in a name") << Key{false, Qt::Key_S, "open", "name"};
        QTest::newRow("Ctrl+Z on the host") << Key{false, Qt::CTRL | Qt::Key_Z, "1,0"};
        QTest::newRow("Ctrl+Z on the screen") << Key{true, Qt::CTRL | Qt::Key_Z, "1,0"};
        QTest::newRow("Ctrl+Z in a name") << Key{false, Qt::CTRL | Qt::Key_Z, "1,1", "name"};
        QTest::newRow("Ctrl+Z in a list") << Key{false, Qt::CTRL | Qt::Key_Z, "1,0", "list"};
        QTest::newRow("S in a list") << Key{false, Qt::Key_S, "open", "list"};
        QTest::newRow("Right, clicker arrows, on the host") << Key{false, Qt::Key_Right, "M2", "", true};
        QTest::newRow("Up, clicker arrows, on the screen") << Key{true, Qt::Key_Up, "M6", "", true};
        QTest::newRow("Left, clicker arrows, in a name") << Key{false, Qt::Key_Left, "M1", "name", true};
        QTest::newRow("Down, clicker arrows, in a list") << Key{false, Qt::Key_Down, "M1", "list", true};
        QTest::newRow("Right without clicker arrows") << Key{false, Qt::Key_Right, "M1"};
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
        g.play("u0 u1");
        g.w().applyShowSettings({{}, {}, row.clicker});
        // The screen's own keys, when it is the active window: the host's shortcuts do not reach it then.
        if (row.onScreen)
            QApplication::setActiveWindow(a);
        QWidget *target = row.onScreen ? a : row.in == "name" ? g.w().txtPlayer[0] : row.in == "list" ? g.ui()->cmbNumPlayers : static_cast<QWidget *>(g.ui()->clkNext);
        target->setFocus();  // the shortcuts ask where the focus is
        QTest::keyClick(target, row.key.key(), row.key.keyboardModifiers());
        const QString state = !g.w().audienceOpen() ? "closed" : a->isBlank() ? "blank"
                              : g.w().audienceView().scene == audience::Scene::Scoreboard ? "scores" : "open";
        QCOMPARE(row.after.startsWith('M') ? g.state().section(' ', 3, 3) : row.after.contains(',') ? g.state().section(' ', 2, 2) : state, row.after);
        if (row.after == "blank") {  // the same key shows the game again
            QTest::keyClick(target, row.key.key());
            QVERIFY(!a->isBlank());
        }
    }

    void changesCatchTheEyeBriefly_data()
    {
        QTest::addColumn<QString>("row");  // a script, then the label it changes
        QTest::newRow("a point flashes") << "u1 lblScore_1";
        QTest::newRow("the turn fades in") << "k1 lblPlayer_1";
        QTest::newRow("a new question fades in") << "n lblQuestion_0";
    }
    void changesCatchTheEyeBriefly()
    {
        QFETCH(QString, row);
        GameWindow g;
        QVERIFY(opened(g));
        g.play(row.section(' ', 0, 0));
        const QWidget *changed = g.w().audience()->findChild<QWidget *>(row.section(' ', 1));
        QVERIFY(changed->graphicsEffect());
        QTRY_VERIFY_WITH_TIMEOUT(!changed->graphicsEffect(), 300);  // 250 ms at most, and a frame
    }

    void bigTextLooksAsTheLabelDraws_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("align");
        QTest::addColumn<QString>("style");
        const QString phrase = QStringLiteral("Phrase 12 asks: the quick brown fox jumps over the lazy dog and Blank ends 12.");
        QTest::newRow("phrase wrapped, centred") << phrase << int(Qt::AlignCenter) << "";
        QTest::newRow("name on the turn's bar") << "Player 10" << int(Qt::AlignLeft | Qt::AlignVCenter)
                                                << "color: black; background-color: rgb(255, 224, 192); padding: 0 0.3em;";
        QTest::newRow("score to the right") << "29" << int(Qt::AlignRight | Qt::AlignVCenter) << "padding: 0 0.3em;";
        QTest::newRow("a name that looks like markup") << "<b>Ann</b>" << int(Qt::AlignLeft) << "";
    }

    // Glyphs past Qt's own cache come out where and as the label would draw them.
    void bigTextLooksAsTheLabelDraws()
    {
        QFETCH(QString, text);
        QFETCH(int, align);
        QFETCH(QString, style);
        // Where the ink is and how much: glyphs placed on whole pixels may sit half a pixel off.
        const auto ink = [&](bool big) {
            QLabel label(text);
            label.setStyleSheet("QLabel { color: white; background: black; " + style + " }");
            label.setWordWrap(true);
            label.setAlignment(Qt::Alignment(align));
            QFont font(label.font().family(), -1, QFont::Bold);
            font.setPixelSize(bigtext::CachedPixels + 13);
            label.setFont(font);
            label.resize(1200, 420);
            bigtext::Painter painter;
            if (big)
                painter.install(&label);
            const QImage image = label.grab().toImage();
            QRect box;
            int count = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (qGray(image.pixel(x, y)) > 128 && ++count)
                        box |= QRect(x, y, 1, 1);
            return std::pair(box, count);
        };
        const auto [want, wantCount] = ink(false);
        const auto [got, gotCount] = ink(true);
        QVERIFY(wantCount > 1000);
        for (int edge : {got.left() - want.left(), got.top() - want.top(), got.right() - want.right(), got.bottom() - want.bottom()})
            QVERIFY(std::abs(edge) <= 1);
        QVERIFY(std::abs(gotCount - wantCount) < wantCount / 25);
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
        QCOMPARE(a->ui()->lblRound->font().pixelSize(), a->ui()->lblStatus->font().pixelSize());  // "Winner!" as large as the status
        // A long phrase after it takes the room the ten players leave, never theirs.
        g.fake.writeFile(PhraseFile, questionFile({"The Blank" + QStringLiteral(" lantern harbor").repeated(20), "Short Blank"}));
        g.play("c10 a6 S tab1 N");
        QTRY_VERIFY(a->ui()->lblQuestion_0->geometry().bottom() < a->ui()->pnlPlayers->y() && a->ui()->pnlPlayers->geometry().bottom() < a->height());
        const QFont shown = a->ui()->lblQuestion_0->font();  // each phrase fitted anew in the same room
        screenfit::fitText(a->ui()->lblQuestion_0, a->height() * frmAudience::QuestionPoints);
        QCOMPARE(a->ui()->lblQuestion_0->font(), shown);
        Q_EMIT qApp->screenRemoved(a->shownOn());
        QVERIFY(!g.w().audienceOpen());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // closed, then gone: one record
        const QStringList once{"Loading Form frmAudience", "Unloading Form frmAudience"};
        QCOMPARE(g.fake.logTexts().filter("frmAudience"), once);
        g.play("N");  // the game goes on
        QCOMPARE(g.state(), QStringLiteral("R1 T2 0,0,0,0,0,0,0,0,0,0 M1 P1"));
        frmAudience *again = opened(g);
        QTRY_VERIFY(again->ui()->lblScore_9->width() > 0);  // opened on a game of ten: their second column too
        delete again;  // gone without being closed: unloaded all the same
        QCOMPARE(g.fake.logTexts().filter("frmAudience"), once + once);
    }
};

TANDREL_TEST_MAIN(tst_Audience)
#include "tst_audience.moc"
