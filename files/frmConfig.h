#pragma once
// The configuration dialog: the five timer and sound settings, shown from the
// main window's state, applied to it and written to the file on Save.
#include "shell/LoggedWindow.h"

namespace Ui {
class frmConfig;
}
class frmTandrel;

class frmConfig : public LoggedDialog {
    Q_OBJECT
public:
    explicit frmConfig(frmTandrel &main);
    ~frmConfig() override;

    Ui::frmConfig *ui() const { return m_ui; }

    // Fills the rows; the timer length comes from the main window's Tag.
    void Form_Load();
    void clkSave_Click();
    void clkExit_Click();

private:
    Ui::frmConfig *m_ui;
    frmTandrel &m_main;
};
