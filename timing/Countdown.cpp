// The countdown: one tick a second from the timer length down to zero, with
// the zero-time sounds.
#include "core/QuestionRules.h"
#include "platform/Services.h"
#include "platform/Numeric.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"
#include <QCoreApplication>
#include <QTimer>

using Globals::Guarded;

void frmTandrel::connectCountdown()
{
    connect(Timer1, &QTimer::timeout, this, &frmTandrel::Timer1_Timer);
    for (int i = 0; i < 2; ++i)
        connect(OptTimer[size_t(i)], &QAbstractButton::toggled, this, [this, i](bool checked) {
            if (checked)
                OptTimer_Click(qint16(i));
        });
    connect(m_ui->cmdUpdateButton, &QAbstractButton::clicked, this, &frmTandrel::cmdUpdateButton_Click);
    connect(m_ui->SSTab1, &QTabWidget::currentChanged, this, [this](int tab) {
        const int previous = m_lastTab;
        m_lastTab = tab;
        SSTab1_Click(qint16(previous));
    });
    connect(m_ui->SSTab1, &QTabWidget::tabBarDoubleClicked, this, [this](int) { SSTab1_DblClick(); });
    m_lastTab = m_ui->SSTab1->currentIndex();
}

// Idle: no tick, the display at the timer length.
void frmTandrel::resetCount()
{
    Timer1->stop();
    m_ui->txtTimer->setText(QString::number(TimerTime));
}

void frmTandrel::CheckTimer()
{
    Guarded("CheckTimer", [&] {
        if (OptTimer[0]->isChecked()) {
            // Each new question gets its whole first second.
            Timer1->start();
            m_ui->txtTimer->setText(QString::number(TimerTime));
            if (optSound[0]->isChecked())
                wmp1->play();
        } else {
            resetCount();
        }
    });
}

void frmTandrel::Timer1_Timer()
{
    Guarded("Timer1_Timer", [&] {
        const qint16 t = platform::toInt16(m_ui->txtTimer->text());
        const qint16 n = platform::add16(t, -1);
        if (t == 1 && !optSound[1]->isChecked()) {
            if (m_ui->chkBuzzer->isChecked())
                wmp2->play();
            if (!m_ui->chkSoundAlwaysOn->isChecked())
                wmp1->stop();
        }
        if (platform::toDouble(m_ui->txtTimer->text()) == 0)
            Timer1->stop();
        else
            m_ui->txtTimer->setText(QString::number(n));
        QCoreApplication::processEvents();
    });
}

void frmTandrel::OptTimer_Click(qint16)
{
    Guarded("OptTimer_Click", [&] {
        const int tab = m_ui->SSTab1->currentIndex();
        // Without a question on show the option moves but the count does not.
        if (tab == 0 && questions::trimSpaces(lblName[0]->text()).isEmpty())
            return;
        if (tab == 1 && questions::trimSpaces(m_ui->lblPhrase->text()).isEmpty())
            return;
        if (OptTimer[0]->isChecked()) {
            Timer1->start();
        } else {
            resetCount();
        }
    });
}

void frmTandrel::cmdUpdateButton_Click()
{
    Guarded("cmdUpdateButton_Click", [&] { TimerTime = platform::toInt16(m_ui->txtTimer->text()); });
}

void frmTandrel::SSTab1_Click(qint16)
{
    Guarded("SSTab1_Click", [&] {
        resetCount();
    });
}

void frmTandrel::SSTab1_DblClick()
{
    Guarded("SSTab1_DblClick", [&] {
        resetCount();
    });
}
