// The way for any lines: they are written one after another and every place in
// them is sorted by the text that follows it (a suffix array, built by
// libdivsufsort). The places where a line occurs then form one range of
// that order, around the line's own place, so it is enough to look at the
// two places beside it that lie earlier in the text.
#include "core/RepeatFilter.h"
#include <QStringView>
#include <algorithm>
#include <cstring>
#include <divsufsort.h>
#include <limits>
#include <new>

namespace {
// libdivsufsort sorts bytes, so each UTF-16 unit becomes one to three bytes
// as in UTF-8 (a surrogate on its own, like any unit). A first byte never
// looks like a following one, so bytes match only code for code. Unit 0
// takes two bytes, which leaves the byte 0 free to end each line: no match
// runs from one line into the next.
int codeLength(char16_t u)
{
    return u == 0 ? 2 : u < 0x80 ? 1 : u < 0x800 ? 2 : 3;
}

quint8 *putCode(quint8 *out, char16_t u)
{
    if (u != 0 && u < 0x80) {
        *out++ = quint8(u);
    } else if (u < 0x800) {
        *out++ = quint8(0xC0 | u >> 6);
        *out++ = quint8(0x80 | (u & 0x3F));
    } else {
        *out++ = quint8(0xE0 | u >> 12);
        *out++ = quint8(0x80 | (u >> 6 & 0x3F));
        *out++ = quint8(0x80 | (u & 0x3F));
    }
    return out;
}

// All lines' codes, each line ended by a 0, and where each line begins.
struct Text {
    std::vector<quint8> bytes;
    std::vector<saidx_t> start;  // and the end of the text, last
    std::vector<bool> isStart;   // by place
};

Text writeText(const QStringList &lines)
{
    qint64 size = 0;
    for (const QString &line : lines)
        for (QChar c : line)
            size += codeLength(c.unicode());
    size += lines.size();
    // libdivsufsort counts places in 32 bits.
    if (size > std::numeric_limits<saidx_t>::max())
        throw std::bad_alloc();
    Text text{std::vector<quint8>(size_t(size)), {}, std::vector<bool>(size_t(size) + 1)};
    text.start.reserve(size_t(lines.size()) + 1);
    quint8 *out = text.bytes.data();
    for (const QString &line : lines) {
        const saidx_t start = saidx_t(out - text.bytes.data());
        text.start.push_back(start);
        text.isStart[size_t(start)] = true;
        for (QChar c : line)
            out = putCode(out, c.unicode());
        *out++ = 0;
    }
    text.start.push_back(saidx_t(size));
    return text;
}

// Calls beside(own, other) for each place own that begins a line, with the
// nearest place other on either side of it in the suffix order that lies
// earlier in the text (when there is one). One pass keeps a stack of the
// places seen whose nearest earlier place after them is still to come.
template<class Beside>
void nearestEarlierPlaces(const std::vector<saidx_t> &suffixes, const std::vector<bool> &isStart, Beside &&beside)
{
    std::vector<saidx_t> waiting;  // rising
    for (const saidx_t place : suffixes) {
        for (; !waiting.empty() && waiting.back() > place; waiting.pop_back())
            if (isStart[size_t(waiting.back())])
                beside(waiting.back(), place);
        if (!waiting.empty() && isStart[size_t(place)])
            beside(place, waiting.back());
        waiting.push_back(place);
    }
}
}  // namespace

// If a line occurs in an earlier line, that place, like every place where it
// occurs, sorts within the line's range, so the nearest earlier place on one
// side of the line's own sorts within it too: one comparison on each side
// tells. An empty line matches anywhere, so it repeats unless it comes first.
std::vector<bool> RepeatFilter::keepBySuffixArray(const QStringList &lines)
{
    const Text text = writeText(lines);
    const saidx_t size = text.start.back();
    std::vector<saidx_t> suffixes(static_cast<size_t>(size));
    if (size > 0 && divsufsort(text.bytes.data(), suffixes.data(), size) != 0)
        throw std::bad_alloc();

    std::vector<bool> kept(size_t(lines.size()), true);
    const auto *bytes = text.bytes.data();
    nearestEarlierPlaces(suffixes, text.isStart, [&](saidx_t own, saidx_t other) {
        const auto line = std::upper_bound(text.start.begin(), text.start.end(), own) - text.start.begin() - 1;
        const saidx_t length = text.start[size_t(line) + 1] - own - 1;
        if (other + length < size && std::memcmp(bytes + other, bytes + own, size_t(length)) == 0)
            kept[size_t(line)] = false;
    });
    return kept;
}
