// frm_IcerikN, an extra content window: a copy of a page with a toolbar, a type size and hit navigation of
// its own.
#pragma once

#include <QToolBar>
#include <memory>

#include "browse/page_identity.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"
#include "platform/ui/mdi_child.h"
#include "platform/ui/web_view.h"
#include "search/pages/hit_positions.h"
#include "search/ui/words_strip.h"
#include "shell/ui/command_table.h"

namespace lirovan::shell {

/// A page to be copied into an extra window.
struct CopiedPage {
    QString location;  ///< path text of the page that it is a copy of
    QString html;      ///< its markup, made ready by copiedPage()
    QString caption;
    int fontSize;  ///< of the page, in pixels
    browse::PageIdentity identity;
    std::vector<search::RunWord> words;  ///< of a marked page
    /// Where it is set: shows this page, not waiting for it, in the place of the markup.
    const platform::WebView* same = nullptr;
};

class frm_IcerikN : public platform::MdiChild {
    Q_OBJECT

  public:
    struct Parts {
        platform::MainFrame& frame;
        platform::Dialogs& dialogs;
        platform::Printing& printing;
        std::shared_ptr<platform::WebEngine> engine;
        platform::AppFolder folder;
    };
    /// `number`: the window's number in the main window's list, its tag.
    frm_IcerikN(Parts parts, int number);

    platform::WebView* const wb_Icerik;
    platform::WebView* const wb_Icerik2;
    search::WordsStrip* const words;
    int zoomPoints = 10;            ///< its own zoom, in tenths
    browse::PageIdentity identity;  ///< of what it shows

    /// Shows a page; waits until it is there unless it is the same as another.
    void fill(const CopiedPage& page);
    /// To the page: its first hit, where it has hits.
    void focusPage();

    /// FontSizeN — the page font size in pixels.
    void FontSizeN(int pixels) { fontSize_ = pixels; }
    /// ChangeFontSizeN — larger (+1) or smaller (-1) type.
    void ChangeFontSizeN(int step);

  Q_SIGNALS:
    void notebookWanted(bool paste);  ///< show the notebook; also paste the clipboard's passage into it

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    /// What a button does; without that it is a separator or the spacer.
    struct Button {
        QStringView key;
        void (*run)(frm_IcerikN&) = nullptr;
        bool isSpacer = false;
    };
    static const Button Buttons[];

    void buildToolbar();
    void addButton(const Button& button);
    void addSpacer();
    void activated();

    Parts parts_;
    int fontSize_;
    QToolBar* Toolbar1;
    search::HitPositions hits_;
};

}  // namespace lirovan::shell
