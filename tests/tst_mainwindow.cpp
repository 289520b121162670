// The main window as a view: its controls, start-up lists and closing.
#include "FakePlatform.h"
#include "TestMain.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>

class TestMainWindow : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyControlIsThere_data();
    void everyControlIsThere();
    void startUpFillsTheLists();
    void rowsShowWhoseTurnItIs();
    void exitQuestion_data();
    void exitQuestion();
    void secondCopyClosesWithoutAsking();
};

void TestMainWindow::everyControlIsThere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("caption");
    const QList<std::tuple<const char *, const char *, const char *>> controls = {
        {"clkConfig", "QAbstractButton", "&Config"},   {"clkEdit", "QAbstractButton", "&Edit"},
        {"clkRound", "QAbstractButton", "Round 1"},    {"Label1", "QLabel", "Number Of Players:"},
        {"Label2", "QLabel", "To Win:"},               {"cmbNumPlayers", "QComboBox", "2"},
        {"cmbScoreToWin", "QComboBox", "10"},          {"clkStatusMatch", "QAbstractButton", ""},
        {"clkStart", "QAbstractButton", "&Start"},     {"clkPrev", "QAbstractButton", "&Previous"},
        {"clkNext", "QAbstractButton", "&Next"},       {"clkExit", "QAbstractButton", "&Exit"},
        {"lblName_0", "QLabel", ""},                   {"lblName_1", "QLabel", ""},
        {"lblPhrase", "QLabel", ""},                   {"clkStatusPhrase", "QAbstractButton", ""},
        {"clkStartPhrase", "QAbstractButton", "&Start"}, {"clkPrevPhrase", "QAbstractButton", "&Previous"},
        {"clkNextPhrase", "QAbstractButton", "&Next"}, {"clkExitPhrase", "QAbstractButton", "&Exit"},
        {"txtTimer", "QLineEdit", "0"},  // no question file: the count shows 0
                      {"OptTimer_0", "QAbstractButton", "Timer On"},
        {"OptTimer_1", "QAbstractButton", "Timer Off"}, {"optSound_0", "QAbstractButton", "Sound On"},
        {"optSound_1", "QAbstractButton", "Sound Off"}, {"lblSound", "QLabel", "Adjust Sound Volume"},
        {"hsc1", "QScrollBar", ""},                    {"clkHowToPlay", "QAbstractButton", "&Rules"},
        {"clkUpdate", "QAbstractButton", "&Update"},   {"clkDonate", "QAbstractButton", "&Donate"},
        {"clkAbout", "QAbstractButton", "&About"},     {"clkContact", "QAbstractButton", "&Contact Us"},
        {"clkVideo", "QAbstractButton", "&How To Video"}, {"chkBuzzer", "QAbstractButton", "BuzzerIfSoundOn"},
        {"chkSoundAlwaysOn", "QAbstractButton", "SoundAlwaysOn"}, {"cmdUpdateButton", "QAbstractButton", "Update"},
        {"SSTab1", "QTabWidget", ""},                  {"fraTimer", "QFrame", ""},
    };
    for (const auto &[name, kind, caption] : controls)
        QTest::newRow(name) << QString(name) << QString(kind) << QString(caption);
    for (int i = 0; i < 10; ++i) {
        QTest::addRow("txtPlayer_%d", i) << QStringLiteral("txtPlayer_%1").arg(i) << "QLineEdit" << "Name";
        QTest::addRow("txtCounter_%d", i) << QStringLiteral("txtCounter_%1").arg(i) << "QLineEdit" << "0";
        QTest::addRow("clkUp_%d", i) << QStringLiteral("clkUp_%1").arg(i) << "QAbstractButton" << "";
        QTest::addRow("clkDown_%d", i) << QStringLiteral("clkDown_%1").arg(i) << "QAbstractButton" << "";
    }
}

void TestMainWindow::everyControlIsThere()
{
    QFETCH(QString, name);
    QFETCH(QString, kind);
    QFETCH(QString, caption);
    FakePlatform fake;
    frmTandrel window;
    window.Form_Load();
    QWidget *w = window.findChild<QWidget *>(name);
    QVERIFY2(w, qPrintable(name));
    QVERIFY2(w->inherits(kind.toLatin1()), qPrintable(QString(w->metaObject()->className())));
    QString text;
    if (auto *b = qobject_cast<QAbstractButton *>(w))
        text = b->text();
    else if (auto *l = qobject_cast<QLabel *>(w))
        text = l->text();
    else if (auto *e = qobject_cast<QLineEdit *>(w))
        text = e->text();
    else if (auto *c = qobject_cast<QComboBox *>(w))
        text = c->currentText();
    QCOMPARE(text, caption);
    // A control with no caption of its own still has a name to be read out.
    if (caption.isEmpty() && !w->inherits("QTabWidget") && !w->inherits("QFrame"))
        QVERIFY2(!w->accessibleName().isEmpty(), qPrintable(name));
}

void TestMainWindow::startUpFillsTheLists()
{
    FakePlatform fake;
    frmTandrel window;
    window.Form_Load();
    QCOMPARE(window.objectName(), QStringLiteral("frmTandrel"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Tandrel"));
    QCOMPARE(window.size(), QSize(944, 513));
    auto items = [](QComboBox *c) {
        QStringList out;
        for (int i = 0; i < c->count(); ++i)
            out << c->itemText(i);
        return out;
    };
    QCOMPARE(items(window.ui()->cmbScoreToWin), (QStringList{"5", "10", "15", "20", "25", "30"}));
    QCOMPARE(items(window.ui()->cmbNumPlayers), (QStringList{"2", "3", "4", "5", "6", "7", "8", "9", "10"}));
    QCOMPARE(window.ui()->SSTab1->currentIndex(), 0);
    QCOMPARE(window.ui()->SSTab1->tabText(0), QStringLiteral("Tandrel"));
    QCOMPARE(window.ui()->SSTab1->tabText(1), QStringLiteral("Match Phrase"));
    QCOMPARE(fake.logTexts(), QStringList{"Loading Form frmTandrel"});
    // Centred on the screen.
    QCOMPARE(window.pos(), QPoint((1920 - 944) / 2, (1080 - 513) / 2));
    for (int i = 0; i < 10; ++i)
        QCOMPARE(window.txtPlayer[i]->isVisibleTo(&window), i < 2);
}

void TestMainWindow::rowsShowWhoseTurnItIs()
{
    FakePlatform fake;
    frmTandrel window;
    window.paintRow(3, true);
    window.paintRow(0, false);
    QVERIFY(window.txtPlayer[3]->styleSheet().contains(QColor(255, 224, 192).name()));
    QVERIFY(window.txtCounter[3]->styleSheet().contains(QColor(255, 224, 192).name()));
    QVERIFY(window.txtPlayer[0]->styleSheet().contains(QColor(201, 207, 214).name()));
}

void TestMainWindow::exitQuestion_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closed");
    QTest::newRow("yes") << 6 << true;
    QTest::newRow("no") << 7 << false;
    QTest::newRow("cancel") << 2 << false;
}

void TestMainWindow::exitQuestion()
{
    QFETCH(int, answer);
    QFETCH(bool, closed);
    FakePlatform fake;
    frmTandrel window;
    window.show();
    fake.answers = {answer};
    QCOMPARE(window.close(), closed);
    QCOMPARE(fake.boxes.size(), 1);
    QCOMPARE(fake.boxes[0].text, QStringLiteral("Do you wish to exit Tandrel?"));
    QCOMPARE(fake.boxes[0].title, QStringLiteral("Exit Program?"));
    QCOMPARE(fake.boxes[0].style, 3);
    QCOMPARE(fake.logTexts(), QStringList{"Unloading All Forms..."});
    // Once the answer was Yes, closing again asks nothing.
    if (closed) {
        QVERIFY(window.close());
        QCOMPARE(fake.boxes.size(), 1);
    }
}

void TestMainWindow::secondCopyClosesWithoutAsking()
{
    FakePlatform fake;
    frmTandrel window;
    window.show();
    window.ExitWithoutPrompt = true;
    QVERIFY(window.close());
    QVERIFY(fake.boxes.isEmpty());
    QCOMPARE(fake.logTexts(),
             (QStringList{"Unloading All Forms...", "Unloading Final Form Prior to Program Ending..."}));
}

TANDREL_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
