#pragma once
// The program's one look, put on every window: buttons drawn as the game's
// peach cards, large enough to read on a projector.
#include <QString>

namespace look {
QString styleSheet();
// Applies the look to every window of the program, now and later.
void apply();
}  // namespace look
