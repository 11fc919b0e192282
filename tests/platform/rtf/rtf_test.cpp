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
            const bool on[] = {
                f.bold, f.italic, f.underline, f.strike, f.script == Script::Super, f.script == Script::Sub};
            QString marks;
            for (qsizetype i = 0; i < 6; ++i)
                if (on[i]) marks += u"bius^_"_s[i];
            if (f.color) marks += u"c%1.%2.%3"_s.arg(f.color->red).arg(f.color->green).arg(f.color->blue);
            if (!f.link.isEmpty()) marks += u'@' + f.link + u' ';
            if (f.background) marks += u"h%1"_s.arg(f.background->red);
            QString shown = run.text;
            shown.replace(u'\t', u'→').replace(QChar::LineSeparator, u'↵');
            text += marks.isEmpty() ? shown : u'[' + marks + u':' + shown + u']';
        }
        paragraphs += text;
    }
    return paragraphs.join(u'|');
}

using Cases = std::initializer_list<std::pair<const char*, QStringView>>;

void check(Cases cases, const QByteArray& start = {}, const QByteArray& end = {}) {
    for (const auto& [rtf, expected] : cases) {
        const Document document = read(QByteArrayView(start + rtf + end));
        EXPECT_EQ(sketch(document), expected) << rtf;
        const Document text = read(QByteArrayView(start + rtf + end), {.formats = false});
        EXPECT_EQ(text.plainText(), document.plainText()) << rtf;
        for (const QByteArray& written : {write(document), write(document, Ending::Inline)})
            EXPECT_EQ(read(QByteArrayView(written)), document) << written.toStdString();
    }
}
void checkBodies(Cases cases) {
    check(cases, "{\\rtf1 ", "}");
}

}  // namespace

TEST(RtfReader, ReadsFormats) {
    checkBodies({
        {R"(a\b b\b0  c\par)", u"a[b:b] c"},
        {R"(a{\b\i b}{\ul c}{\ul\ulnone d}\par)", u"a[bi:b][u:c]d"},
        {R"({\colortbl;\red255\green0\blue0;\red0\green0\blue0;}\cf1 a\cf2 b\cf0 c\cf9 d)",
         u"[c255.0.0:a]bcd"},
        {R"({\colortbl;\red9\green255\blue0;}x\highlight1 a\highlight0 b\chcbpat1 c\plain d)",
         u"x[h9:a]b[h9:c]d"},
        {R"(\b a\plain b\super 2\nosupersub c{\sub i}\strike s)", u"[b:a]b[^:2]c[_:i][s:s]"},
        {R"(a{\up9 2}{\dn9 3\dn0 b}\u-3913?)", u"a[^:2][_:3]b•"},
        {R"(\pard\qc a\par b\par\pard c\par\pard\qr d\par\pard\qj e)",
         u"<center>a|<center>b|c|<right>d|<justify>e"},
        {R"(a\v gizli\v0 b)", u"ab"},
    });
    const Document sizes = read(QByteArrayView(
        R"({\rtf1{\fonttbl{\f0 Arial;}{\f7\fmodern Courier New;}}\deff0 a\f7\fs20 b\fs c\fs0 d\fs-5 e})"));
    QString runs;
    for (const auto& run : sizes.paragraphs.front().runs)
        runs += run.format.font + QString::number(run.format.halfPoints) + run.text + u'|';
    EXPECT_EQ(runs, u"Arial24a|Courier New20b|Courier New24cde|");
}

TEST(RtfReader, ReadsTextOfManyCodePages) {
    checkBodies({
        {"\\ansi\\ansicpg1254 \\'f0\\'fc\\'fe\\'fd\\'dd\xE7", u"ğüşıİç"},
        {R"(\ansi\ansicpg1252 \'f0\'e9)", u"ðé"},
        {R"(\ansi \'fe)", u"ş"},  // none named: Turkish
        {R"(\ansi\ansicpg4242 \'e9)", u"é"},
        {R"(\mac \'8e)", u"é"},
        {R"(\ansi\ansicpg1252{\fonttbl{\f0\fcharset0 A;}{\f1\fcharset162 B;}{\f2\fcharset204 C;})"
         R"({\f3\fcharset128 D;}{\f4\fcharset2 Symbol;}{\f5\fcharset0\cpg1250 E;}}\f0\'fe\f1\'fe)"
         R"(\f2\'ff\f3\'93\'fa\f4\'b7\f5\'b3)",
         u"þşя日•ł"},
        {R"(\u287?\u304\'dd\u-10179?\u-8704?!)", u"ğİ😀!"},
        {R"(\uc0\u287 a\uc2\u287??b{\uc1\u287?c}\u287\'f0\'f0d)", u"ğağbğcğd"},
        {R"(\uc1\u287 \par a\u8220\ldblquote b{\u287}c\u287\b d)", u"ğ|a“bğcğ[b:d]"},
        {R"(\u128512?\u55357?x\u0?y\u99999999999?)", u"😀xy\xFFFD"},
        {R"(a\~b\_c\-d\emdash\lquote\bullet\tab e\line f)", u"a\u00A0b\u2011c\u00ADd—‘•→e↵f"},
        {"\\{\\\\\\}\r\n a\\\nb", u"{\\} a|b"},
        {R"({\upr{G\'f0L}{\*\ud{G\u286?L}}} x)", u"GĞL x"},
    });
}

TEST(RtfReader, TakesTheTextOutOfListsTablesAndWhatItDoesNotShow) {
    checkBodies({
        {R"({\info{\title T}}{\*\generator X;}{\stylesheet{\s1 heading;}}{\header H\par}a{\*\x{\b y}}b)",
         u"ab"},
        {R"(a{\pict\pngblip 89504e47}b{\*\shppict{\pict 00}}c{\pict\bin5 }}}}}d}e)", u"abce"},
        {R"(a\bin3 {{{b\bin99999999 c)", u"ab"},
        {R"({\field{\*\fldinst HYPERLINK "x"}{\fldrslt{\ul link}}}.)", u"[u:link]."},
        {R"({\shp{\*\shpinst{\sp{\sn a}{\sv 1}}{\shptxt kutu\par}}{\shprslt x}}son)", u"kutu|son"},
        {R"(a{\footnote\pard not\par devam\par}b)", u"a [not devam ]b"},
        {R"({\*\bkmkstart x}a{\*\unknown{\fldrslt b}{\*\ud c}}d)", u"ad"},
        {"a{x \\*\\cs13 y}{\r\n\\*\\cs13 z}", u"ax y"},
        {"a}son", u"a"},
        {R"({\listtext\'95\tab}bir\par{\pntext 2.\tab}{\*\pn\pnlvlbody}iki\par)", u"•→bir|2.→iki"},
        {R"(\trowd\cellx1\intbl a\cell b\cell\cell\row\trowd\intbl c\cell\row\pard d\par)", u"a→b→|c|d"},
        {R"(\intbl\itap2 x\nestcell y\nestcell{\*\nesttableprops\trowd\nestrow}{\nonesttables\par})"
         R"(\intbl z\cell\row)",
         u"x→y|z"},
        {R"(a\par\page b\par\sect c\column d\softline e)", u"a|b|c|d↵e"},
    });
    check({
        {"bir\r\niki {x}\\b", u"bir|iki {x}\\b"},  // no rich text
        {"\xFE", u"ş"},
        {"", u""},
        {"{\\rtf1 a\\b Ba\\'fe", u"a[b:Baş]"},  // cut off
    });
    EXPECT_EQ(sketch(read(QStringView(u" {\\rtf1\\ansi ğ\\b ∞}"))), u"ğ[b:∞]");
    EXPECT_TRUE(read(QByteArrayView("{\\rtf1}")).isEmpty());
}

TEST(RtfReader, KeepsLinksThatMayBeFollowed) {
    checkBodies({
        {R"(a{\field{\*\fldinst HYPERLINK "konu:12?yer=x%20y"}{\fldrslt b{\b c}}}d)",
         u"a[@konu:12?yer=x%20y :b][b@konu:12?yer=x%20y :c]d"},
        {R"({\field{\*\fldinst{\f0 HYPERLINK  http://x.tr/\'fe"a }}{\fldrslt\ul b\par c}}d)",
         u"[u@http://x.tr/%C5%9F%22a :b]|[u@http://x.tr/%C5%9F%22a :c]d"},
        {R"({\field{\fldinst HYPERLINK "mailto:a@b"}{\fldrslt b}}{\field{\fldinst PAGE}{\fldrslt 3}})",
         u"[@mailto:a@b :b]3"},
        {R"({\field{\*\fldinst HYPERLINK "file:///etc/passwd"}{\fldrslt a}}b)", u"ab"},
        {R"({\field{\*\fldinst HYPERLINK "javascript:x"}{\fldrslt a}}b)", u"ab"},
        {R"({\field{\*\fldinst HYPERLINK \\l "yer"}{\fldrslt a}}b)", u"ab"},
        {R"({\field{\*\fldinst HYPERLINK "HTTPS://a.tr/B"}{\fldrslt b}})", u"[@https://a.tr/B :b]"},
        {R"({\*\fldinst HYPERLINK "konu:1"}a{\fldrslt b}c)", u"abc"},
        {R"({\field{\*\fldinst HYPERLINK "konu:1"}{\fldrslt a{\field{\*\fldinst HYPERLINK "konu:2"}{\fldrslt b}}c}}d)",
         u"[@konu:1 :a][@konu:2 :b][@konu:1 :c]d"},
    });
    Document note;
    note.paragraphs = {{{}, {{u"söz "_s, {}}, {u"kaynak"_s, {.link = u"konu:7"_s}}}}};
    EXPECT_TRUE(
        write(note).contains(R"(s\'f6z {\field{\*\fldinst{HYPERLINK "konu:7"}}{\fldrslt kaynak}}\par)"))
        << write(note).toStdString();
    EXPECT_TRUE(toHtml(note, {}).contains(u"<a href=\"konu:7\">kaynak</a>"_s));
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
    for (const QByteArray& input : inputs)
        EXPECT_TRUE(read(QByteArrayView(input)).plainText().startsWith(u'a')) << input.left(40).toStdString();
}

TEST(RtfWriter, IsCanonicalForAnyDocument) {
    const unsigned seed = std::random_device()();
    RecordProperty("seed", static_cast<int>(seed));
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const QString letters =
        u"abc 019-\\{};'?ğİşâ€\u00A0\u00AD\u2011∞日😀\t\u2028\n\uFFFC\x1"_s + QChar(0xD83D);
    for (int round = 0; round < 500; ++round) {
        Builder builder;
        for (int paragraphs = below(4); paragraphs >= 0; --paragraphs) {
            for (int runs = below(5); runs > 0; --runs) {
                CharFormat format{below(2) ? u"Yazı;{1}"_s : DefaultFont.toString(), below(3) * 7 - 1};
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
        for (const QByteArray& written : {write(document), write(document, Ending::Inline)})
            ASSERT_EQ(read(QByteArrayView(written)), document) << written.toStdString();
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
    const QString html = toHtml(read(QByteArrayView("{\\rtf1\\pard\\qc{\\b a<\\line b}\\par c}")), u"B&"_s);
    for (const QStringView piece : {u"<title>B&amp;</title>", u"text-align:center;", u"<b>a&lt;<br>b</b>"})
        EXPECT_TRUE(html.contains(piece)) << html.toStdString();
}
