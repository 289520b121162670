#include "platform/MediaFormats.h"
#include <QList>
#include <QMediaFormat>
#include <QMediaPlayer>
#include <QStringList>

namespace platform {

namespace {
bool decoders()
{
    const auto formats = QMediaFormat().supportedFileFormats(QMediaFormat::Decode);
    return formats.contains(QMediaFormat::MP3) && formats.contains(QMediaFormat::Wave);
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
