#include "platform/Globals.h"
#include "platform/Errors.h"
#include "platform/Services.h"
#include "platform/TextFiles.h"
#include <cmath>
#include <new>

namespace Globals {

bool LogStarted = false;

namespace {
const QString CrLf = QStringLiteral("\r\n");

int numberOf(std::exception_ptr failure)
{
    try {
        std::rethrow_exception(failure);
    } catch (const platform::RuntimeError &e) {
        return e.number();
    } catch (const std::bad_alloc &) {
        return platform::err::OutOfMemory;
    } catch (...) {
        return platform::err::InvalidCall;
    }
}

QString locationName()
{
    const QString name = platform::app().activeWindowName();
    return name.isEmpty() ? QStringLiteral("(no program window active)") : name;
}

void showReport(const QString &text)
{
    platform::msgBox(text, platform::mb::OkOnly + platform::mb::Information, QStringLiteral("Error"));
}

// Reports a failure of the log writer itself: shown, never logged again.
void reportLogFailure(int number)
{
    try {
        platform::app().setNormalPointer();
        Report r;
        r.label = QStringLiteral("WriteLogInfo");
        r.number = number;
        showReport(ReportText(r, locationName()));
    } catch (...) {
    }
}
}  // namespace

void WriteLogInfo(const QString &text)
{
    int failure = 0;
    try {
        const QString path = platform::programPath(QStringLiteral("LogInfo.txt"));
        const QString record = platform::nowText() + QStringLiteral("  ") + text + CrLf;
        if (!LogStarted) {
            LogStarted = true;
            platform::startFile(path, record);
        } else {
            platform::appendText(path, record);
        }
    } catch (...) {
        failure = numberOf(std::current_exception());
    }
    if (failure)
        reportLogFailure(failure);
}

QString ReportText(const Report &report, const QString &location)
{
    QString text;
    for (const QString &line : report.before)
        text += line + CrLf;
    text += (report.kind == LabelKind::Function ? QStringLiteral("Current Function is ")
                                                : QStringLiteral("Current SubRoutine is "))
            + report.label + CrLf;
    for (const QString &line : report.between)
        text += line + CrLf;
    text += QStringLiteral("Error Number: ") + QString::number(report.number) + CrLf;
    text += QStringLiteral("Location: ") + location + CrLf;
    for (const QString &line : report.after)
        text += line + CrLf;
    return text;
}

void ReportError(const Report &report)
{
    try {
        platform::app().setNormalPointer();
        const QString text = ReportText(report, locationName());
        WriteLogInfo(text);
        if (!report.logOnly)
            showReport(text);
    } catch (...) {
        // A report that cannot be shown must still not take the program down.
    }
}

namespace {
// Reports the failure the way the guard says.
void handle(const Guard &guard, std::exception_ptr failure)
{
    const int number = numberOf(failure);
    if (guard.passes && guard.passes(number))
        return;
    Report report;
    report.label = guard.label;
    report.kind = guard.kind;
    report.number = number;
    report.logOnly = guard.logOnly;
    try {
        if (guard.shape)
            guard.shape(report);
    } catch (...) {
    }
    ReportError(report);
    try {
        if (guard.afterReport)
            guard.afterReport();
    } catch (...) {
    }
}
}  // namespace

bool Guarded(const Guard &guard, const std::function<void()> &body)
{
    try {
        body();
        return true;
    } catch (...) {
        handle(guard, std::current_exception());
        return false;
    }
}

void GuardedSteps(const Guard &guard, std::initializer_list<std::function<void()>> steps)
{
    for (const auto &step : steps)
        Guarded(guard, step);
}

QStringList ShuffleArray(QStringList entries)
{
    QStringList shuffled;
    Guarded(Guard::function(QStringLiteral("ShuffleArray")), [&] {
                platform::random().reseedFromClock();
                QStringList out = std::move(entries);  // a deck handed over is not copied
                const qsizetype upper = out.size() - 1;
                for (qsizetype i = 0; i <= upper; ++i) {
                    const double r = platform::random().next();
                    const qsizetype j = qsizetype(std::nearbyint(r * double(upper - i) + double(i)));
                    if (j != i)
                        out.swapItemsAt(i, j);
                }
                shuffled = std::move(out);
            });
    return shuffled;
}

bool IsDLLAvailable(const QString &name)
{
    bool available = false;
    Guarded(Guard::function(QStringLiteral("IsDLLAvailable")), [&] { available = platform::shell().libraryLoads(name); });
    return available;
}

QString GetShortName(const QString &path)
{
    QString shortName;
    Guarded(Guard::function(QStringLiteral("GetShortName")), [&] { shortName = platform::shell().shortPath(path); });
    return shortName;
}

void ResetLogForTests()
{
    LogStarted = false;
}

}  // namespace Globals
