// Rich text in Qt's text documents, and rich text from HTML.
#include "platform/ui/rtf_document.h"

#include <gtest/gtest.h>

#include <QTextCursor>
#include <QTextDocument>

#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

using namespace lirovan::platform::rtf;

namespace {

Document sample() {
    return read(QByteArrayView(
        "{\\rtf1\\ansi\\ansicpg1254{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}"
        "{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue0;}"
        "\\pard\\qc\\f0\\fs21 Ba\\'fel\\'fdk \\b kal\\'fdn\\b0\\i  e\\u287?ik\\i0\\par"
        "\\pard\\li720\\fi-360 \\'95\\tab\\cf1 k\\'fdrm\\'fdz\\'fd\\cf0 \\highlight2 kalem\\line\\f1\\fs40 "
        "b\\'fcy\\'fck"
        "\\highlight0\\par\\par\\pard\\qj x\\super 2\\nosupersub\\ul y\\ulnone\\strike z\\par\\par}"));
}

QString plain(const Document& document) {
    return document.plainText();
}

}  // namespace

TEST(RtfDocument, ComesBackUnchanged) {
    for (const Document& document :
         {sample(), read(QByteArrayView("{\\rtf1}")), read(QByteArrayView("{\\rtf1 a\\par\\par}"))}) {
        QTextDocument target;
        target.setPlainText(QStringLiteral("eski"));
        fill(target, document);
        EXPECT_EQ(fromTextDocument(target), document) << write(fromTextDocument(target)).toStdString();
        EXPECT_FALSE(target.isUndoAvailable());
        // Another default font changes nothing in it.
        target.setDefaultFont(QFont(QStringLiteral("Courier New"), 30));
        EXPECT_EQ(fromTextDocument(target), document);
    }
}

TEST(RtfDocument, GivesAndReplacesTheSelection) {
    QTextDocument target;
    fill(target, sample());
    QTextCursor cursor = target.find(QStringLiteral("kalın"));
    const Document bold = fromSelection(cursor);
    ASSERT_EQ(bold.paragraphs.size(), 1U);
    EXPECT_EQ(plain(bold), u"kalın");
    EXPECT_TRUE(bold.paragraphs[0].runs[0].format.bold);

    insert(cursor, read(QByteArrayView("{\\rtf1 bir\\par\\pard\\qr iki\\par}")));
    EXPECT_TRUE(target.toPlainText().startsWith(u"Başlık bir\niki eğik\n"));
    const Document after = fromTextDocument(target);
    EXPECT_EQ(after.paragraphs[0].format.alignment, Alignment::Center);
    EXPECT_EQ(after.paragraphs[1].format.alignment, Alignment::Right);
    target.undo();
    EXPECT_EQ(fromTextDocument(target), sample());

    cursor.clearSelection();
    EXPECT_TRUE(fromSelection(cursor).isEmpty());
    cursor.select(QTextCursor::Document);
    EXPECT_EQ(fromSelection(cursor), sample());
    insert(cursor, {});
    EXPECT_TRUE(fromTextDocument(target).isEmpty());
}

TEST(RtfDocument, ReadsPassagesOfPages) {
    const Document hit = fromHtml(QStringLiteral(
        "<p align=center style='font-family:Verdana,sans-serif;font-size:16px'>Şu <b>söz</b>, "
        "<font color='#000080'><span style='background-color:#FFFF00'>ışık</span></font>.<br>ğ</p>"));
    ASSERT_EQ(hit.paragraphs.size(), 1U);
    EXPECT_EQ(hit.paragraphs[0].format.alignment, Alignment::Center);
    const auto& runs = hit.paragraphs[0].runs;
    ASSERT_EQ(runs.size(), 5U);
    EXPECT_EQ(runs[0].format.font, u"Verdana");
    EXPECT_EQ(runs[0].format.halfPoints, 24);
    EXPECT_TRUE(runs[1].format.bold);
    EXPECT_EQ(runs[3].text, u"ışık");
    EXPECT_EQ(runs[3].format.color, (Rgb{0, 0, 128}));
    EXPECT_EQ(runs[3].format.background, (Rgb{255, 255, 0}));
    EXPECT_EQ(runs[4].text, QStringLiteral(".\u2028ğ"));

    const struct {
        const char* html;
        QStringView text;
    } cases[] = {
        {"<ul><li>a<li>b</ul><ol><li>c<li>d</ol>", u"•\ta\n•\tb\n1.\tc\n2.\td"},
        {"x<table><tr><td>a<td>b<tr><td colspan=2>c<p>d</table>y", u"x\na\tb\nc d\ny"},
        {"a<img src='file:///etc/hostname'>b<script>c</script>&lt;&amp;", u"ab<&"},
        {"", u""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(plain(fromHtml(QString::fromUtf8(c.html))), c.text.toString()) << c.html;

    EXPECT_TRUE(htmlToRtf(QStringLiteral("<b>ğ</b>")).endsWith("\\b\\'f0}"));
}
