#include "files/frmConfig.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "ui_frmConfig.h"

using Globals::Guarded;

namespace {
void fillYesNo(QComboBox *list, const QString &choice)
{
    list->clear();
    list->addItems({QStringLiteral("No"), QStringLiteral("Yes")});
    list->setCurrentText(choice);
}
}  // namespace

frmConfig::frmConfig(QWidget *parent, const config::Choices &current, Apply apply)
    : LoggedDialog(parent, QStringLiteral("Form_Unload frmConfig")),
      m_ui(new Ui::frmConfig),
      m_current(current),
      m_apply(std::move(apply))
{
    m_ui->setupUi(this);
    connect(m_ui->clkSave, &QAbstractButton::clicked, this, &frmConfig::clkSave_Click);
    connect(m_ui->clkExit, &QAbstractButton::clicked, this, &frmConfig::clkExit_Click);
}

frmConfig::~frmConfig()
{
    delete m_ui;
}

void frmConfig::Form_Load()
{
    Guarded("Form_Load frmConfig", [&] {
        logLoad();
        QComboBox *timer = m_ui->cmbTimerTime;
        for (int seconds = 10; seconds <= 120; seconds += 10)
            timer->addItem(QString::number(seconds));
        // A length the list does not offer (0 from the file, say) shows the default.
        const int found = timer->findText(m_current.timerTime, Qt::MatchExactly);
        timer->setCurrentIndex(found >= 0 ? found : timer->findText(QStringLiteral("30")));
        fillYesNo(m_ui->cmbSoundOption, m_current.soundContinual);
        fillYesNo(m_ui->cmbNoBuzzer, m_current.buzzer);
        fillYesNo(m_ui->cmbSound, m_current.sound);
        fillYesNo(m_ui->cmbTimer, m_current.timer);
    });
}

void frmConfig::clkSave_Click()
{
    Guarded("clkSave_Click", [&] {
        const config::Choices choices{m_ui->cmbTimerTime->currentText(), m_ui->cmbSoundOption->currentText(),
                                      m_ui->cmbNoBuzzer->currentText(), m_ui->cmbSound->currentText(),
                                      m_ui->cmbTimer->currentText()};
        m_apply(choices);
        platform::writeWhole(platform::programPath(config::FileName), config::fileText(choices));
    });
}

void frmConfig::clkExit_Click()
{
    Guarded("clkExit_Click", [&] { reject(); });
}
