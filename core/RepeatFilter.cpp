#include "core/RepeatFilter.h"
#include <QSet>
#include <QStringView>
#include <algorithm>
#include <bit>
#include <cstring>
#include <divsufsort.h>
#include <limits>
#include <optional>
#include <utility>

namespace {
constexpr int Q = 8;               // length of a piece: 16 bytes
constexpr quint64 K1 = 0x9E3779B97F4A7C15ull;
constexpr quint64 K2 = 0xC2B2AE3D27D4EB4Full;
constexpr int FilterBits = 19;     // one bit per possible anchor
constexpr int SketchBits = 17;     // a count per piece, roughly

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

// Calls f(position, hash, slot) for each piece; the slot's top bits index
// the sketch.
template<class F>
inline void forEachPiece(const QString &text, F &&f)
{
    const char16_t *c = chars(text);
    for (qsizetype i = 0, last = text.size() - Q; i <= last; ++i) {
        const quint64 h = pieceHash(c + i);
        f(i, h, slotOf(h));
    }
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

// Open addressing from a 64-bit hash to a chain of entries.
class ChainTable {
public:
    explicit ChainTable(qsizetype entries)
        : m_mask(std::bit_ceil(size_t(std::max<qsizetype>(16, 2 * entries))) - 1),
          m_shift(64 - std::countr_zero(m_mask + 1)), m_keys(m_mask + 1), m_heads(m_mask + 1, -1)
    {
    }
    // The head of key's chain, or -1.
    int find(quint64 key) const
    {
        for (size_t s = slot(key);; s = (s + 1) & m_mask) {
            if (m_heads[s] < 0)
                return -1;
            if (m_keys[s] == key)
                return m_heads[s];
        }
    }
    // The head of key's chain, to read and to replace; -1 for a new key.
    int &head(quint64 key)
    {
        size_t s = slot(key);
        while (m_heads[s] >= 0 && m_keys[s] != key)
            s = (s + 1) & m_mask;
        m_keys[s] = key;
        return m_heads[s];
    }

private:
    // The top bits: a product's lower bits depend only on its lower bits.
    size_t slot(quint64 key) const { return size_t(key >> m_shift); }
    size_t m_mask;
    int m_shift;
    std::vector<quint64> m_keys;
    std::vector<int> m_heads;
};

}  // namespace

// The quick way, for the files hosts write: every line picks its rarest
// 8-character piece as an anchor (a small counting sketch, filled from a
// sample of the lines, tells which pieces are rare); one pass over all
// lines, hashing each piece, finds where anchors occur, and each such place
// is compared in full. Lines built to share their pieces would make that
// quadratic, so the work is counted and, past a few times the size of the
// lines, given up (nothing).
std::optional<std::vector<bool>> RepeatFilter::keepByAnchors(const QStringList &lines)
{
    const qsizetype n = lines.size();
    // What may be spent, in characters compared: a step along a chain costs
    // the length of the line it compares (only one distinct line is empty).
    qint64 work = 1'000'000;
    for (const QString &line : lines)
        work += 4 * (line.size() + 1);
    std::vector<bool> kept(size_t(n), false);
    std::vector<int> distinct;
    distinct.reserve(size_t(n));

    // Exact repeats are dropped at once; the first of each text goes on, and
    // its pieces are counted. A sketch byte holds a count (saturating at 15)
    // in its low bits and, in its high ones, the anchor filter's bits for its
    // four slots, so each piece of the search below costs one look-up.
    std::vector<quint8> sketch(size_t(1) << SketchBits, 0);
    {
        ChainTable seen(n);
        std::vector<int> next(size_t(n), -1);
        for (qsizetype i = 0; i < n; ++i) {
            const QString &line = lines[i];
            const quint64 h = wholeHash(line);
            int &head = seen.head(h);
            bool repeat = false;
            for (int k = head; k >= 0 && !repeat; k = next[size_t(k)]) {
                repeat = lines[k] == line;
                if ((work -= line.size()) < 0)
                    return std::nullopt;
            }
            if (repeat)
                continue;
            next[size_t(i)] = std::exchange(head, int(i));
            distinct.push_back(int(i));
            kept[size_t(i)] = true;
            // Rarity only steers the choice of anchors, so one line in eight,
            // picked by its content, is enough to tell common pieces.
            if ((h >> 61) != 0)
                continue;
            forEachPiece(line, [&](qsizetype, quint64, quint32 slot) {
                quint8 &count = sketch[slot >> (FilterBits - SketchBits)];
                count = quint8(count + ((count & 0xF) != 0xF));
            });
        }
    }

    // An anchor carries what rules out most places without touching its
    // line, which lies elsewhere in memory: the line's length and its last
    // piece, compared with the text in hand.
    struct Anchor {
        int line;
        int next;
        qsizetype offset;
        qsizetype size;
        char16_t tail[Q];
    };
    std::vector<Anchor> anchors;
    anchors.reserve(distinct.size());
    ChainTable anchorTable(qsizetype(distinct.size()));
    std::vector<int> shortLines;
    // Lines are taken last to first: each is searched for the anchors of the
    // lines after it (only an earlier line can make a line a repeat), then
    // its own anchor, its rarest piece, joins them.
    for (auto it = distinct.rbegin(); it != distinct.rend(); ++it) {
        const int j = *it;
        const QString &text = lines[j];
        // The next line's text is fetched while this one is searched: lines
        // lie apart in memory, so no prefetcher guesses where it starts.
        if (it + 1 != distinct.rend()) {
            const QString &following = lines[*(it + 1)];
            const char *bytes = reinterpret_cast<const char *>(following.constData());
            for (qsizetype b = 0; b < 2 * following.size(); b += 64)
                __builtin_prefetch(bytes + b);
        }
        if (text.size() < Q) {
            shortLines.push_back(j);
            continue;
        }
        // The pieces' loop is written out with its tables in locals: it runs
        // once for every character of the file.
        const quint8 *cells = sketch.data();
        const char16_t *c = chars(text);
        quint32 best = 0x100;
        quint64 bestHash = 0;
        qsizetype bestOffset = 0;
        for (qsizetype pos = 0, last = text.size() - Q; pos <= last; ++pos) {
            const quint64 h = pieceHash(c + pos);
            const quint32 slot = slotOf(h);
            const quint32 cell = cells[slot >> (FilterBits - SketchBits)];
            const quint32 count = cell & 0xF;
            if (count < best) {
                best = count;
                bestHash = h;
                bestOffset = pos;
            }
            if (Q_LIKELY(!(cell & (0x10u << (slot & 3)))))
                continue;
            for (int k = anchorTable.find(h); k >= 0; k = anchors[size_t(k)].next) {
                const Anchor &a = anchors[size_t(k)];
                if ((work -= a.size) < 0)
                    return std::nullopt;
                const qsizetype start = pos - a.offset;
                if (start < 0 || start + a.size > text.size() || a.size >= text.size() || !kept[size_t(a.line)]
                    || std::memcmp(c + start + a.size - Q, a.tail, sizeof a.tail) != 0)
                    continue;
                if (QStringView(text).sliced(start, a.size) == lines[a.line])
                    kept[size_t(a.line)] = false;
            }
        }
        anchors.push_back({j, -1, bestOffset, text.size(), {}});
        std::memcpy(anchors.back().tail, c + text.size() - Q, sizeof anchors.back().tail);
        anchors.back().next = std::exchange(anchorTable.head(bestHash), int(anchors.size() - 1));
        const quint32 slot = slotOf(bestHash);
        sketch[slot >> (FilterBits - SketchBits)] |= quint8(0x10u << (slot & 3));
    }

    // Lines too short for a piece are compared directly (the rules never
    // make one, but the filter must not depend on that).
    for (int i : shortLines)
        for (int j : distinct) {  // every line before i, in order
            if (j >= i)
                break;
            if ((work -= lines[j].size()) < 0)
                return std::nullopt;
            if (lines[j].contains(lines[i])) {
                kept[size_t(i)] = false;
                break;
            }
        }
    return kept;
}

namespace {
// Each UTF-16 unit becomes a code of one to three bytes, the most frequent
// units the shortest, so the text to index is about a byte per character in
// any script. As in UTF-8, first bytes (1-0x7F, 0xC0-0xFF) and following
// bytes (0x80-0xBF) differ, so codes only ever match code for code; 0 is
// left for the end of a line, so no match runs from one line into the next.
class Codes {
public:
    // Codes for the lines whose indices are in which.
    Codes(const QStringList &lines, const std::vector<qsizetype> &which)
        : m_rank(0x10000)
    {
        // Four counts a unit, by position: with one, each character of a run
        // of one unit would wait for the last one's count to be stored.
        std::vector<quint32> counts(4 * 0x10000);
        for (qsizetype i : which) {
            const char16_t *c = chars(lines[i]);
            const qsizetype n = lines[i].size();
            qsizetype k = 0;
            for (; k + 4 <= n; k += 4) {
                ++counts[c[k]];
                ++counts[0x10000 + c[k + 1]];
                ++counts[0x20000 + c[k + 2]];
                ++counts[0x30000 + c[k + 3]];
            }
            for (; k < n; ++k)
                ++counts[c[k]];
        }
        std::vector<quint32> count(0x10000);
        std::vector<char16_t> used;  // only these are ever asked for
        for (quint32 u = 0; u < 0x10000; ++u)
            if ((count[u] = counts[u] + counts[0x10000 + u] + counts[0x20000 + u] + counts[0x30000 + u]) != 0)
                used.push_back(char16_t(u));
        // The most frequent first; of equals, the lowest unit.
        std::ranges::sort(used, std::greater{}, [&](char16_t c) { return quint64(count[c]) << 16 | quint64(0xFFFF - c); });
        for (size_t r = 0; r < used.size(); ++r) {
            m_rank[used[r]] = quint16(r);
            m_bytes += qint64(count[used[r]]) * length(quint32(r));
        }
    }
    // The length of all the lines' codes.
    qint64 bytes() const { return m_bytes; }
    static int length(quint32 rank) { return rank < One ? 1 : rank < One + Two ? 2 : 3; }
    quint32 rank(QChar c) const { return m_rank[c.unicode()]; }
    static quint8 *put(quint8 *out, quint32 rank)
    {
        if (rank < One) {
            *out++ = quint8(rank + 1);
        } else if (rank < One + Two) {
            rank -= One;
            *out++ = quint8(0xC0 + (rank >> 6));
            *out++ = quint8(0x80 | (rank & 63));
        } else {
            rank -= One + Two;
            *out++ = quint8(0xF0 + (rank >> 12));
            *out++ = quint8(0x80 | ((rank >> 6) & 63));
            *out++ = quint8(0x80 | (rank & 63));
        }
        return out;
    }

private:
    static constexpr quint32 One = 127, Two = 48 * 64;  // then 16 * 64 * 64 more
    std::vector<quint16> m_rank;
    qint64 m_bytes = 0;
};

constexpr int Long = 24;  // length of a piece that proves a line new: 48 bytes

// A long piece's hash from the hashes of its three short pieces, mixed so
// that every bit depends on all of them (the filter below takes its word
// and its bits from different bits).
inline quint64 longPieceHash(const quint64 *shortHashes)
{
    quint64 h = shortHashes[0] ^ std::rotl(shortHashes[Q], 21) ^ std::rotl(shortHashes[2 * Q], 42);
    h ^= h >> 29;
    h *= K2;
    return h ^ (h >> 32);
}

// Which distinct lines might repeat (indices into distinct, in order); the
// others are proven new cheaply. A line with no longer line before it can
// only lie inside a line of its own length, that is, be the same line. A
// line with a piece of Long characters that no earlier line has cannot lie
// inside one either: the pieces of earlier lines are kept in a filter that
// says "maybe" for every piece it saw and for a few it did not, so a "no"
// proves the piece new and a wrong "maybe" only leaves a line to the sure
// check.
std::vector<int> unproven(const QStringList &lines, const std::vector<qsizetype> &distinct, qint64 enough)
{
    std::vector<bool> proven(distinct.size());
    qsizetype longest = 0, pieces = 0;
    size_t lastOpen = 0;
    bool anyOpen = false;
    for (size_t d = 0; d < distinct.size(); ++d) {
        const qsizetype length = lines[distinct[d]].size();
        proven[d] = length >= longest;
        if (!proven[d]) {
            anyOpen = true;
            lastOpen = d;
        }
        longest = std::max(longest, length);
        pieces += std::max<qsizetype>(0, length - Long + 1);
    }
    std::vector<int> open;
    if (!anyOpen)
        return open;

    // A blocked filter: a piece sets three bits of one word, about 8 bits
    // per piece, so a new piece finds its three set by others about three
    // times in a hundred (more bits cost more in cache misses than the few
    // lines they would prove).
    const int wordBits = int(std::bit_width(size_t(std::max<qsizetype>(2, pieces / 8)) - 1));
    std::vector<quint64> filter(size_t(1) << wordBits, 0);
    quint64 *words = filter.data();
    std::vector<quint64> shortHashes;
    for (size_t d = 0; d <= lastOpen; ++d) {
        const QString &line = lines[distinct[d]];
        const qsizetype count = line.size() - Long + 1;
        if (count <= 0) {
            if (!proven[d]) {
                open.push_back(int(d));
                enough -= line.size() + 1;
            }
            continue;
        }
        shortHashes.resize(size_t(line.size() - Q + 1));
        const char16_t *c = chars(line);
        for (size_t pos = 0; pos < shortHashes.size(); ++pos)
            shortHashes[pos] = pieceHash(c + pos);
        const quint64 *hashes = shortHashes.data();
        // Words are fetched a few pieces ahead, so the filter's cache misses
        // overlap (it is larger than the cache on big files).
        constexpr qsizetype Ahead = 16;
        for (qsizetype pos = 0; pos < std::min(Ahead, count); ++pos)
            __builtin_prefetch(words + (longPieceHash(hashes + pos) >> (64 - wordBits)));
        bool fresh = proven[d];
        // A line's own pieces go in as it is read: at worst one of them
        // hides another of the same line, which only loses a proof.
        for (qsizetype pos = 0; pos < count; ++pos) {
            if (pos + Ahead < count)
                __builtin_prefetch(words + (longPieceHash(hashes + pos + Ahead) >> (64 - wordBits)));
            const quint64 h = longPieceHash(hashes + pos);
            const quint64 bits = (quint64(1) << (h & 63)) | (quint64(1) << ((h >> 6) & 63)) | (quint64(1) << ((h >> 12) & 63));
            quint64 &word = words[h >> (64 - wordBits)];
            fresh = fresh || (word & bits) != bits;
            word |= bits;
        }
        if (!fresh) {
            open.push_back(int(d));
            // Once the open lines are too many for the automaton, every
            // place gets sorted anyway and proofs would save only the
            // comparisons: the rest of the lines stay open.
            if ((enough -= line.size() + 1) < 0) {
                while (++d < distinct.size())
                    if (!proven[d])
                        open.push_back(int(d));
                break;
            }
        }
    }
    return open;
}

// Aho-Corasick over the open lines: one pass over the lines up to the last
// open one finds, for each open line, the first line it occurs in. When a
// pass finds a line it has found before, every open line inside that one was
// found then too, so the reports cost no more than the lines.
class Automaton {
public:
    Automaton(const QStringList &lines, const std::vector<qsizetype> &distinct, const std::vector<int> &open)
        : m_rootNext(0x10000, -1)
    {
        qsizetype size = 1;
        for (int d : open)
            size += lines[distinct[size_t(d)]].size();
        m_mask = std::bit_ceil(size_t(2 * size)) - 1;
        m_shift = 64 - std::bit_width(m_mask);
        m_keys.assign(m_mask + 1, Empty);
        m_values.resize(m_mask + 1);
        addNode(-1, 0);
        for (size_t k = 0; k < open.size(); ++k) {
            int node = Root;
            for (QChar ch : lines[distinct[size_t(open[k])]]) {
                const char16_t u = ch.unicode();
                int child = next(node, u);
                if (child < 0) {
                    child = addNode(node, u);
                    if (node == Root)
                        m_rootNext[u] = child;
                    else
                        insert(node, u, child);
                }
                node = child;
            }
            m_pattern[size_t(node)] = int(k);
        }
        // Links are set shallowest first: a node's link is found from its
        // parent's, which is shallower.
        std::vector<int> byDepth(m_parent.size());
        {
            std::vector<int> depth(m_parent.size(), 0), count;
            for (size_t v = 1; v < m_parent.size(); ++v)
                depth[v] = depth[size_t(m_parent[v])] + 1;
            count.assign(size_t(*std::max_element(depth.begin(), depth.end())) + 2, 0);
            for (int dep : depth)
                ++count[size_t(dep) + 1];
            for (size_t i = 1; i < count.size(); ++i)
                count[i] += count[i - 1];
            for (size_t v = 0; v < depth.size(); ++v)
                byDepth[size_t(count[size_t(depth[v])]++)] = int(v);
        }
        for (int v : byDepth) {
            if (v == Root)
                continue;
            const int parent = m_parent[size_t(v)];
            int link = Root;
            if (parent != Root)
                for (int f = m_link[size_t(parent)];; f = m_link[size_t(f)]) {
                    if (const int to = next(f, m_unit[size_t(v)]); to >= 0) {
                        link = to;
                        break;
                    }
                    if (f == Root)
                        break;
                }
            m_link[size_t(v)] = link;
            m_output[size_t(v)] = m_pattern[size_t(link)] >= 0 ? link : m_output[size_t(link)];
        }
    }

    // found[k] becomes the first of the lines, in order, that open line k
    // occurs in (its own at the latest).
    void scan(const QStringList &lines, const std::vector<qsizetype> &distinct, size_t upTo, std::vector<int> &found) const
    {
        for (size_t d = 0; d <= upTo; ++d) {
            int state = Root;
            for (QChar ch : lines[distinct[d]]) {
                const char16_t u = ch.unicode();
                for (;;) {
                    const int to = next(state, u);
                    if (to >= 0) {
                        state = to;
                        break;
                    }
                    if (state == Root)
                        break;
                    state = m_link[size_t(state)];
                }
                for (int s = m_pattern[size_t(state)] >= 0 ? state : m_output[size_t(state)]; s >= 0; s = m_output[size_t(s)]) {
                    int &first = found[size_t(m_pattern[size_t(s)])];
                    if (first >= 0)
                        break;
                    first = int(d);
                }
            }
        }
    }

private:
    static constexpr int Root = 0;
    static constexpr quint64 Empty = ~quint64(0);
    int addNode(int parent, char16_t unit)
    {
        m_parent.push_back(parent);
        m_unit.push_back(unit);
        m_link.push_back(Root);
        m_output.push_back(-1);
        m_pattern.push_back(-1);
        return int(m_parent.size() - 1);
    }
    static quint64 key(int node, char16_t unit) { return (quint64(node) << 16) | unit; }
    size_t slot(quint64 k) const { return size_t((k * K1) >> m_shift); }
    int next(int node, char16_t unit) const
    {
        if (node == Root)
            return m_rootNext[unit];
        const quint64 k = key(node, unit);
        for (size_t s = slot(k);; s = (s + 1) & m_mask) {
            if (m_keys[s] == k)
                return m_values[s];
            if (m_keys[s] == Empty)
                return -1;
        }
    }
    void insert(int node, char16_t unit, int child)
    {
        const quint64 k = key(node, unit);
        size_t s = slot(k);
        while (m_keys[s] != Empty)
            s = (s + 1) & m_mask;
        m_keys[s] = k;
        m_values[s] = child;
    }

    std::vector<int> m_rootNext;
    size_t m_mask = 0;
    int m_shift = 64;  // the product's top bits pick the slot
    std::vector<quint64> m_keys;
    std::vector<int> m_values;
    std::vector<int> m_parent, m_link, m_output, m_pattern;
    std::vector<char16_t> m_unit;
};

std::vector<bool> repeatsByAutomaton(const QStringList &lines, const std::vector<qsizetype> &distinct, const std::vector<int> &open)
{
    std::vector<bool> repeated(open.size());
    // The empty line is inside any line, so it repeats unless it comes first.
    std::vector<int> patterns;
    for (size_t k = 0; k < open.size(); ++k)
        if (lines[distinct[size_t(open[k])]].isEmpty())
            repeated[k] = open[k] > 0;
        else
            patterns.push_back(open[k]);
    if (patterns.empty())
        return repeated;
    const Automaton automaton(lines, distinct, patterns);
    std::vector<int> found(patterns.size(), -1);
    automaton.scan(lines, distinct, size_t(patterns.back()), found);
    for (size_t k = 0, p = 0; k < open.size(); ++k)
        if (p < patterns.size() && patterns[p] == open[k])
            repeated[k] = found[p] < patterns[p], ++p;
    return repeated;
}

// Finds, beside a place of an array, the nearest place whose value is
// below a limit: minima of blocks, and a sparse table over those, skip the
// blocks that have none, so a search scans at most two blocks.
class NearestBelow {
public:
    // Calls visit(i, value) for each place on the way (the one pass that
    // reads them all).
    template<class Visit>
    NearestBelow(const std::vector<saidx_t> &values, Visit &&visit)
        : m_values(values)
    {
        const size_t blocks = (values.size() + Block - 1) / Block;
        m_table.emplace_back(blocks);
        for (size_t b = 0; b < blocks; ++b) {
            saidx_t low = std::numeric_limits<saidx_t>::max();
            for (size_t i = b * Block, end = std::min(values.size(), (b + 1) * Block); i < end; ++i) {
                low = std::min(low, values[i]);
                visit(i, values[i]);
            }
            m_table[0][b] = low;
        }
        for (size_t span = 2; span <= blocks; span *= 2) {
            const std::vector<saidx_t> &below = m_table.back();
            std::vector<saidx_t> level(blocks - span + 1);
            for (size_t b = 0; b < level.size(); ++b)
                level[b] = std::min(below[b], below[b + span / 2]);
            m_table.push_back(std::move(level));
        }
    }
    // The value at the nearest place before i, or after it, that is below
    // the limit; -1 when there is none.
    saidx_t before(size_t i, saidx_t limit) const
    {
        const size_t block = i / Block;
        for (size_t j = i; j-- > block * Block;)
            if (m_values[j] < limit)
                return m_values[j];
        // Whole blocks are skipped, largest spans first, while they hold no
        // value below the limit.
        size_t end = block;
        for (size_t level = m_table.size(); level-- > 0;) {
            const size_t span = size_t(1) << level;
            if (end >= span && m_table[level][end - span] >= limit)
                end -= span;
        }
        if (end == 0)
            return -1;
        // The block before end holds a value below the limit: its last one is the nearest.
        for (size_t j = end * Block;;)
            if (m_values[--j] < limit)
                return m_values[j];
    }
    saidx_t after(size_t i, saidx_t limit) const
    {
        const size_t block = i / Block, blocks = m_table[0].size();
        for (size_t j = i + 1; j < std::min(m_values.size(), (block + 1) * Block); ++j)
            if (m_values[j] < limit)
                return m_values[j];
        size_t from = block + 1;
        for (size_t level = m_table.size(); level-- > 0;) {
            const size_t span = size_t(1) << level;
            if (from + span <= blocks && m_table[level][from] >= limit)
                from += span;
        }
        if (from >= blocks)
            return -1;
        // Block from holds a value below the limit: its first one is the nearest.
        for (size_t j = from * Block;; ++j)
            if (m_values[j] < limit)
                return m_values[j];
    }

private:
    static constexpr size_t Block = 128;
    const std::vector<saidx_t> &m_values;
    std::vector<std::vector<saidx_t>> m_table;
};

// The lines written one after another and every place in them sorted by the
// text that follows it (a suffix array). The places where a line occurs are
// one range of that order around the line's own place, so if any of them
// lies in an earlier line, the nearest place on either side of the line's
// own that lies before it does, and one comparison each tells.
std::vector<bool> repeatsBySuffixes(const QStringList &lines, const std::vector<qsizetype> &distinct, const std::vector<int> &open)
{
    const Codes codes(lines, distinct);
    const saidx_t total = saidx_t(codes.bytes() + qint64(distinct.size()));  // and an end for each line
    std::vector<saidx_t> start(distinct.size() + 1);
    std::vector<quint8> text(static_cast<size_t>(total));
    quint8 *out = text.data();
    for (size_t d = 0; d < distinct.size(); ++d) {
        start[d] = saidx_t(out - text.data());
        for (QChar c : lines[distinct[d]])
            out = Codes::put(out, codes.rank(c));
        *out++ = 0;
    }
    start.back() = total;

    std::vector<saidx_t> suffixes(static_cast<size_t>(total));
    if (total > 0 && divsufsort(text.data(), suffixes.data(), total) != 0)
        throw std::bad_alloc();

    // Where each open line's own place is in that order.
    std::vector<quint64> isOpen(size_t(total) / 64 + 1, 0);
    for (int d : open)
        isOpen[size_t(start[size_t(d)]) / 64] |= quint64(1) << (start[size_t(d)] % 64);
    std::vector<saidx_t> rank(distinct.size());
    const NearestBelow nearest(suffixes, [&](size_t i, saidx_t place) {
        if (isOpen[size_t(place) / 64] >> (place % 64) & 1)
            rank[size_t(std::upper_bound(start.begin(), start.end(), place) - start.begin() - 1)] = saidx_t(i);
    });
    std::vector<bool> repeated(open.size());
    for (size_t k = 0; k < open.size(); ++k) {
        const size_t d = size_t(open[k]);
        const saidx_t own = start[d];
        const size_t length = size_t(start[d + 1] - own - 1);
        for (saidx_t other : {nearest.before(size_t(rank[d]), own), nearest.after(size_t(rank[d]), own)})
            if (other >= 0 && std::memcmp(text.data() + other, text.data() + own, length) == 0)
                repeated[k] = true;
    }
    return repeated;
}

}  // namespace

// The sure way, close to linear in the size of the lines whatever they hold.
// Exact repeats go first; most other lines are proven new by their length or
// by a piece no earlier line has. The lines left are searched for: by one
// automaton pass when they are few (its memory grows with their size), else
// by sorting every place in the lines.
std::vector<bool> RepeatFilter::keepBySorting(const QStringList &lines, Way *taken)
{
    std::vector<bool> kept(size_t(lines.size()));
    std::vector<qsizetype> distinct;
    qint64 size = 0;
    {
        QSet<QStringView> seen;
        seen.reserve(lines.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (!seen.contains(lines[i])) {
                seen.insert(lines[i]);
                distinct.push_back(i);
                kept[size_t(i)] = true;
                size += lines[i].size() + 1;
            }
    }
    // The automaton takes about 40 bytes a character of the open lines, the
    // sorting 5 to 15 a character of all: the automaton while that is less.
    const qint64 automatonLimit = size / 8;
    const std::vector<int> open = unproven(lines, distinct, automatonLimit);
    Way way = Way::Proofs;
    std::vector<bool> repeated;
    if (!open.empty()) {
        qint64 openSize = 0;
        for (int d : open)
            openSize += lines[distinct[size_t(d)]].size() + 1;
        way = openSize <= automatonLimit ? Way::Automaton : Way::Sorting;
        repeated = way == Way::Automaton ? repeatsByAutomaton(lines, distinct, open) : repeatsBySuffixes(lines, distinct, open);
    }
    if (taken)
        *taken = way;
    for (size_t k = 0; k < open.size(); ++k)
        if (repeated[k])
            kept[size_t(distinct[size_t(open[k])])] = false;
    return kept;
}

std::vector<bool> RepeatFilter::keep(const QStringList &lines)
{
    if (auto kept = keepByAnchors(lines))
        return *kept;
    return keepBySorting(lines);
}
