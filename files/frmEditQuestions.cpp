#include "files/frmEditQuestions.h"
#include "core/Decks.h"
#include "core/QuestionRules.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "platform/Globals.h"
#include "ui_frmEditQuestions.h"
#include <vector>

using Globals::Guarded;
using platform::mb::Information;
using platform::mb::Yes;
using platform::mb::YesNoCancel;

namespace {
const QString CrLf = QStringLiteral("\r\n");

QString noteAfter(const QString &start)
{
    return start + QStringLiteral("normal keyboard return.  The word 'Blank' will be automatically blanked out when ")
           + QStringLiteral("used in the Tandrel program.  Blank lines or lines that start with a '#' will not be ")
           + QStringLiteral("used during program runtime.");
}
}  // namespace

const EditorWords &EditorWords::phrases()
{
    static const EditorWords words{
        QStringLiteral("frmEditPhrases"),
        QStringLiteral("Edit Tandrel Phases Input File"),
        QStringLiteral("loadMatchPhrases"),
        decks::PhraseFileName,
        QStringLiteral("Questions already exist in text box.  Do you want to overwrite these questions?"),
        QStringLiteral("Create a New Phrase File?"),
        QStringLiteral("# Tandrel Phrase Questions ") + CrLf + CrLf
            + QStringLiteral("Paul said, 'I just saw the world's strangest wedding. Instead of a regular suit, ")
            + QStringLiteral("the groom was wearing a Blank suit.'") + CrLf + CrLf
            + QStringLiteral("Carol said, 'Everybody thinks that my husband the Minister is always so serious. ")
            + QStringLiteral("But at home he's a riot! Even his Blank makes me laugh.'") + CrLf + CrLf,
        QStringLiteral("No Questions Exist To Save"),
        QStringLiteral("Phrases saved in file "),
        noteAfter(QStringLiteral("Note: Each seperate sentence will create a question.  Questions will be seperated by a ")),
    };
    return words;
}

const EditorWords &EditorWords::matches()
{
    static const EditorWords words{
        QStringLiteral("frmEditMatches"),
        QStringLiteral("Edit Tandrel Matches Input File"),
        QStringLiteral("loadTandrelLines"),
        decks::MatchFileName,
        QStringLiteral("Matches already exist in text box.  Do you want to overwrite these matches?"),
        QStringLiteral("Create a New Match File?"),
        QStringLiteral("# Tandrel Match Lines ") + CrLf + CrLf + QStringLiteral("Blank Winter") + CrLf
            + QStringLiteral("Blank Martinee") + CrLf + QStringLiteral("Blank Pole") + CrLf
            + QStringLiteral("Christmas Blank") + CrLf + QStringLiteral("Shoe Blank") + CrLf,
        QStringLiteral("No Matches Exist To Save"),
        QStringLiteral("Matches saved in file "),
        noteAfter(QStringLiteral("Note: Each seperate sentence will create a match.  Matches will be seperated by a ")),
    };
    return words;
}

frmEditQuestions::frmEditQuestions(const EditorWords &words, QWidget *parent)
    : LoggedWindow(parent, QStringLiteral("Form_Unload ") + words.windowName),
      m_ui(new Ui::frmEditQuestions),
      m_words(words)
{
    m_ui->setupUi(this);
    setObjectName(words.windowName);
    setWindowTitle(words.caption);
    connect(m_ui->clkLoad, &QAbstractButton::clicked, this, &frmEditQuestions::clkLoad_Click);
    connect(m_ui->clkSave, &QAbstractButton::clicked, this, &frmEditQuestions::clkSave_Click);
    connect(m_ui->clkClose, &QAbstractButton::clicked, this, &frmEditQuestions::clkClose_Click);
}

frmEditQuestions::~frmEditQuestions()
{
    delete m_ui;
}

void frmEditQuestions::Form_Load()
{
    Guarded(QStringLiteral("Form_Load ") + m_words.windowName, [&] {
        logLoad();
        // Plain text only: pasted formatting would never reach the file anyway.
        m_ui->rtb1->setAcceptRichText(false);
        m_ui->lbl1->setText(m_words.noteStart);
        loadQuestions();
    });
}

QString frmEditQuestions::boxText() const
{
    QString text = m_ui->rtb1->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QChar::LineFeed).replace(QChar::LineSeparator, QChar::LineFeed);
    if (!m_lineStandIn.isNull())
        text.replace(m_lineStandIn, QChar::LineSeparator).replace(m_paragraphStandIn, QChar::ParagraphSeparator);
    return text.replace(QChar::LineFeed, CrLf);
}

void frmEditQuestions::setBoxText(const QString &text)
{
    QString lines = text;
    lines.replace(CrLf, QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    m_lineStandIn = m_paragraphStandIn = QChar();
    if (lines.contains(QChar::LineSeparator) || lines.contains(QChar::ParagraphSeparator)) {
        std::vector<bool> present(0x10000);
        for (QChar c : std::as_const(lines))
            present[c.unicode()] = true;
        // Noncharacters at the top end the search even in a file that holds
        // every private-use character.
        char16_t c = 0xE000;
        while (c < 0xFFFE && present[c])
            ++c;
        m_lineStandIn = QChar(c++);
        while (c < 0xFFFF && present[c])
            ++c;
        m_paragraphStandIn = QChar(c);
        lines.replace(QChar::LineSeparator, m_lineStandIn).replace(QChar::ParagraphSeparator, m_paragraphStandIn);
    }
    m_ui->rtb1->setPlainText(lines);
}

void frmEditQuestions::loadQuestions()
{
    Guarded(m_words.loader, [&] {
        const QString overwriteTitle = QStringLiteral("Overwrite Questions In Text Box?");
        if (boxText().size() > 10 && platform::msgBox(m_words.boxFull, YesNoCancel, overwriteTitle) != Yes)
            return;
        const QString path = platform::onDisk(platform::programPath(m_words.fileName));
        if (platform::fileExists(path)) {
            const QString text = platform::readWhole(path, platform::MaxShownFileBytes);
            platform::checkShowable(text);
            setBoxText(text);
            return;
        }
        // Nothing is written here: the file comes into being at the first Save.
        const QString question = QStringLiteral("File ") + platform::shownPath(path)
                                 + QStringLiteral(" does not exist, Do you want to create one?");
        if (platform::msgBox(question, YesNoCancel, m_words.createTitle) == Yes)
            setBoxText(m_words.sample);
    });
}

void frmEditQuestions::clkLoad_Click()
{
    Guarded("clkLoad_Click", [&] { loadQuestions(); });
}

void frmEditQuestions::clkSave_Click()
{
    Guarded("clkSave_Click", [&] {
        const QString text = boxText();
        if (questions::trimSpaces(text).size() <= 10) {
            platform::msgBox(m_words.nothingToSave, Information, QStringLiteral("Nothing to Save."));
            return;
        }
        const QString path = platform::onDisk(platform::programPath(m_words.fileName));
        const QString shown = platform::shownPath(path);
        if (platform::fileExists(path)
            && platform::msgBox(QStringLiteral("File ") + shown + QStringLiteral(" already exists. Overwrite File?"),
                                YesNoCancel, QStringLiteral("Overwrite File?"))
                   != Yes)
            return;
        // A failed write is reported and leaves the old file whole and the
        // text in the box, so the save can be tried again.
        platform::writeWhole(path, text);
        platform::msgBox(m_words.saved + shown, Information, QStringLiteral("File Saved Successfully"));
    });
}

void frmEditQuestions::clkClose_Click()
{
    Guarded("clkClose_Click", [&] { close(); });
}
