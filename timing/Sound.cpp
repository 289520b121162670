#include "timing/Sound.h"

Sound::Sound()
    : m_music(platform::media().createPlayer(QStringLiteral("wmp1"))),
      m_buzzer(platform::media().createPlayer(QStringLiteral("wmp2")))
{
}

Sound::~Sound() = default;

void Sound::setUp()
{
    m_music->setUrl(platform::programPath(QStringLiteral("MatchMusic.mp3")));
    m_music->stop();
    m_buzzer->setUrl(platform::programPath(QStringLiteral("Buzzer.wav")));
    m_buzzer->stop();
}

void Sound::chooseOutput(const QByteArray &id)
{
    m_chosen = id;
    if (!m_watch) {
        m_watch = std::make_unique<QObject>();
        platform::media().watchOutputs(m_watch.get(), [this] { followOutputs(); });
    }
    followOutputs();
}

void Sound::followOutputs()
{
    QByteArray to;
    for (const platform::AudioOutput &output : platform::media().audioOutputs())
        if (output.id == m_chosen || (to.isEmpty() && output.isDefault))
            to = output.id;
    if (to == m_output)
        return;
    m_output = to;
    m_music->setOutput(to);
    m_buzzer->setOutput(to);
}

void Sound::switchTo(bool on)
{
    m_on = on;
    if (on) {
        m_music->play();
        m_music->setLoop(true);
    } else {
        m_music->stop();
    }
}

void Sound::setVolume(int volume)
{
    m_music->setVolume(volume);
    m_buzzer->setVolume(volume);
}

void Sound::questionShown()
{
    if (m_on)
        m_music->play();
}

void Sound::countReachedZero()
{
    if (!m_on)
        return;
    if (buzzer)
        m_buzzer->play();
    if (!continual)
        m_music->stop();
}
