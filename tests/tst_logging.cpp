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
    void recordsOfARun_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QByteArray>("stamp");
        QTest::newRow("United States") << QLocale(QLocale::English, QLocale::UnitedStates) << QByteArray("11/18/2026 4:05:32 PM  ");
        QTest::newRow("Germany") << QLocale(QLocale::German, QLocale::Germany) << QByteArray("18.11.2026 16:05:32  ");
        QTest::newRow("Netherlands") << QLocale(QLocale::Dutch, QLocale::Netherlands) << QByteArray("18-11-2026 16:05:32  ");
    }
    void recordsOfARun()
    {
        QFETCH(QLocale, locale);
        QFETCH(QByteArray, stamp);
        FakePlatform fake;
        fake.loc = locale;
        fake.writeFile("LogInfo.txt", "old run\r\n");
        WriteLogInfo("first");  // the first record of a run empties the log
        WriteLogInfo("second");
        QCOMPARE(fake.logBytes(), stamp + "first\r\n" + stamp + "second\r\n");
        ResetLogForTests();  // the next run starts anew
        WriteLogInfo("next run");
        QCOMPARE(fake.logBytes(), stamp + "next run\r\n");
    }

    void guardVariants_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("variant");
        QTest::addColumn<QString>("report");  // as logged; empty: nothing at all
        QTest::addColumn<bool>("box");
        enum { Plain, Function, LogOnly, Pass9, Advice };
        const QString plain = "Current SubRoutine is p\r\nError Number: %1\r\nLocation: frmTandrel\r\n";
        QTest::newRow("plain") << 53 << int(Plain) << plain.arg(53) << true;
        QTest::newRow("function") << 9 << int(Function) << QString(plain).replace("SubRoutine", "Function").arg(9) << true;
        QTest::newRow("log only") << 13 << int(LogOnly) << plain.arg(13) << false;
        QTest::newRow("9 passes silently") << 9 << int(Pass9) << QString() << false;
        QTest::newRow("other numbers do not pass") << 6 << int(Pass9) << plain.arg(6) << true;
        QTest::newRow("advice lines") << 339 << int(Advice)
                                      << "before\r\nCurrent SubRoutine is p\r\n\r\nbetween\r\nError Number: 339\r\n"
                                         "Location: frmTandrel\r\nafter = \r\n" << true;
        QTest::newRow("negative number") << -2147 << int(Plain) << plain.arg(-2147) << true;
    }
    void guardVariants()
    {
        QFETCH(int, number);
        QFETCH(int, variant);
        QFETCH(QString, report);
        QFETCH(bool, box);
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
        guard.afterReport = [&] { order << QStringLiteral("after %1 boxes").arg(fake.boxes.size()); };
        bool bodyEnded = false;
        QVERIFY(!Guarded(guard, [&] {
            raise(number);
            bodyEnded = true;
        }));
        QVERIFY(!bodyEnded);
        QCOMPARE(fake.boxes.size(), int(box));
        if (box) {
            QCOMPARE(fake.boxes[0].text, report);
            QCOMPARE(fake.boxes[0].style, 64);
            QCOMPARE(fake.boxes[0].title, QStringLiteral("Error"));
            QCOMPARE(fake.pointerResets, 1);
        }
        QCOMPARE(fake.logBytes(), report.isEmpty() ? QByteArray() : "11/18/2026 4:05:32 PM  " + report.toUtf8() + "\r\n");
        QCOMPARE(order, report.isEmpty() ? QStringList{} : QStringList{QStringLiteral("after %1 boxes").arg(int(box))});
    }

    void innerFailureIsReportedOnceAndCallersGoOn()
    {
        FakePlatform fake;
        QStringList trace;
        Guarded("outer", [&] {
            Guarded("inner", [&] {
                trace << "inner starts";
                throw std::bad_alloc();
            });
            trace << "outer goes on";
        });
        Guard steps("Form_Load FrmTandrel");
        steps.logOnly = true;
        GuardedSteps(steps, {[&] { trace << "1"; }, [&] { raise(err::Overflow); }, [&] { trace << "3"; }});
        QCOMPARE(trace, (QStringList{"inner starts", "outer goes on", "1", "3"}));
        QCOMPARE(fake.boxesShown(), QStringList{"inner 7"});
        QCOMPARE(fake.logTexts().filter("Current"), (QStringList{"Current SubRoutine is inner", "Current SubRoutine is Form_Load FrmTandrel"}));
    }

    void logThatCannotBeWritten()
    {
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkdir("LogInfo.txt"));  // a folder where the log should be
        fake.activeWindow.clear();
        Guarded("clkNext_Click", [] { raise(err::Overflow); });
        QCOMPARE(fake.boxes.size(), 2);  // the log's failure, then the report: no loop
        QCOMPARE(fake.boxes[0].text, QStringLiteral("Current SubRoutine is WriteLogInfo\r\nError Number: 75\r\nLocation: (no program window active)\r\n"));
        QCOMPARE(fake.boxesShown()[1], QStringLiteral("clkNext_Click 6"));

        // A log deleted while the program runs fails each record once and is never made again.
        FakePlatform other;
        WriteLogInfo("first");
        QVERIFY(QFile::remove(other.path("LogInfo.txt")));
        WriteLogInfo("second");
        WriteLogInfo("third");
        QCOMPARE(other.boxesShown(), (QStringList{"WriteLogInfo 53", "WriteLogInfo 53"}));
        QCOMPARE(other.pointerResets, 2);  // each box with the normal pointer, not a busy one
        QVERIFY(!QFile::exists(other.path("LogInfo.txt")));
    }
};

TANDREL_TEST_MAIN(TestLogging)
#include "tst_logging.moc"
