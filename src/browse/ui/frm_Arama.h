// frm_Arama, the browse and search window: the book tree on its first tab, the search on its second. The
// widget with its decisions.
#pragma once

#include <QTabWidget>
#include <QTreeView>
#include <functional>

#include "browse/browse_window.h"
#include "browse/ui/book_tree_model.h"
#include "platform/ui/mdi_child.h"

namespace lirovan::browse {

class frm_Arama : public platform::MdiChild {
    Q_OBJECT

  public:
    struct Parts {
        platform::MainFrame& frame;
        ContentView& content;
        const data::Library& library;
        platform::AppFolder folder;
        SearchTabState& search;
        PageCommands& page;
        std::function<bool()> isHelpShown;
        std::function<void()> maximizeMainWindow;
    };
    explicit frm_Arama(Parts parts);
    ~frm_Arama() override;

    /// The second tab's content; it holds a text box named txt_Bul, which the tab gives the focus to.
    void setSearchTab(QWidget* tab);
    /// Fills the tree; the window is in its frame already. `widthBefore`: see BrowseWindow::load().
    const BookTree& load(const TreeProgress& progress, std::optional<platform::Twips> widthBefore);

    /// Opens a topic as a click on it does, and shows it in the tree; false where the tree has none.
    bool openTopic(data::TopicId topic, data::BookId book = {});
    void openNode(qsizetype node);
    /// Makes a node of the tree the current one, what is above it unfolded.
    void showNode(qsizetype node);
    /// The library changed: the tree shows it as it is now, unfolded as it was.
    void reload();

    bool isUnfolded(qsizetype node) const { return tvw_Kitaplar->isExpanded(books_.index(node)); }
    void unfold(qsizetype node) { tvw_Kitaplar->expand(books_.index(node)); }
    Tab tab() const { return Tab(tb_Arama->currentIndex()); }
    BrowseWindow& decisions() { return decisions_; }
    QTreeView& bookTree() { return *tvw_Kitaplar; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class View;

    void buildTree();

    std::unique_ptr<View> view_;
    BrowseWindow decisions_;
    BookTreeModel books_;
    QTabWidget* tb_Arama;
    QTreeView* tvw_Kitaplar;
};

}  // namespace lirovan::browse
