#include "browse/ui/frm_Arama.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/ui/icons.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

/// The window as its decisions see it.
class frm_Arama::View : public BrowseView {
  public:
    View(frm_Arama& window, std::function<void()> maximize)
        : window_(window), maximize_(std::move(maximize)) {}

    platform::TwipsRect place() const override { return window_.place(); }
    void setPlace(const platform::TwipsRect& place) override { window_.setPlace(place); }
    bool isMinimized() const override { return window_.isMinimized(); }
    void maximizeMainWindow() override {
        if (maximize_) maximize_();
    }
    void showTab(Tab tab) override {
        const QSignalBlocker silent(window_.tb_Arama);
        window_.tb_Arama->setCurrentIndex(static_cast<int>(tab));
    }
    void focusSearchBox() override {
        if (auto* box = window_.findChild<QWidget*>(u"txt_Bul"_s)) box->setFocus();
    }
    void setNodeImage(qsizetype node, QStringView) override { window_.books_.imageChanged(node); }

  private:
    frm_Arama& window_;
    std::function<void()> maximize_;
};

frm_Arama::frm_Arama(Parts parts)
    : MdiChild(u"frm_Arama"_s),
      view_(std::make_unique<View>(*this, std::move(parts.maximizeMainWindow))),
      decisions_({parts.frame, *view_, parts.content, parts.library, parts.folder, parts.search, parts.page,
                  std::move(parts.isHelpShown)}),
      tb_Arama(new QTabWidget) {
    setWindowTitle(u"Arama Penceresi"_s);
    setWindowIcon(platform::icon(platform::button::Kitap));

    buildTree();
    tb_Arama->setObjectName(u"tb_Arama"_s);
    tb_Arama->setDocumentMode(true);
    tb_Arama->addTab(tvw_Kitaplar, u"Kitaplar"_s);
    connect(tb_Arama, &QTabWidget::currentChanged, this, [this](int tab) { decisions_.selectTab(Tab(tab)); });

    auto* surface = new QWidget;
    auto* layout = new QVBoxLayout(surface);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(tb_Arama);
    setWidget(surface);

    onActivate = [this] { decisions_.activate(); };
    onResize = [this] { decisions_.resize(); };
    onUnload = [this] { return decisions_.unload(); };
}

frm_Arama::~frm_Arama() = default;

void frm_Arama::setSearchTab(QWidget* tab) {
    tb_Arama->addTab(tab, u"Arama"_s);
}

void frm_Arama::buildTree() {
    tvw_Kitaplar = new QTreeView;
    tvw_Kitaplar->setObjectName(u"tvw_Kitaplar"_s);
    tvw_Kitaplar->setAccessibleName(u"Kitaplar"_s);
    tvw_Kitaplar->setModel(&books_);
    tvw_Kitaplar->setHeaderHidden(true);
    tvw_Kitaplar->setUniformRowHeights(true);
    tvw_Kitaplar->setFrameShape(QFrame::NoFrame);
    tvw_Kitaplar->setEditTriggers(QAbstractItemView::NoEditTriggers);
    // A heading that is longer than the window is wide ends in an ellipsis and is whole in its tooltip.
    tvw_Kitaplar->setTextElideMode(Qt::ElideRight);
    tvw_Kitaplar->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    tvw_Kitaplar->installEventFilter(this);

    connect(tvw_Kitaplar, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { decisions_.NodeClick(books_.node(index)); });
    connect(tvw_Kitaplar, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { decisions_.expanded(books_.node(index)); });
    connect(tvw_Kitaplar, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { decisions_.collapsed(books_.node(index)); });
}

const BookTree& frm_Arama::load(const TreeProgress& progress, std::optional<platform::Twips> widthBefore) {
    const BookTree& tree = decisions_.load(progress, widthBefore);
    books_.setNodes(decisions_.nodes());
    return tree;
}

bool frm_Arama::openTopic(data::TopicId topic, data::BookId book) {
    const qsizetype node = topicNode(decisions_.nodes(), topic, book);
    if (node < 0) return false;
    openNode(node);
    return true;
}

void frm_Arama::openNode(qsizetype node) {
    showNode(node);
    decisions_.NodeClick(node);
}

void frm_Arama::showNode(qsizetype node) {
    const QModelIndex index = books_.index(node);
    tvw_Kitaplar->scrollTo(index);
    tvw_Kitaplar->setCurrentIndex(index);
}

void frm_Arama::reload() {
    const std::size_t count = decisions_.nodes().size();
    std::vector<bool> unfolded(count);
    for (std::size_t n = 0; n < count; ++n)
        unfolded[n] = tvw_Kitaplar->isExpanded(books_.index(qsizetype(n)));
    const qsizetype current = books_.node(tvw_Kitaplar->currentIndex());
    const int top = tvw_Kitaplar->verticalScrollBar()->value();

    const BrowseWindow::Reloaded reloaded = decisions_.reload();
    books_.setNodes(decisions_.nodes());
    for (std::size_t n = 0; n < count; ++n)
        if (unfolded[n]) tvw_Kitaplar->expand(books_.index(reloaded.now[n]));
    if (current >= 0) tvw_Kitaplar->setCurrentIndex(books_.index(reloaded.now[std::size_t(current)]));
    tvw_Kitaplar->verticalScrollBar()->setValue(top);
}

bool frm_Arama::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tvw_Kitaplar && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const qsizetype node = books_.node(tvw_Kitaplar->currentIndex());
        if (node >= 0 && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)) {
            decisions_.NodeClick(node);
            return true;
        }
    }
    return MdiChild::eventFilter(watched, event);
}

}  // namespace lirovan::browse
