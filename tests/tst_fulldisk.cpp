// Saves that cannot finish: a save killed at random moments leaves the old
// content or the new one, whole, and nothing beside it; a program folder that
// takes no more bytes (a full disk) or no writes at all (read-only) makes an
// editor's save report the failure, keep the text in the box and leave the
// old file whole.
#include "GameWindow.h"
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
#include <QTemporaryDir>
#include <QTextEdit>
#include <csignal>
#include <random>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
bool run(const QString &program, const QStringList &arguments)
{
    QProcess p;
    p.start(program, arguments);
    return p.waitForFinished(10000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
}

// A folder on a small file system of its own (a 1 MB tmpfs) where the test
// may mount one, as root may; otherwise a plain folder, made full by a file
// size limit on this process and read-only by its permissions.
class SmallDisk {
public:
    SmallDisk()
        : m_path(m_base.filePath(QStringLiteral("disk")))
    {
        QDir().mkdir(m_path);
        m_mounted = geteuid() == 0
                    && run(QStringLiteral("mount"), {"-t", "tmpfs", "-o", "size=1m", "tmpfs", m_path});
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_oldLimit);
        if (m_mounted)
            run(QStringLiteral("umount"), {"-l", m_path});
        else
            QFile::setPermissions(m_path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }
    const QString &path() const { return m_path; }

    // Files up to this size may still grow (the log); anything larger fails.
    void fill(qint64 stillFits)
    {
        if (m_mounted) {
            QFile filler(m_path + QStringLiteral("/filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            const QByteArray block(4096, 'f');
            while (filler.write(block) == block.size()) {
            }
            return;
        }
        std::signal(SIGXFSZ, SIG_IGN);  // a write past the limit fails instead of ending the process
        getrlimit(RLIMIT_FSIZE, &m_oldLimit);
        rlimit limit = m_oldLimit;
        limit.rlim_cur = rlim_t(stillFits);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limit), 0);
    }

    // False when it cannot be done here (root ignores permissions).
    bool makeReadOnly()
    {
        if (m_mounted)
            return run(QStringLiteral("mount"), {"-o", "remount,ro", m_path});
        if (geteuid() == 0)
            return false;
        for (const QString &name : QDir(m_path).entryList(QDir::Files))
            QFile::setPermissions(m_path + QLatin1Char('/') + name, QFileDevice::ReadOwner);
        return QFile::setPermissions(m_path, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    }

private:
    QTemporaryDir m_base;
    QString m_path;
    bool m_mounted = false;
    rlimit m_oldLimit{RLIM_INFINITY, RLIM_INFINITY};
};

QByteArray content(int which)
{
    QByteArray text;
    for (int i = 0; i < 120000; ++i)
        text += QStringLiteral("Version %1: line %2 with a Blank in it\r\n").arg(which).arg(i).toUtf8();
    return text;
}
}  // namespace

class TestFullDisk : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void failedSaveKeepsTextAndOldFile_data()
    {
        QTest::addColumn<bool>("readOnly");
        QTest::addColumn<bool>("fileExists");
        QTest::newRow("full disk, file there") << false << true;
        QTest::newRow("full disk, no file yet") << false << false;
        QTest::newRow("read-only folder, file there") << true << true;
        QTest::newRow("read-only folder, no file yet") << true << false;
    }
    void failedSaveKeepsTextAndOldFile()
    {
        QFETCH(bool, readOnly);
        QFETCH(bool, fileExists);
        SmallDisk disk;
        FakePlatform fake;
        fake.dir = disk.path();
        const QString path = fake.path(decks::MatchFileName);
        const QByteArray old = "# Our evening\r\nShoe Blank\r\n";
        if (fileExists)
            fake.writeFile(decks::MatchFileName, old);
        frmTandrel main;
        frmEditQuestions *editor = openEditor(main, true);
        QVERIFY(editor);
        QString text;
        for (int i = 0; i < 5000; ++i)
            text += QStringLiteral("Question %1 has a Blank\n").arg(i);
        editor->ui()->rtb1->setPlainText(text);
        if (readOnly) {
            if (!disk.makeReadOnly())
                QSKIP("root writes into a read-only folder unless the test may mount a file system");
        } else {
            disk.fill(64 * 1024);
        }
        const QStringList before = QDir(disk.path()).entryList(QDir::Files | QDir::Hidden);
        fake.boxes.clear();
        fake.answers = {platform::mb::Yes};  // overwrite the old file
        editor->ui()->clkSave->click();

        // The save's question and report, and at most the log writer's own report for that one record.
        const QStringList shown = fake.boxesShown().filter(QRegularExpression(QStringLiteral("^(?!WriteLogInfo \\d+$)")));
        const QString report = shown.value(shown.size() - 1);
        QCOMPARE(shown, (fileExists ? QStringList{"Overwrite File?", report} : QStringList{report}));
        QVERIFY(fake.boxesShown().size() <= shown.size() + 1);
        QCOMPARE(report, readOnly ? "clkSave_Click 70" : "clkSave_Click 61");
        QCOMPARE(editor->ui()->rtb1->toPlainText(), text);
        QCOMPARE(fake.fileBytes(decks::MatchFileName), fileExists ? old : QByteArray());
        QCOMPARE(QFile::exists(path), fileExists);
        QCOMPARE(QDir(disk.path()).entryList(QDir::Files | QDir::Hidden), before);
        editor->close();
    }
    // The log writes into its own file in a folder that takes no new files.
    void logWritesIntoItsFileInAFolderThatTakesNoFiles()
    {
        QTemporaryDir dir;
        FakePlatform fake;
        fake.dir = dir.path();
        fake.writeFile(QStringLiteral("LogInfo.txt"), "last run\r\n");
        QFile::setPermissions(fake.path("LogInfo.txt"), QFileDevice::Permissions(0x6666));
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x5555));
        const auto write = [&] {
            Globals::WriteLogInfo(QStringLiteral("first"));
            Globals::WriteLogInfo(QStringLiteral("second"));
            return fake.boxes.isEmpty() && fake.logTexts() == QStringList{"first", "second"};
        };
        bool written = false;
        if (geteuid() == 0) {  // root writes anywhere: the log is written as nobody
            const pid_t child = fork();
            if (child == 0)
                _exit(setgid(65534) == 0 && setuid(65534) == 0 && write() ? 0 : 1);
            int status = 0;
            waitpid(child, &status, 0);
            written = WIFEXITED(status) && WEXITSTATUS(status) == 0;
        } else {
            written = write();
        }
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7700));
        QVERIFY(written);
    }

    void killedSaveLeavesAWholeFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("TandrelLines.txt"));
        const QByteArray versions[2] = {content(0), content(1)};
        {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(versions[0]);
        }
        std::mt19937 random(20261123u);
        int sawNew = 0;
        for (int trial = 0; trial < 100; ++trial) {
            QProcess writer;
            writer.start(QStringLiteral(CRASH_WRITER), {path});
            QVERIFY(writer.waitForReadyRead(10000));  // "ready": both contents built
            QTest::qSleep(int(random() % 120));
            ::kill(pid_t(writer.processId()), SIGKILL);
            QVERIFY(writer.waitForFinished(10000));

            QFile f(path);
            QVERIFY(f.open(QIODevice::ReadOnly));
            const QByteArray now = f.readAll();
            QVERIFY2(now == versions[0] || now == versions[1],
                     qPrintable(QStringLiteral("trial %1: %2 bytes, neither version").arg(trial).arg(now.size())));
            sawNew += now == versions[1];
            // A kill between naming the new file and renaming it leaves it, whole,
            // under its unfinished-save name; the next start removes it.
            const QString unfinished = platform::unfinishedSaveName(path);
            if (QFile::exists(unfinished)) {
                QFile u(unfinished);
                QVERIFY(u.open(QIODevice::ReadOnly));
                const QByteArray whole = u.readAll();
                QVERIFY(whole == versions[0] || whole == versions[1]);
                platform::tidyUnfinishedSaves(dir.path(), {QStringLiteral("TandrelLines.txt")});
            }
            const QStringList left = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
            QVERIFY2(left == QStringList{"TandrelLines.txt"}, qPrintable(left.join(QLatin1String(", "))));
        }
        // The kills did land during saves of both kinds.
        QVERIFY(sawNew > 0 && sawNew < 100);
    }
    void nextStartRemovesUnfinishedSaves()
    {
        GameWindow before(0, 0);
        before.fake.writeFile(QStringLiteral(".TandrelLines.txt.saving"), "cut off");
        QDir(before.fake.dir).mkdir(QStringLiteral("BackUps"));
        before.fake.writeFile(QStringLiteral("BackUps/.TandrelPhrases_1_2_2026.txt.saving"), "cut off");
        frmTandrel next;  // which names are its own: tst_platform
        next.Form_Load();
        QCOMPARE(QDir(before.fake.dir).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral(".saving")), QStringList());
        QCOMPARE(QDir(before.fake.path(QStringLiteral("BackUps"))).entryList(QDir::Files | QDir::Hidden), QStringList());
    }
};

TANDREL_TEST_MAIN(TestFullDisk)
#include "tst_fulldisk.moc"
