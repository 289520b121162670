#include "files/frmConfig.h"
#include "files/ConfigFile.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmConfig.h"
#include "ui_frmTandrel.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTimer>

using Globals::Guarded;

namespace {
const QString Yes = QStringLiteral("Yes");
const QString No = QStringLiteral("No");

void fillYesNo(QComboBox *list, bool yes)
{
    list->clear();
    list->addItems({No, Yes});
    list->setCurrentText(yes ? Yes : No);
}

// Acts on a Yes/No row; any other text leaves the setting as it is.
void onYesNo(const QComboBox *list, const std::function<void(bool)> &apply)
{
    if (list->currentText() == Yes)
        apply(true);
    else if (list->currentText() == No)
        apply(false);
}
}  // namespace

frmConfig::frmConfig(frmTandrel &main)
    : LoggedDialog(&main, QStringLiteral("Form_Unload frmConfig")), m_ui(new Ui::frmConfig), m_main(main)
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
        timer->clear();
        for (int seconds = 10; seconds <= 120; seconds += 10)
            timer->addItem(QString::number(seconds));
        // A length the list does not offer (0 from the file, say) shows the default.
        const int found = timer->findText(m_main.Tag, Qt::MatchExactly);
        timer->setCurrentIndex(found >= 0 ? found : timer->findText(QStringLiteral("30")));
        const Ui::frmTandrel *main = m_main.ui();
        fillYesNo(m_ui->cmbSoundOption, main->chkSoundAlwaysOn->isChecked());
        fillYesNo(m_ui->cmbNoBuzzer, main->chkBuzzer->isChecked());
        fillYesNo(m_ui->cmbSound, m_main.optSound[0]->isChecked());
        fillYesNo(m_ui->cmbTimer, m_main.OptTimer[0]->isChecked());
    });
}

void frmConfig::clkSave_Click()
{
    Guarded("clkSave_Click", [&] {
        Ui::frmTandrel *main = m_main.ui();
        main->txtTimer->setText(m_ui->cmbTimerTime->currentText());
        m_main.cmdUpdateButton_Click();
        onYesNo(m_ui->cmbSoundOption, [&](bool yes) { main->chkSoundAlwaysOn->setChecked(yes); });
        onYesNo(m_ui->cmbNoBuzzer, [&](bool yes) { main->chkBuzzer->setChecked(yes); });
        onYesNo(m_ui->cmbSound, [&](bool yes) { m_main.selectOption(m_main.optSound[yes ? 0 : 1]); });
        onYesNo(m_ui->cmbTimer, [&](bool yes) { m_main.selectOption(m_main.OptTimer[yes ? 0 : 1]); });
        const config::Choices choices{m_ui->cmbTimerTime->currentText(), m_ui->cmbSoundOption->currentText(),
                                      m_ui->cmbNoBuzzer->currentText(), m_ui->cmbSound->currentText(),
                                      m_ui->cmbTimer->currentText()};
        platform::writeWhole(platform::programPath(config::FileName), config::fileText(choices));
    });
}

void frmConfig::clkExit_Click()
{
    Guarded("clkExit_Click", [&] { reject(); });
}

void frmTandrel::clkConfig_Click()
{
    Guarded("clkConfig_Click", [&] {
        Timer1->stop();
        Tag = QString::number(TimerTime);
        {
            frmConfig dialog(*this);
            dialog.Form_Load();
            platform::dialogs().execModal(dialog);
        }
        // Back to the clicker's button, so paging goes on at once.
        (m_ui->SSTab1->currentIndex() == 0 ? m_ui->clkNext : m_ui->clkNextPhrase)->setFocus();
        Tag.clear();
    });
}
