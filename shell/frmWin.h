#pragma once
// The end-of-game dialog: congratulates a single winner, or asks tied
// players whether to play another round.
#include "platform/LoggedWindow.h"

namespace Ui {
class frmWin;
}

class frmWin : public LoggedDialog {
    Q_OBJECT
public:
    // tag is the main window's Tag text, through which the answer goes back.
    frmWin(QString &tag, QWidget *parent = nullptr);
    ~frmWin() override;

    Ui::frmWin *ui() const { return m_ui; }

    void Form_Load();
    // Shows the message; a tie offers Yes and No, a winner only Close.
    void showMessage(const QString &message, bool tie);

    void clkYes_Click();
    void clkNo_Click();
    void clkClose_Click();

    void reject() override;

protected:
    // A clicker's PageDown answers as Return does: the default button.
    void keyPressEvent(QKeyEvent *event) override;

private:
    Ui::frmWin *m_ui;
    QString &m_tag;
    bool m_tie = false;
};
