#include "browse/page_layout.h"

#include "data/special_books.h"
#include "platform/core/code_page.h"

namespace lirovan::browse {

namespace {

void appendHeaderRow(QString& page, const PageFrame& frame) {
    const bool narrow = frame.book == data::NarrowNameBook;
    page += u"<tr><td width=100% bgcolor=#000000><table width=100%><tr>";
    page += u"<td width=";
    page += narrow ? u"40" : u"60";
    page += u"%><b><font color=#FFFFFF face=Arial size=3><span >";
    page += frame.bookName;
    page += u"</span></font></b></td><td width=";
    page += narrow ? u"60" : u"40";
    page += u"% align=right><b><font face=Arial size=3 color=#FFFFFF><span>";
    page += frame.authorName;
    page += u"</span></font></b></td></tr></table></td></tr>";
}

void appendTitleRow(QString& page, const QString& title) {
    page += u"<tr><td width=100% valign=top><table border=0 width=100%><tr>";
    page += u"            ";  // twelve blanks
    page += u"<td width=90% valign=top align=center><big><big><strong>";
    page += title;
    page +=
        u"</strong></big></big></td><td align=right width=10% valign=top>"
        u"<a href=javascript:window.print();><img border=0 src=print.gif width=67 height=17></a>"
        u"</td></tr></table></td></tr>";
}

}  // namespace

QString framedPage(const PageFrame& frame, QStringView content) {
    QString page;
    page.reserve(content.size() + 2 * frame.title.size() + frame.bookName.size() + frame.authorName.size() +
                 1200);
    page += u"<html><title>";
    page += frame.title;
    page += u"</title><body topmargin=0 leftmargin=0 rightmargin=0 bottommargin=0";
    if (frame.background == PageFrame::Background::Grey) page += u" bgcolor=#C0C0C0";
    page +=
        u"><table bgColor=#FFFFFF border=5 cellSpacing=0 width=100% bordercolor=#000000 cellpadding=11 "
        u"align=top>"
        u"<tbody>";
    appendHeaderRow(page, frame);
    appendTitleRow(page, frame.title);
    page += u"<tr><td width=75% valign=top ><font face=Arial>";
    page += content;
    page += u"</font></td></tr></table></html>";
    return page;
}

QByteArray pageBytes(QStringView page) {
    return platform::toWindows1254(page) + QByteArrayLiteral("\r\n");
}

}  // namespace lirovan::browse
