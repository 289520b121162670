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
const QString Matches = MatchFile, Phrases = PhraseFile;
}  // namespace

class TestEditors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void eachWindowOpensOnce()
    {
        Editors e;
        e.fake.writeFile(Matches, "Blank Pole\r\nShoe Blank\r\n");
        frmEdit *chooser = openChooser(e.w());
        QVERIFY(chooser && chooser->isVisible());
        QCOMPARE(chooser->windowTitle(), QStringLiteral("Edit Tandrels And Match Phrases"));
        QCOMPARE(openChooser(e.w()), chooser);
        frmEditQuestions *matches = e.open(true);
        QCOMPARE(matches->windowTitle(), QStringLiteral("Edit Tandrel Matches Input File"));
        QCOMPARE(matches->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        QVERIFY(matches->ui()->lbl1->text().startsWith(QStringLiteral("Note: Each seperate sentence will create a match.")));
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
        QCOMPARE(QDir(e.fake.dir).entryList(QDir::Files), (QStringList{"LogInfo.txt", Matches}));
    }

    void loadAsksBeforeReplacingTheBox_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QString>("inBox");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("after");
        const QString ten = QStringLiteral("0123456789"), loaded = QStringLiteral("from the file\n");
        QTest::newRow("10 characters, no question") << false << ten << 0 << loaded;
        QTest::newRow("11 characters, Yes") << false << ten + "!" << 6 << loaded;
        QTest::newRow("11 characters, No") << false << ten + "!" << 7 << ten + "!";
        QTest::newRow("11 characters, Cancel") << true << ten + "!" << 2 << ten + "!";
        QTest::newRow("line end counts twice") << true << "01234\n6789" << 7 << "01234\n6789";
    }
    void loadAsksBeforeReplacingTheBox()
    {
        QFETCH(bool, matches);
        QFETCH(QString, inBox);
        QFETCH(int, answer);
        QFETCH(QString, after);
        Editors e;
        e.fake.writeFile(matches ? Matches : Phrases, "from the file\r\n");
        e.open(matches)->ui()->rtb1->setPlainText(inBox);
        e.click(matches, &Ui::frmEditQuestions::clkLoad, {answer});
        QCOMPARE(e.box(matches), after);
        QCOMPARE(e.fake.boxes.size(), answer ? 1 : 0);
        if (answer) {
            QCOMPARE(e.fake.boxes[0].text, matches ? "Matches already exist in text box.  Do you want to overwrite these matches?"
                                                   : "Questions already exist in text box.  Do you want to overwrite these questions?");
            QCOMPARE(e.fake.boxes[0].title, QStringLiteral("Overwrite Questions In Text Box?"));
            QCOMPARE(e.fake.boxes[0].style, 3);
        }
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
        const QString file = matches ? Matches : Phrases;
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

    void saveWritesTheBoxWithCrLf_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QByteArray>("before");  // empty: no file
        QTest::addColumn<QString>("inBox");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QStringList>("titles");
        const QStringList saved{"File Saved Successfully"}, asked{"Overwrite File?", "File Saved Successfully"};
        QTest::newRow("new file") << false << QByteArray() << "A Blank line\nAnother Blank\n" << 0
                                  << QByteArray("A Blank line\r\nAnother Blank\r\n") << saved;
        QTest::newRow("spaces kept") << true << QByteArray() << "  Blank Winter  " << 0 << QByteArray("  Blank Winter  ") << saved;
        QTest::newRow("three letters in spaces") << false << QByteArray() << "           abc" << 0 << QByteArray()
                                                 << QStringList{"Nothing to Save."};
        QTest::newRow("ten letters are not enough") << true << QByteArray() << "  ABCDEFGHIJ  " << 0 << QByteArray()
                                                    << QStringList{"Nothing to Save."};
        QTest::newRow("eleven are") << true << QByteArray() << "ABCDEFGHIJK" << 0 << QByteArray("ABCDEFGHIJK") << saved;
        QTest::newRow("existing, Yes") << true << QByteArray("old\r\n") << "Blank Pole\nShoe Blank" << 6
                                       << QByteArray("Blank Pole\r\nShoe Blank") << asked;
        QTest::newRow("existing, No") << true << QByteArray("old\r\n") << "Blank Pole\nShoe Blank" << 7 << QByteArray("old\r\n")
                                      << QStringList{"Overwrite File?"};
        QTest::newRow("existing, Cancel") << false << QByteArray("old\r\n") << "A long enough Blank" << 2 << QByteArray("old\r\n")
                                          << QStringList{"Overwrite File?"};
        QTest::newRow("accents and tabs") << false << QByteArray() << "Crème\tbrûlée is a Blank" << 0
                                          << QString("Crème\tbrûlée is a Blank").toUtf8() << saved;
    }
    void saveWritesTheBoxWithCrLf()
    {
        QFETCH(bool, matches);
        QFETCH(QByteArray, before);
        QFETCH(QString, inBox);
        QFETCH(int, answer);
        QFETCH(QByteArray, after);
        QFETCH(QStringList, titles);
        Editors e;
        const QString file = matches ? Matches : Phrases;
        if (!before.isEmpty())
            e.fake.writeFile(file, before);
        e.fake.answers = {7};  // the sample, if offered
        e.open(matches)->ui()->rtb1->setPlainText(inBox);
        e.click(matches, &Ui::frmEditQuestions::clkSave, {answer});
        QCOMPARE(e.fake.boxTitles(), titles);
        QCOMPARE(e.fake.fileBytes(file), after);
        QCOMPARE(QFile::exists(e.fake.path(file)), !after.isEmpty());
        QCOMPARE(e.box(matches), inBox);
        if (titles.last() == QLatin1String("File Saved Successfully"))
            QCOMPARE(e.fake.boxes.last().text, (matches ? "Matches saved in file " : "Phrases saved in file ") + e.fake.path(file));
    }

    void loadThenSaveWritesTheSameBytes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("separators inside a question") << u"A Blank\u2028split\r\nPara\u2029graph Blank\r\n"_qs;
        QTest::newRow("separators and private-use letters") << u"\uE000\uE001 Blank\u2028\uE002\u2029\r\n"_qs;
        QTest::newRow("tabs, no-break spaces, emoji") << u"\tTab Blank\u00A0\U0001F600  \r\n\r\n\r\n# note\r\n"_qs;
    }
    void loadThenSaveWritesTheSameBytes()
    {
        QFETCH(QString, text);
        Editors e;
        e.fake.writeFile(Phrases, text.toUtf8());
        e.open(false);
        e.click(false, &Ui::frmEditQuestions::clkSave, {6});
        QCOMPARE(e.fake.fileBytes(Phrases), text.toUtf8());
    }

    void emptyFileCannotBeLoaded()
    {
        Editors e;
        e.fake.writeFile(Matches, "");
        QCOMPARE(e.box(true), QString());
        QCOMPARE(e.fake.boxesShown(), QStringList{"loadTandrelLines 62"});
    }
};

TANDREL_TEST_MAIN(TestEditors)
#include "tst_editors.moc"
