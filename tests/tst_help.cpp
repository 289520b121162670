// The buttons that lead out of the game: the rules viewer, the update check
// with its backups, and the web pages.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/Links.h"
#include "shell/frmHowTo.h"
#include "ui_frmHowTo.h"
#include <QDir>
#include <QProcess>
#include <QTextEdit>
#include <unistd.h>

namespace {
frmHowTo *viewer()
{
    return qobject_cast<frmHowTo *>(platform::loadedWindow(QStringLiteral("frmHowTo")));
}
QStringList backups(const FakePlatform &fake)
{
    return QDir(fake.path("BackUps")).entryList(QDir::Files | QDir::Hidden);
}
}  // namespace

class TestHelp : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rulesOpenOneViewer()
    {
        GameWindow g(0, 0);
        g.ui()->clkHowToPlay->click();  // no rules yet
        QCOMPARE(g.fake.boxTitles(), QStringList{"File not Loaded"});
        QCOMPARE(g.fake.boxes[0].text, "Unable to locate file " + g.fake.path("HowToPlayTandrel.rtf"));
        QVERIFY(!viewer());
        g.fake.writeFile(QStringLiteral("HowToPlayTandrel.rtf"),
                         "{\\rtf1\\ansi{\\fonttbl{\\f0 Serif;}}\\b How to play\\b0\\par Write the missing word.\\par}");
        g.ui()->clkHowToPlay->click();
        g.ui()->clkHowToPlay->click();
        QVERIFY(viewer() && viewer()->isVisible());
        QCOMPARE(viewer()->ui()->rtb1->toPlainText(), QStringLiteral("How to play\nWrite the missing word.\n"));
        // Read-only without a blinking caret, though keys still move through the text (a screen reader follows them).
        QVERIFY(viewer()->ui()->rtb1->isReadOnly() && viewer()->ui()->rtb1->cursorWidth() == 0);
        QVERIFY(viewer()->ui()->rtb1->textInteractionFlags() & Qt::TextSelectableByKeyboard);
        QCOMPARE(g.fake.boxes.size(), 1);
        viewer()->close();
        QCOMPARE(g.fake.logTexts().mid(1), (QStringList{"Loading Form frmHowTo", "Unloading Form frmHowTo"}));
    }

    void buttonsOpenTheirPages()
    {
        GameWindow g(0, 0);
        for (const char *button : {"clkContact", "clkDonate", "clkVideo"})
            g.w().findChild<QAbstractButton *>(button)->click();
        QCOMPARE(g.fake.urlsOpened, (QStringList{links::ContactPage, links::DonatePage, links::VideoPage}));
        QCOMPARE(g.fake.boxes.size(), 0);
    }

    void updateAsksThenBacksUpAndOpensThePage_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QStringList>("copies");
        const QStringList both{MatchFile, PhraseFile};
        const QLocale us(QLocale::English, QLocale::UnitedStates);
        QTest::newRow("Yes, both files") << both << 6 << us
                                         << QStringList{"TandrelLines_11_18_2026_4_05_32_PM.txt", "TandrelPhrases_11_18_2026_4_05_32_PM.txt"};
        QTest::newRow("Yes, phrases only") << QStringList{PhraseFile} << 6 << us << QStringList{"TandrelPhrases_11_18_2026_4_05_32_PM.txt"};
        QTest::newRow("Yes, no files") << QStringList() << 6 << us << QStringList();
        QTest::newRow("No") << both << 7 << us << QStringList();
        QTest::newRow("Cancel") << both << 2 << us << QStringList();
        QTest::newRow("Germany: dots stay") << QStringList{MatchFile} << 6 << QLocale(QLocale::German, QLocale::Germany)
                                            << QStringList{"TandrelLines_18.11.2026_16_05_32.txt"};
        QTest::newRow("Sweden: dashes stay") << QStringList{MatchFile} << 6 << QLocale(QLocale::Swedish, QLocale::Sweden)
                                             << QStringList{"TandrelLines_2026-11-18_16_05_32.txt"};
    }
    void updateAsksThenBacksUpAndOpensThePage()
    {
        QFETCH(QStringList, files);
        QFETCH(int, answer);
        QFETCH(QLocale, locale);
        QFETCH(QStringList, copies);
        GameWindow g(0, 0);
        g.fake.loc = locale;
        QDir(g.fake.dir).mkdir(QStringLiteral("BackUps"));
        g.fake.writeFile(QStringLiteral("BackUps/TandrelLines_older.txt"), "kept\r\n");
        for (const QString &name : files)
            g.fake.writeFile(name, ("Blank from " + name + "\r\n\x01\xff").toLatin1());
        QStringList atQuestion;
        g.fake.onBox = [&](const ShownBox &) {
            if (atQuestion.isEmpty())
                atQuestion = g.fake.urlsOpened + backups(g.fake);
        };
        g.fake.answers = {answer, answer};
        g.ui()->clkUpdate->click();
        g.ui()->clkUpdate->click();  // a second in the same second replaces its copies

        QCOMPARE(g.fake.boxTitles(), (QStringList{"Check For Update?", "Check For Update?"}));
        QCOMPARE(g.fake.boxes[0].text, QStringLiteral("The current version of Tandrel software is 1.0.0\r\n\r\n"
                                                      "Would you like to check for a Tandrel software update?"));
        // Asked before anything is copied or opened; the write test left nothing.
        QCOMPARE(atQuestion, QStringList{"TandrelLines_older.txt"});
        QCOMPARE(g.fake.urlsOpened.size(), answer == 6 ? 2 : 0);
        QVERIFY(g.fake.urlsOpened.isEmpty() || g.fake.urlsOpened.last() == links::UpdatePage);
        for (const QString &copy : backups(g.fake))  // the older copy kept
            QCOMPARE(g.fake.fileBytes("BackUps/" + copy), copies.contains(copy) ? ("Blank from " + copy.section('_', 0, 0) + ".txt\r\n\x01\xff").toLatin1()
                                                                               : QByteArray("kept\r\n"));
        QCOMPARE(backups(g.fake).size(), copies.size() + 1);
    }

    void folderThatTakesNoFilesStopsTheUpdate_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<QString>("report");
        const QString advice = "Running the Tandrel.exe app as adminstrator may also fix the problem.\r\n\r\n"
                               "To always run this program as administrator, right click on the Tandrel.exe icon in the DIR directory.\r\n"
                               "Select properties, click compatable tab, click 'Run this program as Adminstator', then click Okay\r\n\r\n";
        QTest::newRow("a file named BackUps") << "file BackUps"
                                              << "Current SubRoutine is createDirs\r\n\r\nTrying to create DIR/BackUps\r\n"
                                                 "Ensure you have read, write permission for directory DIR and any child directorys.\r\n\r\n"
                                                     + advice + "Error Number: 75\r\n";
        QTest::newRow("a folder named Test.txt") << "folder BackUps/Test.txt"
                                                 << "Current SubRoutine is testFileWrite\r\n\r\nTrying to write a file in DIR/BackUps\r\n"
                                                    "Ensure you have read, write permission for directory DIR/BackUps\r\n\r\n"
                                                        + advice;
        QTest::newRow("a Test.txt that stays") << "fixed BackUps/Test.txt" << "Current SubRoutine is testFileWrite\r\n\r\n";
    }
    void folderThatTakesNoFilesStopsTheUpdate()
    {
        QFETCH(QString, obstacle);
        QFETCH(QString, report);
        GameWindow g(0, 0);
        const QString kind = obstacle.section(' ', 0, 0), where = obstacle.section(' ', 1);
        if (kind == QLatin1String("file")) {
            g.fake.writeFile(where, "not a folder");
        } else if (kind == QLatin1String("folder")) {
            QVERIFY(QDir(g.fake.dir).mkpath(where));
        } else {
            // Written, then it cannot be removed: a file mounted there (as root), or a folder that takes no changes.
            QDir(g.fake.dir).mkdir(QStringLiteral("BackUps"));
            g.fake.writeFile(where, "left behind");
            if (geteuid() == 0 ? QProcess::execute("mount", {"--bind", g.fake.path(where), g.fake.path(where)}) != 0
                               : !QFile::setPermissions(g.fake.path("BackUps"), QFileDevice::ReadOwner | QFileDevice::ExeOwner))
                QSKIP("cannot keep the file from being removed here");
        }
        g.ui()->clkUpdate->click();
        QCOMPARE(g.fake.boxTitles(), QStringList{"Error"});
        QVERIFY2(g.fake.boxes[0].text.startsWith(QString(report).replace(QStringLiteral("DIR"), g.fake.dir)),
                 qPrintable(g.fake.boxes[0].text));
        QCOMPARE(g.fake.urlsOpened, QStringList());
        if (kind == QLatin1String("fixed")) {
            QVERIFY(g.fake.boxes[0].text.contains("\r\nError Number: 75\r\n"));
            QProcess::execute("umount", {g.fake.path(where)});
            QFile::setPermissions(g.fake.path("BackUps"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        }
    }
};

TANDREL_TEST_MAIN(TestHelp)
#include "tst_help.moc"
