#include "core/Game.h"
#include "platform/Numeric.h"
#include <algorithm>

namespace game {

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

Game::Game()
{
    m_names.fill(QStringLiteral("Name"));
}

void Game::setPlayerCount(int count)
{
    m_playerCount = count;
    m_current = 0;
}

bool Game::scoreUp(int row)
{
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
    qint16 &score = m_scores[size_t(row)];
    if (score - 1 < 0)
        return false;
    --score;
    return true;
}

TurnChange Game::changePlayer(Direction direction)
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
    change.roundEnded = true;

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
}

void Game::gameEnded()
{
    for (Deck &d : m_decks)
        d.dealWithoutAsking = true;
    m_decksRestarted = true;
}

bool Game::takeDecksRestarted()
{
    return std::exchange(m_decksRestarted, false);
}

bool Game::takeAnotherRound()
{
    if (!std::exchange(m_anotherRound, false))
        return false;
    m_current = -1;
    return true;
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
