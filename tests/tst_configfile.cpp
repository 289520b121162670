// The configuration file and dialog: what a file does to the main window at
// start-up, and what the dialog shows, applies and writes.
#include "GameWindow.h"
#include "TestMain.h"
#include "files/frmConfig.h"
#include "ui_frmConfig.h"
#include <QCheckBox>
#include <QFile>
#include <QRadioButton>

namespace {
const QByteArray Written = "#Tandrel Configuration file\r\n\r\n"
                           "TimerTime: 60\r\nSoundContinual: Yes\r\nBuzzer: Yes\r\nSound: Yes\r\nTimer: No\r\n";

// The five settings as one line: "txtTimer/TimerTime continual buzzer sound timer".
QString settings(GameWindow &g)
{
    auto yn = [](bool b) { return b ? QStringLiteral("Yes") : QStringLiteral("No"); };
    return QStringLiteral("%1/%2 %3 %4 %5 %6")
        .arg(g.display())
        .arg(g.w().countdown().length())
        .arg(yn(g.ui()->chkSoundAlwaysOn->isChecked()), yn(g.ui()->chkBuzzer->isChecked()),
             yn(g.w().optSound[0]->isChecked()), yn(g.w().OptTimer[0]->isChecked()));
}

// The music player's last start or stop.
QString lastMusic(const FakePlatform &fake)
{
    for (qsizetype i = fake.mediaCalls.size() - 1; i >= 0; --i)
        if (fake.mediaCalls[i] == QLatin1String("wmp1 play") || fake.mediaCalls[i] == QLatin1String("wmp1 stop"))
            return fake.mediaCalls[i];
    return {};
}

// Opens the dialog through the Config button; act answers it.
void configure(GameWindow &g, const std::function<void(frmConfig &)> &act)
{
    g.fake.onModal = [&](QDialog &dialog) {
        auto *config = qobject_cast<frmConfig *>(&dialog);
        if (!config)
            return 0;
        act(*config);
        return dialog.result();
    };
    g.w().clkConfig_Click();
}

QStringList rows(frmConfig &d)
{
    const Ui::frmConfig *ui = d.ui();
    return {ui->cmbTimerTime->currentText(), ui->cmbSoundOption->currentText(), ui->cmbNoBuzzer->currentText(),
            ui->cmbSound->currentText(), ui->cmbTimer->currentText()};
}

void choose(frmConfig &d, const QStringList &values)
{
    const Ui::frmConfig *ui = d.ui();
    const QList<QComboBox *> lists{ui->cmbTimerTime, ui->cmbSoundOption, ui->cmbNoBuzzer, ui->cmbSound, ui->cmbTimer};
    for (int i = 0; i < lists.size(); ++i)
        lists[i]->setCurrentIndex(lists[i]->findText(values[i]));
}
}  // namespace

class TestConfigFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readerAppliesAcceptedLines_data();
    void readerAppliesAcceptedLines();
    void dialogShowsTheMainWindow_data();
    void dialogShowsTheMainWindow();
    void saveAppliesAndWritesTheFile();
    void exitAppliesNothing();
    void savedSettingsComeBackNextStart();
    void realDialogClosesWithEscape();
};

void TestConfigFile::readerAppliesAcceptedLines_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("reported");

    // With question files the start-up values are 30 s, timer and sound off.
    QTest::newRow("no file") << QByteArray() << "30/30 No No No No" << false;
    QTest::newRow("as the dialog writes it") << Written << "60/60 Yes Yes Yes No" << false;
    QTest::newRow("case and spaces anywhere")
        << QByteArray("  timertime : 40\r\nTimer Time:50\r\n Sound continual :yes  \r\nbuZZer:YES\r\n")
        << "50/50 Yes Yes No No" << false;
    QTest::newRow("45 130 -10 skipped") << QByteArray("TimerTime: 45\nTimerTime: 130\nTimerTime: -10\n")
                                        << "30/30 No No No No" << false;
    QTest::newRow("zero accepted") << QByteArray("TimerTime: 0\r\n") << "0/0 No No No No" << false;
    QTest::newRow("9.5 is 10, shown as written") << QByteArray("TimerTime: 9.5\r\n") << "9.5/10 No No No No" << false;
    QTest::newRow("12.5 is 12, skipped") << QByteArray("TimerTime: 12.5\r\n") << "30/30 No No No No" << false;
    QTest::newRow("leading zero kept") << QByteArray("TimerTime: 020\r\n") << "020/20 No No No No" << false;
    QTest::newRow("exponent") << QByteArray("TimerTime: 1e2\r\n") << "1E2/100 No No No No" << false;
    QTest::newRow("not a number") << QByteArray("TimerTime: ten\r\n") << "30/30 No No No No" << false;
    QTest::newRow("five nines stop the read")
        << QByteArray("Buzzer: Yes\r\nTimerTime: 99999\r\nTimer: ON\r\n") << "30/30 No Yes No No" << true;
    QTest::newRow("tab after the colon") << QByteArray("Timer:\tON\r\n") << "30/30 No No No No" << false;
    QTest::newRow("two colons") << QByteArray("Timer: ON: really\r\n") << "30/30 No No No No" << false;
    QTest::newRow("no colon") << QByteArray("Timer ON\r\n") << "30/30 No No No No" << false;
    QTest::newRow("comment") << QByteArray("#Timer: ON\r\n# TimerTime: 60\r\n") << "30/30 No No No No" << false;
    QTest::newRow("unknown key") << QByteArray("Volume: 10\r\nTimers: ON\r\n") << "30/30 No No No No" << false;
    QTest::newRow("Sound is not SoundContinual")
        << QByteArray("Sound: ON\r\nSoundContinual: ON\r\n") << "30/30 No No Yes No" << false;
    QTest::newRow("Sound on then off") << QByteArray("Sound: ON\r\nSound: OFF\r\n") << "30/30 No No No No" << false;
    QTest::newRow("last line wins, any line end")
        << QByteArray("Timer: ON\rTimer: off\nTimer: on\r\nSoundContinual: Yes\r\nSoundContinual: maybe")
        << "30/30 Yes No No Yes" << false;
}

void TestConfigFile::readerAppliesAcceptedLines()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, expected);
    QFETCH(bool, reported);
    GameWindow g(6, 6, file);
    QCOMPARE(settings(g), expected);
    QCOMPARE(lastMusic(g.fake), g.w().optSound[0]->isChecked() ? "wmp1 play" : "wmp1 stop");
    QCOMPARE(g.fake.boxTitles().contains(QStringLiteral("Error")), reported);
    QCOMPARE(g.fake.logTexts().contains(QStringLiteral("Current SubRoutine is readInConfigFile")), reported);
}

void TestConfigFile::dialogShowsTheMainWindow_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("start-up values") << QByteArray() << QStringList{"30", "No", "No", "No", "No"};
    QTest::newRow("all on") << QByteArray("TimerTime: 120\nSoundContinual: yes\nBuzzer: yes\nSound: on\nTimer: on\n")
                            << QStringList{"120", "Yes", "Yes", "Yes", "Yes"};
    QTest::newRow("length 0 shows 30") << QByteArray("TimerTime: 0\n") << QStringList{"30", "No", "No", "No", "No"};
    QTest::newRow("length 9.5 is 10") << QByteArray("TimerTime: 9.5\n") << QStringList{"10", "No", "No", "No", "No"};
}

void TestConfigFile::dialogShowsTheMainWindow()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, shown);
    GameWindow g(6, 6, file);
    QStringList seen;
    QString tag;
    configure(g, [&](frmConfig &d) {
        seen = rows(d);
        tag = g.w().Tag;
        QCOMPARE(d.ui()->cmbTimerTime->count(), 12);
        QVERIFY(!d.ui()->cmbTimerTime->isEditable());
    });
    QCOMPARE(seen, shown);
    QCOMPARE(tag, QString::number(g.w().countdown().length()));
    QCOMPARE(g.w().Tag, QString());
    QCOMPARE(g.fake.logTexts().filter(QStringLiteral("frmConfig")),
             (QStringList{"Loading Form frmConfig", "Unloading Form frmConfig"}));
}

void TestConfigFile::saveAppliesAndWritesTheFile()
{
    GameWindow g;
    g.ui()->clkNext->click();  // a question on show, so the timer option starts the count
    frmTandrel::selectOption(g.w().OptTimer[0]);
    QVERIFY(g.counting());
    g.fake.mediaCalls.clear();
    bool stillOpen = false;
    configure(g, [&](frmConfig &d) {
        QVERIFY(!g.counting());  // Config stops the count
        choose(d, {"60", "Yes", "Yes", "Yes", "No"});
        d.ui()->clkSave->click();
        d.ui()->clkSave->click();
        stillOpen = !g.fake.logTexts().contains(QStringLiteral("Unloading Form frmConfig"));
        QCOMPARE(settings(g), QStringLiteral("60/60 Yes Yes Yes No"));
    });
    QVERIFY(stillOpen);
    QCOMPARE(g.fake.fileBytes("Tandrel.cfg"), Written);
    // Sound on through its option, as a host's click would; not started twice.
    QCOMPARE(g.fake.mediaCalls.count(QStringLiteral("wmp1 play")), 2);
    QVERIFY(!g.counting());
    QVERIFY(g.ui()->clkNext->hasFocus() || !g.w().isActiveWindow());
}

void TestConfigFile::exitAppliesNothing()
{
    GameWindow g;
    configure(g, [&](frmConfig &d) {
        choose(d, {"90", "Yes", "Yes", "Yes", "Yes"});
        d.ui()->clkExit->click();
    });
    QCOMPARE(settings(g), QStringLiteral("30/30 No No No No"));
    QVERIFY(!QFile::exists(g.fake.path("Tandrel.cfg")));
}

void TestConfigFile::savedSettingsComeBackNextStart()
{
    QByteArray saved;
    {
        GameWindow first;
        configure(first, [&](frmConfig &d) {
            choose(d, {"110", "No", "Yes", "Yes", "Yes"});
            d.ui()->clkSave->click();
        });
        saved = first.fake.fileBytes("Tandrel.cfg");
    }
    GameWindow next(6, 6, saved);
    QCOMPARE(settings(next), QStringLiteral("110/110 No Yes Yes Yes"));
}

void TestConfigFile::realDialogClosesWithEscape()
{
    GameWindow g;
    g.w().show();
    QString seenTitle;
    QTimer poll;
    poll.setInterval(20);
    connect(&poll, &QTimer::timeout, [&] {
        if (QWidget *modal = QApplication::activeModalWidget()) {
            seenTitle = modal->windowTitle();
            QTest::keyClick(modal, Qt::Key_Escape);
        }
    });
    QTimer watchdog;
    watchdog.setSingleShot(true);
    bool timedOut = false;
    connect(&watchdog, &QTimer::timeout, [&] {
        timedOut = true;
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    g.fake.onModal = [](QDialog &dialog) { return dialog.exec(); };
    poll.start();
    watchdog.start(5000);
    g.w().clkConfig_Click();
    poll.stop();
    QVERIFY(!timedOut);
    QCOMPARE(seenTitle, QStringLiteral("Tandrel Configure Options"));
    QVERIFY(!QFile::exists(g.fake.path("Tandrel.cfg")));
    QCOMPARE(g.w().Tag, QString());
}

TANDREL_TEST_MAIN(TestConfigFile)
#include "tst_configfile.moc"
