// The countdown and the sound: ticks called directly, the music and buzzer
// calls read from the recording players.
#include "GameWindow.h"
#include "TestMain.h"
#include <QCheckBox>
#include <QScrollBar>
#include <QTimer>

namespace {
QString display(GameWindow &g)
{
    return g.ui()->txtTimer->text();
}

// Timer on, with the given sound option, then a fresh record of the players.
void prepare(GameWindow &g, bool soundOn, bool buzzer = true, bool always = false)
{
    g.ui()->chkBuzzer->setChecked(buzzer);
    g.ui()->chkSoundAlwaysOn->setChecked(always);
    g.w().selectOption(g.w().OptTimer[0]);
    g.w().selectOption(g.w().optSound[soundOn ? 0 : 1]);
    g.fake.mediaCalls.clear();
}
}  // namespace

class TestCountdown : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void countsDownToZeroAndStops();
    void zeroTimeSounds_data();
    void zeroTimeSounds();
    void shortLengths_data();
    void shortLengths();
    void newQuestionRestartsTheCount();
    void timerOptions_data();
    void timerOptions();
    void tabChangeStopsAndResets();
    void updateButtonTakesTheLength_data();
    void updateButtonTakesTheLength();
    void tickThatCannotCountIsReported();
    void soundOptionsAndVolume();
};

void TestCountdown::countsDownToZeroAndStops()
{
    GameWindow g;
    prepare(g, true);
    g.w().TimerTime = 3;
    g.ui()->clkNext->click();
    QCOMPARE(display(g), QStringLiteral("3"));
    QVERIFY(g.w().Timer1->isActive());
    QStringList shown;
    for (int i = 0; i < 4; ++i) {
        g.w().Timer1_Timer();
        shown << display(g);
    }
    QCOMPARE(shown, (QStringList{"2", "1", "0", "0"}));
    QVERIFY(!g.w().Timer1->isActive());
    QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"}));
}

void TestCountdown::zeroTimeSounds_data()
{
    QTest::addColumn<bool>("soundOn");
    QTest::addColumn<bool>("buzzer");
    QTest::addColumn<bool>("always");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("sound off") << false << true << true << QStringList{};
    QTest::newRow("buzzer, continual") << true << true << true << QStringList{"wmp2 play"};
    QTest::newRow("buzzer, music stops") << true << true << false << QStringList{"wmp2 play", "wmp1 stop"};
    QTest::newRow("continual only") << true << false << true << QStringList{};
    QTest::newRow("music stops only") << true << false << false << QStringList{"wmp1 stop"};
}

void TestCountdown::zeroTimeSounds()
{
    QFETCH(bool, soundOn);
    QFETCH(bool, buzzer);
    QFETCH(bool, always);
    QFETCH(QStringList, calls);
    GameWindow g;
    prepare(g, soundOn, buzzer, always);
    g.w().TimerTime = 2;
    g.w().CheckTimer();
    g.w().Timer1_Timer();
    g.fake.mediaCalls.clear();
    g.w().Timer1_Timer();  // writes 0
    QCOMPARE(display(g), QStringLiteral("0"));
    QCOMPARE(g.fake.mediaCalls, calls);
    g.fake.mediaCalls.clear();
    g.w().Timer1_Timer();  // finds 0: stops in silence
    QCOMPARE(g.fake.mediaCalls, QStringList{});
    QVERIFY(!g.w().Timer1->isActive());
}

void TestCountdown::shortLengths_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("0: stops at the first tick, silent") << 0 << QStringList{"0"} << QStringList{};
    QTest::newRow("1: zero at the first tick") << 1 << QStringList{"0", "0"} << QStringList{"wmp2 play", "wmp1 stop"};
}

void TestCountdown::shortLengths()
{
    QFETCH(int, length);
    QFETCH(QStringList, shown);
    QFETCH(QStringList, calls);
    GameWindow g;
    prepare(g, true);
    g.w().TimerTime = qint16(length);
    g.w().CheckTimer();
    QCOMPARE(display(g), QString::number(length));
    QVERIFY(g.w().Timer1->isActive());
    g.fake.mediaCalls.clear();
    QStringList seen;
    while (g.w().Timer1->isActive() && seen.size() < 5) {
        g.w().Timer1_Timer();
        seen << display(g);
    }
    QCOMPARE(seen, shown);
    QCOMPARE(g.fake.mediaCalls, calls);
}

void TestCountdown::newQuestionRestartsTheCount()
{
    GameWindow g;
    prepare(g, true);
    g.w().TimerTime = 30;
    g.ui()->clkNextPhrase->click();
    for (int i = 0; i < 12; ++i)
        g.w().Timer1_Timer();
    QCOMPARE(display(g), QStringLiteral("18"));
    g.ui()->clkPrev->click();
    QCOMPARE(display(g), QStringLiteral("30"));
    QVERIFY(g.w().Timer1->isActive());
    QCOMPARE(g.fake.mediaCalls, (QStringList{"wmp1 play", "wmp1 play"}));

    // With the timer off a question leaves the music alone.
    g.w().selectOption(g.w().OptTimer[1]);
    g.fake.mediaCalls.clear();
    g.ui()->clkNext->click();
    QVERIFY(!g.w().Timer1->isActive());
    QCOMPARE(display(g), QStringLiteral("30"));
    QVERIFY(g.fake.mediaCalls.isEmpty());
}

void TestCountdown::timerOptions_data()
{
    QTest::addColumn<bool>("question");
    QTest::addColumn<int>("tab");
    QTest::newRow("match on show") << true << 0;
    QTest::newRow("phrase on show") << true << 1;
    QTest::newRow("no match on show") << false << 0;
    QTest::newRow("no phrase on show") << false << 1;
}

void TestCountdown::timerOptions()
{
    QFETCH(bool, question);
    QFETCH(int, tab);
    GameWindow g(question || tab == 1 ? 6 : 0, question || tab == 0 ? 6 : 0);
    g.ui()->SSTab1->setCurrentIndex(tab);
    prepare(g, true);
    g.w().TimerTime = 20;
    g.w().Timer1->start();
    g.ui()->txtTimer->setText(QStringLiteral("7"));

    g.w().selectOption(g.w().OptTimer[1]);
    QCOMPARE(g.w().Timer1->isActive(), !question);
    QCOMPARE(display(g), question ? QStringLiteral("20") : QStringLiteral("7"));
    g.w().selectOption(g.w().OptTimer[0]);
    QVERIFY(g.w().Timer1->isActive());
    QCOMPARE(display(g), question ? QStringLiteral("20") : QStringLiteral("7"));
    QVERIFY(g.fake.mediaCalls.isEmpty());  // neither step starts the music

    // Switched on again after the count ran out: the next tick stops it, silently.
    if (question) {
        g.ui()->txtTimer->setText(QStringLiteral("0"));
        g.w().Timer1->stop();
        g.w().selectOption(g.w().OptTimer[0]);
        QVERIFY(g.w().Timer1->isActive());
        g.w().Timer1_Timer();
        QVERIFY(!g.w().Timer1->isActive());
        QVERIFY(g.fake.mediaCalls.isEmpty());
    }
}

void TestCountdown::tabChangeStopsAndResets()
{
    GameWindow g;
    prepare(g, true);
    g.w().TimerTime = 30;
    g.ui()->clkNext->click();
    g.w().Timer1_Timer();
    g.fake.mediaCalls.clear();
    g.ui()->SSTab1->setCurrentIndex(1);
    QVERIFY(!g.w().Timer1->isActive());
    QCOMPARE(display(g), QStringLiteral("30"));
    g.w().Timer1->start();
    Q_EMIT g.ui()->SSTab1->tabBarDoubleClicked(1);
    QVERIFY(!g.w().Timer1->isActive());
    QVERIFY(g.fake.mediaCalls.isEmpty());  // the music goes on
}

void TestCountdown::updateButtonTakesTheLength_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::newRow("whole") << "40" << 40;
    QTest::newRow("half rounds to even, down") << "40.5" << 40;
    QTest::newRow("half rounds to even, up") << "41.5" << 42;
}

void TestCountdown::updateButtonTakesTheLength()
{
    QFETCH(QString, text);
    QFETCH(int, length);
    GameWindow g;
    g.ui()->txtTimer->setText(text);
    g.ui()->cmdUpdateButton->click();
    QCOMPARE(g.w().TimerTime, qint16(length));
    QCOMPARE(display(g), text);
    // With the timer off, the next question counts from the new length.
    g.ui()->clkNext->click();
    QCOMPARE(display(g), QString::number(length));
    QVERIFY(!g.w().Timer1->isActive());
}

void TestCountdown::tickThatCannotCountIsReported()
{
    GameWindow g;
    g.w().Timer1->start();
    g.ui()->txtTimer->setText(QStringLiteral("-32768"));
    g.w().Timer1_Timer();
    QCOMPARE(g.fake.boxes.size(), 1);
    QVERIFY(g.fake.boxes[0].text.startsWith(QStringLiteral("Current SubRoutine is Timer1_Timer\r\nError Number: 6\r\n")));
    QVERIFY(g.w().Timer1->isActive());  // the next tick fails again
}

void TestCountdown::soundOptionsAndVolume()
{
    GameWindow g(0, 0);
    QVERIFY(!g.ui()->hsc1->isEnabled());
    g.w().selectOption(g.w().optSound[0]);
    QCOMPARE(g.fake.mediaCalls.mid(g.fake.mediaCalls.size() - 2), (QStringList{"wmp1 play", "wmp1 loop on"}));
    QVERIFY(g.ui()->hsc1->isEnabled());
    QVERIFY(!g.w().Timer1->isActive());  // music, but no countdown

    g.fake.mediaCalls.clear();
    g.ui()->hsc1->setValue(30);
    QTest::keyClick(g.ui()->hsc1, Qt::Key_Right);
    const QString v = QString::number(g.ui()->hsc1->value());
    QCOMPARE(v, QStringLiteral("31"));  // right is louder
    QCOMPARE(g.fake.mediaCalls,
             (QStringList{"wmp1 volume 30", "wmp2 volume 30", "wmp1 volume " + v, "wmp2 volume " + v}));

    g.fake.mediaCalls.clear();
    g.ui()->optSound_1->click();
    QCOMPARE(g.fake.mediaCalls, QStringList{"wmp1 stop"});
    QVERIFY(!g.ui()->hsc1->isEnabled());
}

TANDREL_TEST_MAIN(TestCountdown)
#include "tst_countdown.moc"
