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
    QStringList texts;
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next())
        texts.append(b.text());
    return texts.join(QLatin1Char('\n'));
}
}  // namespace

class TestRtfReader : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void formattingRuns_data()
    {
        QTest::addColumn<QByteArray>("body");  // inside "{\rtf1 ...}"
        QTest::addColumn<QString>("probe");    // the format of the first character of this text is checked
        QTest::addColumn<QString>("format");   // b i u s for bold, italic, underline, strike; a size; a colour
        const QByteArray colours = "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
        QTest::newRow("bold group") << QByteArray("a {\\b bold} c") << "bold" << "b";
        QTest::newRow("bold ends with its group") << QByteArray("a {\\b bold} c") << " c" << "";
        QTest::newRow("b0") << QByteArray("\\b x\\b0 y") << "y" << "";
        QTest::newRow("italic underline strike") << QByteArray("{\\i\\ul\\strike all}") << "all" << "ius";
        QTest::newRow("strike0") << QByteArray("\\strike s\\strike0 n") << "n" << "";
        QTest::newRow("ulnone") << QByteArray("\\ul u\\ulnone n") << "n" << "";
        QTest::newRow("ul0") << QByteArray("\\ul u\\ul0 n") << "n" << "";
        QTest::newRow("plain resets") << QByteArray("\\b\\i\\ul\\fs40 a\\plain b") << "b" << "";
        QTest::newRow("half points") << QByteArray("\\fs29 x") << "x" << " 14.5pt";
        QTest::newRow("huge size clamped") << QByteArray("\\fs99999999999999999 x") << "x" << " 400pt";
        QTest::newRow("colour") << colours + "\\cf2 blue\\cf0 auto" << "blue" << " #0000ff";
        QTest::newRow("cf0 is automatic") << colours + "\\cf2 blue\\cf0 auto" << "auto" << "";
        QTest::newRow("cf0 is automatic, whatever the table's first entry") << QByteArray("{\\colortbl\\red9\\green9\\blue9;}\\cf0 auto") << "auto" << "";
        QTest::newRow("an empty entry after a colour is automatic") << QByteArray("{\\colortbl;\\red9\\green9\\blue9;;}\\cf2 x") << "x" << "";
        QTest::newRow("components clamped") << QByteArray("{\\colortbl;\\red999\\green-5\\blue3;}\\cf1 x") << "x" << " #ff0003";
        QTest::newRow("index out of range") << colours + "\\cf7 x" << "x" << "";
        QTest::newRow("index one past the table") << colours + "\\cf3 x" << "x" << "";
        QTest::newRow("a second table replaces the first") << colours + "{\\colortbl;\\red0\\green128\\blue0;}\\cf1 x\\cf2 y" << "y" << "";
    }
    void formattingRuns()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, probe);
        QTextDocument doc;
        QVERIFY(rtf::read("{\\rtf1 " + body + "}", &doc));
        const qsizetype at = blocks(doc).indexOf(probe);
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
        QTEST(format, "format");
    }

    void textAndParagraphs_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isRtf");
        QTest::addColumn<QString>("text");  // null: any text
        QTest::addColumn<QList<int>>("alignments");  // empty: not checked
        auto row = [](const char *name, const QByteArray &bytes, const QString &text, QList<int> alignments = {}, bool isRtf = true) {
            QTest::newRow(name) << bytes << isRtf << text << alignments;
        };
        // Escapes and Unicode.
        row("hex", "{\\rtf1 caf\\'e9 CAF\\'C9 \\'af\\'AF}", u"café CAFÉ ¯¯"_qs);
        row("raw high byte", "{\\rtf1 caf\xe9}", u"café"_qs);
        row("1252 quotes", "{\\rtf1\\ansi\\ansicpg1252 \\'93q\\'94 \\'80}", u"“q” €"_qs);
        row("1252 when no character set is named", "{\\rtf1 \\'93q\\'94}", u"“q”"_qs);
        row("u", "{\\rtf1 \\u8364?}", u"€"_qs);
        row("control words from a to z", "{\\rtf1 a\\zwj b\\Zq c\\Aq d}", u"abcd"_qs);
        row("negative u", "{\\rtf1 \\u-3913?}", QString(QChar(0xF0B7)));
        row("u0, a control character, dropped", "{\\rtf1 a\\u0?b}", "ab");
        row("surrogate pair", "{\\rtf1 \\u-10179?\\u-8704?}", u"😀"_qs);
        row("u at the top of Unicode and past it", "{\\rtf1 \\u1114111?\\u1114112?}", u"\U0010FFFF\uFFFD"_qs);
        row("uc0", "{\\rtf1\\uc0 \\u8364 x}", u"€x"_qs);
        row("uc2 hex fallback", "{\\rtf1\\uc2 \\u8364\\'80\\'80x}", u"€x"_qs);
        row("uc belongs to its group", "{\\rtf1{\\uc2 \\u233 xy}\\u233 ?z}", u"ééz"_qs);
        row("group ends fallback", "{\\rtf1\\uc3 {\\u233 x}y}", u"éy"_qs);
        row("symbols", "{\\rtf1 a\\~b\\_c\\-d}", u"a\u00A0b\u2011cd"_qs);
        row("escaped braces and backslash", "{\\rtf1 \\\\ \\{ \\}}", "\\ { }");
        row("word delimiters", "{\\rtf1\\b  two\\b0\\i1x}", " twox");
        row("stray close brace", "{\\rtf1 a}}b}", "ab");
        row("raw line ends", "{\\rtf1 ab\r\ncd\ref}", "abcdef");
        row("named quotes", "{\\rtf1\\ldblquote x\\rdblquote\\emdash}", u"“x”—"_qs);
        // Parts left out.
        for (const char *group : {"{\\*\\generator Writer 1.0;}", "{\\*\\shiny {nested} text}", "{\\pict\\pngblip\\picw10 89504e470d0a1a0a}",
                                  "{\\pict\\bin4 }}{{}", "{\\info{\\title t}{\\author {x}}}", "{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Serif{\\*\\falt Times};}}",
                                  "{\\stylesheet{\\s0 Normal;}{\\s1\\b heading 1;}}", "{\\colortbl;\\red1\\green2\\blue3;}", "{\\header\\pard page top\\par}",
                                  "{\\footnote note}", "{\\field{\\*\\fldinst HYPERLINK x}{\\fldrslt}}", "\\bin3 xyz"})
            row(group, QByteArray("{\\rtf1 a") + group + "b}", "ab");
        // Paragraphs.
        const int l = Qt::AlignLeft, c = Qt::AlignHCenter, r = Qt::AlignRight, j = Qt::AlignJustify;
        row("par", "{\\rtf1 a\\par b}", "a\nb", {l, l});
        row("final par", "{\\rtf1 a\\par}", "a\n", {l, l});
        row("backslash newline", "{\\rtf1 a\\\nb}", "a\nb", {l, l});
        row("line", "{\\rtf1 a\\line b}", u"a\u2028b"_qs, {l});
        row("tab", "{\\rtf1 a\\tab b}", "a\tb", {l});
        row("alignments", "{\\rtf1\\qc c\\par\\pard l\\par\\qr r\\par\\qj j}", "c\nl\nr\nj", {c, l, r, j});
        row("pard in a group", "{\\rtf1\\qc a\\par{\\pard b\\par}c}", "a\nb\nc", {c, l, c});
        row("centred to the end", "{\\rtf1{\\qc c}}", "c", {c});
        row("an empty first paragraph takes the alignment in force", "{\\rtf1\\qc\\par t}", "\nt", {c, c});
        row("so does an empty one after text", "{\\rtf1\\qc a\\par\\pard\\par b}", "a\n\nb", {c, l, l});
        // Damaged or hostile files.
        static const char nuls[] = "{\\rtf1 a\0b\\\0c\\'00d}";
        row("empty", "", "", {}, false);
        row("not rtf", "hello", "hello", {}, false);
        row("not rtf, Latin-1", "caf\xe9", u"café"_qs, {}, false);
        row("open brace", "{", "{", {}, false);
        row("close brace", "}", "}", {}, false);
        row("header only", "{\\rtf1", "");
        row("cut after quote", "{\\rtf1\\'", "");
        row("cut in hex", "{\\rtf1\\'4", "");
        row("hex ended by a letter past f", "{\\rtf1 \\'4g\\'Gh}", "gGh");
        row("cut after backslash", "{\\rtf1\\", "");
        row("extra closing braces", "{\\rtf1 }}}}} text", " text");
        row("only opening braces", QByteArray(100000, '{'), {}, {}, false);
        row("deep nesting", "{\\rtf1" + QByteArray(100000, '{') + "x" + QByteArray(100000, '}') + "y}", "xy");
        row("huge u", "{\\rtf1\\u99999999999 x}", QString(QChar::ReplacementCharacter));
        row("huge uc", "{\\rtf1\\uc2147483647\\u233 abc{}d}", u"éd"_qs);
        row("bin past the end", "{\\rtf1\\bin99999 ab}", "");
        row("negative bin", "{\\rtf1\\bin-4 ab}", "ab");
        row("bin data stands in for a \\u character", "{\\rtf1\\u233\\bin2 xyb}", u"éb"_qs);
        row("colortbl outside a group", "{\\rtf1\\colortbl;\\red999\\green-5\\blue3;}\\cf7 x}", "x");
        row("NULs", QByteArray(nuls, sizeof nuls - 1), "abcd");
        row("lone surrogate", "{\\rtf1\\u-10179?x}", {});
    }
    void textAndParagraphs()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(QList<int>, alignments);
        QTextDocument doc(QStringLiteral("what the document held before"));  // replaced, not added to
        QTEST(rtf::read(bytes, &doc), "isRtf");
        QVERIFY(doc.characterCount() <= bytes.size() + 1);
        if (!text.isNull())
            QCOMPARE(blocks(doc), text);
        QList<int> found;
        for (QTextBlock b = doc.begin(); b.isValid() && !alignments.isEmpty(); b = b.next())
            found.append(int(b.blockFormat().alignment() & Qt::AlignHorizontal_Mask));
        QCOMPARE(found, alignments);
    }
};

TANDREL_TEST_MAIN(TestRtfReader)
#include "tst_rtfreader.moc"
