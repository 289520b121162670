#include "core/RepeatFilter.h"
#include <QStringView>
#include <algorithm>
#include <bit>
#include <cstring>

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

std::vector<bool> RepeatFilter::keep(const QStringList &lines)
{
    const qsizetype n = lines.size();
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
            for (int k = seen.find(h); k >= 0 && !repeat; k = next[size_t(k)])
                repeat = lines[k] == line;
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
                if (!kept[size_t(a.line)])
                    continue;
                const QString &inner = lines[a.line];
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
            if (lines[j].contains(lines[i])) {
                kept[size_t(i)] = false;
                break;
            }
        }
    return kept;
}
