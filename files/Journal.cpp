#include "files/Journal.h"
#include "core/QuestionRules.h"
#include "platform/TextFiles.h"
#include <QCryptographicHash>
#include <QDir>
#include <QHash>
#include <algorithm>
#include <sys/resource.h>
#include <unistd.h>

namespace journal {

namespace {
const QByteArray Heading = "Tandrel game 1";
constexpr int Lines = 8 + game::MaxPlayers + 2;  // before the sum
// Far more than two full decks' orders take; a larger file is not ours.
constexpr qsizetype MaxFileBytes = 2 * 1024 * 1024;

QByteArray sumOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QStringList sorted(QStringList entries)
{
    std::sort(entries.begin(), entries.end());
    return entries;
}

QByteArray sumOfEntries(const QStringList &sortedEntries)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &e : sortedEntries)
        hash.addData(e.toUtf8().append('\n'));
    return hash.result().toHex();
}

// A dealt deck's sum and order: "SUM 3,0,2,1".
QString orderOf(const QStringList &deck)
{
    const QStringList order = sorted(deck);
    QHash<QString, int> place;
    place.reserve(order.size());
    for (int i = 0; i < order.size(); ++i)
        place.insert(order[i], i);
    QStringList indices;
    indices.reserve(deck.size());
    for (const QString &e : deck)
        indices << QString::number(place.value(e));
    return QString::fromLatin1(sumOfEntries(order)) + ' ' + indices.join(',');
}

QString deckLine(qint16 position, const QString &order)
{
    return order.isEmpty() ? QStringLiteral("deck none") : QStringLiteral("deck %1 ").arg(position) + order;
}

// "N" within [low, high].
std::optional<int> number(QByteArrayView text, int low, int high)
{
    bool ok = false;
    const int n = text.toInt(&ok);
    return ok && n >= low && n <= high ? std::optional<int>(n) : std::nullopt;
}

std::optional<Deck> deckOf(const QByteArray &line)
{
    if (line == "deck none")
        return Deck{};
    const QList<QByteArray> parts = line.split(' ');
    if (parts.size() != 4 || parts[0] != "deck" || parts[2].size() != 64)
        return std::nullopt;
    Deck d;
    d.sum = parts[2];
    const QList<QByteArray> indices = parts[3].split(',');
    const auto position = number(parts[1], 1, int(indices.size()));
    if (!position || indices.size() > questions::MaxDeckEntries)
        return std::nullopt;
    d.position = qint16(*position);
    QList<bool> seen(indices.size());
    for (const QByteArray &i : indices) {
        const auto n = number(i, 0, int(indices.size()) - 1);
        if (!n || seen[*n])
            return std::nullopt;
        seen[*n] = true;
        d.order << *n;
    }
    return d;
}
// Each deck's order as orderOf gives it, empty for one never dealt.
QString encodeWith(const Kept &kept, const QString &programDir, const std::array<QString, 2> &orders)
{
    const game::Game::Snapshot &g = kept.game;
    QStringList lines{QString::fromLatin1(Heading),
                      QStringLiteral("folder ") + QString::fromLatin1(programDir.toUtf8().toPercentEncoding()),
                      QStringLiteral("players %1").arg(g.playerCount),
                      QStringLiteral("target %1").arg(g.scoreToWin),
                      QStringLiteral("turn %1").arg(g.current),
                      QStringLiteral("round %1").arg(g.round),
                      QStringLiteral("tab %1").arg(kept.tab)};
    QStringList scores;
    for (qint16 s : g.scores)
        scores << QString::number(s);
    lines << QStringLiteral("scores ") + scores.join(' ');
    for (const QString &name : g.names)
        lines << QStringLiteral("name ") + QString::fromLatin1(name.toUtf8().toPercentEncoding());
    for (size_t k : {0u, 1u})
        lines << deckLine(g.positions[k], orders[k]);
    const QString text = lines.join('\n') + '\n';
    return text + QStringLiteral("sum ") + QString::fromLatin1(sumOf(text.toUtf8())) + '\n';
}
}  // namespace

QString pathFor(const QString &dataDir, const QString &programDir)
{
    return dataDir + QStringLiteral("/games/game-") + QString::fromLatin1(sumOf(programDir.toUtf8()).left(16))
           + QStringLiteral(".txt");
}

QString encode(const Kept &kept, const QString &programDir)
{
    std::array<QString, 2> orders;
    for (size_t k : {0u, 1u})
        orders[k] = kept.game.decks[k].isEmpty() ? QString() : orderOf(kept.game.decks[k]);
    return encodeWith(kept, programDir, orders);
}

std::optional<Read> decode(const QByteArray &bytes, const QString &programDir)
{
    const QList<QByteArray> lines = bytes.split('\n');
    if (lines.size() != Lines + 2 || !lines.last().isEmpty() || lines[0] != Heading)
        return std::nullopt;
    const qsizetype body = bytes.size() - lines[Lines].size() - 1;
    if (lines[Lines] != "sum " + sumOf(bytes.left(body)))
        return std::nullopt;
    const auto field = [&](int i, const char *key) {
        const QByteArray prefix = QByteArray(key) + ' ';
        return lines[i].startsWith(prefix) ? std::optional<QByteArray>(lines[i].mid(prefix.size())) : std::nullopt;
    };
    const auto folder = field(1, "folder");
    if (!folder || QString::fromUtf8(QByteArray::fromPercentEncoding(*folder)) != programDir)
        return std::nullopt;
    Read r;
    game::Game::Snapshot &g = r.kept.game;
    const auto players = number(field(2, "players").value_or(""), 2, game::MaxPlayers);
    const auto target = number(field(3, "target").value_or(""), 5, 30);
    const auto turn = number(field(4, "turn").value_or(""), 0, players.value_or(0) - 1);
    const auto round = number(field(5, "round").value_or(""), 1, 32767);
    const auto tab = number(field(6, "tab").value_or(""), 0, 1);
    const QList<QByteArray> scores = field(7, "scores").value_or("").split(' ');
    // The target is one the host's list offers: 5 to 30 in fives.
    if (!players || !target || *target % 5 || !turn || !round || !tab || scores.size() != game::MaxPlayers)
        return std::nullopt;
    g.playerCount = *players;
    g.scoreToWin = qint16(*target);
    g.current = qint16(*turn);
    g.round = qint16(*round);
    r.kept.tab = *tab;
    for (int i = 0; i < game::MaxPlayers; ++i) {
        const auto score = number(scores[i], 0, 32767);
        const auto name = field(8 + i, "name");
        if (!score || !name)
            return std::nullopt;
        g.scores[size_t(i)] = qint16(*score);
        g.names[size_t(i)] = QString::fromUtf8(QByteArray::fromPercentEncoding(*name));
    }
    for (size_t k : {0u, 1u}) {
        const auto deck = deckOf(lines[int(8 + game::MaxPlayers + k)]);
        if (!deck)
            return std::nullopt;
        r.decks[k] = *deck;
        g.positions[k] = deck->position;
    }
    return r;
}

std::optional<Read> readFile(const QString &path, const QString &programDir)
{
    try {
        if (!platform::fileExists(path))
            return std::nullopt;
        return decode(platform::readBytes(path, MaxFileBytes), programDir);
    } catch (const std::exception &) {
        return std::nullopt;  // unreadable: nothing to bring back
    }
}

Back bringBack(const Deck &kept, const QStringList &fileEntries, QStringList &entries, qint16 &position)
{
    if (fileEntries.isEmpty())
        return Back::Missing;
    const QStringList order = sorted(fileEntries);
    if (order.size() == kept.order.size() && sumOfEntries(order) == kept.sum) {
        entries.clear();
        for (int i : kept.order)
            entries << order[i];
        position = kept.position;
        return Back::Same;
    }
    entries = fileEntries;
    position = 1;
    return Back::Afresh;
}

Writer::Writer(const QString &path, const QString &programDir)
    : m_path(path), m_programDir(programDir), m_thread([this] { run(); })
{
}

Writer::~Writer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void Writer::keep(const Kept &kept)
{
    {
        const std::lock_guard lock(m_mutex);
        m_waiting = kept;
        ++m_given;
    }
    m_wake.notify_one();
}

void Writer::flush()
{
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_done == m_given; });
}

quint64 Writer::written() const
{
    const std::lock_guard lock(m_mutex);
    return m_written;
}

const QString &Writer::orderOf(int kind, const QStringList &deck)
{
    // The same deal shares its entries: worked out again only after a new
    // one (holding the old deal keeps a new one from taking its address).
    if (m_dealt[size_t(kind)].constData() != deck.constData() || m_dealt[size_t(kind)].size() != deck.size()) {
        m_dealt[size_t(kind)] = deck;
        m_dealtOrder[size_t(kind)] = deck.isEmpty() ? QString() : journal::orderOf(deck);
    }
    return m_dealtOrder[size_t(kind)];
}

void Writer::run()
{
    // Below the window's thread: on a busy machine a paint goes first.
    ::setpriority(PRIO_PROCESS, id_t(::gettid()), 10);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stop || m_waiting; });
        if (!m_waiting)
            return;  // stopping with nothing left
        const Kept kept = *std::exchange(m_waiting, std::nullopt);
        const quint64 given = m_given;
        lock.unlock();
        bool ok = true;
        try {
            const std::array<QString, 2> orders{orderOf(0, kept.game.decks[0]), orderOf(1, kept.game.decks[1])};
            QDir().mkpath(QFileInfo(m_path).absolutePath());
            platform::writeWhole(m_path, encodeWith(kept, m_programDir, orders));
        } catch (...) {
            ok = false;  // a folder that takes no files: nothing kept, the game goes on
        }
        lock.lock();
        m_done = given;
        if (ok)
            m_written = given;
        m_idle.notify_all();
    }
}

}  // namespace journal
