// Saves that cannot finish: a save killed at random moments leaves the old
// content or the new one, whole, and nothing beside it; a program folder that
// takes no more bytes (a full disk) or no writes at all (read-only) makes an
// editor's save report the failure, keep the text in the box and leave the
// old file whole.
#include "FakePlatform.h"
#include "EditorWindows.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "platform/Globals.h"
#include "platform/TextFiles.h"
#include "ui_frmEditQuestions.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
// The two contents tests/support/CrashWriter.cpp saves in turn.
QByteArray content(int which)
{
    QByteArray text;
    for (int i = 0; i < 120000; ++i)
        text += QStringLiteral("Version %1: line %2 with a Blank in it\r\n").arg(which).arg(i).toUtf8();
    return text;
}

struct Failing { bool readOnly, fileExists; };
}  // namespace

class TestFullDisk : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void failedSaveKeepsTextAndOldFile_data()
    {
        QTest::addColumn<Failing>("row");
        for (bool readOnly : {false, true})
            for (bool exists : {true, false})
                QTest::addRow("%s, %s", readOnly ? "read-only folder" : "full disk", exists ? "file there" : "no file yet") << Failing{readOnly, exists};
    }
    void failedSaveKeepsTextAndOldFile()
    {
        QFETCH(Failing, row);
        FakePlatform fake;
        QTemporaryDir disk;
        fake.dir = disk.path();
        // A small file system of its own where the test may mount one, as root may; otherwise
        // a plain folder, made full by a file size limit on this process and read-only by its permissions.
        const bool mounted = geteuid() == 0 && QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=1m", "tmpfs", fake.dir}) == 0;
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const auto restore = qScopeGuard([&] {
            setrlimit(RLIMIT_FSIZE, &limit);
            mounted ? QProcess::execute("umount", {"-l", fake.dir}) == 0 : QFile::setPermissions(fake.dir, QFileDevice::Permissions(0x7700));
        });
        const QByteArray old = "# Our evening\r\nShoe Blank\r\n";
        if (row.fileExists)
            fake.writeFile(decks::MatchFileName, old);
        frmTandrel main;
        frmEditQuestions *editor = openEditor(main, true);
        QVERIFY(editor);
        QString text;
        for (int i = 0; i < 5000; ++i)
            text += QStringLiteral("Question %1 has a Blank\n").arg(i);
        editor->ui()->rtb1->setPlainText(text);
        if (row.readOnly && mounted) {
            QCOMPARE(QProcess::execute("mount", {"-o", "remount,ro", fake.dir}), 0);
        } else if (row.readOnly) {  // root writes anywhere, unless on a file system mounted read-only
            if (geteuid() == 0)
                QSKIP("root writes into a read-only folder unless the test may mount a file system");
            QFile::setPermissions(fake.path(decks::MatchFileName), QFileDevice::ReadOwner);
            QVERIFY(QFile::setPermissions(fake.dir, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
        } else if (mounted) {
            QFile filler(fake.path("filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            while (filler.write(QByteArray(4096, 'f')) == 4096) {
            }
        } else {
            std::signal(SIGXFSZ, SIG_IGN);  // a write past the limit fails instead of ending the process
            const rlimit small{64 * 1024, limit.rlim_max};  // the log may still grow
            QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        }
        const QStringList before = QDir(fake.dir).entryList(QDir::Files | QDir::Hidden);
        fake.boxes.clear();
        fake.answers = {platform::mb::Yes};  // overwrite the old file
        const qsizetype openFiles = QDir("/proc/self/fd").count();
        editor->ui()->clkSave->click();
        QCOMPARE(QDir("/proc/self/fd").count(), openFiles);  // the failed save keeps no file open

        // The save's question and report, and at most the log writer's own report for that one record.
        const QStringList shown = fake.boxesShown();
        const QStringList expected = QStringList{"Overwrite File?"}.mid(row.fileExists ? 0 : 1) << (row.readOnly ? "clkSave_Click 70" : "clkSave_Click 61");
        QCOMPARE(shown.filter(QRegularExpression("^(?!WriteLogInfo )")), expected);
        QVERIFY(shown.size() <= expected.size() + 1);
        QCOMPARE(editor->ui()->rtb1->toPlainText(), text);
        QCOMPARE(fake.fileBytes(decks::MatchFileName), row.fileExists ? old : QByteArray());
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden), before);
        editor->close();
    }
    // The log writes into its own file in a folder that takes no new files.
    void logWritesIntoItsFileInAFolderThatTakesNoFiles()
    {
        FakePlatform fake;
        fake.writeFile("LogInfo.txt", "last run\r\n");
        QFile::setPermissions(fake.path("LogInfo.txt"), QFileDevice::Permissions(0x6666));
        QFile::setPermissions(fake.dir, QFileDevice::Permissions(0x5555));
        const pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))  // root writes anywhere: as nobody
                _exit(2);
            Globals::WriteLogInfo("first");
            Globals::WriteLogInfo("second");
            _exit(fake.boxes.isEmpty() && fake.logTexts() == QStringList{"first", "second"} ? 0 : 1);
        }
        int status = 1;
        waitpid(child, &status, 0);
        QFile::setPermissions(fake.dir, QFileDevice::Permissions(0x7700));
        QVERIFY(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    void killedSaveLeavesAWholeFile()
    {
        FakePlatform fake;
        const QByteArray versions[2] = {content(0), content(1)};
        const QString path = fake.writeFile("TandrelLines.txt", versions[0]);
        std::mt19937 random(20261123u);
        int sawNew = 0;
        for (int trial = 0; trial < 100; ++trial) {
            QProcess writer;
            writer.start(QStringLiteral(CRASH_WRITER), {path});
            QVERIFY(writer.waitForReadyRead(10000));  // "ready": both contents built
            QTest::qSleep(int(random() % 120));
            ::kill(pid_t(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(10000));
            const QByteArray now = fake.fileBytes("TandrelLines.txt");
            QVERIFY2(now == versions[0] || now == versions[1], qPrintable(QStringLiteral("trial %1: %2 bytes, neither version").arg(trial).arg(now.size())));
            sawNew += now == versions[1];
            // A kill between naming the new file and renaming it leaves it, whole,
            // under its unfinished-save name; the next start removes it.
            const QString unfinished = QFileInfo(platform::unfinishedSaveName(path)).fileName();
            const QByteArray whole = fake.fileBytes(unfinished);
            QVERIFY(!QFile::exists(fake.path(unfinished)) || whole == versions[0] || whole == versions[1]);
            platform::tidyUnfinishedSaves(fake.dir, {"TandrelLines.txt"});
            const QStringList left = QDir(fake.dir).entryList(QDir::Files | QDir::Hidden | QDir::System);
            QVERIFY2(left == QStringList{"TandrelLines.txt"}, qPrintable(left.join(", ")));
        }
        QVERIFY(sawNew > 0 && sawNew < 100);  // the kills did land during saves of both kinds
    }
    void nextStartRemovesUnfinishedSaves()
    {
        FakePlatform fake;  // which names are its own: tst_platform
        QVERIFY(QDir(fake.dir).mkdir("BackUps"));
        fake.writeFile(".TandrelLines.txt.saving", "cut off");
        fake.writeFile("BackUps/.TandrelPhrases_1_2_2026.txt.saving", "cut off");
        frmTandrel().Form_Load();
        QCOMPARE(QDir(fake.dir).entryList(QDir::Files | QDir::Hidden).filter(".saving"), QStringList());
        QCOMPARE(QDir(fake.path("BackUps")).entryList(QDir::Files | QDir::Hidden), QStringList());
    }
};

TANDREL_TEST_MAIN(TestFullDisk)
#include "tst_fulldisk.moc"
