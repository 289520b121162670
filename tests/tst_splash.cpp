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
#include <QPointer>
#include <QTextEdit>
#include <QTimer>

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

// All present, but the line "File NAME is registered..." replaced by a registration
// attempt: its first two lines when it mended the component, else all its advice.
QStringList failedAttempt(const QString &name, bool mended = false)
{
    const QStringList attempt = {
        "File " + name + " is NOT registered...",
        "Attempting to register file " + name + " as admin user...",
        "Registering file " + name + " appeared to not be successful...",
        "Try to Register file " + name + " Manually via a DOS prompt with administrator privileges",
        "DOS command to manually Register this file is: 'regsvr32 " + name + "'",
        "DOS command to manually Unregister this file is: 'regsvr32 /u " + name + "'",
        "Windows Media Player 'wmp.dll' file appears to not be installed...",
        "The easy solution: download and install latest version of Windows Media Player...'",
    };
    const qsizetype at = AllPresent.indexOf("File " + name + " is registered...");
    return AllPresent.first(at) + attempt.first(mended ? 2 : name == "wmp.dll" ? 8 : 6) + AllPresent.mid(at + 1);
}

// The components absent, those that do not load, those a registration mends, the log's lines.
struct Components { QStringList absent, broken, fixedByLaunch, lines; };
// The question files there, the answer to the question, the copies made, whether an older copy is there.
struct Update { QStringList files; int answer; QStringList copies; bool older = true; };
// What stands in the way (a path ending in '/' is a folder, else a file), and how the report starts.
struct Obstacle { QString where, report; };

// A start on the test platform, before the splash window's tick.
struct Start {
    FakePlatform fake;
    QPointer<frmSplash> splash;
    Start()
    {
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
        const QStringList banner{"Application Name Tandrel Software Version 1.0.0", "Loading frmSplash"};
        QCOMPARE(s.fake.logTexts(), banner + QStringList{"Checking For Needed Registry Files"} + AllPresent + QStringList{"Loading Skinner..."});
        QCOMPARE(s.splash->ui()->lblVersion->text(), QStringLiteral("Tandrel Software Version 1.0.0"));
        QVERIFY(!s.splash->ui()->pb1->pixmap().isNull() && !qApp->windowIcon().isNull());  // its picture and the icon
        QTest::keyClick(s.splash, Qt::Key_Escape);  // no way out of a start that goes well
        QVERIFY(s.splash && s.splash->isVisible() && !s.main());

        QTRY_VERIFY_WITH_TIMEOUT(s.main() && s.main()->isVisible(), 3000);
        const QStringList log = s.fake.logTexts();
        QCOMPARE(log.last(), QStringLiteral("Unloading Form frmSplash"));
        QVERIFY(!qApp->styleSheet().isEmpty());

        // About is the same window held open: twice shows the one window, and
        // its stopped timer never opens a second main window.
        s.main()->ui()->clkAbout->click();
        s.main()->ui()->clkAbout->click();
        QCOMPARE(s.fake.logTexts().mid(log.size()), banner + QStringList{"Loading Skinner..."});
        auto *about = qobject_cast<frmSplash *>(platform::loadedWindow("frmSplash"));
        QVERIFY(about && about->isVisible() && !about->Timer1->isActive() && !about->ui()->clkClose->isHidden());
        QTest::keyClick(about, Qt::Key_Escape);
        QCOMPARE(s.fake.logTexts().last(), QStringLiteral("Unloading Form frmSplash"));
    }
    void componentCheckLogsWhatItFinds_data()
    {
        QTest::addColumn<Components>("row");
        const QStringList noPlayer = AllPresent.first(6) + QStringList{"File wmp.dll Does Not Exist...", AllPresent.last()};
        const QStringList player{"wmp.dll"}, rich{"RICHTX32.OCX"};
        QTest::newRow("media player not installed") << Components{player, {}, {}, noPlayer};
        QTest::newRow("buttons do not load") << Components{{}, {"SonicClickUltra.ocx"}, {}, failedAttempt("SonicClickUltra.ocx")};
        QTest::newRow("no decoders: media advice last") << Components{{}, player, {}, failedAttempt("wmp.dll")};
        QTest::newRow("tabs: no existence test, no media advice") << Components{{"TabCtl32.ocx"}, {}, {}, failedAttempt("TabCtl32.ocx")};
        QTest::newRow("loads after the launch") << Components{{}, rich, rich, failedAttempt("RICHTX32.OCX", true)};
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
    }
    void missingComponentKeepsTheSplashWithAWayOut()
    {
        Start s;
        s.fake.playerFailure = platform::err::ComponentMissing;
        s.splash->Timer1_Timer();
        QCOMPARE(s.fake.boxesShown(), QStringList{"Timer1_Timer 339"});
        const QString &text = s.fake.boxes[0].text;  // where to get the media player comes first
        QVERIFY2(text.startsWith("The main form appears to be having problems loading...\r\n") && text.contains(links::MediaHelpPage),
                 qPrintable(text));
        QVERIFY(!s.main() && s.splash && s.splash->isVisible() && !s.splash->Timer1->isActive());
        QVERIFY(!s.splash->ui()->clkClose->isHidden());
        QCOMPARE(s.splash->focusWidget(), s.splash->ui()->clkClose);  // Enter or Space leaves
        for (QLabel *label : s.splash->lbl1)  // the publisher's lines open the site
            QTest::mouseClick(label, Qt::LeftButton);
        QCOMPARE(s.fake.urlsOpened, QStringList(5, links::ProjectSite));
        s.splash->ui()->clkClose->click();
        QTRY_VERIFY(!s.splash);
    }

    void rulesAndPagesOpenFromTheirButtons()
    {
        GameWindow g(0, 0);
        g.ui()->clkHowToPlay->click();  // no rules yet
        QCOMPARE(g.fake.boxesShown(), QStringList{"File not Loaded"});
        QVERIFY(!viewer());
        g.fake.writeFile(QStringLiteral("HowToPlayTandrel.rtf"),
                         "{\\rtf1\\ansi{\\fonttbl{\\f0 Serif;}}\\b How to play\\b0\\par Write the missing word.\\par}");
        g.ui()->clkHowToPlay->click();
        g.ui()->clkHowToPlay->click();  // twice shows the one viewer
        QVERIFY(viewer() && viewer()->isVisible());
        QTextEdit *box = viewer()->ui()->rtb1;
        QCOMPARE(box->toPlainText(), QStringLiteral("How to play\nWrite the missing word.\n"));
        // Read-only, though keys still move through the text (a screen reader follows them).
        QVERIFY(box->isReadOnly() && box->textInteractionFlags() & Qt::TextSelectableByKeyboard);
        const QPointer<QTextDocument> document = box->document();
        viewer()->close();
        QTRY_VERIFY(!document);  // the text goes with its viewer
        // One deleted without being closed (as at the program's end) is forgotten all the same.
        auto *gone = new frmHowTo;
        gone->Form_Load();
        delete gone;
        QVERIFY(!viewer());
        // The file may go between the button's look and the viewer's load.
        QFile::remove(g.fake.path("HowToPlayTandrel.rtf"));
        frmHowTo late;
        late.Form_Load();
        QCOMPARE(g.fake.boxesShown(), (QStringList{"File not Loaded", "File not Loaded"}));
        for (const char *button : {"clkContact", "clkDonate", "clkVideo"})
            g.w().findChild<QAbstractButton *>(button)->click();
        QCOMPARE(g.fake.urlsOpened, (QStringList{links::ContactPage, links::DonatePage, links::VideoPage}));
    }

    void updateAsksThenBacksUpAndOpensThePage_data()
    {
        QTest::addColumn<Update>("row");
        const QString pm = "_11_18_2026_4_05_32_PM.txt";  // the date's slashes, colons and spaces made underscores
        QTest::newRow("Yes, both files") << Update{{MatchFile, PhraseFile}, 6, {"TandrelLines" + pm, "TandrelPhrases" + pm}};
        QTest::newRow("Yes, phrases only, no backups yet") << Update{{PhraseFile}, 6, {"TandrelPhrases" + pm}, false};
        QTest::newRow("No") << Update{{MatchFile, PhraseFile}, 7, {}};
    }
    void updateAsksThenBacksUpAndOpensThePage()
    {
        QFETCH(Update, row);
        GameWindow g(0, 0);
        if (row.older) {
            QDir(g.fake.dir).mkdir(QStringLiteral("BackUps"));
            g.fake.writeFile(QStringLiteral("BackUps/TandrelLines_older.txt"), "kept\r\n");
        }
        for (const QString &name : row.files)
            g.fake.writeFile(name, ("Blank from " + name + "\r\n\x01\xff").toLatin1());
        g.fake.answers = {row.answer, row.answer};
        g.ui()->clkUpdate->click();
        g.ui()->clkUpdate->click();  // a second in the same second replaces its copies

        QCOMPARE(g.fake.boxesShown(), (QStringList{"Check For Update?", "Check For Update?"}));
        QVERIFY(g.fake.boxes[0].text.startsWith("The current version of Tandrel software is 1.0.0\r\n"));
        QCOMPARE(g.fake.urlsOpened, row.answer == 6 ? QStringList(2, links::UpdatePage) : QStringList());
        for (const QString &copy : row.copies)
            QCOMPARE(g.fake.fileBytes("BackUps/" + copy), ("Blank from " + copy.section('_', 0, 0) + ".txt\r\n\x01\xff").toLatin1());
        QCOMPARE(backups(g.fake).size(), row.copies.size() + row.older);  // the older copy kept; the write test left nothing
    }

    void folderThatTakesNoFilesStopsTheUpdate_data()
    {
        QTest::addColumn<Obstacle>("row");
        QTest::newRow("a file named BackUps") << Obstacle{"BackUps", "createDirs\r\n\r\nTrying to create DIR/BackUps\r\n"};
        QTest::newRow("a folder named Test.txt") << Obstacle{"BackUps/Test.txt/", "testFileWrite\r\n\r\nTrying to write a file in DIR/BackUps\r\n"};
    }
    void folderThatTakesNoFilesStopsTheUpdate()
    {
        QFETCH(Obstacle, row);
        GameWindow g(0, 0);
        if (row.where.endsWith('/'))
            QVERIFY(QDir(g.fake.dir).mkpath(row.where));
        else
            g.fake.writeFile(row.where, "not a folder");
        g.ui()->clkUpdate->click();  // reported with the folder; nothing asked or opened
        QCOMPARE(g.fake.boxesShown(), QStringList{"Error"});
        const QString &text = g.fake.boxes[0].text;
        QVERIFY2(text.startsWith("Current SubRoutine is " + QString(row.report).replace("DIR", g.fake.dir)), qPrintable(text));
        QCOMPARE(g.fake.urlsOpened, QStringList());
    }
};

TANDREL_TEST_MAIN(TestSplash)
#include "tst_splash.moc"
