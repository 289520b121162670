#pragma once
// The window shown at start: logs the banner, checks the components once,
// puts the program's look on every window and, a second later, opens the
// main window. Loaded again with its timer stopped, it is the About window.
#include "platform/LoggedWindow.h"
#include <array>

namespace Ui {
class frmSplash;
}
class QLabel;
class QTimer;

class frmSplash : public LoggedWindow {
    Q_OBJECT
public:
    explicit frmSplash(QWidget *parent = nullptr);
    ~frmSplash() override;

    Ui::frmSplash *ui() const { return m_ui; }

    // True once the components were checked in this run.
    static bool RegistryFilesChecked;

    void Form_Load();
    void Timer1_Timer();
    void clkClose_Click();
    void lbl1_Click();
    // Logs whether each component the program is built from can be used.
    void checkRegistryFiles();

    QTimer *Timer1 = nullptr;
    std::array<QLabel *, 5> lbl1{};

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    // A start that stopped here offers a way out.
    void offerClose();
    void registrationAttempt(const QString &name, QString &appPath, QString &arguments);

    Ui::frmSplash *m_ui;
};
