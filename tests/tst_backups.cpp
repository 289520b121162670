// The Update button: the backup folder, its write test, the stamped copies
// of both question files, and the page opened last.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "files/Backups.h"
#include "shell/Links.h"
#include "shell/frmTandrel.h"
#include <QDir>
#include <QFile>
#include <memory>
#include <unistd.h>

namespace {
using platform::mb::Cancel;
using platform::mb::No;
using platform::mb::Yes;

struct Update {
    FakePlatform fake;
    std::unique_ptr<frmTandrel> main = std::make_unique<frmTandrel>();

    QStringList backups() const { return QDir(fake.path("BackUps")).entryList(QDir::Files | QDir::Hidden); }
    QByteArray backup(const QString &name) const { return fake.fileBytes("BackUps/" + name); }
};

const QString Question = QStringLiteral(
    "The current version of Tandrel software is 1.0.0\r\n\r\nWould you like to check for a Tandrel software update?");
}  // namespace

class TestBackups : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void updateAsksThenBacksUpAndOpensThePage_data();
    void updateAsksThenBacksUpAndOpensThePage();
    void stampFollowsTheLocale_data();
    void stampFollowsTheLocale();
    void aRunInTheSameSecondReplacesItsCopies();
    void folderThatTakesNoFilesStopsTheUpdate_data();
    void folderThatTakesNoFilesStopsTheUpdate();
};

void TestBackups::updateAsksThenBacksUpAndOpensThePage_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("answer");
    QTest::addColumn<QStringList>("copies");
    const QStringList both{decks::MatchFileName, decks::PhraseFileName};
    const QStringList bothCopies{"TandrelLines_11_18_2026_4_05_32_PM.txt", "TandrelPhrases_11_18_2026_4_05_32_PM.txt"};
    QTest::newRow("Yes, both files") << both << int(Yes) << bothCopies;
    QTest::newRow("Yes, phrases only") << QStringList{decks::PhraseFileName} << int(Yes)
                                       << QStringList{"TandrelPhrases_11_18_2026_4_05_32_PM.txt"};
    QTest::newRow("Yes, no files") << QStringList() << int(Yes) << QStringList();
    QTest::newRow("No") << both << int(No) << QStringList();
    QTest::newRow("Cancel") << both << int(Cancel) << QStringList();
}

void TestBackups::updateAsksThenBacksUpAndOpensThePage()
{
    QFETCH(QStringList, files);
    QFETCH(int, answer);
    QFETCH(QStringList, copies);
    Update u;
    QDir(u.fake.dir).mkdir(QStringLiteral("BackUps"));
    u.fake.writeFile(QStringLiteral("BackUps/TandrelLines_older.txt"), "kept\r\n");
    for (const QString &name : files)
        u.fake.writeFile(name, ("Blank from " + name + "\r\n\x01\xff").toLatin1());
    QStringList urlsAtQuestion;
    QStringList backupsAtQuestion;
    u.fake.onBox = [&](const ShownBox &) {
        urlsAtQuestion = u.fake.urlsOpened;
        backupsAtQuestion = u.backups();
    };
    u.fake.answers = {answer};
    u.main->clkUpdate_Click();

    QCOMPARE(u.fake.boxes.size(), 1);
    QCOMPARE(u.fake.boxes[0].text, Question);
    QCOMPARE(u.fake.boxes[0].style, platform::mb::YesNoCancel);
    QCOMPARE(u.fake.boxes[0].title, QStringLiteral("Check For Update?"));
    QCOMPARE(urlsAtQuestion, QStringList());
    QCOMPARE(backupsAtQuestion, QStringList{"TandrelLines_older.txt"});  // the write test left nothing
    QCOMPARE(u.fake.urlsOpened, answer == Yes ? QStringList{links::UpdatePage} : QStringList());
    QStringList expected = QStringList(copies) << QStringLiteral("TandrelLines_older.txt");
    expected.sort();
    QCOMPARE(u.backups(), expected);
    for (const QString &copy : copies) {
        const QString original = copy.section(QLatin1Char('_'), 0, 0) + QStringLiteral(".txt");
        QCOMPARE(u.backup(copy), ("Blank from " + original + "\r\n\x01\xff").toLatin1());
    }
    QCOMPARE(u.backup(QStringLiteral("TandrelLines_older.txt")), QByteArray("kept\r\n"));
}

void TestBackups::stampFollowsTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("copy");
    QTest::newRow("United States") << QLocale(QLocale::English, QLocale::UnitedStates)
                                   << "TandrelLines_11_18_2026_4_05_32_PM.txt";
    QTest::newRow("Germany: dots stay") << QLocale(QLocale::German, QLocale::Germany)
                                        << "TandrelLines_18.11.2026_16_05_32.txt";
    QTest::newRow("Sweden: dashes stay") << QLocale(QLocale::Swedish, QLocale::Sweden)
                                         << "TandrelLines_2026-11-18_16_05_32.txt";
}

void TestBackups::stampFollowsTheLocale()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, copy);
    Update u;
    u.fake.loc = locale;
    u.fake.writeFile(decks::MatchFileName, "Blank Pole\r\n");
    backups::saveOldFiles();  // creates the folder as well
    QCOMPARE(u.backups(), QStringList{copy});
}

void TestBackups::aRunInTheSameSecondReplacesItsCopies()
{
    Update u;
    u.fake.writeFile(decks::PhraseFileName, "first Blank\r\n");
    backups::saveOldFiles();
    u.fake.writeFile(decks::PhraseFileName, "second Blank\r\n");
    backups::saveOldFiles();
    QCOMPARE(u.backups(), QStringList{"TandrelPhrases_11_18_2026_4_05_32_PM.txt"});
    QCOMPARE(u.backup(u.backups()[0]), QByteArray("second Blank\r\n"));
    QCOMPARE(u.fake.boxes.size(), 0);
}

void TestBackups::folderThatTakesNoFilesStopsTheUpdate_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("report");
    QTest::newRow("a file named BackUps") << "file BackUps"
                                          << "Current SubRoutine is createDirs\r\n\r\n"
                                             "Trying to create DIR/BackUps\r\n"
                                             "Ensure you have read, write permission for directory DIR and any child "
                                             "directorys.\r\n\r\n"
                                             "Running the Tandrel.exe app as adminstrator may also fix the problem.\r\n\r\n"
                                             "To always run this program as administrator, right click on the "
                                             "Tandrel.exe icon in the DIR directory.\r\n"
                                             "Select properties, click compatable tab, click 'Run this program as "
                                             "Adminstator', then click Okay\r\n\r\n"
                                             "Error Number: 75\r\n";
    QTest::newRow("a folder named Test.txt") << "folder BackUps/Test.txt"
                                             << "Current SubRoutine is testFileWrite\r\n\r\n"
                                                "Trying to write a file in DIR/BackUps\r\n"
                                                "Ensure you have read, write permission for directory DIR/BackUps\r\n\r\n";
    QTest::newRow("a read-only Test.txt") << "read-only BackUps/Test.txt"
                                          << "Current SubRoutine is testFileWrite\r\n\r\n";
}

void TestBackups::folderThatTakesNoFilesStopsTheUpdate()
{
    QFETCH(QString, obstacle);
    QFETCH(QString, report);
    Update u;
    u.fake.writeFile(decks::MatchFileName, "Blank Pole\r\n");
    const QString kind = obstacle.section(QLatin1Char(' '), 0, 0);
    const QString where = obstacle.section(QLatin1Char(' '), 1);
    if (kind == QLatin1String("file")) {
        u.fake.writeFile(where, "not a folder");
    } else if (kind == QLatin1String("folder")) {
        QVERIFY(QDir(u.fake.dir).mkpath(where));
    } else {
        if (geteuid() == 0)
            QSKIP("root writes into read-only files");
        QDir(u.fake.dir).mkdir(QStringLiteral("BackUps"));
        u.fake.writeFile(where, "left behind");
        QFile::setPermissions(u.fake.path(where), QFileDevice::ReadOwner);
    }
    u.main->clkUpdate_Click();
    QCOMPARE(u.fake.boxTitles(), QStringList{"Error"});
    QVERIFY2(u.fake.boxes[0].text.startsWith(QString(report).replace(QStringLiteral("DIR"), u.fake.dir)),
             qPrintable(u.fake.boxes[0].text));
    QCOMPARE(u.fake.urlsOpened, QStringList());
}

TANDREL_TEST_MAIN(TestBackups)
#include "tst_backups.moc"
