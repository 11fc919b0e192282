#include "browse/font_size.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

QString withAbsoluteImages(QString html, const platform::AppFolder& folder) {
    html.replace(u"src=\"print.gif\""_s, u"src=\""_s + folder.pageText(u"\\OKU\\print.gif") + u'"');
    html.replace(u"src=\"duaimages"_s, u"src=\""_s + folder.pageText(u"\\OKU\\duaimages"));
    return html;
}

QString withFontSize(QString html, int oldSize, int newSize) {
    const auto style = [](int size) {
        return u"td {font-size: "_s + QString::number(size) + u"px;font-family: Arial;}"_s;
    };
    const auto fontTag = [](int size) {
        return u"<FONT face=Verdana size="_s + QString::number(size) + u'>';
    };
    const QString inserted = u"</TITLE><style>"_s + style(newSize) + u"</style></HEAD>"_s;

    html.replace(u"</TITLE></HEAD>"_s, inserted);
    // What was inserted comes back in the view's own form.
    html.replace(u"</TITLE>\r\n<STYLE>"_s + style(oldSize) + u"</STYLE>\r\n</HEAD>"_s, inserted);
    html.replace(fontTag(oldSize - 14), fontTag(newSize - 14));
    return html;
}

}  // namespace lirovan::browse
