#include "browse/window_ports.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

void showGeneratedPage(ContentView& window) {
    window.wb_Icerik().setShown(true);
    window.wb_Icerik2().setShown(false);
}

void showStartPage(ContentView& window) {
    window.wb_Icerik().setShown(false);
    window.wb_Icerik2().setShown(true);
}

QString contentCaption(const QString& pageName) {
    return ContentCaption.toString() + u" - "_s + pageName;
}

}  // namespace lirovan::browse
