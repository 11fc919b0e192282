#include "platform/core/rtf/html_writer.h"

namespace lirovan::platform::rtf {

using namespace Qt::StringLiterals;
namespace {

QString escaped(const QString& text) {
    QString out = text.toHtmlEscaped();
    out.replace(QChar(QChar::LineSeparator), u"<br>"_s);
    return out;
}

QString hex(const Rgb& color) {
    return u"#%1%2%3"_s.arg(color.red, 2, 16, QChar(u'0'))
        .arg(color.green, 2, 16, QChar(u'0'))
        .arg(color.blue, 2, 16, QChar(u'0'));
}

QString runStyle(const CharFormat& format) {
    QString font = format.font;
    font.remove(u'\'').remove(u'"');
    QString style = u"font-family:'%1';font-size:%2pt;"_s.arg(font.toHtmlEscaped(),
                                                              QString::number(format.halfPoints / 2.0));
    if (format.color) style += u"color:%1;"_s.arg(hex(*format.color));
    if (format.background) style += u"background-color:%1;"_s.arg(hex(*format.background));
    return style;
}

void appendRun(QString& out, const Run& run) {
    struct Tag {
        bool on;
        QStringView open, close;
    };
    const Tag tags[] = {
        {run.format.bold, u"<b>", u"</b>"},
        {run.format.italic, u"<i>", u"</i>"},
        {run.format.underline, u"<u>", u"</u>"},
        {run.format.strike, u"<s>", u"</s>"},
        {run.format.script == Script::Super, u"<sup>", u"</sup>"},
        {run.format.script == Script::Sub, u"<sub>", u"</sub>"},
    };
    out += u"<span style=\"%1\">"_s.arg(runStyle(run.format));
    if (!run.format.link.isEmpty()) out += u"<a href=\"%1\">"_s.arg(run.format.link.toHtmlEscaped());
    for (const Tag& tag : tags)
        if (tag.on) out += tag.open;
    out += escaped(run.text);
    for (auto tag = std::rbegin(tags); tag != std::rend(tags); ++tag)
        if (tag->on) out += tag->close;
    if (!run.format.link.isEmpty()) out += u"</a>";
    out += u"</span>";
}

QString paragraphStyle(const ParagraphFormat& format) {
    constexpr double twipsInPoint = 20;
    QString style = u"margin:0;white-space:pre-wrap;"_s;
    if (format.alignment == Alignment::Center) style += u"text-align:center;";
    if (format.alignment == Alignment::Right) style += u"text-align:right;";
    if (format.alignment == Alignment::Justify) style += u"text-align:justify;";
    if (format.leftIndent)
        style += u"margin-left:%1pt;"_s.arg(QString::number(format.leftIndent / twipsInPoint));
    if (format.firstIndent)
        style += u"text-indent:%1pt;"_s.arg(QString::number(format.firstIndent / twipsInPoint));
    return style;
}

}  // namespace

QString toHtml(const Document& document, const QString& title) {
    QString out =
        u"<!DOCTYPE html>\n<html lang=\"tr\"><head><meta charset=\"utf-8\"><title>%1</title></head>"
        "<body>\n"_s.arg(title.toHtmlEscaped());
    for (const Paragraph& paragraph : document.paragraphs) {
        out += u"<p style=\"%1\">"_s.arg(paragraphStyle(paragraph.format));
        for (const Run& run : paragraph.runs) appendRun(out, run);
        if (paragraph.runs.empty()) out += u"<br>";
        out += u"</p>\n";
    }
    out += u"</body></html>\n";
    return out;
}

}  // namespace lirovan::platform::rtf
