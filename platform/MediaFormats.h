#pragma once
#include <QString>

namespace platform {

// Whether the Linux part that plays the named component's role is here:
// the widgets toolkit for the buttons, tabs and text boxes, our own look for
// the skin, and decoders for MP3 and WAV for the media player.
bool componentAvailable(const QString &componentFile);

// Whether the Linux part of that role is installed at all. The toolkit and
// our look are linked into the program; the media player is installed when
// Qt Multimedia found a back end, even one that cannot decode our files.
bool componentInstalledHere(const QString &componentFile);

}  // namespace platform
