// Saves a question file over and over until it is killed, alternating
// between what it holds as "Version 0" and as "Version 1": the other half
// of the crash-safety test.
//   crash_writer PATH
#include "platform/TextFiles.h"
#include <QCoreApplication>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString path = QString::fromLocal8Bit(argv[1]);
    const QString first = platform::readWhole(path);
    const QString texts[2] = {QString(first).replace(QStringLiteral("Version 1:"), QStringLiteral("Version 0:")),
                              QString(first).replace(QStringLiteral("Version 0:"), QStringLiteral("Version 1:"))};
    std::fputs("ready\n", stdout);
    std::fflush(stdout);
    for (int i = 1;; ++i)
        platform::writeWhole(path, texts[i % 2]);
}
