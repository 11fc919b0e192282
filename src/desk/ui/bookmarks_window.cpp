#include "desk/ui/bookmarks_window.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

#include "platform/core/file_writer.h"

namespace lirovan::desk {

using namespace Qt::StringLiterals;

namespace {

const QString Title = u"Yer İmleri"_s;

// A long list is searched when typing pauses.
constexpr int TypingPauseMs = 150;

}  // namespace

// ---- The rows ----

void BookmarkModel::show() {
    beginResetModel();
    rows_ = static_cast<int>(list_.count());
    endResetModel();
}

int BookmarkModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int BookmarkModel::columnCount(const QModelIndex&) const {
    return Columns;
}

QVariant BookmarkModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const auto row = static_cast<std::size_t>(index.row());
    const Bookmark& bookmark = list_.at(row);
    QString text;
    switch (index.column()) {
        case Made:
            text = dateText(bookmark.made);
            break;
        case Line:
            text = bookmark.line;
            break;
        case Where:
            text = list_.isLost(row) ? u"(Kitaplıkta yok) "_s + bookmark.where() : bookmark.where();
            break;
        default:
            text = bookmark.place.passage;
    }
    // What looks like markup is shown, not obeyed.
    return role == Qt::ToolTipRole && Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

QVariant BookmarkModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    const QString titles[] = {u"Tarih"_s, u"Satırınız"_s, u"Yer"_s, u"Metin"_s};
    return titles[section];
}

// ---- The window ----

BookmarksWindow::BookmarksWindow(BookmarkList list, platform::Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      list_(std::move(list)),
      dialogs_(dialogs),
      model_(list_),
      search_(new QLineEdit),
      typed_(new QTimer(this)),
      order_(new QComboBox),
      view_(new QTreeView),
      count_(new QLabel) {
    setObjectName(u"yerImleri"_s);
    setWindowTitle(Title);
    view_->setObjectName(u"lstYerImleri"_s);
    view_->setAccessibleName(Title);
    view_->setModel(&model_);
    view_->setRootIsDecorated(false);
    view_->setUniformRowHeights(true);
    view_->setAllColumnsShowFocus(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(view_, &QTreeView::activated, this, &BookmarksWindow::openSelected);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(searchRow());
    layout->addWidget(view_, 1);
    layout->addWidget(count_);
    layout->addWidget(buttons());
    const int letter = fontMetrics().averageCharWidth();
    resize(QSize(letter * 120, letter * 70).boundedTo(screen()->availableSize() * 9 / 10));
    const int widths[] = {19, 26, 36};  // what is left is the passage's
    for (int column = 0; column < BookmarkModel::Passage; ++column)
        view_->setColumnWidth(column, widths[column] * letter);
    show();
    view_->setFocus();
}

QWidget* BookmarksWindow::searchRow() {
    search_->setObjectName(u"txtYerImiAra"_s);
    search_->setClearButtonEnabled(true);
    typed_->setSingleShot(true);
    typed_->setInterval(TypingPauseMs);
    connect(search_, &QLineEdit::textChanged, typed_, qOverload<>(&QTimer::start));
    connect(typed_, &QTimer::timeout, this, [this] {
        list_.search(search_->text());
        show();
    });
    order_->setObjectName(u"cmbYerImiSira"_s);
    order_->addItems({u"Tarihe göre"_s, u"Yere göre"_s});
    connect(order_, &QComboBox::currentIndexChanged, this, [this](int index) {
        list_.sort(index == 0 ? BookmarkList::Order::Date : BookmarkList::Order::Place);
        show();
    });
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    auto* searchLabel = new QLabel(u"A&ra:"_s);
    searchLabel->setBuddy(search_);
    auto* orderLabel = new QLabel(u"S&ıra:"_s);
    orderLabel->setBuddy(order_);
    layout->addWidget(searchLabel);
    layout->addWidget(search_, 1);
    layout->addWidget(orderLabel);
    layout->addWidget(order_);
    return row;
}

QAction* BookmarksWindow::action(const QString& name, const QString& text, const QKeySequence& key,
                                 void (BookmarksWindow::*act)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, act);
    view_->addAction(action);
    actions_ << action;
    return action;
}

QWidget* BookmarksWindow::buttons() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    action(u"ymAc"_s, u"&Aç"_s, {}, &BookmarksWindow::openSelected);
    action(u"ymAdlandir"_s, u"&Yeniden Adlandır..."_s, Qt::Key_F2, &BookmarksWindow::rename);
    action(u"ymSil"_s, u"&Sil"_s, QKeySequence::Delete, &BookmarksWindow::remove);
    action(u"ymGeriAl"_s, u"Silmeyi &Geri Al"_s, QKeySequence::Undo, &BookmarksWindow::undo);
    action(u"ymKaydet"_s, u"&Dışa Aktar..."_s, {}, &BookmarksWindow::writeOut);
    for (QAction* each : actions_) {
        auto* button = new QPushButton(each->text());
        button->setObjectName(u"cmd_"_s + each->objectName());
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, each, &QAction::trigger);
        connect(each, &QAction::enabledChanged, button, &QWidget::setEnabled);
        layout->addWidget(button);
    }
    layout->addStretch();
    auto* close = new QPushButton(u"&Kapat"_s);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    layout->addWidget(close);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        const bool any = view_->selectionModel()->hasSelection();
        for (qsizetype i = 0; i < 3; ++i) actions_[i]->setEnabled(any);
    });
    return row;
}

std::vector<std::size_t> BookmarksWindow::selected() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    return rows;
}

void BookmarksWindow::show() {
    const int before = view_->currentIndex().row();
    model_.show();
    const std::size_t shown = list_.count(), all = list_.countOfAll();
    count_->setText(all == 0       ? u"Henüz yer imi yok. Bir konuda Ctrl+D ile eklenir."_s
                    : shown == all ? u"%1 yer imi"_s.arg(all)
                                   : u"%2 yer iminden %1 tanesi"_s.arg(shown).arg(all));
    if (shown > 0)
        view_->setCurrentIndex(model_.index(std::clamp(before, 0, static_cast<int>(shown) - 1), 0));
    const bool any = view_->selectionModel()->hasSelection();
    for (qsizetype i = 0; i < 3; ++i) actions_[i]->setEnabled(any);
    actions_[3]->setEnabled(list_.canUndo());
    actions_[4]->setEnabled(shown > 0);
}

void BookmarksWindow::settle() {
    if (!typed_->isActive()) return;
    typed_->stop();
    list_.search(search_->text());
    show();
}

void BookmarksWindow::openSelected() {
    settle();
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid()) return;
    chosen_ = list_.at(static_cast<std::size_t>(current.row()));
    accept();
}

void BookmarksWindow::rename() {
    settle();  // nothing changes the rows while the question stands
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid()) return;
    const auto row = static_cast<std::size_t>(current.row());
    const auto line = dialogs_.ask({u"Yer iminin satırı:"_s, Title, list_.at(row).line});
    if (line) tell(list_.rename(row, line->trimmed()));
}

void BookmarksWindow::remove() {
    settle();
    tell(list_.remove(selected()));
}

void BookmarksWindow::undo() {
    tell(list_.undo());
}

void BookmarksWindow::writeOut() {
    settle();
    const QString path = dialogs_.askSavePath(u"Yer İmlerini Dışa Aktar"_s, u"yer-imleri.html"_s,
                                              u"HTML (*.html);;Metin (*.txt)"_s);
    if (path.isEmpty()) return;
    const bool isText = path.endsWith(u".txt", Qt::CaseInsensitive);
    tell(platform::writeWholeFile(path, (isText ? list_.asText() : list_.asHtml()).toUtf8()));
}

void BookmarksWindow::tell(const platform::Result<void>& result) {
    if (!result) dialogs_.show(platform::errorMessage(result.error().message, Title));
    show();
    view_->setFocus();
}

}  // namespace lirovan::desk
