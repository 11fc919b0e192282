#include "browse/ui/add_books_window.h"

#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "platform/core/books/book_files.h"
#include "platform/core/database.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

constexpr QSize FirstSize{820, 560};
constexpr int ProgressSteps = 1000;
const QString BookFilter =
    u"Kitaplar (*.epub *.html *.htm *.xhtml *.md *.markdown *.txt *.docx *.odt *.fb2 *.rtf);;Bütün dosyalar (*)"_s;

template <class W>
W* named(W* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

}  // namespace

AddBooksWindow::AddBooksWindow(const QStringList& paths, QString library, QWidget* parent,
                               platform::BookReaderOptions reader)
    : QDialog(parent),
      library_(std::move(library)),
      reader_(std::move(reader)),
      files_(named(new QListWidget, u"books"_s)),
      chooseFiles_(named(new QPushButton(u"&Dosya Seç..."_s), u"chooseFiles"_s)),
      chooseFolder_(named(new QPushButton(u"K&lasör Seç..."_s), u"chooseFolder"_s)),
      author_(named(new QLineEdit, u"author"_s)),
      title_(named(new QLineEdit, u"title"_s)),
      about_(named(new QLabel, u"about"_s)),
      present_(named(new QLabel, u"present"_s)),
      same_(named(new QComboBox, u"same"_s)),
      outline_(named(new QTreeWidget, u"outline"_s)),
      count_(named(new QLabel, u"count"_s)),
      remarks_(named(new QLabel, u"remarks"_s)),
      state_(named(new QLabel, u"state"_s)),
      progress_(named(new QProgressBar, u"progress"_s)),
      add_(named(new QPushButton(u"&Ekle"_s), u"add"_s)),
      close_(named(new QPushButton(u"&Kapat"_s), u"close"_s)) {
    setObjectName(u"addBooks"_s);
    setWindowTitle(u"Kitap Ekle"_s);
    resize(FirstSize.boundedTo(screen()->availableSize() * 9 / 10));
    files_->setAccessibleName(u"Dosyalar"_s);
    files_->setWordWrap(true);
    files_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    outline_->setAccessibleName(u"İçindekiler"_s);
    setAcceptDrops(true);
    auto* left = new QWidget;
    left->setLayout(sources());
    auto* right = new QWidget;
    right->setLayout(preview());
    auto* halves = new QSplitter;
    halves->addWidget(left);
    halves->addWidget(right);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    layout->addLayout(bottom());

    connect(files_, &QListWidget::currentRowChanged, this, &AddBooksWindow::showCandidate);
    connect(files_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (showing_) return;
        candidates_[std::size_t(files_->row(item))].wanted = item->checkState() == Qt::Checked;
        refreshButtons();
    });
    for (QLineEdit* box : {author_, title_}) connect(box, &QLineEdit::textEdited, this, [this] { edited(); });
    connect(same_, &QComboBox::activated, this, [this] { edited(); });
    connect(outline_, &QTreeWidget::itemChanged, this, [this] { outlineChanged(); });
    connect(add_, &QPushButton::clicked, this, &AddBooksWindow::addWanted);
    connect(close_, &QPushButton::clicked, this, &AddBooksWindow::reject);
    connect(&work_, &BackgroundWork::progress, this, [this](qint64 done, qint64 total) {
        progress_->setValue(total > 0 ? int(done * ProgressSteps / total) : 0);
    });

    connect(chooseFiles_, &QPushButton::clicked, this, &AddBooksWindow::chooseFiles);
    connect(chooseFolder_, &QPushButton::clicked, this, &AddBooksWindow::chooseFolder);

    state_->setText(u"Dosya ya da klasör seçin; bu pencereye de bırakabilirsiniz."_s);
    showCandidate(-1);
    refreshButtons();
    if (!paths.isEmpty()) take(paths);
}

QLayout* AddBooksWindow::sources() {
    auto* choose = new QHBoxLayout;
    choose->addWidget(chooseFiles_);
    choose->addWidget(chooseFolder_);
    auto* layout = new QVBoxLayout;
    layout->setContentsMargins({});
    layout->addWidget(files_, 1);
    layout->addLayout(choose);
    return layout;
}

QLayout* AddBooksWindow::preview() {
    outline_->setHeaderLabels({u"Konu"_s, u"Sözcük"_s});
    outline_->header()->setStretchLastSection(false);
    outline_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    outline_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    outline_->setUniformRowHeights(true);
    same_->addItems({u"Olduğu gibi kalsın"_s, u"Yerine bu konsun"_s, u"Bu da yanına eklensin"_s});
    same_->setAccessibleName(u"Kitaplıkta olan kitap"_s);
    for (QLabel* label : {about_, present_, count_, remarks_, state_}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* form = new QFormLayout;
    form->addRow(u"Ya&zar:"_s, author_);
    form->addRow(u"Kita&p:"_s, title_);
    auto* layout = new QVBoxLayout;
    layout->setContentsMargins({});
    layout->addLayout(form);
    layout->addWidget(about_);
    layout->addWidget(present_);
    layout->addWidget(same_);
    layout->addWidget(outline_, 1);
    layout->addWidget(count_);
    layout->addWidget(remarks_);
    return layout;
}

QLayout* AddBooksWindow::bottom() {
    progress_->setMaximum(ProgressSteps);
    progress_->setTextVisible(false);
    progress_->setAccessibleName(u"İlerleme"_s);
    progress_->setMaximumWidth(180);
    add_->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addWidget(state_, 1);
    row->addWidget(progress_);
    row->addWidget(add_);
    row->addWidget(close_);
    return row;
}

void AddBooksWindow::reject() {
    if (!work_.isRunning()) return QDialog::reject();
    work_.stop();
    waiting_.clear();
    toAdd_.clear();
}

// ---- Which files ----

void AddBooksWindow::take(const QStringList& paths) {
    if (!toAdd_.empty()) return;
    const QStringList files = platform::bookFiles(paths);
    if (files.isEmpty()) state_->setText(u"Burada eklenebilecek bir kitap dosyası yok."_s);
    for (const QString& file : files) waiting_.push_back(file);
    if (!files.isEmpty() && !work_.isRunning()) readNext();
}

void AddBooksWindow::chooseFiles() {
    const QStringList files = QFileDialog::getOpenFileNames(this, u"Kitap Ekle"_s, QString(), BookFilter);
    if (!files.isEmpty()) take(files);
}

void AddBooksWindow::chooseFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, u"Kitap Klasörü Ekle"_s);
    if (!folder.isEmpty()) take({folder});
}

void AddBooksWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (toAdd_.empty() && !platform::draggedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void AddBooksWindow::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    take(platform::draggedFiles(*event->mimeData()));
}

// ---- Reading ----

void AddBooksWindow::readNext() {
    if (waiting_.empty()) {
        if (!candidates_.empty()) state_->clear();
        progress_->setValue(0);
        return refreshButtons();
    }
    auto read = std::make_shared<BookCandidate>();
    read->file = waiting_.front();
    waiting_.pop_front();
    state_->setText(u"Okunuyor: %1"_s.arg(QFileInfo(read->file).fileName()));
    this->read(read);
}

void AddBooksWindow::read(const std::shared_ptr<BookCandidate>& read) {
    const auto work = [this, read] {
        Result<platform::BookContent> book = platform::readBook(
            read->file, reader_, [this](qint64 done, qint64 total) { return work_.report(done, total); });
        std::optional<data::AddedBook> present;
        if (book) {
            const auto database = platform::Database::open(library_, platform::OpenMode::ReadOnly);
            if (database)
                if (auto same = data::sameBook(*database, book->head())) present = std::move(*same);
        }
        *read = candidate(read->file, std::move(book), std::move(present));
    };
    work_.start(work, [this, read] {
        if (work_.wasStopped()) return readNext();
        candidates_.push_back(std::move(*read));
        showing_ = true;
        auto* item = new QListWidgetItem;
        if (candidates_.back().book) item->setCheckState(Qt::Checked);
        files_->addItem(item);
        refreshLine(candidates_.size() - 1);
        showing_ = false;
        if (files_->currentRow() < 0) files_->setCurrentRow(0);
        readNext();
    });
    refreshButtons();
}

// ---- Adding ----

void AddBooksWindow::addWanted() {
    if (work_.isRunning()) return;
    for (std::size_t i = 0; i < candidates_.size(); ++i)
        if (candidates_[i].canBeAdded()) toAdd_.push_back(i);
    addNext();
}

void AddBooksWindow::addNext() {
    if (toAdd_.empty()) {
        progress_->setValue(0);
        state_->setText(report(candidates_, added_));
        if (added_ > 0) Q_EMIT libraryChanged();
        return refreshButtons();
    }
    const std::size_t index = toAdd_.front();
    BookCandidate& adding = candidates_[index];
    state_->setText(u"Ekleniyor: %1"_s.arg(adding.request.title));
    auto result = std::make_shared<std::optional<Result<data::BookAdded>>>();
    const auto work = [this, result, &adding] {
        const auto database = platform::Database::open(library_, platform::OpenMode::ReadWrite);
        if (!database) {
            result->emplace(database.error());
            return;
        }
        result->emplace(
            data::addBook(*database, *adding.book, adding.request,
                          [this](qint64 done, qint64 total) { return work_.report(done, total); }));
    };
    work_.start(work, [this, result, index] {
        wasAdded(index, **result);
        if (!toAdd_.empty()) toAdd_.pop_front();
        addNext();
    });
    refreshButtons();
}

void AddBooksWindow::wasAdded(std::size_t index, const Result<data::BookAdded>& added) {
    BookCandidate& candidate = candidates_[index];
    if (added && added->added) {
        ++added_;
        candidate.outcome = u"eklendi"_s;
    } else if (added) {
        candidate.outcome = u"kitaplıkta var"_s;
    } else if (work_.wasStopped()) {
        candidate.wanted = false;  // it can be chosen again
    } else {
        candidate.failure = added.error().message;
        candidate.outcome = candidate.failure;
    }
    refreshLine(index);
    if (current() == &candidate) showCandidate(files_->currentRow());
}

// ---- What is shown ----

BookCandidate* AddBooksWindow::current() {
    const int row = files_->currentRow();
    return row < 0 ? nullptr : &candidates_[std::size_t(row)];
}

void AddBooksWindow::showCandidate(int row) {
    showing_ = true;
    const BookCandidate* shown = row < 0 ? nullptr : &candidates_[std::size_t(row)];
    const bool readable = shown && shown->book;
    const bool open = readable && shown->outcome.isEmpty();
    author_->setText(readable ? shown->request.author : QString());
    title_->setText(readable ? shown->request.title : QString());
    for (QLineEdit* box : {author_, title_}) box->setEnabled(open);
    about_->setText(readable ? about(shown->book->head()).join(u'\n') : QString());
    about_->setVisible(!about_->text().isEmpty());
    present_->setText(readable && shown->present ? presentText(*shown->present) : QString());
    present_->setVisible(readable && shown->present);
    same_->setVisible(open && shown->present);
    same_->setCurrentIndex(shown ? int(shown->request.same) : 0);
    outline_->clear();
    outline_->setEnabled(open);
    if (readable) fillOutline(*shown);
    count_->setText(readable ? countText(countOutline(*shown->book, shown->request.left)) : QString());
    remarks_->setText(readable ? remarks(*shown->book).join(u'\n') : shown ? shown->failure : QString());
    showing_ = false;
}

void AddBooksWindow::fillOutline(const BookCandidate& candidate) {
    const std::vector<platform::BookEntry>& entries = candidate.book->outline();
    std::vector<QTreeWidgetItem*> items(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const platform::BookEntry& entry = entries[i];
        auto* item =
            new QTreeWidgetItem({entry.title, entry.isTopic() ? QString::number(entry.words) : QString()});
        item->setTextAlignment(1, Qt::AlignRight);
        const bool left = i < candidate.request.left.size() && candidate.request.left[i];
        item->setCheckState(0, left ? Qt::Unchecked : Qt::Checked);
        item->setData(0, Qt::UserRole, qulonglong(i));
        items[i] = item;
        if (entry.parent >= 0 && std::size_t(entry.parent) < i)
            items[std::size_t(entry.parent)]->addChild(item);
        else
            outline_->addTopLevelItem(item);
    }
    outline_->expandToDepth(0);
}

void AddBooksWindow::outlineChanged() {
    BookCandidate* candidate = current();
    if (showing_ || !candidate || !candidate->book) return;
    showing_ = true;
    candidate->request.left.assign(candidate->book->outline().size(), false);
    for (QTreeWidgetItemIterator item(outline_); *item; ++item) {
        QTreeWidgetItem* parent = (*item)->parent();
        // With a level go the topics below it.
        if (parent && parent->checkState(0) == Qt::Unchecked) (*item)->setCheckState(0, Qt::Unchecked);
        candidate->request.left[(*item)->data(0, Qt::UserRole).toULongLong()] =
            (*item)->checkState(0) == Qt::Unchecked;
    }
    count_->setText(countText(countOutline(*candidate->book, candidate->request.left)));
    showing_ = false;
    refreshButtons();
}

void AddBooksWindow::edited() {
    BookCandidate* candidate = current();
    if (!candidate) return;
    candidate->request.author = author_->text();
    candidate->request.title = title_->text();
    candidate->request.same = data::SameBook(same_->currentIndex());
    refreshLine(std::size_t(files_->currentRow()));
}

void AddBooksWindow::refreshLine(std::size_t index) {
    const bool before = std::exchange(showing_, true);
    const BookCandidate& candidate = candidates_[index];
    QListWidgetItem* item = files_->item(int(index));
    item->setText(candidateLine(candidate));
    item->setToolTip(candidate.file);
    if (candidate.book && candidate.outcome.isEmpty())
        item->setCheckState(candidate.wanted ? Qt::Checked : Qt::Unchecked);
    else
        item->setData(Qt::CheckStateRole, {});  // nothing to choose any more
    showing_ = before;
}

void AddBooksWindow::refreshButtons() {
    const bool any = std::any_of(candidates_.begin(), candidates_.end(), [](const BookCandidate& each) {
        return each.canBeAdded() && countOutline(*each.book, each.request.left).topics > 0;
    });
    add_->setEnabled(!work_.isRunning() && any);
    progress_->setVisible(work_.isRunning());
    close_->setText(work_.isRunning() ? u"&Durdur"_s : u"&Kapat"_s);
    for (QWidget* source : {static_cast<QWidget*>(files_), static_cast<QWidget*>(chooseFiles_),
                            static_cast<QWidget*>(chooseFolder_)})
        source->setEnabled(toAdd_.empty());
}

}  // namespace lirovan::browse
