#pragma once
// The question file editors: the whole file as plain text in one box, with
// Load, Save and Close. The match-line editor and the phrase editor are this
// one window with different words.
#include "platform/LoggedWindow.h"

namespace Ui {
class frmEditQuestions;
}

struct EditorWords {
    QString windowName;    // "frmEditPhrases"
    QString caption;
    QString loader;        // the loader's name in a failure report
    QString fileName;
    QString boxFull;       // the question before the box is overwritten
    QString createTitle;   // the question when the file is missing
    QString sample;        // the text offered for a missing file
    QString nothingToSave;
    QString saved;         // followed by the path
    QString noteStart;     // the first piece of the note

    static const EditorWords &phrases();
    static const EditorWords &matches();
};

class frmEditQuestions : public LoggedWindow {
    Q_OBJECT
public:
    frmEditQuestions(const EditorWords &words, QWidget *parent = nullptr);
    ~frmEditQuestions() override;

    Ui::frmEditQuestions *ui() const { return m_ui; }

    void Form_Load();
    // loadMatchPhrases / loadTandrelLines: fills the box from the file.
    void loadQuestions();
    void clkLoad_Click();
    void clkSave_Click();
    void clkClose_Click();

    // The box's text as it is saved: lines ended by CR LF.
    QString boxText() const;
    void setBoxText(const QString &text);

private:
    Ui::frmEditQuestions *m_ui;
    const EditorWords &m_words;
    // The text box turns U+2028 and U+2029 into its own line breaks, so a
    // file's own are shown as these private-use characters, picked among
    // those the file does not hold, and written back as they were.
    QChar m_lineStandIn, m_paragraphStandIn;
};
