#include "platform/Numeric.h"
#include "platform/Errors.h"
#include <cmath>

namespace platform {

namespace {
// Digits of other scripts are not numbers to the program.
bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}
}  // namespace

std::optional<double> parseNumber(const QString &text, const QLocale &locale)
{
    const QString t = text.trimmed();
    if (t.isEmpty())
        return std::nullopt;
    const QChar point = locale.decimalPoint().isEmpty() ? QChar('.') : locale.decimalPoint().at(0);
    int i = 0;
    const int n = t.size();
    QString canonical;
    if (t[i] == '+' || t[i] == '-')
        canonical += t[i++];
    int digits = 0;
    while (i < n && isAsciiDigit(t[i])) { canonical += t[i++]; ++digits; }
    if (i < n && (t[i] == point)) {
        canonical += '.';
        ++i;
        while (i < n && isAsciiDigit(t[i])) { canonical += t[i++]; ++digits; }
    }
    if (digits == 0)
        return std::nullopt;
    if (i < n && (t[i] == 'e' || t[i] == 'E' || t[i] == 'd' || t[i] == 'D')) {
        canonical += 'e';
        ++i;
        if (i < n && (t[i] == '+' || t[i] == '-'))
            canonical += t[i++];
        int expDigits = 0;
        while (i < n && isAsciiDigit(t[i])) { canonical += t[i++]; ++expDigits; }
        if (expDigits == 0)
            return std::nullopt;
    }
    if (i != n)
        return std::nullopt;
    bool ok = false;
    const double v = canonical.toDouble(&ok);
    if (!ok && !std::isinf(v))
        return std::nullopt;
    return v;
}

bool isNumeric(const QString &text, const QLocale &locale)
{
    return parseNumber(text, locale).has_value();
}

double toDouble(const QString &text, const QLocale &locale)
{
    const auto v = parseNumber(text, locale);
    if (!v)
        raise(err::TypeMismatch, QStringLiteral("'%1' is not a number").arg(text));
    return *v;
}

qint16 toInt16(double value)
{
    const double r = std::nearbyint(value);  // default rounding mode: halves to even
    if (!(r >= -32768.0 && r <= 32767.0))  // not a number fails too
        raise(err::Overflow);
    return static_cast<qint16>(r);
}

qint16 toInt16(const QString &text, const QLocale &locale)
{
    return toInt16(toDouble(text, locale));
}

qint16 add16(qint16 a, qint16 b)
{
    const int r = int(a) + int(b);
    if (r < -32768 || r > 32767)
        raise(err::Overflow);
    return static_cast<qint16>(r);
}

}  // namespace platform
