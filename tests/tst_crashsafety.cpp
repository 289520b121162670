// A file being saved is killed at random moments: afterwards it is always
// the old content or the new one, whole, and nothing else is left beside it.
#include "GameWindow.h"
#include "TestMain.h"
#include "platform/TextFiles.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <random>
#include <signal.h>

namespace {
QByteArray content(int which)
{
    QByteArray text;
    for (int i = 0; i < 120000; ++i)
        text += QStringLiteral("Version %1: line %2 with a Blank in it\r\n").arg(which).arg(i).toUtf8();
    return text;
}
}  // namespace

class TestCrashSafety : public QObject {
    Q_OBJECT
private Q_SLOTS:
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
        before.fake.writeFile(QStringLiteral("BackUps/.Tandrel.cfg.saving"), "the host's");
        before.fake.writeFile(QStringLiteral("BackUps/TandrelLines_old.txt"), "kept");
        frmTandrel next;
        next.Form_Load();
        QCOMPARE(QDir(before.fake.dir).entryList(QDir::Files | QDir::Hidden).filter(QStringLiteral(".saving")),
                 QStringList());
        QCOMPARE(QDir(before.fake.path(QStringLiteral("BackUps"))).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{".Tandrel.cfg.saving", "TandrelLines_old.txt"}));
    }
};


TANDREL_TEST_MAIN(TestCrashSafety)
#include "tst_crashsafety.moc"
