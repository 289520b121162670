// Players, scores, the turn and the rounds, and the end of a game.
#include "core/frmWin.h"
#include "platform/Numeric.h"
#include "platform/Services.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <algorithm>

using Globals::Guarded;
using platform::add16;
using platform::toInt16;

namespace {
const QString CrLf = QStringLiteral("\r\n");
}

void frmTandrel::connectGame()
{
    for (int i = 0; i < 10; ++i) {
        connect(clkUp[size_t(i)], &QAbstractButton::clicked, this, [this, i] { clkUp_Click(qint16(i)); });
        connect(clkDown[size_t(i)], &QAbstractButton::clicked, this, [this, i] { clkDown_Click(qint16(i)); });
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
}

void frmTandrel::paintTurn()
{
    for (int i = 0; i < 10; ++i)
        paintRow(i, false);
    if (CurrentPlayer >= 0 && CurrentPlayer < 10)
        paintRow(CurrentPlayer, true);
}

bool frmTandrel::rowInPlay(int row) const
{
    return !txtCounter[size_t(row)]->isHidden();
}

void frmTandrel::clkUp_Click(qint16 index)
{
    Guarded("clkUp_Click", [&] {
        QLineEdit *score = txtCounter[size_t(index)];
        const qint16 s = toInt16(score->text());
        // Scores are 16-bit numbers: the two decks together count as 32,767
        // at most, so the top score is one a 16-bit number holds.
        const qsizetype total = std::min<qsizetype>(MatchDeck.size() + PhraseDeck.size(), 32767);
        if (s + 1 <= total)
            score->setText(QString::number(add16(s, 1)));
    });
}

void frmTandrel::clkDown_Click(qint16 index)
{
    Guarded("clkDown_Click", [&] {
        QLineEdit *score = txtCounter[size_t(index)];
        const qint16 s = toInt16(score->text());
        if (s - 1 >= 0)
            score->setText(QString::number(s - 1));
    });
}

void frmTandrel::resetForNewGame()
{
    for (QLineEdit *score : txtCounter)
        score->setText(QStringLiteral("0"));
    RoundNumber = 1;
    m_ui->clkRound->setText(QStringLiteral("Round 1"));
    CurrentPlayer = 0;
    paintTurn();
}

void frmTandrel::continueTie(bool otherShown, void (frmTandrel::*otherNext)())
{
    // A tie goes on: the other tab moves on too, and the turn goes to row 0
    // through that tab's turn change.
    if (!AnotherRound)
        return;
    AnotherRound = false;
    CurrentPlayer = -1;
    if (otherShown)
        (this->*otherNext)();
    else
        CurrentPlayer = 0;
    paintTurn();
}

void frmTandrel::stepBack(qint16 &index, qsizetype size, void (frmTandrel::*show)(), QWidget *button)
{
    if (--index == 0)
        index = qint16(size);
    (this->*show)();
    CheckTimer();
    ChangePlayer(QStringLiteral("Negative"));
    button->setFocus();
}

bool frmTandrel::mayStartOver(bool &reload, bool inProgress, const QString &question)
{
    // A game end deals again without asking; the host is asked only while
    // a game of that tab is under way.
    if (reload) {
        setReloadingTitle();
        reload = false;
        return true;
    }
    return !inProgress
           || platform::msgBox(question, platform::mb::YesNoCancel, QStringLiteral("Start New Game")) == platform::mb::Yes;
}

void frmTandrel::startNewGameAfterWin()
{
    ReloadMatches = true;
    ReloadPhrases = true;
    clkStart_Click();
    clkStartPhrase_Click();
    DecksRestarted = true;
}

void frmTandrel::ChangePlayer(const QString &direction)
{
    Guarded("ChangePlayer", [&] {
        const qint16 last = add16(toInt16(m_ui->cmbNumPlayers->currentText()), -1);
        bool roundOver = false;
        if (direction == QLatin1String("Positive")) {
            if (CurrentPlayer != last) {
                CurrentPlayer = add16(CurrentPlayer, 1);
            } else {
                CurrentPlayer = 0;
                RoundNumber = add16(RoundNumber, 1);
                m_ui->clkRound->setText(QStringLiteral("Round ") + QString::number(RoundNumber));
                roundOver = true;
            }
        } else if (direction == QLatin1String("Negative")) {
            CurrentPlayer = CurrentPlayer != 0 ? qint16(CurrentPlayer - 1) : last;
        }

        // Only the end of a round decides a game, and only rows in play count.
        QList<int> winners;
        qint16 best = 0;
        if (roundOver) {
            const qint16 target = toInt16(m_ui->cmbScoreToWin->currentText());
            for (int i = 0; i < 10; ++i)
                if (rowInPlay(i))
                    best = std::max(best, toInt16(txtCounter[size_t(i)]->text()));
            if (best >= target)
                for (int i = 0; i < 10; ++i)
                    if (rowInPlay(i) && toInt16(txtCounter[size_t(i)]->text()) == best)
                        winners.append(i);
        }

        for (int i = 0; i <= last && i < 10; ++i)
            paintRow(i, i == CurrentPlayer);

        if (winners.size() == 1) {
            const int w = winners.first();
            runWinDialog(QStringLiteral("Congratulations...") + CrLf + CrLf + txtPlayer[size_t(w)]->text()
                             + QStringLiteral(" has won the game with a score of ") + txtCounter[size_t(w)]->text() + CrLf
                             + CrLf + QStringLiteral("Nicely Done!"),
                         false);
            startNewGameAfterWin();
        } else if (winners.size() > 1) {
            QStringList names;
            for (int w : winners)
                names.append(txtPlayer[size_t(w)]->text());
            runWinDialog(QStringLiteral("Congratulations...") + CrLf + CrLf + QStringLiteral("Players:") + CrLf + CrLf
                             + names.join(QStringLiteral("  ")) + CrLf + CrLf
                             + QStringLiteral("Have tied with a score of ") + QString::number(best) + CrLf + CrLf
                             + QStringLiteral("Play another round?"),
                         true);
            const qint16 answer = toInt16(Tag);
            Tag.clear();
            if (answer == platform::mb::No)
                startNewGameAfterWin();
            else
                AnotherRound = true;
        }
    });
}

void frmTandrel::runWinDialog(const QString &message, bool tie)
{
    frmWin dialog(Tag, this);
    dialog.Form_Load();
    dialog.showMessage(message, tie);
    platform::dialogs().execModal(dialog);
}
