// What rich text means, and that writing it is canonical.
#include <gtest/gtest.h>

#include <QStringList>
#include <random>

#include "platform/core/rtf/html_writer.h"
#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

using namespace lirovan::platform::rtf;
using namespace Qt::StringLiterals;

namespace {

// Paragraphs between "|", each run as its marks and its text: "a[b:x]|" ; marks: b i u s ^ _ , colours.
QString sketch(const Document& document) {
    QStringList paragraphs;
    for (const Paragraph& paragraph : document.paragraphs) {
        constexpr QStringView alignments[] = {u"", u"<center>", u"<right>", u"<justify>"};
        QString text = alignments[static_cast<int>(paragraph.format.alignment)].toString();
        for (const Run& run : paragraph.runs) {
            const CharFormat& f = run.format;
            const std::pair<bool, QChar> flags[] = {{f.bold, u'b'},
                                                    {f.italic, u'i'},
                                                    {f.underline, u'u'},
                                                    {f.strike, u's'},
                                                    {f.script == Script::Super, u'^'},
                                                    {f.script == Script::Sub, u'_'}};
            QString marks;
            for (const auto& [on, mark] : flags)
                if (on) marks += mark;
            if (f.color) marks += u"c%1.%2.%3"_s.arg(f.color->red).arg(f.color->green).arg(f.color->blue);
            if (f.background) marks += u"h%1"_s.arg(f.background->red);
            QString shown = run.text;
            shown.replace(u'\t', u'→').replace(QChar::LineSeparator, u'↵');
            text += marks.isEmpty() ? shown : u'[' + marks + u':' + shown + u']';
        }
        paragraphs += text;
    }
    return paragraphs.join(u'|');
}

void check(std::initializer_list<std::pair<const char*, QStringView>> cases) {
    for (const auto& [rtf, expected] : cases) {
        const Document document = read(QByteArrayView(rtf));
        EXPECT_EQ(sketch(document), expected) << rtf;
        for (const QByteArray& written : {write(document), write(document, Ending::Inline)})
            EXPECT_EQ(read(QByteArrayView(written)), document) << written.toStdString();
    }
}

}  // namespace

TEST(RtfReader, ReadsFormats) {
    check({
        {"{\\rtf1 a\\b b\\b0  c\\par}", u"a[b:b] c"},
        {"{\\rtf1 a{\\b\\i b}{\\ul c}{\\ul\\ulnone d}\\par}", u"a[bi:b][u:c]d"},
        {"{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue0;}\\cf1 a\\cf2 b\\cf0 c\\cf9 d}",
         u"[c255.0.0:a]bcd"},
        {"{\\rtf1{\\colortbl;\\red255\\green255\\blue0;}x\\highlight1 a\\highlight0 b\\chcbpat1 c\\plain d}",
         u"x[h255:a]b[h255:c]d"},
        {"{\\rtf1\\b a\\plain b\\super 2\\nosupersub c{\\sub i}\\strike s}", u"[b:a]b[^:2]c[_:i][s:s]"},
        {"{\\rtf1 a{\\up9 2}{\\dn9 3\\dn0 b}\\u-3913?}", u"a[^:2][_:3]b•"},
        {"{\\rtf1\\pard\\qc a\\par b\\par\\pard c\\par\\pard\\qr d\\par\\pard\\qj e}",
         u"<center>a|<center>b|c|<right>d|<justify>e"},
        {"{\\rtf1 a\\v gizli\\v0 b}", u"ab"},
    });
    const Document sizes =
        read(QByteArrayView("{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f7\\fmodern Courier New;}}\\deff0"
                            "a\\f7\\fs20 b\\fs c\\fs0 d\\fs-5 e}"));
    QStringList runs;
    for (const auto& run : sizes.paragraphs.front().runs)
        runs += run.format.font + QString::number(run.format.halfPoints) + run.text;
    EXPECT_EQ(runs.join(u'|'), u"Arial24a|Courier New20b|Courier New24cde");
}

TEST(RtfReader, ReadsTextOfManyCodePages) {
    check({
        {"{\\rtf1\\ansi\\ansicpg1254 \\'f0\\'fc\\'fe\\'fd\\'dd\xE7}", u"ğüşıİç"},
        {"{\\rtf1\\ansi\\ansicpg1252 \\'f0\\'e9}", u"ðé"},
        {"{\\rtf1\\ansi \\'fe}", u"ş"},  // none named: Turkish
        {"{\\rtf1\\ansi\\ansicpg4242 \\'e9}", u"é"},
        {"{\\rtf1\\mac \\'8e}", u"é"},
        {"{\\rtf1\\ansi\\ansicpg1252{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset162 B;}{\\f2\\fcharset204 "
         "C;}"
         "{\\f3\\fcharset128 D;}{\\f4\\fcharset2 Symbol;}{\\f5\\fcharset0\\cpg1250 E;}}"
         "\\f0\\'fe\\f1\\'fe\\f2\\'ff\\f3\\'93\\'fa\\f4\\'b7\\f5\\'b3}",
         u"þşя日•ł"},
        {"{\\rtf1\\u287?\\u304\\'dd\\u-10179?\\u-8704?!}", u"ğİ😀!"},
        {"{\\rtf1\\uc0\\u287 a\\uc2\\u287??b{\\uc1\\u287?c}\\u287\\'f0\\'f0d}", u"ğağbğcğd"},
        {"{\\rtf1\\uc1\\u287 \\par a\\u8220\\ldblquote b{\\u287}c\\u287\\b d}", u"ğ|a“bğcğ[b:d]"},
        {"{\\rtf1\\u128512?\\u55357?x\\u0?y\\u99999999999?}", u"😀xy\xFFFD"},
        {"{\\rtf1 a\\~b\\_c\\-d\\emdash\\lquote\\bullet\\tab e\\line f}", u"a\u00A0b\u2011c\u00ADd—‘•→e↵f"},
        {"{\\rtf1 \\{\\\\\\}\r\n a\\\nb}", u"{\\} a|b"},
        {"{\\rtf1{\\upr{G\\'f0L}{\\*\\ud{G\\u286?L}}} x}", u"GĞL x"},
    });
}

TEST(RtfReader, PassesOverWhatIsNoText) {
    check({
        {"{\\rtf1{\\info{\\title T}}{\\*\\generator X;}{\\stylesheet{\\s1 heading;}}{\\header "
         "H\\par}a{\\*\\x{\\b y}}b}",
         u"ab"},
        {"{\\rtf1 a{\\pict\\pngblip 89504e47}b{\\*\\shppict{\\pict 00}}c{\\pict\\bin5 }}}}}d}e}", u"abce"},
        {"{\\rtf1 a\\bin3 {{{b\\bin99999999 c}", u"ab"},
        {"{\\rtf1 {\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt{\\ul link}}}.}", u"[u:link]."},
        {"{\\rtf1{\\shp{\\*\\shpinst{\\sp{\\sn a}{\\sv 1}}{\\shptxt kutu\\par}}{\\shprslt x}}son}",
         u"kutu|son"},
        {"{\\rtf1 a{\\footnote\\pard not\\par devam\\par}b}", u"a [not devam ]b"},
        {"{\\rtf1{\\*\\bkmkstart x}a{\\*\\unknown{\\fldrslt b}{\\*\\ud c}}d}", u"ad"},
        {"{\\rtf1 a{x \\*\\cs13 y}{\r\n\\*\\cs13 z}}", u"ax y"},
        {"{\\rtf1 a}son", u"a"},
    });
}

TEST(RtfReader, ReadsListsAndTablesAsText) {
    check({
        {"{\\rtf1{\\listtext\\'95\\tab}bir\\par{\\pntext 2.\\tab}{\\*\\pn\\pnlvlbody}iki\\par}",
         u"•→bir|2.→iki"},
        {"{\\rtf1\\trowd\\cellx1\\intbl a\\cell b\\cell\\cell\\row\\trowd\\intbl c\\cell\\row\\pard d\\par}",
         u"a→b→|c|d"},
        {"{\\rtf1\\intbl\\itap2 x\\nestcell "
         "y\\nestcell{\\*\\nesttableprops\\trowd\\nestrow}{\\nonesttables\\par}"
         "\\intbl z\\cell\\row}",
         u"x→y|z"},
        {"{\\rtf1 a\\par\\page b\\par\\sect c\\column d\\softline e}", u"a|b|c|d↵e"},
    });
}

TEST(RtfReader, TakesWhatIsNoRichTextAsPlainText) {
    check({
        {"bir\r\niki {x}\\b", u"bir|iki {x}\\b"},
        {"\xFE", u"ş"},
        {"", u""},
        {"{\\rtf1}", u""},
        {"{\\rtf1 a\\b Ba\\'fe", u"a[b:Baş]"},  // cut off
    });
    EXPECT_EQ(sketch(read(QStringView(u" {\\rtf1\\ansi ğ\\b ∞}"))), u"ğ[b:∞]");
    EXPECT_TRUE(read(QByteArrayView("{\\rtf1}")).isEmpty());
}

TEST(RtfReader, BearsDeepAndLongInput) {
    const auto repeated = [](const char* piece, int times) { return QByteArray(piece).repeated(times); };
    const QByteArray inputs[] = {
        "{\\rtf1 a" + repeated("{", 100'000) + "b",
        "{\\rtf1 a" + repeated("{\\b", 100'000) + " b" + repeated("}", 100'000) + "c}",
        "{\\rtf1 a" + repeated("{", 1'000'000) + repeated("}", 1'000'000) + "b}",
        "{\\rtf1 a\\fs" + repeated("9", 1'000'000) + " b}",
        "{\\rtf1 a\\" + repeated("x", 1'000'000) + " b}",
        "{\\rtf1 a" + repeated("\\'", 500'000) + "b}",
        "{\\rtf1{\\colortbl" + repeated(";", 1'000'000) + "}a\\cf900000 b}",
        "{\\rtf1{\\fonttbl" + repeated("{\\f-1\\fcharset77 x;}", 50'000) + "}a\\f-1 b}",
        "{\\rtf1 a" + repeated("{\\upr{}{\\*\\ud ", 50'000) + "b",
        "{\\rtf1 a\\uc2000000000\\u1 b}",
    };
    for (const QByteArray& input : inputs) {
        const Document document = read(QByteArrayView(input));
        EXPECT_TRUE(document.plainText().startsWith(u'a')) << input.left(40).toStdString();
    }
}

TEST(RtfWriter, IsCanonicalForAnyDocument) {
    const unsigned seed = std::random_device()();
    RecordProperty("seed", static_cast<int>(seed));
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const QString letters =
        QStringLiteral("abc 019-\\{};'?ğİşâ€\u00A0\u00AD\u2011∞日😀\t\u2028\n\uFFFC\x1") + QChar(0xD83D);
    for (int round = 0; round < 500; ++round) {
        Builder builder;
        for (int paragraphs = below(4); paragraphs >= 0; --paragraphs) {
            for (int runs = below(5); runs > 0; --runs) {
                CharFormat format;
                format.font = below(2) ? QStringLiteral("Yazı;{1}") : DefaultFont.toString();
                format.halfPoints = below(3) * 7 - 1;
                format.bold = below(2);
                format.underline = below(2);
                format.script = static_cast<Script>(below(3));
                if (below(2)) format.color = Rgb{static_cast<std::uint8_t>(below(2) * 255), 0, 0};
                if (below(3) == 0) format.background = Rgb{255, 255, 0};
                QString text;
                for (int n = below(8); n > 0; --n) text += letters[below(static_cast<int>(letters.size()))];
                builder.append(text, format);
            }
            builder.endParagraph({static_cast<Alignment>(below(4)), below(3) * 360, below(3) * 360 - 360});
        }
        const Document document = builder.take();
        const QByteArray written = write(document);
        ASSERT_EQ(read(QByteArrayView(written)), document) << written.toStdString();
        const QByteArray inLine = write(document, Ending::Inline);
        ASSERT_EQ(read(QByteArrayView(inLine)), document) << inLine.toStdString();
    }
}

TEST(RtfWriter, WritesWhatOtherProgramsExpect) {
    Builder builder;
    builder.append(u"Işık", {});
    builder.append(u" ∞", {.bold = true, .color = Rgb{255, 0, 0}});
    builder.endParagraph({Alignment::Center, 0, 0});
    EXPECT_EQ(write(builder.take()).toStdString(),
              "{\\rtf1\\ansi\\ansicpg1254\\uc1\\deff0{\\fonttbl{\\f0\\fnil\\fcharset162 Arial;}}\n"
              "{\\colortbl ;\\red255\\green0\\blue0;}\n"
              "\\pard\\qc\\f0\\fs20 I\\'fe\\'fdk\\b\\cf1  \\u8734?\\par\n}");
}

TEST(RtfHtml, KeepsTextAndFormat) {
    const QString html =
        toHtml(read(QByteArrayView("{\\rtf1\\pard\\qc{\\b a<\\line b}\\par c}")), QStringLiteral("B&"));
    EXPECT_TRUE(html.contains(u"<title>B&amp;</title>"));
    EXPECT_TRUE(html.contains(u"text-align:center;"));
    EXPECT_TRUE(html.contains(u"<b>a&lt;<br>b</b>"));
}
