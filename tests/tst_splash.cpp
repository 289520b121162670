// The windows around the game: the start through the splash window and the
// component check it runs once, the same window as the About box, the rules
// viewer, the update check with its backups, and the web pages.
#include "GameWindow.h"
#include "TestMain.h"
#include "platform/Errors.h"
#include "platform/Globals.h"
#include "shell/Links.h"
#include "shell/frmHowTo.h"
#include "shell/frmSplash.h"
#include "ui_frmHowTo.h"
#include "ui_frmSplash.h"
#include <QDir>
#include <QLabel>
#include <QPointer>
#include <QProcess>
#include <QTextEdit>
#include <QTimer>
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

const QStringList AllPresent = {
    "File SonicClickUltra.ocx Exists...", "File SonicClickUltra.ocx is registered...",
    "File vbskpro2.ocx Exists...",        "File vbskpro2.ocx is registered...",
    "File RICHTX32.OCX Exists...",        "File RICHTX32.OCX is registered...",
    "File wmp.dll Exists...",             "File wmp.dll is registered...",
    "File TabCtl32.ocx is registered...",
};

// All present, but the line "File NAME is registered..." replaced by a
// registration attempt that did not help (its first lines only, when it did).
QStringList failedAttempt(const QString &name, int lines = 6, bool mediaAdvice = false)
{
    QStringList attempt = {
        "File " + name + " is NOT registered...",
        "Attempting to register file " + name + " as admin user...",
        "Registering file " + name + " appeared to not be successful...",
        "Try to Register file " + name + " Manually via a DOS prompt with administrator privileges",
        "DOS command to manually Register this file is: 'regsvr32 " + name + "'",
        "DOS command to manually Unregister this file is: 'regsvr32 /u " + name + "'",
        "Windows Media Player 'wmp.dll' file appears to not be installed...",
        "The easy solution: download and install latest version of Windows Media Player...'",
    };
    QStringList all = AllPresent;
    qsizetype at = all.indexOf("File " + name + " is registered...");
    all.remove(at);
    for (const QString &line : attempt.first(mediaAdvice ? 8 : lines))
        all.insert(at++, line);
    return all;
}

// The components absent, those that do not load, those a registration mends, the log's lines.
struct Components { QStringList absent, broken, fixedByLaunch, lines; };
// The question files there, the answer to the question, the copies made (space-separated), where the host lives.
struct Update { QStringList files; int answer; QString copies; QLocale::Country country = QLocale::UnitedStates; };

// A program folder with question files and a log left by the last run.
struct Start {
    FakePlatform fake;
    QPointer<frmSplash> splash;
    Start()
    {
        fake.writeFile(QStringLiteral("TandrelLines.txt"), questionFile(questionLines(4, false)));
        fake.writeFile(QStringLiteral("LogInfo.txt"), "last run\r\n");
        Globals::ResetLogForTests();
        frmSplash::RegistryFilesChecked = false;
        splash = new frmSplash;
        splash->Form_Load();
        splash->show();
    }
    ~Start() { qDeleteAll(platform::loadedWindows()); }
    frmTandrel *main() const { return qobject_cast<frmTandrel *>(platform::loadedWindow("frmTandrel")); }
};
}  // namespace

class TestSplash : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startLogsThenOpensTheMainWindow()
    {
        Start s;
        const QStringList banner{"Application Name Tandrel Software Version 1.0.0", "Loading frmSplash",
                                 "Checking For Needed Registry Files"};
        QCOMPARE(s.fake.logTexts(), banner + AllPresent + QStringList{"Loading Skinner..."});
        QCOMPARE(s.splash->ui()->lblVersion->text(), QStringLiteral("Tandrel Software Version 1.0.0"));
        QVERIFY(!s.splash->ui()->pb1->pixmap().isNull() && !qApp->windowIcon().isNull());  // its picture and the icon
        QVERIFY(s.splash->ui()->clkClose->isHidden());
        QVERIFY(s.splash->Timer1->isActive());
        QCOMPARE(s.splash->Timer1->interval(), 1000);
        QVERIFY(!s.main());
        QTest::keyClick(s.splash, Qt::Key_Escape);  // no way out of a start that goes well
        QVERIFY(s.splash && s.splash->isVisible());

        QTRY_VERIFY_WITH_TIMEOUT(s.main() && s.main()->isVisible(), 3000);
        QTRY_VERIFY(!s.splash);
        const QStringList log = s.fake.logTexts();
        QVERIFY(log.indexOf("Loading Form frmTandrel") > log.indexOf("Loading Skinner..."));
        QCOMPARE(log.last(), QStringLiteral("Unloading Form frmSplash"));
        QVERIFY(!qApp->styleSheet().isEmpty());

        // About is the same window held open: twice shows the one window,
        // and it never opens a second main window.
        s.main()->ui()->clkAbout->click();
        s.main()->ui()->clkAbout->click();
        QCOMPARE(s.fake.logTexts().mid(log.size()), (QStringList{"Application Name Tandrel Software Version 1.0.0", "Loading frmSplash",
                                                                "Loading Skinner..."}));
        auto *about = qobject_cast<frmSplash *>(platform::loadedWindow("frmSplash"));
        QVERIFY(about && about->isVisible() && !about->Timer1->isActive() && !about->ui()->clkClose->isHidden());
        QTest::qWait(1200);  // past the tick that would have opened a main window
        QCOMPARE(platform::loadedWindows().size(), 2);
        QTest::keyClick(about, Qt::Key_A);  // only Escape leaves
        QVERIFY(about->isVisible());
        QTest::keyClick(about, Qt::Key_Escape);
        QCOMPARE(s.fake.logTexts().last(), QStringLiteral("Unloading Form frmSplash"));
        QVERIFY(s.main()->isVisible());
        // Closing the game window (Yes to the question) frees it.
        QPointer<frmTandrel> main = s.main();
        s.fake.answers = {6};
        main->close();
        QTRY_VERIFY(!main);
    }
    void componentCheckLogsWhatItFinds_data()
    {
        QTest::addColumn<Components>("row");
        QStringList noPlayer = AllPresent;
        noPlayer.replace(6, "File wmp.dll Does Not Exist...");
        noPlayer.removeAt(7);
        const QStringList player{"wmp.dll"}, rich{"RICHTX32.OCX"};
        QTest::newRow("all present") << Components{{}, {}, {}, AllPresent};
        QTest::newRow("media player not installed") << Components{player, {}, {}, noPlayer};
        QTest::newRow("buttons do not load") << Components{{}, {"SonicClickUltra.ocx"}, {}, failedAttempt("SonicClickUltra.ocx")};
        QTest::newRow("no decoders: media advice last") << Components{{}, player, {}, failedAttempt("wmp.dll", 6, true)};
        QTest::newRow("tabs: no existence test, no media advice") << Components{{"TabCtl32.ocx"}, {}, {}, failedAttempt("TabCtl32.ocx")};
        QTest::newRow("loads after the launch") << Components{{}, rich, rich, failedAttempt("RICHTX32.OCX", 2)};
    }
    void componentCheckLogsWhatItFinds()
    {
        QFETCH(Components, row);
        FakePlatform fake;
        fake.absentComponents = row.absent;
        fake.missingComponents = row.broken;
        fake.componentsLoadingAfterLaunch = row.fixedByLaunch;
        frmSplash splash;
        splash.checkRegistryFiles();
        QCOMPARE(fake.logTexts(), row.lines);
        for (const QString &launch : fake.launches)
            QVERIFY(launch.startsWith("runas|" + fake.dir + "/Regsvr32 /s") && launch.endsWith("| /admin"));
        QCOMPARE(fake.boxes.size(), 0);
    }
    void missingComponentKeepsTheSplashWithAWayOut()
    {
        Start s;
        s.fake.playerFailure = platform::err::ComponentMissing;
        s.splash->Timer1_Timer();
        QCOMPARE(s.fake.boxTitles(), QStringList{"Error"});
        QVERIFY2(s.fake.boxes[0].text.startsWith(
                     "The main form appears to be having problems loading...\r\n"
                     "There may be a problem with trying to access the Windows Media Player dll file 'wmp.dll'\r\n"
                     "Please ensure you have the latest version of windows media player installed...\r\n"
                     "Latest version of windows media player can be found at :\r\nhttps://"),
                 qPrintable(s.fake.boxes[0].text));
        QVERIFY(s.fake.boxes[0].text.contains("\r\n\r\nCurrent SubRoutine is Timer1_Timer\r\nError Number: 339\r\n"));
        QVERIFY(!s.main());
        QVERIFY(s.splash && s.splash->isVisible() && !s.splash->Timer1->isActive());
        QVERIFY(!s.splash->ui()->clkClose->isHidden());
        QCOMPARE(s.splash->focusWidget(), s.splash->ui()->clkClose);  // Enter or Space leaves
        for (QLabel *label : s.splash->lbl1)  // the publisher's lines open the site
            QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(s.fake.urlsOpened.size(), 5);
        QCOMPARE(s.fake.urlsOpened.last(), s.splash->lbl1[4]->text());
        s.splash->ui()->clkClose->click();
        QTRY_VERIFY(!s.splash);
    }

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
        QCOMPARE(viewer()->ui()->rtb1->document()->documentMargin(), 12.0);  // clear of the frame, as on a page
        QCOMPARE(g.fake.boxes.size(), 1);
        const QPointer<QTextDocument> document = viewer()->ui()->rtb1->document();
        viewer()->close();
        QTRY_VERIFY(!document);  // the text goes with its viewer
        // One deleted without being closed (as at the program's end) is logged and forgotten all the same.
        auto *gone = new frmHowTo;
        gone->Form_Load();
        delete gone;
        QVERIFY(!viewer());
        QCOMPARE(g.fake.logTexts().mid(1), (QStringList{"Loading Form frmHowTo", "Unloading Form frmHowTo", "Loading Form frmHowTo",
                                                        "Unloading Form frmHowTo"}));
        // The file may go between the button's look and the viewer's load.
        QFile::remove(g.fake.path("HowToPlayTandrel.rtf"));
        frmHowTo late;
        late.Form_Load();
        QCOMPARE(g.fake.boxTitles(), (QStringList{"File not Loaded", "File not Loaded"}));
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
        QTest::addColumn<Update>("row");
        const QStringList both{MatchFile, PhraseFile};
        const QString pm = "_11_18_2026_4_05_32_PM.txt";  // the date's slashes, colons and spaces made underscores
        QTest::newRow("Yes, both files") << Update{both, 6, "TandrelLines" + pm + " TandrelPhrases" + pm};
        QTest::newRow("Yes, phrases only") << Update{{PhraseFile}, 6, "TandrelPhrases" + pm};
        QTest::newRow("Yes, no files") << Update{{}, 6, ""};
        QTest::newRow("No") << Update{both, 7, ""};
        QTest::newRow("Cancel") << Update{both, 2, ""};
        QTest::newRow("Germany: dots stay") << Update{{MatchFile}, 6, "TandrelLines_18.11.2026_16_05_32.txt", QLocale::Germany};
    }
    void updateAsksThenBacksUpAndOpensThePage()
    {
        QFETCH(Update, row);
        const auto &[files, answer, copyNames, country] = row;
        const QStringList copies = copyNames.split(' ', Qt::SkipEmptyParts);
        GameWindow g(0, 0);
        if (country != QLocale::UnitedStates)
            g.fake.loc = QLocale(QLocale::German, country);
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

TANDREL_TEST_MAIN(TestSplash)
#include "tst_splash.moc"
