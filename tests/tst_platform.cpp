// The platform layer: numbers, text files, the one copy per folder, the log
// and the one failure report.
#include "FakePlatform.h"
#include "TestMain.h"
#include "platform/FolderLock.h"
#include "platform/Globals.h"
#include "platform/Numeric.h"
#include "platform/TextFiles.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <unistd.h>

namespace {
qsizetype openFiles()
{
    return QDir(QStringLiteral("/proc/self/fd")).count();
}

struct Number { QString text; int value; };  // the value read, or the failure number negated
struct Lines { QByteArray bytes; QStringList lines; int maxLine = 0; };  // maxLine 0: any length
// Where the program's TandrelLines.txt points; the file the save lands in ("": refused); what the shared folder holds.
struct Link { QString link, saved; QStringList shared; };
// The report as logged ("": none), and whether it is shown in a box.
struct Guarding { Globals::Guard guard = "p"; int number; QString report; bool box = true; };
}  // namespace

class TestPlatform : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void numbersAsTheProgramReadsThem_data()
    {
        QTest::addColumn<Number>("row");
        QTest::newRow("blanks and sign") << Number{" -10 ", -10};
        QTest::newRow("half to even up") << Number{"9.5", 10};
        QTest::newRow("old exponent letter") << Number{"1d2", 100};
        QTest::newRow("exponent with a plus") << Number{"1E+2", 100};
        QTest::newRow("negative exponent, half to even down") << Number{"25e-1", 2};
        QTest::newRow("largest") << Number{"32767", 32767};
        QTest::newRow("smallest") << Number{"-32768", -32768};
        QTest::newRow("too large") << Number{"32768", -6};
        QTest::newRow("too small") << Number{"-32769", -6};
        QTest::newRow("huge exponent") << Number{"1e999", -6};
        QTest::newRow("empty") << Number{"", -13};
        QTest::newRow("trailing letters") << Number{"10s", -13};
        QTest::newRow("lone point") << Number{".", -13};
    }
    void numbersAsTheProgramReadsThem()
    {
        QFETCH(Number, row);
        int value = 0;
        const int failure = failureOf([&] { value = platform::toInt16(row.text, QLocale::c()); });
        QCOMPARE(failure ? -failure : value, row.value);
    }
    void linesEndAtAnyLineEnd_data()
    {
        // Plain line ends, a missing last one, UTF-16 with its mark: the catalogue of damaged files (tst_badinput).
        QTest::addColumn<Lines>("row");
        QTest::newRow("empty lines kept; LF CR and CR LF LF are two ends") << Lines{"\r\n\r\na\n\rb\r\n\nc\n", {"", "", "a", "", "b", "", "c"}};
        QTest::newRow("empty file") << Lines{{}, {}};
        QTest::newRow("a line past the limit is let go") << Lines{"abcd\r\nabcde\r\nab", {"abcd", "ab"}, 4};
        QTest::newRow("the last line past the limit") << Lines{"ab\nabcde", {"ab"}, 4};
        QTest::newRow("past the limit across chunks") << Lines{QByteArray(70000, 'x') + "\r\nshort\r\n", {"short"}, 65536};
        QTest::newRow("UTF-16, no final end") << Lines{QByteArray("\xff\xfe" "a\0\r\0\n\0b\0", 10), {"a", "b"}};
        QTest::newRow("UTF-16 past the limit") << Lines{QByteArray("\xff\xfe" "a\0b\0c\0d\0e\0\n\0x\0", 16), {"x"}, 4};
    }
    void linesEndAtAnyLineEnd()
    {
        QFETCH(Lines, row);
        FakePlatform fake;
        QStringList read;
        platform::readLines(fake.writeFile("t.txt", row.bytes), [&](const QString &line) { return read << line, true; }, row.maxLine);
        QCOMPARE(read, row.lines);
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
    void saveReplacesTheFileAndKeepsNoneOpen()
    {
        // A save killed, or stopped by a full disk, at any moment: tst_fulldisk.
        FakePlatform fake;
        const QString path = fake.writeFile("TandrelLines.txt", "old\r\n");
        const QString saved = QString::fromUtf8("new é\r\n");
        const auto before = openFiles();
        QVERIFY(QFile::setPermissions(path, QFileDevice::Permissions(0x6640)));
        platform::writeWhole(fake.path("tandrellines.TXT"), saved);  // the file there, in any letter case
        QCOMPARE(platform::readWhole(path), saved);
        QCOMPARE(QFileInfo(path).permissions() & 0x7777, QFileDevice::Permissions(0x6640));  // the host's 0640 kept
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden), QStringList{"TandrelLines.txt"});
        // Reading the process's own memory from address 0 fails (EIO), though the file opens.
        QCOMPARE(failureOf([] { platform::readLines("/proc/self/mem", [](const QString &) { return true; }); }), 75);
        QCOMPARE(failureOf([] { platform::readBytes("/proc/self/mem"); }), 75);
        QCOMPARE(openFiles(), before);  // none of these keeps a file open
        // A file with something mounted on it cannot be renamed over: it stays, with nothing beside it.
        if (geteuid() != 0 || QProcess::execute("mount", {"--bind", path, path}) != 0)
            QSKIP("needs a mount");
        QCOMPARE(failureOf([&] { platform::writeWhole(path, "other\r\n"); }), 75);
        QProcess::execute("umount", {path});
        QCOMPARE(platform::readWhole(path), saved);
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden), QStringList{"TandrelLines.txt"});
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
        QTest::addColumn<Link>("row");
        QTest::newRow("a link to a link") << Link{"shared/second", "shared/Lines.txt", {"Lines.txt", "second"}};
        QTest::newRow("to a file not yet made") << Link{"shared/New.txt", "shared/New.txt", {"Lines.txt", "New.txt", "second"}};
        QTest::newRow("in a circle") << Link{"TandrelLines.txt", "", {"Lines.txt", "second"}};
    }
    void saveThroughALinkReplacesWhatItPointsTo()
    {
        QFETCH(Link, row);
        FakePlatform fake;
        QVERIFY(QDir(fake.dir).mkdir("shared"));
        fake.writeFile("shared/Lines.txt", "old\r\n");
        QVERIFY(QFile::link("Lines.txt", fake.path("shared/second")));  // relative to the link's own folder
        QCOMPARE(::symlink(QFile::encodeName(row.link).constData(), QFile::encodeName(fake.path("TandrelLines.txt")).constData()), 0);
        QCOMPARE(failureOf([&] { platform::writeWhole(fake.path("TandrelLines.txt"), "new\r\n"); }), row.saved.isEmpty() ? 75 : 0);
        QVERIFY(QFileInfo(fake.path("TandrelLines.txt")).isSymLink());  // the link stays
        QCOMPARE(fake.fileBytes(row.saved.isEmpty() ? "shared/Lines.txt" : row.saved), row.saved.isEmpty() ? "old\r\n" : "new\r\n");
        QCOMPARE(QDir(fake.path("shared")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot), row.shared);
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
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden | QDir::System),
                 (QStringList{".Lines.txt.saving", ".notes.saving", ".Tandrel.cfg.saving", ".Tandrel.cfg.saving.old", "TandrelLines.txt.saving"}));
    }
    void oneCopyPerFolder()
    {
        FakePlatform fake;
        const auto heldByOther = [](const QString &folder) { return QProcess::execute("flock", {"-n", folder, "true"}) == 1; };  // asked by another process
        const QString game = fake.path("game");
        QVERIFY(QDir(fake.dir).mkdir("game") && QFile::link(game, fake.path("link")));
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
    }
    void everyStartDealsItsOwnOrder()
    {
        // Unseeded, every party would get the generator's fixed first numbers, so the same questions in the same order.
        platform::Random &random = *platform::realServices().random;
        random.reseedFromClock();
        QVERIFY(random.next() != float(std::mt19937(5489u)() >> 8) / 16777216.0f);  // one chance in 2^24 of a false alarm
    }
    void recordsOfARun()
    {
        FakePlatform fake;
        fake.writeFile("LogInfo.txt", "old run\r\n");
        Globals::WriteLogInfo("first");  // the first record of a run empties the log
        fake.loc = QLocale(QLocale::German, QLocale::Germany);  // stamped in the host's language, the year whole
        Globals::WriteLogInfo("second");
        QCOMPARE(fake.logBytes(), "11/18/2026 4:05:32 PM  first\r\n18.11.2026 16:05:32  second\r\n");
    }
    void guardVariants_data()
    {
        QTest::addColumn<Guarding>("row");
        const QString text = "Current SubRoutine is p\r\nError Number: %1\r\nLocation: frmTandrel\r\n";
        Globals::Guard plain("p"), logOnly("p"), pass9("p"), advice("p");
        logOnly.logOnly = true;
        pass9.passes = [](int n) { return n == 9; };
        advice.shape = [](Globals::Report &r) {
            r.before = {"before"};
            r.between = {"", "between"};
            r.after = {"after = "};
        };
        QTest::newRow("plain") << Guarding{plain, 53, text.arg(53)};
        QTest::newRow("function") << Guarding{Globals::Guard::function("p"), 9, QString(text).replace("SubRoutine", "Function").arg(9)};
        QTest::newRow("log only") << Guarding{logOnly, 13, text.arg(13), false};
        QTest::newRow("9 passes silently") << Guarding{pass9, 9, "", false};
        QTest::newRow("other numbers do not pass") << Guarding{pass9, 6, text.arg(6)};
        QTest::newRow("advice lines") << Guarding{advice, 339, "before\r\nCurrent SubRoutine is p\r\n\r\nbetween\r\nError Number: 339\r\n"
                                                               "Location: frmTandrel\r\nafter = \r\n"};
    }
    void guardVariants()
    {
        QFETCH(Guarding, row);
        FakePlatform fake;
        QList<qsizetype> boxesBeforeStep;  // the step after the report follows its box
        row.guard.afterReport = [&] { boxesBeforeStep << fake.boxes.size(); };
        bool bodyEnded = false;
        QVERIFY(!Globals::Guarded(row.guard, [&] {
            platform::raise(row.number);
            bodyEnded = true;
        }));
        QVERIFY(!bodyEnded);
        QCOMPARE(fake.boxes.size(), int(row.box));
        if (row.box) {
            QCOMPARE(fake.boxes[0].text, row.report);
            QCOMPARE(fake.pointerResets, 1);  // the box with the normal pointer, not a busy one
        }
        QCOMPARE(fake.logBytes(), row.report.isEmpty() ? QByteArray() : "11/18/2026 4:05:32 PM  " + row.report.toUtf8() + "\r\n");
        QCOMPARE(boxesBeforeStep, row.report.isEmpty() ? QList<qsizetype>{} : QList<qsizetype>{row.box});
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
        QCOMPARE(fake.boxesShown(), (QStringList{"WriteLogInfo 75", "clkNext_Click 6"}));  // the log's failure, then the report: no loop
        QVERIFY(fake.boxes[0].text.contains("\r\nLocation: (no program window active)\r\n"));
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
