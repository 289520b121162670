// Damaged, foreign, huge and unreadable files given to every reader of
// hand-edited text: what the host sees, and that the file is left as it was.
#include "GameWindow.h"
#include "EditorWindows.h"
#include "TestMain.h"
#include "files/ConfigFile.h"
#include "platform/TextFiles.h"
#include "shell/frmHowTo.h"
#include "ui_frmEditQuestions.h"
#include "ui_frmHowTo.h"
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {
// Makes the catalogue's entry under that name: a file of tests/badinput, or one made here.
void makeFile(const FakePlatform &fake, const QString &entry, const QString &name)
{
    const QString path = fake.path(name);
    if (entry == "50MB-random") {
        QByteArray bytes(50 << 20, '\0');
        std::generate_n(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4, std::mt19937(20261123));
        fake.writeFile(name, bytes);
    } else if (entry.startsWith("one-"))
        fake.writeFile(name, "Blank " + QByteArray(entry == "one-10MB-line" ? 10 << 20 : 25000, 'x') + "\r\n");
    else if (entry == "40000-lines")
        fake.writeFile(name, questionFile(questionLines(40000, false)));
    else if (entry == "symlink-loop" || entry == "link-to-dev-zero")
        QVERIFY(QFile::link(entry == "symlink-loop" ? path : "/dev/zero", path));
    else if (entry == "fifo" || entry == "directory")
        QCOMPARE((entry == "fifo" ? ::mkfifo : ::mkdir)(QFile::encodeName(path).constData(), 0700), 0);
    else if (entry == "no-read-permission")
        QFile::setPermissions(fake.writeFile(name, "Shoe Blank\r\n"), QFileDevice::WriteOwner);
    else
        QVERIFY(QFile::copy(TANDREL_SOURCE_DIR "/tests/badinput/" + entry + ".txt", path));
}

// What each reader (match deck, phrase deck, configuration, editor, rules) shows of each entry (README's table).
struct Entry { const char *name, *seen[5]; };
const Entry Catalogue[] = {
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
    {"no-read-permission", {"clkStart_Click 70", "clkStartPhrase_Click 70", "readInConfigFile 70", "loadTandrelLines 70", "Form_Load frmHowTo 70"}},
};

// A catalogue's entry given to one reader, and what the host sees first: a message, the deck's size, or "shown".
struct Row { QString entry; int reader; QString expected; };
}  // namespace

class TestBadInput : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void everyReaderReadsWhatItCan_data()
    {
        QTest::addColumn<Row>("row");
        const char *readers[] = {"match deck", "phrase deck", "configuration", "editor", "rules"};
        for (const Entry &e : Catalogue)
            for (int reader = 0; reader < 5; ++reader)
                QTest::addRow("%s, %s", e.name, readers[reader]) << Row{e.name, reader, e.seen[reader]};
    }
    void everyReaderReadsWhatItCan()
    {
        QFETCH(Row, row);
        const auto &[entry, reader, expected] = row;
        if (entry == "no-read-permission" && geteuid() == 0)
            QSKIP("root reads any file");
        GameWindow g(0, 0);
        const QString name = QStringList{MatchFile, PhraseFile, config::FileName, MatchFile, "HowToPlayTandrel.rtf"}[reader];
        makeFile(g.fake, entry, name);
        // A FIFO or a device has no bytes of its own to compare (reading them would wait or never end).
        const bool special = entry == "fifo" || entry == "link-to-dev-zero";
        const QByteArray before = special ? QByteArray() : g.fake.fileBytes(name);
        QString result = reader > 2 ? "shown" : "";  // the editor or the viewer opened without a message
        if (reader < 2) {
            g.play(reader ? "S" : "s");
            result = QString::number(g.deck(reader).size());
            QVERIFY2(!g.question(reader).contains(QChar(0xFEFF)), "a byte order mark reached a question");
        } else if (reader == 2) {
            g.w().readInConfigFile();
        } else if (reader == 3) {
            const QString text = platform::decodeText(before).replace("\r\n", "\n").replace('\r', '\n');
            QCOMPARE(openEditor(g.w(), true)->ui()->rtb1->toPlainText(), expected == "shown" ? text : QString());
        } else {
            g.ui()->clkHowToPlay->click();
            if (auto *viewer = qobject_cast<frmHowTo *>(platform::loadedWindow("frmHowTo")))
                QVERIFY(viewer->ui()->rtb1->toPlainText().size() <= (g.shown.isEmpty() ? before.size() + 1 : 0));
        }
        QCOMPARE(g.shown.value(0, result), expected);
        QCOMPARE(special ? QByteArray() : g.fake.fileBytes(name), before);
    }
};

TANDREL_TEST_MAIN(TestBadInput)
#include "tst_badinput.moc"
