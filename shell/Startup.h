#pragma once
class QApplication;

namespace tandrel {
// Shows the first window and runs the program until it ends.
int run(QApplication &app);
}
