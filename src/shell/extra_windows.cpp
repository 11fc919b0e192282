#include "shell/extra_windows.h"

#include "browse/font_size.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

QString copiedPage(QString html, const platform::AppFolder& folder) {
    html.remove(u"<DIV class=menuitems url=\""_s + folder.pageText(u"\\OKU\\VQ.htm") +
                u"\">Giriş Sayfası</DIV>\r\n<HR>"_s);
    return browse::withAbsoluteImages(std::move(html), folder);
}

QString copiedCaption(QString caption) {
    return caption.remove(u"İçerik Penceresi - "_s);
}

}  // namespace lirovan::shell
