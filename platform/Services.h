#pragma once
// The narrow ways in which the rest of the program reaches the OS. Each has a
// real implementation on Qt/POSIX and can be replaced as a whole by tests.
#include <QDateTime>
#include <QLocale>
#include <QRect>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

class QDialog;
class QObject;
class QWidget;

namespace platform {

// Message-box styles and answers, numbered as the program has always used them.
namespace mb {
constexpr int OkOnly = 0;
constexpr int YesNoCancel = 3;
constexpr int Information = 64;
constexpr int Ok = 1;
constexpr int Cancel = 2;
constexpr int Yes = 6;
constexpr int No = 7;
}  // namespace mb

struct Version {
    int major = 0, minor = 0, revision = 0;
    QString text() const { return QStringLiteral("%1.%2.%3").arg(major).arg(minor).arg(revision); }
};

// Modal interaction: message boxes and modal windows.
class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Shows text with the given style (0, 64 or 3; 64 may be added to the
    // others) and title; returns the answer code.
    virtual int messageBox(const QString &text, int style, const QString &title) = 0;
    // Runs a modal window until it closes; returns its result code.
    virtual int execModal(QDialog &dialog) = 0;
};

// The application object.
class AppObject {
public:
    virtual ~AppObject() = default;
    // The folder that holds the program and all its files (no trailing separator).
    virtual QString programDir() const = 0;
    // The user's data folder for this program (empty: none), where what
    // belongs to the user rather than to the program folder is kept.
    virtual QString dataDir() const = 0;
    // The executable's file name without its extension.
    virtual QString exeName() const = 0;
    virtual Version version() const = 0;
    // True when another copy of this program (same program folder) runs.
    virtual bool previousInstance() = 0;
    // Name of the program window that has the focus, or empty.
    virtual QString activeWindowName() const = 0;
    virtual QRect screenGeometry() const = 0;
    // The program-wide mouse pointer back to the normal arrow.
    virtual void setNormalPointer() = 0;
};

// Date, time and the regional settings.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    virtual QLocale locale() const = 0;
};

// A media player: the few operations the sound logic needs.
class MediaPlayer {
public:
    virtual ~MediaPlayer() = default;
    virtual void setUrl(const QString &path) = 0;
    virtual void play() = 0;
    virtual void stop() = 0;
    virtual void setVolume(int volume) = 0;  // 0..100
    virtual void setLoop(bool loop) = 0;
    // The sound device it plays on, by id; playing goes on there.
    virtual void setOutput(const QByteArray &id) = 0;
};

// A sound device: a laptop's speakers, a TV on HDMI, a USB headset...
struct AudioOutput {
    QByteArray id;
    QString name;
    bool isDefault = false;
};

class Media {
public:
    virtual ~Media() = default;
    virtual std::unique_ptr<MediaPlayer> createPlayer(const QString &name) = 0;
    // The sound devices there are now.
    virtual QList<AudioOutput> audioOutputs() = 0;
    // changed() runs whenever a device comes or goes, or another becomes
    // the default, for as long as context lives.
    virtual void watchOutputs(QObject *context, std::function<void()> changed) = 0;
};

// Launches and libraries.
class Shell {
public:
    virtual ~Shell() = default;
    // Opens a web page (or document) in the user's default program.
    virtual void openUrl(const QString &url) = 0;
    // Starts a program without waiting for it; the answer is not examined.
    virtual void launch(const QString &verb, const QString &file, const QString &parameters) = 0;
    // Whether the named component is installed (its file is there)...
    virtual bool componentInstalled(const QString &name) = 0;
    // ...and whether it can be loaded and does its work here.
    virtual bool libraryLoads(const QString &name) = 0;
    // The short form of a path (Linux has none: the path itself).
    virtual QString shortPath(const QString &path) = 0;
};

// Pseudo-random numbers uniform in [0, 1), reseeded from the clock.
class Random {
public:
    virtual ~Random() = default;
    virtual void reseedFromClock() = 0;
    virtual float next() = 0;
};

struct Services {
    Dialogs *dialogs = nullptr;
    AppObject *app = nullptr;
    Clock *clock = nullptr;
    Media *media = nullptr;
    Shell *shell = nullptr;
    Random *random = nullptr;
};

// The services in use: the real ones unless a test installed others.
Services &services();
// Installs a set (null members keep the current ones); returns the previous set.
Services install(const Services &replacement);
// The real implementations.
Services realServices();

inline Dialogs &dialogs() { return *services().dialogs; }
inline AppObject &app() { return *services().app; }
inline Clock &clock() { return *services().clock; }
inline Media &media() { return *services().media; }
inline Shell &shell() { return *services().shell; }
inline Random &random() { return *services().random; }

// Shorthand for the most common call.
inline int msgBox(const QString &text, int style, const QString &title)
{
    return dialogs().messageBox(text, style, title);
}

// The locale's general date text: short date with a four-digit year, a space,
// long time with seconds and without time zone ("11/18/2026 4:05:32 PM").
QString generalDateText(const QDateTime &when, const QLocale &locale);
// The same for the clock's current time and locale.
QString nowText();

// The program's loaded windows, in the order they were loaded. Each window
// registers itself when it loads; a deleted window drops out by itself.
void registerLoadedWindow(QWidget *window);
// A window that has unloaded but is not deleted yet.
void unregisterLoadedWindow(QWidget *window);
QList<QWidget *> loadedWindows();
QWidget *loadedWindow(const QString &name);

// A path in the program directory: the directory, a separator and the name.
QString programPath(const QString &name);
// Native separators, for texts shown to the host.
QString shownPath(const QString &path);

}  // namespace platform
