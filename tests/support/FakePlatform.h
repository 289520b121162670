#pragma once
// A whole platform for tests: message boxes answered from a script and
// recorded, a program folder of its own, a fixed clock and locale, media
// players and launches that only record what they were told.
#include "platform/Services.h"
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <random>

struct ShownBox {
    QString text;
    int style;
    QString title;
};

class FakePlatform final : public platform::Dialogs,
                           public platform::AppObject,
                           public platform::Clock,
                           public platform::Media,
                           public platform::Shell,
                           public platform::Random {
public:
    FakePlatform();
    ~FakePlatform() override;
    FakePlatform(const FakePlatform &) = delete;
    FakePlatform &operator=(const FakePlatform &) = delete;

    // Message boxes: answers are taken in order; without one, a box is
    // answered OK, or Cancel when it asks a question.
    QList<int> answers;
    QList<ShownBox> boxes;
    // Called as each box is shown, before it is answered.
    std::function<void(const ShownBox &)> onBox;
    QStringList boxTitles() const;
    // Each box as the host reads it: a failure report as its routine and
    // number ("clkSave_Click 61"), any other box as its title.
    QStringList boxesShown() const;
    // Modal windows: the handler answers them; by default they are closed at once.
    std::function<int(QDialog &)> onModal;
    QStringList modalsShown;

    // Application object.
    QString dir;  // the program folder, a fresh temporary one
    QString exe = QStringLiteral("Tandrel");
    platform::Version ver{1, 0, 0};
    bool otherInstance = false;
    QString activeWindow = QStringLiteral("frmTandrel");
    QRect screen{0, 0, 1920, 1080};
    int pointerResets = 0;

    // Clock and locale.
    QDateTime time = QDateTime(QDate(2026, 11, 18), QTime(16, 5, 32));
    QLocale loc{QLocale::English, QLocale::UnitedStates};

    // Media: every call of every player, as "wmp1 play", "wmp2 volume 40"...
    QStringList mediaCalls;
    // A failure number for making a player (a media back end that is missing).
    int playerFailure = 0;

    // Shell.
    QStringList urlsOpened;
    QStringList launches;
    QStringList absentComponents;   // components not installed at all
    QStringList missingComponents;  // components that do not load
    QStringList componentsLoadingAfterLaunch;

    // Random numbers: a fixed seed unless a test sets its own sequence.
    QList<float> randomValues;

    // Writes a file into the program folder (CR LF as given); returns its path.
    QString writeFile(const QString &name, const QByteArray &bytes) const;
    QString path(const QString &name) const { return dir + QLatin1Char('/') + name; }
    // The bytes of a file in the program folder; empty when it is not there.
    QByteArray fileBytes(const QString &name) const;
    // The log's lines, without their date and time.
    QStringList logTexts() const;
    QByteArray logBytes() const;

    // platform::Dialogs
    int messageBox(const QString &text, int style, const QString &title) override;
    int execModal(QDialog &dialog) override;
    // platform::AppObject
    QString programDir() const override { return dir; }
    QString exeName() const override { return exe; }
    platform::Version version() const override { return ver; }
    bool previousInstance() override { return otherInstance; }
    QString activeWindowName() const override { return activeWindow; }
    QRect screenGeometry() const override { return screen; }
    void setNormalPointer() override { ++pointerResets; }
    // platform::Clock
    QDateTime now() const override { return time; }
    QLocale locale() const override { return loc; }
    // platform::Media
    std::unique_ptr<platform::MediaPlayer> createPlayer(const QString &name) override;
    // platform::Shell
    void openUrl(const QString &url) override { urlsOpened.append(url); }
    void launch(const QString &verb, const QString &file, const QString &parameters) override;
    bool componentInstalled(const QString &name) override { return !absentComponents.contains(name); }
    bool libraryLoads(const QString &name) override
    {
        return !absentComponents.contains(name) && !missingComponents.contains(name);
    }
    QString shortPath(const QString &path) override { return path; }
    // platform::Random
    void reseedFromClock() override { m_gen.seed(12345u); }
    float next() override;

private:
    QTemporaryDir m_tempDir;
    platform::Services m_previous;
    std::mt19937 m_gen{12345u};
};
