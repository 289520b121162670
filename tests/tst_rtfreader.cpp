// The rules viewer's RTF reader: text, formatting, escapes, the parts it leaves
// out, paragraphs, and damaged or hostile files.
#include "TestMain.h"
#include "shell/RtfReader.h"
#include <QTextBlock>
#include <QTextDocument>

namespace {
// The document as the viewer shows it: blocks joined by "\n", each after a mark of its alignment unless
// left ("^" centred, ">" right, "=" justified), and a run in a format other than plain as
// "[bius 14.5pt #0000ff:text]" (bold, italic, underline, strike, size, colour: those it has).
QString shown(const QTextDocument &doc)
{
    QStringList blocks;
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        const int align = b.blockFormat().alignment() & Qt::AlignHorizontal_Mask;
        QString text = align == Qt::AlignHCenter ? "^" : align == Qt::AlignRight ? ">" : align == Qt::AlignJustify ? "=" : "";
        for (auto it = b.begin(); !it.atEnd(); ++it) {  // fragments keep no-break spaces, unlike toPlainText
            const QTextCharFormat f = it.fragment().charFormat();
            QString format = QString(f.fontWeight() == QFont::Bold ? "b" : "") + (f.fontItalic() ? "i" : "")
                             + (f.fontUnderline() ? "u" : "") + (f.fontStrikeOut() ? "s" : "");
            if (f.fontPointSize() != 0)
                format += QStringLiteral(" %1pt").arg(f.fontPointSize());
            if (f.hasProperty(QTextFormat::ForegroundBrush))
                format += ' ' + f.foreground().color().name();
            text += format.isEmpty() ? it.fragment().text() : '[' + format.trimmed() + ':' + it.fragment().text() + ']';
        }
        blocks << text;
    }
    return blocks.join('\n');
}

struct Doc { QByteArray bytes; QString text; };  // a file, and what the viewer shows of it
}  // namespace

class TestRtfReader : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void read_data()
    {
        QTest::addColumn<Doc>("row");
        // Formatting.
        const QByteArray colours = "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
        QTest::newRow("bold ends with its group, b0") << Doc{"{\\rtf1 a {\\b bold} c\\b x\\b0 y}", "a [b:bold] c[b:x]y"};
        QTest::newRow("italic underline strike, ulnone") << Doc{"{\\rtf1{\\i\\ul\\strike all}\\ul u\\ulnone n}", "[ius:all][u:u]n"};
        QTest::newRow("plain resets, half points") << Doc{"{\\rtf1\\b\\i\\ul\\fs29 a\\plain b}", "[biu 14.5pt:a]b"};
        QTest::newRow("huge size clamped") << Doc{"{\\rtf1\\fs99999999999999999 x}", "[400pt:x]"};
        QTest::newRow("colour") << Doc{colours + "\\cf2 blue}", "[#0000ff:blue]"};
        QTest::newRow("cf0 is automatic, whatever the table's first entry") << Doc{"{\\rtf1{\\colortbl\\red9\\green9\\blue9;}\\cf0 auto}", "auto"};
        QTest::newRow("an empty entry after a colour is automatic") << Doc{"{\\rtf1{\\colortbl;\\red9\\green9\\blue9;;}\\cf2 x}", "x"};
        QTest::newRow("components clamped") << Doc{"{\\rtf1{\\colortbl;\\red999\\green-5\\blue3;}\\cf1 x}", "[#ff0003:x]"};
        QTest::newRow("one past the table; a new table replaces it") << Doc{colours + "\\cf3 x{\\colortbl;\\red0\\green128\\blue0;}\\cf2 y}", "xy"};
        // Escapes and Unicode.
        QTest::newRow("hex and raw high bytes") << Doc{"{\\rtf1 caf\\'e9 CAF\\'C9 \\'af\\'AF caf\xe9}", u"café CAFÉ ¯¯ café"_qs};
        QTest::newRow("1252 when no character set is named") << Doc{"{\\rtf1 \\'93q\\'94\\'80}", u"“q”€"_qs};
        QTest::newRow("control words from a to z") << Doc{"{\\rtf1 a\\zwj b\\Zq c\\Aq d}", "abcd"};
        QTest::newRow("u: negative, top, past the top") << Doc{"{\\rtf1 \\u8364?\\u-3913?\\u1114111?\\u1114112?}", u"€\uF0B7\U0010FFFF\uFFFD"_qs};
        QTest::newRow("uc2 hex fallback, uc0") << Doc{"{\\rtf1\\uc2 \\u8364\\'80\\'80x\\uc0 \\u8364 x}", u"€x€x"_qs};
        QTest::newRow("uc belongs to its group") << Doc{"{\\rtf1{\\uc2 \\u233 xy}\\u233 ?z}", u"ééz"_qs};
        QTest::newRow("group ends fallback") << Doc{"{\\rtf1\\uc3 {\\u233 x}y}", u"éy"_qs};
        QTest::newRow("symbols, escaped braces and backslash") << Doc{"{\\rtf1 a\\~b\\_c\\-d \\\\ \\{ \\}}", u"a\u00A0b\u2011cd \\ { }"_qs};
        QTest::newRow("word delimiters") << Doc{"{\\rtf1\\b  two\\b0\\i1x}", "[b: two][i:x]"};
        QTest::newRow("stray close brace, raw line ends") << Doc{"{\\rtf1 a}}b\r\nc\rd}", "abcd"};
        // Parts left out.
        for (const char *group : {"{\\*\\shiny {nested} text}", "{\\pict\\bin4 }}{{}", "{\\colortbl;\\red1\\green2\\blue3;}",
                                  "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Serif{\\*\\falt Times};}}", "{\\header\\pard page top\\par}", "\\bin3 xyz"})
            QTest::newRow(group) << Doc{QByteArray("{\\rtf1 a") + group + "b}", "ab"};
        // Paragraphs.
        QTest::newRow("par, and a final one") << Doc{"{\\rtf1 a\\par b\\par}", "a\nb\n"};
        QTest::newRow("backslash newline") << Doc{"{\\rtf1 a\\\nb}", "a\nb"};
        QTest::newRow("line and tab") << Doc{"{\\rtf1 a\\line b\\tab c}", u"a\u2028b\tc"_qs};
        QTest::newRow("alignments") << Doc{"{\\rtf1\\qc c\\par\\pard l\\par\\qr r\\par\\qj j}", "^c\nl\n>r\n=j"};
        QTest::newRow("pard in a group") << Doc{"{\\rtf1\\qc a\\par{\\pard b\\par}c}", "^a\nb\n^c"};
        QTest::newRow("centred to the end") << Doc{"{\\rtf1{\\qc c}}", "^c"};
        QTest::newRow("an empty first paragraph takes the alignment in force") << Doc{"{\\rtf1\\qc\\par t}", "^\n^t"};
        QTest::newRow("so does an empty one after text") << Doc{"{\\rtf1\\qc a\\par\\pard\\par b}", "^a\n\nb"};
        // Damaged, hostile or not RTF at all.
        static const char nuls[] = "{\\rtf1 a\0b\\\0c\\'00d\\u0?}";
        QTest::newRow("not rtf: plain text, Latin-1") << Doc{"caf\xe9 {\\b x}", u"café {\\b x}"_qs};
        for (const char *cut : {"{\\rtf1", "{\\rtf1\\'", "{\\rtf1\\'4", "{\\rtf1\\"})  // cut off after the header, a quote, a digit, a backslash
            QTest::newRow(cut) << Doc{cut, ""};
        QTest::newRow("hex ended by a letter past f") << Doc{"{\\rtf1 \\'4g\\'Gh}", "gGh"};
        QTest::newRow("deep nesting") << Doc{"{\\rtf1" + QByteArray(100000, '{') + "x" + QByteArray(100000, '}') + "y}", "xy"};
        QTest::newRow("huge uc") << Doc{"{\\rtf1\\uc2147483647\\u233 abc{}d}", u"éd"_qs};
        QTest::newRow("bin past the end") << Doc{"{\\rtf1\\bin99999 ab}", ""};
        QTest::newRow("negative bin") << Doc{"{\\rtf1\\bin-4 ab}", "ab"};
        QTest::newRow("bin data stands in for a \\u character") << Doc{"{\\rtf1\\u233\\bin2 xyb}", u"éb"_qs};
        QTest::newRow("NULs, \\u0") << Doc{QByteArray(nuls, sizeof nuls - 1), "abcd"};
    }
    void read()
    {
        QFETCH(Doc, row);
        QTextDocument doc(QStringLiteral("what the document held before"));  // replaced, not added to
        rtf::read(row.bytes, &doc);
        QCOMPARE(shown(doc), row.text);
    }
};

TANDREL_TEST_MAIN(TestRtfReader)
#include "tst_rtfreader.moc"
