#pragma once
// The configuration dialog: the five timer and sound settings, shown as they
// are, handed back to be applied and written to the file on Save.
#include "files/ConfigFile.h"
#include "platform/LoggedWindow.h"
#include <functional>

namespace Ui {
class frmConfig;
}

class frmConfig : public LoggedDialog {
    Q_OBJECT
public:
    using Apply = std::function<void(const config::Choices &)>;
    // current: the settings to show; apply: puts the chosen ones in force.
    frmConfig(QWidget *parent, const config::Choices &current, Apply apply);
    ~frmConfig() override;

    Ui::frmConfig *ui() const { return m_ui; }

    void Form_Load();
    void clkSave_Click();
    void clkExit_Click();

private:
    Ui::frmConfig *m_ui;
    config::Choices m_current;
    Apply m_apply;
};
