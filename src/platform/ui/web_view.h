// The page view: the one class that talks to the web engine and the only one that runs script in a page.
//
// What has to be asked of the page is answered while events run, user input excepted, within a time limit. An
// answer that comes after its limit is dropped. The view may be closed while it waits; the call then returns
// Gone and nothing of the view may be touched.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QVariant>
#include <QWidget>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

#include "platform/core/dialogs.h"
#include "platform/core/page_view.h"
#include "platform/ui/web_engine.h"

class QLabel;
class QMenu;
class QPushButton;
class QStackedLayout;
class QWebEngineView;

namespace lirovan::platform {

class ContentPage;

class WebView : public QWidget, public PageView {
    Q_OBJECT

  public:
    /// `dialogs` answers the page's own message boxes and must outlive the view. The owner sets the object
    /// name and the accessible name.
    WebView(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, QWidget* parent = nullptr);
    ~WebView() override;

    /// How long a page may leave a question unanswered, or be incomplete once it has arrived (large pages
    /// have more time by their size), and how long the whole way to a page may take, the start of a process
    /// included.
    void setTimeLimits(std::chrono::milliseconds answer, std::chrono::milliseconds load);

    void navigate(const QString& pathText) override;
    void navigate(const QString& pathText, const QByteArray& page) override;
    /// Shows the page that another view was given, with what was changed in place there.
    void showSameAs(const WebView& other);
    /// The view was given a page at the location that takes seconds to lay out.
    bool isLarge() const;
    /// Shows markup in the place of the file at a path text. Picture addresses "<folder>\OKU\..." are
    /// followed.
    void navigateToText(const QString& pathText, const QString& html);
    Outcome waitUntilComplete() override;
    QString location() const override { return location_; }

    void showNotice(const QString& text) override { showNotice(text, false); }

    void setShown(bool shown) override { setVisible(shown); }
    bool isShown() const override { return !isHidden(); }
    void setFocus() override;

    Reply<QString> innerHtml() override;
    Outcome rewrite(const QString& html) override;
    Reply<bool> replaceInPlace(const std::vector<Replacement>& changes) override;

    Reply<bool> hasElement(QStringView name) override;
    Outcome focusElement(QStringView name) override;
    /// The element of that name stands at the top of the view.
    Outcome scrollTo(QStringView name);
    Reply<std::vector<double>> offsets(QStringView prefix) override;
    Reply<bool> isInFirstView(QStringView prefix) override;
    Outcome setScrollTop(int pixels) override;
    Reply<double> scrollTop() override;
    Outcome scrollLinesDown(int lines) override;

    Reply<PagePlace> place(bool ofSelection) override;
    Reply<bool> goTo(const PagePlace& place, bool select) override;

    void outlineMark(QStringView prefix, int number) override;
    /// Marks every `query` on the page, by the rules of text::TextFinder, and goes to the first one below the
    /// upper edge of the view; foundChanged() tells while it works. Nothing but blanks ends it. The next page
    /// is looked through likewise.
    void findOnPage(const QString& query);
    /// To the next (+1) or previous (-1) of them, round the page.
    void stepFound(int step);
    void setZoom(double factor) override;
    bool hasSelection() const override;
    QString selectedText() const override;
    void copy() override;
    /// The selection without the marks of a search, and below it `source` as a link to `address`.
    void copyWithSource(const QString& source, const QString& address);
    void print(const PrintTarget& target, std::function<void(bool printed)> finished) override;

  Q_SIGNALS:
    /// The page got the input focus.
    void gotFocus();
    void selectionChanged();
    /// Another page has been loaded.
    void loaded();
    /// `count` were found so far; the one gone to is the `current`th, from 1; 0: none yet.
    void foundChanged(int count, int current, bool complete);
    /// Ctrl and the wheel: a step larger (+1) or smaller (-1).
    void zoomWanted(int step);
    /// The page (its print link) or the view's own menu wants to be printed.
    void printRequested();
    /// A link to a topic of the library, at a place of its page where `place` is not empty.
    void topicWanted(qint64 topic, const QString& place);
    /// The heading of a summary's passage was clicked; `passage` counts from 0.
    void passageWanted(int passage);
    /// The view's own menu is about to open; the owner may add to it.
    void menuOpening(QMenu* menu);
    /// navigate() was given the installer on the update server.
    void installerRequested(const QUrl& url);
    /// The page's process ended, or the view is about to go: whoever waits gets no answer.
    void gone();
    /// The page went, with its process, for one that is still to come.
    void givenUp();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Question;
    struct Finding;
    enum class Wait {
        Usual,
        BySize,       ///< a large page has more time
        UntilLoaded,  ///< likewise, but no longer than until a page has been loaded
        Passing       ///< a moment; that the page does not answer by then says nothing of it
    };
    enum class Load {
        Idle,      ///< the page is asked for its state
        Running,   ///< navigate() was called and has not ended
        Complete,  ///< navigate() has ended well
        Failed
    };

    void makePage();
    /// Gives the page on view the look of the engine's pages.
    void takeLook();
    bool zoomsWith(QEvent& event);
    void findAgain();
    void findMore();
    void searchPiece(const QVariantMap& piece);
    /// Evaluates an expression in passing; `then` gets its value while the finding goes on.
    void askFinding(const QString& expression, std::function<void(const QVariant&)> then);
    void give(GivenPage page);
    void prepareForSize();
    /// Loads the page at the location: the one that the view was given, where it was.
    void load();
    void loadAgain();
    QUrl address() const;
    /// What loading again shows in the place of the file.
    void keepText(const QString& file, const QString& html);
    /// The page before has gone.
    bool hasArrived() const;
    void lookForArrival();
    /// Covers a page that is too busy with itself to be seen, until it has time.
    void lookForSigns();
    /// Shows the page at the location in a new process.
    void giveUp();
    std::chrono::milliseconds patience() const;
    void showPage();
    void showNotice(const QString& text, bool offerReload);
    void showContextMenu(const QPoint& place);
    void selectAll();
    void loadEnded(bool failed);
    void makeChanges();
    /// Evaluates an expression over `lirovan`, the page tools (page_tools.js). An expression that fails has
    /// no value.
    Reply<QVariant> ask(const QString& expression, Wait wait = Wait::Usual);
    Outcome tell(const QString& expression) { return ask(expression).outcome; }
    /// Lets events run until the question is closed, its limit is over or the view is gone.
    Outcome waitFor(Question& question, std::chrono::milliseconds limit);
    /// Lets events run for `time` or until a page has been loaded.
    Outcome pause(std::chrono::milliseconds time);
    Reply<QString> selectionHtml(bool withMarks = true);
    void printSelection(const PrintTarget& target, std::function<void(bool)> finished);
    void printWhole(const PrintTarget& target, std::function<void(bool)> finished);
    /// Hands the page over to a printing under way, which ends it.
    void leaveToPrinting();

    std::shared_ptr<WebEngine> engine_;
    Dialogs& dialogs_;
    const int number_;  ///< among the engine's views
    QStackedLayout* stack_;
    QWebEngineView* view_;
    QWidget* notice_;
    QLabel* noticeText_;
    QPushButton* reload_;
    QPointer<ContentPage> page_;
    QString location_;
    QStringList changes_;      ///< made in place since the page was given; made again when it is loaded again
    bool showsLarge_ = false;  ///< the page on view takes long to let go
    double zoom_ = 1.0;
    int wheelTurned_ = 0;
    std::unique_ptr<Finding> finding_;
    int findRun_ = 0;  ///< answers to an earlier page or query are dropped
    Load load_ = Load::Idle;
    bool loadIsAlone_ = false;
    bool processEnded_ = false;
    bool loadsAfterEnd_ = false;  ///< the process is being ended for the next page
    QTimer arrival_;
    QTimer signs_;
    bool isCovered_ = false;
    bool isPrinting_ = false;
    std::vector<std::function<void()>> waitingPrints_;
    bool hangs_ = false;  ///< a question is unanswered beyond its limit
    std::chrono::milliseconds answerLimit_{1'800};
    std::chrono::milliseconds loadLimit_{30'000};
};

}  // namespace lirovan::platform
