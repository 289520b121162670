// Both question tabs: starting over, a start that cannot go on, and stepping
// through the deck in both directions.
#include "GameWindow.h"
#include "TestMain.h"
#include <QFile>
#include <QLabel>

namespace {
struct Tab {
    QAbstractButton *start, *next, *prev;
    QAbstractButton *status;
    qint16 *index;
    QStringList *deck;
};

Tab tabOf(GameWindow &g, bool phrase)
{
    if (phrase)
        return {g.ui()->clkStartPhrase, g.ui()->clkNextPhrase, g.ui()->clkPrevPhrase, g.ui()->clkStatusPhrase,
                &g.w().PhraseIndex, &g.w().PhraseDeck};
    return {g.ui()->clkStart, g.ui()->clkNext, g.ui()->clkPrev, g.ui()->clkStatusMatch, &g.w().MatchIndex,
            &g.w().MatchDeck};
}

QString shown(GameWindow &g, bool phrase)
{
    return phrase ? g.phraseShown() : g.matchShown();
}

void addPhraseColumn()
{
    QTest::addColumn<bool>("phrase");
}
}  // namespace

class TestRounds : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void startOverQuestion_data();
    void startOverQuestion();
    void startWhenTheFileIsGone_data();
    void startWhenTheFileIsGone();
    void startWhenTheFileHasNoQuestions_data();
    void startWhenTheFileHasNoQuestions();
    void deckWrapsBothWays_data();
    void deckWrapsBothWays();
    void deckOfOneEntry_data();
    void deckOfOneEntry();
    void longQuestionsFitTheirLabels();
    void exitButtonsAsk_data();
    void exitButtonsAsk();
};

void TestRounds::startOverQuestion_data()
{
    addPhraseColumn();
    QTest::addColumn<int>("answer");
    for (bool phrase : {false, true})
        for (int answer : {6, 7, 2})
            QTest::addRow("%s, answer %d", phrase ? "phrase" : "match", answer) << phrase << answer;
}

void TestRounds::startOverQuestion()
{
    QFETCH(bool, phrase);
    QFETCH(int, answer);
    GameWindow g;
    Tab t = tabOf(g, phrase);
    g.w().selectOption(g.w().OptTimer[0]);
    t.next->click();
    t.next->click();
    t.next->click();
    g.setScore(1, 3);
    g.w().TimerTime = 30;
    g.w().CheckTimer();
    g.w().Timer1_Timer();  // the count is at 29
    const QString before = shown(g, phrase);
    const qint16 index = *t.index;
    g.fake.answers = {answer};

    t.start->click();
    QCOMPARE(g.fake.boxes.size(), 1);
    QCOMPARE(g.fake.boxes[0].text, phrase ? QStringLiteral("A Match Phrase Game is already in Progress, Start Over?")
                                          : QStringLiteral("A Tandrel Game is already in Progress, Start Over?"));
    QCOMPARE(g.fake.boxes[0].title, QStringLiteral("Start New Game"));
    QCOMPARE(g.fake.boxes[0].style, 3);
    if (answer == 6) {
        QCOMPARE(g.score(1), QStringLiteral("0"));
        QCOMPARE(g.round(), QStringLiteral("Round 1"));
        QCOMPARE(g.w().CurrentPlayer, qint16(0));
        QCOMPARE(*t.index, qint16(1));
        QCOMPARE(g.ui()->txtTimer->text(), QStringLiteral("30"));
        return;
    }
    // Declined: nothing changed, but the match tab restarted the count first.
    QCOMPARE(g.score(1), QStringLiteral("3"));
    QCOMPARE(g.round(), QStringLiteral("Round 2"));
    QCOMPARE(g.w().CurrentPlayer, qint16(1));
    QCOMPARE(*t.index, index);
    QCOMPARE(shown(g, phrase), before);
    QCOMPARE(g.ui()->txtTimer->text(), phrase ? QStringLiteral("29") : QStringLiteral("30"));
}

void TestRounds::startWhenTheFileIsGone_data()
{
    addPhraseColumn();
    QTest::newRow("match") << false;
    QTest::newRow("phrase") << true;
}

void TestRounds::startWhenTheFileIsGone()
{
    QFETCH(bool, phrase);
    GameWindow g;
    Tab t = tabOf(g, phrase);
    t.next->click();
    const QString before = shown(g, phrase);
    const QString name = phrase ? QStringLiteral("TandrelPhrases.txt") : QStringLiteral("TandrelLines.txt");
    QVERIFY(QFile::remove(g.fake.path(name)));
    t.start->click();
    QCOMPARE(g.fake.boxTitles(), QStringList{"File Does Not Exist"});
    QVERIFY(g.fake.boxes[0].text.startsWith(QStringLiteral("File ") + g.fake.dir + QLatin1Char('/') + name));
    QCOMPARE(shown(g, phrase), before);
    QCOMPARE(t.deck->size(), 6);
    QCOMPARE(*t.index, qint16(2));
    QCOMPARE(g.round(), QStringLiteral("Round 1"));
    QCOMPARE(g.w().CurrentPlayer, qint16(1));
}

void TestRounds::startWhenTheFileHasNoQuestions_data()
{
    startWhenTheFileIsGone_data();
}

void TestRounds::startWhenTheFileHasNoQuestions()
{
    QFETCH(bool, phrase);
    GameWindow g;
    Tab t = tabOf(g, phrase);
    t.next->click();
    t.next->click();  // round 2
    g.setScore(0, 4);
    const QString before = shown(g, phrase);
    g.fake.writeFile(phrase ? QStringLiteral("TandrelPhrases.txt") : QStringLiteral("TandrelLines.txt"),
                     questionFile({"// only comments", "   "}));
    g.fake.answers = {6};
    t.start->click();
    QCOMPARE(g.fake.boxTitles(), (QStringList{"Start New Game", "Exiting File Load"}));
    // The players start afresh; the old deck and question stay.
    QCOMPARE(g.score(0), QStringLiteral("0"));
    QCOMPARE(g.round(), QStringLiteral("Round 1"));
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(shown(g, phrase), before);
    QCOMPARE(t.deck->size(), 6);
    QCOMPARE(g.w().windowTitle(), QStringLiteral("Tandrel"));
}

void TestRounds::deckWrapsBothWays_data()
{
    startWhenTheFileIsGone_data();
}

void TestRounds::deckWrapsBothWays()
{
    QFETCH(bool, phrase);
    GameWindow g;
    Tab t = tabOf(g, phrase);
    const QString first = shown(g, phrase);
    t.prev->click();
    QCOMPARE(*t.index, qint16(6));
    QCOMPARE(t.status->text(), phrase ? QStringLiteral("Viewing Phrase 6 of 6 Phrases...")
                                      : QStringLiteral("Viewing Match 6 of 6 Matches..."));
    QVERIFY(shown(g, phrase) != first);
    t.next->click();
    QCOMPARE(*t.index, qint16(1));
    QCOMPARE(shown(g, phrase), first);
    QCOMPARE(g.w().focusWidget(), t.next);

    // Every entry of the deck comes round once.
    QStringList seen;
    for (int i = 0; i < 6; ++i) {
        seen << shown(g, phrase);
        t.next->click();
    }
    seen.removeDuplicates();
    QCOMPARE(seen.size(), 6);
}

void TestRounds::deckOfOneEntry_data()
{
    startWhenTheFileIsGone_data();
}

void TestRounds::deckOfOneEntry()
{
    QFETCH(bool, phrase);
    GameWindow g(1, 1);
    Tab t = tabOf(g, phrase);
    g.w().selectOption(g.w().OptTimer[0]);
    g.w().TimerTime = 20;
    const QString status = t.status->text();
    t.next->click();
    QCOMPARE(t.status->text(), status);
    QVERIFY(status.contains(QStringLiteral(" 1 of 1 ")));
    QCOMPARE(g.w().CurrentPlayer, qint16(1));
    QCOMPARE(g.ui()->txtTimer->text(), QStringLiteral("20"));
    t.prev->click();
    QCOMPARE(t.status->text(), status);
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
}

void TestRounds::longQuestionsFitTheirLabels()
{
    GameWindow g;
    QString phrase = QStringLiteral("The Blank");
    while (phrase.size() < 900)
        phrase += QStringLiteral(" lantern harbor");
    g.fake.writeFile(QStringLiteral("TandrelPhrases.txt"), questionFile({phrase}));
    g.fake.writeFile(QStringLiteral("TandrelLines.txt"),
                     questionFile({"Supercalifragilisticexpialidociousness Blank", "A Long Line Written By A Host Who "
                                                                                     "Likes Words Very Much Blank"}));
    g.fake.answers = {6, 6};
    g.ui()->clkStart->click();
    g.ui()->clkStartPhrase->click();
    for (int i = 0; i < 2; ++i) {
        for (QLabel *label : {g.w().lblName[0], g.w().lblName[1], g.ui()->lblPhrase}) {
            const QRect room = label->contentsRect();
            const QRect need = label->fontMetrics().boundingRect(room, Qt::TextWordWrap | Qt::AlignCenter,
                                                                 label->text().trimmed());
            QVERIFY2(need.width() <= room.width() && need.height() <= room.height(), qPrintable(label->text()));
            QVERIFY(label->font().pointSizeF() >= 8);
        }
        g.ui()->clkNext->click();
    }
}

void TestRounds::exitButtonsAsk_data()
{
    startWhenTheFileIsGone_data();
}

void TestRounds::exitButtonsAsk()
{
    QFETCH(bool, phrase);
    GameWindow g;
    g.w().show();
    g.w().selectOption(g.w().OptTimer[0]);
    g.ui()->SSTab1->setCurrentIndex(phrase ? 1 : 0);
    g.ui()->clkNext->click();
    QVERIFY(g.w().Timer1->isActive());
    g.fake.answers = {7};
    (phrase ? g.ui()->clkExitPhrase : g.ui()->clkExit)->click();
    QCOMPARE(g.fake.boxTitles(), QStringList{"Exit Program?"});
    QVERIFY(g.w().isVisible());
    QVERIFY(g.w().Timer1->isActive());  // a running count goes on
}

TANDREL_TEST_MAIN(TestRounds)
#include "tst_rounds.moc"
