#include "shell/Startup.h"
#include "shell/frmTandrel.h"
#include <QApplication>

namespace tandrel {

int run(QApplication &app)
{
    QApplication::setApplicationName(QStringLiteral("Tandrel"));
    auto *main = new frmTandrel;
    main->setAttribute(Qt::WA_DeleteOnClose);
    main->Form_Load();
    // A second copy has already said so and closed itself.
    if (main->isEnding())
        return 0;
    main->show();
    return app.exec();
}

}  // namespace tandrel
