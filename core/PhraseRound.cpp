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
        if (!mayStartOver(ReloadPhrases, PhraseGameInProgress,
                          QStringLiteral("A Match Phrase Game is already in Progress, Start Over?")))
            return;
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
        continueTie(matchShown(), &frmTandrel::clkNext_Click);
        CheckTimer();
        m_ui->clkNextPhrase->setFocus();
    });
}

void frmTandrel::clkPrevPhrase_Click()
{
    Guarded("clkPrevPhrase_Click", [&] {
        if (phraseShown())
            stepBack(PhraseIndex, PhraseDeck.size(), &frmTandrel::showPhrase, m_ui->clkPrevPhrase);
    });
}

void frmTandrel::clkExitPhrase_Click()
{
    Guarded("clkExitPhrase_Click", [&] { close(); });
}
