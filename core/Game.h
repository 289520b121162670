#pragma once
// The game itself: the players and their scores, the turn and the rounds,
// both decks and the question each one shows. No widgets: the main window
// shows what this holds and turns the host's clicks into its operations.
#include "core/QuestionRules.h"
#include <QList>
#include <QString>
#include <QStringList>
#include <array>

namespace game {

constexpr int MaxPlayers = 10;

enum class Direction { Forward, Back };

// What a turn change did.
struct TurnChange {
    bool roundEnded = false;
    // At a round's end, the rows in play that reached the score to win with
    // the best score, in row order: one winner, or a tie.
    QList<int> winners;
    qint16 best = 0;
};

// A shuffled deck and the 1-based position of the entry on show.
class Deck {
public:
    // From the first deal on a question is on show, whatever fails later.
    bool shown() const { return !m_entries.isEmpty(); }
    qsizetype size() const { return m_entries.size(); }
    qint16 position() const { return m_position; }
    const QString &current() const { return m_entries.at(m_position - 1); }
    // A deal of this deck has been made: starting again asks first.
    bool inProgress() const { return m_inProgress; }

    void deal(const QStringList &entries);
    // One step, wrapping round at both ends.
    void next();
    void previous();

    // Set by a game end: the next start deals without asking. It stays set
    // until a start gets that far (the file may be missing meanwhile).
    bool dealWithoutAsking = false;

private:
    QStringList m_entries;
    qint16 m_position = 0;
    bool m_inProgress = false;
};

class Game {
public:
    Game();

    // ---- Players -----------------------------------------------------------
    int playerCount() const { return m_playerCount; }
    // Rows from the count on are out of play but keep their names and
    // scores; the turn goes to row 0.
    void setPlayerCount(int count);
    bool inPlay(int row) const { return row < m_playerCount; }
    qint16 scoreToWin() const { return m_scoreToWin; }
    void setScoreToWin(qint16 target) { m_scoreToWin = target; }
    const QString &name(int row) const { return m_names[size_t(row)]; }
    void setName(int row, const QString &name) { m_names[size_t(row)] = name; }
    qint16 score(int row) const { return m_scores[size_t(row)]; }

    // A point up, at most one per question in both decks; a point down,
    // never below 0. False when the score stays.
    bool scoreUp(int row);
    bool scoreDown(int row);

    // ---- Turn and rounds ---------------------------------------------------
    qint16 currentPlayer() const { return m_current; }
    qint16 round() const { return m_round; }
    void giveTurn(int row) { m_current = qint16(row); }
    // Forward past the last player ends a round and decides the game; back
    // from row 0 goes to the last player and never changes the round.
    TurnChange changePlayer(Direction direction);
    // Scores 0, round 1, the turn at row 0.
    void newGame();

    // A game end deals both decks again without asking; the phrase deck's
    // next step is then taken by the new deal.
    void gameEnded();
    bool takeDecksRestarted();

    // Tied players chose another round: the next question's step passes
    // the turn to row 0.
    void playAnotherRound() { m_anotherRound = true; }
    // True once after playAnotherRound(); the turn is then before row 0, so
    // the other tab's turn change lands on it.
    bool takeAnotherRound();

    // ---- Decks -------------------------------------------------------------
    Deck &deck(questions::Kind kind) { return m_decks[size_t(kind)]; }
    const Deck &deck(questions::Kind kind) const { return m_decks[size_t(kind)]; }

private:
    std::array<QString, MaxPlayers> m_names;
    std::array<qint16, MaxPlayers> m_scores{};
    int m_playerCount = 2;
    qint16 m_scoreToWin = 10;
    qint16 m_current = 0;
    qint16 m_round = 1;
    bool m_anotherRound = false;
    bool m_decksRestarted = false;
    std::array<Deck, 2> m_decks;
};

// What the end-of-game dialog says.
QString winnerMessage(const QString &name, qint16 score);
QString tieMessage(const QStringList &names, qint16 best);

}  // namespace game
