// The log and the one failure report.
#include "FakePlatform.h"
#include "TestMain.h"
#include "platform/Errors.h"
#include "platform/Globals.h"
#include <QDir>
#include <QFile>

using namespace Globals;
using platform::raise;
namespace err = platform::err;

class TestLogging : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void firstRecordOfARunEmptiesTheLog()
    {
        FakePlatform fake;
        fake.writeFile("LogInfo.txt", "old run\r\nold run\r\n");
        WriteLogInfo("first");
        WriteLogInfo("second");
        QCOMPARE(fake.logTexts(), (QStringList{"first", "second"}));

        // A second run starts the log anew.
        ResetLogForTests();
        WriteLogInfo("next run");
        QCOMPARE(fake.logTexts(), QStringList{"next run"});
    }
    void recordsCarryDateAndTwoBlanks_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QByteArray>("record");
        QTest::newRow("United States") << QLocale(QLocale::English, QLocale::UnitedStates)
                                       << QByteArray("11/18/2026 4:05:32 PM  Loading Form frmTandrel\r\n");
        QTest::newRow("Germany") << QLocale(QLocale::German, QLocale::Germany)
                                 << QByteArray("18.11.2026 16:05:32  Loading Form frmTandrel\r\n");
        QTest::newRow("Netherlands") << QLocale(QLocale::Dutch, QLocale::Netherlands)
                                     << QByteArray("18-11-2026 16:05:32  Loading Form frmTandrel\r\n");
    }
    void recordsCarryDateAndTwoBlanks()
    {
        QFETCH(QLocale, locale);
        QFETCH(QByteArray, record);
        FakePlatform fake;
        fake.loc = locale;
        WriteLogInfo("Loading Form frmTandrel");
        QCOMPARE(fake.logBytes(), record);
    }
    void reportIsLoggedThenShown()
    {
        FakePlatform fake;
        Guarded("clkStart_Click", [] { raise(err::FileNotFound); });
        const QString text = "Current SubRoutine is clkStart_Click\r\nError Number: 53\r\nLocation: frmTandrel\r\n";
        QCOMPARE(fake.boxes.size(), 1);
        QCOMPARE(fake.boxes[0].text, text);
        QCOMPARE(fake.boxes[0].style, 64);
        QCOMPARE(fake.boxes[0].title, QStringLiteral("Error"));
        QCOMPARE(fake.logBytes(), "11/18/2026 4:05:32 PM  " + text.toUtf8() + "\r\n");
        QCOMPARE(fake.pointerResets, 1);
    }
    void guardVariants_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("variant");
        QTest::addColumn<QString>("shown");  // empty: no box
        QTest::addColumn<QStringList>("logged");

        enum { Plain, Function, LogOnly, Pass9, Advice };
        QTest::newRow("plain") << 6 << int(Plain) << "Current SubRoutine is p\r\nError Number: 6\r\nLocation: frmTandrel\r\n"
                               << QStringList{"Current SubRoutine is p", "Error Number: 6", "Location: frmTandrel", ""};
        QTest::newRow("function") << 9 << int(Function)
                                  << "Current Function is p\r\nError Number: 9\r\nLocation: frmTandrel\r\n"
                                  << QStringList{"Current Function is p", "Error Number: 9", "Location: frmTandrel", ""};
        QTest::newRow("log only") << 13 << int(LogOnly) << QString()
                                  << QStringList{"Current SubRoutine is p", "Error Number: 13", "Location: frmTandrel", ""};
        QTest::newRow("9 passes silently") << 9 << int(Pass9) << QString() << QStringList{};
        QTest::newRow("other numbers do not pass")
            << 6 << int(Pass9) << "Current SubRoutine is p\r\nError Number: 6\r\nLocation: frmTandrel\r\n"
            << QStringList{"Current SubRoutine is p", "Error Number: 6", "Location: frmTandrel", ""};
        QTest::newRow("advice lines")
            << 339 << int(Advice)
            << "before\r\nCurrent SubRoutine is p\r\n\r\nbetween\r\nError Number: 339\r\nLocation: frmTandrel\r\nafter = \r\n"
            << QStringList{"before", "Current SubRoutine is p", "", "between", "Error Number: 339", "Location: frmTandrel",
                           "after = ", ""};
        QTest::newRow("negative number") << -2147 << int(Plain)
                                         << "Current SubRoutine is p\r\nError Number: -2147\r\nLocation: frmTandrel\r\n"
                                         << QStringList{"Current SubRoutine is p", "Error Number: -2147",
                                                        "Location: frmTandrel", ""};
    }
    void guardVariants()
    {
        QFETCH(int, number);
        QFETCH(int, variant);
        QFETCH(QString, shown);
        QFETCH(QStringList, logged);
        FakePlatform fake;
        Guard guard("p");
        switch (variant) {
        case 1: guard = Guard::function("p"); break;
        case 2: guard.logOnly = true; break;
        case 3: guard.passes = [](int n) { return n == 9; }; break;
        case 4:
            guard.shape = [](Report &r) {
                r.before = {"before"};
                r.between = {"", "between"};
                r.after = {"after = "};
            };
            break;
        }
        QStringList order;
        guard.afterReport = [&] { order.append(QStringLiteral("after %1 boxes").arg(fake.boxes.size())); };
        bool bodyEnded = false;
        const bool completed = Guarded(guard, [&] {
            raise(number);
            bodyEnded = true;
        });
        QVERIFY(!completed);
        QVERIFY(!bodyEnded);
        QCOMPARE(fake.boxes.size(), shown.isEmpty() ? 0 : 1);
        if (!shown.isEmpty())
            QCOMPARE(fake.boxes[0].text, shown);
        QCOMPARE(fake.logTexts(), logged);
        QCOMPARE(order, variant == 3 && number == 9 ? QStringList{} : QStringList{QStringLiteral("after %1 boxes").arg(fake.boxes.size())});
    }
    void innerFailureIsReportedOnceAndCallerGoesOn()
    {
        FakePlatform fake;
        QStringList trace;
        auto inner = [&] {
            return Guarded("inner", [&] {
                trace << "inner starts";
                throw std::bad_alloc();
            });
        };
        Guarded("outer", [&] {
            inner();
            trace << "outer goes on";
        });
        QCOMPARE(trace, (QStringList{"inner starts", "outer goes on"}));
        QCOMPARE(fake.boxes.size(), 1);
        QVERIFY(fake.boxes[0].text.startsWith("Current SubRoutine is inner\r\nError Number: 7\r\n"));
    }
    void stepsGoOnAfterAFailingStep()
    {
        FakePlatform fake;
        QStringList trace;
        Guard guard("Form_Load FrmTandrel");
        guard.logOnly = true;
        GuardedSteps(guard, {[&] { trace << "1"; }, [&] { raise(err::Overflow); }, [&] { trace << "3"; }});
        QCOMPARE(trace, (QStringList{"1", "3"}));
        QVERIFY(fake.boxes.isEmpty());
        QCOMPARE(fake.logTexts().first(), QStringLiteral("Current SubRoutine is Form_Load FrmTandrel"));
    }
    void logWriterFailureShowsTwoBoxesWithoutLooping()
    {
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkdir("LogInfo.txt"));  // a folder where the log should be
        Guarded("clkNext_Click", [] { raise(err::Overflow); });
        QCOMPARE(fake.boxes.size(), 2);
        QCOMPARE(fake.boxes[0].text,
                 QStringLiteral("Current SubRoutine is WriteLogInfo\r\nError Number: 75\r\nLocation: frmTandrel\r\n"));
        QCOMPARE(fake.boxes[1].text,
                 QStringLiteral("Current SubRoutine is clkNext_Click\r\nError Number: 6\r\nLocation: frmTandrel\r\n"));
    }
    void deletedLogFailsEachRecordOnce()
    {
        FakePlatform fake;
        WriteLogInfo("first");
        QVERIFY(QFile::remove(fake.path("LogInfo.txt")));
        WriteLogInfo("second");
        WriteLogInfo("third");
        QCOMPARE(fake.boxes.size(), 2);
        QVERIFY(fake.boxes[1].text.contains("Error Number: 53"));
        QVERIFY(!QFile::exists(fake.path("LogInfo.txt")));  // appending never creates it again
    }
    void noActiveWindowStillReports()
    {
        FakePlatform fake;
        fake.activeWindow.clear();
        Guarded("Form_Load frmSplash", [] { raise(err::ComponentMissing); });
        QCOMPARE(fake.boxes.size(), 1);
        QVERIFY(fake.boxes[0].text.contains("Location: (no program window active)\r\n"));
        QVERIFY(!fake.logTexts().isEmpty());
    }
};


TANDREL_TEST_MAIN(TestLogging)
#include "tst_logging.moc"
