// The player panel: the two lists, giving the turn, and paging with
// PageUp/PageDown from whatever control has the focus.
#include "GameWindow.h"
#include "TestMain.h"
#include <QScrollBar>
#include <QTabBar>
#include <QWheelEvent>

class TestPlayerPanel : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void pagingFromEveryControl_data();
    void pagingFromEveryControl();
    void pagingWithoutAQuestionDoesNothing();
    void listKeysNeverChangeTheValue_data();
    void listKeysNeverChangeTheValue();
    void countShowsAndHidesWholeRows();
    void doubleClickGivesTheTurn();
    void wheelOverAListChangesNothing();
};

void TestPlayerPanel::pagingFromEveryControl_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("tab");
    const QStringList controls = {
        "clkAbout", "clkConfig", "clkContact", "clkDonate", "clkEdit", "clkHowToPlay", "clkUpdate", "clkRound",
        "OptTimer_0", "OptTimer_1", "txtTimer", "optSound_0", "optSound_1", "hsc1", "SSTab1", "cmbNumPlayers",
        "cmbScoreToWin", "txtPlayer_0", "txtPlayer_1", "txtCounter_1", "clkUp_0", "clkDown_1"};
    for (int tab = 0; tab < 2; ++tab) {
        for (const QString &c : controls)
            QTest::addRow("%s, tab %d", qPrintable(c), tab) << c << tab;
        const QStringList own = tab == 0 ? QStringList{"clkStart", "clkNext", "clkPrev", "clkExit"}
                                         : QStringList{"clkStartPhrase", "clkNextPhrase", "clkPrevPhrase", "clkExitPhrase"};
        for (const QString &c : own)
            QTest::addRow("%s, tab %d", qPrintable(c), tab) << c << tab;
    }
}

void TestPlayerPanel::pagingFromEveryControl()
{
    QFETCH(QString, control);
    QFETCH(int, tab);
    GameWindow g;
    g.setPlayers(3);
    g.ui()->SSTab1->setCurrentIndex(tab);
    QWidget *target = g.w().findChild<QWidget *>(control);
    QVERIFY(target);
    if (auto *tabs = qobject_cast<QTabWidget *>(target))
        target = tabs->tabBar();
    const QString name = g.w().txtPlayer[0]->text();
    const QString count = g.ui()->cmbNumPlayers->currentText();
    const QString toWin = g.ui()->cmbScoreToWin->currentText();
    const int volume = g.ui()->hsc1->value();
    qint16 &index = tab == 0 ? g.w().MatchIndex : g.w().PhraseIndex;
    const qint16 &other = tab == 0 ? g.w().PhraseIndex : g.w().MatchIndex;

    QTest::keyClick(target, Qt::Key_PageDown);
    QCOMPARE(index, qint16(2));  // one step, not two
    QCOMPARE(other, qint16(1));  // the tab behind stays
    QCOMPARE(g.w().CurrentPlayer, qint16(1));
    QTest::keyClick(target, Qt::Key_PageUp);
    QTest::keyClick(target, Qt::Key_PageUp);
    QCOMPARE(index, qint16(6));  // wrapped to the last
    QCOMPARE(g.w().CurrentPlayer, qint16(2));
    QCOMPARE(g.round(), QStringLiteral("Round 1"));

    // The control itself is left as it was.
    QCOMPARE(g.w().txtPlayer[0]->text(), name);
    QCOMPARE(g.ui()->cmbNumPlayers->currentText(), count);
    QCOMPARE(g.ui()->cmbScoreToWin->currentText(), toWin);
    QCOMPARE(g.ui()->hsc1->value(), volume);
    QCOMPARE(g.ui()->SSTab1->currentIndex(), tab);
    QVERIFY(g.fake.boxes.isEmpty());
}

void TestPlayerPanel::pagingWithoutAQuestionDoesNothing()
{
    GameWindow g(0, 6);  // only phrases: the match tab shows nothing
    g.ui()->SSTab1->setCurrentIndex(0);
    QTest::keyClick(g.w().txtPlayer[0], Qt::Key_PageDown);
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.w().PhraseIndex, qint16(1));
    QVERIFY(g.fake.boxes.isEmpty());
}

void TestPlayerPanel::listKeysNeverChangeTheValue_data()
{
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("start");
    const QList<std::pair<const char *, int>> keys = {
        {"Down", Qt::Key_Down}, {"Up", Qt::Key_Up},     {"Right", Qt::Key_Right}, {"Left", Qt::Key_Left},
        {"Home", Qt::Key_Home}, {"End", Qt::Key_End},   {"digit", Qt::Key_5},     {"PageDown", Qt::Key_PageDown}};
    for (const auto &[name, key] : keys) {
        QTest::addRow("players, %s", name) << "cmbNumPlayers" << key << "4";
        QTest::addRow("to win, %s", name) << "cmbScoreToWin" << key << "15";
    }
    // A key at the end of the list changes nothing and leaves no undo behind.
    QTest::newRow("players, Up on the first") << "cmbNumPlayers" << int(Qt::Key_Up) << "2";
    QTest::newRow("to win, Down on the last") << "cmbScoreToWin" << int(Qt::Key_Down) << "30";
}

void TestPlayerPanel::listKeysNeverChangeTheValue()
{
    QFETCH(QString, list);
    QFETCH(int, key);
    QFETCH(QString, start);
    GameWindow g;
    auto *combo = g.w().findChild<QComboBox *>(list);
    combo->setCurrentText(start);
    g.setScore(3, 7);

    QTest::keyClick(combo, Qt::Key(key));
    QCOMPARE(combo->currentText(), start);
    QVERIFY(!g.w().NumPlayersKeyed && !g.w().NumPlayersRestoring);
    QVERIFY(!g.w().ScoreToWinKeyed && !g.w().ScoreToWinRestoring);

    // The next choice by the mouse is taken as it is.
    combo->setCurrentText(QStringLiteral("5"));
    QCOMPARE(combo->currentText(), QStringLiteral("5"));
    if (list == QLatin1String("cmbNumPlayers")) {
        QVERIFY(g.w().txtCounter[4]->isVisibleTo(&g.w()));
        QVERIFY(!g.w().txtCounter[5]->isVisibleTo(&g.w()));
    }
    QVERIFY(g.fake.boxes.isEmpty());
}

void TestPlayerPanel::countShowsAndHidesWholeRows()
{
    GameWindow g;
    g.setPlayers(4);
    g.w().txtPlayer[3]->setText(QStringLiteral("Dee"));
    g.setScore(3, 6);
    g.ui()->clkNext->click();
    g.ui()->clkNext->click();
    g.ui()->clkNext->click();
    g.ui()->clkNext->click();  // round 2, row 0
    g.ui()->clkNext->click();  // row 1
    g.setPlayers(2);
    auto rowShown = [&](int i) {
        QList<bool> parts;
        for (QWidget *w : {static_cast<QWidget *>(g.w().txtPlayer[size_t(i)]),
                           static_cast<QWidget *>(g.w().txtCounter[size_t(i)]),
                           static_cast<QWidget *>(g.w().clkUp[size_t(i)]),
                           static_cast<QWidget *>(g.w().clkDown[size_t(i)])})
            parts << w->isVisibleTo(&g.w());
        return parts;
    };
    for (int i = 0; i < 10; ++i)
        QCOMPARE(rowShown(i), QList<bool>(4, i < 2));
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.highlightedRow(), 0);
    QCOMPARE(g.round(), QStringLiteral("Round 2"));

    // Grown again: the hidden row comes back as it was.
    g.setPlayers(4);
    QCOMPARE(rowShown(3), QList<bool>(4, true));
    QCOMPARE(g.w().txtPlayer[3]->text(), QStringLiteral("Dee"));
    QCOMPARE(g.score(3), QStringLiteral("6"));
    QCOMPARE(g.score(2), QStringLiteral("0"));
}

void TestPlayerPanel::doubleClickGivesTheTurn()
{
    GameWindow g;
    g.setPlayers(5);
    for (int i = 0; i < 5; ++i)
        g.ui()->clkNext->click();  // round 2
    QTest::mouseDClick(g.w().txtPlayer[3], Qt::LeftButton);
    QCOMPARE(g.w().CurrentPlayer, qint16(3));
    QCOMPARE(g.highlightedRow(), 3);
    g.ui()->clkNextPhrase->click();
    QCOMPARE(g.w().CurrentPlayer, qint16(4));
    QCOMPARE(g.round(), QStringLiteral("Round 2"));

    // From the last player the next turn ends the round.
    QTest::mouseDClick(g.w().txtPlayer[4], Qt::LeftButton);
    g.ui()->clkNext->click();
    QCOMPARE(g.w().CurrentPlayer, qint16(0));
    QCOMPARE(g.round(), QStringLiteral("Round 3"));
}

void TestPlayerPanel::wheelOverAListChangesNothing()
{
    GameWindow g;
    QComboBox *combo = g.ui()->cmbNumPlayers;
    const QPointF at(combo->width() / 2.0, combo->height() / 2.0);
    QWheelEvent wheel(at, combo->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    QCOMPARE(combo->currentText(), QStringLiteral("2"));
}

TANDREL_TEST_MAIN(TestPlayerPanel)
#include "tst_playerpanel.moc"
