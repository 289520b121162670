// The main window as a host meets it: the dialogs and questions it asks and
// their answers, start-up, paging from every control, the lists' keys, the
// count and the volume, full screen. The rules are tst_game's, on the model.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/Look.h"
#include "shell/frmWin.h"
#include "ui_frmWin.h"
#include <QAbstractItemView>
#include <QMenu>
#include <QPointer>
#include <QRadioButton>
#include <QStyleFactory>
#include <QPainter>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {
// A script, the game after it ("R2 T1 10,4 M3 P1"), the dialogs and messages shown.
struct Play { QString script, state; QStringList shown; };
// The question files at start-up, the tab in front and the count shown.
struct Start { QString matchFile, phraseFile; int tab; QString count; };
// A control that has the focus, on that tab.
struct Paging { QString control; int tab; };
// A list, a key pressed in it, the value the list shows before and after.
struct ListKey { QString list; Qt::Key key; QString value; };
// The exit question, asked by that button, and its answer.
struct Exit { QString button; int answer; };
}  // namespace

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // First: closing the window ends the event loop, and no real modal runs after that.
    void winDialogAnsweredForReal()
    {
        GameWindow g;
        platform::install({platform::realServices().dialogs});
        g.play("=0:10 =1:10 n");
        QStringList seen;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            poll.stop();
            seen << dialog->windowTitle() << QString::number(dialog->ui()->clkClose->isVisible())
                 << QString::number(dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint));  // a tie has no close box
            QTest::keyClick(dialog, Qt::Key_Escape);  // a tie needs an answer
            seen << QString::number(dialog->isVisible());
            QTest::keyClick(dialog, Qt::Key_PageDown);  // a clicker's answer: the default, another round
        });
        poll.start(20);
        g.play("n");  // the round ends in a tie
        QCOMPARE(seen, (QStringList{"Congratulations...", "0", "0", "1"}));
        QCOMPARE(g.state(), QStringLiteral("R2 T0 10,10 M3 P2"));
        QCOMPARE(g.fake.logTexts().filter("frmWin"), (QStringList{"Loading Form frmWin", "Unloading Form frmWin"}));
    }

    void plays_data()
    {
        QTest::addColumn<Play>("row");
        const auto row = [](const char *name, const Play &play) { QTest::newRow(name) << play; };
        // What the window adds to tst_game's rows: the dialogs, their answers, and the game shown after each.
        const QStringList tie{"tie Name  Name at 10"}, again{"Start New Game"};
        row("winner on the phrase tab", {"w5 =1:6 N N N", "R1 T1 0,0 M1 P2", {"won Name 6"}});
        row("tie, another round", {"yes c3 =0:10 =2:10 =1:4 n n n n", "R2 T1 10,4,10 M5 P2", tie});
        row("tie, new game", {"no c3 =0:10 =2:10 =1:4 N N N", "R1 T0 0,0,0 M1 P1", tie});
        row("tie left without an answer", {"esc =0:10 =1:10 n n n", "R2 T1 10,10 M4 P1", {tie[0], "ChangePlayer 13"}});
        row("start over: yes", {"c3 n n n n =1:3 a6 s", "R1 T0 0,0,0 M1 P1", again});
        row("start over: cancel, phrases", {"c3 N N N N =1:3 a2 S", "R2 T1 0,3,0 M1 P5", again});
        row("a game end's deal waits for its file", {"w5 =1:5 -m 0p n n +m s", "R1 T0 0,0 M1 P1",
                                                     {"won Name 5", "File Does Not Exist", "Exiting File Load"}});
        row("double click, fewer players, paging from a name", {"c4 =3:6 k2 ^ ^ c3 ^ _", "R2 T0 0,0,0 M3 P1", {}});
    }
    void plays()
    {
        QFETCH(Play, row);
        GameWindow g;
        g.play(row.script);
        QCOMPARE(g.state(), row.state);
        QCOMPARE(g.shown, row.shown);
        QVERIFY(g.w().Tag.isEmpty());
        QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
    }

    void questionFilesDecideTheStart_data()
    {
        QTest::addColumn<Start>("row");
        QTest::newRow("both files") << Start{MatchFile, PhraseFile, 0, "30"};
        QTest::newRow("only phrases, any letter case") << Start{"", "TANDRELPHRASES.TXT", 1, "30"};
        QTest::newRow("no question file") << Start{"", "", 0, "0"};
    }
    void questionFilesDecideTheStart()
    {
        QFETCH(Start, row);
        const auto &[matchFile, phraseFile, tab, count] = row;
        FakePlatform fake;
        if (!matchFile.isEmpty())
            fake.writeFile(matchFile, questionFile(questionLines(6, false)));
        if (!phraseFile.isEmpty())
            fake.writeFile(phraseFile, questionFile(questionLines(5, true)));
        frmTandrel w;
        w.Form_Load();
        QCOMPARE(w.ui()->SSTab1->currentIndex(), tab);
        QCOMPARE(w.ui()->txtTimer->text(), count);
        QCOMPARE(w.OptTimer[0]->isChecked(), count == QLatin1String("0"));  // on, unless a question was found
        QVERIFY(!w.countdown().isRunning());
        QVERIFY(w.optSound[1]->isChecked() && !w.ui()->hsc1->isEnabled());
        QCOMPARE(w.ui()->clkStatusMatch->text(), matchFile.isEmpty() ? QString() : "Viewing Match 1 of 6 Matches...");
        QCOMPARE(w.ui()->clkStatusPhrase->text(), phraseFile.isEmpty() ? QString() : "Viewing Phrase 1 of 5 Phrases...");
        QCOMPARE(w.ui()->clkRound->text(), QStringLiteral("Round 1"));
        QCOMPARE(fake.logTexts(), QStringList{"Loading Form frmTandrel"});
        QVERIFY(fake.boxes.isEmpty());
        // Without a question the timer switch moves and the count stays.
        frmTandrel::selectOption(w.OptTimer[1]);
        frmTandrel::selectOption(w.OptTimer[0]);
        QCOMPARE(w.countdown().isRunning(), count != QLatin1String("0"));
        QCOMPARE(w.ui()->txtTimer->text(), count);
    }

    void secondCopyEndsAtOnce()
    {
        FakePlatform fake;
        fake.otherInstance = true;
        fake.writeFile(MatchFile, questionFile(questionLines(3, false)));
        frmTandrel window;
        window.Form_Load();
        QCOMPARE(fake.boxesShown(), QStringList{"Tandrel"});
        QCOMPARE(fake.boxes[0].text, "The Tandrel application is already running.  This instance of Tandrel will terminate...");
        QCOMPARE(fake.logTexts(), (QStringList{"Loading Form frmTandrel", "Unloading All Forms...",
                                               "Unloading Final Form Prior to Program Ending..."}));
        QVERIFY(!window.game().deck(questions::Kind::Match).shown());  // nothing after the check ran
    }

    void pagingFromEveryControl_data()
    {
        QTest::addColumn<Paging>("row");
        const QStringList controls = {
            "clkAbout", "clkConfig", "clkContact", "clkDonate", "clkEdit", "clkHowToPlay", "clkUpdate", "clkRound",
            "OptTimer_0", "OptTimer_1", "txtTimer", "optSound_0", "optSound_1", "hsc1", "SSTab1", "cmbNumPlayers",
            "cmbScoreToWin", "txtPlayer_1", "txtCounter_1", "clkUp_0", "clkDown_1"};
        for (int tab : {0, 1})
            for (const QString &c : controls + (tab == 0 ? QStringList{"clkStart", "clkNext", "clkPrev", "clkExit"}
                                                         : QStringList{"clkStartPhrase", "clkNextPhrase", "clkPrevPhrase", "clkExitPhrase"}))
                QTest::addRow("%s, tab %d", qPrintable(c), tab) << Paging{c, tab};
    }
    void pagingFromEveryControl()
    {
        QFETCH(Paging, row);
        GameWindow g;
        g.play(QStringLiteral("c3 tab%1").arg(row.tab));
        QWidget *target = g.w().findChild<QWidget *>(row.control);
        if (auto *tabs = qobject_cast<QTabWidget *>(target))
            target = tabs->tabBar();
        const int volume = g.ui()->hsc1->value();
        for (Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_F2})
            QTest::keyClick(target, key);  // F2: no step
        QTest::keyClicks(target, QStringLiteral("!\""));  // the characters with PageUp's and PageDown's numbers
        QCOMPARE(g.state(), row.tab ? "R1 T2 0,0,0 M1 P6" : "R1 T2 0,0,0 M6 P1");
        // The control itself is left as it was; a name takes the characters.
        QCOMPARE(g.w().txtPlayer[1]->text(), row.control == "txtPlayer_1" ? "Name!\"" : "Name");
        QCOMPARE(g.ui()->cmbNumPlayers->currentText() + g.ui()->cmbScoreToWin->currentText(), QStringLiteral("310"));
        QCOMPARE(g.ui()->hsc1->value(), volume);
        QVERIFY(g.fake.boxes.isEmpty());
    }

    void listKeysNeverChangeTheValue_data()
    {
        QTest::addColumn<ListKey>("row");
        // The arrows at both ends of their range, the keys that pick an entry at once (paging: above).
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Home, Qt::Key_End, Qt::Key_5})
            QTest::addRow("players, %s", qPrintable(QKeySequence(key).toString())) << ListKey{"cmbNumPlayers", key, "4"};
        QTest::newRow("to win, Down") << ListKey{"cmbScoreToWin", Qt::Key_Down, "15"};
        // A key at the end of the list changes nothing and leaves no undo behind.
        QTest::newRow("players, Up on the first") << ListKey{"cmbNumPlayers", Qt::Key_Up, "2"};
        QTest::newRow("to win, Down on the last") << ListKey{"cmbScoreToWin", Qt::Key_Down, "30"};
    }
    void listKeysNeverChangeTheValue()
    {
        QFETCH(ListKey, row);
        GameWindow g;
        auto *combo = g.w().findChild<QComboBox *>(row.list);
        const auto value = [&] { return combo == g.ui()->cmbNumPlayers ? g.game().playerCount() : g.game().scoreToWin(); };
        combo->setCurrentText(row.value);
        QTest::keyClick(combo, row.key);
        QCOMPARE(combo->currentText(), row.value);
        QCOMPARE(value(), row.value.toInt());
        combo->setCurrentText(QStringLiteral("5"));  // the next choice by the mouse is taken as it is
        QCOMPARE(value(), 5);
        const QPointF at = QRectF(combo->rect()).center();
        QWheelEvent wheel(at, combo->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &wheel);
        QCOMPARE(combo->currentText(), QStringLiteral("5"));
        QTest::keyClick(combo, Qt::Key_F4);  // a key that picks nothing reaches the list: this one opens it
        QVERIFY(combo->view()->isVisible());
    }

    void countdownAndVolumeFollowTheirControls()
    {
        GameWindow g;
        g.play("T O");
        g.ui()->chkBuzzer->setChecked(true);
        g.w().countdown().timer()->setInterval(1);  // the real ticks, fast
        g.fake.mediaCalls.clear();
        g.play("n u1");
        QTRY_COMPARE(g.display(), QStringLiteral("0"));
        // The volume bar sets both players, by a key too (Right is louder).
        g.ui()->hsc1->setValue(30);
        QTest::keyClick(g.ui()->hsc1, Qt::Key_Right);
        QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 play", "wmp2 play", "wmp1 stop", "wmp1 volume 30", "wmp2 volume 30",
                                                 "wmp1 volume 31", "wmp2 volume 31"}));
        // A screen reader hears the count and the scores change (the turn and the question: end to end).
        QCOMPARE(g.ui()->txtTimer->accessibleName() + ", " + g.w().txtCounter[1]->accessibleName(), "Countdown: 0, Player 2 score: 1");
        // A tab change stops and resets the count.
        g.w().countdown().timer()->setInterval(1000);
        g.play("tab1");
        QVERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("30"));
    }

    void fullScreenScalesEverythingAndComesBack()
    {
        GameWindow g;
        g.fake.writeFile(PhraseFile, questionFile({"The Blank" + QStringLiteral(" lantern harbor").repeated(60)}));
        g.play("a6 S tab1");  // a long question fits its label at any size
        const auto fits = [](QLabel *label) {
            const QRect room = label->contentsRect();
            const QRect need = label->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::AlignCenter, label->text().trimmed());
            return need.width() <= room.width() && need.height() <= room.height() && label->font().pointSizeF() >= 8;
        };
        QVERIFY(fits(g.ui()->lblPhrase));
        g.w().show();
        g.w().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&g.w()));  // shortcuts reach an active window only
        const auto snapshot = [controls = g.w().findChildren<QWidget *>()] {
            QVariantList out;
            for (QWidget *w : controls)
                if (!qobject_cast<QTabBar *>(w->parentWidget()))  // the tab bar's hidden scroll arrows are placed lazily
                    out << w->objectName() << w->geometry() << w->font().pointSizeF();
            return out;
        };
        const QVariantList design = snapshot();
        const double nextPoints = g.ui()->clkNext->font().pointSizeF(), windowPoints = g.w().font().pointSizeF();
        QTest::keyClick(g.w().txtPlayer[0], Qt::Key_F11);
        QCOMPARE(g.w().geometry(), g.w().screen()->geometry());
        // The design times 800 / 944 (the 800 x 800 screen's width is the limit), in the middle.
        const double f = 800.0 / frmTandrel::DesignSize.width();
        QCOMPARE(g.ui()->SSTab1->geometry(), QRect(7, 219, 557, 346));
        QCOMPARE(g.ui()->clkNext->geometry(), QRect(288, 271, 119, 31));  // on a page, moved with what holds it
        QCOMPARE(g.ui()->txtTimer->geometry(), QRect(7, 7, 112, 74));     // in a frame
        QCOMPARE(g.ui()->clkNext->font().pointSizeF(), nextPoints * f);
        QCOMPARE(g.w().font().pointSizeF(), windowPoints * f);  // what takes the window's font grows too
        QCOMPARE(g.ui()->SSTab1->tabBar()->font().pointSizeF(), g.ui()->SSTab1->font().pointSizeF());
        QVERIFY(fits(g.ui()->lblPhrase));
        // A window opened meanwhile (a dialog, an editor) is as big, over the middle; a popup menu is not.
        QDialog dialog(&g.w());
        dialog.resize(300, 200);  // a size of its own, which grows too
        QWidget window;
        auto *rules = new QTextEdit(&window);  // a document's own sizes grow in a reader
        rules->setHtml("<span style='font-size:10pt'>Rules</span>");
        rules->setReadOnly(true);
        QMenu menu;
        for (QWidget *w : {static_cast<QWidget *>(&dialog), &window, static_cast<QWidget *>(&menu)}) {
            QWidget *text = w == &menu ? w : new QLabel(QStringLiteral("Save?"), w);
            if (w != &menu)
                (new QVBoxLayout(w))->addWidget(text);
            const double points = w->font().pointSizeF();
            w->show();
            QCOMPARE(w->font().pointSizeF() + text->font().pointSizeF(), 2 * (w == &menu ? points : points * f));
            if (w != &menu)  // once shown: over the middle (its frame aside), big enough for its grown text
                QTRY_VERIFY((w->geometry().center() - g.w().geometry().center()).manhattanLength() <= 4
                            && w->width() >= w->layout()->minimumSize().width());
            w->hide();
        }
        QVERIFY(dialog.width() >= 300 * f - 1);
        QCOMPARE(rules->document()->begin().begin().fragment().charFormat().fontPointSize(), 10 * f);
        g.w().toggleFullScreen();  // F11 again
        QCOMPARE(snapshot(), design);  // exactly the design again
    }

    void marksGrowWithBigControls_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QSize>("size");
        for (const char *kind : {"arrow", "list", "option"})
            for (QSize size : {QSize(60, 24), QSize(150, 52)})
                QTest::addRow("%s %d high", kind, size.height()) << kind << size;
    }
    // Drawn big, a score arrow, a list's arrow and an option's circle are as big again; at the usual size,
    // exactly as the platform draws them.
    void marksGrowWithBigControls()
    {
        QFETCH(QString, kind);
        QFETCH(QSize, size);
        look::Style ours(QStyleFactory::create("Fusion"));
        const auto mark = [&](QStyle *style) {  // the mark's height in pixels, and the picture
            QRadioButton option;
            option.resize(size);
            option.setFont(QFont(option.font().family(), size.height() / 2));
            QImage image(size, QImage::Format_RGB32);
            image.fill(Qt::white);
            QPainter painter(&image);
            QStyleOptionComboBox list;
            list.rect = QRect(QPoint(), size);
            list.palette.setColor(QPalette::ButtonText, Qt::black);
            if (kind == "list")
                style->drawComplexControl(QStyle::CC_ComboBox, &list, &painter);
            else
                style->drawPrimitive(QStyle::PE_IndicatorArrowUp, &list, &painter);
            int top = size.height(), bottom = -1;  // inside the list's frame, over its arrow's part
            for (int y = 4; y < size.height() - 4; ++y)
                for (int x = kind == "list" ? size.width() * 2 / 3 : 0; x < size.width() - 4; ++x)
                    if (qGray(image.pixel(x, y)) < 128)
                        top = std::min(top, y), bottom = std::max(bottom, y);
            return std::pair(kind == "option" ? style->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight, nullptr, &option)
                                              : bottom - top + 1,
                             image);
        };
        const auto [theirs, theirImage] = mark(ours.baseStyle());
        const auto [mine, myImage] = mark(&ours);
        if (size.height() < look::Style::BigPixels)
            QVERIFY(theirs > 0 && mine == theirs && myImage == theirImage);
        else
            QVERIFY2(theirs > 0 && mine >= size.height() / 3 && mine > theirs * 3 / 2, qPrintable(QString("%1 pixels high, not %2").arg(mine).arg(theirs)));
    }

    void exitQuestion_data()
    {
        QTest::addColumn<Exit>("row");
        QTest::newRow("Yes") << Exit{"clkExit", 6};
        QTest::newRow("Cancel") << Exit{"clkExit", 2};
        QTest::newRow("No, on the phrases") << Exit{"clkExitPhrase", 7};
    }
    void exitQuestion()
    {
        QFETCH(Exit, row);
        GameWindow g;
        g.w().show();
        // Next and Previous keep the focus, so a clicker's keys go on to them; a click on the status takes none.
        g.play("p");
        QTest::mouseClick(g.ui()->clkStatusMatch, Qt::LeftButton);
        QCOMPARE(g.w().focusWidget(), g.ui()->clkPrev);
        g.play(QStringLiteral("T N a%1").arg(row.answer));
        QCOMPARE(g.w().focusWidget(), g.ui()->clkNextPhrase);
        g.ui()->clkEdit->click();  // a window of its own, which Yes closes with the game
        const QPointer<QWidget> chooser = platform::loadedWindow(QStringLiteral("frmEdit"));
        g.w().findChild<QAbstractButton *>(row.button)->click();  // (Ctrl+Q, which closes as the close box: end to end)
        QCOMPARE(g.fake.boxesShown(), QStringList{"Exit Program?"});
        QCOMPARE(g.fake.boxes[0].text, QStringLiteral("Do you wish to exit Tandrel?"));
        QCOMPARE(g.fake.boxes[0].style, 3);
        const bool yes = row.answer == 6;
        QCOMPARE(g.fake.logTexts().filter("Unloading"), QStringList({"Unloading All Forms...", "Unloading Form frmEdit"}).first(yes ? 2 : 1));
        QCOMPARE(chooser && chooser->isVisible(), !yes);
        QCOMPARE(g.w().isVisible(), !yes);
        QCOMPARE(g.counting(), !yes);  // No and Cancel leave a running count alone
        if (yes)  // the program ends (end to end), and closing again asks nothing
            QVERIFY(g.w().close() && g.fake.boxes.size() == 1);
    }
};

TANDREL_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
