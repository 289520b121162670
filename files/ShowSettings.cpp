#include "files/ShowSettings.h"
#include "ui_frmShow.h"
#include <QPushButton>
#include <QSettings>

namespace show {
namespace {
QSettings store()
{
    // ~/.config/Tandrel/Show.ini; QSettings writes it whole or not at all.
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Tandrel"), QStringLiteral("Show"));
}
}  // namespace

Settings load()
{
    const QSettings s = store();
    return {s.value(QStringLiteral("sound/output")).toByteArray(), s.value(QStringLiteral("sound/outputName")).toString(),
            s.value(QStringLiteral("keys/arrowKeysPage"), false).toBool()};
}

void save(const Settings &settings)
{
    QSettings s = store();
    s.setValue(QStringLiteral("sound/output"), settings.output);
    s.setValue(QStringLiteral("sound/outputName"), settings.outputName);
    s.setValue(QStringLiteral("keys/arrowKeysPage"), settings.arrowKeysPage);
}

}  // namespace show

frmShow::frmShow(QWidget *parent, const show::Settings &now, const QList<platform::AudioOutput> &outputs)
    : QDialog(parent), m_ui(new Ui::frmShow)
{
    m_ui->setupUi(this);
    // The program's style sheet keeps the window's font from the box's buttons.
    for (QAbstractButton *button : m_ui->btnBox->buttons())
        button->setFont(font());
    const auto add = [this](const QString &shown, const QByteArray &id, const QString &name) {
        m_ui->cboOutput->addItem(shown, id);
        m_ui->cboOutput->setItemData(m_ui->cboOutput->count() - 1, name, NameRole);
    };
    add(tr("The default output"), {}, {});
    for (const platform::AudioOutput &output : outputs)
        add(output.name, output.id, output.name);
    int at = m_ui->cboOutput->findData(now.output);
    if (at < 0) {  // chosen once, unplugged now: still the choice
        add(tr("%1 (not plugged in)").arg(now.outputName), now.output, now.outputName);
        at = m_ui->cboOutput->count() - 1;
    }
    m_ui->cboOutput->setCurrentIndex(at);
    m_ui->chkArrowKeys->setChecked(now.arrowKeysPage);
}

frmShow::~frmShow()
{
    delete m_ui;
}

show::Settings frmShow::chosen() const
{
    return {m_ui->cboOutput->currentData().toByteArray(), m_ui->cboOutput->currentData(NameRole).toString(),
            m_ui->chkArrowKeys->isChecked()};
}
