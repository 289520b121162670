#pragma once
#include <QString>

namespace platform {

// Whether the Linux part that plays the named component's role is here:
// the widgets toolkit for the buttons, tabs and text boxes, our own look for
// the skin, and decoders for MP3 and WAV for the media player.
bool componentAvailable(const QString &componentFile);

}  // namespace platform
