#include "notes/ui/note_box.h"

#include <QAbstractEventDispatcher>
#include <QAbstractTextDocumentLayout>
#include <QContextMenuEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <algorithm>

#include "notes/note_text.h"
#include "notes/ui/long_work.h"
#include "notes/ui/passages.h"
#include "platform/core/rtf/bounds.h"
#include "platform/core/rtf/reader.h"
#include "platform/ui/clipboard.h"
#include "platform/ui/rtf_document.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

namespace rtf = platform::rtf;

constexpr double Margin = 12, TabStop = 48;
// Of rich text, HTML or a NotRTF, in units: no reader notices how long that much takes.
constexpr qsizetype ReadAtOnce = 4096;

bool has(const QTextCharFormat& format, Style style) {
    switch (style) {
        case Style::Bold:
            return format.fontWeight() >= QFont::DemiBold;
        case Style::Italic:
            return format.fontItalic();
        case Style::Underline:
            return format.fontUnderline();
    }
    return false;
}

rtf::Rgb colorOf(const QTextCharFormat& format) {
    if (!format.hasProperty(QTextFormat::ForegroundBrush)) return rtf::Black;
    const QColor color = format.foreground().color();
    return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
            static_cast<std::uint8_t>(color.blue())};
}

// What `property` is in the whole selection; nothing when it differs from place to place. Without a
// selection, what it is for text typed at the cursor.
template <class Value>
std::optional<Value> common(const QTextEdit& box,
                            const std::function<Value(const QTextCharFormat&)>& property) {
    const QTextCursor cursor = box.textCursor();
    if (!cursor.hasSelection()) return property(box.currentCharFormat());
    const int begin = cursor.selectionStart(), end = cursor.selectionEnd();
    std::optional<Value> found;
    for (QTextBlock block = box.document()->findBlock(begin); block.isValid() && block.position() < end;
         block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.position() >= end || fragment.position() + fragment.length() <= begin) continue;
            const Value here = property(fragment.charFormat());
            if (found && *found != here) return std::nullopt;
            found = here;
        }
    }
    return found ? found : property(box.currentCharFormat());
}

/// Is it the timer that goes on with a layout, and not the one that tells of it at once?
bool lasts(QObject& layout, int timer) {
    const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(&layout);
    return std::any_of(timers.begin(), timers.end(),
                       [timer](const auto& each) { return each.timerId == timer && each.interval > 0; });
}

/// How many of the first blocks have their lines.
int laidOutBlocks(const QTextDocument& text) {
    int from = 0, to = text.blockCount();
    while (from < to) {
        const int middle = from + (to - from) / 2;
        if (text.findBlockByNumber(middle).layout()->lineCount() > 0)
            from = middle + 1;
        else
            to = middle;
    }
    return from;
}

}  // namespace

NoteBox::NoteBox(QWidget* parent) : QTextEdit(parent) {
    // The four colours are meant for white paper, and what is printed is what is seen.
    QPalette paper = palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    setPalette(paper);
    setFont(QFont(rtf::DefaultFont.toString(), rtf::DefaultHalfPoints / 2));
    QTextEdit::document()->setDocumentMargin(Margin);
    setTabStopDistance(TabStop);
    viewport()->setMouseTracking(true);
    watchLayout();
}

rtf::Document NoteBox::document() const {
    return rtf::fromTextDocument(*QTextEdit::document());
}

// What is typed now goes on in the size that the note has.
void NoteBox::setTypeSize(int halfPoints) {
    if (halfPoints <= 0 || halfPoints / 2.0 == fontSize()) return;
    QFont resized = font();
    resized.setPointSizeF(halfPoints / 2.0);
    setFont(resized);
}

void NoteBox::setDocument(const rtf::Document& document) {
    // Set while the box is empty: a long text is laid out anew for another size.
    QTextEdit::document()->clear();
    setTypeSize(rtf::prevailingHalfPoints(document));
    // Switched on again, the layout does at once what is seen and the rest bit by bit. An edit of that size
    // would be laid out as a whole, and so would the way from a cursor at the end.
    const bool layout = QTextEdit::document()->isLayoutEnabled();
    QTextEdit::document()->setLayoutEnabled(false);
    rtf::fill(*QTextEdit::document(), document);
    setTextCursor(QTextCursor(QTextEdit::document()));
    QTextEdit::document()->setLayoutEnabled(layout);
    if (document.isEmpty()) setCurrentCharFormat({});
}

std::optional<rtf::Document> NoteBox::load(const QString& notRtf) {
    if (notRtf.size() <= ReadAtOnce) {
        setDocument(textOf(notRtf));
        return document();
    }
    struct Made {
        rtf::Document text;
        std::unique_ptr<QTextDocument> document = nullptr;
    };
    const auto made = std::make_shared<Made>();
    LongWork work(*this, u"Not açılıyor..."_s);
    const bool done = work.inBackground([made, notRtf, font = font(), thread = thread()] {
        rtf::Document text = textOf(notRtf);
        rtf::joinLinesBeyond(text);
        made->document = std::make_unique<QTextDocument>();
        made->document->setDefaultFont(font);
        made->document->setLayoutEnabled(false);
        rtf::fill(*made->document, text);
        made->text = rtf::fromTextDocument(*made->document);
        made->document->moveToThread(thread);
    });
    if (!done) return std::nullopt;
    adopt(std::move(made->document));
    setTypeSize(rtf::prevailingHalfPoints(made->text));
    return std::move(made->text);
}

// A document whose layout is still off.
void NoteBox::adopt(std::unique_ptr<QTextDocument> document) {
    const QSignalBlocker quiet(this);  // nothing was changed by the reader
    QTextDocument* made = document.release();
    made->setParent(QTextEdit::document()->parent());  // so the box deletes it when another takes its place
    made->setDocumentMargin(Margin);
    QTextEdit::setDocument(made);
    setTabStopDistance(TabStop);
    made->setLayoutEnabled(true);
    watchLayout();
}

// Left to itself the layout of a long text takes longer and longer turns, up to seconds.
void NoteBox::watchLayout() {
    QTextEdit::document()->documentLayout()->installEventFilter(this);
}

bool NoteBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Timer && watched == QTextEdit::document()->documentLayout() &&
        lasts(*watched, static_cast<QTimerEvent*>(event)->timerId()) && layOutSome())
        return true;
    return QTextEdit::eventFilter(watched, event);
}

// Lays out what comes next, for a few milliseconds; false when all is laid out.
bool NoteBox::layOutSome() {
    constexpr int turnMs = 10, atOnce = 2000;
    const QTextDocument& text = *QTextEdit::document();
    QElapsedTimer turn;
    turn.start();
    while (turn.elapsed() < turnMs) {
        QTextBlock next = text.findBlockByNumber(laidOutBlocks(text));
        if (!next.isValid()) return false;
        for (int length = next.length(); length < atOnce && next.next().isValid(); length += next.length())
            next = next.next();
        text.documentLayout()->blockBoundingRect(next);
    }
    return true;
}

void NoteBox::moveToEnd() {
    // The end of a very long text is not laid out yet; waiting for it would hold up the window.
    constexpr int veryLong = 300'000;
    if (QTextEdit::document()->characterCount() > veryLong) return;
    moveCursor(QTextCursor::End);
    ensureCursorVisible();
}

rtf::Document NoteBox::selection() const {
    return rtf::fromSelection(textCursor());
}

void NoteBox::replaceSelection(const rtf::Document& document) {
    insert(document, nullptr, nullptr);
}

void NoteBox::insert(const rtf::Document& document, const QTextCharFormat* format, LongWork* work) {
    const bool marked = currentCharFormat().hasProperty(QTextFormat::BackgroundBrush);
    if (work) {
        insertLong(document, format, *work);
    } else {
        QTextCursor cursor = textCursor();
        rtf::insert(cursor, document, {}, format);
        setTextCursor(cursor);
    }
    // A passage may end with a marked hit; what is typed behind it is not part of the hit, and no button
    // would take the mark away.
    if (QTextCharFormat next = currentCharFormat();
        !marked && next.hasProperty(QTextFormat::BackgroundBrush)) {
        next.clearBackground();
        setCurrentCharFormat(next);
    }
    ensureCursorVisible();
}

// The layout is off meanwhile: on again, it takes one short turn after the other. The text is only seen again
// once it has come to the cursor, which would have to wait for it otherwise.
void NoteBox::insertLong(const rtf::Document& document, const QTextCharFormat* format, LongWork& work) {
    QTextDocument& text = *QTextEdit::document();
    const QTextCursor before = textCursor();
    const int anchor = before.anchor(), position = before.position();
    QTextCursor cursor = before;
    {
        const QSignalBlocker quiet(this);
        busy_ = true;
        viewport()->setUpdatesEnabled(false);
        const auto layOut = [&](const QTextCursor& upTo) {
            setTextCursor(upTo);
            text.setLayoutEnabled(true);
            while (upTo.block().layout()->lineCount() == 0) {
                if (!work.goOn()) return false;
                layOutSome();
            }
            return true;
        };
        text.setLayoutEnabled(false);
        const auto goOn = [&work] { return work.goOn(); };
        if (!rtf::insert(cursor, document, goOn, format) || !layOut(cursor)) {
            text.setLayoutEnabled(false);
            text.undo();
            text.clearUndoRedoStacks(QTextDocument::RedoStack);
            QTextCursor again(&text);
            again.setPosition(anchor);
            again.setPosition(position, QTextCursor::KeepAnchor);
            layOut(again);
        }
        viewport()->setUpdatesEnabled(true);
        busy_ = false;
    }
    Q_EMIT textChanged();
    Q_EMIT selectionChanged();
}

std::optional<bool> NoteBox::style(Style style) const {
    return common<bool>(*this, [style](const QTextCharFormat& format) { return has(format, style); });
}

void NoteBox::setStyle(Style style, bool on) {
    QTextCharFormat change;
    if (style == Style::Bold) change.setFontWeight(on ? QFont::Bold : QFont::Normal);
    if (style == Style::Italic) change.setFontItalic(on);
    if (style == Style::Underline) change.setFontUnderline(on);
    mergeCurrentCharFormat(change);
}

std::optional<rtf::Rgb> NoteBox::color() const {
    return common<rtf::Rgb>(*this, colorOf);
}

void NoteBox::setColor(rtf::Rgb color) {
    QTextCharFormat change;
    change.setForeground(QColor(color.red, color.green, color.blue));
    mergeCurrentCharFormat(change);
}

double NoteBox::fontSize() const {
    return font().pointSizeF();
}

void NoteBox::setFontSize(double points) {
    QFont resized = font();
    resized.setPointSizeF(points);
    setFont(resized);
    QTextCharFormat size;
    size.setFontPointSize(points);
    QTextCursor all(QTextEdit::document());
    all.select(QTextCursor::Document);
    all.mergeCharFormat(size);
    if (!textCursor().hasSelection()) mergeCurrentCharFormat(size);
}

double NoteBox::firstSize() const {
    QTextCursor first(QTextEdit::document());
    first.movePosition(QTextCursor::NextCharacter);
    return first.charFormat().fontPointSize();
}

// The size commands set all text to one size, and the box's own with it; undone, the text says which it is.
// What puts letters in or takes them out is none of them.
void NoteBox::followUndoneSize(int charactersBefore, double sizeBefore) {
    const double points = firstSize();
    if (QTextEdit::document()->characterCount() != charactersBefore || points == sizeBefore) return;
    setTypeSize(points > 0 ? static_cast<int>(points * 2) : rtf::DefaultHalfPoints);
}

void NoteBox::keyPressEvent(QKeyEvent* event) {
    const bool undoes = event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo);
    if (followsLink(*event)) return;
    if (!event->text().isEmpty() && event->text().front().isPrint()) leaveLink();
    const int characters = QTextEdit::document()->characterCount();
    const double size = undoes ? firstSize() : 0;
    QTextEdit::keyPressEvent(event);
    if (undoes) followUndoneSize(characters, size);
    Q_EMIT inputHandled();
}

void NoteBox::keyReleaseEvent(QKeyEvent* event) {
    QTextEdit::keyReleaseEvent(event);
    Q_EMIT inputHandled();
}

void NoteBox::inputMethodEvent(QInputMethodEvent* event) {
    QTextEdit::inputMethodEvent(event);
    Q_EMIT inputHandled();
}

void NoteBox::mousePressEvent(QMouseEvent* event) {
    // The right button opens the menu of sizes and leaves the selection as it is.
    if (event->button() == Qt::RightButton) {
        menuPlace_ = event->globalPosition().toPoint();
        Q_EMIT rightButtonDown();
        return;
    }
    QTextEdit::mousePressEvent(event);
    Q_EMIT inputHandled();
}

void NoteBox::mouseReleaseEvent(QMouseEvent* event) {
    QTextEdit::mouseReleaseEvent(event);
    if (followsLink(*event)) return;
    Q_EMIT inputHandled();
}

void NoteBox::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() != QContextMenuEvent::Keyboard) return;
    menuPlace_ = viewport()->mapToGlobal(cursorRect().bottomLeft());
    Q_EMIT rightButtonDown();
}

QMimeData* NoteBox::createMimeDataFromSelection() const {
    return platform::toMimeData(formatted(selection())).release();
}

bool NoteBox::canInsertFromMimeData(const QMimeData* source) const {
    return platform::hasText(*source);
}

void NoteBox::insertFromMimeData(const QMimeData* source) {
    ClipboardText text = textIn(*source);
    std::optional<LongWork> work;
    const auto passage = std::make_shared<Passage>();
    if (text.size() <= ReadAtOnce) {
        *passage = read(text);
    } else {
        work.emplace(*this, u"Metin yapıştırılıyor..."_s);
        const qsizetype lines = std::max<qsizetype>(0, rtf::MaxLines - QTextEdit::document()->blockCount());
        if (!work->inBackground([passage, lines, text = std::move(text)] {
                *passage = read(text);
                rtf::joinLinesBeyond(passage->text, lines);
            }))
            return;
    }
    if (passage->text.isEmpty()) return;
    const QTextCharFormat here = currentCharFormat();
    insert(passage->text, passage->isPlain ? &here : nullptr, work ? &*work : nullptr);
}

}  // namespace lirovan::notes
