// A file being saved is killed at random moments: afterwards it is always
// the old content or the new one, whole, and nothing else is left beside it.
#include "TestMain.h"
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
    void killedSaveLeavesAWholeFile();
};

void TestCrashSafety::killedSaveLeavesAWholeFile()
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
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::System),
                 QStringList{"TandrelLines.txt"});
    }
    // The kills did land during saves of both kinds.
    QVERIFY(sawNew > 0 && sawNew < 100);
}

TANDREL_TEST_MAIN(TestCrashSafety)
#include "tst_crashsafety.moc"
