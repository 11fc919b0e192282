#include "browse/font_size.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

QString withAbsoluteImages(QString html, const platform::AppFolder& folder) {
    html.replace(u"src=\"print.gif\""_s, u"src=\""_s + folder.pageText(u"\\OKU\\print.gif") + u'"');
    html.replace(u"src=\"duaimages"_s, u"src=\""_s + folder.pageText(u"\\OKU\\duaimages"));
    return html;
}

std::vector<platform::Replacement> fontSizeChanges(int oldSize, int newSize) {
    const auto style = [](int size) {
        return u"td {font-size: "_s + QString::number(size) + u"px;font-family: Arial;}"_s;
    };
    const auto fontTag = [](int size) {
        return u"<FONT face=Verdana size="_s + QString::number(size) + u'>';
    };
    const QString inserted = u"</TITLE><style>"_s + style(newSize) + u"</style></HEAD>"_s;
    return {{u"</TITLE></HEAD>"_s, inserted},
            // What was inserted comes back in the view's own form.
            {u"</TITLE>\r\n<STYLE>"_s + style(oldSize) + u"</STYLE>\r\n</HEAD>"_s, inserted},
            {fontTag(oldSize - 14), fontTag(newSize - 14)}};
}

QString withFontSize(QString html, int oldSize, int newSize) {
    for (const platform::Replacement& change : fontSizeChanges(oldSize, newSize))
        html.replace(change.from, change.to);
    return html;
}

}  // namespace lirovan::browse
