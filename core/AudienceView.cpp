#include "core/AudienceView.h"
#include <algorithm>

namespace audience {

QString roomName(const game::Game &game, int row)
{
    const QString name = game.finishedName(row).trimmed();
    return name.isEmpty() || name == game::DefaultName ? QStringLiteral("Player %1").arg(row + 1) : name;
}

View viewOf(const game::Game &game, const Moment &moment)
{
    View view;
    for (int i = 0; i < game.playerCount(); ++i)
        view.players.append({roomName(game, i), game.score(i), i == game.currentPlayer()});
    const game::Deck &deck = game.deck(moment.kind);
    const QString round = QStringLiteral("Round %1").arg(game.round());
    view.status = deck.shown() ? QStringLiteral("%1 %2 · %3")
                                     .arg(moment.kind == questions::Kind::Match ? "Match" : "Phrase")
                                     .arg(deck.position())
                                     .arg(round)
                               : round;
    if (const game::TurnChange *end = moment.ending) {
        view.scene = end->won() ? Scene::Winner : Scene::Tie;
        QStringList names;
        for (Player &p : view.players)
            p.marked = false;
        for (int row : end->winners) {
            names << view.players[row].name;
            view.players[row].marked = true;
        }
        view.headline = end->won() ? QStringLiteral("%1 wins with %2!").arg(names[0]).arg(end->best)
                                   : QStringLiteral("%1 tie at %2: another round?")
                                         .arg(names.first(names.size() - 1).join(QStringLiteral(", ")) + " and " + names.last())
                                         .arg(end->best);
    } else if (moment.scoreboard) {
        view.scene = Scene::Scoreboard;
    } else if (deck.shown()) {
        if (moment.kind == questions::Kind::Match) {
            const questions::MatchHalves halves = questions::splitMatch(deck.current());
            view.question = QStringList{halves.left.trimmed(), halves.right.trimmed()};
        } else {
            view.question = QStringList{deck.current().trimmed()};
        }
    }
    // Best first; equal scores keep the rows' order.
    if (view.scene != Scene::Question)
        std::stable_sort(view.players.begin(), view.players.end(),
                         [](const Player &a, const Player &b) { return a.score > b.score; });
    // The count belongs to a question on show; an end of game has none.
    if (moment.timerOn && moment.length > 0 && deck.shown() && !moment.ending) {
        const double left = moment.count.toDouble();
        view.clock = left <= 0 ? Clock::TimeUp : Clock::Running;
        view.count = view.clock == Clock::TimeUp ? QStringLiteral("Time's up!") : moment.count;
        view.timeLeft = std::clamp(left / moment.length, 0.0, 1.0);
    }
    return view;
}

}  // namespace audience
