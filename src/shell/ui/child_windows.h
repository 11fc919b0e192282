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
#include "browse/ui/frm_Arama.h"
#include "browse/ui/frm_Icerik.h"
#include "data/library.h"
#include "desk/bookmarks.h"
#include "desk/history.h"
#include "desk/session.h"
#include "notes/ui/notebook.h"
#include "search/matching/library_changes.h"
#include "search/pages/hit_positions.h"
#include "search/ui/search_tab.h"
#include "search/ui/words_strip.h"
#include "shell/extra_windows.h"
#include "shell/ui/frm_IcerikN.h"
#include "shell/ui/frm_yardim.h"
#include "shell/ui/services.h"

namespace lirovan::shell {

class PageLooks;

class ChildWindows : public QObject {
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
    browse::frm_Arama& browseWindow();
    browse::frm_Arama* loadedBrowseWindow() const { return browse_; }
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

    // What the commands do. "Show" loads a window that is not loaded, and restores one that is minimised.
    platform::MainFrame& frame() { return frame_; }
    void showBrowse();
    void showBrowseTab(browse::Tab tab);
    void toggleBrowse();
    void showContent();
    void bringContentForward();
    void toggleContent();
    void changeContentFontSize(int step);
    /// Zoom of the active content window, shared or extra: a step up or down, 0 for the page as written.
    void stepZoom(int step);
    void restoreZoom();      ///< as it was when the program was closed
    void findOnPage();       ///< the strip under the page of the active content window
    void copyWithSource();   ///< the selection of the active content window, and a line that leads back
    void placeSideBySide();  ///< the content window and the newest extra window
    void toggleWords();      ///< the strip of the run's words
    /// A link of a note: to a place in a topic, or to a foreign address, which is asked about.
    void openLink(const QString& address);
    PageLooks& looks() { return *looks_; }
    void openInNewWindow();
    void previousHit();
    void nextHit();
    void printPageDirectly();
    void printPageWithDialog();
    void sortResults(search::ListOrder order);
    void cut();    ///< Ctrl+X in whatever has the focus
    void copy();   ///< the selection of the shared content window
    void paste();  ///< the clipboard into the notebook
    void showNotebook();
    void chooseBooks();                       ///< asks for files and adds them
    void addBooks(const QStringList& paths);  ///< files and folders, with a preview
    void removeBooks();
    void openLibrary();  ///< asks for another application folder and opens it in a program of its own
    void openLibrary(const QString& folder);
    // The reading desk; `step` is 1 forward and -1 back.
    void goInHistory(int step);
    void stepTopic(int step);  ///< the neighbour in book order
    void stepHit(int step);    ///< as nextHit() and previousHit(), and on into the next found topic
    void showInBookTree();     ///< the topic that is shown
    void addBookmark();        ///< at the selection, or where the page stands
    void showBookmarks();
    void showContexts();      ///< the hits of the current run in their contexts
    void saveSummary();       ///< of the current run: of the author that the result tree stands on, or of all
    void showDistribution();  ///< where in the books they lie
    std::function<void()> toggleContinues;  ///< "Açılışta Kaldığım Yerden Sürdür"

    // The session
    search::AskedSearches asked;
    void intoSession(desk::Session& session);
    /// What was there comes back, or is offered by a strip.
    void beginWith(const desk::Session& session);
    /// A link: opens the topic as a click in the book tree does, at a place of its page.
    void openTopic(data::TopicId topic, const QString& place);
    void followLibrary();  ///< books came or went: tree and selector show it
    void followOthers();   ///< the same, where another program changed the library
    void showHelp();
    void showAbout();
    void quit();

  Q_SIGNALS:
    void quitWanted();
    void libraryChanged();  ///< books came or went

  private:
    class ContentPort;

    bool isBrowseMinimized() const { return browse_ && browse_->isMinimized(); }
    bool isSearching() const { return searchTab_ && searchTab_->isRunning(); }

    void loadBrowse();
    void loadContent();
    /// The item's check mark says whether the window is visible.
    void mark(const platform::MdiChild& window, QStringView item);
    void showHelpTab(browse::Tab tab);
    void followDraggedBorder();
    void hideBrowse();
    void showTab(browse::Tab tab);
    void focusContentView();
    platform::PageView* shownPage();  ///< null when the content window is not loaded
    void uncoverContent();
    void addWordsStrip();
    std::vector<search::RunWord> pageWords() const;  ///< of the shared content window
    void addToMenu(platform::WebView& page);
    /// What all pages of content windows have: zoom, menu, links.
    void equip(platform::WebView& page);
    void followTopics(platform::WebView& page);
    void openPassage(const browse::PageIdentity& summary, int passage);
    /// Where the browse window stands, or stood when it was last loaded.
    platform::TwipsRect lastBrowsePlace();
    std::shared_ptr<platform::WebEngine> engine();
    platform::Result<bool> isLibraryThere(const QString& folder);
    void chooseFirstPage();
    void loadExtra(const CopiedPage& page);
    /// Null, and a message, where nothing was searched yet.
    std::shared_ptr<const search::RunHits> currentRun();
    void openHit(const search::SearchRun& run, const search::HitPlace& hit);
    void showBeside(QWidget* window, const QString& name);
    void openSameInNewWindow();
    void nameActive();
    /// The keys of a content window are its page's, however the window became active.
    void focusActivePage();

    void aboutToShow(const browse::PageIdentity& page);
    /// Where the page that is shown stands goes into the history.
    void notePlace();
    bool showAgain(const desk::History::Entry& entry);
    /// False where the page is not there any more.
    bool showPage(const browse::PageIdentity& page);
    bool showResult(const browse::PageIdentity& page);
    void putInFront(browse::Tab tab);
    /// A topic at a place; false where it is not there any more.
    bool openPlace(data::TopicId topic, data::BookId book, const platform::PagePlace& place, bool select);
    void openBookmark(const desk::Bookmark& bookmark);
    /// Whether it is worth trying again: a damaged file was set aside.
    bool tellReaderFile(const platform::Error& error);
    void restore(const desk::Session& session);
    void continueAt(const desk::LastPage& page);
    void offerToContinue(const desk::LastPage& page);
    qsizetype shownNode() { return nodeOf(shown_); }
    qsizetype nodeOf(const browse::PageIdentity& page);  ///< in the book tree; -1: it is no topic

    QMdiArea& area_;
    platform::MainFrame& frame_;
    const data::Library& library_;
    Services& services_;
    std::unique_ptr<browse::ContentView> contentPort_;
    browse::PageCommands pageCommands_;
    browse::ContentWindow contentDecisions_;
    browse::SearchTabState search_;
    QPointer<browse::frm_Arama> browse_;
    QPointer<search::SearchTab> searchTab_;
    QPointer<browse::frm_Icerik> content_;
    std::optional<search::HitPositions> hits_;
    desk::History history_;
    browse::PageIdentity shown_;  ///< in the shared content window
    QPointer<QWidget> continueStrip_;
    ExtraWindows<frm_IcerikN> extra_;
    notes::Notebook notebook_;
    std::unique_ptr<PageLooks> looks_;
    QPointer<search::WordsStrip> words_;
    double zoom_ = 1;  // of the shared content window
    int points_ = 10;  // the same, as it is kept
    QPointer<frm_yardim> help_;
    platform::TwipsRect lastBrowsePlace_;
    std::optional<platform::Twips>
        restoredBrowseWidth_;  ///< of the session, in the place of the laid-down one
    std::optional<platform::Twips> closedBrowseWidth_;
    bool startsEmpty_ = false;
    search::LibraryChanges changes_;
};

}  // namespace lirovan::shell
