#include "platform/MediaFormats.h"
#include <QList>
#include <QMediaFormat>
#include <QStringList>

namespace platform {

namespace {
bool decoders()
{
    const auto formats = QMediaFormat().supportedFileFormats(QMediaFormat::Decode);
    return formats.contains(QMediaFormat::MP3) && formats.contains(QMediaFormat::Wave);
}
}  // namespace

bool componentAvailable(const QString &componentFile)
{
    if (componentFile.compare(QLatin1String("wmp.dll"), Qt::CaseInsensitive) == 0)
        return decoders();
    static const QStringList linked = {QStringLiteral("SonicClickUltra.ocx"), QStringLiteral("vbskpro2.ocx"),
                                       QStringLiteral("RICHTX32.OCX"), QStringLiteral("TabCtl32.ocx")};
    for (const QString &name : linked)
        if (componentFile.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

}  // namespace platform
