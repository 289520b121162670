#include "shell/Startup.h"
#include "shell/frmSplash.h"
#include <QApplication>

namespace tandrel {

void cacheLargeGlyphs()
{
    if (!qEnvironmentVariableIsSet("QT_MAX_CACHED_GLYPH_SIZE"))
        qputenv("QT_MAX_CACHED_GLYPH_SIZE", "400");
}

int run(QApplication &app)
{
    cacheLargeGlyphs();
    QApplication::setApplicationName(QStringLiteral("Tandrel"));
    auto *splash = new frmSplash;
    splash->setWindowFlag(Qt::SplashScreen);
    splash->Form_Load();
    splash->show();
    return app.exec();
}

}  // namespace tandrel
