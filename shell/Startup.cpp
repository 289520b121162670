#include "shell/Startup.h"
#include "shell/frmSplash.h"
#include <QApplication>

namespace tandrel {

int run(QApplication &app)
{
    QApplication::setApplicationName(QStringLiteral("Tandrel"));
    auto *splash = new frmSplash;
    splash->setWindowFlag(Qt::SplashScreen);
    splash->Form_Load();
    splash->show();
    return app.exec();
}

}  // namespace tandrel
