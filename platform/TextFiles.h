#pragma once
// Text files as the program keeps them: 8-bit text in the system code page
// (UTF-8 here), lines ended by CR LF. Every failure raises a RuntimeError with
// the number the old run time gave it.
#include <QByteArrayView>
#include <QStringDecoder>
#include <QString>
#include <QStringList>
#include <functional>

namespace platform {

// The path of the file that stands for this one on disk: the same path, or a
// file in the same folder whose name differs only in letter case.
QString onDisk(const QString &path);

bool fileExists(const QString &path);    // a file (not a folder), any letter case
bool folderExists(const QString &path);

// Decodes bytes of the system code page. A line that is not valid UTF-8 is
// read as Latin-1, so an accented file from another system keeps its letters
// and no byte is ever lost. A byte order mark is honoured and left out: after
// a UTF-16 one (as Windows' Notepad saves "Unicode") the text is UTF-16.
QString decodeText(QByteArrayView bytes);
QByteArray encodeText(const QString &text);

// Cuts bytes into lines as they arrive, in pieces of any size: a line ends at
// CR LF, a bare LF or a bare CR, and a CR LF split between two pieces is one
// end. Lines are decoded as decodeText does, into strings with room to grow
// a little, and handed over: the callback may keep the string. It returns
// false to stop early; feed then returns false too. A line longer than
// maxLine (bytes, or characters after a UTF-16 mark), when given, is skipped
// without being held.
class LineSplitter {
public:
    using EachLine = std::function<bool(QString &line)>;
    explicit LineSplitter(qsizetype maxLine = 0);
    bool feed(QByteArrayView bytes, const EachLine &eachLine);
    // Hands over the last line when the bytes did not end with a line end.
    void finish(const EachLine &eachLine);

private:
    template <typename View, typename Buffer, typename Decode>
    bool split(View text, Buffer &pending, const Decode &decode, const EachLine &eachLine);
    bool tooLong(qsizetype length) const { return m_maxLine > 0 && length > m_maxLine; }

    bool m_started = false;   // the byte order mark, if any, has been read
    QByteArray m_head;        // the first bytes, until that is known
    QStringDecoder m_utf16;   // valid after a UTF-16 mark
    QByteArray m_pending;     // the unfinished line
    QString m_pendingText;
    bool m_lastWasCR = false;
    qsizetype m_maxLine;
    bool m_overlong = false;  // the line so far is too long and is let go
};

// The editors and the rules viewer show a file whole in a text box, which
// lays out a long line in time that grows with the square of its length. A
// text beyond these limits is refused with "out of memory" (7) rather than
// freezing the program; no question line comes close to them.
constexpr qsizetype MaxShownChars = 8 * 1024 * 1024;
constexpr qsizetype MaxShownLine = 20000;
void checkShowable(QStringView text);
// A file to show that is larger than this is refused the same way without
// being read whole: its text could not be shown (it would hold more characters than
// MaxShownChars in any encoding).
constexpr qsizetype MaxShownFileBytes = 4 * MaxShownChars;

// No line the program reads (question files, settings) is anywhere near
// this long; a longer one is skipped as it is read, without being held, so
// no file can make a reader's memory grow without bound. Only a line made
// almost wholly of spaces could be that long and still mean something.
constexpr qsizetype MaxLineBytes = 64 * 1024;

// Reads a file line by line with a LineSplitter (maxLine 0: any length).
void readLines(const QString &path, const LineSplitter::EachLine &eachLine,
               qsizetype maxLine = MaxLineBytes);

// Reads a whole file's bytes; one larger than maxBytes (when given) fails
// with "out of memory" (7) before anything is read.
QByteArray readBytes(const QString &path, qsizetype maxBytes = 0);

// Reads a whole file unchanged. A file of zero length cannot be read (62).
QString readWhole(const QString &path, qsizetype maxBytes = 0);

// Replaces a whole file so that a crash or a full disk at any moment leaves
// either the old file or the new one, whole. A symbolic link stays and the
// file it points to is replaced, in that file's own folder.
void writeWhole(const QString &path, const QString &text);

// The hidden name a save of this file is written under just before it takes
// the file's place (".TandrelLines.txt.saving"). Only a crash at that very
// moment leaves such a file; removing it loses nothing that was saved.
QString unfinishedSaveName(const QString &path);
// Removes what saves of these files (wildcard names, any letter case) cut
// off by a crash left in a folder: only plain files with exactly such a
// name, never another hidden file of the host's.
void tidyUnfinishedSaves(const QString &folder, const QStringList &savedNames);

// Copies a file byte for byte; the copy replaces its target as safely.
void copyWhole(const QString &from, const QString &to);

// Creates a folder (one level) unless one exists.
void makeFolder(const QString &path);

// Creates or empties a file and writes straight into it, with no temporary
// file: proves that the folder and this very file take writes.
void writeInPlace(const QString &path, const QString &text);

// Deletes a file, also one marked read-only.
void removeFile(const QString &path);

// Appends to an existing file; a missing file is a failure (53).
void appendText(const QString &path, const QString &text);

// Creates or empties a file and writes text to it. Used where the folder may
// be read-only but the file itself writable (the log).
void startFile(const QString &path, const QString &text);

// Test hook: when set, writeWhole calls it after the new content is written
// and before it replaces the old file; a throw there simulates a crash or a
// failing disk at the last moment.
void setBeforeCommitHook(std::function<void(const QString &path)> hook);

enum class Access { Read, Replace, Append };
// Gives the failure number for a file that could not be opened.
int openFailureNumber(const QString &path, Access access);

}  // namespace platform
