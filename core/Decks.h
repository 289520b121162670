#pragma once
// The two question files and the decks read from them.
#include "core/QuestionRules.h"
#include <QStringList>
#include <optional>

namespace decks {

inline const QString MatchFileName = QStringLiteral("TandrelLines.txt");
inline const QString PhraseFileName = QStringLiteral("TandrelPhrases.txt");

// The existence check of a start: true when the file is there (any letter
// case); otherwise the "File Does Not Exist" message has been shown.
bool CheckQuestionFile(const QString &path);

// Reads the file by its line rules and returns the accepted entries
// shuffled. When no line is accepted the "no questions" message has been
// shown and nothing is returned. A file that cannot be read raises its
// failure to the caller, whose report names it.
std::optional<QStringList> LoadDeck(questions::Kind kind, const QString &path);

// The accepted entries in file order, without the shuffle or any message.
QStringList ReadEntries(questions::Kind kind, const QString &path);

}  // namespace decks
