// The files a host edits: the configuration file and its dialog (what a file
// does to the main window at start-up, what the dialog shows, applies and
// writes), and the question file editors driven through their buttons.
#include "GameWindow.h"
#include "EditorWindows.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "files/frmConfig.h"
#include "ui_frmConfig.h"
#include "ui_frmEditQuestions.h"
#include <QCheckBox>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
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
struct LoadSave {
    bool matches;
    QByteArray before;
    QString inBox;
    bool load;
    int answer;
    QString boxAfter;
    QByteArray after;
    QStringList titles;
};
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

// Opens the dialog through the Config button, makes the choices and presses
// the button: what it showed, then whether the button closed it.
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
        bool closed = false;  // Exit closes the dialog, Save leaves it open
        const auto done = QObject::connect(&dialog, &QDialog::finished, [&] { closed = true; });
        dialog.findChild<QAbstractButton *>(button)->click();
        QObject::disconnect(done);
        seen << (closed ? "closed" : "open");
        return dialog.result();
    };
    g.ui()->clkConfig->click();
    return seen;
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
        QCOMPARE(matches->windowTitle(), QStringLiteral("Edit Tandrel Matches Input File"));
        QCOMPARE(matches->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        auto *pasted = new QMimeData;  // a question file holds no formatting: pasted text arrives plain
        pasted->setHtml(QStringLiteral("<b>Bold Blank</b>"));
        QGuiApplication::clipboard()->setMimeData(pasted);
        matches->ui()->rtb1->paste();
        QVERIFY(!matches->ui()->rtb1->toHtml().contains(QStringLiteral("font-weight:700")));
        matches->ui()->rtb1->setPlainText(QStringLiteral("edited, not saved"));
        QCOMPARE(e.open(true), matches);  // brought forward, not reloaded
        QCOMPARE(e.box(true), QStringLiteral("edited, not saved"));

        // Both editors side by side; the chooser may close without them.
        e.fake.answers = {7};  // the phrase file is missing: no sample
        frmEditQuestions *phrases = e.open(false);
        QCOMPARE(phrases->windowTitle(), QStringLiteral("Edit Tandrel Phases Input File"));
        chooser->close();
        QVERIFY(matches->isVisible() && phrases->isVisible() && phrases != matches);
        // Close drops the edits without a question; the next opening reloads.
        e.click(true, &Ui::frmEditQuestions::clkClose);
        QCOMPARE(e.open(true)->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        QVERIFY(e.fake.boxes.isEmpty());
        QCOMPARE(e.fake.logTexts().filter(QStringLiteral("frmEdit")),
                 (QStringList{"Loading Form frmEdit", "Loading Form frmEditMatches", "Loading Form frmEditPhrases", "Unloading Form frmEdit",
                              "Loading Form frmEdit", "Unloading Form frmEditMatches", "Loading Form frmEditMatches"}));
        QCOMPARE(QDir(e.fake.dir).entryList(QDir::Files), (QStringList{"LogInfo.txt", MatchFile}));
    }

    void loadAndSave_data()
    {
        QTest::addColumn<LoadSave>("row");
        auto row = [](const char *name, const LoadSave &step) { QTest::newRow(name) << step; };
        const QByteArray file = "from the file\r\n", old = "old\r\n";
        const QString ten = QStringLiteral("0123456789"), loaded = QStringLiteral("from the file\n");
        const QStringList replaceBox{"Overwrite Questions In Text Box?"}, saved{"File Saved Successfully"},
            replaceFile{"Overwrite File?"}, nothing{"Nothing to Save."};
        row("load: 10 characters, no question", {false, file, ten, true, 0, loaded, file, {}});
        row("load: 11 characters, Yes", {false, file, ten + "!", true, 6, loaded, file, replaceBox});
        row("load: 11 characters, No", {false, file, ten + "!", true, 7, {}, file, replaceBox});
        row("load: 11 characters, Cancel", {true, file, ten + "!", true, 2, {}, file, replaceBox});
        row("load: a line end counts twice", {true, file, "01234\n6789", true, 7, {}, file, replaceBox});
        row("save: new file", {false, {}, "A Blank line\nAnother Blank\n", false, 0, {}, "A Blank line\r\nAnother Blank\r\n", saved});
        row("save: spaces kept", {true, {}, "  Blank Winter  ", false, 0, {}, "  Blank Winter  ", saved});
        row("save: three letters in spaces", {false, {}, "           abc", false, 0, {}, {}, nothing});
        row("save: ten letters are not enough", {true, {}, "  ABCDEFGHIJ  ", false, 0, {}, {}, nothing});
        row("save: eleven are", {true, {}, "ABCDEFGHIJK", false, 0, {}, "ABCDEFGHIJK", saved});
        row("save: existing, Yes", {true, old, "Blank Pole\nShoe Blank", false, 6, {}, "Blank Pole\r\nShoe Blank", replaceFile + saved});
        row("save: existing, No", {true, old, "Blank Pole\nShoe Blank", false, 7, {}, old, replaceFile});
        row("save: existing, Cancel", {false, old, "A long enough Blank", false, 2, {}, old, replaceFile});
        row("save: accents and tabs", {false, {}, u"Crème\tbrûlée is a Blank"_qs, false, 0, {}, u"Crème\tbrûlée is a Blank"_qs.toUtf8(), saved});
        // Loaded, then saved: the same bytes.
        for (const auto &[name, text] : {std::pair{"line and paragraph separators", u"A Blank\u2028split\r\nPara\u2029graph Blank\r\n"_qs},
                                         {"private-use letters", u"\uE000\uE001 Blank\u2028\uE002\u2029\r\n"_qs},
                                         {"a line separator alone", u"One Blank\u2028line\r\n"_qs},
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
        if (QTest::currentDataTag() == QByteArray("private-use letters"))  // separators shown as private-use letters the text lacks
            QCOMPARE(shown, u"\uE000\uE001 Blank\uE003\uE002\uE004\n"_qs);
        e.click(matches, load ? &Ui::frmEditQuestions::clkLoad : &Ui::frmEditQuestions::clkSave, {answer});
        QCOMPARE(e.fake.boxTitles(), titles);
        QCOMPARE(e.box(matches), boxAfter.isNull() ? shown : boxAfter);
        QCOMPARE(e.fake.fileBytes(file), after);
        QCOMPARE(QFile::exists(e.fake.path(file)), !after.isEmpty());
        const QString last = e.fake.boxes.value(e.fake.boxes.size() - 1).text;
        if (e.fake.boxTitles().endsWith(QStringLiteral("File Saved Successfully")))
            QCOMPARE(last, (matches ? "Matches saved in file " : "Phrases saved in file ") + e.fake.path(file));
        else if (load && answer)
            QCOMPARE(last, matches ? "Matches already exist in text box.  Do you want to overwrite these matches?"
                                   : "Questions already exist in text box.  Do you want to overwrite these questions?");
    }

    void missingFileOffersTheSample_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("entries");  // what the game reads from the saved sample; -1: no sample
        QTest::newRow("phrases, Yes") << false << 6 << 2;
        QTest::newRow("phrases, No") << false << 7 << -1;
        QTest::newRow("matches, Yes") << true << 6 << 5;
        QTest::newRow("matches, Cancel") << true << 2 << -1;
    }
    void missingFileOffersTheSample()
    {
        QFETCH(bool, matches);
        QFETCH(int, answer);
        QFETCH(int, entries);
        Editors e;
        e.fake.answers = {answer};
        const QString file = matches ? MatchFile : PhraseFile;
        QCOMPARE(e.box(matches).isEmpty(), entries < 0);
        QCOMPARE(e.fake.boxTitles(), QStringList{matches ? "Create a New Match File?" : "Create a New Phrase File?"});
        QCOMPARE(e.fake.boxes[0].text, "File " + e.fake.path(file) + " does not exist, Do you want to create one?");
        QVERIFY(!QFile::exists(e.fake.path(file)));  // nothing written before Save
        e.click(matches, &Ui::frmEditQuestions::clkSave);
        QCOMPARE(e.fake.boxTitles(), QStringList{entries < 0 ? "Nothing to Save." : "File Saved Successfully"});
        if (entries >= 0) {
            QCOMPARE(decks::ReadEntries(matches ? questions::Kind::Match : questions::Kind::Phrase, e.fake.path(file)).size(), entries);
            QVERIFY(e.fake.fileBytes(file).startsWith(matches ? "# Tandrel Match Lines \r\n\r\n" : "# Tandrel Phrase Questions \r\n\r\n"));
        }
    }

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
        QTest::addColumn<QStringList>("shown");  // the rows, the length handed over, counting, Exit closing it
        QTest::newRow("start-up values") << QByteArray() << QStringList{"30", "No", "No", "No", "No", "30", "0", "closed"};
        QTest::newRow("all on") << QByteArray("TimerTime: 120\nSoundContinual: yes\nBuzzer: yes\nSound: on\nTimer: on\n")
                                << QStringList{"120", "Yes", "Yes", "Yes", "Yes", "120", "0", "closed"};
        QTest::newRow("length 0 shows 30") << QByteArray("TimerTime: 0\n") << QStringList{"30", "No", "No", "No", "No", "0", "0", "closed"};
        QTest::newRow("the first length") << QByteArray("TimerTime: 10\n") << QStringList{"10", "No", "No", "No", "No", "10", "0", "closed"};
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
            QCOMPARE(seen.mid(6), (QStringList{"0", "open"}));  // Config stops the count; Save leaves it open
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
};

TANDREL_TEST_MAIN(TestEditors)
#include "tst_editors.moc"
