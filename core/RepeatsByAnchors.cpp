// The quick way, for the files hosts write. Exact repeats go through a hash
// table. Every other line picks its rarest 8-character piece as its anchor
// (a small counting sketch, filled from a sample of the lines, tells which
// pieces are rare); one pass over all lines, hashing each piece, finds where
// anchors occur, and each such place is compared in full. Lines built to
// share their pieces would make that quadratic, so the work is counted and,
// past a few times the size of the lines, given up.
#include "core/RepeatFilter.h"
#include <QStringView>
#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace {
constexpr int Q = 8;  // length of a piece: 16 bytes
constexpr quint64 K1 = 0x9E3779B97F4A7C15ull;
constexpr quint64 K2 = 0xC2B2AE3D27D4EB4Full;
constexpr int FilterBits = 19;  // one bit per possible anchor
constexpr int SketchBits = 17;  // a count per piece, roughly

const char16_t *chars(const QString &s)
{
    return reinterpret_cast<const char16_t *>(s.constData());
}

// A piece's hash from its 16 bytes. Each position is hashed on its own, so
// the work pipelines (a rolling hash would chain every step on the last).
inline quint64 pieceHash(const char16_t *c)
{
    quint64 a, b;
    std::memcpy(&a, c, 8);
    std::memcpy(&b, c + 4, 8);
    // Shifted a byte, the second half's characters fill the first half's
    // high bytes: eight ASCII characters make one word, and one product's top
    // bits, which pick the slot, depend on all of it.
    return (a ^ (b << 8)) * K1;
}

inline quint32 slotOf(quint64 h)
{
    return quint32(h >> (64 - FilterBits));
}

// A sketch byte holds a piece count (saturating at 15) in its low bits and,
// in its high ones, the anchor filter's bits for its four slots, so each
// piece costs one look-up.
inline quint8 &sketchCell(std::vector<quint8> &sketch, quint32 slot)
{
    return sketch[slot >> (FilterBits - SketchBits)];
}

inline quint8 anchorBit(quint32 slot)
{
    return quint8(0x10u << (slot & 3));
}

quint64 wholeHash(const QString &text)
{
    const char16_t *c = chars(text);
    const qsizetype n = text.size();
    // Two lanes, so that each multiplication waits for its own lane's last.
    quint64 h = quint64(n) * K2, g = K1;
    qsizetype i = 0;
    for (; i + 8 <= n; i += 8) {
        quint64 a, b;
        std::memcpy(&a, c + i, 8);
        std::memcpy(&b, c + i + 4, 8);
        h = (h ^ a) * K1;
        g = (g ^ b) * K2;
    }
    for (; i < n; ++i)
        h = (h ^ c[i]) * K2;
    h = (h ^ std::rotl(g, 29)) * K1;
    return h ^ (h >> 32);
}

// Open addressing from a 64-bit hash to the head of a chain of entries
// (-1 ends a chain).
class ChainTable {
public:
    explicit ChainTable(qsizetype entries)
        : m_mask(std::bit_ceil(size_t(std::max<qsizetype>(16, 2 * entries))) - 1),
          m_shift(64 - std::countr_zero(m_mask + 1)), m_keys(m_mask + 1), m_heads(m_mask + 1, Free)
    {
    }
    // The head of key's chain, to read and to replace; null when the key
    // is not there.
    int *find(quint64 key)
    {
        for (size_t s = slot(key);; s = (s + 1) & m_mask) {
            if (m_heads[s] == Free)
                return nullptr;
            if (m_keys[s] == key)
                return &m_heads[s];
        }
    }
    // The head of key's chain, to read and to replace; -1 for a new key.
    int &head(quint64 key)
    {
        size_t s = slot(key);
        while (m_heads[s] != Free && m_keys[s] != key)
            s = (s + 1) & m_mask;
        if (m_heads[s] == Free) {
            m_keys[s] = key;
            m_heads[s] = -1;
        }
        return m_heads[s];
    }

private:
    // A slot no key has taken. A chain emptied keeps its key's slot: the
    // keys placed past it would be lost otherwise.
    static constexpr int Free = -2;
    // The top bits: a product's lower bits depend only on its lower bits.
    size_t slot(quint64 key) const { return size_t(key >> m_shift); }
    size_t m_mask;
    int m_shift;
    std::vector<quint64> m_keys;
    std::vector<int> m_heads;
};

// An anchor carries what rules out most places without touching its line,
// which lies elsewhere in memory: the line's length and its last piece.
struct Anchor {
    int line;
    int next;  // in its chain of anchors with the same hash
    qsizetype offset;
    qsizetype size;
    char16_t tail[Q];
};

// The three passes, each false once the work allowed is spent.
class AnchorSearch {
public:
    explicit AnchorSearch(const QStringList &lines);
    bool dropExactRepeats();
    bool dropLinesAtAnchors();
    bool dropShortLines();
    std::vector<bool> kept;

private:
    // Work is counted in characters compared.
    bool spend(qsizetype characters) { return (m_work -= characters) >= 0; }
    bool searchLine(int j);
    bool compareAnchorsAt(const QString &text, qsizetype pos, quint64 h);
    void addAnchor(int j, quint64 hash, qsizetype offset);

    const QStringList &m_lines;
    qint64 m_work = 1'000'000;
    std::vector<int> m_distinct;  // the first line of each text, in order
    std::vector<int> m_short;     // distinct lines too short for a piece
    std::vector<quint8> m_sketch;
    std::vector<Anchor> m_anchors;
    ChainTable m_anchorTable{0};
};

AnchorSearch::AnchorSearch(const QStringList &lines)
    : kept(size_t(lines.size()), false), m_lines(lines), m_sketch(size_t(1) << SketchBits, 0)
{
    for (const QString &line : lines)
        m_work += 4 * (line.size() + 1);
    m_distinct.reserve(size_t(lines.size()));
}

// Exact repeats are dropped at once; the first line of each text goes on,
// and its pieces are counted.
bool AnchorSearch::dropExactRepeats()
{
    const qsizetype n = m_lines.size();
    ChainTable seen(n);
    std::vector<int> next(size_t(n), -1);
    for (qsizetype i = 0; i < n; ++i) {
        const QString &line = m_lines[i];
        const quint64 h = wholeHash(line);
        int &head = seen.head(h);
        bool repeat = false;
        for (int k = head; k >= 0 && !repeat; k = next[size_t(k)]) {
            repeat = m_lines[k] == line;
            if (!spend(line.size()))
                return false;
        }
        if (repeat)
            continue;
        next[size_t(i)] = std::exchange(head, int(i));
        m_distinct.push_back(int(i));
        kept[size_t(i)] = true;
        // Rarity only steers the choice of anchors, so one line in eight,
        // picked by its content, is enough to tell common pieces.
        if ((h >> 61) != 0)
            continue;
        const char16_t *c = chars(line);
        for (qsizetype pos = 0, last = line.size() - Q; pos <= last; ++pos) {
            quint8 &count = sketchCell(m_sketch, slotOf(pieceHash(c + pos)));
            count = quint8(count + ((count & 0xF) != 0xF));
        }
    }
    return true;
}

// Lines are taken last to first: each is searched for the anchors of the
// lines after it (only an earlier line can make a line a repeat), then its
// own anchor joins them.
bool AnchorSearch::dropLinesAtAnchors()
{
    m_anchors.reserve(m_distinct.size());
    m_anchorTable = ChainTable(qsizetype(m_distinct.size()));
    for (auto it = m_distinct.rbegin(); it != m_distinct.rend(); ++it) {
        // The next line's text is fetched while this one is searched: lines
        // lie apart in memory, so no prefetcher guesses where it starts.
        if (it + 1 != m_distinct.rend()) {
            const QString &following = m_lines[*(it + 1)];
            const char *bytes = reinterpret_cast<const char *>(following.constData());
            for (qsizetype b = 0; b < 2 * following.size(); b += 64)
                __builtin_prefetch(bytes + b);
        }
        if (m_lines[*it].size() < Q)
            m_short.push_back(*it);
        else if (!searchLine(*it))
            return false;
    }
    return true;
}

// Runs once for every character of the file: its tables are read through
// locals, and most pieces stop at the filter.
bool AnchorSearch::searchLine(int j)
{
    const QString &text = m_lines[j];
    const quint8 *cells = m_sketch.data();
    const char16_t *c = chars(text);
    quint32 best = 0x100;
    quint64 bestHash = 0;
    qsizetype bestOffset = 0;
    for (qsizetype pos = 0, last = text.size() - Q; pos <= last; ++pos) {
        const quint64 h = pieceHash(c + pos);
        const quint32 slot = slotOf(h);
        const quint32 cell = cells[slot >> (FilterBits - SketchBits)];
        if ((cell & 0xF) < best) {
            best = cell & 0xF;
            bestHash = h;
            bestOffset = pos;
        }
        if (Q_UNLIKELY(cell & anchorBit(slot)) && !compareAnchorsAt(text, pos, h))
            return false;
    }
    addAnchor(j, bestHash, bestOffset);
    return true;
}

// Each anchor of hash h whose line would fit around pos, and end with the
// same piece, is compared in full. A match drops the anchor's line and takes
// the anchor out of its chain: a piece common to many lines would otherwise
// cost each of them the walk again.
bool AnchorSearch::compareAnchorsAt(const QString &text, qsizetype pos, quint64 h)
{
    int *link = m_anchorTable.find(h);
    while (link && *link >= 0) {
        Anchor &a = m_anchors[size_t(*link)];
        if (!spend(a.size))
            return false;
        const qsizetype start = pos - a.offset;
        if (start >= 0 && start + a.size <= text.size() && a.size < text.size()
            && std::memcmp(chars(text) + start + a.size - Q, a.tail, sizeof a.tail) == 0
            && QStringView(text).sliced(start, a.size) == m_lines[a.line]) {
            kept[size_t(a.line)] = false;
            *link = a.next;
        } else {
            link = &a.next;
        }
    }
    return true;
}

void AnchorSearch::addAnchor(int j, quint64 hash, qsizetype offset)
{
    const QString &text = m_lines[j];
    Anchor anchor{j, std::exchange(m_anchorTable.head(hash), int(m_anchors.size())), offset, text.size(), {}};
    std::memcpy(anchor.tail, chars(text) + text.size() - Q, sizeof anchor.tail);
    m_anchors.push_back(anchor);
    const quint32 slot = slotOf(hash);
    sketchCell(m_sketch, slot) |= anchorBit(slot);
}

// Lines too short for a piece are compared with each earlier line directly
// (the rules never make one, but the check must not depend on that).
bool AnchorSearch::dropShortLines()
{
    for (int i : m_short)
        for (int j : m_distinct) {  // every line before i, in order
            if (j >= i)
                break;
            if (!spend(m_lines[j].size()))
                return false;
            if (m_lines[j].contains(m_lines[i])) {
                kept[size_t(i)] = false;
                break;
            }
        }
    return true;
}
}  // namespace

std::optional<std::vector<bool>> RepeatFilter::keepByAnchors(const QStringList &lines)
{
    AnchorSearch search(lines);
    if (!search.dropExactRepeats() || !search.dropLinesAtAnchors() || !search.dropShortLines())
        return std::nullopt;
    return std::move(search.kept);
}
