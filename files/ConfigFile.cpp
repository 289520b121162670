// The configuration file beside the program.
#include "files/ConfigFile.h"
#include "core/QuestionRules.h"
#include "platform/Numeric.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QRadioButton>

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

}  // namespace config

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

void frmTandrel::readInConfigFile()
{
    Globals::Guarded("readInConfigFile", [&] {
        const QString path = platform::programPath(config::FileName);
        if (!platform::fileExists(path))
            return;
        platform::readLines(path, [&](const QString &rawLine) {
            QString line = questions::trimSpaces(rawLine);
            if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || !line.contains(QLatin1Char(':')))
                return true;
            line = line.toUpper().remove(QLatin1Char(' '));
            const QStringList fields = line.split(QLatin1Char(':'));
            if (fields.size() != 2)
                return true;
            const QString &key = fields[0];
            const QString &value = fields[1];
            if (key == QLatin1String("TIMERTIME")) {
                if (!platform::isNumeric(value))
                    return true;
                const qint16 seconds = platform::toInt16(value);  // too large: stops the read
                if (seconds < 0 || seconds > 120 || seconds % 10 != 0)
                    return true;
                m_ui->txtTimer->setText(value);
                TimerTime = seconds;
            } else if (key == QLatin1String("SOUNDCONTINUAL") || key == QLatin1String("BUZZER")) {
                const int set = yesNo(value);
                if (set >= 0)
                    (key == QLatin1String("BUZZER") ? m_ui->chkBuzzer : m_ui->chkSoundAlwaysOn)->setChecked(set == 1);
            } else if (key == QLatin1String("SOUND")) {
                const int on = onOff(value);
                if (on == 1) {
                    selectOption(optSound[0]);
                    wmp1->play();
                } else if (on == 0) {
                    selectOption(optSound[1]);
                    wmp1->stop();
                }
            } else if (key == QLatin1String("TIMER")) {
                const int on = onOff(value);
                if (on >= 0)
                    selectOption(OptTimer[on == 1 ? 0 : 1]);
            }
            return true;
        });
    });
}
