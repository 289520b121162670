// The buttons that lead out of the game: the rules viewer and the web pages.
#include "GameWindow.h"
#include "TestMain.h"
#include "shell/Links.h"
#include "shell/frmHowTo.h"
#include "ui_frmHowTo.h"
#include <QFile>
#include <QTextEdit>

namespace {
const QByteArray Rules = "{\\rtf1\\ansi{\\fonttbl{\\f0 Serif;}}\\b How to play\\b0\\par Write the missing word.\\par}";

frmHowTo *viewer()
{
    return qobject_cast<frmHowTo *>(platform::loadedWindow(QStringLiteral("frmHowTo")));
}
}  // namespace

class TestHelp : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void rulesOpenOneViewer();
    void missingRulesSaySo();
    void rulesGoneBeforeTheViewerLoads();
    void buttonsOpenTheirPages_data();
    void buttonsOpenTheirPages();
};

void TestHelp::rulesOpenOneViewer()
{
    GameWindow g;
    g.fake.writeFile(QStringLiteral("HowToPlayTandrel.rtf"), Rules);
    g.ui()->clkHowToPlay->click();
    g.ui()->clkHowToPlay->click();
    QVERIFY(viewer() && viewer()->isVisible());
    QCOMPARE(viewer()->windowTitle(), QStringLiteral("How to Play Tandrel"));
    QCOMPARE(viewer()->ui()->rtb1->toPlainText(), QStringLiteral("How to play\nWrite the missing word.\n"));
    QVERIFY(viewer()->ui()->rtb1->isReadOnly());
    QCOMPARE(g.fake.logTexts().count(QStringLiteral("Loading Form frmHowTo")), 1);
    QCOMPARE(g.fake.boxes.size(), 0);
    viewer()->close();
    QCOMPARE(g.fake.logTexts().last(), QStringLiteral("Unloading Form frmHowTo"));
}

void TestHelp::missingRulesSaySo()
{
    GameWindow g;
    const QStringList logBefore = g.fake.logTexts();
    g.ui()->clkHowToPlay->click();
    QCOMPARE(g.fake.boxes.size(), 1);
    QCOMPARE(g.fake.boxes[0].text, "Unable to locate file " + g.fake.path("HowToPlayTandrel.rtf"));
    QCOMPARE(g.fake.boxes[0].title, QStringLiteral("File not Loaded"));
    QCOMPARE(g.fake.boxes[0].style, platform::mb::Information);
    QVERIFY(!viewer());
    QCOMPARE(g.fake.logTexts(), logBefore);
}

void TestHelp::rulesGoneBeforeTheViewerLoads()
{
    GameWindow g;
    frmHowTo howTo(&g.w());
    howTo.Form_Load();
    QCOMPARE(g.fake.boxTitles(), QStringList{"File not Loaded"});
    QCOMPARE(howTo.ui()->rtb1->toPlainText(), QString());
    QVERIFY(g.fake.logTexts().contains(QStringLiteral("Loading Form frmHowTo")));
}

void TestHelp::buttonsOpenTheirPages_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("page");
    QTest::newRow("Contact Us") << "clkContact" << links::ContactPage;
    QTest::newRow("Donate") << "clkDonate" << links::DonatePage;
    QTest::newRow("How To Video") << "clkVideo" << links::VideoPage;
}

void TestHelp::buttonsOpenTheirPages()
{
    QFETCH(QString, button);
    QFETCH(QString, page);
    GameWindow g;
    g.w().findChild<QAbstractButton *>(button)->click();
    QCOMPARE(g.fake.urlsOpened, QStringList{page});
    QCOMPARE(g.fake.boxes.size(), 0);
}

TANDREL_TEST_MAIN(TestHelp)
#include "tst_help.moc"
