// Scores, the turn and the end of a game, and both question tabs: one code
// with the words and the few differences of each tab.
#include "core/Decks.h"
#include "platform/Globals.h"
#include "platform/Numeric.h"
#include "platform/Services.h"
#include "shell/frmAudience.h"
#include "shell/frmTandrel.h"
#include "shell/frmWin.h"
#include "timing/Countdown.h"
#include "ui_frmTandrel.h"
#include <QScopeGuard>

using Globals::Guard;
using Globals::Guarded;
using game::Direction;

struct frmTandrel::TabWords {
    questions::Kind kind;
    const char *start, *next, *prev;  // the handlers' names, for reports
    QString fileName;
    QString startOver;  // asked while a game of the tab is under way
    QString status;     // %1 of %2
    // What the labels show of an entry.
    QStringList (*texts)(const QString &entry);
};

const frmTandrel::TabWords frmTandrel::MatchWords{
    questions::Kind::Match,
    "clkStart_Click",
    "clkNext_Click",
    "clkPrev_Click",
    decks::MatchFileName,
    QStringLiteral("A Tandrel Game is already in Progress, Start Over?"),
    QStringLiteral("Viewing Match %1 of %2 Matches..."),
    [](const QString &entry) {
        const questions::MatchHalves halves = questions::splitMatch(entry);
        return QStringList{halves.left + QStringLiteral("\r\n"), halves.right + QStringLiteral("\r\n")};
    },
};

const frmTandrel::TabWords frmTandrel::PhraseWords{
    questions::Kind::Phrase,
    "clkStartPhrase_Click",
    "clkNextPhrase_Click",
    "clkPrevPhrase_Click",
    decks::PhraseFileName,
    QStringLiteral("A Match Phrase Game is already in Progress, Start Over?"),
    QStringLiteral("Viewing Phrase %1 of %2 Phrases..."),
    [](const QString &entry) { return QStringList{entry + QStringLiteral("      ")}; },
};

void frmTandrel::connectGame()
{
    for (int i = 0; i < 10; ++i) {
        connect(clkUp[size_t(i)], &QAbstractButton::clicked, this, [this, i] { clkUp_Click(qint16(i)); });
        connect(clkDown[size_t(i)], &QAbstractButton::clicked, this, [this, i] { clkDown_Click(qint16(i)); });
        connect(txtPlayer[size_t(i)], &QLineEdit::textChanged, this,
                [this, i](const QString &name) { m_game.setName(i, name); });
        // The room sees a name once the host has finished typing it.
        connect(txtPlayer[size_t(i)], &QLineEdit::editingFinished, this, [this, i] {
            const bool renamed = m_game.finishedName(i) != m_game.name(i);
            m_game.finishName(i);
            paintAudience();
            if (renamed)
                keepGame();
        });
    }
    const std::pair<QAbstractButton *, void (frmTandrel::*)()> tabButtons[] = {
        {m_ui->clkStart, &frmTandrel::clkStart_Click},
        {m_ui->clkNext, &frmTandrel::clkNext_Click},
        {m_ui->clkPrev, &frmTandrel::clkPrev_Click},
        {m_ui->clkExit, &frmTandrel::clkExit_Click},
        {m_ui->clkStartPhrase, &frmTandrel::clkStartPhrase_Click},
        {m_ui->clkNextPhrase, &frmTandrel::clkNextPhrase_Click},
        {m_ui->clkPrevPhrase, &frmTandrel::clkPrevPhrase_Click},
        {m_ui->clkExitPhrase, &frmTandrel::clkExitPhrase_Click},
    };
    for (const auto &[button, handler] : tabButtons)
        connect(button, &QAbstractButton::clicked, this, handler);
}

void frmTandrel::paintRow(int row, bool current)
{
    const QRgb rgb = current ? HighlightColour : PlainColour;
    if (m_rowColour[size_t(row)] == rgb)
        return;  // restyling is not free and happens on every turn
    m_rowColour[size_t(row)] = rgb;
    const QString css = QStringLiteral("QLineEdit { background-color: %1; color: black; }").arg(QColor(rgb).name());
    txtPlayer[size_t(row)]->setStyleSheet(css);
    txtCounter[size_t(row)]->setStyleSheet(css);
    // The turn is told in words too, not only by the colour.
    txtPlayer[size_t(row)]->setAccessibleName(QStringLiteral("Player %1 name").arg(row + 1)
                                              + (current ? QStringLiteral(", their turn") : QString()));
}

void frmTandrel::paintPlayers()
{
    for (int i = 0; i < 10; ++i) {
        const QString score = QString::number(m_game.score(i));
        if (txtCounter[size_t(i)]->text() != score)
            txtCounter[size_t(i)]->setText(score);
        paintRow(i, i == m_game.currentPlayer());
    }
    m_ui->clkRound->setText(roundCaption());
    paintAudience();
}

QString frmTandrel::roundCaption() const
{
    return QStringLiteral("Round ") + QString::number(m_game.round());
}

QString frmTandrel::statusCaption(const Tab &tab) const
{
    const game::Deck &deck = m_game.deck(tab.words->kind);
    return tab.words->status.arg(deck.position()).arg(deck.size());
}

audience::View frmTandrel::audienceView() const
{
    audience::Moment moment;
    moment.kind = m_tabs[size_t(m_ui->SSTab1->currentIndex())].words->kind;
    moment.timerOn = m_countdown->isOn();
    moment.count = m_countdown->display();
    moment.length = m_countdown->length();
    moment.ending = m_endShown;
    moment.scoreboard = m_scoreboard;
    return audience::viewOf(m_game, moment);
}

void frmTandrel::paintAudience()
{
    if (m_audience)
        m_audience->showView(audienceView());
}

void frmTandrel::clkUp_Click(qint16 index)
{
    Guarded("clkUp_Click", [&] {
        if (m_game.scoreUp(index))
            paintPlayers();
    });
}

void frmTandrel::clkDown_Click(qint16 index)
{
    Guarded("clkDown_Click", [&] {
        if (m_game.scoreDown(index))
            paintPlayers();
    });
}

void frmTandrel::ChangePlayer(Direction direction)
{
    Guarded("ChangePlayer", [&] { m_game.changePlayer(direction, *this); });
}

game::Answer frmTandrel::showEndOfGame(const game::TurnChange &change)
{
    QStringList names;
    for (int w : change.winners)
        names.append(m_game.name(w));
    frmWin dialog(Tag, this);
    dialog.Form_Load();
    m_endShown = &change;
    const auto shownNoMore = qScopeGuard([this] {
        m_endShown = nullptr;
        paintAudience();
    });
    paintAudience();
    dialog.showMessage(change.won() ? game::winnerMessage(names.first(), change.best)
                                    : game::tieMessage(names, change.best),
                       change.tied());
    platform::dialogs().execModal(dialog);
    if (change.won())
        return game::Answer::Close;
    // The dialog hands its answer back through the Tag; one left without
    // an answer cannot be read and stops the turn change.
    const qint16 answer = platform::toInt16(Tag);
    Tag.clear();
    return answer == platform::mb::No ? game::Answer::No : game::Answer::Yes;
}

bool frmTandrel::tabShown(int index)
{
    return m_game.deck(m_tabs[size_t(index)].words->kind).shown();
}

void frmTandrel::showQuestion(questions::Kind kind)
{
    Tab &tab = tabOf(kind);
    m_scoreboard = false;
    tab.status->setText(statusCaption(tab));
    const QStringList texts = tab.words->texts(m_game.deck(kind).current());
    for (qsizetype i = 0; i < texts.size(); ++i) {
        tab.labels[i]->setText(texts[i]);
        fitText(tab.labels[i]);
    }
    paintAudience();
}

bool frmTandrel::questionFileFound(questions::Kind kind)
{
    return decks::CheckQuestionFile(platform::programPath(tabOf(kind).words->fileName));
}

bool frmTandrel::askStartOver(questions::Kind kind)
{
    return platform::msgBox(tabOf(kind).words->startOver, platform::mb::YesNoCancel, QStringLiteral("Start New Game"))
           == platform::mb::Yes;
}

std::optional<QStringList> frmTandrel::readDeck(questions::Kind kind)
{
    return decks::LoadDeck(kind, platform::programPath(tabOf(kind).words->fileName));
}

void frmTandrel::showReloading(bool reloading)
{
    if (reloading)
        setWindowTitle(platform::app().exeName() + QStringLiteral(" is reloading and randomly sorting Tandrels..."));
    else
        setProgramTitle();
}

void frmTandrel::runStart(questions::Kind kind)
{
    startTab(tabOf(kind));
}

void frmTandrel::runNext(questions::Kind kind)
{
    nextTab(tabOf(kind));
}

void frmTandrel::startTab(Tab &tab)
{
    Guard guard(tab.words->start);
    guard.afterReport = [this] { setProgramTitle(); };
    Guarded(guard, [&] { m_game.start(tab.words->kind, *this); });
}

void frmTandrel::nextTab(Tab &tab)
{
    Guarded(tab.words->next, [&] {
        if (m_game.next(tab.words->kind, *this) == game::Outcome::Shown)
            tab.next->setFocus();
    });
}

void frmTandrel::prevTab(Tab &tab)
{
    Guarded(tab.words->prev, [&] {
        if (m_game.previous(tab.words->kind, *this) == game::Outcome::Shown)
            tab.prev->setFocus();
    });
}

void frmTandrel::clkStart_Click()
{
    startTab(m_tabs[0]);
}

void frmTandrel::clkNext_Click()
{
    nextTab(m_tabs[0]);
}

void frmTandrel::clkPrev_Click()
{
    prevTab(m_tabs[0]);
}

void frmTandrel::clkExit_Click()
{
    Guarded("clkExit_Click", [&] { close(); });
}

void frmTandrel::clkStartPhrase_Click()
{
    startTab(m_tabs[1]);
}

void frmTandrel::clkNextPhrase_Click()
{
    nextTab(m_tabs[1]);
}

void frmTandrel::clkPrevPhrase_Click()
{
    prevTab(m_tabs[1]);
}

void frmTandrel::clkExitPhrase_Click()
{
    Guarded("clkExitPhrase_Click", [&] { close(); });
}
