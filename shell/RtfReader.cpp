#include "shell/RtfReader.h"
#include "platform/TextFiles.h"
#include <QColor>
#include <QList>
#include <QString>
#include <QStringDecoder>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <algorithm>
#include <climits>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace rtf {
namespace {

// Deeper groups share the state of the deepest one, so memory stays bounded.
constexpr std::size_t MaxDepth = 1000;
// Further digits of a parameter are read but ignored, so the value stays within int.
constexpr int MaxDigits = 10;
// Writers use one or two fallback characters; more is a damaged file.
constexpr int MaxFallback = 16;
constexpr double MinPointSize = 1.0;
constexpr double MaxPointSize = 400.0;

// Windows-1252 at 0x80-0x9F; 0 marks the five unassigned bytes, which are dropped.
constexpr char16_t Cp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

enum class Kw : quint8 {
    Par, Char, Pard, Plain, Bold, Italic, Underline, UnderlineNone, Strike, FontSize, Color, Align, ColorTable,
    Component, CodePage, OtherCharset, Unicode, FallbackCount, Bin, Skip
};

struct Keyword {
    Kw kw;
    int value = 0;  // the character, alignment or colour component (0-2) the word stands for
};

const std::unordered_map<std::string_view, Keyword> &keywords()
{
    static const std::unordered_map<std::string_view, Keyword> table = [] {
        std::unordered_map<std::string_view, Keyword> t = {
            {"par", {Kw::Par}}, {"page", {Kw::Par}}, {"row", {Kw::Par}}, {"line", {Kw::Char, 0x2028}},
            {"tab", {Kw::Char, '\t'}}, {"cell", {Kw::Char, '\t'}}, {"pard", {Kw::Pard}}, {"plain", {Kw::Plain}},
            {"b", {Kw::Bold}}, {"i", {Kw::Italic}}, {"ul", {Kw::Underline}}, {"uld", {Kw::Underline}},
            {"uldb", {Kw::Underline}}, {"ulw", {Kw::Underline}}, {"ulth", {Kw::Underline}},
            {"ulnone", {Kw::UnderlineNone}}, {"strike", {Kw::Strike}}, {"fs", {Kw::FontSize}},
            {"cf", {Kw::Color}}, {"ql", {Kw::Align, Qt::AlignLeft}}, {"qc", {Kw::Align, Qt::AlignHCenter}},
            {"qr", {Kw::Align, Qt::AlignRight}}, {"qj", {Kw::Align, Qt::AlignJustify}},
            {"colortbl", {Kw::ColorTable}}, {"red", {Kw::Component, 0}}, {"green", {Kw::Component, 1}},
            {"blue", {Kw::Component, 2}}, {"ansicpg", {Kw::CodePage}},
            {"mac", {Kw::OtherCharset}}, {"pc", {Kw::OtherCharset}}, {"pca", {Kw::OtherCharset}},
            {"u", {Kw::Unicode}}, {"uc", {Kw::FallbackCount}}, {"bin", {Kw::Bin}},
            {"emdash", {Kw::Char, 0x2014}}, {"endash", {Kw::Char, 0x2013}}, {"bullet", {Kw::Char, 0x2022}},
            {"lquote", {Kw::Char, 0x2018}}, {"rquote", {Kw::Char, 0x2019}},
            {"ldblquote", {Kw::Char, 0x201C}}, {"rdblquote", {Kw::Char, 0x201D}},
            {"emspace", {Kw::Char, 0x2003}}, {"enspace", {Kw::Char, 0x2002}},
        };
        // Destinations whose text is not part of the body; most writers also mark them with \*.
        for (std::string_view d :
             {"fonttbl", "stylesheet", "info", "pict", "object", "objdata", "header", "headerl", "headerr",
              "headerf", "footer", "footerl", "footerr", "footerf", "footnote", "annotation", "atnid", "atnauthor",
              "atndate", "atnref", "themedata", "colorschememapping", "datastore", "latentstyles", "listtable",
              "listoverridetable", "rsidtbl", "generator", "xmlnstbl", "filetbl", "revtbl", "pgdsctbl", "pgptbl",
              "protusertbl", "userprops", "docvar", "template", "fldinst", "nonshppict", "shpinst", "sp", "sn",
              "sv", "bkmkstart", "bkmkend", "xe", "tc", "txe", "pn", "listpicture", "mmathPr", "ftnsep",
              "ftnsepc", "ftncn", "aftnsep", "aftnsepc", "aftncn", "panose", "falt", "blipuid", "picprop",
              "wgrffmtfilter", "fchars", "lchars", "title", "subject", "author", "operator", "keywords",
              "comment", "doccomm", "company"})
            t.emplace(d, Keyword{Kw::Skip});
        return t;
    }();
    return table;
}

struct CharState {
    bool bold = false, italic = false, underline = false, strike = false;
    int halfPoints = 0;  // 0: the document's own size
    int color = 0;       // index into the colour table; 0 is the automatic colour
    bool operator==(const CharState &) const = default;
};

// Where the text of a group goes.
enum class Dest : quint8 { Text, ColorTable, Skip };

struct Group {
    CharState chars;
    Qt::Alignment align = Qt::AlignLeft;
    int fallback = 1;  // characters after \uN that stand in for it
    Dest dest = Dest::Text;
};

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

int hexValue(char c)
{
    const char lower = char(c | 0x20);
    return isDigit(c) ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

class Reader {
public:
    Reader(const QByteArray &bytes, QTextDocument *document)
        : m_p(bytes.constData()), m_end(bytes.constData() + bytes.size()), m_cursor(document)
    {
        m_stack.emplace_back();
    }

    void run()
    {
        // One edit block: the layout is redone once, not for every run of text.
        m_cursor.beginEditBlock();
        while (m_p != m_end) {
            const char c = *m_p++;
            if (c == '{' || c == '}') {
                m_pendingFallback = 0;  // a group ends the characters standing in for \uN
                c == '{' ? openGroup() : closeGroup();
            } else if (c == '\\') {
                control();
            } else if (c != '\r' && c != '\n' && !skipFallback()) {  // raw line ends are only layout
                byte(uchar(c));
            }
        }
        endParagraph(false);
        m_cursor.endEditBlock();
    }

private:
    Group &cur() { return m_stack.back(); }

    void openGroup()
    {
        if (m_stack.size() > MaxDepth)
            ++m_overflow;
        else
            m_stack.push_back(Group(m_stack.back()));
    }

    void closeGroup()
    {
        if (m_overflow > 0)
            --m_overflow;
        else if (m_stack.size() > 1)  // a stray "}" does not end the outermost state
            m_stack.pop_back();
    }

    // Drops one character standing in for the last \uN; true when it did.
    bool skipFallback()
    {
        if (m_pendingFallback <= 0)
            return false;
        --m_pendingFallback;
        return true;
    }

    // After a backslash.
    void control()
    {
        if (m_p == m_end)
            return;
        const char c = *m_p;
        if (isLetter(c)) {
            word();
            return;
        }
        ++m_p;
        if (c == '\'') {
            int value = 0, digits = 0;
            for (; digits < 2 && m_p < m_end && hexValue(*m_p) >= 0; ++digits)
                value = value * 16 + hexValue(*m_p++);
            if (digits > 0 && !skipFallback())
                byte(uchar(value));
            return;
        }
        if (skipFallback())
            return;
        switch (c) {
        case '\\': case '{': case '}': byte(uchar(c)); break;
        case '~': appendChar(QChar::Nbsp); break;
        case '_': appendChar(QChar(0x2011)); break;  // the non-breaking hyphen
        case '*': cur().dest = Dest::Skip; break;    // the group is a destination readers may leave out
        case '\r': case '\n': paragraph(); break;
        default: break;  // "\-" (an optional hyphen) and symbols without a meaning here
        }
    }

    void word()
    {
        const char *start = m_p;
        while (m_p < m_end && isLetter(*m_p))
            ++m_p;
        const std::string_view name(start, std::size_t(m_p - start));
        const bool negative = m_p + 1 < m_end && *m_p == '-' && isDigit(m_p[1]);
        if (negative)
            ++m_p;
        qint64 value = 0;
        int digits = 0;
        for (; m_p < m_end && isDigit(*m_p); ++m_p)
            if (digits++ < MaxDigits)
                value = value * 10 + (*m_p - '0');
        const int param = int(std::clamp<qint64>(negative ? -value : value, INT_MIN, INT_MAX));
        if (m_p < m_end && *m_p == ' ')
            ++m_p;
        const auto it = keywords().find(name);
        if (it == keywords().end())
            skipFallback();
        else
            apply(it->second, digits > 0, param);
    }

    void apply(Keyword k, bool hasParam, int param)
    {
        if (k.kw == Kw::Bin) {
            // Raw bytes follow; they may hold any brace or backslash.
            if (param > 0)
                m_p += std::min<qint64>(param, m_end - m_p);
            skipFallback();
            return;
        }
        Group &g = cur();
        if (g.dest == Dest::Skip)
            return;
        if (k.kw == Kw::Skip) {
            g.dest = Dest::Skip;
            return;
        }
        if (g.dest == Dest::ColorTable) {
            if (k.kw == Kw::Component) {
                m_rgb[k.value] = std::clamp(param, 0, 255);
                m_rgbSet = true;
            }
            return;
        }
        if (skipFallback())
            return;
        const bool on = !hasParam || param != 0;
        switch (k.kw) {
        case Kw::Par: paragraph(); break;
        case Kw::Char: appendChar(QChar(char16_t(k.value))); break;
        case Kw::Pard: g.align = Qt::AlignLeft; break;
        case Kw::Plain: g.chars = CharState(); break;
        case Kw::Bold: g.chars.bold = on; break;
        case Kw::Italic: g.chars.italic = on; break;
        case Kw::Underline: g.chars.underline = on; break;
        case Kw::UnderlineNone: g.chars.underline = false; break;
        case Kw::Strike: g.chars.strike = on; break;
        case Kw::FontSize: g.chars.halfPoints = std::max(param, 0); break;
        case Kw::Color: g.chars.color = param; break;
        case Kw::Align: g.align = Qt::Alignment(k.value); break;
        case Kw::ColorTable:
            g.dest = Dest::ColorTable;
            m_colors.clear();
            m_rgbSet = false;
            break;
        case Kw::CodePage: m_cp1252 = !hasParam || param == 1252; break;
        case Kw::OtherCharset: m_cp1252 = false; break;
        case Kw::Unicode:
            if (hasParam) {
                unicode(param);
                m_pendingFallback = g.fallback;
            }
            break;
        case Kw::FallbackCount: g.fallback = hasParam ? std::clamp(param, 0, MaxFallback) : 1; break;
        default: break;
        }
    }

    void unicode(int param)
    {
        // Writers give code units above 32767 as negative numbers.
        const qint64 code = param < 0 ? qint64(param) + 65536 : param;
        const char32_t valid = code < 0 || code > 0x10FFFF ? char32_t(QChar::ReplacementCharacter) : char32_t(code);
        for (char16_t unit : QChar::fromUcs4(valid))
            appendChar(QChar(unit));
    }

    // A byte of text, raw or from \'hh, in the document's code page.
    void byte(uchar b)
    {
        if (cur().dest == Dest::ColorTable) {
            if (b == ';') {
                m_colors.append(m_rgbSet ? QColor(m_rgb[0], m_rgb[1], m_rgb[2]) : QColor());
                m_rgbSet = false;
                m_rgb[0] = m_rgb[1] = m_rgb[2] = 0;
            }
            return;
        }
        if (b < 0x80 || b >= 0xA0 || !m_cp1252)
            appendChar(QChar(char16_t(b)));
        else if (const char16_t u = Cp1252High[b - 0x80])
            appendChar(QChar(u));
    }

    void appendChar(QChar ch)
    {
        const Group &g = cur();
        // Control characters other than tab would split blocks or show as boxes.
        if (g.dest != Dest::Text || (ch.unicode() < 0x20 && ch != QLatin1Char('\t')) || ch.unicode() == 0x7F)
            return;
        if (!(g.chars == m_runState)) {
            flush();
            m_runState = g.chars;
        }
        m_run.append(ch);
        m_paragraphHasText = true;
        m_lastTextAlign = g.align;
    }

    void paragraph()
    {
        if (cur().dest == Dest::Text)
            endParagraph(true);
    }

    // A paragraph takes the alignment in force at its last character (or at its
    // end when it is empty), so "{\qc text}" at the end of a file stays centred.
    void endParagraph(bool newBlock)
    {
        flush();
        const Qt::Alignment align = m_paragraphHasText ? m_lastTextAlign : cur().align;
        // A new block starts with its predecessor's format; most paragraphs keep it.
        QTextBlockFormat format = m_cursor.blockFormat();
        if (format.alignment() != align) {
            format.setAlignment(align);
            m_cursor.setBlockFormat(format);
        }
        if (newBlock)
            m_cursor.insertBlock();
        m_paragraphHasText = false;
    }

    void flush()
    {
        if (m_run.isEmpty())
            return;
        m_cursor.insertText(m_run, charFormat(m_runState));
        m_run.clear();
    }

    QTextCharFormat charFormat(const CharState &s) const
    {
        QTextCharFormat f;
        f.setFontWeight(s.bold ? QFont::Bold : QFont::Normal);
        f.setFontItalic(s.italic);
        f.setFontUnderline(s.underline);
        f.setFontStrikeOut(s.strike);
        if (s.halfPoints > 0)
            f.setFontPointSize(std::clamp(s.halfPoints / 2.0, MinPointSize, MaxPointSize));
        if (s.color > 0 && s.color < m_colors.size() && m_colors[s.color].isValid())
            f.setForeground(m_colors[s.color]);
        return f;
    }

    const char *m_p;
    const char *const m_end;
    QTextCursor m_cursor;
    std::vector<Group> m_stack;
    std::size_t m_overflow = 0;  // groups opened beyond MaxDepth and not yet closed
    int m_pendingFallback = 0;
    bool m_cp1252 = true;  // \ansi, the default character set, is Windows-1252
    QList<QColor> m_colors;
    int m_rgb[3] = {0, 0, 0};
    bool m_rgbSet = false;
    QString m_run;  // text not yet inserted, all in m_runState
    CharState m_runState;
    bool m_paragraphHasText = false;
    Qt::Alignment m_lastTextAlign = Qt::AlignLeft;
};

}  // namespace

bool read(const QByteArray &bytes, QTextDocument *document)
{
    if (!document)
        return false;
    // The viewer is read-only: recording every insertion for undo would only cost memory.
    const bool undo = document->isUndoRedoEnabled();
    document->setUndoRedoEnabled(false);
    document->clear();
    const bool isRtf = bytes.startsWith("{\\rtf");
    if (isRtf)
        Reader(bytes, document).run();
    else
        document->setPlainText(platform::decodeText(bytes));
    document->setUndoRedoEnabled(undo);
    return isRtf;
}

}  // namespace rtf
