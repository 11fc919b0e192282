#include "shell/extra_windows.h"

#include <QRegularExpression>

#include "browse/font_size.h"
#include "browse/window_ports.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

QString copiedPage(QString html, const platform::AppFolder& folder) {
    html.remove(u"<DIV class=menuitems url=\""_s + folder.pageText(u"\\OKU\\VQ.htm") +
                u"\">Giriş Sayfası</DIV>\r\n<HR>"_s);
    return browse::withAbsoluteImages(std::move(html), folder);
}

QString copiedCaption(QString caption, const QString& html) {
    if (caption != browse::ContentCaption) return caption.remove(u"İçerik Penceresi - "_s);
    static const QRegularExpression title(u"<TITLE>(.*?)</TITLE>"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    QString text = title.match(html).captured(1).simplified();
    if (text.isEmpty()) return caption;
    // What the old form writes as entities; "&" last, for it stands in the others.
    text.replace(u"&lt;"_s, u"<"_s).replace(u"&gt;"_s, u">"_s).replace(u"&nbsp;"_s, u" "_s);
    return text.replace(u"&amp;"_s, u"&"_s);
}

}  // namespace lirovan::shell
