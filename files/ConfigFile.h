#pragma once
// The configuration file beside the program: five timer and sound settings,
// read once at start-up and written whole by the configuration dialog.
#include <QString>

namespace config {

inline const QString FileName = QStringLiteral("Tandrel.cfg");

// The five settings as the dialog shows them.
struct Choices {
    QString timerTime;       // "10" ... "120"
    QString soundContinual;  // "Yes" or "No"
    QString buzzer;
    QString sound;
    QString timer;
};

// The whole file as the dialog writes it, CR LF after every line.
QString fileText(const Choices &choices);

}  // namespace config
