// The configuration file and dialog: what a file does to the main window at
// start-up, and what the dialog shows, applies and writes.
#include "GameWindow.h"
#include "TestMain.h"
#include "files/frmConfig.h"
#include "ui_frmConfig.h"
#include <QCheckBox>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTimer>

namespace {
const QByteArray Written = "#Tandrel Configuration file\r\n\r\n"
                           "TimerTime: 60\r\nSoundContinual: Yes\r\nBuzzer: Yes\r\nSound: Yes\r\nTimer: No\r\n";

// The five settings as one line: "display/length continual buzzer sound timer".
QString settings(GameWindow &g)
{
    auto yn = [](bool b) { return b ? QStringLiteral("Yes") : QStringLiteral("No"); };
    return QStringLiteral("%1/%2 %3 %4 %5 %6")
        .arg(g.display())
        .arg(g.w().countdown().length())
        .arg(yn(g.ui()->chkSoundAlwaysOn->isChecked()), yn(g.ui()->chkBuzzer->isChecked()),
             yn(g.w().optSound[0]->isChecked()), yn(g.w().OptTimer[0]->isChecked()));
}

// Opens the dialog through the Config button; act sees its rows and answers it.
QStringList configure(GameWindow &g, const QStringList &choose, const char *button)
{
    QStringList seen;
    g.fake.onModal = [&](QDialog &dialog) {
        const Ui::frmConfig *ui = static_cast<frmConfig &>(dialog).ui();
        const QList<QComboBox *> rows{ui->cmbTimerTime, ui->cmbSoundOption, ui->cmbNoBuzzer, ui->cmbSound, ui->cmbTimer};
        for (int i = 0; i < rows.size(); ++i) {
            seen << rows[i]->currentText();
            if (i < choose.size())
                rows[i]->setCurrentIndex(rows[i]->findText(choose[i]));
        }
        seen << g.w().Tag << QString::number(g.counting());
        dialog.findChild<QAbstractButton *>(button)->click();
        return dialog.result();
    };
    g.ui()->clkConfig->click();
    return seen;
}
}  // namespace

class TestConfigFile : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void readerAppliesAcceptedLines_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<bool>("reported");
        // With question files the start-up values are 30 s, timer and sound off.
        const QList<std::tuple<const char *, const char *, const char *, bool>> rows = {
            {"no file", "", "30/30 No No No No", false},
            {"as the dialog writes it", Written.constData(), "60/60 Yes Yes Yes No", false},
            {"case and spaces anywhere", "  timertime : 40\r\nTimer Time:50\r\n Sound continual :yes  \r\nbuZZer:YES\r\n", "50/50 Yes Yes No No", false},
            {"45 130 -10 skipped", "TimerTime: 45\nTimerTime: 130\nTimerTime: -10\n", "30/30 No No No No", false},
            {"zero accepted", "TimerTime: 0\r\n", "0/0 No No No No", false},
            {"9.5 is 10, shown as written", "TimerTime: 9.5\r\n", "9.5/10 No No No No", false},
            {"12.5 is 12, skipped", "TimerTime: 12.5\r\n", "30/30 No No No No", false},
            {"leading zero kept", "TimerTime: 020\r\n", "020/20 No No No No", false},
            {"exponent", "TimerTime: 1e2\r\n", "1E2/100 No No No No", false},
            {"not a number", "TimerTime: ten\r\n", "30/30 No No No No", false},
            {"five nines stop the read", "Buzzer: Yes\r\nTimerTime: 99999\r\nTimer: ON\r\n", "30/30 No Yes No No", true},
            {"tab after the colon", "Timer:\tON\r\n", "30/30 No No No No", false},
            {"two colons", "Timer: ON: really\r\n", "30/30 No No No No", false},
            {"no colon", "Timer ON\r\n", "30/30 No No No No", false},
            {"comment", "#Timer: ON\r\n# TimerTime: 60\r\n", "30/30 No No No No", false},
            {"unknown key", "Volume: 10\r\nTimers: ON\r\n", "30/30 No No No No", false},
            {"Sound is not SoundContinual", "Sound: ON\r\nSoundContinual: ON\r\n", "30/30 No No Yes No", false},
            {"Sound on then off", "Sound: ON\r\nSound: OFF\r\n", "30/30 No No No No", false},
            {"yes and no for the switches too", "Sound: yes\r\nTimer: YES\r\nBuzzer: on\r\n", "30/30 No No Yes Yes", false},
            {"last line wins, any line end", "Timer: ON\rTimer: off\nTimer: on\r\nSoundContinual: Yes\r\nSoundContinual: maybe", "30/30 Yes No No Yes", false},
        };
        for (const auto &[name, file, expected, reported] : rows)
            QTest::newRow(name) << QByteArray(file) << QString(expected) << reported;
    }
    void readerAppliesAcceptedLines()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        QFETCH(bool, reported);
        GameWindow g(6, 6, file);
        QCOMPARE(settings(g), expected);
        const QStringList music = g.fake.mediaCalls.filter(QRegularExpression("wmp1 (play|stop)"));
        QCOMPARE(music.last(), g.w().optSound[0]->isChecked() ? "wmp1 play" : "wmp1 stop");
        QCOMPARE(g.fake.logTexts().contains(QStringLiteral("Current SubRoutine is readInConfigFile")), reported);
        QCOMPARE(g.shown, reported ? QStringList{"readInConfigFile 6"} : QStringList{});
    }

    void dialogShowsTheMainWindow_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("shown");  // the rows, the length handed over, counting
        QTest::newRow("start-up values") << QByteArray() << QStringList{"30", "No", "No", "No", "No", "30", "0"};
        QTest::newRow("all on") << QByteArray("TimerTime: 120\nSoundContinual: yes\nBuzzer: yes\nSound: on\nTimer: on\n")
                                << QStringList{"120", "Yes", "Yes", "Yes", "Yes", "120", "0"};
        QTest::newRow("length 0 shows 30") << QByteArray("TimerTime: 0\n") << QStringList{"30", "No", "No", "No", "No", "0", "0"};
        QTest::newRow("the first length") << QByteArray("TimerTime: 10\n") << QStringList{"10", "No", "No", "No", "No", "10", "0"};
    }
    void dialogShowsTheMainWindow()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, shown);
        GameWindow g(6, 6, file);
        g.play("n");
        QCOMPARE(configure(g, {"90", "Yes", "Yes", "Yes", "Yes"}, "clkExit"), shown);
        QCOMPARE(g.w().Tag, QString());
        QCOMPARE(g.fake.logTexts().filter(QStringLiteral("frmConfig")), (QStringList{"Loading Form frmConfig", "Unloading Form frmConfig"}));
        GameWindow fresh(6, 6, file);  // Exit applied nothing
        QCOMPARE(settings(g), settings(fresh));
        QVERIFY(g.fake.fileBytes("Tandrel.cfg") == file);
    }

    void saveAppliesWritesAndComesBackNextStart()
    {
        QByteArray saved;
        {
            GameWindow g;
            g.play("n T");  // a question on show, so the timer option starts the count
            g.fake.mediaCalls.clear();
            const QStringList seen = configure(g, {"60", "Yes", "Yes", "Yes", "No"}, "clkSave");
            QCOMPARE(seen.last(), QStringLiteral("0"));  // Config stops the count
            QCOMPARE(settings(g), QStringLiteral("60/60 Yes Yes Yes No"));
            QCOMPARE(g.fake.fileBytes("Tandrel.cfg"), Written);
            // Sound on through its option, as a host's click would; not started twice.
            QCOMPARE(g.fake.mediaCalls.count(QStringLiteral("wmp1 play")), 1);
            QVERIFY(g.ui()->clkNext->hasFocus() || !g.w().isActiveWindow());
            configure(g, {"110", "No", "Yes", "Yes", "Yes"}, "clkSave");
            saved = g.fake.fileBytes("Tandrel.cfg");
        }
        GameWindow next(6, 6, saved);
        QCOMPARE(settings(next), QStringLiteral("110/110 No Yes Yes Yes"));
    }

    void realDialogClosesWithEscape()
    {
        GameWindow g;
        g.w().show();
        QString seenTitle;
        QTimer poll;
        connect(&poll, &QTimer::timeout, [&] {
            if (QWidget *modal = QApplication::activeModalWidget()) {
                seenTitle = modal->windowTitle();
                QTest::keyClick(modal, Qt::Key_Escape);
            }
        });
        QTimer::singleShot(5000, [] {  // a dialog that stays ends fast
            if (QWidget *modal = QApplication::activeModalWidget())
                modal->close();
        });
        g.fake.onModal = [](QDialog &dialog) { return dialog.exec(); };
        poll.start(20);
        g.w().clkConfig_Click();
        QCOMPARE(seenTitle, QStringLiteral("Tandrel Configure Options"));
        QVERIFY(g.fake.fileBytes("Tandrel.cfg").isEmpty());
    }
};

TANDREL_TEST_MAIN(TestConfigFile)
#include "tst_configfile.moc"
