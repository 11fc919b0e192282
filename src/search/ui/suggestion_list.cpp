#include "search/ui/suggestion_list.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <chrono>
#include <thread>

#include "search/ui/reading_work.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {
// How often the reading of the words looks whether a search runs.
constexpr int PauseMs = 20;
}  // namespace

SuggestionList::SuggestionList(QLineEdit& box, const data::Library& library, const AskedSearches& asked,
                               QWidget* parent)
    : QListWidget(parent), box_(box), library_(library), asked_(asked), changes_(library) {
    setObjectName(u"suggestions"_s);
    setFocusPolicy(Qt::NoFocus);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTextElideMode(Qt::ElideRight);
    setFrameShape(QFrame::StyledPanel);
    hide();
    box_.installEventFilter(this);
    // Only what is typed: a text that is put in by a command asks for nothing.
    connect(&box_, &QLineEdit::textEdited, this, &SuggestionList::offer);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { take(row(item)); });
    pause_.setInterval(PauseMs);
    connect(&pause_, &QTimer::timeout, this, [this] { paused_ = isSearching && isSearching(); });
}

void SuggestionList::readWords() {
    // What runs may be about to write the library.
    if (work_.isRunning() || (isSearching && isSearching())) return;
    if (changes_.any()) current_ = false;
    if (current_) return;
    using Read = std::optional<WordIndex>;
    pause_.start();
    const auto goOn = [this] {
        while (paused_ && work_.report(0, 0)) std::this_thread::sleep_for(std::chrono::milliseconds(PauseMs));
        return work_.report(0, 0);
    };
    const Result<void> started = startReading<Read>(
        work_, library_, [goOn](const data::Library& library) { return WordIndex::build(library, goOn); },
        [this](Result<Read>& read) {
            pause_.stop();
            // Without words the last queries are offered all the same.
            if (read && *read) {
                index_ = std::make_shared<const WordIndex>(std::move(**read));
                current_ = true;
            }
            if (wanted_) showOffered();
        });
    if (!started) pause_.stop();
}

void SuggestionList::offer() {
    wanted_ = true;
    readWords();
    showOffered();
}

void SuggestionList::showOffered() {
    setAccessibleName(u"Öneriler"_s);
    show(suggestionsFor(box_.text(), box_.cursorPosition(), asked_, index_.get()));
}

void SuggestionList::showLastSearches() {
    // Words that are still being read do not take its place.
    wanted_ = false;
    setAccessibleName(u"Son Aramalar"_s);
    show(lastSearches(asked_));
}

void SuggestionList::show(std::vector<Suggestion> offered) {
    offered_ = std::move(offered);
    clear();
    for (const Suggestion& each : offered_) {
        auto* item = new QListWidgetItem(each.shown, this);
        QFont font = this->font();
        font.setItalic(each.isQuery);
        item->setFont(font);
        if (each.isQuery) item->setToolTip(u"Daha önce aranan: "_s + each.shown);
    }
    setCurrentRow(-1);
    setVisible(!offered_.empty());
    if (isVisible()) place();
}

void SuggestionList::place() {
    const QPoint below = box_.mapTo(parentWidget(), QPoint(0, box_.height()));
    const int width = parentWidget()->width() - 2 * below.x();
    const int wanted = sizeHintForRow(0) * count() + 2 * frameWidth();
    setGeometry(below.x(), below.y(), width, std::min(wanted, parentWidget()->height() - below.y()));
    raise();
}

void SuggestionList::take(int row) {
    if (row < 0 || row >= std::ssize(offered_)) return;
    const Suggestion taken = offered_[static_cast<size_t>(row)];
    close();
    box_.setText(taken.query);
    box_.setCursorPosition(static_cast<int>(taken.caret));
    if (taken.options) Q_EMIT optionsTaken(*taken.options);
}

void SuggestionList::close() {
    wanted_ = false;
    hide();
}

bool SuggestionList::takeKey(const QKeyEvent& pressed) {
    const int key = pressed.key();
    if (!isVisible()) {
        if (key == Qt::Key_Down && (box_.text().isEmpty() || pressed.modifiers() & Qt::AltModifier)) {
            showLastSearches();
            setCurrentRow(0);
            return true;
        }
        // Words that come from now on are too late.
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) wanted_ = false;
        return false;
    }
    switch (key) {
        case Qt::Key_Down:
            setCurrentRow(currentRow() + 1 < count() ? currentRow() + 1 : -1);
            return true;
        case Qt::Key_Up:
            setCurrentRow(currentRow() >= 0 ? currentRow() - 1 : count() - 1);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (currentRow() < 0) {
                close();
                return false;
            }
            take(currentRow());
            return true;
        case Qt::Key_Escape:
            close();
            return true;
        default:
            return false;
    }
}

bool SuggestionList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &box_) {
        if (event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent*>(event))) return true;
        if (event->type() == QEvent::FocusOut) close();
    }
    return QListWidget::eventFilter(watched, event);
}

}  // namespace lirovan::search
