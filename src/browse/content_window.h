// The decisions of frm_Icerik, the content window that the trees show their pages in, and what it has in
// common with the content windows opened beside it.
#pragma once

#include "browse/page_toolbar.h"
#include "browse/window_ports.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"

namespace lirovan::browse {

/// Rewrites the shown page with type of `newSize` pixels instead of `oldSize`. A page that cannot be read
/// stays as it is. `folder`: makes the page's images absolute; null leaves them.
void rewriteWithFontSize(platform::PageView& page, int oldSize, int newSize,
                         const platform::AppFolder* folder);

/// The size of type after a step of "A+" or "A−", in pixels: smaller than 4 nothing can be read.
int steppedFontSize(int size, int step);

/// A content window, shared or extra, became the active one.
void contentActivated(platform::MainFrame& frame);

/// The page view of an extra window got the focus: edit menu items are enabled, "paste" only while the
/// clipboard holds text.
void pageFocused(platform::MainFrame& frame, bool clipboardHasText);

class ContentWindow {
  public:
    ContentWindow(platform::MainFrame& frame, ContentView& view, PageCommands& page,
                  platform::AppFolder folder)
        : frame_(frame), view_(view), page_(page), folder_(std::move(folder)) {}

    /// Form_Load — `browse`: place of frm_Arama, whose minimized state decides where the window stands.
    void load(const platform::TwipsRect& browse, bool browseMinimized);
    /// Form_Activate
    void activate() { contentActivated(frame_); }
    /// Form_Resize — the height of the window; its views fill it.
    void resize();
    /// Form_Unload
    void unload();
    /// Right button on the window's own surface.
    void rightClick();
    void pageFocused(bool clipboardHasText);
    /// wb_Icerik has another page: the start page, which the page's own menu leads to, has no topic's name.
    void pageLoaded();
    void loadStartPage();  ///< at the load, and when it is another one

    /// ChangeFontSize — larger (+1) or smaller (-1) type; the hits of the page are measured anew.
    void ChangeFontSize(int step);

  private:
    platform::MainFrame& frame_;
    ContentView& view_;
    PageCommands& page_;
    platform::AppFolder folder_;
};

}  // namespace lirovan::browse
