// The main window played as a host plays it: the turn, rounds and the end of
// a game through both tabs, start-up and closing, paging from every control.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/ScreenFit.h"
#include "shell/frmWin.h"
#include "ui_frmWin.h"
#include <QAbstractItemView>
#include <QAccessible>
#include <QMenu>
#include <QPointer>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace {
// A script, the game after it ("R2 T1 10,4 M3 P1"), the dialogs and messages shown.
struct Play { QString script, state; QStringList shown; };
// The question files at start-up, the tab in front and the count shown.
struct Start { QString matchFile, phraseFile; int tab; QString count; };
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
            if (!dialog || !dialog->isVisible())
                return;
            poll.stop();
            seen << dialog->windowTitle() << QString::number(dialog->ui()->clkClose->isVisible())
                 << QString::number(dialog->windowFlags().testFlag(Qt::WindowCloseButtonHint));  // a tie has no close box
            QTest::keyClick(dialog, Qt::Key_Escape);  // a tie needs an answer
            seen << QString::number(dialog->isVisible());
            dialog->ui()->clkYes->click();
        });
        QTimer::singleShot(5000, this, [&] {  // a wrong dialog ends fast
            if (auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget()))
                dialog->ui()->clkYes->click();
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
        // The rules are the game's (tst_game); these rows are what the window adds: the dialog and its answer,
        // the host's questions and messages, and that it shows what the game holds after each.
        const QStringList tie{"tie Name  Name at 10"}, again{"Start New Game"};
        row("winner on the phrase tab", {"w5 =1:6 N N N", "R1 T1 0,0 M1 P2", {"won Name 6"}});
        row("tie, another round from the match tab", {"yes c3 =0:10 =2:10 =1:4 n n n n", "R2 T1 10,4,10 M5 P2", tie});
        row("tie, new game", {"no c3 =0:10 =2:10 =1:4 N N N", "R1 T0 0,0,0 M1 P1", tie});
        row("tie left without an answer", {"esc =0:10 =1:10 n n n", "R2 T1 10,10 M4 P1", {tie[0], "ChangePlayer 13"}});
        row("start over: yes", {"c3 n n n n =1:3 a6 s", "R1 T0 0,0,0 M1 P1", again});
        row("start over: cancel, phrases", {"c3 N N N N =1:3 a2 S", "R2 T1 0,3,0 M1 P5", again});
        row("a game end's deal waits for its file",
            {"w5 =1:5 -m 0p n n +m s", "R1 T0 0,0 M1 P1", {"won Name 5", "File Does Not Exist", "Exiting File Load"}});
        row("double click, fewer players, paging from a name", {"c4 =3:6 k2 ^ c3 ^ _", "R1 T0 0,0,0 M2 P1", {}});
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
        QTest::newRow("only match lines") << Start{MatchFile, "", 0, "30"};
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
        auto *ui = w.ui();
        QCOMPARE(ui->SSTab1->currentIndex(), tab);
        QCOMPARE(ui->txtTimer->text(), count);
        QCOMPARE(w.countdown().length(), qint16(count.toInt()));
        QCOMPARE(w.OptTimer[0]->isChecked(), count == QLatin1String("0"));  // on, unless a question was found
        QVERIFY(!w.countdown().isRunning());
        QVERIFY(w.optSound[1]->isChecked() && !ui->hsc1->isEnabled());
        QCOMPARE(ui->clkStatusMatch->text(), matchFile.isEmpty() ? QString() : "Viewing Match 1 of 6 Matches...");
        QCOMPARE(ui->clkStatusPhrase->text(), phraseFile.isEmpty() ? QString() : "Viewing Phrase 1 of 5 Phrases...");
        if (!matchFile.isEmpty())
            QVERIFY(w.lblName[0]->text().endsWith("\r\n") && w.lblName[1]->text().startsWith(QString(19, '_')));
        if (!phraseFile.isEmpty())
            QVERIFY(ui->lblPhrase->text().endsWith(QStringLiteral(" in it.      "), Qt::CaseInsensitive));
        QCOMPARE(ui->clkRound->text(), QStringLiteral("Round 1"));
        QCOMPARE(fake.logTexts(), QStringList{"Loading Form frmTandrel"});
        QVERIFY(fake.boxes.isEmpty());
        QCOMPARE(w.game().scoreToWin() + w.game().playerCount(), 10 + 2);
        // Without a question the timer switch moves and the count stays.
        frmTandrel::selectOption(w.OptTimer[1]);
        frmTandrel::selectOption(w.OptTimer[0]);
        QCOMPARE(w.countdown().isRunning(), count != QLatin1String("0"));
        QCOMPARE(ui->txtTimer->text(), count);
    }

    void secondCopyEndsAtOnce()
    {
        FakePlatform fake;
        fake.otherInstance = true;
        fake.writeFile(MatchFile, questionFile(questionLines(3, false)));
        frmTandrel window;
        window.Form_Load();
        QVERIFY(window.isEnding());
        QCOMPARE(fake.boxTitles(), QStringList{"Tandrel"});
        QCOMPARE(fake.boxes[0].text, "The Tandrel application is already running.  This instance of Tandrel will terminate...");
        QCOMPARE(fake.logTexts(), (QStringList{"Loading Form frmTandrel", "Unloading All Forms...",
                                               "Unloading Final Form Prior to Program Ending..."}));
        QVERIFY(!window.game().deck(questions::Kind::Match).shown());  // nothing after the check ran
    }

    void pagingFromEveryControl_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("tab");
        const QStringList controls = {
            "clkAbout", "clkConfig", "clkContact", "clkDonate", "clkEdit", "clkHowToPlay", "clkUpdate", "clkRound",
            "OptTimer_0", "OptTimer_1", "txtTimer", "optSound_0", "optSound_1", "hsc1", "SSTab1", "cmbNumPlayers",
            "cmbScoreToWin", "txtPlayer_1", "txtCounter_1", "clkUp_0", "clkDown_1"};
        for (int tab = 0; tab < 2; ++tab)
            for (const QString &c : controls + (tab == 0 ? QStringList{"clkStart", "clkNext", "clkPrev", "clkExit"}
                                                         : QStringList{"clkStartPhrase", "clkNextPhrase", "clkPrevPhrase", "clkExitPhrase"}))
                QTest::addRow("%s, tab %d", qPrintable(c), tab) << c << tab;
    }
    void pagingFromEveryControl()
    {
        QFETCH(QString, control);
        QFETCH(int, tab);
        GameWindow g;
        g.play(QStringLiteral("c3 tab%1").arg(tab));
        QWidget *target = g.w().findChild<QWidget *>(control);
        if (auto *tabs = qobject_cast<QTabWidget *>(target))
            target = tabs->tabBar();
        const int volume = g.ui()->hsc1->value();
        for (Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_PageUp, Qt::Key_F2})
            QTest::keyClick(target, key);  // F2: no step
        QCOMPARE(g.state(), tab ? "R1 T2 0,0,0 M1 P6" : "R1 T2 0,0,0 M6 P1");
        // The control itself is left as it was.
        QCOMPARE(g.w().txtPlayer[1]->text(), QStringLiteral("Name"));
        QCOMPARE(g.ui()->cmbNumPlayers->currentText() + g.ui()->cmbScoreToWin->currentText(), QStringLiteral("310"));
        QCOMPARE(g.ui()->hsc1->value(), volume);
        QCOMPARE(g.ui()->SSTab1->currentIndex(), tab);
        QVERIFY(g.fake.boxes.isEmpty());
    }

    void listKeysNeverChangeTheValue_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("start");
        for (const auto &[name, key] : {std::pair{"Down", Qt::Key_Down}, {"Up", Qt::Key_Up}, {"Right", Qt::Key_Right},
                                        {"Left", Qt::Key_Left}, {"Home", Qt::Key_Home}, {"End", Qt::Key_End},
                                        {"digit", Qt::Key_5}, {"PageDown", Qt::Key_PageDown}}) {
            QTest::addRow("players, %s", name) << "cmbNumPlayers" << int(key) << "4";
            QTest::addRow("to win, %s", name) << "cmbScoreToWin" << int(key) << "15";
        }
        // A key at the end of the list changes nothing and leaves no undo behind.
        QTest::newRow("players, Up on the first") << "cmbNumPlayers" << int(Qt::Key_Up) << "2";
        QTest::newRow("to win, Down on the last") << "cmbScoreToWin" << int(Qt::Key_Down) << "30";
    }
    void listKeysNeverChangeTheValue()
    {
        QFETCH(QString, list);
        QFETCH(int, key);
        QFETCH(QString, start);
        GameWindow g;
        auto *combo = g.w().findChild<QComboBox *>(list);
        combo->setCurrentText(start);
        g.play("n");
        const bool players = list == QLatin1String("cmbNumPlayers");
        QTest::keyClick(combo, Qt::Key(key));
        QCOMPARE(combo->currentText(), start);
        QCOMPARE(g.turn(), key != Qt::Key_PageDown ? 1 : players ? 2 : 0);  // an undone key gives nobody the turn
        QCOMPARE(players ? g.game().playerCount() : g.game().scoreToWin(), start.toInt());
        combo->setCurrentText(QStringLiteral("5"));  // the next choice by the mouse is taken as it is
        QCOMPARE(players ? g.game().playerCount() : g.game().scoreToWin(), 5);
        const QPointF at(combo->width() / 2.0, combo->height() / 2.0);
        QWheelEvent wheel(at, combo->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &wheel);
        QCOMPARE(combo->currentText(), QStringLiteral("5"));
        QTest::keyClick(combo, Qt::Key_F4);  // a key that picks nothing reaches the list: this one opens it
        QVERIFY(combo->view()->isVisible());
    }

    void countdownFollowsTheGame()
    {
        GameWindow g;
        g.play("T O");
        g.fake.mediaCalls.clear();
        g.ui()->chkBuzzer->setChecked(true);
        g.w().countdown().timer()->setInterval(1);  // the real ticks, fast
        g.play("n");
        QCOMPARE(g.display(), QStringLiteral("30"));
        QTRY_VERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("0"));
        QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"}));
        g.w().countdown().timer()->setInterval(1000);
        // A tab change or a double click on the tabs stops and resets it.
        g.play("tab1");
        QVERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("30"));
        g.w().countdown().timer()->start();
        Q_EMIT g.ui()->SSTab1->tabBarDoubleClicked(1);
        QVERIFY(!g.counting());
        g.play("N v");  // "Timer Off" with a question on show resets it; "Timer On" resumes
        g.ui()->OptTimer_1->click();
        QCOMPARE(g.display(), QStringLiteral("30"));
        g.ui()->OptTimer_0->click();
        QVERIFY(g.counting());

        // The volume bar sets both players; "Sound Off" silences and locks it.
        g.fake.mediaCalls.clear();
        g.ui()->hsc1->setValue(30);
        QTest::keyClick(g.ui()->hsc1, Qt::Key_Right);
        g.ui()->hsc1->setSliderDown(true);  // dragged: heard as it moves, and again where it is let go
        g.ui()->hsc1->setValue(40);
        g.ui()->hsc1->setSliderDown(false);
        g.ui()->optSound_1->click();
        QVERIFY(!g.ui()->hsc1->isEnabled());
        g.ui()->optSound_0->click();
        QVERIFY(g.ui()->hsc1->isEnabled());
        QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 volume 30", "wmp2 volume 30", "wmp1 volume 31", "wmp2 volume 31",
                                                 "wmp1 volume 40", "wmp2 volume 40", "wmp1 volume 40", "wmp2 volume 40",
                                                 "wmp1 stop", "wmp1 play", "wmp1 loop on"}));
    }

    void screenReaderHearsWhatTheRoomSees()
    {
        GameWindow g(6, 0);
        // (That it is told of each change is checked through the accessibility bus, end to end.)
        g.play("c3 k1 T u1 n v");
        const auto heard = [&](const char *name) {
            QAccessibleInterface *control = QAccessible::queryAccessibleInterface(g.w().findChild<QWidget *>(name));
            return control->text(QAccessible::Name) + " / " + control->text(QAccessible::Description);
        };
        // (The status line, the question and the turn's name are read through the accessibility bus, end to end.)
        QCOMPARE(heard("txtTimer"), QStringLiteral("Countdown: 29 / Countdown"));
        QCOMPARE(heard("txtCounter_1"), QStringLiteral("Player 2 score: 1 / "));
        QCOMPARE(heard("txtCounter_2"), QStringLiteral("Player 3 score: 0 / "));  // never changed
        QCOMPARE(heard("txtPlayer_2"), QStringLiteral("Player 3 name, their turn / "));
        QCOMPARE(heard("txtPlayer_1"), QStringLiteral("Player 2 name / "));
        const auto labels = QAccessible::queryAccessibleInterface(g.ui()->cmbNumPlayers)->relations(QAccessible::Label);
        QVERIFY(!labels.isEmpty() && labels.first().first->text(QAccessible::Name) == QStringLiteral("Number Of Players:"));
    }

    void fullScreenScalesEverythingAndComesBack()
    {
        GameWindow g;
        g.w().show();
        g.w().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&g.w()));  // shortcuts reach an active window only
        const auto controls = g.w().findChildren<QWidget *>();
        const auto snapshot = [&] {
            QStringList out;
            for (QWidget *w : controls)
                if (!qobject_cast<QTabBar *>(w->parentWidget()))  // the tab bar's hidden scroll arrows are placed lazily
                    out << QStringLiteral("%1 %2,%3 %4x%5 %6").arg(w->objectName()).arg(w->x()).arg(w->y()).arg(w->width())
                           .arg(w->height()).arg(w->font().pointSizeF());
            return out;
        };
        const QStringList design = snapshot();
        const double nextPoints = g.ui()->clkNext->font().pointSizeF(), windowPoints = g.w().font().pointSizeF();
        const QRect nextPlace = g.ui()->clkNext->geometry(), timerPlace = g.ui()->txtTimer->geometry();  // on a page, in a frame
        QTest::keyClick(g.w().txtPlayer[0], Qt::Key_F11);
        QVERIFY(g.w().isBig());
        const QSize screen = g.w().screen()->geometry().size();
        QCOMPARE(g.w().size(), screen);
        const double f = screenfit::factor(frmTandrel::DesignSize, screen);
        QCOMPARE(g.ui()->SSTab1->geometry(), screenfit::scaled(QRect(8, 42, 657, 409), f, screenfit::offset(frmTandrel::DesignSize, screen, f)));
        QCOMPARE(g.ui()->clkNext->font().pointSizeF(), nextPoints * f);
        QCOMPARE(g.w().font().pointSizeF(), windowPoints * f);  // what takes the window's font grows too
        QCOMPARE(g.ui()->clkNext->geometry(), screenfit::scaled(nextPlace, f));  // moved with what holds them
        QCOMPARE(g.ui()->txtTimer->geometry(), screenfit::scaled(timerPlace, f));
        QCOMPARE(g.ui()->SSTab1->tabBar()->font().pointSizeF(), g.ui()->SSTab1->font().pointSizeF());
        g.play("^ _ ^");  // the clicker's keys work as before
        QCOMPARE(g.state(), QStringLiteral("R1 T1 0,0 M2 P1"));
        // A window opened meanwhile is as big, over the middle of the screen.
        QDialog dialog(&g.w());
        auto *label = new QLabel(QStringLiteral("Save?"), &dialog);
        (new QVBoxLayout(&dialog))->addWidget(label);
        const double points = dialog.font().pointSizeF();
        dialog.show();
        QCOMPARE(label->font().pointSizeF(), points * f);
        QCOMPARE(dialog.font().pointSizeF(), points * f);
        QVERIFY((dialog.geometry().center() - g.w().geometry().center()).manhattanLength() <= 2);
        dialog.hide();
        // So is a window of its own (an editor, the rules); a menu that pops up is not.
        QWidget window;
        (new QVBoxLayout(&window))->addWidget(new QLabel(QStringLiteral("Rules")));
        QMenu menu;
        menu.addAction(QStringLiteral("Copy"));
        for (QWidget *w : {&window, static_cast<QWidget *>(&menu)}) {
            const double before = w->font().pointSizeF();
            w->show();
            QCOMPARE(w->font().pointSizeF(), w == &menu ? before : before * f);
            if (w == &window)  // once shown: over the middle (its frame aside), big enough for its grown text
                QTRY_VERIFY((window.geometry().center() - g.w().geometry().center()).manhattanLength() <= 4
                            && window.width() >= window.layout()->minimumSize().width());
            w->hide();
        }
        g.w().activateWindow();  // the window shown took the keys
        QVERIFY(QTest::qWaitForWindowActive(&g.w()));
        QTest::keyClick(g.w().txtPlayer[0], Qt::Key_F11);
        QVERIFY(!g.w().isBig());
        QCOMPARE(snapshot(), design);  // exactly the design again
        // Maximised by the title bar, it fills its window the same way; a normal window keeps the design.
        g.w().resize(frmTandrel::DesignSize * 2);
        g.w().setWindowState(Qt::WindowMaximized);
        QVERIFY(g.w().isBig());
        QCOMPARE(g.ui()->SSTab1->geometry(), QRect(16, 84, 1314, 818));
        g.w().setWindowState(Qt::WindowNoState);
        QTRY_COMPARE(snapshot(), design);
    }

    void typingANameNeverPages()
    {
        GameWindow g;
        QTest::keyClicks(g.w().txtPlayer[1], QStringLiteral("Bo! \"Q\" #3"));  // ! and " share PageUp's and PageDown's numbers
        QVERIFY(g.w().txtPlayer[1]->text().endsWith(QStringLiteral("Bo! \"Q\" #3")));
        QCOMPARE(g.state(), QStringLiteral("R1 T0 0,0 M1 P1"));
    }

    void reloadSaysSoInTheTitle()
    {
        GameWindow g;
        QStringList titles;
        g.fake.onBox = [&](const ShownBox &) { titles << g.w().windowTitle(); };
        g.play("w5 =1:5 -m 0p n n");
        QCOMPARE(titles, (QStringList{"Tandrel", "Tandrel is reloading and randomly sorting Tandrels..."}));
    }

    void longQuestionsFitTheirLabels()
    {
        GameWindow g;
        QString phrase = QStringLiteral("The Blank");
        while (phrase.size() < 900)
            phrase += QStringLiteral(" lantern harbor");
        g.fake.writeFile(PhraseFile, questionFile({phrase}));
        g.fake.writeFile(MatchFile, questionFile({"Supercalifragilisticexpialidociousness Blank",
                                                  "A Long Line Written By A Host Who Likes Words Very Much Blank"}));
        g.play("a6 s a6 S");
        for (int i = 0; i < 2; ++i, g.play("n"))
            for (QLabel *label : {g.w().lblName[0], g.w().lblName[1], g.ui()->lblPhrase}) {
                const QRect room = label->contentsRect();
                const QRect need = label->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::AlignCenter, label->text().trimmed());
                QVERIFY2(need.width() <= room.width() && need.height() <= room.height(), qPrintable(label->text()));
                QVERIFY(label->font().pointSizeF() >= 8);
            }
    }

    void exitQuestion_data()
    {
        QTest::addColumn<QString>("button");  // empty: the close box
        QTest::addColumn<int>("answer");
        for (const char *button : {"", "clkExit", "clkExitPhrase"})
            for (int answer : {6, 7, 2})
                QTest::addRow("%s, answer %d", *button ? button : "close box", answer) << button << answer;
    }
    void exitQuestion()
    {
        QFETCH(QString, button);
        QFETCH(int, answer);
        GameWindow g;
        g.w().show();
        // Next and Previous keep the focus, so a clicker's keys go on to them; a click on the status takes none.
        g.play("p");
        QTest::mouseClick(g.ui()->clkStatusMatch, Qt::LeftButton);
        QCOMPARE(g.w().focusWidget(), g.ui()->clkPrev);
        g.play(QStringLiteral("T N a%1").arg(answer));
        QCOMPARE(g.w().focusWidget(), g.ui()->clkNextPhrase);
        g.ui()->clkEdit->click();  // a window of its own, which Yes closes with the game
        const QPointer<QWidget> chooser = platform::loadedWindow(QStringLiteral("frmEdit"));
        QVERIFY(chooser);
        if (button.isEmpty())
            g.w().close();
        else
            g.w().findChild<QAbstractButton *>(button)->click();
        QCOMPARE(g.fake.boxTitles(), QStringList{"Exit Program?"});
        QCOMPARE(g.fake.boxes[0].text, QStringLiteral("Do you wish to exit Tandrel?"));
        QCOMPARE(g.fake.boxes[0].style, 3);
        const QStringList unloaded{"Unloading All Forms...", "Unloading Form frmEdit"};
        QCOMPARE(g.fake.logTexts().filter("Unloading"), unloaded.first(answer == 6 ? 2 : 1));
        QCOMPARE(chooser && chooser->isVisible(), answer != 6);
        QCOMPARE(g.w().isVisible(), answer != 6);
        QCOMPARE(g.counting(), answer != 6);  // No and Cancel leave a running count alone
        if (answer == 6) {  // the program's event loop ends, and closing again asks nothing
            QEventLoop loop;
            QTimer::singleShot(1000, &loop, [&] { loop.exit(1); });
            QCOMPARE(loop.exec(), -1);
            QVERIFY(g.w().close());
            QCOMPARE(g.fake.boxes.size(), 1);
        }
    }
};

TANDREL_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
