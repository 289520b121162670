// The main window: its start-up, closing, the player panel with the lists
// and paging from every control, and the countdown and sound switches.
#include "GameWindow.h"
#include "TestMain.h"
#include <QScrollBar>
#include <QTabBar>
#include <QWheelEvent>

namespace {
QStringList items(QComboBox *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->itemText(i);
    return out;
}
}  // namespace

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void questionFilesDecideTheStart_data()
    {
        QTest::addColumn<QString>("matchFile");
        QTest::addColumn<QString>("phraseFile");
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("count");
        QTest::newRow("both files") << "TandrelLines.txt" << "TandrelPhrases.txt" << 0 << "30";
        QTest::newRow("only match lines") << "TandrelLines.txt" << "" << 0 << "30";
        QTest::newRow("only phrases, any letter case") << "" << "TANDRELPHRASES.TXT" << 1 << "30";
        QTest::newRow("no question file") << "" << "" << 0 << "0";
    }
    void questionFilesDecideTheStart()
    {
        QFETCH(QString, matchFile);
        QFETCH(QString, phraseFile);
        QFETCH(int, tab);
        QFETCH(QString, count);
        FakePlatform fake;
        if (!matchFile.isEmpty())
            fake.writeFile(matchFile, questionFile(matchLines(6)));
        if (!phraseFile.isEmpty())
            fake.writeFile(phraseFile, questionFile(phraseLines(5)));
        frmTandrel w;
        w.Form_Load();
        auto *ui = w.ui();
        QCOMPARE(ui->SSTab1->currentIndex(), tab);
        QCOMPARE(ui->txtTimer->text(), count);
        QCOMPARE(w.countdown().length(), qint16(count.toInt()));
        QCOMPARE(w.OptTimer[0]->isChecked(), count == QLatin1String("0"));  // on, unless a question was found
        QVERIFY(!w.countdown().isRunning());
        QVERIFY(w.optSound[1]->isChecked());
        QVERIFY(!ui->hsc1->isEnabled());
        QVERIFY(fake.boxes.isEmpty());
        QCOMPARE(ui->clkStatusMatch->text(), matchFile.isEmpty() ? QString() : "Viewing Match 1 of 6 Matches...");
        QCOMPARE(ui->clkStatusPhrase->text(), phraseFile.isEmpty() ? QString() : "Viewing Phrase 1 of 5 Phrases...");
        if (!matchFile.isEmpty()) {
            QVERIFY(matchLines(6).join('|').toUpper().contains(w.lblName[0]->text().trimmed()));
            QVERIFY(w.lblName[0]->text().endsWith(QStringLiteral("\r\n")));
            QVERIFY(w.lblName[1]->text().startsWith(QString(19, QLatin1Char('_'))));
        }
        if (!phraseFile.isEmpty())
            QVERIFY(ui->lblPhrase->text().endsWith(QStringLiteral(" in it.      "), Qt::CaseInsensitive));
        QCOMPARE(w.windowTitle(), QStringLiteral("Tandrel"));
        QCOMPARE(ui->clkRound->text(), QStringLiteral("Round 1"));
        QCOMPARE(fake.logTexts(), QStringList{"Loading Form frmTandrel"});
        QCOMPARE(items(ui->cmbScoreToWin), (QStringList{"5", "10", "15", "20", "25", "30"}));
        QCOMPARE(items(ui->cmbNumPlayers), (QStringList{"2", "3", "4", "5", "6", "7", "8", "9", "10"}));
        QCOMPARE(ui->cmbScoreToWin->currentText(), QStringLiteral("10"));
        QCOMPARE(w.game().scoreToWin(), qint16(10));
        QCOMPARE(w.pos(), QPoint((1920 - 944) / 2, (1080 - 513) / 2));
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(w.txtPlayer[size_t(i)]->isVisibleTo(&w), i < 2);
            QCOMPARE(w.rowColour(i), i == 0 ? frmTandrel::HighlightColour : frmTandrel::PlainColour);
        }
        QVERIFY(w.txtPlayer[0]->styleSheet().contains(QColor(255, 224, 192).name()));
        QVERIFY(w.txtCounter[1]->styleSheet().contains(QColor(201, 207, 214).name()));
        if (QTest::currentDataTag() == QByteArray("both files"))
            QCOMPARE(fake.mediaCalls, (QStringList{"wmp1 volume 50", "wmp2 volume 50",
                                                   "wmp1 url " + fake.path("MatchMusic.mp3"), "wmp1 stop",
                                                   "wmp2 url " + fake.path("Buzzer.wav"), "wmp2 stop",
                                                   "wmp1 stop",    // "Sound Off" selected
                                                   "wmp1 stop"})); // and the music stopped once more
    }

    void secondCopyEndsAtOnce()
    {
        FakePlatform fake;
        fake.otherInstance = true;
        fake.writeFile(QStringLiteral("TandrelLines.txt"), questionFile(matchLines(3)));
        frmTandrel window;
        window.Form_Load();
        QVERIFY(window.isEnding());
        QCOMPARE(fake.boxes.size(), 1);
        QCOMPARE(fake.boxes[0].text, QStringLiteral("The Tandrel application is already running.  This instance of "
                                                     "Tandrel will terminate..."));
        QCOMPARE(fake.boxes[0].style, 0);
        QCOMPARE(fake.boxes[0].title, QStringLiteral("Tandrel"));
        QCOMPARE(fake.logTexts(), (QStringList{"Loading Form frmTandrel", "Unloading All Forms...",
                                               "Unloading Final Form Prior to Program Ending..."}));
        QVERIFY(!window.game().deck(questions::Kind::Match).shown());  // nothing after the check ran
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
        frmTandrel::selectOption(g.w().OptTimer[0]);
        g.next(false);
        g.fake.answers = {answer};
        if (button.isEmpty())
            g.w().close();
        else
            g.w().findChild<QAbstractButton *>(button)->click();
        QCOMPARE(g.fake.boxes.size(), 1);
        QCOMPARE(g.fake.boxes[0].text, QStringLiteral("Do you wish to exit Tandrel?"));
        QCOMPARE(g.fake.boxes[0].title, QStringLiteral("Exit Program?"));
        QCOMPARE(g.fake.boxes[0].style, 3);
        QCOMPARE(g.fake.logTexts().last(), QStringLiteral("Unloading All Forms..."));
        QCOMPARE(g.w().isVisible(), answer != 6);
        QCOMPARE(g.counting(), answer != 6);  // No and Cancel leave a running count alone
        // Once the answer was Yes, closing again asks nothing.
        if (answer == 6) {
            QVERIFY(g.w().close());
            QCOMPARE(g.fake.boxes.size(), 1);
        }
    }

    void pagingFromEveryControl_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("tab");
        const QStringList controls = {
            "clkAbout", "clkConfig", "clkContact", "clkDonate", "clkEdit", "clkHowToPlay", "clkUpdate", "clkRound",
            "OptTimer_0", "OptTimer_1", "txtTimer", "optSound_0", "optSound_1", "hsc1", "SSTab1", "cmbNumPlayers",
            "cmbScoreToWin", "txtPlayer_0", "txtPlayer_1", "txtCounter_1", "clkUp_0", "clkDown_1"};
        for (int tab = 0; tab < 2; ++tab) {
            const QStringList own = tab == 0 ? QStringList{"clkStart", "clkNext", "clkPrev", "clkExit"}
                                             : QStringList{"clkStartPhrase", "clkNextPhrase", "clkPrevPhrase",
                                                           "clkExitPhrase"};
            for (const QString &c : controls + own)
                QTest::addRow("%s, tab %d", qPrintable(c), tab) << c << tab;
        }
    }
    void pagingFromEveryControl()
    {
        QFETCH(QString, control);
        QFETCH(int, tab);
        GameWindow g;
        g.setPlayers(3);
        g.ui()->SSTab1->setCurrentIndex(tab);
        QWidget *target = g.w().findChild<QWidget *>(control);
        QVERIFY(target);
        if (auto *tabs = qobject_cast<QTabWidget *>(target))
            target = tabs->tabBar();
        const QString name = g.w().txtPlayer[0]->text();
        const int volume = g.ui()->hsc1->value();

        QTest::keyClick(target, Qt::Key_PageDown);
        QCOMPARE(g.position(tab == 1), 2);  // one step, not two
        QCOMPARE(g.position(tab == 0), 1);  // the tab behind stays
        QCOMPARE(g.turn(), 1);
        QTest::keyClick(target, Qt::Key_PageUp);
        QTest::keyClick(target, Qt::Key_PageUp);
        QCOMPARE(g.position(tab == 1), 6);  // wrapped to the last
        QCOMPARE(g.turn(), 2);
        QTest::keyClick(target, Qt::Key_Home);  // any other key leaves the game alone
        QCOMPARE(g.turn(), 2);
        QCOMPARE(g.round(), QStringLiteral("Round 1"));

        // The control itself is left as it was.
        QCOMPARE(g.w().txtPlayer[0]->text(), name);
        QCOMPARE(g.ui()->cmbNumPlayers->currentText(), QStringLiteral("3"));
        QCOMPARE(g.ui()->cmbScoreToWin->currentText(), QStringLiteral("10"));
        QCOMPARE(g.ui()->hsc1->value(), volume);
        QCOMPARE(g.ui()->SSTab1->currentIndex(), tab);
        QVERIFY(g.fake.boxes.isEmpty());
    }

    void pagingWithoutAQuestionDoesNothing()
    {
        GameWindow g(0, 6);  // only phrases: the match tab shows nothing
        g.ui()->SSTab1->setCurrentIndex(0);
        QTest::keyClick(g.w().txtPlayer[0], Qt::Key_PageDown);
        QTest::keyClick(g.w().txtPlayer[0], Qt::Key_PageUp);
        g.ui()->clkNext->click();
        g.ui()->clkPrev->click();
        QCOMPARE(g.turn(), 0);
        QCOMPARE(g.position(true), 1);
        QVERIFY(g.fake.boxes.isEmpty());
    }

    void listKeysNeverChangeTheValue_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("start");
        const QList<std::pair<const char *, int>> keys = {
            {"Down", Qt::Key_Down}, {"Up", Qt::Key_Up},   {"Right", Qt::Key_Right}, {"Left", Qt::Key_Left},
            {"Home", Qt::Key_Home}, {"End", Qt::Key_End}, {"digit", Qt::Key_5},     {"PageDown", Qt::Key_PageDown}};
        for (const auto &[name, key] : keys) {
            QTest::addRow("players, %s", name) << "cmbNumPlayers" << key << "4";
            QTest::addRow("to win, %s", name) << "cmbScoreToWin" << key << "15";
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
        const bool players = list == QLatin1String("cmbNumPlayers");
        QTest::keyClick(combo, Qt::Key(key));
        QCOMPARE(combo->currentText(), start);
        QCOMPARE(players ? g.game().playerCount() : g.game().scoreToWin(), start.toInt());

        // The next choice by the mouse is taken as it is.
        combo->setCurrentText(QStringLiteral("5"));
        QCOMPARE(combo->currentText(), QStringLiteral("5"));
        QCOMPARE(players ? g.game().playerCount() : g.game().scoreToWin(), 5);
        QVERIFY(g.fake.boxes.isEmpty());
    }

    void countShowsAndHidesWholeRows()
    {
        GameWindow g;
        g.setPlayers(4);
        g.w().txtPlayer[3]->setText(QStringLiteral("Dee"));
        g.setScore(3, 6);
        for (int i = 0; i < 5; ++i)
            g.next(false);  // round 2, row 1
        g.setPlayers(2);
        auto rowShown = [&](int i) {
            QList<bool> parts;
            for (QWidget *w : {static_cast<QWidget *>(g.w().txtPlayer[size_t(i)]),
                               static_cast<QWidget *>(g.w().txtCounter[size_t(i)]),
                               static_cast<QWidget *>(g.w().clkUp[size_t(i)]),
                               static_cast<QWidget *>(g.w().clkDown[size_t(i)])})
                parts << w->isVisibleTo(&g.w());
            return parts;
        };
        for (int i = 0; i < 10; ++i)
            QCOMPARE(rowShown(i), QList<bool>(4, i < 2));
        QCOMPARE(g.turn(), 0);
        QCOMPARE(g.highlightedRow(), 0);
        QCOMPARE(g.round(), QStringLiteral("Round 2"));

        // Grown again: the hidden row comes back as it was.
        g.setPlayers(4);
        QCOMPARE(rowShown(3), QList<bool>(4, true));
        QCOMPARE(g.w().txtPlayer[3]->text(), QStringLiteral("Dee"));
        QCOMPARE(g.score(3), QStringLiteral("6"));
        QCOMPARE(g.score(2), QStringLiteral("0"));
    }

    void doubleClickGivesTheTurn()
    {
        GameWindow g;
        g.setPlayers(5);
        for (int i = 0; i < 5; ++i)
            g.next(false);  // round 2
        QTest::mouseDClick(g.w().txtPlayer[3], Qt::LeftButton);
        QCOMPARE(g.turn(), 3);
        QCOMPARE(g.highlightedRow(), 3);
        g.next(true);
        QCOMPARE(g.turn(), 4);
        QCOMPARE(g.round(), QStringLiteral("Round 2"));
        // From the last player the next turn ends the round.
        QTest::mouseDClick(g.w().txtPlayer[4], Qt::LeftButton);
        g.next(false);
        QCOMPARE(g.turn(), 0);
        QCOMPARE(g.round(), QStringLiteral("Round 3"));
    }

    void wheelOverAListChangesNothing()
    {
        GameWindow g;
        QComboBox *combo = g.ui()->cmbNumPlayers;
        const QPointF at(combo->width() / 2.0, combo->height() / 2.0);
        QWheelEvent wheel(at, combo->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo, &wheel);
        QCOMPARE(combo->currentText(), QStringLiteral("2"));
    }

    void countdownFollowsTheGame()
    {
        GameWindow g;
        g.timerAndSoundOn();
        QCOMPARE(g.fake.mediaCalls, QStringList{});  // "Timer On" alone restarts nothing
        g.ui()->chkBuzzer->setChecked(true);
        g.w().countdown().timer()->setInterval(1);  // the real ticks, fast
        g.next(false);
        QVERIFY(g.counting());
        QCOMPARE(g.display(), QStringLiteral("30"));
        QTRY_VERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("0"));
        QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"}));

        // A tab change or a double click on the tabs stops and resets it.
        g.prev(false);
        g.ui()->SSTab1->setCurrentIndex(1);
        QVERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("30"));
        g.w().countdown().timer()->start();
        Q_EMIT g.ui()->SSTab1->tabBarDoubleClicked(1);
        QVERIFY(!g.counting());

        // "Timer Off" with a question on show resets the count; "Timer On"
        // resumes it from the display.
        g.next(true);
        g.w().Timer1_Timer();
        g.ui()->OptTimer_1->click();
        QVERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("30"));
        g.ui()->OptTimer_0->click();
        QVERIFY(g.counting());

        // The volume bar sets both players; "Sound Off" silences and locks it.
        g.fake.mediaCalls.clear();
        g.ui()->hsc1->setValue(30);
        QTest::keyClick(g.ui()->hsc1, Qt::Key_Right);
        QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 volume 30", "wmp2 volume 30", "wmp1 volume 31",
                                                 "wmp2 volume 31"}));
        g.ui()->optSound_1->click();
        QCOMPARE(g.fake.mediaCalls.last(), QStringLiteral("wmp1 stop"));
        QVERIFY(!g.ui()->hsc1->isEnabled());
        g.ui()->optSound_0->click();
        QVERIFY(g.ui()->hsc1->isEnabled());
    }

    void countdownWithoutAQuestion()
    {
        GameWindow g(0, 0);
        // The switch moves, the count does not.
        g.ui()->OptTimer_1->click();
        g.ui()->OptTimer_0->click();
        QVERIFY(!g.counting());
        QCOMPARE(g.display(), QStringLiteral("0"));
    }

    void scoreButtonsChangeOnlyTheScore()
    {
        GameWindow g(3, 2);
        g.next(false);
        g.setScore(0, 6);  // both decks hold 5
        QCOMPARE(g.score(0), QStringLiteral("5"));
        g.w().clkDown[0]->click();
        QCOMPARE(g.score(0), QStringLiteral("4"));
        QCOMPARE(g.turn(), 1);
        QCOMPARE(g.round(), QStringLiteral("Round 1"));
        QVERIFY(g.fake.boxes.isEmpty());
    }
};

TANDREL_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
