#include "platform/FolderLock.h"
#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

bool holdFolder(const QString &folder)
{
    // The folder itself is locked, not a file in it or in the runtime
    // folder: nothing is written, so a read-only or full disk, another
    // XDG_RUNTIME_DIR or a file left by a crash cannot change the answer.
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return true;
    struct stat st {};
    ::fstat(fd, &st);
    // Held once per folder for the life of the process; asking again must
    // not see our own hold as another copy's.
    static std::map<std::pair<dev_t, ino_t>, int> held;
    const auto key = std::pair{st.st_dev, st.st_ino};
    if (held.count(key)) {
        ::close(fd);
        return true;
    }
    if (::flock(fd, LOCK_EX | LOCK_NB) == 0) {
        held[key] = fd;  // CLOEXEC: a browser started from the game does not inherit it
        return true;
    }
    const bool other = errno == EWOULDBLOCK;
    ::close(fd);
    return !other;
}

}  // namespace platform
