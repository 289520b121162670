// Saves a question file over and over, alternating between two contents,
// until it is killed: the other half of the crash-safety test.
//   crash_writer PATH
#include "platform/TextFiles.h"
#include <QCoreApplication>

// The two contents, large enough that a write takes a while.
QString content(int which)
{
    QString text;
    for (int i = 0; i < 120000; ++i)
        text += QStringLiteral("Version %1: line %2 with a Blank in it\r\n").arg(which).arg(i);
    return text;
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString path = QString::fromLocal8Bit(argv[1]);
    const QString texts[2] = {content(0), content(1)};
    std::fputs("ready\n", stdout);
    std::fflush(stdout);
    for (int i = 1;; ++i)
        platform::writeWhole(path, texts[i % 2]);
}
