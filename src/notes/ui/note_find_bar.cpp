#include "notes/ui/note_find_bar.h"

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTextEdit>
#include <algorithm>

#include "platform/ui/icons.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace {
// Marks beyond these are not seen any more, and slow the box down.
constexpr qsizetype MostMarks = 3000;
// After a change of the text the hits are found anew, later where that takes long.
constexpr int AgainMs = 200, SlowMs = 30, SlowAgainMs = 2000;
}  // namespace

NoteFindBar::NoteFindBar(QTextEdit& box, QWidget* parent)
    : QToolBar(u"Notta Bul"_s, parent), box_(box), query_(new QLineEdit), count_(new QLabel) {
    setObjectName(u"noteFind"_s);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    query_->setObjectName(u"noteFindText"_s);
    query_->setAccessibleName(u"Notta bul"_s);
    query_->setPlaceholderText(u"Notta bul"_s);
    query_->setClearButtonEnabled(true);
    query_->installEventFilter(this);
    count_->setObjectName(u"noteFindCount"_s);
    count_->setMargin(6);
    addWidget(query_);
    addWidget(count_);
    const auto add = [this](const QString& key, const QString& name, const QString& tip, int by) {
        QAction* action = addAction(platform::icon(key), tip, this, [this, by] { step(by); });
        widgetForAction(action)->setObjectName(name);
        widgetForAction(action)->setAccessibleName(tip);
    };
    add(u"Up"_s, u"noteFindUp"_s, u"Önceki (Shift+F3)"_s, -1);
    add(u"Down"_s, u"noteFindDown"_s, u"Sonraki (F3)"_s, 1);
    addAction(u"Kapat"_s, this, &NoteFindBar::closeBar);
    hide();

    again_.setSingleShot(true);
    again_.setInterval(AgainMs);
    connect(&again_, &QTimer::timeout, this, &NoteFindBar::search);
    connect(query_, &QLineEdit::textChanged, this, [this] {
        search();
        goTo(hits_.empty() ? -1 : 0);
    });
    connect(&box_, &QTextEdit::textChanged, this, [this] {
        if (isVisible()) again_.start();
    });
}

void NoteFindBar::open() {
    options_ = {};
    show();
    const QTextCursor cursor = box_.textCursor();
    const QString selected = cursor.selectedText();
    const bool looksFor = !selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator);
    if (looksFor) {
        // The reader stays where the selection is.
        const QSignalBlocker quiet(query_);
        query_->setText(selected);
    }
    query_->setFocus();
    query_->selectAll();
    search();
    if (!looksFor) return;
    const auto isSelected = [&](const NoteHit& hit) {
        return hit.position - 1 == cursor.selectionStart() && hit.length == selected.size();
    };
    const auto here = std::find_if(hits_.begin(), hits_.end(), isSelected);
    current_ = here == hits_.end() ? -1 : here - hits_.begin();
    showHits();
}

void NoteFindBar::find(const QString& query, const search::SearchOptions& options) {
    options_ = options;
    {
        const QSignalBlocker quiet(query_);
        query_->setText(query);
    }
    show();
    search();
    goTo(hits_.empty() ? -1 : 0);
    box_.setFocus();
}

void NoteFindBar::closeBar() {
    hide();
    again_.stop();
    hits_.clear();
    box_.setExtraSelections({});
    box_.setFocus();
}

void NoteFindBar::search() {
    QElapsedTimer timer;
    timer.start();
    hits_ = hitsInText(box_.toPlainText(), query_->text(), options_);
    again_.setInterval(timer.elapsed() > SlowMs ? SlowAgainMs : AgainMs);
    current_ = std::min<qsizetype>(current_, std::ssize(hits_) - 1);
    showHits();
}

void NoteFindBar::showHits() {
    QList<QTextEdit::ExtraSelection> marks;
    const qsizetype count = std::min<qsizetype>(MostMarks, std::ssize(hits_));
    for (qsizetype i = 0; i < count; ++i) {
        QTextEdit::ExtraSelection mark;
        mark.format.setBackground(QColor(i == current_ ? u"#FFB366"_s : u"#FFFF00"_s));
        mark.cursor = QTextCursor(box_.document());
        const auto begin = static_cast<int>(hits_[static_cast<size_t>(i)].position - 1);
        mark.cursor.setPosition(begin);
        mark.cursor.setPosition(begin + hits_[static_cast<size_t>(i)].length, QTextCursor::KeepAnchor);
        marks.append(mark);
    }
    box_.setExtraSelections(marks);
    count_->setText(query_->text().trimmed().isEmpty() ? QString() : hitState(current_, std::ssize(hits_)));
}

void NoteFindBar::goTo(qsizetype hit) {
    current_ = hit;
    showHits();
    if (hit < 0) return;
    QTextCursor cursor(box_.document());
    const NoteHit& at = hits_[static_cast<size_t>(hit)];
    cursor.setPosition(static_cast<int>(at.position - 1));
    cursor.setPosition(static_cast<int>(at.position - 1 + at.length), QTextCursor::KeepAnchor);
    box_.setTextCursor(cursor);
    box_.ensureCursorVisible();
}

void NoteFindBar::step(int by) {
    if (!isVisible()) return open();
    // The hits are those of a text that has changed meanwhile.
    if (again_.isActive()) again_.stop(), search();
    const qsizetype count = std::ssize(hits_);
    if (count == 0) return;
    // On from the caret, wherever the reader went meanwhile.
    const auto caret =
        static_cast<qint64>(by > 0 ? box_.textCursor().selectionEnd() : box_.textCursor().selectionStart());
    const auto behind = std::lower_bound(hits_.begin(), hits_.end(), caret + 1,
                                         [](const NoteHit& hit, qint64 at) { return hit.position < at; });
    const qsizetype next = by > 0 ? behind - hits_.begin() : behind - hits_.begin() - 1;
    goTo((next + count) % count);
}

bool NoteFindBar::eventFilter(QObject* watched, QEvent* event) {
    if (watched == query_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Escape) return closeBar(), true;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            return step(key->modifiers() & Qt::ShiftModifier ? -1 : 1), true;
    }
    return QToolBar::eventFilter(watched, event);
}

}  // namespace lirovan::notes
