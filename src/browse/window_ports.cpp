#include "browse/window_ports.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

void showGeneratedPage(ContentView& window) {
    window.wb_Icerik().setShown(true);
    window.wb_Icerik2().setShown(false);
}

void showStartPage(ContentView& window, PageCommands& page) {
    page.showPageCommands(ShownPage::None);
    if (!window.isLoaded()) return;
    window.wb_Icerik().setShown(false);
    window.wb_Icerik2().setShown(true);
    window.setCaption(ContentCaption.toString());
}

void showPageFile(ContentView& window, const QString& pathText, const platform::Result<QByteArray>& written) {
    if (written) return window.wb_Icerik().navigate(pathText, *written);
    window.wb_Icerik().navigate(pathText);
    window.wb_Icerik().showNotice(written.error().message);
}

QString contentCaption(const QString& pageName) {
    return ContentCaption.toString() + u" - "_s + pageName;
}

}  // namespace lirovan::browse
