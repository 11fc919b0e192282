#include "shell/extra_windows.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

QString copiedPage(QString html, const platform::AppFolder& folder) {
    html.replace(u"src=\"print.gif\""_s, u"src=\""_s + folder.pageText(u"\\OKU\\print.gif") + u'"');
    html.remove(u"<DIV class=menuitems url=\""_s + folder.pageText(u"\\OKU\\VQ.htm") +
                u"\">Giriş Sayfası</DIV>\r\n<HR>"_s);
    html.replace(u"src=\"duaimages"_s, u"src=\""_s + folder.pageText(u"\\OKU\\duaimages"));
    return html;
}

QString copiedCaption(QString caption) {
    return caption.remove(u"İçerik Penceresi - "_s);
}

}  // namespace lirovan::shell
