#include "core/QuestionRules.h"
#include "core/RepeatFilter.h"
#include <algorithm>
#include <array>
#include <bit>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#include <utility>
#include <vector>

namespace questions {

namespace {
const QChar Space(u' ');

bool skipped(QStringView line)
{
    return line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.size() > MaxQuestionLength;
}

QStringView trimmedView(const QString &text)
{
    qsizetype begin = 0, end = text.size();
    while (begin < end && text[begin] == Space)
        ++begin;
    while (end > begin && text[end - 1] == Space)
        --end;
    return QStringView(text).sliced(begin, end - begin);
}

// What phraseCandidate makes of an ASCII character: separators become
// spaces, and a placeholder may start at either letter B.
enum PhraseClass : quint8 { Plain, Separator, MayStartPlaceholder };
constexpr auto PhraseClasses = [] {
    std::array<PhraseClass, 128> classes{};
    for (char c : {' ', ';', ',', '\t'})
        classes[size_t(c)] = Separator;
    classes[size_t('B')] = classes[size_t('b')] = MayStartPlaceholder;
    return classes;
}();

// "BLANK", "Blank" or "blank" at i (called for every character: kept cheap).
bool isPlaceholderAt(const char16_t *c, qsizetype size, qsizetype i)
{
    if (i + 5 > size)
        return false;
    const char16_t *w = c + i;
    if (w[0] == u'B') {
        if (w[1] == u'L')
            return w[2] == u'A' && w[3] == u'N' && w[4] == u'K';
        return w[1] == u'l' && w[2] == u'a' && w[3] == u'n' && w[4] == u'k';
    }
    return w[0] == u'b' && w[1] == u'l' && w[2] == u'a' && w[3] == u'n' && w[4] == u'k';
}

// Copies c[0..8) to out and returns how many of them, from the first, the
// phrase rule leaves as they are: ASCII, no separator but a single space,
// no letter B before an L (c[8] is read too).
inline qsizetype unchanged8([[maybe_unused]] const char16_t *c, [[maybe_unused]] char16_t *out,
                            [[maybe_unused]] bool lastSpace)
{
#if defined(__SSE2__)
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i *>(c));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out), v);
    const auto is = [&](char16_t x) { return _mm_cmpeq_epi16(v, _mm_set1_epi16(short(x))); };
    const __m128i space = is(u' ');
    const __m128i spaceBefore = _mm_or_si128(_mm_slli_si128(space, 2), _mm_cvtsi32_si128(lastSpace ? 0xFFFF : 0));
    __m128i changed = _mm_or_si128(_mm_or_si128(is(u';'), is(u',')), _mm_or_si128(is(u'\t'), _mm_and_si128(space, spaceBefore)));
    const __m128i lower = _mm_set1_epi16(0x20);  // ASCII letters in lower case
    const __m128i next = _mm_loadu_si128(reinterpret_cast<const __m128i *>(c + 1));
    changed = _mm_or_si128(changed, _mm_and_si128(_mm_cmpeq_epi16(_mm_or_si128(v, lower), _mm_set1_epi16(short(u'b'))),
                                                  _mm_cmpeq_epi16(_mm_or_si128(next, lower), _mm_set1_epi16(short(u'l')))));
    changed = _mm_or_si128(changed, _mm_xor_si128(_mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(short(0xFF80))), _mm_setzero_si128()),
                                                  _mm_set1_epi16(-1)));
    return std::countr_zero(unsigned(_mm_movemask_epi8(changed)) | 0x10000u) / 2;
#else
    return 0;
#endif
}

// The line's own string made size characters long for the entry: a line
// handed over by the reader has room to spare, so nothing is allocated.
QString resized(QString &line, qsizetype size)
{
    line.resize(size);
    return std::move(line);
}
}  // namespace

QString trimSpaces(const QString &text)
{
    return trimmedView(text).toString();
}

std::optional<QString> matchCandidate(QString raw)
{
    // One pass: separators as spaces, runs of spaces made one, upper case,
    // and each "BLANK" noted as it is written.
    const QStringView trimmed = trimmedView(raw);
    thread_local std::vector<char16_t> out;
    out.resize(size_t(trimmed.size()));
    char16_t *o = out.data();
    qsizetype m = 0, at = -1;
    bool lastSpace = false;
    for (QChar qc : trimmed) {
        char16_t c = qc.unicode();
        if (c & 0xFF80)  // upper-casing beyond ASCII may change lengths
            return literal::matchCandidate(raw);
        if (c == u';' || c == u',' || c == u'\t')
            c = u' ';
        if (c == u' ') {
            if (lastSpace)
                continue;
            lastSpace = true;
        } else {
            lastSpace = false;
            if (c >= u'a' && c <= u'z')
                c = char16_t(c - 32);
        }
        o[m++] = c;
        if (c == u'K' && m >= 5 && o[m - 5] == u'B' && o[m - 4] == u'L' && o[m - 3] == u'A' && o[m - 2] == u'N') {
            if (at >= 0)
                return std::nullopt;  // a second placeholder
            at = m - 5;
        }
    }
    // " BLANK" becomes ",___" and "BLANK " becomes "___,"; a placeholder
    // with no space beside it gives no comma, and the line does not split.
    const bool spaceBefore = at > 0 && o[at - 1] == u' ';
    if (at < 0 || !(spaceBefore || (at + 5 < m && o[at + 5] == u' ')))
        return std::nullopt;
    const auto *blank = reinterpret_cast<const char16_t *>(MatchBlank.utf16());
    QString entry = resized(raw, m - 5 + MatchBlank.size());  // the space becomes the comma
    char16_t *e = reinterpret_cast<char16_t *>(entry.data());
    if (spaceBefore) {
        e = std::copy(o, o + at - 1, e);
        *e++ = u',';
        e = std::copy(blank, blank + MatchBlank.size(), e);
        std::copy(o + at + 5, o + m, e);
    } else {
        e = std::copy(o, o + at, e);
        e = std::copy(blank, blank + MatchBlank.size(), e);
        *e++ = u',';
        std::copy(o + at + 6, o + m, e);
    }
    if (skipped(entry))
        return std::nullopt;
    return entry;
}

std::optional<QString> phraseCandidate(QString raw)
{
    // One pass: separators as spaces, runs of spaces made one, and each
    // placeholder made a blank. A placeholder with a space beside it keeps
    // that space; one with none gets a space after it.
    const QStringView line = trimmedView(raw);
    const auto *c = reinterpret_cast<const char16_t *>(line.utf16());
    const qsizetype n = line.size();
    auto spaceAt = [&](qsizetype i) { return c[i] == u' ' || c[i] == u';' || c[i] == u',' || c[i] == u'\t'; };
    // A placeholder of 5 letters becomes at most 10 characters.
    thread_local std::vector<char16_t> out;
    out.resize(size_t(2 * n + 1));
    char16_t *o = out.data();
    qsizetype m = 0;
    bool any = false, lastSpace = false;
    for (qsizetype i = 0; i < n;) {
        const char16_t ch = c[i];
        const PhraseClass kind = ch < 128 ? PhraseClasses[ch] : Plain;
        if (kind == MayStartPlaceholder && isPlaceholderAt(c, n, i)) {
            any = true;
            for (int k = 0; k < 9; ++k)
                o[m++] = u'_';
            if (!lastSpace && !(i + 5 < n && spaceAt(i + 5)))
                o[m++] = u' ';
            lastSpace = false;
            i += 5;
            continue;
        }
        if (kind == Separator) {
            if (!lastSpace)
                o[m++] = u' ';
            lastSpace = true;
        } else {
            o[m++] = ch;
            lastSpace = false;
        }
        ++i;
        // Most text is words and single spaces, which stay as they are: eight
        // characters at a time are copied up to the first that does not.
        for (qsizetype k = 8; k == 8 && i + 9 <= n; m += k, i += k) {
            k = unchanged8(c + i, o + m, lastSpace);
            if (k)
                lastSpace = c[i + k - 1] == u' ';
        }
    }
    if (!any || skipped(QStringView(o, m)))  // told from the buffer, before any allocation
        return std::nullopt;
    QString entry = resized(raw, m);
    std::copy(o, o + m, reinterpret_cast<char16_t *>(entry.data()));
    return entry;
}

std::optional<QString> candidate(Kind kind, QString line)
{
    return kind == Kind::Match ? matchCandidate(std::move(line)) : phraseCandidate(std::move(line));
}

namespace literal {
namespace {
void separatorsToSpaces(QString &line)
{
    line.replace(QLatin1Char(';'), Space).replace(QLatin1Char(','), Space).replace(QLatin1Char('\t'), Space);
}

void collapseSpaces(QString &line)
{
    while (line.contains(QLatin1String("  ")))
        line.replace(QLatin1String("  "), QLatin1String(" "));
}
}  // namespace

std::optional<QString> matchCandidate(const QString &raw)
{
    QString line = trimSpaces(raw).toUpper();
    const bool onePlaceholder = line.count(QLatin1String("BLANK")) == 1;
    separatorsToSpaces(line);
    collapseSpaces(line);
    line.replace(QLatin1String(" BLANK"), QLatin1Char(',') + MatchBlank);
    line.replace(QLatin1String("BLANK "), MatchBlank + QLatin1Char(','));
    if (skipped(line) || !onePlaceholder || line.count(QLatin1Char(',')) != 1)
        return std::nullopt;
    return line;
}

std::optional<QString> phraseCandidate(const QString &raw)
{
    QString line = trimSpaces(raw);
    const bool hasPlaceholder = line.contains(QLatin1String("Blank")) || line.contains(QLatin1String("BLANK"))
                                || line.contains(QLatin1String("blank"));
    separatorsToSpaces(line);
    collapseSpaces(line);
    for (const char *word : {"BLANK", "Blank", "blank"}) {
        const QString w = QLatin1String(word);
        line.replace(Space + w, Space + PhraseBlank);
        line.replace(w + Space, PhraseBlank + Space);
    }
    for (const char *word : {"BLANK", "Blank", "blank"})
        line.replace(QLatin1String(word), PhraseBlank + Space);
    if (skipped(line) || !hasPlaceholder)
        return std::nullopt;
    return line;
}
}  // namespace literal

Reader::Reader(Kind kind)
    : m_kind(kind)
{
}

namespace {
// The entries of a batch of lines, in order.
QStringList entries(Kind kind, QStringList lines)
{
    QStringList out;
    out.reserve(lines.size());
    for (QString &line : lines)
        if (auto entry = candidate(kind, std::move(line)))
            out.append(std::move(*entry));
    return out;
}

// Lines go to the rules in batches on a thread of their own, so a file is
// read while the lines before are checked. A batch is large enough that
// starting its thread costs little beside it, and small enough in characters
// that two of them, of the longest lines read, take a few megabytes.
constexpr qsizetype LinesPerBatch = 2048;
constexpr qsizetype CharsPerBatch = 1 << 20;
}  // namespace

bool Reader::add(QString line)
{
    m_batchChars += line.size();
    m_lines.append(std::move(line));
    return (m_lines.size() < LinesPerBatch && m_batchChars < CharsPerBatch) || handOver();
}

bool Reader::handOver()
{
    if (m_pending.valid() && !take(m_pending.get())) {
        m_lines.clear();
        return false;
    }
    m_pending = std::async(std::launch::async, entries, m_kind, std::exchange(m_lines, {}));
    m_batchChars = 0;
    return true;
}

bool Reader::take(QStringList batch)
{
    // A deck's worth of lines is checked at once, then a few thousand more
    // at a time, so memory stays bounded whatever the file's size.
    constexpr qsizetype SettleEvery = 4096;
    for (QString &entry : batch) {
        m_candidates.append(std::move(entry));
        if (m_candidates.size() >= std::max(MaxDeckEntries, m_settled + SettleEvery) && settle())
            return false;
    }
    return true;
}

bool Reader::settle()
{
    const std::vector<bool> kept = RepeatFilter::keep(m_candidates);
    qsizetype accepted = 0;
    for (qsizetype i = 0; i < m_candidates.size() && accepted < MaxDeckEntries; ++i)
        if (kept[size_t(i)]) {
            if (accepted != i)
                m_candidates[accepted] = std::move(m_candidates[i]);
            ++accepted;
        }
    m_candidates.resize(accepted);
    m_settled = accepted;
    return m_settled == MaxDeckEntries;
}

QStringList Reader::finish()
{
    const bool full = m_pending.valid() && !take(m_pending.get());
    if (!full && take(entries(m_kind, std::exchange(m_lines, {}))) && m_candidates.size() > m_settled)
        settle();
    m_lines.clear();
    m_batchChars = 0;
    m_settled = 0;
    return std::exchange(m_candidates, {});
}

QStringList acceptLines(Kind kind, const QStringList &lines)
{
    Reader reader(kind);
    for (const QString &line : lines)
        if (!reader.add(line))
            break;
    return reader.finish();
}

MatchHalves splitMatch(const QString &entry)
{
    const qsizetype comma = entry.indexOf(QLatin1Char(','));  // every match entry has one
    return {entry.left(comma), entry.mid(comma + 1)};
}

}  // namespace questions
