#pragma once
// What the room sees on the audience screen, decided from the game and the
// few things the host's window knows beside it: the tab in front, the
// countdown, an end of game on show, the scoreboard asked for. A plain value
// that the audience screen draws.
#include "core/Game.h"

namespace audience {

enum class Scene { Question, Winner, Tie, Scoreboard };
// No count (timer off), a count running down, or time up until the next question.
enum class Clock { Hidden, Running, TimeUp };

struct Player {
    QString name;
    qint16 score = 0;
    bool marked = false;  // the turn; at an end of game, the winners
};

// The host's window beside the game.
struct Moment {
    questions::Kind kind = questions::Kind::Match;
    bool timerOn = true;
    QString count;                             // the countdown as it reads
    qint16 length = 0;                         // the countdown's length
    const game::TurnChange *ending = nullptr;  // while the end-of-game dialog is up
    bool scoreboard = false;
};

struct View {
    Scene scene = Scene::Question;
    QStringList question;   // its lines, only on the question scene once a deck is dealt
    QString status;         // "Match 12 · Round 3": never the deck's size
    QString headline;       // the winner or the tie, in words
    QList<Player> players;  // those in play: in row order on a question, else best first
    Clock clock = Clock::Hidden;
    QString count;
    double timeLeft = 0;  // the share of the length left, for the bar
};

View viewOf(const game::Game &game, const Moment &moment);

// A row's name as the room reads it: "Player 3" until the host names it.
QString roomName(const game::Game &game, int row);

}  // namespace audience
