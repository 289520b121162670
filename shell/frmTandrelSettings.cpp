// The countdown, the sound and the settings: the switches and the volume bar
// drive a Countdown and a Sound; the configuration file and dialog set them.
#include "files/ShowSettings.h"
#include "files/frmConfig.h"
#include "platform/Globals.h"
#include "platform/Services.h"
#include "shell/frmTandrel.h"
#include "timing/Countdown.h"
#include "timing/Sound.h"
#include "ui_frmTandrel.h"
#include <QCoreApplication>
#include <QShortcut>
#include <QTimer>

using Globals::Guarded;

namespace {
QString yesNo(bool yes)
{
    return yes ? QStringLiteral("Yes") : QStringLiteral("No");
}
}  // namespace

void frmTandrel::connectSettings()
{
    connect(m_countdown->timer(), &QTimer::timeout, this, &frmTandrel::Timer1_Timer);
    connect(m_countdown, &Countdown::displayChanged, m_ui->txtTimer, &QLineEdit::setText);
    for (int i = 0; i < 2; ++i) {
        connect(OptTimer[size_t(i)], &QAbstractButton::toggled, this, [this, i](bool checked) {
            if (checked)
                OptTimer_Click(qint16(i));
        });
        connect(optSound[size_t(i)], &QAbstractButton::toggled, this, [this, i](bool checked) {
            if (checked)
                optSound_Click(qint16(i));
        });
    }
    connect(m_ui->chkBuzzer, &QAbstractButton::toggled, this, [this](bool on) { m_sound->buzzer = on; });
    connect(m_ui->chkSoundAlwaysOn, &QAbstractButton::toggled, this, [this](bool on) { m_sound->continual = on; });
    connect(m_ui->cmdUpdateButton, &QAbstractButton::clicked, this, &frmTandrel::cmdUpdateButton_Click);
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this](int tab) {
        const int previous = m_lastTab;
        m_lastTab = tab;
        SSTab1_Click(qint16(previous));
    });
    connect(m_ui->SSTab1, &QTabWidget::tabBarDoubleClicked, this, [this](int) { SSTab1_DblClick(); });
    m_lastTab = m_ui->SSTab1->currentIndex();

    // A click or key changes the volume at once; a drag changes it step by step.
    connect(m_ui->hsc1, &QScrollBar::valueChanged, this, [this] {
        if (m_ui->hsc1->isSliderDown())
            hsc1_Scroll();
        else
            hsc1_Change();
    });
    connect(m_ui->hsc1, &QScrollBar::sliderReleased, this, &frmTandrel::hsc1_Change);
    // Right and Up make it louder, as on any volume control.
    m_ui->hsc1->setInvertedControls(false);
    m_sound->setVolume(m_ui->hsc1->value());
    connect(m_ui->clkConfig, &QAbstractButton::clicked, this, &frmTandrel::clkConfig_Click);
    connect(new QShortcut(QKeySequence(Qt::Key_F9), this), &QShortcut::activated, this, &frmTandrel::openShowSettings);
    applyShowSettings(show::load());
}

void frmTandrel::openShowSettings()
{
    frmShow dialog(this, m_show, platform::media().audioOutputs());
    if (platform::dialogs().execModal(dialog) != QDialog::Accepted)
        return;
    applyShowSettings(dialog.chosen());
    show::save(m_show);
}

void frmTandrel::applyShowSettings(const show::Settings &settings)
{
    m_show = settings;
    // Never chosen, the players stay where Qt put them.
    if (!settings.output.isEmpty() || !m_sound->output().isEmpty())
        m_sound->chooseOutput(settings.output);
}

void frmTandrel::CheckTimer()
{
    Guarded("CheckTimer", [&] { m_countdown->restart(); });
}

void frmTandrel::Timer1_Timer()
{
    Guarded("Timer1_Timer", [&] {
        m_countdown->tick();
        QCoreApplication::processEvents();
    });
}

void frmTandrel::OptTimer_Click(qint16)
{
    Guarded("OptTimer_Click", [&] {
        m_countdown->switchTo(OptTimer[0]->isChecked(), tabShown(m_ui->SSTab1->currentIndex()));
        paintAudience();  // the count shown or hidden, though it may read the same
    });
}

void frmTandrel::cmdUpdateButton_Click()
{
    Guarded("cmdUpdateButton_Click", [&] { m_countdown->takeLengthFromDisplay(); });
}

void frmTandrel::SSTab1_Click(qint16)
{
    Guarded("SSTab1_Click", [&] { m_countdown->reset(); });
}

void frmTandrel::SSTab1_DblClick()
{
    Guarded("SSTab1_DblClick", [&] { m_countdown->reset(); });
}

void frmTandrel::optSound_Click(qint16)
{
    Guarded("optSound_Click", [&] {
        const bool on = optSound[0]->isChecked();
        m_sound->switchTo(on);
        m_ui->hsc1->setEnabled(on);
    });
}

void frmTandrel::hsc1_Change()
{
    Guarded("hsc1_Change", [&] { m_sound->setVolume(m_ui->hsc1->value()); });
}

void frmTandrel::hsc1_Scroll()
{
    Guarded("hsc1_Scroll", [&] { m_sound->setVolume(m_ui->hsc1->value()); });
}

void frmTandrel::readInConfigFile()
{
    Guarded("readInConfigFile", [&] {
        config::readSettings(platform::programPath(config::FileName), [&](const config::Setting &s) {
            const bool on = s.value == 1;
            switch (s.key) {
            case config::Key::TimerTime:
                m_countdown->setDisplay(s.text);
                m_countdown->setLength(qint16(s.value));
                break;
            case config::Key::SoundContinual:
                m_ui->chkSoundAlwaysOn->setChecked(on);
                break;
            case config::Key::Buzzer:
                m_ui->chkBuzzer->setChecked(on);
                break;
            case config::Key::Sound:
                // The file starts or stops the music itself, whatever the
                // switch did.
                selectOption(optSound[on ? 0 : 1]);
                on ? m_sound->playMusic() : m_sound->stopMusic();
                break;
            case config::Key::Timer:
                selectOption(OptTimer[on ? 0 : 1]);
                break;
            }
        });
    });
}

void frmTandrel::applySettings(const config::Choices &choices)
{
    m_countdown->setDisplay(choices.timerTime);
    m_ui->cmdUpdateButton->click();
    // A row with any other text than Yes or No leaves its setting alone.
    if (const auto yes = config::rowSaysYes(choices.soundContinual))
        m_ui->chkSoundAlwaysOn->setChecked(*yes);
    if (const auto yes = config::rowSaysYes(choices.buzzer))
        m_ui->chkBuzzer->setChecked(*yes);
    if (const auto yes = config::rowSaysYes(choices.sound))
        selectOption(optSound[*yes ? 0 : 1]);
    if (const auto yes = config::rowSaysYes(choices.timer))
        selectOption(OptTimer[*yes ? 0 : 1]);
}

void frmTandrel::clkConfig_Click()
{
    Guarded("clkConfig_Click", [&] {
        m_countdown->pause();
        Tag = QString::number(m_countdown->length());
        {
            const config::Choices current{Tag, yesNo(m_ui->chkSoundAlwaysOn->isChecked()),
                                          yesNo(m_ui->chkBuzzer->isChecked()), yesNo(optSound[0]->isChecked()),
                                          yesNo(OptTimer[0]->isChecked())};
            frmConfig dialog(this, current, [this](const config::Choices &c) { applySettings(c); });
            dialog.Form_Load();
            platform::dialogs().execModal(dialog);
        }
        // Back to the clicker's button, so paging goes on at once.
        (m_ui->SSTab1->currentIndex() == 0 ? m_ui->clkNext : m_ui->clkNextPhrase)->setFocus();
        Tag.clear();
    });
}
