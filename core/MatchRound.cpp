// The match-line tab: start, next, previous and exit.
#include "core/Decks.h"
#include "platform/Services.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

using Globals::Guard;
using Globals::Guarded;

bool frmTandrel::matchShown() const
{
    return !lblName[0]->text().isEmpty();
}

void frmTandrel::showMatch()
{
    const qsizetype n = MatchDeck.size();
    m_ui->clkStatusMatch->setText(QStringLiteral("Viewing Match %1 of %2 Matches...").arg(MatchIndex).arg(n));
    const questions::MatchHalves halves = questions::splitMatch(MatchDeck.at(MatchIndex - 1));
    lblName[0]->setText(halves.left + QStringLiteral("\r\n"));
    lblName[1]->setText(halves.right + QStringLiteral("\r\n"));
    fitText(lblName[0]);
    fitText(lblName[1]);
}

void frmTandrel::clkStart_Click()
{
    Guard guard("clkStart_Click");
    guard.afterReport = [this] { setProgramTitle(); };
    Guarded(guard, [&] {
        CheckTimer();
        const QString path = platform::programPath(decks::MatchFileName);
        if (!decks::CheckQuestionFile(path))
            return;
        if (!mayStartOver(ReloadMatches, MatchGameInProgress,
                          QStringLiteral("A Tandrel Game is already in Progress, Start Over?")))
            return;
        resetForNewGame();
        const std::optional<QStringList> deck = decks::LoadMatchDeck(path);
        if (!deck) {
            setProgramTitle();
            return;
        }
        MatchDeck = *deck;
        MatchIndex = 1;
        MatchGameInProgress = true;
        showMatch();
        setProgramTitle();
    });
}

void frmTandrel::clkNext_Click()
{
    Guarded("clkNext_Click", [&] {
        if (!matchShown())
            return;
        ++MatchIndex;
        ChangePlayer(QStringLiteral("Positive"));  // may end the game and deal new decks
        if (MatchIndex == MatchDeck.size() + 1)
            MatchIndex = 1;
        showMatch();
        continueTie(phraseShown(), &frmTandrel::clkNextPhrase_Click);
        CheckTimer();
        m_ui->clkNext->setFocus();
    });
}

void frmTandrel::clkPrev_Click()
{
    Guarded("clkPrev_Click", [&] {
        if (matchShown())
            stepBack(MatchIndex, MatchDeck.size(), &frmTandrel::showMatch, m_ui->clkPrev);
    });
}

void frmTandrel::clkExit_Click()
{
    Guarded("clkExit_Click", [&] { close(); });
}
