#include "search/ui/context_window.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

#include "search/matching/search_query.h"
#include "search/study/hit_export.h"
#include "search/ui/reading_work.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

constexpr int ProgressSteps = 1000;
constexpr int WordCharacters = 16, SourceCharacters = 34;
// More lines than anybody pastes; a file takes them all.
constexpr qsizetype MostCopied = 5000;

template <class Widget>
Widget* named(Widget* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

/// What stands next to the word is what counts: the left context loses its beginning.
class ContextDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = index.column() == ContextModel::Left ? Qt::ElideLeft : Qt::ElideRight;
    }
};

}  // namespace

ContextWindow::ContextWindow(const data::Library& library, platform::Dialogs& dialogs,
                             std::shared_ptr<const RunHits> run, QWidget* parent)
    : QWidget(parent),
      library_(library),
      dialogs_(dialogs),
      run_(std::move(run)),
      model_(library, run_),
      books_(named(new QComboBox, u"books"_s)),
      orders_(named(new QComboBox, u"orders"_s)),
      state_(named(new QLabel, u"state"_s)),
      progress_(named(new QProgressBar, u"progress"_s)),
      stop_(named(new QPushButton(u"D&urdur"_s), u"stop"_s)),
      copy_(named(new QPushButton(u"Kopyala"_s), u"copy"_s)),
      save_(named(new QPushButton(u"Kaydet..."_s), u"save"_s)),
      lines_(named(new QTableView, u"lines"_s)) {
    setObjectName(u"contextList"_s);
    setWindowTitle(u"Bağlam Listesi - "_s + run_->title);
    build();
    fillBooks();
    connectParts();
    showSorted(HitOrder::Found, [this] {
        std::vector<quint32> all(run_->list.hits.size());
        for (size_t i = 0; i < all.size(); ++i) all[i] = static_cast<quint32>(i);
        return all;
    }());
}

void ContextWindow::build() {
    books_->setAccessibleName(u"Kitap"_s);
    books_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    books_->setMinimumContentsLength(14);
    orders_->setAccessibleName(u"Sıralama"_s);
    orders_->setToolTip(u"Sütun başlıklarına basmak da sıralar"_s);
    for (const auto& [name, order] :
         {std::pair(u"Bulunma sırası"_s, HitOrder::Found), std::pair(u"Kaynağa göre"_s, HitOrder::Source),
          std::pair(u"Kelimeye göre"_s, HitOrder::Word),
          std::pair(u"Soldaki kelimeye göre"_s, HitOrder::Left),
          std::pair(u"Sağdaki kelimeye göre"_s, HitOrder::Right)})
        orders_->addItem(name, static_cast<int>(order));
    state_->setTextFormat(Qt::PlainText);
    progress_->setMaximum(ProgressSteps);
    progress_->setTextVisible(false);
    progress_->setMaximumWidth(120);
    progress_->setAccessibleName(u"İlerleme"_s);

    lines_->setModel(&model_);
    lines_->setItemDelegate(new ContextDelegate(lines_));
    lines_->setAccessibleName(u"Bağlam listesi"_s);
    lines_->setSelectionBehavior(QAbstractItemView::SelectRows);
    lines_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lines_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lines_->setShowGrid(false);
    lines_->setWordWrap(false);
    lines_->setTabKeyNavigation(false);
    lines_->setContextMenuPolicy(Qt::CustomContextMenu);
    lines_->installEventFilter(this);
    lines_->verticalHeader()->hide();
    lines_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    lines_->verticalHeader()->setDefaultSectionSize(lines_->fontMetrics().height() + 6);
    QHeaderView* header = lines_->horizontalHeader();
    header->setHighlightSections(false);
    header->setSectionsClickable(true);
    header->setSectionResizeMode(ContextModel::Left, QHeaderView::Stretch);
    header->setSectionResizeMode(ContextModel::Right, QHeaderView::Stretch);
    const int character = lines_->fontMetrics().averageCharWidth();
    header->resizeSection(ContextModel::Word, character * WordCharacters);
    header->resizeSection(ContextModel::Source, character * SourceCharacters);

    auto* row = new QHBoxLayout;
    row->addWidget(books_, 1);
    row->addWidget(orders_);
    row->addWidget(state_, 1);
    row->addWidget(progress_);
    row->addWidget(stop_);
    row->addWidget(copy_);
    row->addWidget(save_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(row);
    layout->addWidget(lines_, 1);
    setFocusProxy(lines_);
}

void ContextWindow::fillBooks() {
    books_->addItem(u"Bütün kitaplar"_s, qint64(0));
    for (const ListedBook& book : booksOf(run_->list)) {
        if (book.book.value == 0) continue;
        const auto row = library_.bookById(book.book);
        const QString title = row && *row ? plainTitle((*row)->title) : QString();
        books_->addItem(title + u" ("_s + formatCount(book.hits) + u')', book.book.value);
    }
}

void ContextWindow::connectParts() {
    connect(books_, &QComboBox::currentIndexChanged, this, &ContextWindow::showHits);
    connect(orders_, &QComboBox::activated, this, &ContextWindow::sort);
    connect(stop_, &QPushButton::clicked, this, [this] { work_.stop(); });
    connect(copy_, &QPushButton::clicked, this, &ContextWindow::copy);
    connect(save_, &QPushButton::clicked, this, &ContextWindow::save);
    connect(lines_, &QTableView::clicked, this, [this](const QModelIndex& index) {
        // With Shift or Ctrl it selects.
        if (QGuiApplication::keyboardModifiers() == Qt::NoModifier) open(index);
    });
    connect(lines_, &QTableView::customContextMenuRequested, this, &ContextWindow::popUpMenu);
    connect(lines_->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        static constexpr HitOrder Orders[] = {HitOrder::Left, HitOrder::Word, HitOrder::Right,
                                              HitOrder::Source};
        orders_->setCurrentIndex(orders_->findData(static_cast<int>(Orders[section])));
        sort();
    });
    connect(&work_, &browse::BackgroundWork::progress, this, [this](qint64 done, qint64 total) {
        progress_->setValue(total > 0 ? static_cast<int>(done * ProgressSteps / total) : 0);
    });
}

template <class T>
void ContextWindow::inBackground(const QString& state, std::function<Result<T>(const data::Library&)> work,
                                 std::function<void(T&)> done) {
    const Result<void> started =
        startReading<T>(work_, library_, std::move(work), [this, done = std::move(done)](Result<T>& result) {
            showState();
            if (result)
                done(*result);
            else
                dialogs_.show(platform::errorMessage(result.error().message, u"Bağlam Listesi"_s));
        });
    showState(started ? state : started.error().message);
}

void ContextWindow::sort() {
    const auto order = static_cast<HitOrder>(orders_->currentData().toInt());
    if (work_.isRunning() || order == order_) return;
    using Hits = std::optional<std::vector<quint32>>;
    inBackground<Hits>(
        u"Sıralanıyor..."_s,
        [this, run = run_, order](const data::Library& library) {
            return orderedHits(library, run->list, order,
                               [this](qint64 done, qint64 all) { return work_.report(done, all); });
        },
        [this, order](Hits& hits) {
            if (hits) showSorted(order, std::move(*hits));
        });
}

void ContextWindow::showSorted(HitOrder order, std::vector<quint32> hits) {
    order_ = order;
    sorted_ = std::move(hits);
    static const QHash<HitOrder, int> sections{{HitOrder::Left, ContextModel::Left},
                                               {HitOrder::Word, ContextModel::Word},
                                               {HitOrder::Right, ContextModel::Right},
                                               {HitOrder::Source, ContextModel::Source}};
    QHeaderView* header = lines_->horizontalHeader();
    header->setSortIndicatorShown(sections.contains(order));
    if (sections.contains(order)) header->setSortIndicator(sections.value(order), Qt::AscendingOrder);
    showHits();
}

void ContextWindow::showHits() {
    model_.setHits(hitsInBook(run_->list, sorted_, {books_->currentData().toLongLong()}));
    if (model_.rowCount() > 0) lines_->setCurrentIndex(model_.index(0, ContextModel::Word));
    showState();
}

void ContextWindow::showState(const QString& text) {
    const bool running = work_.isRunning();
    state_->setText(text.isEmpty() ? formatCount(model_.rowCount()) + u" isabet"_s : text);
    progress_->setValue(0);
    progress_->setVisible(running);
    stop_->setVisible(running);
    orders_->setEnabled(!running);
    // A sort that did not come about left it elsewhere.
    if (!running) orders_->setCurrentIndex(orders_->findData(static_cast<int>(order_)));
    save_->setEnabled(!running && model_.rowCount() > 0);
    copy_->setEnabled(model_.rowCount() > 0);
}

void ContextWindow::open(const QModelIndex& index) {
    if (!index.isValid()) return;
    const quint32 hit = model_.hits()[static_cast<size_t>(index.row())];
    const ListedTopic& topic = run_->list.topics[run_->list.topicOf(hit)];
    Q_EMIT hitWanted({topic.topic, topic.headingRow, run_->list.hits[hit].position});
}

void ContextWindow::copy() {
    QModelIndexList rows = lines_->selectionModel()->selectedRows();
    if (rows.isEmpty()) return;
    if (rows.size() > MostCopied) {
        dialogs_.show(
            platform::noticeMessage(u"Bir defada en çok "_s + formatCount(MostCopied) +
                                        u" satır kopyalanabilir. Daha çoğu için listeyi dosyaya kaydedin."_s,
                                    u"Bağlam Listesi"_s));
        return;
    }
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : std::as_const(rows)) lines += copiedLine(model_.line(row.row()));
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

void ContextWindow::save() {
    if (work_.isRunning() || model_.rowCount() == 0) return;
    const QString path =
        dialogs_.askSavePath(u"Bağlam Listesini Kaydet"_s, u"Bağlam Listesi.csv"_s, HitFilter.toString());
    if (!path.isEmpty()) saveTo(path);
}

void ContextWindow::saveTo(const QString& path) {
    inBackground<bool>(
        u"Kaydediliyor..."_s,
        [this, run = run_, path, hits = model_.hits()](const data::Library& library) {
            HitLines lines(library, run->list);
            return saveHits(lines, hits, u"Bağlam Listesi - "_s + run->title, path,
                            [this](qint64 done, qint64 all) { return work_.report(done, all); });
        },
        [](bool&) {});
}

void ContextWindow::popUpMenu(const QPoint& place) {
    QMenu menu(this);
    menu.addAction(u"Aç"_s, this, [this] { open(lines_->currentIndex()); });
    menu.addAction(u"Kaynağıyla Kopyala"_s, this, &ContextWindow::copy);
    menu.addAction(u"Listeyi Kaydet..."_s, this, &ContextWindow::save)->setEnabled(save_->isEnabled());
    menu.exec(lines_->viewport()->mapToGlobal(place));
}

bool ContextWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lines_ && event->type() == QEvent::ShortcutOverride) {
        // Else the menu's command copies from the page.
        if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) event->accept();
    } else if (watched == lines_ && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy)) return copy(), true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            return open(lines_->currentIndex()), true;
        if (key->key() == Qt::Key_Escape && work_.isRunning()) return work_.stop(), true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace lirovan::search
