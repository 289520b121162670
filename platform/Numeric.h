#pragma once
#include <QString>
#include <QLocale>
#include <optional>

namespace platform {

// Numeric text the way the program has always read it: optional blanks and
// sign, digits with the locale's decimal separator, an optional exponent.
std::optional<double> parseNumber(const QString &text, const QLocale &locale = QLocale());
bool isNumeric(const QString &text, const QLocale &locale = QLocale());

// Reads text as a number; text that is not numeric fails with 13.
double toDouble(const QString &text, const QLocale &locale = QLocale());

// Rounds to the nearest integer, halves to the even neighbour, and fails with
// 6 outside -32768..32767 (13 for text that is not numeric).
qint16 toInt16(double value);
qint16 toInt16(const QString &text, const QLocale &locale = QLocale());

// 16-bit arithmetic that fails with 6 instead of wrapping.
qint16 add16(qint16 a, qint16 b);

}  // namespace platform
