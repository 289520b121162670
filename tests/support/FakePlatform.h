#pragma once
// A whole platform for tests: message boxes answered from a script and
// recorded, a program folder of its own, a fixed clock and locale, media
// players that only record what they were told.
#include "platform/Errors.h"
#include "platform/Services.h"
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <random>

// The failure number f raises, or 0 when it raises none.
inline int failureOf(const std::function<void()> &f)
{
    try {
        f();
    } catch (const platform::RuntimeError &e) {
        return e.number();
    }
    return 0;
}

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

    // Message boxes take the answers in order; without one, OK, or Cancel to a question.
    QList<int> answers;
    QList<ShownBox> boxes;
    std::function<void(const ShownBox &)> onBox;  // as each box is shown, before its answer
    // A failure report as its routine and number ("clkSave_Click 61"), any other box as its title.
    QStringList boxesShown() const;
    // Answers modal windows; by default they are closed at once.
    std::function<int(QDialog &)> onModal;

    QString dir;  // the program folder, a fresh temporary one
    QString data; // the user's data folder: none unless a test gives one
    bool otherInstance = false;
    QString activeWindow = QStringLiteral("frmTandrel");
    QRect screen{0, 0, 1920, 1080};
    int pointerResets = 0;
    QDateTime time = QDateTime(QDate(2026, 11, 18), QTime(16, 5, 32));
    QLocale loc{QLocale::English, QLocale::UnitedStates};
    QStringList mediaCalls;  // every call of every player, as "wmp1 play", "wmp2 volume 40"...
    int playerFailure = 0;   // a failure number for making a player (a missing media back end)
    QList<platform::AudioOutput> outputs{{"speakers", QStringLiteral("Speakers"), true}};
    // Outputs plugged in or out: tells the watcher, as the sound system does.
    void setOutputs(const QList<platform::AudioOutput> &now) { outputs = now; m_outputsChanged(); }
    QStringList urlsOpened;
    QStringList absentComponents;   // not installed at all
    QStringList missingComponents;  // do not load
    QStringList componentsLoadingAfterLaunch;
    QList<float> randomValues;  // drawn first; then a generator of fixed seed

    // Writes a file into the program folder; returns its path.
    QString writeFile(const QString &name, const QByteArray &bytes) const;
    QString path(const QString &name) const { return dir + QLatin1Char('/') + name; }
    // The bytes of a file in the program folder; empty when it is not there.
    QByteArray fileBytes(const QString &name) const;
    // The log's lines, without their date and time.
    QStringList logTexts() const;
    QByteArray logBytes() const { return fileBytes(QStringLiteral("LogInfo.txt")); }

    int messageBox(const QString &text, int style, const QString &title) override;
    int execModal(QDialog &dialog) override { return onModal ? onModal(dialog) : 0; }
    QString programDir() const override { return dir; }
    QString dataDir() const override { return data; }
    QString exeName() const override { return QStringLiteral("Tandrel"); }
    platform::Version version() const override { return {1, 0, 0}; }
    bool previousInstance() override { return otherInstance; }
    QString activeWindowName() const override { return activeWindow; }
    QRect screenGeometry() const override { return screen; }
    void setNormalPointer() override { ++pointerResets; }
    QDateTime now() const override { return time; }
    QLocale locale() const override { return loc; }
    std::unique_ptr<platform::MediaPlayer> createPlayer(const QString &name) override;
    QList<platform::AudioOutput> audioOutputs() override { return outputs; }
    void watchOutputs(QObject *, std::function<void()> changed) override { m_outputsChanged = std::move(changed); }
    void openUrl(const QString &url) override { urlsOpened.append(url); }
    void launch(const QString &verb, const QString &file, const QString &parameters) override;
    bool componentInstalled(const QString &name) override { return !absentComponents.contains(name); }
    bool libraryLoads(const QString &name) override { return componentInstalled(name) && !missingComponents.contains(name); }
    QString shortPath(const QString &path) override { return path; }
    void reseedFromClock() override { m_gen.seed(12345u); }
    float next() override;

private:
    QTemporaryDir m_tempDir, m_configDir;
    platform::Services m_previous;
    std::mt19937 m_gen{12345u};
    std::function<void()> m_outputsChanged = [] {};
};
