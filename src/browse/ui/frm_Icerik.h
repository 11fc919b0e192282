// frm_Icerik, the shared content window: shows the pages that the trees and the summary make, and the start
// page. The widget with its decisions; its place in the program's life is the owner's matter.
#pragma once

#include <memory>

#include "browse/content_window.h"
#include "platform/ui/mdi_child.h"
#include "platform/ui/web_view.h"

namespace lirovan::browse {

class frm_Icerik : public platform::MdiChild {
    Q_OBJECT

  public:
    /// `decisions` and `dialogs` outlive the window.
    frm_Icerik(ContentWindow& decisions, std::shared_ptr<platform::WebEngine> engine,
               platform::Dialogs& dialogs);

    platform::WebView* const wb_Icerik;
    platform::WebView* const wb_Icerik2;

    /// The one of the two that is shown.
    platform::WebView& shownPage() { return wb_Icerik->isShown() ? *wb_Icerik : *wb_Icerik2; }

  Q_SIGNALS:
    /// A page asks to be printed: through the print dialog.
    void printRequested();

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    ContentWindow& decisions_;
};

/// A page view and, shown in its place, the start page, in a surface of their own with a margin that takes
/// the right mouse button.
QWidget* pageSurface(platform::WebView* page, platform::WebView* startPage);

/// Whether `event` is a press of the right button on a window's own surface, outside its page views and title
/// bar.
bool isSurfaceRightClick(const QMdiSubWindow& window, const QMouseEvent& event);

}  // namespace lirovan::browse
