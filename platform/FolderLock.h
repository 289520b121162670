#pragma once
#include <QString>

namespace platform {

// Takes this process's hold on a folder, so that a second copy of the
// program started from the same folder (by any path to it) knows it is not
// alone. The kernel lets go when the process ends, however it ends, so a
// hold can never outlive its copy. False only when another process holds
// the folder; a folder that cannot be held at all (unreadable, or on a file
// system without locks) lets the program start.
bool holdFolder(const QString &folder);

}  // namespace platform
