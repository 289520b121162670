// The rules viewer's RTF reader: text, formatting, escapes, the parts it leaves
// out, paragraphs, and damaged or hostile files.
#include "TestMain.h"
#include "shell/RtfReader.h"
#include <QColor>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {
// The blocks' text joined by "\n"; unlike toPlainText it keeps no-break spaces.
QString blocks(const QTextDocument &doc)
{
    return doc.toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

// RTF inside "{\rtf1 ...}", a text whose first character's format is checked, and that format (b i u s, size, colour).
struct Run { QByteArray body; QString probe, format; };
// A file, its blocks' text, each paragraph's alignment (empty: not checked), and whether it is RTF.
struct Doc { QByteArray bytes; QString text; QList<int> alignments = {}; bool isRtf = true; };
}  // namespace

class TestRtfReader : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void formattingRuns_data()
    {
        QTest::addColumn<Run>("row");
        const QByteArray colours = "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
        QTest::newRow("bold group") << Run{"a {\\b bold} c", "bold", "b"};
        QTest::newRow("bold ends with its group") << Run{"a {\\b bold} c", " c", ""};
        QTest::newRow("b0") << Run{"\\b x\\b0 y", "y", ""};
        QTest::newRow("italic underline strike") << Run{"{\\i\\ul\\strike all}", "all", "ius"};
        QTest::newRow("ulnone") << Run{"\\ul u\\ulnone n", "n", ""};
        QTest::newRow("plain resets") << Run{"\\b\\i\\ul\\fs40 a\\plain b", "b", ""};
        QTest::newRow("half points") << Run{"\\fs29 x", "x", " 14.5pt"};
        QTest::newRow("huge size clamped") << Run{"\\fs99999999999999999 x", "x", " 400pt"};
        QTest::newRow("colour") << Run{colours + "\\cf2 blue", "blue", " #0000ff"};
        QTest::newRow("cf0 is automatic, whatever the table's first entry") << Run{"{\\colortbl\\red9\\green9\\blue9;}\\cf0 auto", "auto", ""};
        QTest::newRow("an empty entry after a colour is automatic") << Run{"{\\colortbl;\\red9\\green9\\blue9;;}\\cf2 x", "x", ""};
        QTest::newRow("components clamped") << Run{"{\\colortbl;\\red999\\green-5\\blue3;}\\cf1 x", "x", " #ff0003"};
        QTest::newRow("index one past the table") << Run{colours + "\\cf3 x", "x", ""};
        QTest::newRow("a second table replaces the first") << Run{colours + "{\\colortbl;\\red0\\green128\\blue0;}\\cf2 y", "y", ""};
    }
    void formattingRuns()
    {
        QFETCH(Run, row);
        QTextDocument doc;
        QVERIFY(rtf::read("{\\rtf1 " + row.body + "}", &doc));
        const qsizetype at = blocks(doc).indexOf(row.probe);
        QVERIFY(at >= 0);
        QTextCursor cursor(&doc);
        cursor.setPosition(int(at) + 1);  // the format of the character before the cursor
        const QTextCharFormat f = cursor.charFormat();
        QString format = QString(f.fontWeight() == QFont::Bold ? "b" : "") + (f.fontItalic() ? "i" : "") + (f.fontUnderline() ? "u" : "")
                         + (f.fontStrikeOut() ? "s" : "");
        if (f.fontPointSize() != 0)
            format += QStringLiteral(" %1pt").arg(f.fontPointSize());
        if (f.hasProperty(QTextFormat::ForegroundBrush))
            format += ' ' + f.foreground().color().name();
        QCOMPARE(format, row.format);
    }

    void textAndParagraphs_data()
    {
        QTest::addColumn<Doc>("row");
        // Escapes and Unicode.
        QTest::newRow("hex and raw high bytes") << Doc{"{\\rtf1 caf\\'e9 CAF\\'C9 \\'af\\'AF caf\xe9}", u"café CAFÉ ¯¯ café"_qs};
        QTest::newRow("1252 when no character set is named") << Doc{"{\\rtf1 \\'93q\\'94\\'80}", u"“q”€"_qs};
        QTest::newRow("control words from a to z") << Doc{"{\\rtf1 a\\zwj b\\Zq c\\Aq d}", "abcd"};
        QTest::newRow("u, and negative") << Doc{"{\\rtf1 \\u8364?\\u-3913?}", u"€\uF0B7"_qs};
        QTest::newRow("u0, a control character, dropped") << Doc{"{\\rtf1 a\\u0?b}", "ab"};
        QTest::newRow("surrogate pair") << Doc{"{\\rtf1 \\u-10179?\\u-8704?}", u"😀"_qs};
        QTest::newRow("u at the top of Unicode and past it") << Doc{"{\\rtf1 \\u1114111?\\u1114112?}", u"\U0010FFFF\uFFFD"_qs};
        QTest::newRow("uc2 hex fallback, uc0") << Doc{"{\\rtf1\\uc2 \\u8364\\'80\\'80x\\uc0 \\u8364 x}", u"€x€x"_qs};
        QTest::newRow("uc belongs to its group") << Doc{"{\\rtf1{\\uc2 \\u233 xy}\\u233 ?z}", u"ééz"_qs};
        QTest::newRow("group ends fallback") << Doc{"{\\rtf1\\uc3 {\\u233 x}y}", u"éy"_qs};
        QTest::newRow("symbols, escaped braces and backslash") << Doc{"{\\rtf1 a\\~b\\_c\\-d \\\\ \\{ \\}}", u"a\u00A0b\u2011cd \\ { }"_qs};
        QTest::newRow("word delimiters") << Doc{"{\\rtf1\\b  two\\b0\\i1x}", " twox"};
        QTest::newRow("stray close brace, raw line ends") << Doc{"{\\rtf1 a}}b\r\nc\rd}", "abcd"};
        // Parts left out.
        for (const char *group : {"{\\*\\shiny {nested} text}", "{\\pict\\bin4 }}{{}", "{\\info{\\title t}{\\author {x}}}",
                                  "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Serif{\\*\\falt Times};}}", "{\\colortbl;\\red1\\green2\\blue3;}",
                                  "{\\header\\pard page top\\par}", "{\\field{\\*\\fldinst HYPERLINK x}{\\fldrslt}}", "\\bin3 xyz"})
            QTest::newRow(group) << Doc{QByteArray("{\\rtf1 a") + group + "b}", "ab"};
        // Paragraphs.
        const int l = Qt::AlignLeft, c = Qt::AlignHCenter, r = Qt::AlignRight, j = Qt::AlignJustify;
        QTest::newRow("par, and a final one") << Doc{"{\\rtf1 a\\par b\\par}", "a\nb\n", {l, l, l}};
        QTest::newRow("backslash newline") << Doc{"{\\rtf1 a\\\nb}", "a\nb", {l, l}};
        QTest::newRow("line and tab") << Doc{"{\\rtf1 a\\line b\\tab c}", u"a\u2028b\tc"_qs, {l}};
        QTest::newRow("alignments") << Doc{"{\\rtf1\\qc c\\par\\pard l\\par\\qr r\\par\\qj j}", "c\nl\nr\nj", {c, l, r, j}};
        QTest::newRow("pard in a group") << Doc{"{\\rtf1\\qc a\\par{\\pard b\\par}c}", "a\nb\nc", {c, l, c}};
        QTest::newRow("centred to the end") << Doc{"{\\rtf1{\\qc c}}", "c", {c}};
        QTest::newRow("an empty first paragraph takes the alignment in force") << Doc{"{\\rtf1\\qc\\par t}", "\nt", {c, c}};
        QTest::newRow("so does an empty one after text") << Doc{"{\\rtf1\\qc a\\par\\pard\\par b}", "a\n\nb", {c, l, l}};
        // Damaged or hostile files.
        static const char nuls[] = "{\\rtf1 a\0b\\\0c\\'00d}";
        QTest::newRow("empty") << Doc{"", "", {}, false};
        QTest::newRow("not rtf, Latin-1") << Doc{"caf\xe9", u"café"_qs, {}, false};
        for (const char *cut : {"{\\rtf1", "{\\rtf1\\'", "{\\rtf1\\'4", "{\\rtf1\\"})  // cut off after the header, a quote, a digit, a backslash
            QTest::newRow(cut) << Doc{cut, ""};
        QTest::newRow("hex ended by a letter past f") << Doc{"{\\rtf1 \\'4g\\'Gh}", "gGh"};
        QTest::newRow("deep nesting") << Doc{"{\\rtf1" + QByteArray(100000, '{') + "x" + QByteArray(100000, '}') + "y}", "xy"};
        QTest::newRow("huge uc") << Doc{"{\\rtf1\\uc2147483647\\u233 abc{}d}", u"éd"_qs};
        QTest::newRow("bin past the end") << Doc{"{\\rtf1\\bin99999 ab}", ""};
        QTest::newRow("negative bin") << Doc{"{\\rtf1\\bin-4 ab}", "ab"};
        QTest::newRow("bin data stands in for a \\u character") << Doc{"{\\rtf1\\u233\\bin2 xyb}", u"éb"_qs};
        QTest::newRow("NULs") << Doc{QByteArray(nuls, sizeof nuls - 1), "abcd"};
    }
    void textAndParagraphs()
    {
        QFETCH(Doc, row);
        QTextDocument doc(QStringLiteral("what the document held before"));  // replaced, not added to
        QCOMPARE(rtf::read(row.bytes, &doc), row.isRtf);
        QCOMPARE(blocks(doc), row.text);
        QList<int> found;
        for (QTextBlock b = doc.begin(); b.isValid() && !row.alignments.isEmpty(); b = b.next())
            found.append(int(b.blockFormat().alignment() & Qt::AlignHorizontal_Mask));
        QCOMPARE(found, row.alignments);
    }
};

TANDREL_TEST_MAIN(TestRtfReader)
#include "tst_rtfreader.moc"
