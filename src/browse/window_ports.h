// What the decisions of the browse window and of the content windows need of their widgets.
#pragma once

#include <QString>
#include <QStringView>

#include "browse/page_identity.h"
#include "browse/page_toolbar.h"
#include "platform/core/page_view.h"
#include "platform/core/result.h"
#include "platform/core/twips.h"

namespace lirovan::browse {

/// Tabs of tb_Arama.
enum class Tab { Books = 0, Search = 1 };

/// The widget of frm_Arama.
class BrowseView {
  public:
    virtual ~BrowseView() = default;

    virtual platform::TwipsRect place() const = 0;
    /// Moves and sizes the window; the place that it has already is no change.
    virtual void setPlace(const platform::TwipsRect& place) = 0;
    virtual bool isMinimized() const = 0;
    virtual void maximizeMainWindow() = 0;

    /// Books: tvw_Kitaplar alone. Search: txt_Bul, Label1 and tvw_Kitaplar_Bul.
    virtual void showTab(Tab tab) = 0;
    virtual void focusSearchBox() = 0;
    /// `node`: index among BrowseWindow::nodes().
    virtual void setNodeImage(qsizetype node, QStringView image) = 0;
};

/// The widget of frm_Icerik or frm_IcerikN.
class ContentView {
  public:
    virtual ~ContentView() = default;

    virtual platform::TwipsRect place() const = 0;
    virtual void setPlace(const platform::TwipsRect& place) = 0;
    virtual bool isMinimized() const = 0;
    virtual bool isMaximized() const = 0;
    /// False: it was closed. What is asked of it loads it again.
    virtual bool isLoaded() const = 0;
    /// Makes the window visible; one that was closed is loaded again, one that was minimised restored. The
    /// active window stays.
    virtual void show() = 0;
    virtual QString caption() const = 0;
    virtual void setCaption(const QString& caption) = 0;

    /// Another page is about to be shown; the one before stands as it was read. Events may run.
    virtual void aboutToShow(const PageIdentity&) {}

    virtual platform::PageView& wb_Icerik() = 0;   ///< generated pages
    virtual platform::PageView& wb_Icerik2() = 0;  ///< the start page
};

/// Shows the one view of a content window and hides the other; the start page also takes the last page's name
/// out of the caption and its commands off the toolbar. A closed window is not loaded for the start
/// page: it has it when it is opened again.
void showGeneratedPage(ContentView& window);
void showStartPage(ContentView& window, PageCommands& page);

/// Shows the page file at `pathText`. Where writing it failed, that file holds an earlier page: the reason
/// stands over it.
void showPageFile(ContentView& window, const QString& pathText, const platform::Result<QByteArray>& written);

/// Caption of a content window that shows nothing yet, and what a shown page's name is put behind.
inline constexpr QStringView ContentCaption = u"İçerik Penceresi";
QString contentCaption(const QString& pageName);  ///< "İçerik Penceresi - " and the name

}  // namespace lirovan::browse
