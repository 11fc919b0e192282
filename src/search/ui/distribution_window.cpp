#include "search/ui/distribution_window.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "search/matching/search_query.h"
#include "search/ui/reading_work.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

constexpr int ProgressSteps = 1000;
const QString Title = u"Dağılım"_s;

template <class Widget>
Widget* named(Widget* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

}  // namespace

DistributionWindow::DistributionWindow(const data::Library& library, platform::Dialogs& dialogs,
                                       std::shared_ptr<const RunHits> run, QWidget* parent)
    : QWidget(parent),
      library_(library),
      dialogs_(dialogs),
      run_(std::move(run)),
      book_(named(new QComboBox, u"book"_s)),
      empty_(named(new QCheckBox(u"İsabetsizleri de göster"_s), u"empty"_s)),
      state_(named(new QLabel, u"state"_s)),
      progress_(named(new QProgressBar, u"progress"_s)),
      stop_(named(new QPushButton(u"D&urdur"_s), u"stop"_s)),
      asTable_(named(new QPushButton(u"Tablo"_s), u"asTable"_s)),
      save_(named(new QPushButton(u"Kaydet..."_s), u"save"_s)),
      views_(named(new QStackedWidget, u"views"_s)),
      strips_(named(new DistributionView, u"strips"_s)),
      table_(named(new QTableView, u"table"_s)) {
    setObjectName(u"distribution"_s);
    setWindowTitle(u"Dağılım - "_s + run_->title);
    build();
    connectParts();
    read();
}

void DistributionWindow::build() {
    book_->setAccessibleName(u"Kitap"_s);
    book_->setToolTip(u"Seçilen kitap konu konu gösterilir"_s);
    book_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    book_->setMinimumContentsLength(14);
    book_->addItem(u"Bütün kitaplar"_s, qint64(0));
    state_->setTextFormat(Qt::PlainText);
    progress_->setMaximum(ProgressSteps);
    progress_->setTextVisible(false);
    progress_->setMaximumWidth(120);
    progress_->setAccessibleName(u"İlerleme"_s);
    asTable_->setCheckable(true);
    asTable_->setToolTip(u"Aynı bilgiler satır satır; Enter kitabı ya da ilk isabeti açar"_s);
    strips_->setAccessibleName(u"Dağılım"_s);
    strips_->setAccessibleDescription(u"Aynı bilgiler için “Tablo” düğmesine basın"_s);
    strips_->passage = [this](const HitPlace& hit) { return passageAt(library_, *run_, hit); };
    table_->setModel(&rows_);
    table_->setAccessibleName(u"Dağılım tablosu"_s);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setTabKeyNavigation(false);
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->installEventFilter(this);
    strips_->installEventFilter(this);
    views_->addWidget(strips_);
    views_->addWidget(table_);

    auto* row = new QHBoxLayout;
    row->addWidget(book_, 1);
    row->addWidget(empty_);
    row->addWidget(state_, 1);
    row->addWidget(progress_);
    row->addWidget(stop_);
    row->addWidget(asTable_);
    row->addWidget(save_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addLayout(row);
    layout->addWidget(views_, 1);
    setFocusProxy(views_);
    views_->setFocusProxy(strips_);
}

void DistributionWindow::connectParts() {
    connect(book_, &QComboBox::activated, this, &DistributionWindow::showStrips);
    connect(empty_, &QCheckBox::toggled, this, [this](bool on) { on && !isWhole_ ? read() : showStrips(); });
    connect(stop_, &QPushButton::clicked, this, [this] { work_.stop(); });
    connect(save_, &QPushButton::clicked, this, &DistributionWindow::save);
    connect(asTable_, &QPushButton::toggled, this, [this](bool on) {
        views_->setCurrentIndex(on ? 1 : 0);
        views_->setFocusProxy(views_->currentWidget());
    });
    connect(strips_, &DistributionView::hitWanted, this, &DistributionWindow::hitWanted);
    connect(strips_, &DistributionView::stripWanted, this, &DistributionWindow::chooseStrip);
    connect(table_, &QTableView::doubleClicked, this, &DistributionWindow::openRow);
    connect(&work_, &browse::BackgroundWork::progress, this, [this](qint64 done, qint64 total) {
        progress_->setValue(total > 0 ? static_cast<int>(std::min(done, total) * ProgressSteps / total) : 0);
    });
}

void DistributionWindow::read() {
    if (work_.isRunning()) return;
    const WantedBooks wanted = empty_->isChecked() ? WantedBooks::All : WantedBooks::WithHits;
    using Read = std::optional<Distribution>;
    const Result<void> started = startReading<Read>(
        work_, library_,
        [this, run = run_, wanted](const data::Library& library) {
            return distributionOf(library, *run, wanted,
                                  [this](qint64 done, qint64 all) { return work_.report(done, all); });
        },
        [this, wanted](Result<Read>& read) {
            showState();
            if (!read)
                dialogs_.show(platform::errorMessage(read.error().message, Title));
            else if (*read) {
                isWhole_ = wanted == WantedBooks::All;
                showDistribution(std::move(**read));
            }
        });
    showState(started ? u"Okunuyor..."_s : started.error().message);
}

void DistributionWindow::showDistribution(Distribution distribution) {
    const QVariant chosen = book_->currentData();
    distribution_ = std::move(distribution);
    while (book_->count() > 1) book_->removeItem(1);
    for (const Strip& strip : distribution_.books)
        book_->addItem(strip.name + u" ("_s + formatCount(static_cast<qint64>(strip.hits.size())) + u')',
                       strip.id.value);
    book_->setCurrentIndex(std::max(0, book_->findData(chosen)));
    showStrips();
}

void DistributionWindow::showStrips() {
    const int chosen = book_->currentIndex();
    std::vector<Strip> strips = distribution_.books;
    if (chosen > 0) {
        auto topics = topicStrips(library_, distribution_.books[static_cast<size_t>(chosen - 1)]);
        if (!topics) {
            dialogs_.show(platform::errorMessage(topics.error().message, Title));
            return;
        }
        strips = std::move(*topics);
    }
    if (!empty_->isChecked()) std::erase_if(strips, [](const Strip& strip) { return strip.hits.empty(); });
    rows_.setStrips(chosen > 0 ? u"Konu"_s : u"Kitap"_s, distribution_.lanes, strips);
    strips_->setStrips(distribution_.lanes, std::move(strips));
    if (rows_.rowCount() > 0) table_->setCurrentIndex(rows_.index(0, 0));
    showState();
}

void DistributionWindow::chooseStrip(int row) {
    const Strip& strip = strips_->strips()[static_cast<size_t>(row)];
    if (book_->currentIndex() > 0) {
        if (!strip.hits.empty()) Q_EMIT hitWanted(placeOf(strip, 0));
        return;
    }
    book_->setCurrentIndex(static_cast<int>(strip.book) + 1);
    showStrips();
}

void DistributionWindow::openRow(const QModelIndex& index) {
    if (index.isValid()) chooseStrip(index.row());
}

void DistributionWindow::save() {
    const QString path = dialogs_.askSavePath(u"Dağılımı Kaydet"_s, u"Dağılım.png"_s,
                                              u"PNG resmi (*.png);;SVG çizimi (*.svg)"_s);
    if (path.isEmpty()) return;
    QString title = windowTitle();
    if (book_->currentIndex() > 0) title += u" - "_s + book_->currentText();
    const Result<void> saved = savePicture(path, title, strips_->lanes(), strips_->strips(), strips_->font());
    if (!saved) dialogs_.show(platform::errorMessage(saved.error().message, Title));
}

void DistributionWindow::showState(const QString& text) {
    const bool running = work_.isRunning();
    qint64 hits = 0;
    for (const Strip& strip : strips_->strips()) hits += static_cast<qint64>(strip.hits.size());
    state_->setText(text.isEmpty() ? formatCount(hits) + u" isabet"_s : text);
    progress_->setValue(0);
    progress_->setVisible(running);
    stop_->setVisible(running);
    empty_->setEnabled(!running);
    book_->setEnabled(!running);
    save_->setEnabled(!running && !strips_->strips().empty());
}

bool DistributionWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == table_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return openRow(table_->currentIndex()), true;
    }
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
        book_->currentIndex() > 0) {
        book_->setCurrentIndex(0);
        showStrips();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace lirovan::search
