#include "files/frmEdit.h"
#include "files/frmEditQuestions.h"
#include "platform/Globals.h"
#include "ui_frmEdit.h"

using Globals::Guarded;

namespace {
void showEditor(const EditorWords &words, QWidget *owner)
{
    LoggedWindow::showOnce<frmEditQuestions>(words.windowName, [&] { return new frmEditQuestions(words, owner); });
}
}  // namespace

frmEdit::frmEdit(QWidget *main) : LoggedWindow(main, QStringLiteral("Form UnLoad frmEdit")), m_ui(new Ui::frmEdit)
{
    m_ui->setupUi(this);
    connect(m_ui->clkEditMatches, &QAbstractButton::clicked, this, &frmEdit::clkEditMatches_Click);
    connect(m_ui->clkEditPhrases, &QAbstractButton::clicked, this, &frmEdit::clkEditPhrases_Click);
}

frmEdit::~frmEdit()
{
    delete m_ui;
}

void frmEdit::Form_Load()
{
    Guarded("Form Load frmEdit", [&] { logLoad(); });
}

void frmEdit::clkEditMatches_Click()
{
    Guarded("clkEditMatches_Click", [&] { showEditor(EditorWords::matches(), parentWidget()); });
}

void frmEdit::clkEditPhrases_Click()
{
    Guarded("clkEditPhrases_Click", [&] { showEditor(EditorWords::phrases(), parentWidget()); });
}
