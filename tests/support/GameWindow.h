#pragma once
// A main window on the test platform, started the way the program starts it,
// with question files of known size in its program folder.
#include "FakePlatform.h"
#include "shell/frmTandrel.h"
#include "timing/Countdown.h"
#include "ui_frmTandrel.h"
#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTimer>
#include <memory>

// A question file: comment header, one line each, CR LF.
inline QByteArray questionFile(const QStringList &lines)
{
    QByteArray bytes = "// Written by a test\r\n";
    for (const QString &line : lines)
        bytes += line.toUtf8() + "\r\n";
    return bytes;
}

// Distinct questions that no repeat rule merges.
inline QStringList questionLines(int count, const QString &shape)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << shape.arg(QChar('A' + i % 26) + QString::number(i));
    return lines;
}
inline QStringList matchLines(int count)
{
    return questionLines(count, QStringLiteral("Match%1 Blank"));
}
inline QStringList phraseLines(int count)
{
    return questionLines(count, QStringLiteral("Phrase %1 has a Blank in it."));
}

struct GameWindow {
    FakePlatform fake;
    std::unique_ptr<frmTandrel> window;
    QStringList winMessages;  // what frmWin said, in order

    // 0 questions of a kind means that file is missing; so does an empty
    // configuration file.
    explicit GameWindow(int matches = 6, int phrases = 6, const QByteArray &config = {})
    {
        if (!config.isEmpty())
            fake.writeFile(QStringLiteral("Tandrel.cfg"), config);
        if (matches > 0)
            fake.writeFile(QStringLiteral("TandrelLines.txt"), questionFile(matchLines(matches)));
        if (phrases > 0)
            fake.writeFile(QStringLiteral("TandrelPhrases.txt"), questionFile(phraseLines(phrases)));
        window = std::make_unique<frmTandrel>();
        window->Form_Load();
        answerWin("clkClose");
    }

    frmTandrel &w() { return *window; }
    Ui::frmTandrel *ui() { return window->ui(); }
    const game::Game &game() { return window->game(); }

    // frmWin is answered by clicking the named button.
    void answerWin(const char *button)
    {
        fake.onModal = [this, button](QDialog &dialog) {
            winMessages << dialog.findChild<QAbstractButton *>(QStringLiteral("clkStatus"))->text();
            dialog.findChild<QAbstractButton *>(QString::fromLatin1(button))->click();
            return dialog.result();
        };
    }

    QString score(int row) { return window->txtCounter[size_t(row)]->text(); }
    // Points given with the row's up button, from 0.
    void setScore(int row, int value)
    {
        while (game().score(row) > 0)
            window->clkDown[size_t(row)]->click();
        for (int i = 0; i < value; ++i)
            window->clkUp[size_t(row)]->click();
    }
    void setPlayers(int count) { ui()->cmbNumPlayers->setCurrentText(QString::number(count)); }
    int turn() { return game().currentPlayer(); }
    int position(bool phrase) { return game().deck(phrase ? questions::Kind::Phrase : questions::Kind::Match).position(); }
    int highlightedRow()
    {
        int found = -1;
        for (int i = 0; i < 10; ++i)
            if (window->rowColour(i) == frmTandrel::HighlightColour)
                found = found == -1 ? i : -2;  // -2: more than one
        return found;
    }
    QString shown(bool phrase)
    {
        return phrase ? ui()->lblPhrase->text() : window->lblName[0]->text() + window->lblName[1]->text();
    }
    QString status(bool phrase) { return (phrase ? ui()->clkStatusPhrase : ui()->clkStatusMatch)->text(); }
    QString round() { return ui()->clkRound->text(); }
    QString display() { return ui()->txtTimer->text(); }
    bool counting() { return window->countdown().isRunning(); }
    void next(bool phrase) { (phrase ? ui()->clkNextPhrase : ui()->clkNext)->click(); }
    void prev(bool phrase) { (phrase ? ui()->clkPrevPhrase : ui()->clkPrev)->click(); }
    void start(bool phrase) { (phrase ? ui()->clkStartPhrase : ui()->clkStart)->click(); }
    // Timer and sound on, then a fresh record of the players.
    void timerAndSoundOn()
    {
        frmTandrel::selectOption(window->OptTimer[0]);
        frmTandrel::selectOption(window->optSound[0]);
        fake.mediaCalls.clear();
    }
    int musicStarts() { return int(fake.mediaCalls.count(QStringLiteral("wmp1 play"))); }
};
