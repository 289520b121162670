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
#include <sys/stat.h>
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
    } else if (entry == QLatin1String("one-25000-character-line")) {
        write("Blank " + QByteArray(25000, 'x') + "\r\n");
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
    } else if (entry == QLatin1String("fifo")) {
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    } else if (entry == QLatin1String("link-to-dev-zero")) {
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path));
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

// What each reader shows for each entry of the catalogue (README's table).
struct Row {
    const char *name;
    const char *seen[5];  // match deck, phrase deck, configuration, editor, rules
};
const Row Catalogue[] = {
    {"empty", {"Exiting File Load", "Exiting File Load", "", "loadTandrelLines 62", "shown"}},
    {"comments-only", {"Exiting File Load", "Exiting File Load", "", "shown", "shown"}},
    {"placeholders-only", {"Exiting File Load", "2", "", "shown", "shown"}},
    {"utf8-bom", {"2", "2", "", "shown", "shown"}},
    {"utf16le-bom", {"2", "2", "", "shown", "shown"}},
    {"utf16be-bom", {"2", "2", "", "shown", "shown"}},
    {"utf16le-no-bom", {"Exiting File Load", "Exiting File Load", "", "shown", "shown"}},
    {"invalid-utf8", {"2", "2", "", "shown", "shown"}},
    {"latin1-accents", {"2", "2", "", "shown", "shown"}},
    {"nul-bytes", {"2", "2", "", "shown", "shown"}},
    {"cr-only", {"3", "3", "", "shown", "shown"}},
    {"mixed-line-ends", {"5", "5", "", "shown", "shown"}},
    {"one-10MB-line", {"Exiting File Load", "Exiting File Load", "", "loadTandrelLines 7", "Form_Load frmHowTo 7"}},
    {"one-25000-character-line", {"Exiting File Load", "Exiting File Load", "", "loadTandrelLines 7", "Form_Load frmHowTo 7"}},
    {"50MB-random", {"Exiting File Load", "Exiting File Load", "", "loadTandrelLines 7", "Form_Load frmHowTo 7"}},
    {"40000-lines", {"32766", "32766", "", "shown", "shown"}},
    {"symlink-loop", {"File Does Not Exist", "File Does Not Exist", "", "Create a New Match File?", "File not Loaded"}},
    {"directory", {"File Does Not Exist", "File Does Not Exist", "", "Create a New Match File?", "File not Loaded"}},
    {"fifo", {"clkStart_Click 75", "clkStartPhrase_Click 75", "readInConfigFile 75", "loadTandrelLines 75", "Form_Load frmHowTo 75"}},
    {"link-to-dev-zero", {"clkStart_Click 75", "clkStartPhrase_Click 75", "readInConfigFile 75", "loadTandrelLines 75", "Form_Load frmHowTo 75"}},
    {"no-read-permission", {"clkStart_Click 70", "clkStartPhrase_Click 70", "readInConfigFile 70",
     "loadTandrelLines 70", "Form_Load frmHowTo 70"}},
};

// Root reads any file, so the unreadable file can only be tried as a user.
bool unreadableAsRoot(const QString &entry)
{
    return entry == QLatin1String("no-read-permission") && geteuid() == 0;
}
}  // namespace

class TestBadInput : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyReaderReadsWhatItCan_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<int>("reader");
        QTest::addColumn<QString>("expected");  // what the host saw first, or the deck's size, or "shown"
        const char *readers[] = {"match deck", "phrase deck", "configuration", "editor", "rules"};
        for (const Row &row : Catalogue)
            for (int reader = 0; reader < 5; ++reader)
                QTest::addRow("%s, %s", row.name, readers[reader])
                    << QString(row.name) << reader
                    << QString(row.seen[reader]);
    }
    void everyReaderReadsWhatItCan()
    {
        QFETCH(QString, entry);
        QFETCH(int, reader);
        QFETCH(QString, expected);
        if (unreadableAsRoot(entry))
            QSKIP("root reads any file");
        GameWindow g(0, 0);
        const QString name = QStringList{MatchFile, PhraseFile, config::FileName, MatchFile, "HowToPlayTandrel.rtf"}[reader];
        makeFile(entry, g.fake.path(name));
        // A FIFO or a device has no bytes of its own to compare (reading them would wait or never end).
        const bool special = entry == QLatin1String("fifo") || entry == QLatin1String("link-to-dev-zero");
        const QByteArray before = special ? QByteArray() : g.fake.fileBytes(name);
        QString result;
        if (reader < 2) {
            g.play(reader ? "S" : "s");
            result = QString::number(g.deck(reader).size());
            QVERIFY2(!g.question(reader).contains(QChar(0xFEFF)), "a byte order mark reached a question");
        } else if (reader == 2) {
            g.w().readInConfigFile();
        } else if (reader == 3) {
            QString text = platform::decodeText(before);
            text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
            const QString inBox = openEditor(g.w(), true)->ui()->rtb1->toPlainText();
            QCOMPARE(inBox, g.shown.isEmpty() ? text : QString());
            result = QStringLiteral("shown");
        } else {
            g.ui()->clkHowToPlay->click();
            auto *viewer = qobject_cast<frmHowTo *>(platform::loadedWindow(QStringLiteral("frmHowTo")));
            if (viewer)
                QVERIFY(g.shown.isEmpty() ? viewer->ui()->rtb1->toPlainText().size() <= before.size() + 1
                                          : viewer->ui()->rtb1->toPlainText().isEmpty());
            result = QStringLiteral("shown");
        }
        QCOMPARE(g.shown.value(0, result), expected);
        if (!special)
            QCOMPARE(g.fake.fileBytes(name), before);
        if (entry == QLatin1String("40000-lines") && reader == 0) {  // a full deck steps round without overflow
            g.play("p");
            QCOMPARE(g.status(false), QStringLiteral("Viewing Match 32766 of 32766 Matches..."));
            g.play("n");
            QCOMPARE(g.status(false), QStringLiteral("Viewing Match 1 of 32766 Matches..."));
        }
    }
};

TANDREL_TEST_MAIN(TestBadInput)
#include "tst_badinput.moc"
