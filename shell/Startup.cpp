#include "shell/Startup.h"
#include <QApplication>

namespace tandrel {

int run(QApplication &app)
{
    QApplication::setApplicationName(QStringLiteral("Tandrel"));
    return app.exec();
}

}  // namespace tandrel
