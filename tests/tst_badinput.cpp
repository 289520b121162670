// Damaged, foreign, huge and unreadable files given to every reader of
// hand-edited text: what the host sees, and that the file is left as it was.
#include "GameWindow.h"
#include "EditorWindows.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "files/ConfigFile.h"
#include "platform/TextFiles.h"
#include "shell/frmHowTo.h"
#include "ui_frmEditQuestions.h"
#include "ui_frmHowTo.h"
#include <QDir>
#include <QFile>
#include <QTextEdit>
#include <unistd.h>

namespace {
// A file of the catalogue under the given name in the program folder.
void makeFile(const QString &entry, const QString &path)
{
    const auto write = [&](const QByteArray &bytes) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    if (entry == QLatin1String("one-10MB-line")) {
        write("Blank " + QByteArray(10 * 1024 * 1024, 'x') + "\r\n");
    } else if (entry == QLatin1String("50MB-random")) {
        std::mt19937 gen(20261123);
        QByteArray bytes(50 * 1024 * 1024, '\0');
        auto *words = reinterpret_cast<quint32 *>(bytes.data());
        for (qsizetype i = 0; i < bytes.size() / 4; ++i)
            words[i] = gen();
        write(bytes);
    } else if (entry == QLatin1String("40000-lines")) {
        QByteArray bytes;
        for (int i = 0; i < 40000; ++i)
            bytes += QByteArray("Question ") + QByteArray::number(i) + " has a Blank\r\n";
        write(bytes);
    } else if (entry == QLatin1String("symlink-loop")) {
        QVERIFY(QFile::link(path, path));
    } else if (entry == QLatin1String("directory")) {
        QVERIFY(QDir().mkdir(path));
    } else if (entry == QLatin1String("no-read-permission")) {
        write("Shoe Blank\r\n");
        QFile::setPermissions(path, QFileDevice::WriteOwner);
    } else {
        QVERIFY(QFile::copy(QStringLiteral(TANDREL_SOURCE_DIR "/tests/badinput/") + entry + QStringLiteral(".txt"),
                            path));
    }
}

// What the host saw first, or nothing.
QString shown(const FakePlatform &fake)
{
    return fake.boxesShown().value(0);
}

// What each reader shows for each entry of the catalogue (README's table).
struct Row {
    const char *name, *matchDeck, *phraseDeck, *config, *editor, *rules;
};
const Row Catalogue[] = {
    {"empty", "Exiting File Load", "Exiting File Load", "", "loadTandrelLines 62", "shown"},
    {"comments-only", "Exiting File Load", "Exiting File Load", "", "shown", "shown"},
    {"placeholders-only", "Exiting File Load", "2", "", "shown", "shown"},
    {"utf8-bom", "2", "2", "", "shown", "shown"},
    {"utf16le-bom", "2", "2", "", "shown", "shown"},
    {"utf16be-bom", "2", "2", "", "shown", "shown"},
    {"utf16le-no-bom", "Exiting File Load", "Exiting File Load", "", "shown", "shown"},
    {"invalid-utf8", "2", "2", "", "shown", "shown"},
    {"latin1-accents", "2", "2", "", "shown", "shown"},
    {"nul-bytes", "2", "2", "", "shown", "shown"},
    {"cr-only", "3", "3", "", "shown", "shown"},
    {"mixed-line-ends", "5", "5", "", "shown", "shown"},
    {"one-10MB-line", "Exiting File Load", "Exiting File Load", "", "loadTandrelLines 7", "Form_Load frmHowTo 7"},
    {"50MB-random", "Exiting File Load", "Exiting File Load", "", "loadTandrelLines 7", "Form_Load frmHowTo 7"},
    {"40000-lines", "32766", "32766", "", "shown", "shown"},
    {"symlink-loop", "File Does Not Exist", "File Does Not Exist", "", "Create a New Match File?", "File not Loaded"},
    {"directory", "File Does Not Exist", "File Does Not Exist", "", "Create a New Match File?", "File not Loaded"},
    {"no-read-permission", "clkStart_Click 70", "clkStartPhrase_Click 70", "readInConfigFile 70",
     "loadTandrelLines 70", "Form_Load frmHowTo 70"},
};

void addRows(const char *Row::*column)
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("expected");
    for (const Row &row : Catalogue)
        QTest::newRow(row.name) << QString::fromLatin1(row.name) << QString::fromLatin1(row.*column);
}

// Root reads any file, so the unreadable file can only be tried as a user.
bool unreadableAsRoot(const QString &entry)
{
    return entry == QLatin1String("no-read-permission") && geteuid() == 0;
}

// Starts a round of the kind on the file and tells what the host saw.
void checkDeck(bool match)
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    if (unreadableAsRoot(entry))
        QSKIP("root reads any file");
    GameWindow g(0, 0);
    const QString name = match ? decks::MatchFileName : decks::PhraseFileName;
    const QString path = g.fake.path(name);
    makeFile(entry, path);
    const QByteArray before = g.fake.fileBytes(name);
    if (match)
        g.w().clkStart_Click();
    else
        g.w().clkStartPhrase_Click();
    const game::Deck &deck = g.game().deck(match ? questions::Kind::Match : questions::Kind::Phrase);
    const QString message = shown(g.fake);
    QCOMPARE(message.isEmpty() ? QString::number(deck.size()) : message, expected);
    QCOMPARE(g.fake.fileBytes(name), before);
    QVERIFY2(!g.question(!match).contains(QChar(0xFEFF)), "a byte order mark reached a question");
}
}  // namespace

class TestBadInput : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void matchDeckReadsWhatItCan_data() { addRows(&Row::matchDeck); }
    void matchDeckReadsWhatItCan() { checkDeck(true); }
    void phraseDeckReadsWhatItCan_data() { addRows(&Row::phraseDeck); }
    void phraseDeckReadsWhatItCan() { checkDeck(false); }
    void configurationNeverStopsTheStart_data() { addRows(&Row::config); }
    void configurationNeverStopsTheStart();
    void editorShowsOrRefuses_data() { addRows(&Row::editor); }
    void editorShowsOrRefuses();
    void rulesViewerShowsOrRefuses_data() { addRows(&Row::rules); }
    void rulesViewerShowsOrRefuses();
    void fullDecksKeepCountersInRange();
};

void TestBadInput::configurationNeverStopsTheStart()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    if (unreadableAsRoot(entry))
        QSKIP("root reads any file");
    FakePlatform fake;
    const QString name = config::FileName;
    const QString path = fake.path(name);
    makeFile(entry, path);
    const QByteArray before = fake.fileBytes(name);
    frmTandrel window;
    window.Form_Load();
    QCOMPARE(shown(fake), expected);
    QCOMPARE(fake.fileBytes(name), before);
}

void TestBadInput::editorShowsOrRefuses()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    if (unreadableAsRoot(entry))
        QSKIP("root reads any file");
    FakePlatform fake;
    frmTandrel main;
    const QString name = decks::MatchFileName;
    const QString path = fake.path(name);
    makeFile(entry, path);
    const QByteArray before = fake.fileBytes(name);
    frmEditQuestions *editor = openEditor(main, true);
    QVERIFY(editor);
    const QString message = shown(fake);
    QCOMPARE(message.isEmpty() ? QStringLiteral("shown") : message, expected);
    QString text = platform::decodeText(before);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QCOMPARE(editor->ui()->rtb1->toPlainText(), message.isEmpty() ? text : QString());
    QCOMPARE(fake.fileBytes(name), before);
    editor->close();
}

void TestBadInput::rulesViewerShowsOrRefuses()
{
    QFETCH(QString, entry);
    QFETCH(QString, expected);
    if (unreadableAsRoot(entry))
        QSKIP("root reads any file");
    GameWindow g;
    const QString name = QStringLiteral("HowToPlayTandrel.rtf");
    const QString path = g.fake.path(name);
    makeFile(entry, path);
    const QByteArray before = g.fake.fileBytes(name);
    g.ui()->clkHowToPlay->click();
    const QString message = shown(g.fake);
    QCOMPARE(message.isEmpty() ? QStringLiteral("shown") : message, expected);
    auto *viewer = qobject_cast<frmHowTo *>(platform::loadedWindow(QStringLiteral("frmHowTo")));
    if (message.isEmpty())
        QVERIFY(viewer && viewer->ui()->rtb1->toPlainText().size() <= before.size() + 1);
    else if (viewer)
        QCOMPARE(viewer->ui()->rtb1->toPlainText(), QString());
    QCOMPARE(g.fake.fileBytes(name), before);
    if (viewer)
        viewer->close();
}

// Decks past what 16-bit counters hold are cut to 32,766 entries each, so
// stepping round a deck never overflows.
void TestBadInput::fullDecksKeepCountersInRange()
{
    GameWindow g(0, 0);
    makeFile(QStringLiteral("40000-lines"), g.fake.path(decks::MatchFileName));
    makeFile(QStringLiteral("40000-lines"), g.fake.path(decks::PhraseFileName));
    g.w().clkStart_Click();
    g.w().clkStartPhrase_Click();
    QCOMPARE(g.game().deck(questions::Kind::Phrase).size(), 32766);
    g.ui()->clkPrev->click();  // from the first question back to the last
    QCOMPARE(g.ui()->clkStatusMatch->text(), QStringLiteral("Viewing Match 32766 of 32766 Matches..."));
    g.ui()->clkNext->click();
    QCOMPARE(g.ui()->clkStatusMatch->text(), QStringLiteral("Viewing Match 1 of 32766 Matches..."));
    QCOMPARE(g.fake.boxes.size(), 0);
}

TANDREL_TEST_MAIN(TestBadInput)
#include "tst_badinput.moc"
