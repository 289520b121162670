// The question file editors, driven through their buttons the way a host
// uses them: what they ask, what the box shows, and what reaches the disk.
#include "EditorWindows.h"
#include "GameWindow.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "ui_frmEditQuestions.h"
#include <QDir>
#include <QPushButton>
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
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QByteArray>("before");  // the file; empty: none
        QTest::addColumn<QString>("inBox");      // null: as loaded
        QTest::addColumn<bool>("load");          // Load, else Save
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("boxAfter");   // null: as it was
        QTest::addColumn<QByteArray>("after");   // the file; empty: none
        QTest::addColumn<QStringList>("titles");
        auto row = [](const char *name, bool matches, const QByteArray &before, const QString &inBox, bool load, int answer,
                      const QString &boxAfter, const QByteArray &after, const QStringList &titles) {
            QTest::newRow(name) << matches << before << inBox << load << answer << boxAfter << after << titles;
        };
        const QByteArray file = "from the file\r\n", old = "old\r\n";
        const QString ten = QStringLiteral("0123456789"), loaded = QStringLiteral("from the file\n");
        const QStringList replaceBox{"Overwrite Questions In Text Box?"}, saved{"File Saved Successfully"},
            replaceFile{"Overwrite File?"}, nothing{"Nothing to Save."};
        row("load: 10 characters, no question", false, file, ten, true, 0, loaded, file, {});
        row("load: 11 characters, Yes", false, file, ten + "!", true, 6, loaded, file, replaceBox);
        row("load: 11 characters, No", false, file, ten + "!", true, 7, {}, file, replaceBox);
        row("load: 11 characters, Cancel", true, file, ten + "!", true, 2, {}, file, replaceBox);
        row("load: a line end counts twice", true, file, "01234\n6789", true, 7, {}, file, replaceBox);
        row("save: new file", false, {}, "A Blank line\nAnother Blank\n", false, 0, {}, "A Blank line\r\nAnother Blank\r\n", saved);
        row("save: spaces kept", true, {}, "  Blank Winter  ", false, 0, {}, "  Blank Winter  ", saved);
        row("save: three letters in spaces", false, {}, "           abc", false, 0, {}, {}, nothing);
        row("save: ten letters are not enough", true, {}, "  ABCDEFGHIJ  ", false, 0, {}, {}, nothing);
        row("save: eleven are", true, {}, "ABCDEFGHIJK", false, 0, {}, "ABCDEFGHIJK", saved);
        row("save: existing, Yes", true, old, "Blank Pole\nShoe Blank", false, 6, {}, "Blank Pole\r\nShoe Blank", replaceFile + saved);
        row("save: existing, No", true, old, "Blank Pole\nShoe Blank", false, 7, {}, old, replaceFile);
        row("save: existing, Cancel", false, old, "A long enough Blank", false, 2, {}, old, replaceFile);
        row("save: accents and tabs", false, {}, u"Crème\tbrûlée is a Blank"_qs, false, 0, {}, u"Crème\tbrûlée is a Blank"_qs.toUtf8(), saved);
        // Loaded, then saved: the same bytes.
        for (const auto &[name, text] : {std::pair{"line and paragraph separators", u"A Blank\u2028split\r\nPara\u2029graph Blank\r\n"_qs},
                                         {"private-use letters", u"\uE000\uE001 Blank\u2028\uE002\u2029\r\n"_qs},
                                         {"tabs, no-break spaces, emoji", u"\tTab Blank\u00A0\U0001F600  \r\n\r\n\r\n# note\r\n"_qs}})
            row(name, false, text.toUtf8(), {}, false, 6, {}, text.toUtf8(), replaceFile + saved);
    }
    void loadAndSave()
    {
        QFETCH(bool, matches);
        QFETCH(QByteArray, before);
        QFETCH(QString, inBox);
        QFETCH(bool, load);
        QFETCH(int, answer);
        QFETCH(QString, boxAfter);
        QFETCH(QByteArray, after);
        Editors e;
        const QString file = matches ? MatchFile : PhraseFile;
        if (!before.isEmpty())
            e.fake.writeFile(file, before);
        e.fake.answers = {7};  // no sample for a missing file
        if (!inBox.isNull())
            e.open(matches)->ui()->rtb1->setPlainText(inBox);
        const QString shown = e.box(matches);
        e.click(matches, load ? &Ui::frmEditQuestions::clkLoad : &Ui::frmEditQuestions::clkSave, {answer});
        QTEST(e.fake.boxTitles(), "titles");
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
};

TANDREL_TEST_MAIN(TestEditors)
#include "tst_editors.moc"
