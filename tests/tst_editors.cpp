// The files a host edits: the configuration file and its dialog (what a file
// does to the main window at start-up, what the dialog shows, applies and
// writes), and the question file editors driven through their buttons.
#include "GameWindow.h"
#include "EditorWindows.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "files/ShowSettings.h"
#include "files/frmConfig.h"
#include "ui_frmShow.h"
#include "ui_frmConfig.h"
#include "ui_frmEditQuestions.h"
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTextEdit>

namespace {
// The main window with no question files, so it starts quietly.
struct Editors : GameWindow {
    Editors() : GameWindow(0, 0) {}
    frmEditQuestions *open(bool matches) { return openEditor(w(), matches); }
    QString box(bool matches) { return open(matches)->ui()->rtb1->toPlainText(); }
    void click(bool matches, QPushButton *Ui::frmEditQuestions::*button, QList<int> answers = {})
    {
        fake.answers = answers;
        fake.boxes.clear();
        (open(matches)->ui()->*button)->click();
    }
};
// An editor's file before (empty: none), the box's text (null: as loaded), Load or else Save, the answer to its
// question, the box after (null: as it was), the file after (empty: none), the boxes' titles.
struct LoadSave { bool matches; QByteArray before; QString inBox; bool load; int answer; QString boxAfter; QByteArray after; QStringList titles; };
// A missing file's editor, the answer to "create one?", what the game reads from the saved sample (-1: no sample).
struct Sample { bool matches; int answer, entries; };
// A configuration file, the settings it gives, the length the dialog then shows, whether the read stops with a report.
struct Reading { QByteArray file; QString settings, length; bool reported = false; };

// The five settings as one line: "display/length continual buzzer sound timer".
QString settings(GameWindow &g)
{
    QStringList shown{g.display() + '/' + QString::number(g.w().countdown().length())};
    for (const bool on : {g.ui()->chkSoundAlwaysOn->isChecked(), g.ui()->chkBuzzer->isChecked(), g.w().optSound[0]->isChecked(),
                          g.w().OptTimer[0]->isChecked()})
        shown << (on ? "Yes" : "No");
    return shown.join(' ');
}

// Opens the dialog through the Config button, makes the five choices and presses the button: the rows as
// shown, "counting" if the countdown ran meanwhile, and whether the button closed it (Exit does, Save does not).
QString configure(GameWindow &g, const QStringList &choose, const char *button)
{
    QStringList seen;
    g.fake.onModal = [&](QDialog &dialog) {
        const Ui::frmConfig *ui = static_cast<frmConfig &>(dialog).ui();
        for (QComboBox *row : {ui->cmbTimerTime, ui->cmbSoundOption, ui->cmbNoBuzzer, ui->cmbSound, ui->cmbTimer}) {
            seen << row->currentText();
            row->setCurrentText(choose[seen.size() - 1]);
        }
        if (g.counting())
            seen << "counting";
        const QSignalSpy finished(&dialog, &QDialog::finished);
        dialog.findChild<QAbstractButton *>(button)->click();
        seen << (finished.isEmpty() ? "open" : "closed");
        return dialog.result();
    };
    g.ui()->clkConfig->click();
    return seen.join(' ');
}
}  // namespace

class TestEditors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void eachWindowOpensOnce()
    {
        Editors e;
        e.fake.writeFile(MatchFile, "Blank Pole\r\nShoe Blank\r\n");
        frmEdit *chooser = openChooser(e.w());
        QVERIFY(chooser && chooser->isVisible());
        QCOMPARE(openChooser(e.w()), chooser);
        frmEditQuestions *matches = e.open(true);
        matches->ui()->rtb1->setPlainText(QStringLiteral("edited, not saved"));
        QCOMPARE(e.open(true), matches);  // brought forward, not reloaded
        QCOMPARE(e.box(true), QStringLiteral("edited, not saved"));

        // Both editors side by side; the chooser may close without them.
        e.fake.answers = {7};  // the phrase file is missing: no sample
        frmEditQuestions *phrases = e.open(false);
        chooser->close();
        QVERIFY(matches->isVisible() && phrases->isVisible() && phrases != matches);
        // Close drops the edits without a question; the next opening reloads.
        e.click(true, &Ui::frmEditQuestions::clkClose);
        QCOMPARE(e.open(true)->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        QVERIFY(e.fake.boxes.isEmpty());
        QCOMPARE(e.fake.logTexts().filter(QStringLiteral("frmEdit")),
                 (QStringList{"Loading Form frmEdit", "Loading Form frmEditMatches", "Loading Form frmEditPhrases", "Unloading Form frmEdit",
                              "Loading Form frmEdit", "Unloading Form frmEditMatches", "Loading Form frmEditMatches"}));
    }

    void loadAndSave_data()
    {
        QTest::addColumn<LoadSave>("row");
        auto row = [](const char *name, const LoadSave &step) { QTest::newRow(name) << step; };
        const QByteArray file = "from the file\r\n", old = "old\r\n";
        const QString ten = QStringLiteral("0123456789"), loaded = QStringLiteral("from the file\n");
        const QStringList replaceBox{"Overwrite Questions In Text Box?"}, saved{"File Saved Successfully"}, replaceFile{"Overwrite File?"};
        row("load: 10 characters, no question", {false, file, ten, true, 0, loaded, file, {}});
        row("load: 11 characters, Yes", {false, file, ten + "!", true, 6, loaded, file, replaceBox});
        row("load: a line end counts twice, No", {true, file, "01234\n6789", true, 7, {}, file, replaceBox});
        row("save: new file, line ends", {false, {}, "A Blank line\nAnother Blank\n", false, 0, {}, "A Blank line\r\nAnother Blank\r\n", saved});
        row("save: ten letters in spaces are not enough", {true, {}, "  ABCDEFGHIJ  ", false, 0, {}, {}, {"Nothing to Save."}});
        row("save: eleven are, spaces kept", {true, {}, "  ABCDEFGHIJK  ", false, 0, {}, "  ABCDEFGHIJK  ", saved});
        row("save: existing, Yes", {true, old, "Blank Pole\nShoe Blank", false, 6, {}, "Blank Pole\r\nShoe Blank", replaceFile + saved});
        row("save: existing, No", {false, old, "A long enough Blank", false, 7, {}, old, replaceFile});
        // Loaded, then saved: the same bytes.
        for (const auto &[name, text] : {std::pair{"line and paragraph separators beside private-use letters", u"\uE000\uE001 Blank\u2028\uE002\u2029\r\n"_qs},
                                         {"tabs, no-break spaces, emoji", u"\tTab Blank\u00A0\U0001F600  \r\n\r\n\r\n# note\r\n"_qs}})
            row(name, {false, text.toUtf8(), {}, false, 6, {}, text.toUtf8(), replaceFile + saved});
    }
    void loadAndSave()
    {
        QFETCH(LoadSave, row);
        const auto &[matches, before, inBox, load, answer, boxAfter, after, titles] = row;
        Editors e;
        const QString file = matches ? MatchFile : PhraseFile;
        if (!before.isEmpty())
            e.fake.writeFile(file, before);
        e.fake.answers = {7};  // no sample for a missing file
        if (!inBox.isNull())
            e.open(matches)->ui()->rtb1->setPlainText(inBox);
        const QString shown = e.box(matches);
        e.click(matches, load ? &Ui::frmEditQuestions::clkLoad : &Ui::frmEditQuestions::clkSave, {answer});
        QCOMPARE(e.fake.boxesShown(), titles);
        QCOMPARE(e.box(matches), boxAfter.isNull() ? shown : boxAfter);
        QCOMPARE(e.fake.fileBytes(file), after);
    }

    void missingFileOffersTheSample_data()
    {
        QTest::addColumn<Sample>("row");
        QTest::newRow("phrases, Yes") << Sample{false, 6, 2};
        QTest::newRow("matches, Yes") << Sample{true, 6, 5};
        QTest::newRow("matches, No") << Sample{true, 7, -1};
    }
    void missingFileOffersTheSample()
    {
        QFETCH(Sample, row);
        Editors e;
        e.fake.answers = {row.answer};
        const QString file = row.matches ? MatchFile : PhraseFile;
        QCOMPARE(e.box(row.matches).isEmpty(), row.entries < 0);
        QCOMPARE(e.fake.boxesShown(), QStringList{row.matches ? "Create a New Match File?" : "Create a New Phrase File?"});
        QVERIFY(!QFile::exists(e.fake.path(file)));  // nothing written before Save
        e.click(row.matches, &Ui::frmEditQuestions::clkSave);
        QCOMPARE(e.fake.boxesShown(), QStringList{row.entries < 0 ? "Nothing to Save." : "File Saved Successfully"});
        if (row.entries >= 0)
            QCOMPARE(decks::ReadEntries(row.matches ? questions::Kind::Match : questions::Kind::Phrase, e.fake.path(file)).size(), row.entries);
    }

    void configFileAtStartAndInTheDialog_data()
    {
        QTest::addColumn<Reading>("row");
        // With question files the start-up values are 30 s, timer and sound off.
        const char *none = "30/30 No No No No";
        QTest::newRow("no file") << Reading{"", none, "30"};
        QTest::newRow("case and spaces anywhere")
            << Reading{"  timertime : 40\r\nTimer Time:50\r\n Sound continual :yes  \r\nbuZZer:YES\r\n", "50/50 Yes Yes No No", "50"};
        QTest::newRow("120 kept, 45 130 -10 skipped") << Reading{"TimerTime: 120\nTimerTime: 45\nTimerTime: 130\nTimerTime: -10\n", "120/120 No No No No", "120"};
        QTest::newRow("zero accepted, shown as 30") << Reading{"TimerTime: 0\r\n", "0/0 No No No No", "30"};
        QTest::newRow("9.5 is 10, shown as written") << Reading{"TimerTime: 9.5\r\n", "9.5/10 No No No No", "10"};
        QTest::newRow("not a number") << Reading{"TimerTime: ten\r\n", none, "30"};
        QTest::newRow("five nines stop the read") << Reading{"Buzzer: Yes\r\nTimerTime: 99999\r\nTimer: ON\r\n", "30/30 No Yes No No", "30", true};
        QTest::newRow("two colons") << Reading{"Timer: ON: really\r\n", none, "30"};
        QTest::newRow("comments, unknown keys") << Reading{"#Timer: ON\r\n# TimerTime: 60\r\nVolume: 10\r\nTimers: ON\r\n", none, "30"};
        QTest::newRow("Sound is not SoundContinual") << Reading{"Sound: ON\r\nSoundContinual: ON\r\n", "30/30 No No Yes No", "30"};
        QTest::newRow("yes and no for the switches too") << Reading{"Sound: yes\r\nTimer: YES\r\nBuzzer: on\r\n", "30/30 No No Yes Yes", "30"};
        QTest::newRow("last line wins, any line end")
            << Reading{"Timer: ON\rTimer: off\nTimer: on\r\nSound: ON\r\nSound: OFF\r\nSoundContinual: Yes\r\nSoundContinual: maybe", "30/30 Yes No No Yes", "30"};
    }
    void configFileAtStartAndInTheDialog()
    {
        QFETCH(Reading, row);
        GameWindow g(6, 6, row.file);
        QCOMPARE(settings(g), row.settings);
        const QStringList music = g.fake.mediaCalls.filter(QRegularExpression("wmp1 (play|stop)"));
        QCOMPARE(music.last(), g.w().optSound[0]->isChecked() ? "wmp1 play" : "wmp1 stop");
        QCOMPARE(g.shown, row.reported ? QStringList{"readInConfigFile 6"} : QStringList{});
        // The dialog shows the main window's settings; its Exit closes it, applies and writes nothing.
        QCOMPARE(configure(g, {"90", "Yes", "Yes", "Yes", "Yes"}, "clkExit"), row.length + ' ' + row.settings.section(' ', 1) + " closed");
        QCOMPARE(settings(g), row.settings);
        QCOMPARE(g.fake.fileBytes("Tandrel.cfg"), row.file);
        QCOMPARE(g.fake.logTexts().filter(QStringLiteral("frmConfig")), (QStringList{"Loading Form frmConfig", "Unloading Form frmConfig"}));
    }

    void saveAppliesWritesAndComesBackNextStart()
    {
        GameWindow g;
        g.play("n T");  // a question on show, so the timer option starts the count
        g.fake.mediaCalls.clear();
        // Config stops the count; Save leaves the dialog open.
        QCOMPARE(configure(g, {"60", "Yes", "Yes", "Yes", "No"}, "clkSave"), QStringLiteral("30 No No No Yes open"));
        QCOMPARE(settings(g), QStringLiteral("60/60 Yes Yes Yes No"));
        QCOMPARE(g.fake.fileBytes("Tandrel.cfg"), "#Tandrel Configuration file\r\n\r\n"
                                                  "TimerTime: 60\r\nSoundContinual: Yes\r\nBuzzer: Yes\r\nSound: Yes\r\nTimer: No\r\n");
        // Sound on through its option, as a host's click would; not started twice.
        QCOMPARE(g.fake.mediaCalls.count(QStringLiteral("wmp1 play")), 1);
        configure(g, {"110", "No", "Yes", "Yes", "Yes"}, "clkSave");
        GameWindow next(6, 6, g.fake.fileBytes("Tandrel.cfg"));
        QCOMPARE(settings(next), QStringLiteral("110/110 No Yes Yes Yes"));
    }

    // The show settings are the user's: kept apart from the program folder, back at the next start, and a sound
    // device chosen stays chosen while unplugged.
    void showSettingsComeBackForTheUser()
    {
        GameWindow g;
        g.fake.outputs = {{"speakers", "Speakers", true}, {"tv", "TV", false}};
        const QStringList folder = QDir(g.fake.dir).entryList(QDir::AllEntries | QDir::Hidden);
        QStringList listed;
        const auto answer = [&](int output, bool arrows, int result) {
            g.fake.onModal = [&, output, arrows, result](QDialog &dialog) {
                QComboBox *list = static_cast<frmShow &>(dialog).ui()->cboOutput;
                for (int i = 0; i < list->count(); ++i)
                    listed << list->itemText(i) + (i == list->currentIndex() ? "*" : "");
                list->setCurrentIndex(output);
                static_cast<frmShow &>(dialog).ui()->chkArrowKeys->setChecked(arrows);
                return result;
            };
            g.w().openShowSettings();
        };
        answer(2, true, QDialog::Accepted);
        QCOMPARE(g.fake.mediaCalls.filter("output"), QStringList({"wmp1 output tv", "wmp2 output tv"}));
        QCOMPARE(QDir(g.fake.dir).entryList(QDir::AllEntries | QDir::Hidden), folder);
        g.fake.outputs.removeLast();
        answer(0, false, QDialog::Rejected);  // cancelled: nothing changes
        QCOMPARE(listed, QStringList({"The default output*", "Speakers", "TV", "The default output", "Speakers", "TV (not plugged in)*"}));
        g.fake.mediaCalls.clear();
        frmTandrel next;
        QCOMPARE(next.showSettings().output, "tv");
        QVERIFY(next.showSettings().arrowKeysPage);
        QCOMPARE(g.fake.mediaCalls.filter("output"), QStringList({"wmp1 output speakers", "wmp2 output speakers"}));
    }
};

TANDREL_TEST_MAIN(TestEditors)
#include "tst_editors.moc"
