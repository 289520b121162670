// The platform layer: date text, numbers, text files, the log and the one
// failure report.
#include "FakePlatform.h"
#include "TestMain.h"
#include "platform/Errors.h"
#include "platform/FolderLock.h"
#include "platform/Globals.h"
#include "platform/Numeric.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

namespace {
qsizetype openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).count();
}
}  // namespace

class TestPlatform : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void generalDateText_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QDateTime>("when");
        QTest::addColumn<QString>("text");
        const QLocale us(QLocale::English, QLocale::UnitedStates);
        const QDateTime evening(QDate(2026, 11, 18), QTime(16, 5, 32));
        QTest::newRow("US afternoon") << us << evening << "11/18/2026 4:05:32 PM";
        QTest::newRow("US morning") << us << QDateTime(QDate(2026, 1, 2), QTime(9, 7, 3)) << "1/2/2026 9:07:03 AM";
        QTest::newRow("US midnight") << us << QDateTime(QDate(2026, 1, 2), QTime(0, 0, 0)) << "1/2/2026 12:00:00 AM";
        QTest::newRow("Germany") << QLocale(QLocale::German, QLocale::Germany) << evening << "18.11.2026 16:05:32";
        QTest::newRow("France") << QLocale(QLocale::French, QLocale::France) << evening << "18/11/2026 16:05:32";
    }
    void generalDateText()
    {
        QFETCH(QLocale, locale);
        QFETCH(QDateTime, when);
        QTEST(platform::generalDateText(when, locale), "text");
    }
    void numbersAsTheProgramReadsThem_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");  // or the failure number, negated
        for (const auto &[name, text, value] : std::initializer_list<std::tuple<const char *, const char *, int>>{
                 {"plain", "30", 30}, {"blanks and sign", " -10 ", -10}, {"half to even up", "9.5", 10},
                 {"half to even down", "12.5", 12}, {"half of zero", "0.5", 0}, {"exponent", "1.2e1", 12},
                 {"old exponent letter", "1d2", 100}, {"exponent with a plus", "1E+2", 100}, {"negative exponent", "25e-1", 2},
                 {"largest", "32767", 32767}, {"smallest", "-32768", -32768}, {"too large", "99999", -6},
                 {"too small", "-32769", -6}, {"huge exponent", "1e999", -6}, {"empty", "", -13},
                 {"words", "ten", -13}, {"trailing letters", "10s", -13}, {"lone point", ".", -13}})
            QTest::newRow(name) << QString(text) << value;
    }
    void numbersAsTheProgramReadsThem()
    {
        QFETCH(QString, text);
        int value = 0;
        const int failure = failureOf([&] { value = platform::toInt16(text, QLocale::c()); });
        QTEST(failure ? -failure : value, "value");
    }
    void linesEndAtAnyLineEnd_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<int>("maxLine");  // 0: any length
        QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList{"a", "b"} << 0;
        QTest::newRow("LF") << QByteArray("a\nb\n") << QStringList{"a", "b"} << 0;
        QTest::newRow("no final end") << QByteArray("a\r\nb") << QStringList{"a", "b"} << 0;
        QTest::newRow("empty lines kept") << QByteArray("\r\n\r\na\n\n") << QStringList{"", "", "a", ""} << 0;
        QTest::newRow("LF CR is two ends") << QByteArray("a\n\rb") << QStringList{"a", "", "b"} << 0;
        QTest::newRow("CR LF then LF is two ends") << QByteArray("a\r\n\nb") << QStringList{"a", "", "b"} << 0;
        QTest::newRow("empty file") << QByteArray() << QStringList{} << 0;
        QByteArray boundary(65535, 'x');
        boundary += "\r\ny";  // the CR ends one chunk, the LF begins the next
        QTest::newRow("CR LF across a chunk") << boundary << QStringList{QString(65535, 'x'), "y"} << 0;
        QTest::newRow("a line past the limit is let go") << QByteArray("abcd\r\nabcde\r\nab") << QStringList{"abcd", "ab"} << 4;
        QTest::newRow("the last line past the limit") << QByteArray("ab\nabcde") << QStringList{"ab"} << 4;
        QTest::newRow("past the limit across chunks") << QByteArray(70000, 'x') + "\r\nshort\r\n" << QStringList{"short"} << 65536;
        QTest::newRow("UTF-16, no final end") << QByteArray("\xff\xfe" "a\0\r\0\n\0b\0", 10) << QStringList{"a", "b"} << 0;
        QTest::newRow("UTF-16 past the limit") << QByteArray("\xff\xfe" "a\0b\0c\0d\0e\0\n\0x\0", 16) << QStringList{"x"} << 4;
    }
    void linesEndAtAnyLineEnd()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, maxLine);
        FakePlatform fake;
        QStringList read;
        platform::readLines(fake.writeFile("t.txt", bytes), [&](const QString &line) { return read << line, true; }, maxLine);
        QTEST(read, "lines");
    }
    void wholeFileWriteIsAllOrNothing()
    {
        FakePlatform fake;
        const QString path = fake.writeFile("TandrelLines.txt", "old\r\n");
        platform::setBeforeCommitHook([](const QString &) { platform::raise(platform::err::DiskFull); });
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, platform::writeWhole(path, "new\r\n"));
        platform::setBeforeCommitHook({});
        QCOMPARE(platform::readWhole(path), QStringLiteral("old\r\n"));
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files), QStringList{"TandrelLines.txt"});  // nothing left behind

        // Saves leave no file open behind them.
        const auto before = openFiles();
        for (int i = 0; i < 5; ++i)
            platform::writeWhole(path, QString::fromUtf8("new é\r\n"));
        QCOMPARE(openFiles(), before);
        QCOMPARE(platform::readWhole(path), QString::fromUtf8("new é\r\n"));

        // A file with something mounted on it cannot be renamed over.
        if (geteuid() != 0 || QProcess::execute("mount", {"--bind", path, path}) != 0)
            QSKIP("needs a mount");
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, platform::writeWhole(path, "old\r\n"));
        QProcess::execute("umount", {path});
        QCOMPARE(platform::readWhole(path), QString::fromUtf8("new é\r\n"));
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden), QStringList{"TandrelLines.txt"});
    }
    void onlyPlainFilesAreRead_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("number");
        // A FIFO, a device and a folder: the catalogue of damaged files (tst_badinput).
        QTest::newRow("nothing") << "missing" << 53;
        QTest::newRow("a plain file whose reading fails") << "unreadable" << 75;
    }
    void onlyPlainFilesAreRead()
    {
        QFETCH(QString, kind);
        QFETCH(int, number);
        FakePlatform fake;
        // Reading the process's own memory from address 0 fails (EIO), though the file opens.
        const QString path = kind == "unreadable" ? QStringLiteral("/proc/self/mem") : fake.path("TandrelLines.txt");
        // Each fails at once, and none keeps the file open.
        const auto before = openFiles();
        QCOMPARE(failureOf([&] { platform::readLines(path, [](const QString &) { return true; }); }), number);
        QCOMPARE(failureOf([&] { platform::readBytes(path); }), number);
        QCOMPARE(openFiles(), before);
    }
    void linesArriveAsTheyAreRead()
    {
        // A line is handed over when its end arrives, not kept until the file ends (memory stays bounded).
        QStringList got;
        const auto take = [&](const QString &line) { return got << line, true; };
        platform::LineSplitter splitter, marked;  // after a byte order mark too
        for (const char *piece : {"a", "b\r", "\n", "c\n"})
            splitter.feed(piece, take);
        for (const char *piece : {"\xEF", "\xBB", "\xBF" "d\n"})
            marked.feed(piece, take);
        // A reader that has what it needs stops the splitting at once (a full deck reads no further).
        QVERIFY(!platform::LineSplitter().feed("e\nf\n", [&](const QString &line) { return got << line, false; }));
        QCOMPARE(got, (QStringList{"ab", "c", "d", "e"}));
    }
    void textShownWholeHasItsLimits()
    {
        const auto failure = [](const QString &text) { return failureOf([&] { platform::checkShowable(text); }); };
        const QString line(platform::MaxShownLine, QLatin1Char('x'));
        QCOMPARE(failure("a\n" + line + "\r" + line + QChar(QChar::ParagraphSeparator) + line), 0);
        QCOMPARE(failure("a\n" + line + "x"), platform::err::OutOfMemory);
        QString many = QString(99, QLatin1Char('y')) + QLatin1Char('\n');
        many = many.repeated(platform::MaxShownChars / 100) + QString(platform::MaxShownChars % 100, QLatin1Char('z'));
        QCOMPARE(failure(many), 0);
        QCOMPARE(failure(many + QLatin1Char('z')), platform::err::OutOfMemory);
        // A file is read up to its limit and refused one byte past it, never cut short.
        FakePlatform fake;
        QCOMPARE(platform::readBytes(fake.writeFile("t.txt", "abcd"), 4), QByteArray("abcd"));
        QVERIFY_THROWS_EXCEPTION(platform::RuntimeError, platform::readBytes(fake.writeFile("t.txt", "abcde"), 4));
    }
    void writeWhereNothingCanBeWrittenFails()
    {
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkpath("sub/TandrelLines.txt"));
        // A folder cannot be written as a file, nor a missing folder hold a file or a folder.
        QCOMPARE(failureOf([&] { platform::writeWhole(fake.path("sub/TandrelLines.txt"), "x"); }), 75);
        QCOMPARE(failureOf([&] { platform::writeWhole(fake.path("missing/TandrelLines.txt"), "x"); }), 76);
        QCOMPARE(failureOf([&] { platform::makeFolder(fake.path("missing/BackUps")); }), 76);
        QCOMPARE(failureOf([&] { platform::writeInPlace(QStringLiteral("/dev/full"), "x"); }), 61);  // a full disk
    }
    void saveThroughALinkReplacesWhatItPointsTo_data()
    {
        QTest::addColumn<QString>("link");    // where the link points, relative to the program folder
        QTest::addColumn<bool>("existing");   // the file pointed to is there before the save
        QTest::newRow("into a shared folder") << "shared/Lines.txt" << true;
        QTest::newRow("a link to a link") << "shared/second" << true;
        QTest::newRow("to a file not yet made") << "shared/Lines.txt" << false;
        QTest::newRow("in a circle") << "TandrelLines.txt" << false;
    }
    void saveThroughALinkReplacesWhatItPointsTo()
    {
        QFETCH(QString, link);
        QFETCH(bool, existing);
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkdir("shared"));
        const QString target = fake.path("shared/Lines.txt");
        if (existing)
            fake.writeFile("shared/Lines.txt", "old\r\n");
        QVERIFY(QFile::link("Lines.txt", fake.path("shared/second")));
        QCOMPARE(::symlink(QFile::encodeName(link).constData(), QFile::encodeName(fake.path("TandrelLines.txt")).constData()), 0);
        const bool circle = link == "TandrelLines.txt";
        QCOMPARE(failureOf([&] { platform::writeWhole(fake.path("TandrelLines.txt"), "new\r\n"); }), circle ? 75 : 0);
        QCOMPARE(QFileInfo(fake.path("TandrelLines.txt")).symLinkTarget(), circle ? fake.path("TandrelLines.txt") : QFileInfo(fake.path(link)).absoluteFilePath());
        if (!circle)
            QCOMPARE(fake.fileBytes("shared/Lines.txt"), QByteArray("new\r\n"));
        QCOMPARE(QDir(fake.path("shared")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
                 (circle ? QStringList{"second"} : QStringList{"Lines.txt", "second"}));
    }
    void tidyingRemovesOnlyItsOwnLeftovers()
    {
        FakePlatform fake;
        const QStringList ours{".TandrelLines.txt.saving", ".tandrelphrases.TXT.saving", ".TandrelLines_1_2_2026.txt.saving"};
        const QStringList hosts{".notes.saving", ".Tandrel.cfg.saving.old", "TandrelLines.txt.saving", ".Lines.txt.saving"};
        for (const QString &name : ours + hosts)
            fake.writeFile(name, "x");
        QVERIFY(QFile::link(fake.path(".notes.saving"), fake.path(".Tandrel.cfg.saving")));  // a link is never ours
        platform::tidyUnfinishedSaves(fake.dir, {"TandrelLines.txt", "TandrelPhrases.txt", "Tandrel.cfg", "TandrelLines_*.txt"});
        QStringList left = QDir(fake.dir).entryList(QDir::Files | QDir::Hidden | QDir::System);
        QCOMPARE(left, (QStringList{".Lines.txt.saving", ".notes.saving", ".Tandrel.cfg.saving", ".Tandrel.cfg.saving.old", "TandrelLines.txt.saving"}));
    }
    void oneCopyPerFolder()
    {
        FakePlatform fake;
        // Garbage where an old-style lock file would be, in a runtime folder that takes nothing.
        const QString runtime = fake.path("runtime");
        QVERIFY(QDir(fake.dir).mkdir("runtime"));
        fake.writeFile("runtime/tandrel-0123456789abcdef.lock", "garbage");
        QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
        const auto heldByOther = [](const QString &folder) {  // a second process asks
            return QProcess::execute("flock", {"-n", folder, "true"}) == 1;
        };
        QVERIFY(QDir(fake.dir).mkdir("game"));
        QVERIFY(QFile::link(fake.path("game"), fake.path("link")));
        const QString game = fake.path("game");
        QVERIFY(!heldByOther(game));
        QVERIFY(platform::holdFolder(fake.path("link")));
        const auto before = openFiles();
        QVERIFY(platform::holdFolder(game));  // asking again is no second copy, and keeps no file open
        QCOMPARE(openFiles(), before);
        QVERIFY(heldByOther(game));           // the same folder by its real path
        QVERIFY(!heldByOther(fake.dir));      // another folder is another program

        // A copy that holds the folder, then dies: the next start goes ahead.
        QProcess other;
        other.start("flock", {"-o", fake.dir, "-c", "echo held; exec sleep 20"});
        QVERIFY(other.waitForReadyRead(5000));
        QVERIFY(!platform::holdFolder(fake.dir));
        other.kill();
        other.waitForFinished();
        QVERIFY(platform::holdFolder(fake.dir));
        QVERIFY(platform::holdFolder(fake.path("missing")));  // nothing to hold never stops a start
        QFile::setPermissions(runtime, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    void everyStartDealsItsOwnOrder()
    {
        // Unseeded, every party would get the generator's fixed first numbers, so the same questions in the same order.
        platform::Random &random = *platform::realServices().random;
        random.reseedFromClock();
        std::mt19937 fixed(5489u);
        QStringList drawn, unseeded;
        for (int i = 0; i < 4; ++i) {
            drawn << QString::number(random.next());
            unseeded << QString::number(float(fixed() >> 8) * (1.0f / 16777216.0f));
        }
        QVERIFY(drawn != unseeded);
    }
    void namesMatchInAnyLetterCase()
    {
        FakePlatform fake;
        fake.writeFile("TandrelPhrases.txt", "x");
        QVERIFY(platform::fileExists(fake.path("tandrelPhrases.txt")));
        QCOMPARE(platform::onDisk(fake.path("TANDRELPHRASES.TXT")), fake.path("TandrelPhrases.txt"));
        QVERIFY(!platform::fileExists(fake.path("TandrelLines.txt")));
        // Writing under another spelling replaces the file that is there.
        platform::writeWhole(fake.path("tandrelphrases.txt"), "y");
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files), QStringList{"TandrelPhrases.txt"});
    }

    void recordsOfARun()
    {
        FakePlatform fake;
        fake.writeFile("LogInfo.txt", "old run\r\n");
        Globals::WriteLogInfo("first");  // the first record of a run empties the log
        Globals::WriteLogInfo("second");
        const QByteArray stamp = "11/18/2026 4:05:32 PM  ";
        QCOMPARE(fake.logBytes(), stamp + "first\r\n" + stamp + "second\r\n");
        Globals::ResetLogForTests();  // the next run starts anew
        Globals::WriteLogInfo("next run");
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
        Globals::Guard guard("p");
        switch (variant) {
        case 1: guard = Globals::Guard::function("p"); break;
        case 2: guard.logOnly = true; break;
        case 3: guard.passes = [](int n) { return n == 9; }; break;
        case 4:
            guard.shape = [](Globals::Report &r) {
                r.before = {"before"};
                r.between = {"", "between"};
                r.after = {"after = "};
            };
            break;
        }
        QStringList order;
        guard.afterReport = [&] { order << QStringLiteral("after %1 boxes").arg(fake.boxes.size()); };
        bool bodyEnded = false;
        QVERIFY(!Globals::Guarded(guard, [&] {
            platform::raise(number);
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
        Globals::Guarded("outer", [&] {
            Globals::Guarded("inner", [&] {
                trace << "inner starts";
                throw std::bad_alloc();
            });
            trace << "outer goes on";
        });
        Globals::Guard steps("Form_Load FrmTandrel");
        steps.logOnly = true;
        Globals::GuardedSteps(steps, {[&] { trace << "1"; }, [&] { platform::raise(platform::err::Overflow); }, [&] { trace << "3"; }});
        QCOMPARE(trace, (QStringList{"inner starts", "outer goes on", "1", "3"}));
        QCOMPARE(fake.boxesShown(), QStringList{"inner 7"});
        QCOMPARE(fake.logTexts().filter("Current"), (QStringList{"Current SubRoutine is inner", "Current SubRoutine is Form_Load FrmTandrel"}));
    }

    void logThatCannotBeWritten()
    {
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkdir("LogInfo.txt"));  // a folder where the log should be
        fake.activeWindow.clear();
        Globals::Guarded("clkNext_Click", [] { platform::raise(platform::err::Overflow); });
        QCOMPARE(fake.boxes.size(), 2);  // the log's failure, then the report: no loop
        QCOMPARE(fake.boxes[0].text, QStringLiteral("Current SubRoutine is WriteLogInfo\r\nError Number: 75\r\nLocation: (no program window active)\r\n"));
        QCOMPARE(fake.boxesShown()[1], QStringLiteral("clkNext_Click 6"));

        // A log deleted while the program runs fails each record once and is never made again.
        FakePlatform other;
        Globals::WriteLogInfo("first");
        QVERIFY(QFile::remove(other.path("LogInfo.txt")));
        Globals::WriteLogInfo("second");
        Globals::WriteLogInfo("third");
        QCOMPARE(other.boxesShown(), (QStringList{"WriteLogInfo 53", "WriteLogInfo 53"}));
        QCOMPARE(other.pointerResets, 2);  // each box with the normal pointer, not a busy one
        QVERIFY(!QFile::exists(other.path("LogInfo.txt")));
    }
};

TANDREL_TEST_MAIN(TestPlatform)
#include "tst_platform.moc"
