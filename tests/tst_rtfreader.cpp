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
        QTest::addColumn<QString>("style");    // b, i and u for bold, italic and underline
        QTest::addColumn<double>("points");    // 0: the document's own size
        QTest::addColumn<QColor>("colour");    // invalid: the automatic colour
        const QByteArray colours = "{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}";
        QTest::newRow("bold group") << QByteArray("a {\\b bold} c") << "bold" << "b" << 0.0 << QColor();
        QTest::newRow("bold ends with its group") << QByteArray("a {\\b bold} c") << " c" << "" << 0.0 << QColor();
        QTest::newRow("b0") << QByteArray("\\b x\\b0 y") << "y" << "" << 0.0 << QColor();
        QTest::newRow("italic underline") << QByteArray("{\\i\\ul both}") << "both" << "iu" << 0.0 << QColor();
        QTest::newRow("ulnone") << QByteArray("\\ul u\\ulnone n") << "n" << "" << 0.0 << QColor();
        QTest::newRow("ul0") << QByteArray("\\ul u\\ul0 n") << "n" << "" << 0.0 << QColor();
        QTest::newRow("plain resets") << QByteArray("\\b\\i\\ul\\fs40 a\\plain b") << "b" << "" << 0.0 << QColor();
        QTest::newRow("half points") << QByteArray("\\fs29 x") << "x" << "" << 14.5 << QColor();
        QTest::newRow("huge size clamped") << QByteArray("\\fs99999999999999999 x") << "x" << "" << 400.0 << QColor();
        QTest::newRow("colour") << colours + "\\cf2 blue\\cf0 auto" << "blue" << "" << 0.0 << QColor(0, 0, 255);
        QTest::newRow("cf0 is automatic") << colours + "\\cf2 blue\\cf0 auto" << "auto" << "" << 0.0 << QColor();
        QTest::newRow("cf0 is automatic, whatever the table's first entry") << QByteArray("{\\colortbl\\red9\\green9\\blue9;}\\cf0 auto")
                                                                           << "auto" << "" << 0.0 << QColor();
        QTest::newRow("components clamped") << QByteArray("{\\colortbl;\\red999\\green-5\\blue3;}\\cf1 x") << "x" << ""
                                            << 0.0 << QColor(255, 0, 3);
        QTest::newRow("index out of range") << colours + "\\cf7 x" << "x" << "" << 0.0 << QColor();
        QTest::newRow("index one past the table") << colours + "\\cf3 x" << "x" << "" << 0.0 << QColor();
        QTest::newRow("a second table replaces the first") << colours + "{\\colortbl;\\red0\\green128\\blue0;}\\cf1 x\\cf2 y"
                                                            << "y" << "" << 0.0 << QColor();
    }
    void formattingRuns()
    {
        QFETCH(QByteArray, body);
        QFETCH(QString, probe);
        QFETCH(QString, style);
        QTextDocument doc;
        QVERIFY(rtf::read("{\\rtf1 " + body + "}", &doc));
        const qsizetype at = blocks(doc).indexOf(probe);
        QVERIFY(at >= 0);
        QTextCursor cursor(&doc);
        cursor.setPosition(int(at) + 1);  // the format of the character before the cursor
        const QTextCharFormat f = cursor.charFormat();
        QCOMPARE(f.fontWeight() == QFont::Bold, style.contains(QLatin1Char('b')));
        QCOMPARE(f.fontItalic(), style.contains(QLatin1Char('i')));
        QCOMPARE(f.fontUnderline(), style.contains(QLatin1Char('u')));
        QTEST(f.fontPointSize(), "points");
        QTEST(f.hasProperty(QTextFormat::ForegroundBrush) ? f.foreground().color() : QColor(), "colour");
    }
    void escapesAndUnicode_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");
        QTest::newRow("hex") << QByteArray("{\\rtf1 caf\\'e9 CAF\\'C9}") << QString::fromUtf8("café CAFÉ");
        QTest::newRow("raw high byte") << QByteArray("{\\rtf1 caf\xe9}") << QString::fromUtf8("café");
        QTest::newRow("1252 quotes") << QByteArray("{\\rtf1\\ansi\\ansicpg1252 \\'93q\\'94 \\'80}")
                                     << QString::fromUtf8("“q” €");
        QTest::newRow("u") << QByteArray("{\\rtf1 \\u8364?}") << QString::fromUtf8("€");
        QTest::newRow("negative u") << QByteArray("{\\rtf1 \\u-3913?}") << QString(QChar(0xF0B7));
        QTest::newRow("surrogate pair") << QByteArray("{\\rtf1 \\u-10179?\\u-8704?}") << QString::fromUtf8("😀");
        QTest::newRow("uc0") << QByteArray("{\\rtf1\\uc0 \\u8364 x}") << QString::fromUtf8("€x");
        QTest::newRow("uc2 hex fallback") << QByteArray("{\\rtf1\\uc2 \\u8364\\'80\\'80x}") << QString::fromUtf8("€x");
        QTest::newRow("uc belongs to its group") << QByteArray("{\\rtf1{\\uc2 \\u233 xy}\\u233 ?z}")
                                                 << QString::fromUtf8("ééz");
        QTest::newRow("group ends fallback") << QByteArray("{\\rtf1\\uc3 {\\u233 x}y}") << QString::fromUtf8("éy");
        QTest::newRow("symbols") << QByteArray("{\\rtf1 a\\~b\\_c\\-d}") << QString::fromUtf8("a\u00A0b\u2011cd");
        QTest::newRow("escaped braces and backslash") << QByteArray("{\\rtf1 \\\\ \\{ \\}}") << "\\ { }";
        QTest::newRow("word delimiters") << QByteArray("{\\rtf1\\b  two\\b0\\i1x}") << " twox";
        QTest::newRow("raw line ends") << QByteArray("{\\rtf1 ab\r\ncd\ref}") << "abcdef";
        QTest::newRow("named quotes") << QByteArray("{\\rtf1\\ldblquote x\\rdblquote\\emdash}")
                                      << QString::fromUtf8("“x”—");
    }
    void escapesAndUnicode()
    {
        QFETCH(QByteArray, rtf);
        QTextDocument doc;
        QVERIFY(rtf::read(rtf, &doc));
        QTEST(blocks(doc), "text");
    }
    void destinationsLeftOut_data()
    {
        QTest::addColumn<QByteArray>("group");
        QTest::newRow("generator") << QByteArray("{\\*\\generator Writer 1.0;}");
        QTest::newRow("unknown ignorable") << QByteArray("{\\*\\shiny {nested} text}");
        QTest::newRow("pict") << QByteArray("{\\pict\\pngblip\\picw10 89504e470d0a1a0a}");
        QTest::newRow("pict with bin") << QByteArray("{\\pict\\bin4 }}{{}");
        QTest::newRow("info") << QByteArray("{\\info{\\title t}{\\author {x}}}");
        QTest::newRow("fonttbl") << QByteArray("{\\fonttbl{\\f0\\fswiss Arial;}{\\f1 Serif{\\*\\falt Times};}}");
        QTest::newRow("stylesheet") << QByteArray("{\\stylesheet{\\s0 Normal;}{\\s1\\b heading 1;}}");
        QTest::newRow("colortbl") << QByteArray("{\\colortbl;\\red1\\green2\\blue3;}");
        QTest::newRow("header") << QByteArray("{\\header\\pard page top\\par}");
        QTest::newRow("footnote") << QByteArray("{\\footnote note}");
        QTest::newRow("field instruction") << QByteArray("{\\field{\\*\\fldinst HYPERLINK x}{\\fldrslt}}");
        QTest::newRow("bin in body") << QByteArray("\\bin3 xyz");
    }
    void destinationsLeftOut()
    {
        QFETCH(QByteArray, group);
        QTextDocument doc(QStringLiteral("what the document held before"));  // replaced, not added to
        QVERIFY(rtf::read("{\\rtf1 a" + group + "b}", &doc));
        QCOMPARE(blocks(doc), QStringLiteral("ab"));
    }
    void paragraphs_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<int>>("alignments");
        const int l = Qt::AlignLeft, c = Qt::AlignHCenter, r = Qt::AlignRight, j = Qt::AlignJustify;
        QTest::newRow("par") << QByteArray("{\\rtf1 a\\par b}") << "a\nb" << QList<int>{l, l};
        QTest::newRow("final par") << QByteArray("{\\rtf1 a\\par}") << "a\n" << QList<int>{l, l};
        QTest::newRow("backslash newline") << QByteArray("{\\rtf1 a\\\nb}") << "a\nb" << QList<int>{l, l};
        QTest::newRow("line") << QByteArray("{\\rtf1 a\\line b}") << "a\u2028b" << QList<int>{l};
        QTest::newRow("tab") << QByteArray("{\\rtf1 a\\tab b}") << "a\tb" << QList<int>{l};
        QTest::newRow("alignments") << QByteArray("{\\rtf1\\qc c\\par\\pard l\\par\\qr r\\par\\qj j}") << "c\nl\nr\nj"
                                    << QList<int>{c, l, r, j};
        QTest::newRow("pard in a group") << QByteArray("{\\rtf1\\qc a\\par{\\pard b\\par}c}") << "a\nb\nc"
                                         << QList<int>{c, l, c};
        QTest::newRow("centred to the end") << QByteArray("{\\rtf1{\\qc c}}") << "c" << QList<int>{c};
    }
    void paragraphs()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QList<int>, alignments);
        QTextDocument doc;
        QVERIFY(rtf::read(rtf, &doc));
        QTEST(blocks(doc), "text");
        QList<int> found;
        for (QTextBlock b = doc.begin(); b.isValid(); b = b.next())
            found.append(int(b.blockFormat().alignment() & Qt::AlignHorizontal_Mask));
        QCOMPARE(found, alignments);
    }
    void damagedInputIsReadSafely_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("isRtf");
        QTest::addColumn<QString>("text");  // null: any text
        static const char nuls[] = "{\\rtf1 a\0b\\\0c\\'00d}";
        const QByteArray deep = QByteArray("{\\rtf1") + QByteArray(100000, '{') + "x" + QByteArray(100000, '}') + "y}";
        QTest::newRow("empty") << QByteArray() << false << "";
        QTest::newRow("not rtf") << QByteArray("hello") << false << "hello";
        QTest::newRow("not rtf, Latin-1") << QByteArray("caf\xe9") << false << QString::fromUtf8("café");
        QTest::newRow("open brace") << QByteArray("{") << false << "{";
        QTest::newRow("close brace") << QByteArray("}") << false << "}";
        QTest::newRow("header only") << QByteArray("{\\rtf1") << true << "";
        QTest::newRow("cut after quote") << QByteArray("{\\rtf1\\'") << true << "";
        QTest::newRow("cut in hex") << QByteArray("{\\rtf1\\'4") << true << "";
        QTest::newRow("cut after backslash") << QByteArray("{\\rtf1\\") << true << "";
        QTest::newRow("extra closing braces") << QByteArray("{\\rtf1 }}}}} text") << true << " text";
        QTest::newRow("only opening braces") << QByteArray(100000, '{') << false << QString();
        QTest::newRow("deep nesting") << deep << true << "xy";
        QTest::newRow("huge u") << QByteArray("{\\rtf1\\u99999999999 x}") << true << QString(QChar::ReplacementCharacter);
        QTest::newRow("huge uc") << QByteArray("{\\rtf1\\uc2147483647\\u233 abc{}d}") << true << QString::fromUtf8("éd");
        QTest::newRow("bin past the end") << QByteArray("{\\rtf1\\bin99999 ab}") << true << "";
        QTest::newRow("negative bin") << QByteArray("{\\rtf1\\bin-4 ab}") << true << "ab";
        QTest::newRow("bin data stands in for a \\u character") << QByteArray("{\\rtf1\\u233\\bin2 xyb}") << true << QString::fromUtf8("éb");
        QTest::newRow("colortbl outside a group") << QByteArray("{\\rtf1\\colortbl;\\red999\\green-5\\blue3;}\\cf7 x}")
                                                  << true << "x";
        QTest::newRow("NULs") << QByteArray(nuls, sizeof nuls - 1) << true << "abcd";
        QTest::newRow("lone surrogate") << QByteArray("{\\rtf1\\u-10179?x}") << true << QString();
    }
    void damagedInputIsReadSafely()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QTextDocument doc;
        QTEST(rtf::read(bytes, &doc), "isRtf");
        QVERIFY(doc.characterCount() <= bytes.size() + 1);
        if (!text.isNull())
            QCOMPARE(blocks(doc), text);
    }
};


TANDREL_TEST_MAIN(TestRtfReader)
#include "tst_rtfreader.moc"
