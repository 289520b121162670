#include "platform/Services.h"
#include "platform/FolderLock.h"
#include "platform/MediaFormats.h"
#include <QApplication>
#include <QAudioDevice>
#include <QAudioOutput>
#include <QDesktopServices>
#include <QStandardPaths>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QMessageBox>
#include <QPointer>
#include <QScreen>
#include <QUrl>
#include <random>

namespace platform {

namespace {

class QtDialogs final : public Dialogs {
public:
    int messageBox(const QString &text, int style, const QString &title) override
    {
        QMessageBox box(QApplication::activeWindow());
        box.setWindowTitle(title);
        // The texts carry CR LF; Qt wants plain line feeds.
        box.setText(QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
        switch (style & 0x70) {
        case 16: box.setIcon(QMessageBox::Critical); break;
        case 32: box.setIcon(QMessageBox::Question); break;
        case 48: box.setIcon(QMessageBox::Warning); break;
        case 64: box.setIcon(QMessageBox::Information); break;
        default: box.setIcon(QMessageBox::NoIcon); break;
        }
        switch (style & 0x0F) {
        case mb::YesNoCancel:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            box.setDefaultButton(QMessageBox::Yes);
            box.setEscapeButton(QMessageBox::Cancel);
            break;
        case 4:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
            break;
        case 1:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            break;
        default:
            box.setStandardButtons(QMessageBox::Ok);
            break;
        }
        switch (box.exec()) {
        case QMessageBox::Yes: return mb::Yes;
        case QMessageBox::No: return mb::No;
        case QMessageBox::Cancel: return mb::Cancel;
        default: return mb::Ok;
        }
    }

    int execModal(QDialog &dialog) override { return dialog.exec(); }
};

class QtAppObject final : public AppObject {
public:
    QString programDir() const override { return QCoreApplication::applicationDirPath(); }
    // ~/.local/share/Tandrel, or where XDG_DATA_HOME says.
    QString dataDir() const override { return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation); }

    QString exeName() const override
    {
        return QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName();
    }

    Version version() const override
    {
        return {TANDREL_VERSION_MAJOR, TANDREL_VERSION_MINOR, TANDREL_VERSION_PATCH};
    }

    bool previousInstance() override { return !holdFolder(programDir()); }

    QString activeWindowName() const override
    {
        const QWidget *w = QApplication::activeWindow();
        return w ? w->objectName() : QString();
    }

    QRect screenGeometry() const override
    {
        const QScreen *s = QGuiApplication::primaryScreen();
        return s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
    }

    void setNormalPointer() override
    {
        while (QApplication::overrideCursor())
            QApplication::restoreOverrideCursor();
    }
};

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    QLocale locale() const override { return QLocale::system(); }
};

class QtMediaPlayer final : public MediaPlayer {
public:
    QtMediaPlayer()
    {
        m_player.setAudioOutput(&m_output);
        m_output.setVolume(linear(50));
        // A missing or unplayable file stays silent and shows nothing.
        QObject::connect(&m_player, &QMediaPlayer::errorOccurred, &m_player, [] {});
    }
    void setUrl(const QString &path) override { m_player.setSource(QUrl::fromLocalFile(path)); }
    void play() override { m_player.play(); }
    void stop() override { m_player.stop(); }
    void setVolume(int volume) override { m_output.setVolume(linear(volume)); }
    void setLoop(bool loop) override { m_player.setLoops(loop ? QMediaPlayer::Infinite : 1); }
    void setOutput(const QByteArray &id) override
    {
        QAudioDevice device = QMediaDevices::defaultAudioOutput();
        for (const QAudioDevice &output : QMediaDevices::audioOutputs())
            if (output.id() == id)
                device = output;
        if (device != m_output.device())
            m_output.setDevice(device);
    }

private:
    static float linear(int volume)
    {
        return QAudio::convertVolume(qBound(0, volume, 100) / 100.0f, QAudio::LogarithmicVolumeScale,
                                     QAudio::LinearVolumeScale);
    }
    QMediaPlayer m_player;
    QAudioOutput m_output;
};

class QtMedia final : public Media {
public:
    std::unique_ptr<MediaPlayer> createPlayer(const QString &) override
    {
        return std::make_unique<QtMediaPlayer>();
    }
    QList<AudioOutput> audioOutputs() override
    {
        QList<AudioOutput> outputs;
        for (const QAudioDevice &device : QMediaDevices::audioOutputs())
            outputs.append({device.id(), device.description(), device.isDefault()});
        return outputs;
    }
    void watchOutputs(QObject *context, std::function<void()> changed) override
    {
        // Made on first use, gone with the application.
        static QPointer<QMediaDevices> devices;
        if (!devices)
            devices = new QMediaDevices(qApp);
        QObject::connect(devices, &QMediaDevices::audioOutputsChanged, context, std::move(changed));
    }
};

class LinuxShell final : public Shell {
public:
    void openUrl(const QString &url) override { QDesktopServices::openUrl(QUrl::fromUserInput(url)); }

    // Linux has no component registration; the check that follows a launch
    // simply finds things as they were.
    void launch(const QString &, const QString &, const QString &) override {}

    bool componentInstalled(const QString &name) override { return componentInstalledHere(name); }
    bool libraryLoads(const QString &name) override { return componentAvailable(name); }

    QString shortPath(const QString &path) override { return path; }
};

class ClockSeededRandom final : public Random {
public:
    void reseedFromClock() override
    {
        static QElapsedTimer since;
        if (!since.isValid())
            since.start();
        const quint64 seed = quint64(QDateTime::currentMSecsSinceEpoch()) * 1000003u ^ quint64(since.nsecsElapsed())
                             ^ (++m_calls * 0x9E3779B97F4A7C15ull);
        std::seed_seq sequence{quint32(seed), quint32(seed >> 32)};
        m_gen.seed(sequence);
    }
    float next() override { return float(m_gen() >> 8) * (1.0f / 16777216.0f); }

private:
    std::mt19937 m_gen{5489u};
    quint64 m_calls = 0;
};

}  // namespace

Services realServices()
{
    static QtDialogs dialogs;
    static QtAppObject app;
    static SystemClock clock;
    static QtMedia media;
    static LinuxShell shell;
    static ClockSeededRandom random;
    return Services{&dialogs, &app, &clock, &media, &shell, &random};
}

}  // namespace platform
