#pragma once
// A main window on the test platform, started the way the program starts it,
// with question files of known size in its program folder, and played from a
// short script as a host would play it.
#include "FakePlatform.h"
#include "shell/frmTandrel.h"
#include "timing/Countdown.h"
#include "ui_frmTandrel.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

// A question file: comment header, one line each, CR LF.
inline QByteArray questionFile(const QStringList &lines)
{
    QByteArray bytes = "// Written by a test\r\n";
    for (const QString &line : lines)
        bytes += line.toUtf8() + "\r\n";
    return bytes;
}

// Distinct questions that no repeat rule merges.
inline QStringList questionLines(int count, bool phrase)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QString(phrase ? "Phrase %1 has a Blank in it." : "Match%1 Blank").arg(QChar('A' + i % 26) + QString::number(i));
    return lines;
}
inline const QString MatchFile = QStringLiteral("TandrelLines.txt");
inline const QString PhraseFile = QStringLiteral("TandrelPhrases.txt");

struct GameWindow {
    FakePlatform fake;
    std::unique_ptr<frmTandrel> window;
    QStringList shown;  // every end-of-game dialog and message box, in order
    QString winAnswer = QStringLiteral("clkClose");

    // 0 questions of a kind means that file is missing; so does an empty
    // configuration file.
    // With a data folder, the game is kept there as it is played.
    explicit GameWindow(int matches = 6, int phrases = 6, const QByteArray &config = {}, const QString &data = {})
    {
        fake.data = data;
        if (!config.isEmpty())
            fake.writeFile(QStringLiteral("Tandrel.cfg"), config);
        for (bool phrase : {false, true})
            if (int n = phrase ? phrases : matches)
                fake.writeFile(phrase ? PhraseFile : MatchFile, questionFile(questionLines(n, phrase)));
        // An end-of-game dialog as "won Ann 5" or "tie Ann  Bob at 10".
        fake.onModal = [this](QDialog &dialog) {
            const QStringList parts = dialog.findChild<QAbstractButton *>(QStringLiteral("clkStatus"))->text().split("\r\n\r\n");
            const bool tie = parts.size() > 3;
            const auto shows = [&](const char *button) { return dialog.findChild<QWidget *>(button)->isVisibleTo(&dialog); };
            const bool buttonsRight = shows("clkYes") == tie && shows("clkNo") == tie && shows("clkClose") == !tie;
            shown << (tie ? "tie " + parts[2] + " at " + parts[3].section(' ', -1)
                          : "won " + parts[1].section(" has won", 0, 0) + ' ' + parts[1].section(' ', -1))
                         + (buttonsRight ? "" : " with the wrong buttons");
            if (winAnswer.isEmpty())
                return int(QDialog::Rejected);
            dialog.findChild<QAbstractButton *>(winAnswer)->click();
            return dialog.result();
        };
        fake.onBox = [this](const ShownBox &) { shown << fake.boxesShown().last(); };
        window = std::make_unique<frmTandrel>();
        window->Form_Load();
    }

    frmTandrel &w() { return *window; }
    Ui::frmTandrel *ui() { return window->ui(); }
    const game::Game &game() { return window->game(); }
    const game::Deck &deck(bool phrase) { return game().deck(phrase ? questions::Kind::Phrase : questions::Kind::Match); }
    QString score(int row) { return window->txtCounter[size_t(row)]->text(); }
    int highlightedRow()
    {
        int found = -1;
        for (int i = 0; i < 10; ++i)
            if (window->rowColour(i) == frmTandrel::HighlightColour)
                found = found == -1 ? i : -2;  // -2: more than one
        return found;
    }
    QString question(bool phrase) { return phrase ? ui()->lblPhrase->text() : window->lblName[0]->text() + window->lblName[1]->text(); }
    QString status(bool phrase) { return (phrase ? ui()->clkStatusPhrase : ui()->clkStatusMatch)->text(); }
    QString display() { return ui()->txtTimer->text(); }
    bool counting() { return window->countdown().isRunning(); }

    // Plays a script of space-separated steps; lower case is the match tab,
    // upper case the phrase tab:
    //   n N next, p P previous, s S start (then the answers given by a1 a6...)
    //   u0 d0 a point up or down for row 0; =0:5 row 0's score made 5
    //   c3 three players, w5 score to win 5 (by the mouse); k2 row 2's turn
    //   yes no: the end-of-game dialog's answer; esc: closed without one
    //   -m -p the file gone; 0m 0p the file without questions; +m +p four new
    //   T t timer on or off; O o sound on or off; v a tick of the countdown
    //   tab0 tab1 a tab chosen; ^ _ PageDown and PageUp in a player's name
    //   @0:Ann row 0 named Ann; undo redo resume: Ctrl+Z, Ctrl+Shift+Z, Ctrl+R
    void play(const QString &script)
    {
        for (const QString &step : script.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            const QChar c = step[0];
            const int n = step.mid(1).section(QLatin1Char(':'), 0, 0).toInt();
            const bool phrase = c.isUpper();
            if (step == "undo" || step == "redo" || step == "resume")
                step == "undo" ? window->undoChange() : step == "redo" ? window->redoChange() : window->resumeLastGame();
            else if (c == '@') {
                window->txtPlayer[size_t(n)]->setText(step.section(':', 1));
                Q_EMIT window->txtPlayer[size_t(n)]->editingFinished();
            } else if (step == "yes" || step == "no" || step == "esc")
                winAnswer = step == "yes" ? "clkYes" : step == "no" ? "clkNo" : "";
            else if (step.startsWith("tab"))
                ui()->SSTab1->setCurrentIndex(step.mid(3).toInt());
            else if (c == 'n' || c == 'N')
                (phrase ? ui()->clkNextPhrase : ui()->clkNext)->click();
            else if (c == 'p' || c == 'P')
                (phrase ? ui()->clkPrevPhrase : ui()->clkPrev)->click();
            else if (c == 's' || c == 'S')
                (phrase ? ui()->clkStartPhrase : ui()->clkStart)->click();
            else if (c == 'a')
                fake.answers << n;
            else if (c == 'u' || c == 'd')
                (c == 'u' ? window->clkUp : window->clkDown)[size_t(n)]->click();
            else if (c == '=')
                for (int i = 0, want = step.section(QLatin1Char(':'), 1).toInt(); i < 40 && game().score(n) != want; ++i)
                    (game().score(n) < want ? window->clkUp : window->clkDown)[size_t(n)]->click();
            else if (c == 'c' || c == 'w')
                (c == 'c' ? ui()->cmbNumPlayers : ui()->cmbScoreToWin)->setCurrentText(QString::number(n));
            else if (c == 'k')
                QTest::mouseDClick(window->txtPlayer[size_t(n)], Qt::LeftButton);
            else if (c == '-')
                QFile::remove(fake.path(step == "-m" ? MatchFile : PhraseFile));
            else if (c == '0' || c == '+')
                fake.writeFile(step.endsWith('m') ? MatchFile : PhraseFile,
                               questionFile(c == '0' ? QStringList{"// no questions"} : questionLines(4, step.endsWith('p'))));
            else if (c == 'T' || c == 't')
                frmTandrel::selectOption(window->OptTimer[c == 'T' ? 0 : 1]);
            else if (c == 'O' || c == 'o')
                frmTandrel::selectOption(window->optSound[c == 'O' ? 0 : 1]);
            else if (c == 'v')
                window->Timer1_Timer();
            else if (c == '^' || c == '_')
                QTest::keyClick(window->txtPlayer[0], c == '^' ? Qt::Key_PageDown : Qt::Key_PageUp);
            else
                qFatal("unknown step %s", qPrintable(step));
        }
    }

    // The game as the room sees it, after checking that the window shows
    // what the game holds: "R2 T1 10,4 M3 P1" is round 2, row 1's turn, the
    // scores of the rows in play, the match and phrase positions (0: none).
    QString state()
    {
        const game::Game &g = game();
        QStringList scores;
        for (int i = 0; i < 10; ++i) {
            if (score(i) != QString::number(g.score(i)))
                return QStringLiteral("row %1 shows %2").arg(i).arg(score(i));
            if (g.inPlay(i))
                scores << score(i);
            if (window->txtCounter[size_t(i)]->isVisibleTo(window.get()) != g.inPlay(i))
                return QStringLiteral("row %1 shown wrongly").arg(i);
        }
        if (highlightedRow() != g.currentPlayer())
            return QStringLiteral("row %1 highlighted").arg(highlightedRow());
        if (ui()->clkRound->text() != QStringLiteral("Round %1").arg(g.round()))
            return ui()->clkRound->text();
        for (bool phrase : {false, true})
            if (deck(phrase).shown() && !status(phrase).contains(QStringLiteral(" %1 of %2 ").arg(deck(phrase).position()).arg(deck(phrase).size())))
                return status(phrase);
        return QStringLiteral("R%1 T%2 %3 M%4 P%5")
            .arg(g.round())
            .arg(g.currentPlayer())
            .arg(scores.join(QLatin1Char(',')))
            .arg(deck(false).shown() ? deck(false).position() : 0)
            .arg(deck(true).shown() ? deck(true).position() : 0);
    }
};

// All a kept game holds, in one line: "3 players W10 R2 T1 tab0 0,2,0 | Ann,Name,Name | M2 b/a/c | P1 x/y".
inline QString keptText(const journal::Kept &kept)
{
    const game::Game::Snapshot &g = kept.game;
    QStringList scores, names;
    for (int i = 0; i < game::MaxPlayers; ++i)
        scores << QString::number(g.scores[size_t(i)]), names << g.names[size_t(i)];
    return QStringLiteral("%1 players W%2 R%3 T%4 tab%5 %6 | %7 | M%8 %9 | P%10 %11")
        .arg(g.playerCount).arg(g.scoreToWin).arg(g.round).arg(g.current).arg(kept.tab)
        .arg(scores.join(','), names.join(','))
        .arg(g.positions[0]).arg(g.decks[0].join('/'))
        .arg(g.positions[1]).arg(g.decks[1].join('/'));
}

// The game a window plays, as it would be kept.
inline QString keptText(const frmTandrel &w)
{
    return keptText({w.game().snapshot(), w.ui()->SSTab1->currentIndex()});
}
