// Question files into decks: messages, bad input, the shuffle.
#include "FakePlatform.h"
#include "TestMain.h"
#include "core/Decks.h"
#include "platform/Errors.h"
#include "platform/Globals.h"
#include <QDir>
#include <QFile>
#include <random>
#include <unistd.h>

using questions::Kind;

namespace {
const QString U19 = questions::MatchBlank;

QByteArray randomBytes(qsizetype size, unsigned seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::mt19937 gen(seed);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = char(gen() & 0xFF);
    return bytes;
}
}  // namespace

class TestDecks : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void missingFileGivesItsMessage();
    void nameMatchesInAnyLetterCase();
    void fileWithoutQuestionsGivesItsMessage_data();
    void fileWithoutQuestionsGivesItsMessage();
    void unreadableFileIsTheCallersFailure_data();
    void unreadableFileIsTheCallersFailure();
    void deckIsAShuffleOfTheAcceptedLines();
    void shuffleFollowsTheGenerator();
    void shippedFilesLoseNoLine_data();
    void shippedFilesLoseNoLine();
};

void TestDecks::missingFileGivesItsMessage()
{
    FakePlatform fake;
    const QString path = fake.path("TandrelLines.txt");
    QVERIFY(!decks::CheckQuestionFile(path));
    QCOMPARE(fake.boxes.size(), 1);
    QCOMPARE(fake.boxes[0].title, QStringLiteral("File Does Not Exist"));
    QCOMPARE(fake.boxes[0].style, 64);
    QCOMPARE(fake.boxes[0].text,
             "File " + path + " does not exist, please create it from the Config menu item, or \r\n"
             "performing an Update from the About menu pulldown will retrieve this file from the internet.\r\n\r\n");
}

void TestDecks::nameMatchesInAnyLetterCase()
{
    FakePlatform fake;
    fake.writeFile("TandrelPhrases.txt", "A Blank day\r\n");
    QVERIFY(decks::CheckQuestionFile(fake.path("tandrelPhrases.txt")));
    const auto deck = decks::LoadPhraseDeck(fake.path("tandrelPhrases.txt"));
    QVERIFY(deck);
    QCOMPARE(*deck, QStringList{"A _________ day"});
    QVERIFY(fake.boxes.isEmpty());
}

void TestDecks::fileWithoutQuestionsGivesItsMessage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("comments only") << QByteArray("# Tandrel Match Lines \r\n\r\n# Hot Blank\r\n");
    QTest::newRow("placeholders only") << QByteArray("Blank\r\nBLANK\r\n  blank \r\n");
    QTest::newRow("random bytes") << randomBytes(1 << 20, 7);
}

void TestDecks::fileWithoutQuestionsGivesItsMessage()
{
    QFETCH(QByteArray, bytes);
    FakePlatform fake;
    const QString path = fake.writeFile("TandrelLines.txt", bytes);
    QVERIFY(!decks::LoadMatchDeck(path));
    QCOMPARE(fake.boxes.size(), 1);
    QCOMPARE(fake.boxes[0].title, QStringLiteral("Exiting File Load"));
    QCOMPARE(fake.boxes[0].text, "File " + path + " does not contain any questions.");
    QCOMPARE(fake.boxes[0].style, 64);
}

void TestDecks::unreadableFileIsTheCallersFailure_data()
{
    QTest::addColumn<QString>("setup");
    QTest::addColumn<int>("number");
    QTest::newRow("a folder in its place") << "folder" << 75;
    QTest::newRow("no read permission") << "unreadable" << 70;
    QTest::newRow("vanished after the check") << "vanished" << 53;
}

void TestDecks::unreadableFileIsTheCallersFailure()
{
    QFETCH(QString, setup);
    QFETCH(int, number);
    FakePlatform fake;
    const QString path = fake.path("TandrelLines.txt");
    if (setup == "folder") {
        QVERIFY(QDir(fake.dir).mkdir("TandrelLines.txt"));
    } else if (setup == "unreadable") {
        if (geteuid() == 0)
            QSKIP("root reads every file");
        fake.writeFile("TandrelLines.txt", "Hot Blank\r\n");
        QVERIFY(QFile::setPermissions(path, QFileDevice::WriteOwner));
    }
    std::optional<QStringList> deck = QStringList{"old"};
    Globals::Guarded("clkStart_Click", [&] { deck = decks::LoadMatchDeck(path); });
    QCOMPARE(deck, std::optional<QStringList>(QStringList{"old"}));
    QCOMPARE(fake.boxes.size(), 1);
    QVERIFY2(fake.boxes[0].text.startsWith(
                 QStringLiteral("Current SubRoutine is clkStart_Click\r\nError Number: %1\r\n").arg(number)),
             qPrintable(fake.boxes[0].text));
}

void TestDecks::deckIsAShuffleOfTheAcceptedLines()
{
    FakePlatform fake;
    QByteArray bytes = "# Tandrel Match Lines \r\n\r\n";
    for (int i = 0; i < 200; ++i)
        bytes += "Item" + QByteArray::number(i) + "z Blank\r\n";
    const QString path = fake.writeFile("TandrelLines.txt", bytes);
    const auto deck = decks::LoadMatchDeck(path);
    QVERIFY(deck);
    const QStringList inOrder = decks::ReadEntries(Kind::Match, path);
    QCOMPARE(deck->size(), 200);
    QVERIFY(*deck != inOrder);
    QStringList a = *deck, b = inOrder;
    a.sort();
    b.sort();
    QCOMPARE(a, b);
}

void TestDecks::shuffleFollowsTheGenerator()
{
    FakePlatform fake;
    const QStringList entries{"a", "b", "c", "d"};
    // i = 0: 0.5*3+0 = 1.5 rounds to 2; i = 1: 0.25*2+1 = 1.5 rounds to 2;
    // i = 2: 0.99*1+2 rounds to 3; i = 3: always itself.
    fake.randomValues = {0.5f, 0.25f, 0.99f, 0.0f};
    QCOMPARE(Globals::ShuffleArray(entries), (QStringList{"c", "a", "d", "b"}));
    QCOMPARE(entries, (QStringList{"a", "b", "c", "d"}));
    QCOMPARE(Globals::ShuffleArray(QStringList{"only"}), QStringList{"only"});
}

void TestDecks::shippedFilesLoseNoLine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("atLeast");
    QTest::newRow("match lines") << "TandrelLines.txt" << int(Kind::Match) << 300;
    QTest::newRow("phrases") << "TandrelPhrases.txt" << int(Kind::Phrase) << 100;
}

void TestDecks::shippedFilesLoseNoLine()
{
    QFETCH(QString, name);
    QFETCH(int, kind);
    QFETCH(int, atLeast);
    const QString path = QStringLiteral(TANDREL_SOURCE_DIR "/assets/") + name;
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(!bytes.contains("\n\n") && !bytes.contains("\r\r"));  // CR LF throughout
    int questionLines = 0;
    for (const QByteArray &line : bytes.split('\n'))
        if (!line.trimmed().isEmpty() && !line.startsWith('#'))
            ++questionLines;
    const QStringList entries = decks::ReadEntries(Kind(kind), path);
    QCOMPARE(entries.size(), questionLines);
    QVERIFY(entries.size() >= atLeast);
}

TANDREL_TEST_MAIN(TestDecks)
#include "tst_decks.moc"
