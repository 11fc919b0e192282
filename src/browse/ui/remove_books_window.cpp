#include "browse/ui/remove_books_window.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <memory>

#include "browse/book_adding.h"
#include "platform/core/database.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

constexpr QSize FirstSize{560, 400};
constexpr int ProgressSteps = 1000;

template <class W>
W* named(W* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

}  // namespace

RemoveBooksWindow::RemoveBooksWindow(QString library, platform::Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      library_(std::move(library)),
      dialogs_(dialogs),
      books_(named(new QListWidget, u"books"_s)),
      state_(named(new QLabel, u"state"_s)),
      progress_(named(new QProgressBar, u"progress"_s)),
      remove_(named(new QPushButton(u"K&aldır..."_s), u"remove"_s)),
      close_(named(new QPushButton(u"&Kapat"_s), u"close"_s)) {
    setObjectName(u"removeBooks"_s);
    setWindowTitle(u"Kitap Kaldır"_s);
    resize(FirstSize);
    books_->setAccessibleName(u"Eklenen kitaplar"_s);
    state_->setTextFormat(Qt::PlainText);
    state_->setWordWrap(true);
    progress_->setMaximum(ProgressSteps);
    progress_->setTextVisible(false);
    progress_->setAccessibleName(u"İlerleme"_s);
    progress_->setMaximumWidth(180);
    auto* row = new QHBoxLayout;
    row->addWidget(state_, 1);
    row->addWidget(progress_);
    row->addWidget(remove_);
    row->addWidget(close_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(books_, 1);
    layout->addLayout(row);

    connect(books_, &QListWidget::currentRowChanged, this, &RemoveBooksWindow::refreshButtons);
    connect(remove_, &QPushButton::clicked, this, &RemoveBooksWindow::removeSelected);
    connect(close_, &QPushButton::clicked, this, &RemoveBooksWindow::reject);
    connect(&work_, &BackgroundWork::progress, this, [this](qint64 done, qint64 total) {
        progress_->setValue(total > 0 ? int(done * ProgressSteps / total) : 0);
    });
    fill();
}

void RemoveBooksWindow::fill() {
    books_->clear();
    added_.clear();
    const auto database = platform::Database::open(library_, platform::OpenMode::ReadOnly);
    auto added =
        database ? data::addedBooks(*database) : Result<std::vector<data::AddedBook>>(database.error());
    if (added)
        added_ = std::move(*added);
    else
        state_->setText(added.error().message);
    for (const data::AddedBook& book : added_) {
        auto* item = new QListWidgetItem(addedBookLine(book), books_);
        item->setToolTip(book.file);
    }
    if (added && added_.empty()) state_->setText(u"Kitaplığa dosyadan eklenmiş kitap yok."_s);
    if (!added_.empty()) books_->setCurrentRow(0);
    refreshButtons();
}

void RemoveBooksWindow::removeSelected() {
    const int row = books_->currentRow();
    if (row < 0 || work_.isRunning()) return;
    const data::AddedBook& book = added_[std::size_t(row)];
    const platform::Message question{removalQuestion(book), u"Kitap Kaldır"_s, platform::Icon::Question,
                                     platform::Buttons::YesNo};
    if (dialogs_.show(question) != platform::Answer::Yes) return;
    state_->setText(u"Kaldırılıyor: %1"_s.arg(book.title));
    auto result = std::make_shared<Result<void>>();
    const auto work = [this, result, id = book.id] {
        const auto database = platform::Database::open(library_, platform::OpenMode::ReadWrite);
        *result = database ? data::removeBook(
                                 *database, id, false,
                                 [this](qint64 done, qint64 total) { return work_.report(done, total); })
                           : Result<void>(database.error());
    };
    work_.start(work, [this, result] {
        progress_->setValue(0);
        state_->clear();
        if (*result) {
            fill();
            Q_EMIT libraryChanged();
        } else if (!work_.wasStopped()) {
            state_->setText(result->error().message);
        }
        refreshButtons();
    });
    refreshButtons();
}

void RemoveBooksWindow::reject() {
    if (work_.isRunning()) return work_.stop();
    QDialog::reject();
}

void RemoveBooksWindow::refreshButtons() {
    remove_->setEnabled(!work_.isRunning() && books_->currentRow() >= 0);
    progress_->setVisible(work_.isRunning());
    close_->setText(work_.isRunning() ? u"&Durdur"_s : u"&Kapat"_s);
}

}  // namespace lirovan::browse
