#include "timing/Countdown.h"
#include "platform/Numeric.h"
#include "timing/Sound.h"
#include <QTimer>

Countdown::Countdown(Sound &sound, QObject *parent) : QObject(parent), m_sound(sound), m_timer(new QTimer(this))
{
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setInterval(1000);
    m_timer->setTimerType(Qt::PreciseTimer);  // a two-minute count must not drift
}

bool Countdown::isRunning() const
{
    return m_timer->isActive();
}

void Countdown::takeLengthFromDisplay()
{
    m_length = platform::toInt16(m_display);
}

void Countdown::setDisplay(const QString &text)
{
    if (text == m_display)
        return;
    m_display = text;
    Q_EMIT displayChanged(text);
}

void Countdown::switchTo(bool on, bool questionShown)
{
    m_on = on;
    // Without a question on show the switch moves but the count does not.
    if (!questionShown)
        return;
    if (on)
        m_timer->start();
    else
        reset();
}

void Countdown::restart()
{
    if (!m_on) {
        reset();
        return;
    }
    // Each new question gets its whole first second.
    m_timer->start();
    setDisplay(QString::number(m_length));
    m_sound.questionShown();
}

void Countdown::tick()
{
    const qint16 t = platform::toInt16(m_display);
    const qint16 n = platform::add16(t, -1);
    if (t == 1)
        m_sound.countReachedZero();
    if (platform::toDouble(m_display) == 0)
        m_timer->stop();
    else
        setDisplay(QString::number(n));
}

void Countdown::reset()
{
    m_timer->stop();
    setDisplay(QString::number(m_length));
}

void Countdown::pause()
{
    m_timer->stop();
}
