// Start-up of the main window: which games start, where it ends, the
// countdown and sound it leaves, and the second copy.
#include "GameWindow.h"
#include "TestMain.h"
#include <QScrollBar>

class TestStartup : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void questionFilesDecideTheStart_data();
    void questionFilesDecideTheStart();
    void mediaSetUpComesFirst();
    void phraseFileFoundInAnyLetterCase();
    void secondCopyEndsAtOnce();
};

void TestStartup::questionFilesDecideTheStart_data()
{
    QTest::addColumn<int>("matches");
    QTest::addColumn<int>("phrases");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("count");
    QTest::addColumn<bool>("timerOn");
    QTest::newRow("both files") << 6 << 5 << 0 << "30" << false;
    QTest::newRow("only match lines") << 6 << 0 << 0 << "30" << false;
    QTest::newRow("only phrases") << 0 << 5 << 1 << "30" << false;
    QTest::newRow("no question file") << 0 << 0 << 0 << "0" << true;
}

void TestStartup::questionFilesDecideTheStart()
{
    QFETCH(int, matches);
    QFETCH(int, phrases);
    QFETCH(int, tab);
    QFETCH(QString, count);
    QFETCH(bool, timerOn);
    GameWindow g(matches, phrases);
    QCOMPARE(g.ui()->SSTab1->currentIndex(), tab);
    QCOMPARE(g.ui()->txtTimer->text(), count);
    QCOMPARE(g.w().TimerTime, qint16(count.toInt()));
    QCOMPARE(g.w().OptTimer[0]->isChecked(), timerOn);
    QVERIFY(!g.w().Timer1->isActive());
    QVERIFY(g.w().optSound[1]->isChecked());
    QVERIFY(!g.ui()->hsc1->isEnabled());
    QVERIFY(g.fake.boxes.isEmpty());

    QCOMPARE(g.w().MatchGameInProgress, matches > 0);
    QCOMPARE(g.w().PhraseGameInProgress, phrases > 0);
    QCOMPARE(g.ui()->clkStatusMatch->text(),
             matches ? QStringLiteral("Viewing Match 1 of %1 Matches...").arg(matches) : QString());
    QCOMPARE(g.ui()->clkStatusPhrase->text(),
             phrases ? QStringLiteral("Viewing Phrase 1 of %1 Phrases...").arg(phrases) : QString());
    if (matches) {
        QVERIFY(matchLines(matches).join('|').toUpper().contains(g.w().lblName[0]->text().trimmed()));
        QVERIFY(g.w().lblName[0]->text().endsWith(QStringLiteral("\r\n")));
        QVERIFY(g.w().lblName[1]->text().startsWith(QString(19, QLatin1Char('_'))));
    }
    if (phrases)
        QVERIFY(g.phraseShown().endsWith(QStringLiteral(" in it.      "), Qt::CaseInsensitive));
    QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
    QCOMPARE(g.round(), QStringLiteral("Round 1"));
    QCOMPARE(g.highlightedRow(), 0);
    QCOMPARE(g.fake.logTexts(), QStringList{"Loading Form frmTandrel"});
}

void TestStartup::mediaSetUpComesFirst()
{
    GameWindow g;
    const QString dir = g.fake.dir;
    QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 volume 50", "wmp2 volume 50",
                                             "wmp1 url " + dir + "/MatchMusic.mp3", "wmp1 stop",
                                             "wmp2 url " + dir + "/Buzzer.wav", "wmp2 stop",
                                             "wmp1 stop",    // "Sound Off" selected
                                             "wmp1 stop"})); // and the music stopped once more
}

void TestStartup::phraseFileFoundInAnyLetterCase()
{
    FakePlatform fake;
    fake.writeFile(QStringLiteral("TANDRELPHRASES.TXT"), questionFile(phraseLines(3)));
    frmTandrel window;
    window.Form_Load();
    QCOMPARE(window.PhraseDeck.size(), 3);
    QCOMPARE(window.ui()->SSTab1->currentIndex(), 1);
}

void TestStartup::secondCopyEndsAtOnce()
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
    // Nothing after the check ran: no game was started.
    QVERIFY(window.MatchDeck.isEmpty());
    QVERIFY(!window.isVisible());
}

TANDREL_TEST_MAIN(TestStartup)
#include "tst_startup.moc"
