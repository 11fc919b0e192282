// The web view as the program sees it. A port without widgets: the decisions of the windows are written
// against it and tested with a fake; platform/ui holds the real one.
//
// Calls are synchronous. What has to be asked of the page engine is answered within a time limit, and the
// three ways of getting no answer are told apart.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>
#include <vector>

#include "platform/core/page_place.h"
#include "platform/core/printing.h"

namespace lirovan::platform {

enum class Outcome {
    Answered,
    TimedOut,  ///< the page is busy or hangs
    Gone       ///< the view was closed, or its process ended, while waiting
};

template <class T>
struct Reply {
    Outcome outcome = Outcome::Gone;
    std::optional<T> value;  ///< empty although Answered: the page has no such thing

    explicit operator bool() const { return outcome == Outcome::Answered && value.has_value(); }
    T valueOr(T otherwise) const { return value.value_or(std::move(otherwise)); }
};

/// A text in the form of PageView::innerHtml() and what takes its place.
struct Replacement {
    QString from, to;
};

class PageView {
  public:
    virtual ~PageView() = default;

    /// Shows the file at a path text ("<folder>\OKU\oku.html", also behind "file:\"), even if it is shown
    /// already: it may have changed.
    virtual void navigate(const QString& pathText) = 0;
    /// Shows a page, as bytes in windows-1254, in the place of the file at a path text. It is this page that
    /// is loaded again, whatever the file holds by then.
    virtual void navigate(const QString& pathText, const QByteArray& page) = 0;
    /// Waits, letting events run, until the page has loaded (ready state "complete").
    virtual Outcome waitUntilComplete() = 0;
    /// The path text last navigated to.
    virtual QString location() const = 0;

    /// Covers the page with a message until the next navigate().
    virtual void showNotice(const QString& text) = 0;

    virtual void setShown(bool shown) = 0;
    virtual bool isShown() const = 0;
    virtual void setFocus() = 0;

    /// Inner HTML of the root element in the old markup form (docs/ARCHITECTURE.md, "The page view").
    virtual Reply<QString> innerHtml() = 0;
    /// Opens the document, clears it, writes `html` and closes it. Relative names resolve against OKU as
    /// before.
    virtual Outcome rewrite(const QString& html) = 0;
    /// Gives the document, as it stands, what rewriting innerHtml() would after these replacements in turn;
    /// for FONT tags and texts of the head. Its scripts do not run again. False, and nothing done: the page
    /// is soon written anew.
    virtual Reply<bool> replaceInPlace(const std::vector<Replacement>&) { return {Outcome::Answered, false}; }

    virtual Reply<bool> hasElement(QStringView name) = 0;
    virtual Outcome focusElement(QStringView name) = 0;
    /// Distances in pixels from the top of the content cell (docs/ARCHITECTURE.md, "The page view"), or of
    /// the document where there is none, of the elements named `prefix`0, `prefix`1, ... up to the first
    /// number that is missing.
    virtual Reply<std::vector<double>> offsets(QStringView prefix) = 0;
    /// Whether the uppermost of these elements, with the text line that it stands in, is in view while the
    /// page is at its top; false where there is none.
    virtual Reply<bool> isInFirstView(QStringView prefix) = 0;
    virtual Outcome setScrollTop(int pixels) = 0;
    virtual Reply<double> scrollTop() = 0;
    /// Presses of the scroll bar's lower arrow, a text line each.
    virtual Outcome scrollLinesDown(int lines) = 0;

    /// What stands at the upper edge of the view; of the selection, where there is one, when that is asked.
    /// A page that is busy is not waited for long.
    virtual Reply<PagePlace> place(bool /*ofSelection*/ = false) { return {Outcome::Answered, {}}; }
    /// Shows the page as it stood there; `select`: with the passage selected and some lines above it. The
    /// value says whether the passage was found; where it was not, the page stands about there.
    virtual Reply<bool> goTo(const PagePlace&, bool /*select*/ = false) { return {Outcome::Answered, {}}; }
    /// Draws an outline around the mark behind the element `prefix``number`; none where there is no such
    /// element. A style of the view, which the next page does not have.
    virtual void outlineMark(QStringView /*prefix*/, int /*number*/) {}

    /// 1.0: as the page says. Kept over navigation.
    virtual void setZoom(double factor) = 0;
    /// Both are known without asking the page.
    virtual bool hasSelection() const = 0;
    virtual QString selectedText() const = 0;
    /// Puts the selection on the clipboard as plain text, HTML and RTF. Without a selection the clipboard is
    /// kept.
    virtual void copy() = 0;
    /// Prints the page or its selection as shown, and calls `finished` with whether it was printed; it is
    /// called once, later, unless the view goes first.
    virtual void print(const PrintTarget& target, std::function<void(bool printed)> finished) = 0;
};

}  // namespace lirovan::platform
