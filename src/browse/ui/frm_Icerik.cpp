#include "browse/ui/frm_Icerik.h"

#include <QMouseEvent>
#include <QVBoxLayout>

#include "browse/ui/find_strip.h"
#include "platform/ui/clipboard.h"
#include "platform/ui/icons.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::WebView;

frm_Icerik::frm_Icerik(ContentWindow& decisions, std::shared_ptr<platform::WebEngine> engine,
                       platform::Dialogs& dialogs)
    : MdiChild(u"frm_Icerik"_s),
      wb_Icerik(new WebView(engine, dialogs)),
      wb_Icerik2(new WebView(std::move(engine), dialogs)),
      decisions_(decisions) {
    setWindowTitle(ContentCaption.toString());
    setWindowIcon(platform::icon(platform::button::Icerik));
    setWidget(pageSurface(wb_Icerik, wb_Icerik2));
    connect(wb_Icerik, &WebView::gotFocus, this,
            [this] { decisions_.pageFocused(platform::clipboardHasText()); });
    for (const WebView* page : {wb_Icerik, wb_Icerik2})
        connect(page, &WebView::printRequested, this, &frm_Icerik::printRequested);
}

void frm_Icerik::mousePressEvent(QMouseEvent* event) {
    MdiChild::mousePressEvent(event);
    if (isSurfaceRightClick(*this, *event)) decisions_.rightClick();
}

QWidget* pageSurface(WebView* page, WebView* startPage) {
    auto* surface = new QWidget;
    auto* layout = new QVBoxLayout(surface);
    layout->setContentsMargins(3, 3, 3, 3);
    layout->setSpacing(0);
    page->setObjectName(u"wb_Icerik"_s);
    page->setAccessibleName(u"Sayfa"_s);
    layout->addWidget(page);
    startPage->setObjectName(u"wb_Icerik2"_s);
    startPage->setAccessibleName(u"Giriş Sayfası"_s);
    layout->addWidget(startPage);
    layout->addWidget(new FindStrip(page, startPage, surface));
    page->setShown(false);
    return surface;
}

bool isSurfaceRightClick(const QMdiSubWindow& window, const QMouseEvent& event) {
    return event.button() == Qt::RightButton && window.widget() &&
           window.widget()->geometry().contains(event.position().toPoint());
}

}  // namespace lirovan::browse
