// Both question tabs played through the window's buttons: starting over, a
// start that cannot go on, stepping both ways, and the end of a game.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/frmWin.h"
#include "ui_frmWin.h"
#include <QFile>

namespace {
void tabColumn()
{
    QTest::addColumn<bool>("phrase");
    QTest::newRow("match tab") << false;
    QTest::newRow("phrase tab") << true;
}
}  // namespace

class TestRounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startOverQuestion_data()
    {
        QTest::addColumn<bool>("phrase");
        QTest::addColumn<int>("answer");
        for (bool phrase : {false, true})
            for (int answer : {6, 7, 2})
                QTest::addRow("%s, answer %d", phrase ? "phrase" : "match", answer) << phrase << answer;
    }
    void startOverQuestion()
    {
        QFETCH(bool, phrase);
        QFETCH(int, answer);
        GameWindow g;
        frmTandrel::selectOption(g.w().OptTimer[0]);
        for (int i = 0; i < 3; ++i)
            g.next(phrase);
        g.setScore(1, 3);
        g.w().Timer1_Timer();  // the count is at 29
        const QString before = g.shown(phrase);
        const int position = g.position(phrase);
        g.fake.answers = {answer};

        g.start(phrase);
        QCOMPARE(g.fake.boxes.size(), 1);
        QCOMPARE(g.fake.boxes[0].text, phrase ? QStringLiteral("A Match Phrase Game is already in Progress, Start Over?")
                                              : QStringLiteral("A Tandrel Game is already in Progress, Start Over?"));
        QCOMPARE(g.fake.boxes[0].title, QStringLiteral("Start New Game"));
        QCOMPARE(g.fake.boxes[0].style, 3);
        if (answer == 6) {
            QCOMPARE(g.score(1), QStringLiteral("0"));
            QCOMPARE(g.round(), QStringLiteral("Round 1"));
            QCOMPARE(g.turn(), 0);
            QCOMPARE(g.highlightedRow(), 0);
            QCOMPARE(g.position(phrase), 1);
            QCOMPARE(g.display(), QStringLiteral("30"));
            return;
        }
        // Declined: nothing changed, but the match tab restarted the count first.
        QCOMPARE(g.score(1), QStringLiteral("3"));
        QCOMPARE(g.round(), QStringLiteral("Round 2"));
        QCOMPARE(g.turn(), 1);
        QCOMPARE(g.position(phrase), position);
        QCOMPARE(g.shown(phrase), before);
        QCOMPARE(g.display(), phrase ? QStringLiteral("29") : QStringLiteral("30"));
    }

    void startThatCannotGoOn_data()
    {
        QTest::addColumn<bool>("phrase");
        QTest::addColumn<bool>("gone");
        for (bool phrase : {false, true}) {
            QTest::addRow("%s, file gone", phrase ? "phrase" : "match") << phrase << true;
            QTest::addRow("%s, no questions", phrase ? "phrase" : "match") << phrase << false;
        }
    }
    void startThatCannotGoOn()
    {
        QFETCH(bool, phrase);
        QFETCH(bool, gone);
        GameWindow g;
        g.next(phrase);
        g.next(phrase);  // round 2
        g.setScore(0, 4);
        const QString before = g.shown(phrase);
        const QString name = phrase ? QStringLiteral("TandrelPhrases.txt") : QStringLiteral("TandrelLines.txt");
        if (gone)
            QVERIFY(QFile::remove(g.fake.path(name)));
        else
            g.fake.writeFile(name, questionFile({"// only comments", "   "}));
        g.fake.answers = {6};
        g.start(phrase);
        const QStringList titles = gone ? QStringList{"File Does Not Exist"}
                                        : QStringList{"Start New Game", "Exiting File Load"};
        QCOMPARE(g.fake.boxTitles(), titles);
        const ShownBox &box = g.fake.boxes.last();
        QVERIFY(box.text.startsWith(QStringLiteral("File ") + g.fake.path(name)));
        QCOMPARE(box.style, 64);
        // The old deck and question stay; only a start that got as far as
        // the file's reading starts the players afresh.
        QCOMPARE(g.shown(phrase), before);
        QCOMPARE(g.position(phrase), 3);
        QCOMPARE(g.score(0), gone ? QStringLiteral("4") : QStringLiteral("0"));
        QCOMPARE(g.round(), gone ? QStringLiteral("Round 2") : QStringLiteral("Round 1"));
        QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
    }

    void stepsWrapAndKeepTheFocus_data() { tabColumn(); }
    void stepsWrapAndKeepTheFocus()
    {
        QFETCH(bool, phrase);
        GameWindow g;
        g.w().show();
        const QString first = g.shown(phrase);
        g.prev(phrase);
        QCOMPARE(g.status(phrase), phrase ? QStringLiteral("Viewing Phrase 6 of 6 Phrases...")
                                          : QStringLiteral("Viewing Match 6 of 6 Matches..."));
        QCOMPARE(g.turn(), 1);
        QCOMPARE(g.w().focusWidget(), phrase ? g.ui()->clkPrevPhrase : g.ui()->clkPrev);
        g.next(phrase);
        QCOMPARE(g.shown(phrase), first);
        QCOMPARE(g.w().focusWidget(), phrase ? g.ui()->clkNextPhrase : g.ui()->clkNext);
        // Every entry comes round once, and the other tab stays where it is.
        QStringList seen;
        for (int i = 0; i < 6; ++i) {
            seen << g.shown(phrase);
            g.next(phrase);
        }
        seen.removeDuplicates();
        QCOMPARE(seen.size(), 6);
        QCOMPARE(g.position(!phrase), 1);
        QCOMPARE(g.round(), QStringLiteral("Round 5"));
    }

    void longQuestionsFitTheirLabels()
    {
        GameWindow g;
        QString phrase = QStringLiteral("The Blank");
        while (phrase.size() < 900)
            phrase += QStringLiteral(" lantern harbor");
        g.fake.writeFile(QStringLiteral("TandrelPhrases.txt"), questionFile({phrase}));
        g.fake.writeFile(QStringLiteral("TandrelLines.txt"),
                         questionFile({"Supercalifragilisticexpialidociousness Blank",
                                       "A Long Line Written By A Host Who Likes Words Very Much Blank"}));
        g.fake.answers = {6, 6};
        g.start(false);
        g.start(true);
        for (int i = 0; i < 2; ++i) {
            for (QLabel *label : {g.w().lblName[0], g.w().lblName[1], g.ui()->lblPhrase}) {
                const QRect room = label->contentsRect();
                const QRect need = label->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::AlignCenter,
                                                                     label->text().trimmed());
                QVERIFY2(need.width() <= room.width() && need.height() <= room.height(), qPrintable(label->text()));
                QVERIFY(label->font().pointSizeF() >= 8);
            }
            g.next(false);
        }
    }

    void wholeGameToOneWinner_data() { tabColumn(); }
    void wholeGameToOneWinner()
    {
        QFETCH(bool, phrase);
        GameWindow g;
        g.ui()->cmbScoreToWin->setCurrentText(QStringLiteral("5"));
        g.w().txtPlayer[0]->setText(QStringLiteral("Ann"));
        g.timerAndSoundOn();
        // Ann answers right on each of her turns; Bob never does.
        int presses = 0;
        while (g.winMessages.isEmpty() && presses < 40) {
            if (g.turn() == 0)
                g.w().clkUp[0]->click();
            g.fake.mediaCalls.clear();
            g.next(phrase);
            ++presses;
        }
        QCOMPARE(presses, 10);  // five rounds of two players
        QCOMPARE(g.winMessages, QStringList{game::winnerMessage("Ann", 5)});

        // A new game has begun: both decks dealt again, first questions shown.
        for (int i = 0; i < 10; ++i)
            QCOMPARE(g.score(i), QStringLiteral("0"));
        QCOMPARE(g.round(), QStringLiteral("Round 1"));
        QCOMPARE(g.highlightedRow(), 0);
        QCOMPARE(g.status(false), QStringLiteral("Viewing Match 1 of 6 Matches..."));
        QCOMPARE(g.status(true), QStringLiteral("Viewing Phrase 1 of 6 Phrases..."));
        QVERIFY(g.fake.boxes.isEmpty());  // no start-over question
        QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
        // Both starts restart the count; the match tab's Next restarts it
        // once more, the phrase tab's Next does not.
        QCOMPARE(g.musicStarts(), phrase ? 2 : 3);
        QVERIFY(g.fake.logTexts().contains(QStringLiteral("Loading Form frmWin")));
        QVERIFY(g.fake.logTexts().contains(QStringLiteral("Unloading Form frmWin")));
        // A game end on the match tab leaves the phrase tab's next step to
        // the new deal: that Next moves the turn but stays on phrase 1.
        g.next(true);
        QCOMPARE(g.turn(), 1);
        QCOMPARE(g.position(true), phrase ? 2 : 1);
    }

    void tieAnswered_data()
    {
        QTest::addColumn<bool>("phrase");
        QTest::addColumn<bool>("yes");
        QTest::newRow("match tab, another round") << false << true;
        QTest::newRow("phrase tab, another round") << true << true;
        QTest::newRow("match tab, new game") << false << false;
        QTest::newRow("phrase tab, new game") << true << false;
    }
    void tieAnswered()
    {
        QFETCH(bool, phrase);
        QFETCH(bool, yes);
        GameWindow g;
        g.answerWin(yes ? "clkYes" : "clkNo");
        g.setPlayers(3);
        g.setScore(0, 10);
        g.setScore(2, 10);
        g.setScore(1, 4);
        g.next(phrase);
        g.next(phrase);
        const int match = g.position(false), phrases = g.position(true);
        g.next(phrase);  // the round ends in a tie

        QCOMPARE(g.winMessages, QStringList{game::tieMessage({"Name", "Name"}, 10)});
        QVERIFY(g.w().Tag.isEmpty());
        QCOMPARE(g.turn(), 0);
        QCOMPARE(g.highlightedRow(), 0);
        if (yes) {
            // Play goes on with the same scores; each deck moved on by one.
            QCOMPARE(g.score(0), QStringLiteral("10"));
            QCOMPARE(g.score(1), QStringLiteral("4"));
            QCOMPARE(g.round(), QStringLiteral("Round 2"));
            QCOMPARE(g.status(false), QStringLiteral("Viewing Match %1 of 6 Matches...").arg(match + 1));
            QCOMPARE(g.status(true), QStringLiteral("Viewing Phrase %1 of 6 Phrases...").arg(phrases + 1));
            // Only once: the next round goes on as usual.
            g.next(phrase);
            QCOMPARE(g.turn(), 1);
        } else {
            QCOMPARE(g.score(0), QStringLiteral("0"));
            QCOMPARE(g.round(), QStringLiteral("Round 1"));
            QCOMPARE(g.position(false), 1);
            QCOMPARE(g.position(true), 1);
        }
    }

    void tieContinuedWithoutTheOtherDeck()
    {
        GameWindow g(6, 0);
        g.answerWin("clkYes");
        g.setScore(0, 5);
        g.setScore(1, 5);
        g.ui()->cmbScoreToWin->setCurrentText(QStringLiteral("5"));
        g.next(false);
        g.next(false);
        QCOMPARE(g.winMessages.size(), 1);
        QCOMPARE(g.turn(), 0);
        QCOMPARE(g.highlightedRow(), 0);
        QCOMPARE(g.position(false), 3);
    }

    void tieClosedWithoutAnAnswerIsReported()
    {
        GameWindow g;
        g.fake.onModal = [](QDialog &) { return int(QDialog::Rejected); };  // gone without Yes or No
        g.setScore(0, 10);
        g.setScore(1, 10);
        g.next(false);
        g.next(false);
        QCOMPARE(g.fake.boxesShown(), QStringList{"ChangePlayer 13"});
        // The game stays as it was.
        QCOMPARE(g.score(0), QStringLiteral("10"));
        QCOMPARE(g.round(), QStringLiteral("Round 2"));
        g.next(false);
        QCOMPARE(g.turn(), 1);
    }

    void winDialogAnsweredForReal()
    {
        GameWindow g;
        platform::install({platform::realServices().dialogs});
        g.setScore(0, 10);
        g.setScore(1, 10);
        g.next(false);

        // Answer the real modal dialog; a watchdog ends a wrong one fast.
        QStringList seen;
        QTimer poll;
        poll.setInterval(20);
        connect(&poll, &QTimer::timeout, this, [&] {
            auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget());
            if (!dialog || !dialog->isVisible())
                return;
            poll.stop();
            seen << dialog->windowTitle() << QString::number(dialog->ui()->clkClose->isVisible());
            QTest::keyClick(dialog, Qt::Key_Escape);  // a tie needs an answer
            seen << QString::number(dialog->isVisible());
            dialog->ui()->clkYes->click();
        });
        QTimer watchdog;
        watchdog.setSingleShot(true);
        bool timedOut = false;
        connect(&watchdog, &QTimer::timeout, this, [&] {
            timedOut = true;
            if (auto *dialog = qobject_cast<frmWin *>(QApplication::activeModalWidget()))
                dialog->ui()->clkYes->click();
        });
        poll.start();
        watchdog.start(5000);
        g.next(false);  // the round ends in a tie
        watchdog.stop();
        QVERIFY(!timedOut);
        QCOMPARE(seen, (QStringList{"Congratulations...", "0", "1"}));
        QCOMPARE(g.score(0), QStringLiteral("10"));
        QCOMPARE(g.turn(), 0);
        QVERIFY(g.w().Tag.isEmpty());
    }

    void reloadShowsItInTheTitle()
    {
        GameWindow g;
        g.setScore(1, 5);
        g.ui()->cmbScoreToWin->setCurrentText(QStringLiteral("5"));
        // The phrase file loses its questions and the match file goes; the
        // new game's reload says so while the title says what is going on.
        g.fake.writeFile(QStringLiteral("TandrelPhrases.txt"), questionFile({"// nothing left"}));
        QFile::remove(g.fake.path(QStringLiteral("TandrelLines.txt")));
        QStringList titles;
        g.fake.onBox = [&](const ShownBox &) { titles << g.w().windowTitle(); };
        g.next(false);
        g.next(false);
        QCOMPARE(g.fake.boxTitles(), (QStringList{"File Does Not Exist", "Exiting File Load"}));
        QCOMPARE(titles, (QStringList{"Tandrel", "Tandrel is reloading and randomly sorting Tandrels..."}));
        QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
        QCOMPARE(g.game().deck(questions::Kind::Phrase).size(), 6);  // the old deck stays in use
        // The match file's reload is still owed: once it is back, Start
        // deals it without asking.
        g.fake.writeFile(QStringLiteral("TandrelLines.txt"), questionFile(matchLines(4)));
        g.start(false);
        QCOMPARE(g.fake.boxes.size(), 2);
        QCOMPARE(g.status(false), QStringLiteral("Viewing Match 1 of 4 Matches..."));
    }
};

TANDREL_TEST_MAIN(TestRounds)
#include "tst_rounds.moc"
