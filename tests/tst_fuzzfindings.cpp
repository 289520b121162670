// Every input the fuzzers were seeded with or ever found a fault with, run
// through the same checks, so a fixed fault stays fixed.
#include "TestMain.h"
#include "Checks.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>

class FuzzFindings : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void inputPassesItsCheck_data();
    void inputPassesItsCheck();
};

void FuzzFindings::inputPassesItsCheck_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("path");
    const QDir fuzz(QStringLiteral(TANDREL_SOURCE_DIR "/fuzz"));
    for (const char *folder : {"seeds", "regressions"})
        for (const char *target : {"questions", "config", "rules"}) {
            QDirIterator it(fuzz.filePath(QStringLiteral("%1/%2").arg(QLatin1String(folder), QLatin1String(target))),
                            QDir::Files);
            while (it.hasNext()) {
                const QString path = it.next();
                QTest::addRow("%s/%s/%s", folder, target, qPrintable(QFileInfo(path).fileName()))
                    << QString::fromLatin1(target) << path;
            }
        }
}

void FuzzFindings::inputPassesItsCheck()
{
    QFETCH(QString, target);
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const QString failure = target == QLatin1String("questions") ? fuzzcheck::questionFile(bytes)
                            : target == QLatin1String("config")  ? fuzzcheck::configFile(bytes)
                                                                 : fuzzcheck::rulesDocument(bytes);
    QVERIFY2(failure.isEmpty(), qPrintable(failure));
}

TANDREL_TEST_MAIN(FuzzFindings)
#include "tst_fuzzfindings.moc"
