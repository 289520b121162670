#pragma once
// The routines every window shares: the log, the one failure report and the
// guard that runs a procedure's body under it, and the shuffle.
#include <QString>
#include <QStringList>
#include <functional>

namespace Globals {

// True from the first log record of the run on.
extern bool LogStarted;

// Writes one time-stamped record to the log beside the program. The first
// record of a run empties the log. Never fails towards its caller.
void WriteLogInfo(const QString &text);

enum class LabelKind { SubRoutine, Function };

// One failure report, with the extra lines some procedures add.
struct Report {
    QString label;
    LabelKind kind = LabelKind::SubRoutine;
    int number = 0;
    QStringList before;   // advice lines before the label line
    QStringList between;  // between the label line and the number line
    QStringList after;    // after the location line
    bool logOnly = false; // no message box
};

// The report as text: each piece ends with CR LF.
QString ReportText(const Report &report, const QString &location);

// Logs the report and shows it in a box titled "Error".
void ReportError(const Report &report);

// How a procedure reports its failures.
struct Guard {
    Guard(const char *label) : label(QString::fromLatin1(label)) {}
    Guard(QString label) : label(std::move(label)) {}
    // The guard of a function of this module ("Current Function is ...").
    static Guard function(QString label)
    {
        Guard g(std::move(label));
        g.kind = LabelKind::Function;
        return g;
    }

    QString label;
    LabelKind kind = LabelKind::SubRoutine;
    bool logOnly = false;
    // Adds the procedure's own lines to a report, given its number.
    std::function<void(Report &)> shape;
    // Numbers that pass without any report.
    std::function<bool(int number)> passes;
    // A step that follows the message box.
    std::function<void()> afterReport;
};

// Runs a procedure's body. On a failure the rest of the body is skipped, the
// failure is reported, and false is returned: the caller goes on as if the
// call had succeeded. No exception leaves this function.
bool Guarded(const Guard &guard, const std::function<void()> &body);

// Runs the steps one after another under one guard; a failing step is
// reported and the next step runs all the same.
void GuardedSteps(const Guard &guard, std::initializer_list<std::function<void()>> steps);

// The entries shuffled (Fisher-Yates on the program's generator, reseeded
// from the clock); a list moved in is shuffled without a copy.
QStringList ShuffleArray(QStringList entries);

// Can the named component be loaded?
bool IsDLLAvailable(const QString &name);

// The short form of a path, or empty text.
QString GetShortName(const QString &path);

// For tests: forget that the log was started in this run.
void ResetLogForTests();

}  // namespace Globals
