#pragma once
// The configuration file beside the program: five timer and sound settings,
// read once at start-up and written whole by the configuration dialog.
#include <QString>
#include <functional>
#include <optional>

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

enum class Key { TimerTime, SoundContinual, Buzzer, Sound, Timer };

// What one accepted line sets: the countdown's seconds (0 to 120, in tens,
// with the value as written in text) or a switch (on is 1, off is 0).
struct Setting {
    Key key;
    int value;
    QString text;
};

// One line of the file, or nothing when the line is a comment, unknown or
// not acceptable. A countdown length beyond 16 bits raises an overflow, which
// stops the reading of the file.
std::optional<Setting> readLine(const QString &rawLine);

// The whole file as the dialog writes it, CR LF after every line.
QString fileText(const Choices &choices);

// Hands each accepted setting of the file at path to apply, in file order;
// a missing file holds none.
void readSettings(const QString &path, const std::function<void(const Setting &)> &apply);

// A dialog row's "Yes" or "No"; nothing for any other text.
std::optional<bool> rowSaysYes(const QString &row);

}  // namespace config
