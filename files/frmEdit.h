#pragma once
// The editors' chooser: one button per question file.
#include "platform/LoggedWindow.h"

namespace Ui {
class frmEdit;
}

class frmEdit : public LoggedWindow {
    Q_OBJECT
public:
    // main: the main window, which also owns the editors, so they stay open
    // when the chooser closes.
    explicit frmEdit(QWidget *main);
    ~frmEdit() override;

    Ui::frmEdit *ui() const { return m_ui; }

    void Form_Load();
    void clkEditMatches_Click();
    void clkEditPhrases_Click();

private:
    Ui::frmEdit *m_ui;
};
