#pragma once
#include <QString>
#include <exception>

namespace platform {

// Failure numbers, kept as the old run time numbered them so a report reads
// the same to a host who knows the program.
namespace err {
constexpr int InvalidCall = 5;
constexpr int Overflow = 6;
constexpr int OutOfMemory = 7;
constexpr int TypeMismatch = 13;
constexpr int FileNotFound = 53;
constexpr int DiskFull = 61;
constexpr int InputPastEnd = 62;
constexpr int PermissionDenied = 70;
constexpr int PathFileAccess = 75;
constexpr int PathNotFound = 76;
constexpr int ComponentMissing = 339;
constexpr int ReadOnlyProperty = 383;
}  // namespace err

// A failed statement. Guards catch it and report its number.
class RuntimeError : public std::exception {
public:
    explicit RuntimeError(int number, QString detail = {})
        : m_number(number), m_detail(std::move(detail)), m_what(m_detail.toUtf8()) {}
    int number() const noexcept { return m_number; }
    const QString &detail() const noexcept { return m_detail; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_detail;
    QByteArray m_what;
};

[[noreturn]] inline void raise(int number, const QString &detail = {})
{
    throw RuntimeError(number, detail);
}

}  // namespace platform
