#include "core/RepeatFilter.h"
#include <QSet>
#include <QStringView>
#include <algorithm>
#include <bit>
#include <cstring>
#include <divsufsort.h>
#include <optional>

namespace {
constexpr int Q = 8;               // length of a piece: 16 bytes
constexpr quint64 K1 = 0x9E3779B97F4A7C15ull;
constexpr quint64 K2 = 0xC2B2AE3D27D4EB4Full;
constexpr int FilterBits = 19;     // one bit per possible anchor: 64 KiB
constexpr int SketchBits = 17;     // a count per piece, roughly: 128 KiB

const char16_t *chars(const QString &s)
{
    return reinterpret_cast<const char16_t *>(s.utf16());
}

// A piece's hash from its 16 bytes. Each position is hashed on its own, so
// the work pipelines (a rolling hash would chain every step on the last).
inline quint64 pieceHash(const char16_t *c)
{
    quint64 a, b;
    std::memcpy(&a, c, 8);
    std::memcpy(&b, c + 4, 8);
    // The top bits of each product depend on all bits of its half, so the
    // sum's top bits, which pick the slot, depend on the whole piece.
    return a * K1 + b * K2;
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
    quint64 h = quint64(n) * K2;
    qsizetype i = 0;
    for (; i + 4 <= n; i += 4) {
        quint64 block;
        std::memcpy(&block, c + i, 8);
        h = (h ^ block) * K1;
    }
    for (; i < n; ++i)
        h = (h ^ c[i]) * K2;
    return h ^ (h >> 32);
}

// Open addressing from a 64-bit hash to a chain of entries.
class ChainTable {
public:
    explicit ChainTable(qsizetype entries)
        : m_mask(std::bit_ceil(size_t(std::max<qsizetype>(16, 2 * entries))) - 1), m_keys(m_mask + 1), m_heads(m_mask + 1, -1)
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
    // Puts a new head on key's chain; returns the old head, or -1.
    int push(quint64 key, int head)
    {
        for (size_t s = slot(key);; s = (s + 1) & m_mask) {
            if (m_heads[s] < 0) {
                m_keys[s] = key;
                m_heads[s] = head;
                return -1;
            }
            if (m_keys[s] == key) {
                const int old = m_heads[s];
                m_heads[s] = head;
                return old;
            }
        }
    }

private:
    size_t slot(quint64 key) const { return size_t(key >> 20) & m_mask; }
    size_t m_mask;
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
    // its pieces are counted.
    std::vector<quint8> sketch(size_t(1) << SketchBits, 0);
    {
        ChainTable seen(n);
        std::vector<int> next(size_t(n), -1);
        for (qsizetype i = 0; i < n; ++i) {
            const QString &line = lines[i];
            const quint64 h = wholeHash(line);
            bool repeat = false;
            for (int k = seen.find(h); k >= 0 && !repeat; k = next[size_t(k)]) {
                repeat = lines[k] == line;
                if ((work -= line.size()) < 0)
                    return std::nullopt;
            }
            if (repeat)
                continue;
            next[size_t(i)] = seen.push(h, int(i));
            distinct.push_back(int(i));
            kept[size_t(i)] = true;
            // Rarity only steers the choice of anchors, so one line in eight,
            // picked by its content, is enough to tell common pieces.
            if ((h >> 61) != 0)
                continue;
            forEachPiece(line, [&](qsizetype, quint64, quint32 slot) {
                quint8 &count = sketch[slot >> (FilterBits - SketchBits)];
                count = quint8(count + (count != 0xFF));
            });
        }
    }

    // Lines are taken last to first: each is searched for the anchors of the
    // lines after it (only an earlier line can make a line a repeat), then
    // its own anchor, its rarest piece, joins them.
    struct Anchor {
        int line;
        int next;
        qsizetype offset;
    };
    std::vector<Anchor> anchors;
    anchors.reserve(distinct.size());
    ChainTable anchorTable(qsizetype(distinct.size()));
    std::vector<quint64> filter(size_t(1) << (FilterBits - 6), 0);
    std::vector<int> shortLines;
    for (auto it = distinct.rbegin(); it != distinct.rend(); ++it) {
        const int j = *it;
        const QString &text = lines[j];
        if (text.size() < Q) {
            shortLines.push_back(j);
            continue;
        }
        // The pieces' loop is written out with its tables in locals: it runs
        // once for every character of the file.
        const quint8 *counts = sketch.data();
        const quint64 *bits = filter.data();
        const char16_t *c = chars(text);
        quint32 best = 0x100;
        quint64 bestHash = 0;
        qsizetype bestOffset = 0;
        for (qsizetype pos = 0, last = text.size() - Q; pos <= last; ++pos) {
            const quint64 h = pieceHash(c + pos);
            const quint32 slot = slotOf(h);
            const quint32 count = counts[slot >> (FilterBits - SketchBits)];
            if (count < best) {
                best = count;
                bestHash = h;
                bestOffset = pos;
            }
            if (Q_LIKELY(!(bits[slot >> 6] & (quint64(1) << (slot & 63)))))
                continue;
            for (int k = anchorTable.find(h); k >= 0; k = anchors[size_t(k)].next) {
                const Anchor &a = anchors[size_t(k)];
                const QString &inner = lines[a.line];
                if ((work -= inner.size()) < 0)
                    return std::nullopt;
                if (!kept[size_t(a.line)])
                    continue;
                const qsizetype start = pos - a.offset;
                if (start < 0 || start + inner.size() > text.size() || inner.size() >= text.size())
                    continue;
                if (QStringView(text).sliced(start, inner.size()) == inner)
                    kept[size_t(a.line)] = false;
            }
        }
        anchors.push_back({j, -1, bestOffset});
        anchors.back().next = anchorTable.push(bestHash, int(anchors.size() - 1));
        const quint32 slot = slotOf(bestHash);
        filter[slot >> 6] |= quint64(1) << (slot & 63);
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
    explicit Codes(const QStringList &lines)
        : m_rank(0x10000)
    {
        std::vector<quint32> count(0x10000);
        std::vector<char16_t> used;  // only these are ever asked for
        for (const QString &line : lines)
            for (QChar c : line)
                if (count[c.unicode()]++ == 0)
                    used.push_back(c.unicode());
        std::sort(used.begin(), used.end(), [&](char16_t a, char16_t b) { return count[a] > count[b] || (count[a] == count[b] && a < b); });
        for (size_t r = 0; r < used.size(); ++r)
            m_rank[used[r]] = quint16(r);
    }
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
};

// The smallest value in any range of an array, in time independent of the
// range's size: minima of blocks, and a sparse table over those.
class RangeMin {
public:
    explicit RangeMin(const std::vector<saidx_t> &values)
        : m_values(values)
    {
        const size_t blocks = (values.size() + Block - 1) / Block;
        m_table.emplace_back(blocks);
        for (size_t b = 0; b < blocks; ++b)
            m_table[0][b] = *std::min_element(values.begin() + b * Block, values.begin() + std::min(values.size(), (b + 1) * Block));
        for (size_t span = 2; span <= blocks; span *= 2) {
            const std::vector<saidx_t> &below = m_table.back();
            std::vector<saidx_t> level(blocks - span + 1);
            for (size_t b = 0; b < level.size(); ++b)
                level[b] = std::min(below[b], below[b + span / 2]);
            m_table.push_back(std::move(level));
        }
    }
    // Whether any value in [from, to) is below the limit.
    bool anyBelow(size_t from, size_t to, saidx_t limit) const
    {
        const size_t firstBlock = (from + Block - 1) / Block, endBlock = to / Block;
        if (firstBlock >= endBlock)
            return scan(from, to, limit);
        if (scan(from, firstBlock * Block, limit) || scan(endBlock * Block, to, limit))
            return true;
        const int level = std::bit_width(endBlock - firstBlock) - 1;
        const std::vector<saidx_t> &row = m_table[size_t(level)];
        return std::min(row[firstBlock], row[endBlock - (size_t(1) << level)]) < limit;
    }

private:
    static constexpr size_t Block = 128;
    bool scan(size_t from, size_t to, saidx_t limit) const
    {
        return std::any_of(m_values.begin() + from, m_values.begin() + to, [&](saidx_t v) { return v < limit; });
    }
    const std::vector<saidx_t> &m_values;
    std::vector<std::vector<saidx_t>> m_table;
};

}  // namespace

// The way whose work is close to linear whatever the lines hold: the lines
// are written one after another and every place in them is sorted by the
// text that follows it (a suffix array). The places where a line occurs are
// one range of that order, found by two binary searches; the line repeats
// when the range holds a place before the line's own, which a range minimum
// answers at once.
std::vector<bool> RepeatFilter::keepBySorting(const QStringList &lines)
{
    // A line met before in full repeats at once; only the first of each
    // text is written out (files that repeat whole lines shrink a lot).
    std::vector<bool> kept(size_t(lines.size()));
    std::vector<qsizetype> distinct;
    {
        QSet<QStringView> seen;
        seen.reserve(lines.size());
        for (qsizetype i = 0; i < lines.size(); ++i)
            if (!seen.contains(lines[i])) {
                seen.insert(lines[i]);
                distinct.push_back(i);
            }
    }
    const Codes codes(lines);
    std::vector<saidx_t> start(distinct.size() + 1);
    saidx_t total = 0;
    for (size_t d = 0; d < distinct.size(); ++d) {
        start[d] = total;
        for (QChar c : lines[distinct[d]])
            total += Codes::length(codes.rank(c));
        ++total;  // the end of the line
    }
    start.back() = total;
    std::vector<quint8> text(static_cast<size_t>(total));
    quint8 *out = text.data();
    for (qsizetype i : distinct) {
        for (QChar c : lines[i])
            out = Codes::put(out, codes.rank(c));
        *out++ = 0;
    }

    // Every place in every line, in the order of the text that follows it.
    std::vector<saidx_t> suffixes(static_cast<size_t>(total));
    if (total > 0 && divsufsort(text.data(), suffixes.data(), total) != 0)
        throw std::bad_alloc();
    const RangeMin earliest(suffixes);

    // The places where a line occurs are the suffixes that begin with it, a
    // range of that order; the line repeats when one of them lies in an
    // earlier line, which in the text is any place before the line's own.
    for (size_t d = 0; d < distinct.size(); ++d) {
        const quint8 *pattern = text.data() + start[d];
        const size_t length = size_t(start[d + 1] - start[d] - 1);
        // Whether the text from a place sorts before the line (or, with
        // orBeginsWith, also whether it begins with the line).
        const auto below = [&](saidx_t place, bool orBeginsWith) {
            const size_t room = size_t(total - place);
            const int c = std::memcmp(text.data() + place, pattern, std::min(room, length));
            return c < 0 || (c == 0 && (room < length || orBeginsWith));
        };
        const auto first = std::partition_point(suffixes.begin(), suffixes.end(), [&](saidx_t p) { return below(p, false); });
        const auto end = std::partition_point(first, suffixes.end(), [&](saidx_t p) { return below(p, true); });
        kept[size_t(distinct[d])] = !earliest.anyBelow(size_t(first - suffixes.begin()), size_t(end - suffixes.begin()), start[d]);
    }
    return kept;
}

std::vector<bool> RepeatFilter::keep(const QStringList &lines)
{
    if (auto kept = keepByAnchors(lines))
        return *kept;
    return keepBySorting(lines);
}
