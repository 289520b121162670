#pragma once
class QApplication;

namespace tandrel {
// Shows the first window and runs the program until it ends.
int run(QApplication &app);
// Before any text is drawn: the audience screen's text is far larger than
// Qt's glyph cache takes by default (64 pixels), and drawn as outlines
// instead, one long phrase costs more than a frame.
void cacheLargeGlyphs();
}
