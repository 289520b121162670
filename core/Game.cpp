#include "core/Game.h"
#include "platform/Numeric.h"
#include <algorithm>
#include <utility>

namespace game {

using questions::Kind;

namespace {
const QString CrLf = QStringLiteral("\r\n");
}

void Deck::deal(const QStringList &entries)
{
    m_entries = entries;
    m_position = 1;
    m_inProgress = true;
}

void Deck::next()
{
    if (++m_position == m_entries.size() + 1)
        m_position = 1;
}

void Deck::previous()
{
    if (--m_position == 0)
        m_position = qint16(m_entries.size());
}

void Deck::restore(const QStringList &entries, qint16 position)
{
    deal(entries);
    m_position = position;
}

// Opened by each public change; the outermost one, as it closes, keeps the
// step (or, after a new game, only tells).
class Game::Recording {
public:
    explicit Recording(Game &game) : m_game(game)
    {
        if (m_game.m_depth++ == 0)
            m_game.m_before = m_game.numbers();
    }
    ~Recording()
    {
        if (--m_game.m_depth == 0)
            m_game.record();
    }
    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

private:
    Game &m_game;
};

Game::Game()
{
    m_names.fill(DefaultName);
    m_finishedNames = m_names;
}

void Game::setPlayerCount(int count)
{
    Recording step(*this);
    m_playerCount = count;
    m_current = 0;
}

void Game::setScoreToWin(qint16 target)
{
    Recording step(*this);
    m_scoreToWin = target;
}

void Game::giveTurn(int row)
{
    Recording step(*this);
    m_current = qint16(row);
}

bool Game::scoreUp(int row)
{
    Recording step(*this);
    qint16 &score = m_scores[size_t(row)];
    // Scores are 16-bit numbers: the two decks together count as 32,767 at
    // most, so the top score is one a 16-bit number holds.
    const qsizetype total = std::min<qsizetype>(deck(questions::Kind::Match).size()
                                                    + deck(questions::Kind::Phrase).size(),
                                                32767);
    if (score + 1 > total)
        return false;
    score = platform::add16(score, 1);
    return true;
}

bool Game::scoreDown(int row)
{
    Recording step(*this);
    qint16 &score = m_scores[size_t(row)];
    if (score - 1 < 0)
        return false;
    --score;
    return true;
}

TurnChange Game::moveTurn(Direction direction)
{
    const qint16 last = platform::add16(qint16(m_playerCount), -1);
    TurnChange change;
    if (direction == Direction::Back) {
        m_current = m_current != 0 ? qint16(m_current - 1) : last;
        return change;
    }
    if (m_current != last) {
        m_current = platform::add16(m_current, 1);
        return change;
    }
    m_current = 0;
    m_round = platform::add16(m_round, 1);

    // Only the end of a round decides a game, and only rows in play count.
    for (int i = 0; i < m_playerCount; ++i)
        change.best = std::max(change.best, m_scores[size_t(i)]);
    if (change.best >= m_scoreToWin)
        for (int i = 0; i < m_playerCount; ++i)
            if (m_scores[size_t(i)] == change.best)
                change.winners.append(i);
    return change;
}

void Game::newGame()
{
    m_scores.fill(0);
    m_round = 1;
    m_current = 0;
    forgetHistory();
    m_newGameInside = m_depth > 0;
}

Outcome Game::start(Kind kind, Table &table)
{
    Recording step(*this);
    // The match tab restarts the count as soon as Start is pressed, the
    // phrase tab only once a phrase is shown.
    if (kind == Kind::Match)
        table.restartCountdown();
    if (!table.questionFileFound(kind))
        return Outcome::NoFile;
    Deck &d = deck(kind);
    if (d.dealWithoutAsking) {
        table.showReloading(true);
        d.dealWithoutAsking = false;
    } else if (d.inProgress() && !table.askStartOver(kind)) {
        return Outcome::Declined;
    }
    newGame();
    table.showPlayers();
    const std::optional<QStringList> entries = table.readDeck(kind);
    if (!entries) {
        table.showReloading(false);
        return Outcome::NoQuestions;
    }
    d.deal(*entries);
    table.showQuestion(kind);
    if (kind == Kind::Phrase)
        table.restartCountdown();
    table.showReloading(false);
    return Outcome::Dealt;
}

Outcome Game::next(Kind kind, Table &table)
{
    Recording step(*this);
    Deck &d = deck(kind);
    if (!d.shown())
        return Outcome::Nothing;
    if (kind == Kind::Phrase) {
        // The turn moves before the deck, so a game end that deals anew
        // leaves the new first phrase on show.
        table.runChangePlayer(Direction::Forward);
        if (std::exchange(m_decksRestarted, false))
            return Outcome::DecksRestarted;
        d.next();
    } else {
        d.next();
        table.runChangePlayer(Direction::Forward);  // a game end deals anew: position 1
    }
    table.showQuestion(kind);
    if (std::exchange(m_anotherRound, false)) {
        // A tie goes on: the other kind moves on too, and its turn change
        // moves the turn from before row 0 onto it.
        const Kind other = kind == Kind::Match ? Kind::Phrase : Kind::Match;
        m_current = -1;
        if (deck(other).shown())
            table.runNext(other);
        else
            m_current = 0;
        table.showPlayers();
    }
    table.restartCountdown();
    return Outcome::Shown;
}

Outcome Game::previous(Kind kind, Table &table)
{
    Recording step(*this);
    Deck &d = deck(kind);
    if (!d.shown())
        return Outcome::Nothing;
    d.previous();
    table.showQuestion(kind);
    table.restartCountdown();
    table.runChangePlayer(Direction::Back);
    return Outcome::Shown;
}

TurnChange Game::changePlayer(Direction direction, Table &table)
{
    Recording step(*this);
    const TurnChange change = moveTurn(direction);
    table.showPlayers();  // before any dialog
    if (change.winners.isEmpty())
        return change;
    if (table.showEndOfGame(change) == Answer::Yes && change.tied())
        m_anotherRound = true;  // the same scores, decided again at the next round's end
    else
        endGame(table);
    return change;
}

void Game::endGame(Table &table)
{
    // The next game begins at once: both decks dealt again without asking.
    for (Deck &d : m_decks)
        d.dealWithoutAsking = true;
    table.runStart(Kind::Match);
    table.runStart(Kind::Phrase);
    m_decksRestarted = true;
}

Game::Numbers Game::numbers() const
{
    Numbers n{};
    std::copy(m_scores.begin(), m_scores.end(), n.begin());
    n[PlayerCount] = qint16(m_playerCount);
    n[ScoreToWin] = m_scoreToWin;
    n[Current] = m_current;
    n[Round] = m_round;
    n[AnotherRound] = m_anotherRound;
    n[DecksRestarted] = m_decksRestarted;
    n[MatchAt] = m_decks[0].position();
    n[PhraseAt] = m_decks[1].position();
    return n;
}

void Game::setNumbers(const Numbers &n)
{
    std::copy(n.begin(), n.begin() + MaxPlayers, m_scores.begin());
    m_playerCount = n[PlayerCount];
    m_scoreToWin = n[ScoreToWin];
    m_current = n[Current];
    m_round = n[Round];
    m_anotherRound = n[AnotherRound];
    m_decksRestarted = n[DecksRestarted];
    // Within one game the decks keep their entries: only the place moves.
    for (int k : {0, 1})
        if (m_decks[size_t(k)].shown())
            m_decks[size_t(k)].restore(m_decks[size_t(k)].entries(), n[size_t(MatchAt + k)]);
}

void Game::record()
{
    if (std::exchange(m_newGameInside, false)) {
        tell();
        return;
    }
    const Numbers after = numbers();
    Step step;
    for (size_t i = 0; i < after.size(); ++i)
        if (after[i] != m_before[i])
            step.push_back({quint8(i), m_before[i], after[i]});
    if (step.empty())
        return;
    step.shrink_to_fit();
    m_done.push_back(std::move(step));
    m_undone.clear();
    tell();
}

bool Game::replay(std::vector<Step> &from, std::vector<Step> &to, qint16 Change::*value)
{
    if (from.empty())
        return false;
    Numbers n = numbers();
    for (const Change &c : from.back())
        n[c.slot] = c.*value;
    setNumbers(n);
    to.push_back(std::move(from.back()));
    from.pop_back();
    tell();
    return true;
}

bool Game::undo()
{
    return replay(m_done, m_undone, &Change::before);
}

bool Game::redo()
{
    return replay(m_undone, m_done, &Change::after);
}

void Game::forgetHistory()
{
    m_done = {};
    m_undone = {};
}

void Game::tell() const
{
    if (changed)
        changed();
}

bool Game::Snapshot::started() const
{
    return round > 1 || current != 0 || std::any_of(scores.begin(), scores.end(), [](qint16 s) { return s != 0; })
           || std::any_of(positions.begin(), positions.end(), [](qint16 p) { return p > 1; })
           || std::any_of(names.begin(), names.end(), [](const QString &n) { return n != DefaultName; });
}

Game::Snapshot Game::snapshot() const
{
    Snapshot s;
    s.names = m_finishedNames;
    s.scores = m_scores;
    s.playerCount = m_playerCount;
    s.scoreToWin = m_scoreToWin;
    s.current = m_current;
    s.round = m_round;
    for (size_t k : {0u, 1u}) {
        s.decks[k] = m_decks[k].entries();
        s.positions[k] = m_decks[k].shown() ? m_decks[k].position() : 0;
    }
    return s;
}

void Game::restore(const Snapshot &kept)
{
    m_names = m_finishedNames = kept.names;
    m_scores = kept.scores;
    m_playerCount = kept.playerCount;
    m_scoreToWin = kept.scoreToWin;
    m_current = kept.current;
    m_round = kept.round;
    m_anotherRound = m_decksRestarted = false;
    for (size_t k : {0u, 1u})
        if (!kept.decks[k].isEmpty())
            m_decks[k].restore(kept.decks[k], kept.positions[k]);
    forgetHistory();
    tell();
}

QString winnerMessage(const QString &name, qint16 score)
{
    return QStringLiteral("Congratulations...") + CrLf + CrLf + name
           + QStringLiteral(" has won the game with a score of ") + QString::number(score) + CrLf + CrLf
           + QStringLiteral("Nicely Done!");
}

QString tieMessage(const QStringList &names, qint16 best)
{
    return QStringLiteral("Congratulations...") + CrLf + CrLf + QStringLiteral("Players:") + CrLf + CrLf
           + names.join(QStringLiteral("  ")) + CrLf + CrLf + QStringLiteral("Have tied with a score of ")
           + QString::number(best) + CrLf + CrLf + QStringLiteral("Play another round?");
}

}  // namespace game
