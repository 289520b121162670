#pragma once
// The game itself: the players and their scores, the turn and the rounds,
// both decks and the question each one shows, and the order in which a
// start, a next and a previous question change them. No widgets: the main
// window shows what this holds and turns the host's clicks into its
// operations; where a rule needs the world outside (a file, an answer, the
// screen) it asks its Table.
#include "core/QuestionRules.h"
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace game {

constexpr int MaxPlayers = 10;
// What a row's name box holds until the host types over it.
inline const QString DefaultName = QStringLiteral("Name");

enum class Direction { Forward, Back };

// What a turn change did.
struct TurnChange {
    // At a round's end, the rows in play that reached the score to win with
    // the best score, in row order: one winner, or a tie.
    QList<int> winners;
    qint16 best = 0;
    bool won() const { return winners.size() == 1; }
    bool tied() const { return winners.size() > 1; }
};

// The host's answer to the end-of-game dialog: Close for a winner; Yes
// (another round) or No (a new game) for a tie.
enum class Answer { Close, Yes, No };

// What a start, a next or a previous question did.
enum class Outcome {
    Nothing,         // no question of that kind on show: nothing moved
    NoFile,          // a start without its file (the host was told)
    Declined,        // a start the host did not want: nothing changed
    NoQuestions,     // a start whose file holds no question: the game was reset, the old deck stays
    Dealt,           // a start dealt a new deck and shows its first question
    Shown,           // the next or previous question is on show
    DecksRestarted,  // the turn change ended the game; the new deal shows its first question
};

// The world a game is played in: the main window in the program, a script
// in the tests. The game calls it at the moments its rules name.
class Table {
public:
    virtual ~Table() = default;
    // A start's question file: false when it is missing (the host was told).
    virtual bool questionFileFound(questions::Kind kind) = 0;
    // Asked while a game of that kind is under way: true to start over.
    virtual bool askStartOver(questions::Kind kind) = 0;
    // The file's questions shuffled; nothing when it holds none (the host was told).
    virtual std::optional<QStringList> readDeck(questions::Kind kind) = 0;
    // A game end deals both decks again; the host sees it until the deal is done.
    virtual void showReloading(bool reloading) = 0;
    virtual void showPlayers() = 0;
    virtual void showQuestion(questions::Kind kind) = 0;
    virtual void restartCountdown() = 0;
    // The end-of-game dialog, waited for.
    virtual Answer showEndOfGame(const TurnChange &change) = 0;
    // Steps the rules take inside others. Each is an operation of its own
    // whose failure is reported under its own name and stops only itself.
    virtual void runStart(questions::Kind kind) = 0;
    virtual void runNext(questions::Kind kind) = 0;
    virtual void runChangePlayer(Direction direction) = 0;
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
    // A deck brought back as it was: the same entries, the same place.
    void restore(const QStringList &entries, qint16 position);
    const QStringList &entries() const { return m_entries; }
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
    void setScoreToWin(qint16 target);
    const QString &name(int row) const { return m_names[size_t(row)]; }
    void setName(int row, const QString &name) { m_names[size_t(row)] = name; }
    // The name as the host finished typing it (the room never sees one half typed).
    const QString &finishedName(int row) const { return m_finishedNames[size_t(row)]; }
    void finishName(int row) { m_finishedNames[size_t(row)] = m_names[size_t(row)]; }
    qint16 score(int row) const { return m_scores[size_t(row)]; }

    // A point up, at most one per question in both decks; a point down,
    // never below 0. False when the score stays.
    bool scoreUp(int row);
    bool scoreDown(int row);

    // ---- Turn and rounds ---------------------------------------------------
    qint16 currentPlayer() const { return m_current; }
    qint16 round() const { return m_round; }
    void giveTurn(int row);
    // Forward past the last player ends a round and decides the game; back
    // from row 0 goes to the last player and never changes the round.
    TurnChange moveTurn(Direction direction);

    // ---- The flow of a game -------------------------------------------------
    // A new game of that kind: scores 0, round 1, the turn at row 0, the
    // deck read and shuffled anew. Asks first while one is under way,
    // except right after a game end.
    Outcome start(questions::Kind kind, Table &table);
    // The next question of that kind and the next turn. Ends the round
    // past the last player; a winner or a tie ends the game (both decks
    // dealt anew) or, when tied players play on, moves the other kind on
    // too and gives the turn to row 0.
    Outcome next(questions::Kind kind, Table &table);
    // The previous question and the turn before; the round stays.
    Outcome previous(questions::Kind kind, Table &table);
    // The turn change inside next and previous, the end of game included.
    TurnChange changePlayer(Direction direction, Table &table);

    // ---- Decks -------------------------------------------------------------
    Deck &deck(questions::Kind kind) { return m_decks[size_t(kind)]; }
    const Deck &deck(questions::Kind kind) const { return m_decks[size_t(kind)]; }

    // ---- Undo ----------------------------------------------------------------
    // Every change the host makes (a point, a turn given, the players or the
    // target chosen, a next or a previous question, with all it set off) is
    // one step back. A step keeps only the numbers it changed, so a long
    // evening's history stays small. A new game ends the history.
    bool undo();
    bool redo();
    void forgetHistory();
    // Told after each change, undo and redo, and after a new game.
    std::function<void()> changed;

    // ---- The game as a whole, to keep and bring back -------------------------
    struct Snapshot {
        std::array<QString, MaxPlayers> names;
        std::array<qint16, MaxPlayers> scores{};
        int playerCount = 2;
        qint16 scoreToWin = 10, current = 0, round = 1;
        std::array<QStringList, 2> decks;  // empty: never dealt
        std::array<qint16, 2> positions{};
        // Anything worth bringing back: a score, a turn, a question on, a name.
        bool started() const;
    };
    Snapshot snapshot() const;
    // Puts a kept game in place of this one; the history ends there.
    void restore(const Snapshot &kept);

private:
    void newGame();
    void endGame(Table &table);

    // The numbers a step changes, by slot: the scores, then these.
    enum Slot { PlayerCount = MaxPlayers, ScoreToWin, Current, Round, AnotherRound, DecksRestarted, MatchAt, PhraseAt, SlotCount };
    using Numbers = std::array<qint16, SlotCount>;
    Numbers numbers() const;
    void setNumbers(const Numbers &n);
    struct Change {
        quint8 slot;
        qint16 before, after;
    };
    using Step = std::vector<Change>;
    // Each public change is one step, however deeply it nests others.
    class Recording;
    void record();
    bool replay(std::vector<Step> &from, std::vector<Step> &to, qint16 Change::*value);
    void tell() const;
    int m_depth = 0;
    Numbers m_before{};
    bool m_newGameInside = false;
    std::vector<Step> m_done, m_undone;

    std::array<QString, MaxPlayers> m_names, m_finishedNames;
    std::array<qint16, MaxPlayers> m_scores{};
    int m_playerCount = 2;
    qint16 m_scoreToWin = 10;
    qint16 m_current = 0;
    qint16 m_round = 1;
    // Tied players play on: the next question's step passes the turn to row 0.
    bool m_anotherRound = false;
    // A game end dealt both decks: the phrase deck's next step was the deal.
    bool m_decksRestarted = false;
    std::array<Deck, 2> m_decks;
};

// What the end-of-game dialog says.
QString winnerMessage(const QString &name, qint16 score);
QString tieMessage(const QStringList &names, qint16 best);

}  // namespace game
