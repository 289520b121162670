#include "platform/MediaFormats.h"
#include <QList>
#include <QMediaFormat>
#include <QMediaPlayer>
#include <QStringList>

namespace platform {

namespace {
// Asked by codec: Qt's GStreamer back end lists only a few file formats
// (Wave, AVI) even where it plays MP3, but its codecs are the decoders
// GStreamer really has.
bool decoders()
{
    const auto codecs = QMediaFormat().supportedAudioCodecs(QMediaFormat::Decode);
    return codecs.contains(QMediaFormat::AudioCodec::MP3) && codecs.contains(QMediaFormat::AudioCodec::Wave);
}

bool isMediaPlayer(const QString &componentFile)
{
    return componentFile.compare(QLatin1String("wmp.dll"), Qt::CaseInsensitive) == 0;
}

bool linkedIn(const QString &componentFile)
{
    static const QStringList linked = {QStringLiteral("SonicClickUltra.ocx"), QStringLiteral("vbskpro2.ocx"),
                                       QStringLiteral("RICHTX32.OCX"), QStringLiteral("TabCtl32.ocx")};
    for (const QString &name : linked)
        if (componentFile.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}
}  // namespace

bool componentAvailable(const QString &componentFile)
{
    return isMediaPlayer(componentFile) ? decoders() : linkedIn(componentFile);
}

bool componentInstalledHere(const QString &componentFile)
{
    if (isMediaPlayer(componentFile))
        return QMediaPlayer().isAvailable();
    return linkedIn(componentFile);
}

}  // namespace platform
