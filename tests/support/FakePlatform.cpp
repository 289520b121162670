#include "FakePlatform.h"
#include "platform/Errors.h"
#include "platform/Globals.h"
#include <QFile>
#include <QSettings>
#include <QRegularExpression>

namespace {
class RecordingPlayer final : public platform::MediaPlayer {
public:
    RecordingPlayer(QString name, QStringList &calls) : m_name(std::move(name)), m_calls(calls) {}
    void setUrl(const QString &path) override { record(QStringLiteral("url ") + path); }
    void play() override { record(QStringLiteral("play")); }
    void stop() override { record(QStringLiteral("stop")); }
    void setVolume(int volume) override { record(QStringLiteral("volume %1").arg(volume)); }
    void setLoop(bool loop) override { record(loop ? QStringLiteral("loop on") : QStringLiteral("loop off")); }
    void setOutput(const QByteArray &id) override { record(QStringLiteral("output ") + QString::fromUtf8(id)); }

private:
    void record(const QString &what) { m_calls.append(m_name + QLatin1Char(' ') + what); }
    QString m_name;
    QStringList &m_calls;
};
}  // namespace

FakePlatform::FakePlatform()
{
    dir = m_tempDir.path();
    // The user's own settings stay out of reach of the tests.
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_configDir.path());
    Globals::ResetLogForTests();
    m_previous = platform::install({this, this, this, this, this, this});
}

FakePlatform::~FakePlatform()
{
    platform::install(m_previous);
    Globals::ResetLogForTests();
}

QStringList FakePlatform::boxesShown() const
{
    static const QRegularExpression report(QStringLiteral("Current SubRoutine is ([^\r]+)\r\nError Number: (-?\\d+)\r\n"));
    QStringList shown;
    for (const ShownBox &box : boxes) {
        const QRegularExpressionMatch m = report.match(box.text);
        shown << (m.hasMatch() ? m.captured(1) + QLatin1Char(' ') + m.captured(2) : box.title);
    }
    return shown;
}

QString FakePlatform::writeFile(const QString &name, const QByteArray &bytes) const
{
    QFile f(path(name));
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write the test file %s", qPrintable(name));
    return f.fileName();
}

QByteArray FakePlatform::fileBytes(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList FakePlatform::logTexts() const
{
    const QString stamp = platform::generalDateText(time, loc) + QStringLiteral("  ");
    QStringList texts = QString::fromUtf8(logBytes()).split(QStringLiteral("\r\n"));
    for (QString &line : texts)
        if (line.startsWith(stamp))
            line.remove(0, stamp.size());
    if (texts.last().isEmpty())
        texts.removeLast();
    return texts;
}

int FakePlatform::messageBox(const QString &text, int style, const QString &title)
{
    boxes.append({text, style, title});
    if (onBox)
        onBox(boxes.last());
    if (!answers.isEmpty())
        return answers.takeFirst();
    return (style & 0x0F) == platform::mb::YesNoCancel ? platform::mb::Cancel : platform::mb::Ok;
}

std::unique_ptr<platform::MediaPlayer> FakePlatform::createPlayer(const QString &name)
{
    if (playerFailure)
        platform::raise(playerFailure);
    return std::make_unique<RecordingPlayer>(name, mediaCalls);
}

void FakePlatform::launch(const QString &, const QString &file, const QString &)
{
    for (const QString &c : componentsLoadingAfterLaunch)
        if (file.endsWith(c))
            missingComponents.removeAll(c);
}

float FakePlatform::next()
{
    if (!randomValues.isEmpty())
        return randomValues.takeFirst();
    return float(m_gen() >> 8) * (1.0f / 16777216.0f);
}
