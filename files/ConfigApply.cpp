// The main window takes its settings from the configuration file at start-up.
#include "files/ConfigFile.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include "shell/Globals.h"
#include "shell/frmTandrel.h"
#include "ui_frmTandrel.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QRadioButton>

void frmTandrel::readInConfigFile()
{
    Globals::Guarded("readInConfigFile", [&] {
        const QString path = platform::programPath(config::FileName);
        if (!platform::fileExists(path))
            return;
        platform::readLines(path, [&](const QString &rawLine) {
            const std::optional<config::Setting> s = config::readLine(rawLine);
            if (!s)
                return true;
            switch (s->key) {
            case config::Key::TimerTime:
                m_ui->txtTimer->setText(s->text);
                TimerTime = qint16(s->value);
                break;
            case config::Key::SoundContinual:
                m_ui->chkSoundAlwaysOn->setChecked(s->value == 1);
                break;
            case config::Key::Buzzer:
                m_ui->chkBuzzer->setChecked(s->value == 1);
                break;
            case config::Key::Sound:
                selectOption(optSound[s->value == 1 ? 0 : 1]);
                if (s->value == 1)
                    wmp1->play();
                else
                    wmp1->stop();
                break;
            case config::Key::Timer:
                selectOption(OptTimer[s->value == 1 ? 0 : 1]);
                break;
            }
            return true;
        });
    });
}
