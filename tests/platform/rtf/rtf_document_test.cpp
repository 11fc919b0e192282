// Rich text in Qt's text documents, and rich text from HTML.
#include "platform/ui/rtf_document.h"

#include <gtest/gtest.h>

#include <QTextCursor>
#include <QTextDocument>

#include "platform/core/html_depth.h"
#include "platform/core/rtf/bounds.h"
#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

using namespace lirovan::platform;
using namespace lirovan::platform::rtf;
using namespace Qt::StringLiterals;

static Document parsed(const char* rtf) {
    return read(QByteArrayView(rtf));
}

static const Document Sample = parsed(
    "{\\rtf1\\ansi\\ansicpg1254{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}"
    "{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue0;}"
    "\\pard\\qc\\f0\\fs21 Ba\\'fel\\'fdk \\b kal\\'fdn\\b0\\i  e\\u287?ik\\i0\\par"
    "\\pard\\li720\\fi-360 \\'95\\tab\\cf1 k\\'fdrm\\'fdz\\'fd\\cf0 \\highlight2 kalem\\line\\f1\\fs40 "
    "b\\'fcy"
    "\\highlight0\\par\\par\\pard\\qj x\\super 2\\nosupersub\\ul y\\ulnone\\strike z\\par\\par}");

TEST(RtfDocument, ComesBackUnchanged) {
    for (const Document& document : {Sample, parsed("{\\rtf1}"), parsed("{\\rtf1 a\\par\\par}")}) {
        QTextDocument target;
        target.setPlainText(u"eski"_s);
        fill(target, document);
        EXPECT_EQ(fromTextDocument(target), document) << write(fromTextDocument(target)).toStdString();
        EXPECT_FALSE(target.isUndoAvailable());
        // Another default font changes nothing in it.
        target.setDefaultFont(QFont(u"Courier New"_s, 30));
        EXPECT_EQ(fromTextDocument(target), document);
    }
}

TEST(RtfDocument, GivesAndReplacesTheSelection) {
    QTextDocument target;
    fill(target, Sample);
    QTextCursor cursor = target.find(u"kalın"_s);
    EXPECT_EQ(fromSelection(cursor), parsed("{\\rtf1\\qc\\fs21\\b kal\\'fdn}"));

    insert(cursor, parsed("{\\rtf1 bir\\par\\pard\\qr iki\\par}"));
    EXPECT_TRUE(target.toPlainText().startsWith(u"Başlık bir\niki eğik\n"));
    const Document after = fromTextDocument(target);
    EXPECT_EQ(after.paragraphs[0].format.alignment, Alignment::Center);
    EXPECT_EQ(after.paragraphs[1].format.alignment, Alignment::Right);
    target.undo();
    EXPECT_EQ(fromTextDocument(target), Sample);

    cursor.clearSelection();
    EXPECT_TRUE(fromSelection(cursor).isEmpty());
    cursor.select(QTextCursor::Document);
    EXPECT_EQ(fromSelection(cursor), Sample);
    insert(cursor, {});
    EXPECT_TRUE(fromTextDocument(target).isEmpty());
}

TEST(RtfDocument, ReadsPassagesOfPages) {
    const QString hit =
        u"<p align=center style='font-family:Verdana,sans-serif;font-size:16px'>Şu <b>söz</b>, "
        "<font color='#000080'><span style='background-color:#FFFF00'>ışık</span></font>.<br>ğ</p>"_s;
    EXPECT_EQ(write(fromHtml(hit)),
              write(parsed("{\\rtf1\\ansi{\\fonttbl{\\f0 Verdana;}}"
                           "{\\colortbl;\\red0\\green0\\blue128;\\red255\\green255\\blue0;}\\qc\\f0\\fs24 "
                           "\\'deu {\\b s\\'f6z}, {\\cf1\\highlight2 \\'fd\\'fe\\'fdk}.\\line \\'f0}")));
    const std::pair<QString, QStringView> cases[] = {
        {u"<ul><li>a<li>b</ul><ol><li>c<li>d</ol>"_s, u"•\ta\n•\tb\n1.\tc\n2.\td"},
        {u"x<table><tr><td>a<td>b<tr><td colspan=2>c<p>d</table>y"_s, u"x\na\tb\nc d\ny"},
        {u"<table><tr><td><table><tr><td>a<td>b</table><tr><td><h2>c</h2><p>d</table>"_s, u"a\tb\nc\nd"},
        {u"a<img src='file:///etc/hostname'>b<script>c</script>&lt;&amp;"_s, u"ab<&"},
        {u""_s, u""},
    };
    for (const auto& [html, text] : cases) EXPECT_EQ(fromHtml(html).plainText(), text) << html.toStdString();
    EXPECT_TRUE(htmlToRtf(u"<b>ğ</b>"_s).endsWith("\\b\\'f0}"));
}

TEST(RtfDocument, FlattensWhatLiesTooDeepAndLosesNoText) {
    const std::pair<QString, QString> cases[] = {
        {u"<b>"_s.repeated(90'000) + u"son"_s, u"son"_s},
        {u"<div>a"_s.repeated(1000), u"a\n"_s.repeated(1000).chopped(1)},
        {u"<div><i x='>'>"_s.repeated(500) + u"a"_s + u"</i></div>"_s.repeated(500) + u"<p>b"_s, u"a\nb"_s},
        {u"<p><b>a"_s.repeated(1000), u"a\n"_s.repeated(1000).chopped(1)},  // these are side by side
    };
    for (const auto& [html, text] : cases) {
        QString found = fromHtml(html).plainText();
        EXPECT_EQ(found.replace(u"\n\n"_s, u"\n"_s).trimmed(), text) << html.first(20).toStdString();
    }
    const QString page =
        u"<!-- <b> --><script>if (a<b) '<i>'</script><ul><li>a<li>b</ul><br><table><tr><td>c"_s;
    EXPECT_EQ(withBoundedDepth(page, 200), page);
    EXPECT_EQ(withBoundedDepth(u"<b>a<div><i><div>b</div>c</i></div></b>d"_s, 1), u"<b>a<br>b<br>c<br></b>d");
    const std::pair<QByteArray, QByteArray> pages[] = {
        {"<DIV><p>\xfe<p>b<br><img><td><div>c</DIV></div>\xf0", {}},
        {"<div><div><div><B>\xfe</B><div>b", "<div><div><div>\xfe<br>b"},
        // What is not nested: anchors that nobody closes, the shapes of a drawing.
        {"<div><a name=x>b<a name=y>c<a name=z/>d<a name=w>e<b>f</b>", {}},
        {"<svg><path d=\"M0 0\"/><path/><path/><path/></svg><div><b>c</b></div>", {}},
        {"<div></b><div></i><div></b><div>b", "<div></b><div></i><div></b>b"},  // what closes nothing
    };
    for (const auto& [given, bounded] : pages)
        EXPECT_EQ(withBoundedDepth(given, 3), bounded.isEmpty() ? given : bounded) << given.toStdString();

    Document longList = read(QByteArrayView("{\\rtf1 a\\line b\\par c\\par {\\b d}\\line e\\par\\par f}"));
    joinLinesBeyond(longList, 2);
    EXPECT_EQ(longList.plainText(), u"a\nb\nc d e  f");
    EXPECT_TRUE(longList.paragraphs[1].runs[1].format.bold);
}
