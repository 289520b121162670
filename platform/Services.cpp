#include "platform/Services.h"
#include <QDir>
#include <QPointer>
#include <QRegularExpression>
#include <QWidget>

namespace platform {

namespace {
Services &current()
{
    static Services s = realServices();
    return s;
}

QList<QPointer<QWidget>> &windowList()
{
    static QList<QPointer<QWidget>> list;
    return list;
}

// Drops the time-zone token ("t", "tt"...) of a time format, with its blanks.
QString withoutTimeZone(QString format)
{
    static const QRegularExpression zone(QStringLiteral("\\s*(?<![A-Za-z'])t+(?![A-Za-z'])\\s*"));
    format.replace(zone, QStringLiteral(" "));
    return format.trimmed();
}

// Widens a two-digit year to four digits; a four-digit one stays.
QString withFullYear(QString format)
{
    static const QRegularExpression year(QStringLiteral("(?<!y)y{1,2}(?!y)"));
    format.replace(year, QStringLiteral("yyyy"));
    return format;
}
}  // namespace

Services &services() { return current(); }

Services install(const Services &r)
{
    Services previous = current();
    Services &c = current();
    if (r.dialogs) c.dialogs = r.dialogs;
    if (r.app) c.app = r.app;
    if (r.clock) c.clock = r.clock;
    if (r.media) c.media = r.media;
    if (r.shell) c.shell = r.shell;
    if (r.random) c.random = r.random;
    return previous;
}

QString generalDateText(const QDateTime &when, const QLocale &locale)
{
    const QString date = locale.toString(when.date(), withFullYear(locale.dateFormat(QLocale::ShortFormat)));
    const QString time = locale.toString(when.time(), withoutTimeZone(locale.timeFormat(QLocale::LongFormat)));
    QString text = date + QLatin1Char(' ') + time;
    // Some locales put no-break spaces before AM/PM; the text is plain.
    text.replace(QChar(0x202F), QLatin1Char(' ')).replace(QChar(0x00A0), QLatin1Char(' '));
    return text;
}

QString nowText()
{
    return generalDateText(clock().now(), clock().locale());
}

void registerLoadedWindow(QWidget *window)
{
    windowList().removeAll(nullptr);
    if (!windowList().contains(window))
        windowList().append(window);
}

void unregisterLoadedWindow(QWidget *window)
{
    windowList().removeAll(window);
    windowList().removeAll(nullptr);
}

QList<QWidget *> loadedWindows()
{
    QList<QWidget *> out;
    for (const auto &w : windowList())
        if (w)
            out.append(w.data());
    return out;
}

QWidget *loadedWindow(const QString &name)
{
    for (QWidget *w : loadedWindows())
        if (w->objectName() == name)
            return w;
    return nullptr;
}

QString programPath(const QString &name)
{
    return app().programDir() + QLatin1Char('/') + name;
}

QString shownPath(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

}  // namespace platform
