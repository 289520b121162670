#include "platform/TextFiles.h"
#include "platform/Errors.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>
#include <QStringEncoder>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {
std::function<void(const QString &)> &commitHook()
{
    static std::function<void(const QString &)> hook;
    return hook;
}

// Room for what a reader may add to a line in place (a question's blank is
// longer than the word it replaces), so that it need not copy the line.
constexpr qsizetype LineRoom = 16;

QString decodeLine(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text(bytes.size() + LineRoom, Qt::Uninitialized);
    text.truncate(utf8.appendToBuffer(text.data(), bytes) - text.constData());
    if (utf8.hasError())
        return QString::fromLatin1(bytes.data(), bytes.size());
    return text;
}

constexpr qint64 ChunkSize = 1 << 16;

// What a byte order mark at the start says, and how many bytes it takes.
struct Mark {
    std::optional<QStringConverter::Encoding> utf16;
    qsizetype length = 0;
};

// Nothing while the bytes could still be the start of a mark.
std::optional<Mark> markOf(QByteArrayView head, bool complete)
{
    if (head.startsWith("\xEF\xBB\xBF"))
        return Mark{std::nullopt, 3};
    if (head.startsWith("\xFF\xFE"))
        return Mark{QStringConverter::Utf16LE, 2};
    if (head.startsWith("\xFE\xFF"))
        return Mark{QStringConverter::Utf16BE, 2};
    const bool mayBeMark = QByteArrayView("\xEF\xBB\xBF").startsWith(head) || head == "\xFF" || head == "\xFE";
    if (!complete && mayBeMark)
        return std::nullopt;
    return Mark{};
}

QString decodeUtf8OrLatin1(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    // Decode line by line so one foreign line does not spoil the others.
    QString out;
    out.reserve(bytes.size());
    qsizetype start = 0;
    for (qsizetype i = 0; i <= bytes.size(); ++i) {
        if (i == bytes.size() || bytes[i] == '\n') {
            out += decodeLine(bytes.sliced(start, i - start));
            if (i < bytes.size())
                out += QLatin1Char('\n');
            start = i + 1;
        }
    }
    return out;
}
}  // namespace

QString onDisk(const QString &path)
{
    const QFileInfo info(path);
    if (info.exists())
        return path;
    const QDir dir = info.dir();
    if (!dir.exists())
        return path;
    const QString wanted = info.fileName();
    const QStringList names = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                            QDir::Name);
    for (const QString &name : names)
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return dir.filePath(name);
    return path;
}

bool fileExists(const QString &path)
{
    const QFileInfo info(onDisk(path));
    return info.exists() && !info.isDir();
}

bool folderExists(const QString &path)
{
    return QFileInfo(onDisk(path)).isDir();
}

QString decodeText(QByteArrayView bytes)
{
    const Mark mark = *markOf(bytes, true);
    bytes = bytes.sliced(mark.length);
    if (mark.utf16) {
        QStringDecoder utf16(*mark.utf16, QStringDecoder::Flag::Stateless);
        return utf16.decode(bytes);
    }
    return decodeUtf8OrLatin1(bytes);
}

void checkShowable(QStringView text)
{
    if (text.size() > MaxShownChars)
        raise(err::OutOfMemory, QStringLiteral("the text is too large to show"));
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == u'\n' || text[i] == u'\r' || text[i] == QChar::ParagraphSeparator) {
            if (i - lineStart > MaxShownLine)
                raise(err::OutOfMemory, QStringLiteral("a line is too long to show"));
            lineStart = i + 1;
        }
    }
}

QByteArray encodeText(const QString &text)
{
    return text.toUtf8();
}

int openFailureNumber(const QString &path, Access access)
{
    const QFileInfo info(path);
    if (!info.dir().exists())
        return err::PathNotFound;
    if (info.isDir())
        return err::PathFileAccess;
    if (!info.exists()) {
        if (access == Access::Replace)
            return QFileInfo(info.absolutePath()).isWritable() ? err::PathFileAccess : err::PermissionDenied;
        return err::FileNotFound;
    }
    if (access == Access::Read ? !info.isReadable() : !info.isWritable())
        return err::PermissionDenied;
    return err::PathFileAccess;
}

LineSplitter::LineSplitter(qsizetype maxLine)
    : m_maxLine(maxLine)
{
}

template <typename View, typename Buffer, typename Decode>
bool LineSplitter::split(View text, Buffer &pending, const Decode &decode, const EachLine &eachLine)
{
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto c = text[i];
        if (c == u'\n' && m_lastWasCR) {  // the LF of a CR LF already ended the line
            m_lastWasCR = false;
            from = i + 1;
            continue;
        }
        m_lastWasCR = false;
        if (c == u'\r' || c == u'\n') {
            const bool overlong = std::exchange(m_overlong, false) || tooLong(pending.size() + i - from);
            QString line;
            if (!overlong) {
                pending.append(text.sliced(from, i - from));
                line = decode(pending);
            }
            pending.clear();
            m_lastWasCR = (c == u'\r');
            from = i + 1;
            if (!overlong && !eachLine(line))
                return false;
        }
    }
    if (!m_overlong && tooLong(pending.size() + text.size() - from)) {
        m_overlong = true;
        pending.clear();
    }
    if (!m_overlong)
        pending.append(text.sliced(from));
    return true;
}

bool LineSplitter::feed(QByteArrayView bytes, const EachLine &eachLine)
{
    if (!m_started) {
        m_head.append(bytes);
        const std::optional<Mark> mark = markOf(m_head, false);
        if (!mark)
            return true;
        m_started = true;
        if (mark->utf16)
            m_utf16 = QStringDecoder(*mark->utf16);
        const QByteArray head = std::exchange(m_head, {});
        return feed(QByteArrayView(head).sliced(mark->length), eachLine);
    }
    if (m_utf16.isValid()) {
        const QString text = m_utf16.decode(bytes);
        return split(QStringView(text), m_pendingText, [](const QString &line) { return line; }, eachLine);
    }
    return split(bytes, m_pending, [](const QByteArray &line) { return decodeLine(line); }, eachLine);
}

void LineSplitter::finish(const EachLine &eachLine)
{
    if (!m_started) {
        m_started = true;
        if (!feed(std::exchange(m_head, {}), eachLine))
            return;
    }
    if (m_overlong)
        return;
    if (!m_pending.isEmpty()) {
        QString line = decodeLine(m_pending);
        eachLine(line);
    } else if (!m_pendingText.isEmpty())
        eachLine(m_pendingText);
}

namespace {
// Opens a file to read, never waiting: a FIFO, a device or a socket in a
// file's place (or a link to one) would block the window or never end, so
// only a plain file is read; anything else fails as an unopenable file does.
void openToRead(const QString &real, QFile &file)
{
    const int fd = ::open(QFile::encodeName(real).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd == -1)
        raise(openFailureNumber(real, Access::Read), QString::fromLocal8Bit(std::strerror(errno)));
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return;
    ::close(fd);
    raise(openFailureNumber(real, Access::Read), QStringLiteral("not a plain file: ") + real);
}
}  // namespace

void readLines(const QString &path, const LineSplitter::EachLine &eachLine, qsizetype maxLine)
{
    const QString real = onDisk(path);
    QFile file;
    openToRead(real, file);
    LineSplitter splitter(maxLine);
    while (true) {
        const QByteArray chunk = file.read(ChunkSize);
        if (chunk.isEmpty()) {
            if (file.error() != QFileDevice::NoError)
                raise(err::PathFileAccess, file.errorString());
            break;
        }
        if (!splitter.feed(chunk, eachLine))
            return;
    }
    splitter.finish(eachLine);
}

QByteArray readBytes(const QString &path, qsizetype maxBytes)
{
    const QString real = onDisk(path);
    QFile file;
    openToRead(real, file);
    // One byte past the limit is enough to know: a larger file is never held whole.
    QByteArray bytes = maxBytes > 0 ? file.read(maxBytes + 1) : file.readAll();
    if (maxBytes > 0 && bytes.size() > maxBytes)
        raise(err::OutOfMemory, QStringLiteral("the file is too large to show"));
    if (file.error() != QFileDevice::NoError)
        raise(err::PathFileAccess, file.errorString());
    return bytes;
}

QString readWhole(const QString &path, qsizetype maxBytes)
{
    const QByteArray bytes = readBytes(path, maxBytes);
    if (bytes.isEmpty())
        raise(err::InputPastEnd, QStringLiteral("the file is empty"));
    return decodeText(bytes);
}

QString unfinishedSaveName(const QString &path)
{
    const QFileInfo info(path);
    return info.dir().filePath(QLatin1Char('.') + info.fileName() + QStringLiteral(".saving"));
}

void tidyUnfinishedSaves(const QString &folder, const QStringList &savedNames)
{
    QStringList leftovers;
    for (const QString &name : savedNames)
        leftovers << QFileInfo(unfinishedSaveName(name)).fileName();
    const QDir dir(folder);
    for (const QFileInfo &file : dir.entryInfoList(leftovers, QDir::Files | QDir::Hidden))
        if (!file.isSymLink())
            QFile::remove(file.filePath());
}

namespace {
// Writes the bytes into a file with no name yet (O_TMPFILE), names it with
// its unfinished-save name only once it is whole and on disk, then renames
// it over the old file. A crash before the rename leaves the old file; only
// in the moment between naming and renaming can it leave the unfinished
// save beside it, which the next save or start removes. File systems
// without unnamed files get the named file from the start.
void replaceAtomically(const QString &real, const QByteArray &bytes)
{
    const QFileInfo info(real);  // a missing folder fails below with 76, as any open there does
    const QByteArray target = QFile::encodeName(real);
    const QByteArray temp = QFile::encodeName(unfinishedSaveName(real));
    ::unlink(temp.constData());  // left by a save that was cut off
    struct stat old {};
    const bool replacing = ::stat(target.constData(), &old) == 0;
    int fd = ::open(QFile::encodeName(info.absolutePath()).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
    const bool named = fd < 0 && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL);
    if (named)
        fd = ::open(temp.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (fd < 0)
        raise(openFailureNumber(real, Access::Replace), QString::fromLocal8Bit(std::strerror(errno)));
    auto discard = [&] {
        ::close(fd);
        if (named)
            ::unlink(temp.constData());
    };
    auto fail = [&](int number) {
        const QString why = QString::fromLocal8Bit(std::strerror(errno));
        discard();
        raise(number, why);
    };
    if (replacing)
        ::fchmod(fd, old.st_mode & 07777);  // the host's permissions stay
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.constData() + done, size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            fail(err::DiskFull);
        done += n;
    }
    if (commitHook()) {
        try {
            commitHook()(real);
        } catch (...) {
            discard();
            throw;
        }
    }
    if (::fsync(fd) != 0)
        fail(err::DiskFull);
    if (!named) {
        const QByteArray self = "/proc/self/fd/" + QByteArray::number(fd);
        if (::linkat(AT_FDCWD, self.constData(), AT_FDCWD, temp.constData(), AT_SYMLINK_FOLLOW) != 0)
            fail(err::PathFileAccess);
    }
    ::close(fd);
    if (::rename(temp.constData(), target.constData()) != 0) {
        const QString why = QString::fromLocal8Bit(std::strerror(errno));
        ::unlink(temp.constData());
        raise(err::PathFileAccess, why);
    }
    const int dirFd = ::open(QFile::encodeName(info.absolutePath()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {  // the rename itself reaches the disk
        ::fsync(dirFd);
        ::close(dirFd);
    }
}

// The file a path finally names: a symbolic link is followed (to a file
// that may not exist yet), so that a save replaces what it points to.
QString followLinks(QString path)
{
    for (int hops = 0; hops < 40; ++hops) {
        const QFileInfo info(path);
        if (!info.isSymLink())
            return path;
        path = info.symLinkTarget();
    }
    raise(err::PathFileAccess, QStringLiteral("too many levels of symbolic links: ") + path);
}

// Writes a whole file so that it is either the old one or the new one. With
// inPlace (only for the log: it may lose its old text, never a question
// file), a folder that takes no new files lets the file itself be rewritten.
void replaceFile(const QString &path, const QByteArray &bytes, bool inPlace)
{
    const QString real = followLinks(onDisk(path));
    if (QFileInfo(real).isDir())
        raise(err::PathFileAccess);
    if (!inPlace) {
        replaceAtomically(real, bytes);
        return;
    }
    QSaveFile file(real);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        raise(openFailureNumber(real, Access::Replace), file.errorString());
    if (file.write(bytes) != bytes.size())  // the unfinished file goes with the QSaveFile
        raise(err::DiskFull, file.errorString());
    if (!file.commit())
        raise(file.error() == QFileDevice::WriteError ? err::DiskFull : err::PathFileAccess, file.errorString());
}
}  // namespace

void writeWhole(const QString &path, const QString &text)
{
    replaceFile(path, encodeText(text), false);
}

void copyWhole(const QString &from, const QString &to)
{
    replaceFile(to, readBytes(from), false);
}

void makeFolder(const QString &path)
{
    if (folderExists(path))
        return;
    const QFileInfo info(path);
    if (!info.dir().exists())
        raise(err::PathNotFound);
    if (!info.dir().mkdir(info.fileName()))
        raise(err::PathFileAccess, QStringLiteral("cannot create ") + path);
}

void writeInPlace(const QString &path, const QString &text)
{
    QFile file(path);
    if (QFileInfo(path).isDir() || !file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        raise(openFailureNumber(path, Access::Replace), file.errorString());
    const QByteArray bytes = encodeText(text);
    if (file.write(bytes) != bytes.size() || !file.flush())
        raise(err::DiskFull, file.errorString());
}

void removeFile(const QString &path)
{
    QFile file(path);
    file.setPermissions(file.permissions() | QFileDevice::WriteOwner);
    if (!file.remove())
        raise(err::PathFileAccess, file.errorString());
}

void appendText(const QString &path, const QString &text)
{
    const QString real = onDisk(path);
    QFile file(real);
    if (QFileInfo(real).isDir() || !file.open(QIODevice::Append | QIODevice::ExistingOnly))
        raise(openFailureNumber(real, Access::Append), file.errorString());
    const QByteArray bytes = encodeText(text);
    if (file.write(bytes) != bytes.size() || !file.flush())
        raise(err::DiskFull, file.errorString());
}

void startFile(const QString &path, const QString &text)
{
    replaceFile(path, encodeText(text), true);
}

void setBeforeCommitHook(std::function<void(const QString &)> hook)
{
    commitHook() = std::move(hook);
}

}  // namespace platform
