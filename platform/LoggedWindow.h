#pragma once
// Windows that log their unloading once, however they go: closed by a button,
// by the close box or Escape, or destroyed without ever being closed.
#include "platform/Services.h"
#include <QDialog>

// The one "Unloading Form" record of a window.
class UnloadRecord {
public:
    explicit UnloadRecord(QString label) : m_label(std::move(label)) {}
    // Writes the record the first time only; label names the step in a report.
    void write(QWidget *window);

private:
    QString m_label;
    bool m_written = false;
};

class LoggedDialog : public QDialog {
    Q_OBJECT
public:
    // unloadLabel names the unload step in a failure report.
    LoggedDialog(QWidget *parent, QString unloadLabel);
    // Form_Unload: a dialog is run modally and destroyed as it closes.
    ~LoggedDialog() override;

protected:
    // Registers the window and writes its "Loading Form" record.
    void logLoad();

private:
    UnloadRecord m_unload;
};

// A window that is not modal. It logs its loading and unloading; closing it
// unloads and deletes it.
class LoggedWindow : public QWidget {
    Q_OBJECT
public:
    LoggedWindow(QWidget *parent, QString unloadLabel);
    ~LoggedWindow() override;

    // Shows the loaded window of that name, or makes one with make() and
    // loads it: each of these windows exists once.
    template <class W, class Make>
    static W *showOnce(const QString &name, Make make)
    {
        auto *window = qobject_cast<W *>(platform::loadedWindow(name));
        if (!window) {
            window = make();
            window->Form_Load();
            window->centreOnOwner();
        }
        window->show();
        window->raise();
        window->activateWindow();
        return window;
    }

    // Places a new window over the middle of the window that owns it.
    void centreOnOwner();

protected:
    void logLoad();
    void closeEvent(QCloseEvent *event) override;  // Form_Unload

private:
    UnloadRecord m_unload;
};
