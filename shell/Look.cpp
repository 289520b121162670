#include "shell/Look.h"
#include <QApplication>
#include <QIcon>

// The pictures are compiled into the program's library, which must
// register them itself: once, as the program loads, before any window.
static bool loadPictures()
{
    Q_INIT_RESOURCE(tandrel);
    return true;
}
[[maybe_unused]] static const bool picturesLoaded = loadPictures();

namespace look {

QString styleSheet()
{
    return QStringLiteral(R"(
QPushButton {
    color: black;
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff6ea, stop:1 #ffd9b0);
    border: 2px solid rgb(160, 110, 60);
    border-radius: 7px;
    padding: 2px 10px;
}
QPushButton:hover { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fffaf3, stop:1 #ffe4c4); }
QPushButton:pressed { background: #f2c08e; }
QPushButton:focus { border-color: rgb(0, 110, 0); }
QPushButton:disabled { color: #8a8a8a; border-color: #c8b8a8; background: #f1ece6; }
QToolTip {
    color: black;
    background: #fff4e0;
    border: 1px solid rgb(160, 110, 60);
    padding: 4px;
    font-size: 12pt;
}
QMessageBox QLabel { font-size: 13pt; }
)");
}

void apply()
{
    if (qApp->styleSheet() != styleSheet())
        qApp->setStyleSheet(styleSheet());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/tandrel.png")));
}

}  // namespace look
