// The start through the splash window, the component check it runs once,
// and the same window as the About box.
#include "GameWindow.h"
#include "TestMain.h"
#include "platform/Errors.h"
#include "platform/Globals.h"
#include "shell/frmSplash.h"
#include "ui_frmSplash.h"
#include <QLabel>
#include <QPointer>
#include <QTimer>

namespace {
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
        s.main()->clkAbout_Click();
        s.main()->clkAbout_Click();
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
        QTest::addColumn<QStringList>("absent");
        QTest::addColumn<QStringList>("broken");
        QTest::addColumn<QStringList>("fixedByLaunch");
        QTest::addColumn<QStringList>("lines");
        QStringList noPlayer = AllPresent;
        noPlayer.replace(6, "File wmp.dll Does Not Exist...");
        noPlayer.removeAt(7);
        const QStringList none, player{"wmp.dll"}, rich{"RICHTX32.OCX"};
        QTest::newRow("all present") << none << none << none << AllPresent;
        QTest::newRow("media player not installed") << player << none << none << noPlayer;
        QTest::newRow("buttons do not load") << none << QStringList{"SonicClickUltra.ocx"} << none << failedAttempt("SonicClickUltra.ocx");
        QTest::newRow("no decoders: media advice last") << none << player << none << failedAttempt("wmp.dll", 6, true);
        QTest::newRow("tabs: no existence test, no media advice") << QStringList{"TabCtl32.ocx"} << none << none << failedAttempt("TabCtl32.ocx");
        QTest::newRow("loads after the launch") << none << rich << rich << failedAttempt("RICHTX32.OCX", 2);
    }
    void componentCheckLogsWhatItFinds()
    {
        QFETCH(QStringList, absent);
        QFETCH(QStringList, broken);
        QFETCH(QStringList, fixedByLaunch);
        FakePlatform fake;
        fake.absentComponents = absent;
        fake.missingComponents = broken;
        fake.componentsLoadingAfterLaunch = fixedByLaunch;
        frmSplash splash;
        splash.checkRegistryFiles();
        QTEST(fake.logTexts(), "lines");
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
        for (QLabel *label : s.splash->lbl1)  // the publisher's lines open the site
            QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(s.fake.urlsOpened.size(), 5);
        QCOMPARE(s.fake.urlsOpened.last(), s.splash->lbl1[4]->text());
        s.splash->ui()->clkClose->click();
        QTRY_VERIFY(!s.splash);
    }
};

TANDREL_TEST_MAIN(TestSplash)
#include "tst_splash.moc"
