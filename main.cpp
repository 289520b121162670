#include "shell/Startup.h"
#include <QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    return tandrel::run(app);
}
