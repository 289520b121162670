#pragma once
// How a line of a question file becomes a question. Kept apart from the file
// reading and the shuffle so the rules can be checked as data.
#include <QString>
#include <QStringList>
#include <future>
#include <optional>

namespace questions {

// The blank shown in a match entry and in a phrase.
inline const QString MatchBlank = QStringLiteral("___________________");  // 19
inline const QString PhraseBlank = QStringLiteral("_________");           // 9

// A deck is counted in 16-bit numbers by the game, so it holds at most this
// many entries; accepted lines after that are left out of the deck.
constexpr qsizetype MaxDeckEntries = 32766;
// No screen shows a longer question to a room: such a line is skipped. It
// also bounds the memory a full deck and its repeat check take.
constexpr qsizetype MaxQuestionLength = 300;

enum class Kind { Match, Phrase };

// The line as it would enter the deck, or nothing when the line is skipped
// for its own sake (comment, empty, no or too many placeholders...). Whether
// it repeats an earlier line is decided by the reader. A line handed over
// (nothing else sharing it) may become the entry, written in its own place.
std::optional<QString> matchCandidate(QString line);
std::optional<QString> phraseCandidate(QString line);
std::optional<QString> candidate(Kind kind, QString line);

// The same rules applied step by step, as they are written: the reference
// for the single-pass versions above, which use them for any line they do
// not handle themselves.
namespace literal {
std::optional<QString> matchCandidate(const QString &line);
std::optional<QString> phraseCandidate(const QString &line);
}  // namespace literal

// Removes leading and trailing U+0020 only (tabs stay).
QString trimSpaces(const QString &text);

// Reads lines in file order and keeps the accepted entries in that order.
// A line is a repeat when it occurs anywhere in the entries accepted before
// it (as part of one, not only as a whole one).
class Reader {
public:
    explicit Reader(Kind kind);
    // False once the deck is full: no later line can change it.
    bool add(QString line);
    // The accepted entries, in file order, at most MaxDeckEntries.
    QStringList finish();

private:
    // Takes the batch handed over before (waiting for it) and hands over the
    // lines added since; false once the deck is full.
    bool handOver();
    // Adds the entries of a batch; false once the deck is full.
    bool take(QStringList batch);
    // Runs the repeat check on the lines so far and keeps only the accepted
    // ones (only they can hold a later line); true when the deck is full.
    bool settle();
    Kind m_kind;
    QStringList m_lines;  // read, not yet handed over
    qsizetype m_batchChars = 0;
    std::future<QStringList> m_pending;  // the entries of the batch before
    QStringList m_candidates;
    qsizetype m_settled = 0;  // the first ones, known to be accepted
};

// The accepted entries of a whole file's lines, in file order.
QStringList acceptLines(Kind kind, const QStringList &lines);

// A match entry's two halves, as the two labels show them.
struct MatchHalves {
    QString left, right;
};
MatchHalves splitMatch(const QString &entry);

}  // namespace questions
