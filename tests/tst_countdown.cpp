// The countdown and the sound on their own: ticks called directly, the music
// and buzzer calls read from the recording players.
#include "FakePlatform.h"
#include "TestMain.h"
#include "platform/Errors.h"
#include "timing/Countdown.h"
#include "timing/Sound.h"
#include <QTimer>

namespace {
struct Clock {
    FakePlatform fake;
    Sound sound;
    Countdown count{sound, nullptr};
    QStringList shown;  // every display change

    Clock(int length, bool soundOn, bool buzzer = true, bool continual = false)
    {
        QObject::connect(&count, &Countdown::displayChanged, [this](const QString &t) { shown << t; });
        count.setLength(qint16(length));
        sound.buzzer = buzzer;
        sound.continual = continual;
        sound.switchTo(soundOn);
        fake.mediaCalls.clear();
    }
    // Ticks until the count stops (at most n).
    void tickOut(int n = 10)
    {
        for (int i = 0; i < n && count.isRunning(); ++i)
            count.tick();
    }
};
}  // namespace

class TestCountdown : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void countsDownWithTheZeroTimeSounds_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("soundOn");
        QTest::addColumn<bool>("buzzer");
        QTest::addColumn<bool>("continual");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("calls");
        const QStringList from3{"3", "2", "1", "0"};
        QTest::newRow("buzzer, music stops") << 3 << true << true << false << from3
                                             << QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"};
        QTest::newRow("buzzer, music plays on") << 3 << true << true << true << from3
                                                << QStringList{"wmp1 play", "wmp2 play"};
        QTest::newRow("music stops only") << 3 << true << false << false << from3
                                          << QStringList{"wmp1 play", "wmp1 stop"};
        QTest::newRow("silent, music on") << 3 << true << false << true << from3 << QStringList{"wmp1 play"};
        QTest::newRow("sound off: silence") << 3 << false << true << false << from3 << QStringList{};
        QTest::newRow("length 1: zero at once") << 1 << true << true << false << QStringList{"1", "0"}
                                                << QStringList{"wmp1 play", "wmp2 play", "wmp1 stop"};
        QTest::newRow("length 0: stops in silence") << 0 << true << true << false << QStringList{"0"}
                                                    << QStringList{"wmp1 play"};
    }
    void countsDownWithTheZeroTimeSounds()
    {
        QFETCH(int, length);
        QFETCH(bool, soundOn);
        QFETCH(bool, buzzer);
        QFETCH(bool, continual);
        QFETCH(QStringList, shown);
        QFETCH(QStringList, calls);
        Clock c(length, soundOn, buzzer, continual);
        c.count.setDisplay(QStringLiteral("x"));
        c.shown.clear();
        c.count.restart();
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.count.timer()->interval(), 1000);
        c.tickOut();
        QVERIFY(!c.count.isRunning());
        QCOMPARE(c.shown, shown);
        QCOMPARE(c.fake.mediaCalls, calls);
    }

    void newQuestionRestartsTheCount()
    {
        Clock c(30, true);
        c.count.restart();
        c.count.tick();
        c.count.restart();
        QCOMPARE(c.count.display(), QStringLiteral("30"));
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.fake.mediaCalls, (QStringList{"wmp1 play", "wmp1 play"}));
        // With the timer off a question leaves the count idle at the length.
        c.count.switchTo(false, false);
        c.count.setDisplay(QStringLiteral("7"));
        c.count.restart();
        QVERIFY(!c.count.isRunning());
        QCOMPARE(c.count.display(), QStringLiteral("30"));
        QCOMPARE(c.fake.mediaCalls.size(), 2);
    }

    void timerSwitch_data()
    {
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("question");
        QTest::addColumn<bool>("running");
        QTest::addColumn<QString>("display");
        QTest::newRow("off with a question: idle") << false << true << false << "20";
        QTest::newRow("on with a question: resumes") << true << true << true << "7";
        QTest::newRow("off without a question: no change") << false << false << true << "7";
        QTest::newRow("on without a question: no change") << true << false << false << "7";
    }
    void timerSwitch()
    {
        QFETCH(bool, on);
        QFETCH(bool, question);
        QFETCH(bool, running);
        QFETCH(QString, display);
        Clock c(20, true);
        c.count.setDisplay(QStringLiteral("7"));
        if (!on)
            c.count.timer()->start();
        c.count.switchTo(on, question);
        QCOMPARE(c.count.isRunning(), running);
        QCOMPARE(c.count.display(), display);
        QCOMPARE(c.count.isOn(), on);
        QVERIFY(c.fake.mediaCalls.isEmpty());  // the switch never starts the music
    }

    void tickThatCannotCountFailsAndKeepsTicking()
    {
        Clock c(30, true);
        c.count.timer()->start();
        c.count.setDisplay(QStringLiteral("-32768"));
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, c.count.tick());
        QVERIFY(c.count.isRunning());
        QCOMPARE(c.count.display(), QStringLiteral("-32768"));
    }

};

TANDREL_TEST_MAIN(TestCountdown)
#include "tst_countdown.moc"
