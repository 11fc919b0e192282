// What every menu item and toolbar button of the main window does, free of widgets.
#pragma once

#include <QStringView>

#include "browse/window_ports.h"
#include "platform/core/dialogs.h"
#include "platform/core/main_frame.h"
#include "platform/core/printing.h"

namespace lirovan::shell {

/// The child windows as the commands see them. "Show" loads a window that is not loaded, and restores one
/// that is minimised.
class Windows {
  public:
    virtual ~Windows() = default;

    // The browse/search window frm_Arama
    virtual void showBrowse() = 0;
    virtual void hideBrowse() = 0;
    /// Switches tb_Arama; shows the tab's tree and boxes and hides the other's.
    virtual void showTab(browse::Tab tab) = 0;
    virtual void sortResults(QStringView key) = 0;  ///< "Kitap", "Konu" or "Oran"

    // The shared content window frm_Icerik
    virtual void showContent() = 0;
    virtual void unloadContent() = 0;
    virtual void focusContentView() = 0;  ///< the window, then its wb_Icerik
    virtual void changeContentFontSize(int step) = 0;
    /// The page that the window shows; null when the window is not loaded.
    virtual platform::PageView* shownPage() = 0;
    virtual void openInNewWindow() = 0;
    virtual void previousHit() = 0;
    virtual void nextHit() = 0;

    /// Zoom of the active content window, shared or extra; 1 is the page as written.
    virtual void setActiveZoom(double factor) = 0;

    // Ctrl+X and Ctrl+C in whatever has the focus
    virtual void sendCut() = 0;
    virtual void sendCopy() = 0;

    // The notebook, the modal windows, the end
    virtual void showNotebook() = 0;
    virtual void pasteIntoNotebook() = 0;  ///< the clipboard's rich text, at the cursor
    virtual void showHelp() = 0;
    virtual void showAbout() = 0;
    virtual void quit() = 0;
};

class Commands {
  public:
    Commands(platform::MainFrame& frame, Windows& windows, platform::Dialogs& dialogs,
             platform::Printing& printing)
        : frame_(frame), windows_(windows), dialogs_(dialogs), printing_(printing) {}

    /// Toolbar1: the key is compared exactly; any other key does nothing.
    void button(QStringView key);
    /// A menu item by its name, compared without regard to case.
    void menu(QStringView item);

  private:
    void toggleBrowse();
    void toggleContent();
    void showBrowseTab(browse::Tab tab, QStringView status);
    void cut();
    void copy();
    void paste();
    void printWith(bool dialog);
    void setPointSize(int points);
    void setStatus(QStringView text);

    platform::MainFrame& frame_;
    Windows& windows_;
    platform::Dialogs& dialogs_;
    platform::Printing& printing_;
    int pointSize_ = 10;  // of mnu_yazi
};

}  // namespace lirovan::shell
