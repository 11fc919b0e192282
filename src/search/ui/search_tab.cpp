#include "search/ui/search_tab.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "search/runs/run_tip.h"
#include "text/blanks.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

template <class Widget>
Widget* named(Widget* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

/// The column is as wide as the widest row that has been in view since the tree was last empty: were it
/// always that of the rows in view, the horizontal scroll bar could cover the row that it came for, go, and
/// come again without end.
class ResultView : public QTreeView {
  public:
    void setModel(QAbstractItemModel* model) override {
        QTreeView::setModel(model);
        const auto forgetWhenEmpty = [this, model] {
            if (model->rowCount() == 0) widest_ = 0;
        };
        connect(model, &QAbstractItemModel::rowsRemoved, this, forgetWhenEmpty);
        connect(model, &QAbstractItemModel::modelReset, this, forgetWhenEmpty);
    }

  protected:
    int sizeHintForColumn(int column) const override {
        return widest_ = std::max(widest_, QTreeView::sizeHintForColumn(column));
    }

  private:
    mutable int widest_ = 0;
};

/// As high as what it holds, and where there is no room for that, lower: it scrolls.
class OptionsArea : public QScrollArea {
  public:
    explicit OptionsArea(QWidget* options) {
        setWidget(options);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
        // The window's own ground, not that of lists.
        viewport()->setAutoFillBackground(false);
        options->setAutoFillBackground(false);
    }
    QSize sizeHint() const override { return widget()->sizeHint(); }
    QSize minimumSizeHint() const override {
        return {widget()->minimumSizeHint().width(), 4 * fontMetrics().height()};
    }
};

}  // namespace

SearchTab::SearchTab(const Parts& parts, QWidget* parent)
    : QWidget(parent),
      parts_(parts),
      engine_(parts.library, tree_),
      results_(tree_),
      Label1(named(new QLabel(u"Aranacak &Kelime(ler):"_s), u"Label1"_s)),
      txt_Bul(named(new QLineEdit, u"txt_Bul"_s)),
      cmd_Bul(named(new QPushButton(u"B&ul"_s), u"cmd_Bul"_s)),
      cmdDur(named(new QPushButton(u"D&ur"_s), u"cmdDur"_s)),
      Frame1(named(new QGroupBox(u"Arama Seçenekleri"_s), u"Frame1"_s)),
      chk_BKD(named(new QCheckBox(u"&Büyük / Küçük Harf Duyarlı"_s), u"chk_BKD"_s)),
      chk_TMK(named(new QCheckBox(u"Ya&lnız Tüm Kelime"_s), u"chk_TMK"_s)),
      chk_HPI(named(new QCheckBox(u"&Tüm Kelimeleri İçeren Konular"_s), u"chk_HPI"_s)),
      chk_FindWith(named(new QCheckBox(u"Tümünü Birlikte Ara"_s), u"chk_FindWith"_s)),
      chk_ClearResult(named(new QCheckBox(u"Sonuçları Temizle"_s), u"chk_ClearResult"_s)),
      chk_Ses(named(new QCheckBox(u"&Ses Değişimlerini de Bul"_s), u"chk_Ses"_s)),
      cmd_KelimeKontOlustur(named(new QPushButton(u"Özel Kelimeleri Belirle"_s), u"cmd_KelimeKontOlustur"_s)),
      fraStopper(named(new QFrame, u"fraStopper"_s)),
      cmd_Stop(named(new QPushButton(u"Özet Alma İşlemini Durdur"_s), u"cmd_Stop"_s)),
      tvw_Kitaplar_Bul(named<QTreeView>(new ResultView, u"tvw_Kitaplar_Bul"_s)),
      suggestions_(new SuggestionList(*txt_Bul, parts.library, parts.asked, this)) {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addLayout(searchRow());
    layout->addWidget(new OptionsArea(optionsFrame()));
    layout->addWidget(stopFrame());
    layout->addWidget(tvw_Kitaplar_Bul, 1);
    Label1->setBuddy(txt_Bul);
    engine_.keepTexts();
    setUpTree();
    connectButtons();
}

QLayout* SearchTab::searchRow() {
    auto* row = new QHBoxLayout;
    row->addWidget(txt_Bul, 1);
    row->addWidget(cmd_Bul);
    row->addWidget(cmdDur);
    cmdDur->hide();
    return row;
}

QWidget* SearchTab::optionsFrame() {
    chk_BKD->setToolTip(u"Büyük ve küçük harfler ayrı sayılır"_s);
    chk_TMK->setToolTip(u"Başka bir kelimenin parçası olan yerler sayılmaz"_s);
    chk_HPI->setToolTip(u"Yalnız kelimelerin hepsi geçen konular listelenir"_s);
    chk_FindWith->setToolTip(u"Yazılanlar tek bir ifade olarak aranır"_s);
    chk_ClearResult->setToolTip(u"Yeni aramadan önce eski sonuçlar silinir"_s);
    chk_Ses->setToolTip(u"“kitap” için “kitabı”, “burun” için “burnu” gibi biçimler de bulunur"_s);
    cmd_KelimeKontOlustur->setToolTip(u"Şapkalı yazılan kelimeleri bütün kitaplardan yeniden toplar"_s);
    auto* layout = new QVBoxLayout(Frame1);
    layout->setSpacing(2);
    for (QCheckBox* box : {chk_BKD, chk_TMK, chk_HPI, chk_FindWith, chk_ClearResult, chk_Ses})
        layout->addWidget(box);
    layout->addSpacing(4);
    layout->addWidget(cmd_KelimeKontOlustur);
    return Frame1;
}

QWidget* SearchTab::stopFrame() {
    auto* layout = new QVBoxLayout(fraStopper);
    layout->setContentsMargins({});
    layout->addWidget(cmd_Stop);
    fraStopper->hide();
    return fraStopper;
}

void SearchTab::setUpTree() {
    tvw_Kitaplar_Bul->setModel(&results_);
    results_.rootTip = [this](const ResultNode& root) {
        const SearchRun* run = engine().stores().find(static_cast<int>(root.tagNumber()));
        return run ? runTip(*run, root.text) : root.text;
    };
    tvw_Kitaplar_Bul->setAccessibleName(u"Arama sonuçları"_s);
    tvw_Kitaplar_Bul->setHeaderHidden(true);
    tvw_Kitaplar_Bul->setUniformRowHeights(true);
    tvw_Kitaplar_Bul->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tvw_Kitaplar_Bul->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tvw_Kitaplar_Bul->setContextMenuPolicy(Qt::CustomContextMenu);
    // Long headings are read by scrolling. Measuring more rows than can be seen would slow a growing tree
    // down.
    tvw_Kitaplar_Bul->header()->setStretchLastSection(false);
    tvw_Kitaplar_Bul->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tvw_Kitaplar_Bul->header()->setResizeContentsPrecision(0);
    tvw_Kitaplar_Bul->installEventFilter(this);
    tvw_Kitaplar_Bul->viewport()->installEventFilter(this);
}

void SearchTab::connectButtons() {
    const auto find = [this] {
        suggestions_->close();
        cmd_Bul_Click();
    };
    connect(txt_Bul, &QLineEdit::returnPressed, this, find);
    connect(cmd_Bul, &QPushButton::clicked, this, find);
    connect(suggestions_, &SuggestionList::optionsTaken, this, &SearchTab::setOptions);
    txt_Bul->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(txt_Bul, &QLineEdit::customContextMenuRequested, this, &SearchTab::showBoxMenu);
    suggestions_->isSearching = [this] { return isRunning(); };
    connect(cmdDur, &QPushButton::clicked, this, [this] { cmdDur_Click(); });
    connect(cmd_Stop, &QPushButton::clicked, this, [this] { OzetDurdur_ = true; });
    connect(cmd_KelimeKontOlustur, &QPushButton::clicked, this, [this] {
        suggestions_->stopReading();
        cmd_KelimeKontOlustur_Click();
    });
    // They exclude each other.
    connect(chk_HPI, &QCheckBox::toggled, this, [this](bool on) {
        if (on) chk_FindWith->setChecked(false);
    });
    connect(chk_FindWith, &QCheckBox::toggled, this, [this](bool on) {
        if (on) chk_HPI->setChecked(false);
    });
    connect(tvw_Kitaplar_Bul, &QTreeView::clicked, this,
            [this](const QModelIndex& index) { NodeClick(*ResultTreeModel::node(index)); });
    connect(tvw_Kitaplar_Bul, &QTreeView::customContextMenuRequested, this,
            [this] { resultTreePressed(true); });
    connect(&results_, &ResultTreeModel::opened, tvw_Kitaplar_Bul, &QTreeView::expand);
}

platform::Result<std::shared_ptr<const RunHits>> SearchTab::currentRun() {
    const ResultNode* node = ResultTreeModel::node(tvw_Kitaplar_Bul->currentIndex());
    if (!node && tree_.runCount() > 0) node = &tree_.run(tree_.runCount() - 1);
    return hitsOf(node);
}

int SearchTab::currentAuthor() const {
    const ResultNode* node = ResultTreeModel::node(tvw_Kitaplar_Bul->currentIndex());
    if (node && node->kind == NodeKind::Summary) node = node->parent;
    return node && node->kind == NodeKind::Author ? node->row : -1;
}

bool SearchTab::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tvw_Kitaplar_Bul->viewport() && event->type() == QEvent::MouseButtonPress) {
        if (static_cast<QMouseEvent*>(event)->button() != Qt::RightButton) resultTreePressed(false);
    } else if (watched == tvw_Kitaplar_Bul && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
            if (ResultNode* node = ResultTreeModel::node(tvw_Kitaplar_Bul->currentIndex())) {
                resultTreePressed(false);
                NodeClick(*node);
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SearchTab::offer(const QString& query, const SearchOptions& options) {
    txt_Bul->setText(query);
    setOptions(options);
}

void SearchTab::showBoxMenu(const QPoint& place) {
    QMenu* menu = txt_Bul->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    QAction* last = menu->addAction(u"Son Aramalar"_s, suggestions_, &SuggestionList::showLastSearches);
    last->setEnabled(!parts_.asked.all().empty());
    menu->popup(txt_Bul->mapToGlobal(place));
}

void SearchTab::setOptions(const SearchOptions& options) {
    chk_BKD->setChecked(options.caseSensitive);
    chk_TMK->setChecked(options.wholeWord);
    chk_HPI->setChecked(options.allWords);
    chk_FindWith->setChecked(options.together);
    chk_Ses->setChecked(options.soundChanges);
}

void SearchTab::open(ResultNode& node) {
    const QModelIndex index = results_.index(node);
    tvw_Kitaplar_Bul->setCurrentIndex(index);
    tvw_Kitaplar_Bul->scrollTo(index);
    resultTreePressed(false);
    NodeClick(node);
}

SearchOptions SearchTab::options() const {
    return {.caseSensitive = chk_BKD->isChecked(),
            .wholeWord = chk_TMK->isChecked(),
            .allWords = chk_HPI->isChecked(),
            .together = chk_FindWith->isChecked(),
            .clearResult = chk_ClearResult->isChecked(),
            .soundChanges = chk_Ses->isChecked()};
}

void SearchTab::showStopButton(bool shown) {
    // Also behind a message box that is just closing.
    const bool hadFocus = focusWidget() == cmdDur;
    // Never both at once: the row would jump.
    (shown ? cmd_Bul : cmdDur)->hide();
    (shown ? cmdDur : cmd_Bul)->show();
    if (shown)
        cmdDur->setFocus();
    else if (hadFocus)
        txt_Bul->setFocus();
}

void SearchTab::setNoDropPointer(bool set) {
    for (QWidget* widget : {static_cast<QWidget*>(Frame1), tvw_Kitaplar_Bul->viewport()}) {
        if (set)
            widget->setCursor(Qt::ForbiddenCursor);
        else
            widget->unsetCursor();
    }
}

void SearchTab::bringIntoView(ResultNode& root, bool toTheTop) {
    if (!toTheTop) placeBefore_ = tvw_Kitaplar_Bul->verticalScrollBar()->value();
    results_.showChanges();
    tvw_Kitaplar_Bul->scrollTo(
        results_.index(root), toTheTop ? QAbstractItemView::PositionAtTop : QAbstractItemView::EnsureVisible);
}

void SearchTab::goBackInTree() {
    tvw_Kitaplar_Bul->verticalScrollBar()->setValue(placeBefore_);
}

void SearchTab::follow(ResultNode& book) {
    results_.showChanges();
    const QModelIndex index = results_.index(book);
    tvw_Kitaplar_Bul->setCurrentIndex(index);
    tvw_Kitaplar_Bul->scrollTo(index);
}

// A long list is laid out anew whenever it grows: the longer that takes, the more rows come at once.
void SearchTab::showAndLetEventsRun() {
    constexpr qint64 shareOfRows = 8, seldomMs = 1000;
    const qint64 began = sinceRows_.isValid() ? sinceRows_.elapsed() : nextRows_;
    if (began < nextRows_) {
        QCoreApplication::processEvents();
        return;
    }
    sinceRows_.start();
    results_.showChanges();
    QCoreApplication::processEvents();
    nextRows_ = std::min(sinceRows_.restart() * shareOfRows, seldomMs);
}

}  // namespace lirovan::search
