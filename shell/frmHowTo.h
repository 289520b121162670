#pragma once
// The rules viewer: the rules document beside the program, read-only.
#include "platform/LoggedWindow.h"

namespace Ui {
class frmHowTo;
}

class frmHowTo : public LoggedWindow {
    Q_OBJECT
public:
    explicit frmHowTo(QWidget *parent = nullptr);
    ~frmHowTo() override;

    Ui::frmHowTo *ui() const { return m_ui; }

    void Form_Load();

    static QString rulesPath();
    // The message for a rules document that is not there.
    static void reportMissing(const QString &path);

private:
    Ui::frmHowTo *m_ui;
};
