// The windows inside the main window's frame: loads, shows and unloads them, and carries out on them what the
// commands ask.
#pragma once

#include <QMdiArea>
#include <QPointer>
#include <memory>
#include <optional>

#include "browse/content_window.h"
#include "browse/page_toolbar.h"
#include "browse/search_tab_state.h"
#include "browse/ui/frm_Icerik.h"
#include "data/library.h"
#include "notes/ui/notebook.h"
#include "search/hit_positions.h"
#include "search/ui/frm_Arama.h"
#include "search/ui/search_tab.h"
#include "shell/commands.h"
#include "shell/extra_windows.h"
#include "shell/ui/frm_IcerikN.h"
#include "shell/ui/frm_yardim.h"
#include "shell/ui/services.h"

namespace lirovan::shell {

class ChildWindows : public QObject, public Windows {
    Q_OBJECT

  public:
    ChildWindows(QMdiArea& area, platform::MainFrame& frame, const data::Library& library,
                 Services& services);
    ~ChildWindows() override;

    /// Told while the browse window is loaded.
    browse::TreeProgress treeProgress;
    std::function<void()> maximizeMainWindow;
    /// What the pages' own menus offer besides.
    QList<QAction*> pageMenuItems;

    /// Loads the browse window if it is not loaded; not shown yet.
    search::frm_Arama& browseWindow();
    search::frm_Arama* loadedBrowseWindow() const { return browse_; }
    browse::frm_Icerik& contentWindow();
    browse::frm_Icerik* loadedContentWindow() const { return content_; }

    /// The main window was resized: the browse window's width, then both places.
    void arrange(platform::Twips browseWidth);
    /// A search or summary runs, or a page is asked something: nothing may be closed meanwhile.
    bool isBusy() const;
    /// Ends a search or summary at its next step.
    void stopRun();
    /// Closes the notebook; false when it has to stay.
    bool closeNotebook() { return notebook_.confirmClose(); }
    void closeExtraWindows();
    browse::PageCommands& pageCommands() { return pageCommands_; }
    const ExtraWindows<frm_IcerikN>& extraWindows() const { return extra_; }

    // Hit navigation of the shared content window
    void ReOrderPos();
    void SetPosZero();

    void showBrowse() override;
    void hideBrowse() override;
    void showTab(browse::Tab tab) override;
    void sortResults(QStringView key) override;
    void showContent() override;
    void unloadContent() override;
    void focusContentView() override;
    void changeContentFontSize(int step) override;
    platform::PageView* shownPage() override;
    void openInNewWindow() override;
    void previousHit() override;
    void nextHit() override;
    void setActiveZoom(double factor) override;
    void sendCut() override;
    void sendCopy() override;
    void showNotebook() override;
    void pasteIntoNotebook() override;
    void showHelp() override;
    void showAbout() override;
    void quit() override;

  Q_SIGNALS:
    void quitWanted();
    void printDialogWanted();  ///< a page's own print link

  private:
    class ContentPort;

    bool isBrowseMinimized() const { return browse_ && browse_->isMinimized(); }
    bool isSearching() const { return searchTab_ && searchTab_->decisions().isRunning(); }

    void loadBrowse();
    void loadContent();
    /// The item's check mark says whether the window is visible.
    void mark(const platform::MdiChild& window, QStringView item);
    void showHelpTab(browse::Tab tab);
    void followDraggedBorder();
    void addToMenu(platform::WebView& page);
    /// Where the browse window stands, or stood when it was last loaded.
    platform::TwipsRect lastBrowsePlace();
    std::shared_ptr<platform::WebEngine> engine();
    void loadExtra(const CopiedPage& page);
    void nameActive();

    QMdiArea& area_;
    platform::MainFrame& frame_;
    const data::Library& library_;
    Services& services_;
    std::unique_ptr<ContentPort> contentPort_;
    browse::PageCommands pageCommands_;
    browse::ContentWindow contentDecisions_;
    browse::SearchTabState search_;
    QPointer<search::frm_Arama> browse_;
    QPointer<search::SearchTab> searchTab_;
    QPointer<browse::frm_Icerik> content_;
    std::optional<search::HitPositions> hits_;
    ExtraWindows<frm_IcerikN> extra_;
    notes::Notebook notebook_;
    double zoom_ = 1;  // of the shared content window
    QPointer<frm_yardim> help_;
    platform::TwipsRect lastBrowsePlace_;
    std::optional<platform::Twips> closedBrowseWidth_;
};

}  // namespace lirovan::shell
