#pragma once
// The program's one look, put on every window: buttons drawn as the game's
// peach cards, large enough to read on a projector.
#include <QString>

namespace look {
QString styleSheet();
// Makes the program's pictures available (the splash, the icon).
void loadResources();
// Applies the look to every window of the program, now and later.
void apply();
}  // namespace look
