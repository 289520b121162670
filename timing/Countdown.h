#pragma once
// The countdown of each question: one tick a second from the timer length
// down to zero, where the sound has its moment. The display text is the
// count, as the host sees it.
#include <QObject>
#include <QString>

class QTimer;
class Sound;

class Countdown : public QObject {
    Q_OBJECT
public:
    Countdown(Sound &sound, QObject *parent);

    // The tick source ("Timer1"): running while it is active.
    QTimer *timer() const { return m_timer; }
    bool isRunning() const;

    // The timer length in seconds.
    qint16 length() const { return m_length; }
    void setLength(qint16 seconds) { m_length = seconds; }
    // The length as the display reads now (how a new length is taken).
    void takeLengthFromDisplay();

    const QString &display() const { return m_display; }
    void setDisplay(const QString &text);

    // "Timer On" or "Timer Off" chosen. With a question on show the count
    // resumes from the display, or stops and shows the length.
    void switchTo(bool on, bool questionShown);
    bool isOn() const { return m_on; }

    // A new question: the count starts again from the length (and the music
    // plays), or with the timer off stays idle at the length.
    void restart();
    // One second.
    void tick();
    // Idle: no tick, the display at the length.
    void reset();
    // No tick, the display as it is.
    void pause();

Q_SIGNALS:
    void displayChanged(const QString &text);

private:
    Sound &m_sound;
    QTimer *m_timer;
    qint16 m_length = 0;
    QString m_display = QStringLiteral("30");
    bool m_on = true;
};
