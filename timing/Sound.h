#pragma once
// Music and buzzer: the two players and the switches that govern them.
#include "platform/Services.h"
#include <QObject>
#include <memory>

class Sound {
public:
    Sound();
    ~Sound();

    // The music file and the buzzer file, both players stopped.
    void setUp();
    // "Sound On" starts the looping music, "Sound Off" stops it.
    void switchTo(bool on);
    bool isOn() const { return m_on; }
    // Both players at once, 0 to 100.
    void setVolume(int volume);

    // A new question: with sound on the music plays (from the start when it
    // had stopped).
    void questionShown();
    // The count reached zero: with sound on, the buzzer if wanted, and the
    // music stops unless it plays on.
    void countReachedZero();

    // The sound device chosen by id, empty for the default. While it is
    // unplugged both play on the default device, and on it again when it
    // comes back; nothing stops.
    void chooseOutput(const QByteArray &id);
    // The device both play on now.
    QByteArray output() const { return m_output; }

    void playMusic() { m_music->play(); }
    void stopMusic() { m_music->stop(); }

    bool buzzer = false;     // the buzzer sounds at zero
    bool continual = false;  // the music plays on through zero

private:
    void followOutputs();
    std::unique_ptr<platform::MediaPlayer> m_music, m_buzzer;
    bool m_on = false;
    QByteArray m_chosen, m_output;
    std::unique_ptr<QObject> m_watch;  // lives as long as the outputs are watched
};
