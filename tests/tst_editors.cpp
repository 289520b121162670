// The question file editors, driven through their buttons the way a host
// uses them: what they ask, what the box shows, and what reaches the disk.
#include "EditorWindows.h"
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "files/frmEdit.h"
#include "files/frmEditQuestions.h"
#include "shell/frmTandrel.h"
#include "ui_frmEdit.h"
#include "ui_frmEditQuestions.h"
#include <QDir>
#include <QFile>
#include <QTextEdit>
#include <memory>

namespace {
using platform::mb::Cancel;
using platform::mb::No;
using platform::mb::Yes;

// The main window with no question files, so it starts quietly.
struct Editors {
    FakePlatform fake;
    std::unique_ptr<frmTandrel> main = std::make_unique<frmTandrel>();

    frmEdit *chooser() { return openChooser(*main); }
    frmEditQuestions *open(bool matches) { return openEditor(*main, matches); }
    // Every file but the log.
    QStringList folder() const
    {
        QStringList files = QDir(fake.dir).entryList(QDir::Files | QDir::Hidden);
        files.removeAll(QStringLiteral("LogInfo.txt"));
        return files;
    }
};

QString fileOf(bool matches)
{
    return matches ? decks::MatchFileName : decks::PhraseFileName;
}
}  // namespace

class TestEditors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void eachWindowOpensOnce()
    {
        Editors e;
        e.fake.writeFile(decks::MatchFileName, "Blank Pole\r\nShoe Blank\r\n");
        frmEdit *chooser = e.chooser();
        QVERIFY(chooser && chooser->isVisible());
        QCOMPARE(chooser->windowTitle(), QStringLiteral("Edit Tandrels And Match Phrases"));
        QCOMPARE(e.chooser(), chooser);

        frmEditQuestions *matches = e.open(true);
        QVERIFY(matches && matches->isVisible());
        QCOMPARE(matches->windowTitle(), QStringLiteral("Edit Tandrel Matches Input File"));
        QCOMPARE(matches->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        QVERIFY(matches->ui()->lbl1->text().startsWith(QStringLiteral("Note: Each seperate sentence will create a match.")));
        matches->ui()->rtb1->setPlainText(QStringLiteral("edited, not saved"));
        QCOMPARE(e.open(true), matches);  // brought forward, not reloaded
        QCOMPARE(matches->boxText(), QStringLiteral("edited, not saved"));

        // Both editors side by side; the chooser may close without them.
        e.fake.answers = {No};  // the phrase file is missing: no sample
        frmEditQuestions *phrases = e.open(false);
        QVERIFY(phrases && phrases != matches);
        QCOMPARE(phrases->windowTitle(), QStringLiteral("Edit Tandrel Phases Input File"));
        chooser->close();
        QVERIFY(matches->isVisible() && phrases->isVisible());

        // Close drops the edits without a question; the next opening reloads.
        const int boxes = e.fake.boxes.size();
        matches->ui()->clkClose->click();
        QCOMPARE(e.fake.boxes.size(), boxes);
        frmEditQuestions *again = e.open(true);
        QCOMPARE(again->boxText(), QStringLiteral("Blank Pole\r\nShoe Blank\r\n"));
        QCOMPARE(e.fake.logTexts().filter(QStringLiteral("frmEditMatches")),
                 (QStringList{"Loading Form frmEditMatches", "Unloading Form frmEditMatches", "Loading Form frmEditMatches"}));
        QCOMPARE(e.fake.logTexts().count(QStringLiteral("Loading Form frmEdit")), 2);
        QCOMPARE(e.folder(), QStringList{decks::MatchFileName});
    }
    void loadAsksBeforeReplacingTheBox_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QString>("inBox");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("replaced");
        QTest::addColumn<QString>("question");  // empty: none asked

        const QString ten = QStringLiteral("0123456789");
        const QString phrasesFull = QStringLiteral("Questions already exist in text box.  Do you want to overwrite these questions?");
        const QString matchesFull = QStringLiteral("Matches already exist in text box.  Do you want to overwrite these matches?");
        QTest::newRow("10 characters, no question") << false << ten << 0 << true << QString();
        QTest::newRow("11 characters, Yes") << false << ten + "!" << int(Yes) << true << phrasesFull;
        QTest::newRow("11 characters, No") << false << ten + "!" << int(No) << false << phrasesFull;
        QTest::newRow("11 characters, Cancel") << true << ten + "!" << int(Cancel) << false << matchesFull;
        QTest::newRow("line end counts twice") << true << "01234\n6789" << int(No) << false << matchesFull;
    }
    void loadAsksBeforeReplacingTheBox()
    {
        QFETCH(bool, matches);
        QFETCH(QString, inBox);
        QFETCH(int, answer);
        QFETCH(bool, replaced);
        QFETCH(QString, question);
        Editors e;
        e.fake.writeFile(fileOf(matches), "from the file\r\n");
        frmEditQuestions *editor = e.open(matches);
        editor->ui()->rtb1->setPlainText(inBox);
        e.fake.boxes.clear();
        e.fake.answers = {answer};
        editor->ui()->clkLoad->click();
        QCOMPARE(editor->ui()->rtb1->toPlainText(), replaced ? QStringLiteral("from the file\n") : inBox);
        QCOMPARE(e.fake.boxes.size(), question.isEmpty() ? 0 : 1);
        if (!question.isEmpty()) {
            QCOMPARE(e.fake.boxes[0].text, question);
            QCOMPARE(e.fake.boxes[0].title, QStringLiteral("Overwrite Questions In Text Box?"));
            QCOMPARE(e.fake.boxes[0].style, platform::mb::YesNoCancel);
        }
    }
    void missingFileOffersTheSample_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("entries");  // what the game reads from the saved sample; -1: no sample
        QTest::newRow("phrases, Yes") << false << int(Yes) << "Create a New Phrase File?" << 2;
        QTest::newRow("phrases, No") << false << int(No) << "Create a New Phrase File?" << -1;
        QTest::newRow("matches, Yes") << true << int(Yes) << "Create a New Match File?" << 5;
        QTest::newRow("matches, Cancel") << true << int(Cancel) << "Create a New Match File?" << -1;
    }
    void missingFileOffersTheSample()
    {
        QFETCH(bool, matches);
        QFETCH(int, answer);
        QFETCH(QString, title);
        QFETCH(int, entries);
        Editors e;
        e.fake.answers = {answer};
        frmEditQuestions *editor = e.open(matches);
        QCOMPARE(e.fake.boxes.size(), 1);
        QCOMPARE(e.fake.boxes[0].title, title);
        QCOMPARE(e.fake.boxes[0].text,
                 "File " + e.fake.path(fileOf(matches)) + " does not exist, Do you want to create one?");
        QVERIFY(!QFile::exists(e.fake.path(fileOf(matches))));  // nothing written before Save
        if (entries < 0) {
            QCOMPARE(editor->boxText(), QString());
            return;
        }
        editor->ui()->clkSave->click();
        const auto kind = matches ? questions::Kind::Match : questions::Kind::Phrase;
        QCOMPARE(decks::ReadEntries(kind, e.fake.path(fileOf(matches))).size(), entries);
        QVERIFY(e.fake.fileBytes(fileOf(matches)).startsWith(matches ? "# Tandrel Match Lines \r\n\r\n" : "# Tandrel Phrase Questions \r\n\r\n"));
    }
    void saveWritesTheBoxWithCrLf_data()
    {
        QTest::addColumn<bool>("matches");
        QTest::addColumn<QByteArray>("before");  // empty: no file
        QTest::addColumn<QString>("inBox");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QStringList>("titles");

        const QStringList saved{"File Saved Successfully"};
        const QStringList nothing{"Nothing to Save."};
        const QStringList asked{"Overwrite File?", "File Saved Successfully"};
        QTest::newRow("new file") << false << QByteArray() << "A Blank line\nAnother Blank\n" << 0
                                  << QByteArray("A Blank line\r\nAnother Blank\r\n") << saved;
        QTest::newRow("spaces kept") << true << QByteArray() << "  Blank Winter  " << 0
                                     << QByteArray("  Blank Winter  ") << saved;
        QTest::newRow("three letters in spaces") << false << QByteArray() << "           abc" << 0 << QByteArray()
                                                 << nothing;
        QTest::newRow("existing, Yes") << true << QByteArray("old\r\n") << "Blank Pole\nShoe Blank" << int(Yes)
                                       << QByteArray("Blank Pole\r\nShoe Blank") << asked;
        QTest::newRow("existing, No") << true << QByteArray("old\r\n") << "Blank Pole\nShoe Blank" << int(No)
                                      << QByteArray("old\r\n") << QStringList{"Overwrite File?"};
        QTest::newRow("existing, Cancel") << false << QByteArray("old\r\n") << "A long enough Blank" << int(Cancel)
                                          << QByteArray("old\r\n") << QStringList{"Overwrite File?"};
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
        if (!before.isEmpty())
            e.fake.writeFile(fileOf(matches), before);
        e.fake.answers = {No};  // the sample, if offered
        frmEditQuestions *editor = e.open(matches);
        editor->ui()->rtb1->setPlainText(inBox);
        e.fake.boxes.clear();
        e.fake.answers = {answer};
        editor->ui()->clkSave->click();
        QCOMPARE(e.fake.boxTitles(), titles);
        QCOMPARE(e.fake.fileBytes(fileOf(matches)), after);
        QCOMPARE(QFile::exists(e.fake.path(fileOf(matches))), !after.isEmpty());
        QCOMPARE(editor->ui()->rtb1->toPlainText(), inBox);
        if (titles.last() == QLatin1String("File Saved Successfully"))
            QCOMPARE(e.fake.boxes.last().text,
                     (matches ? "Matches saved in file " : "Phrases saved in file ") + e.fake.path(fileOf(matches)));
    }
    void emptyFileCannotBeLoaded()
    {
        Editors e;
        e.fake.writeFile(decks::MatchFileName, "");
        frmEditQuestions *editor = e.open(true);
        QCOMPARE(e.fake.boxTitles(), QStringList{"Error"});
        QVERIFY(e.fake.boxes[0].text.startsWith(QStringLiteral("Current SubRoutine is loadTandrelLines\r\n")));
        QCOMPARE(editor->boxText(), QString());
    }
};


TANDREL_TEST_MAIN(TestEditors)
#include "tst_editors.moc"
