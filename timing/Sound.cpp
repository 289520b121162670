// Music and buzzer: the two players, the sound options and the volume bar.
#include "platform/Services.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

using Globals::Guarded;

void frmTandrel::connectSound()
{
    for (int i = 0; i < 2; ++i)
        connect(optSound[size_t(i)], &QAbstractButton::toggled, this, [this, i](bool checked) {
            if (checked)
                optSound_Click(qint16(i));
        });
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
    for (auto *player : {wmp1.get(), wmp2.get()})
        player->setVolume(m_ui->hsc1->value());
}

void frmTandrel::mediaSetUp()
{
    wmp1->setUrl(platform::programPath(QStringLiteral("MatchMusic.mp3")));
    wmp1->stop();
    wmp2->setUrl(platform::programPath(QStringLiteral("Buzzer.wav")));
    wmp2->stop();
}

void frmTandrel::optSound_Click(qint16)
{
    Guarded("optSound_Click", [&] {
        if (optSound[0]->isChecked()) {
            wmp1->play();
            wmp1->setLoop(true);
            m_ui->hsc1->setEnabled(true);
        }
        if (optSound[1]->isChecked()) {
            wmp1->stop();
            m_ui->hsc1->setEnabled(false);
        }
    });
}

void frmTandrel::hsc1_Change()
{
    Guarded("hsc1_Change", [&] {
        wmp1->setVolume(m_ui->hsc1->value());
        wmp2->setVolume(m_ui->hsc1->value());
    });
}

void frmTandrel::hsc1_Scroll()
{
    Guarded("hsc1_Scroll", [&] {
        wmp1->setVolume(m_ui->hsc1->value());
        wmp2->setVolume(m_ui->hsc1->value());
    });
}
