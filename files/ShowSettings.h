#pragma once
// The show's own settings, apart from the configuration file beside the
// program: kept for this user in their configuration folder.
#include "platform/Services.h"
#include <QByteArray>
#include <QDialog>
#include <QString>

namespace show {

struct Settings {
    QByteArray output;           // the sound device's id; empty: the default
    QString outputName;          // its name, listed while it is unplugged
    bool arrowKeysPage = false;  // a clicker that sends arrows pages with them
};

Settings load();
void save(const Settings &settings);

}  // namespace show

namespace Ui {
class frmShow;
}

// The show settings window: the sound device and the clicker's keys.
class frmShow : public QDialog {
    Q_OBJECT
public:
    frmShow(QWidget *parent, const show::Settings &now, const QList<platform::AudioOutput> &outputs);
    ~frmShow() override;
    Ui::frmShow *ui() const { return m_ui; }
    // The settings as the window shows them.
    show::Settings chosen() const;

private:
    static constexpr int NameRole = Qt::UserRole + 1;  // an output's name, without the window's words
    Ui::frmShow *m_ui;
};
