// The configuration file beside the program: its text and its line rules.
#include "files/ConfigFile.h"
#include "core/QuestionRules.h"
#include "platform/Numeric.h"
#include "platform/TextFiles.h"

namespace config {

QString fileText(const Choices &c)
{
    const QString crlf = QStringLiteral("\r\n");
    return QStringLiteral("#Tandrel Configuration file") + crlf + crlf                    //
           + QStringLiteral("TimerTime: ") + c.timerTime + crlf                            //
           + QStringLiteral("SoundContinual: ") + c.soundContinual + crlf                  //
           + QStringLiteral("Buzzer: ") + c.buzzer + crlf                                  //
           + QStringLiteral("Sound: ") + c.sound + crlf                                    //
           + QStringLiteral("Timer: ") + c.timer + crlf;
}

namespace {
// 1 for YES, 0 for NO, -1 for anything else.
int yesNo(const QString &value)
{
    if (value == QLatin1String("YES"))
        return 1;
    if (value == QLatin1String("NO"))
        return 0;
    return -1;
}

// ON/OFF as the file has always said it; the dialog writes Yes/No for the same
// two keys, and a host expects what the dialog saved to come back next time.
int onOff(const QString &value)
{
    if (value == QLatin1String("ON"))
        return 1;
    if (value == QLatin1String("OFF"))
        return 0;
    return yesNo(value);
}
}  // namespace

std::optional<Setting> readLine(const QString &rawLine)
{
    QString line = questions::trimSpaces(rawLine);
    // A comment ("#...") names no key, so it is passed over like any unknown line.
    if (!line.contains(QLatin1Char(':')))
        return std::nullopt;
    line = line.toUpper().remove(QLatin1Char(' '));
    const QStringList fields = line.split(QLatin1Char(':'));
    if (fields.size() != 2)
        return std::nullopt;
    const QString &key = fields[0];
    const QString &value = fields[1];
    if (key == QLatin1String("TIMERTIME")) {
        if (!platform::isNumeric(value))
            return std::nullopt;
        const qint16 seconds = platform::toInt16(value);  // too large: stops the read
        if (seconds < 0 || seconds > 120 || seconds % 10 != 0)
            return std::nullopt;
        return Setting{Key::TimerTime, seconds, value};
    }
    int on = -1;
    Key which{};
    if (key == QLatin1String("SOUNDCONTINUAL") || key == QLatin1String("BUZZER")) {
        on = yesNo(value);
        which = key == QLatin1String("BUZZER") ? Key::Buzzer : Key::SoundContinual;
    } else if (key == QLatin1String("SOUND") || key == QLatin1String("TIMER")) {
        on = onOff(value);
        which = key == QLatin1String("SOUND") ? Key::Sound : Key::Timer;
    }
    if (on < 0)
        return std::nullopt;
    return Setting{which, on, value};
}

void readSettings(const QString &path, const std::function<void(const Setting &)> &apply)
{
    if (!platform::fileExists(path))
        return;
    platform::readLines(path, [&](const QString &line) {
        if (const std::optional<Setting> setting = readLine(line))
            apply(*setting);
        return true;
    });
}

std::optional<bool> rowSaysYes(const QString &row)
{
    if (row == QLatin1String("Yes"))
        return true;
    if (row == QLatin1String("No"))
        return false;
    return std::nullopt;
}

}  // namespace config
