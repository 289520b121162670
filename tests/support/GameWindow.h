#pragma once
// A main window on the test platform, started the way the program starts it,
// with question files of known size in its program folder.
#include "FakePlatform.h"
#include "shell/frmTandrel.h"
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

// Distinct questions that no dedup rule merges.
inline QStringList matchLines(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QStringLiteral("Match%1 Blank").arg(QChar('A' + i % 26) + QString::number(i));
    return lines;
}
inline QStringList phraseLines(int count)
{
    QStringList lines;
    for (int i = 0; i < count; ++i)
        lines << QStringLiteral("Phrase %1 has a Blank in it.").arg(QChar('A' + i % 26) + QString::number(i));
    return lines;
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
    void setScore(int row, int value) { window->txtCounter[size_t(row)]->setText(QString::number(value)); }
    void setPlayers(int count) { ui()->cmbNumPlayers->setCurrentText(QString::number(count)); }
    int highlightedRow()
    {
        int found = -1;
        for (int i = 0; i < 10; ++i)
            if (window->rowColour(i) == frmTandrel::HighlightColour)
                found = found == -1 ? i : -2;  // -2: more than one
        return found;
    }
    QString matchShown() { return window->lblName[0]->text() + window->lblName[1]->text(); }
    QString phraseShown() { return ui()->lblPhrase->text(); }
    QString round() { return ui()->clkRound->text(); }
};
