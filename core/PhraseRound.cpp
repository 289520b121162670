// The phrase tab: as the match tab, with the differences of its own.
#include "core/Decks.h"
#include "platform/Services.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

using Globals::Guard;
using Globals::Guarded;

bool frmTandrel::phraseShown() const
{
    return !m_ui->lblPhrase->text().isEmpty();
}

void frmTandrel::showPhrase()
{
    const qsizetype n = PhraseDeck.size();
    m_ui->clkStatusPhrase->setText(QStringLiteral("Viewing Phrase %1 of %2 Phrases...").arg(PhraseIndex).arg(n));
    m_ui->lblPhrase->setText(PhraseDeck.at(PhraseIndex - 1) + QStringLiteral("      "));
    fitText(m_ui->lblPhrase);
}

void frmTandrel::clkStartPhrase_Click()
{
    Guard guard("clkStartPhrase_Click");
    guard.afterReport = [this] { setProgramTitle(); };
    Guarded(guard, [&] {
        // No countdown restart until a phrase is shown: a start that goes
        // no further leaves the count alone.
        const QString path = platform::programPath(decks::PhraseFileName);
        if (!decks::CheckQuestionFile(path))
            return;
        if (ReloadPhrases) {
            setReloadingTitle();
            ReloadPhrases = false;
        } else if (PhraseGameInProgress
                   && platform::msgBox(QStringLiteral("A Match Phrase Game is already in Progress, Start Over?"),
                                       platform::mb::YesNoCancel, QStringLiteral("Start New Game"))
                          != platform::mb::Yes) {
            return;
        }
        resetForNewGame();
        const std::optional<QStringList> deck = decks::LoadPhraseDeck(path);
        if (!deck) {
            setProgramTitle();
            return;
        }
        PhraseGameInProgress = true;
        PhraseDeck = *deck;
        PhraseIndex = 1;
        showPhrase();
        CheckTimer();
        setProgramTitle();
    });
}

void frmTandrel::clkNextPhrase_Click()
{
    Guarded("clkNextPhrase_Click", [&] {
        if (!phraseShown())
            return;
        ChangePlayer(QStringLiteral("Positive"));
        if (DecksRestarted) {
            // The game just ended and the new one already shows phrase 1.
            DecksRestarted = false;
            return;
        }
        if (++PhraseIndex == PhraseDeck.size() + 1)
            PhraseIndex = 1;
        showPhrase();
        if (AnotherRound) {
            // A tie goes on: the match tab moves on too and the turn goes to row 0.
            AnotherRound = false;
            CurrentPlayer = -1;
            if (matchShown())
                clkNext_Click();
            else
                CurrentPlayer = 0;
            paintTurn();
        }
        CheckTimer();
        m_ui->clkNextPhrase->setFocus();
    });
}

void frmTandrel::clkPrevPhrase_Click()
{
    Guarded("clkPrevPhrase_Click", [&] {
        if (!phraseShown())
            return;
        if (--PhraseIndex == 0)
            PhraseIndex = qint16(PhraseDeck.size());
        showPhrase();
        CheckTimer();
        ChangePlayer(QStringLiteral("Negative"));
        m_ui->clkPrevPhrase->setFocus();
    });
}

void frmTandrel::clkExitPhrase_Click()
{
    Guarded("clkExitPhrase_Click", [&] { close(); });
}
