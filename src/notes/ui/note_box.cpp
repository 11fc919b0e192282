#include "notes/ui/note_box.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>

#include "notes/ui/system_clipboard.h"
#include "platform/ui/clipboard.h"
#include "platform/ui/rtf_document.h"

namespace lirovan::notes {
namespace {

namespace rtf = platform::rtf;

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

}  // namespace

NoteBox::NoteBox(QWidget* parent) : QTextEdit(parent) {
    // The four colours are meant for white paper, and what is printed is what is seen.
    QPalette paper = palette();
    paper.setColor(QPalette::Base, Qt::white);
    paper.setColor(QPalette::Text, Qt::black);
    setPalette(paper);
    setFont(QFont(rtf::DefaultFont.toString(), rtf::DefaultHalfPoints / 2));
    QTextEdit::document()->setDocumentMargin(12);
    setTabStopDistance(48);
}

rtf::Document NoteBox::document() const {
    return rtf::fromTextDocument(*QTextEdit::document());
}

void NoteBox::setDocument(const rtf::Document& document) {
    // What is typed now goes on in the size that the note has. Set while the box is empty: a long text is
    // laid out anew for it.
    const int halfPoints = rtf::prevailingHalfPoints(document);
    if (halfPoints > 0 && halfPoints / 2.0 != fontSize()) {
        QTextEdit::document()->clear();
        QFont resized = font();
        resized.setPointSizeF(halfPoints / 2.0);
        setFont(resized);
    }
    // Switched on again, the layout does at once what is seen and the rest bit by bit. An edit of that size
    // would be laid out as a whole, and so would the way from a cursor at the end.
    const bool layout = QTextEdit::document()->isLayoutEnabled();
    QTextEdit::document()->setLayoutEnabled(false);
    rtf::fill(*QTextEdit::document(), document);
    setTextCursor(QTextCursor(QTextEdit::document()));
    QTextEdit::document()->setLayoutEnabled(layout);
    if (document.isEmpty()) setCurrentCharFormat({});
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
    QTextCursor cursor = textCursor();
    const bool marked = currentCharFormat().hasProperty(QTextFormat::BackgroundBrush);
    rtf::insert(cursor, document);
    setTextCursor(cursor);
    // A passage may end with a marked hit; what is typed behind it is not part of the hit, and no button
    // would take the mark away.
    if (QTextCharFormat next = currentCharFormat();
        !marked && next.hasProperty(QTextFormat::BackgroundBrush)) {
        next.clearBackground();
        setCurrentCharFormat(next);
    }
    ensureCursorVisible();
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

void NoteBox::keyPressEvent(QKeyEvent* event) {
    QTextEdit::keyPressEvent(event);
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
    if (const std::optional<rtf::Document> text = richTextIn(*source))
        replaceSelection(*text);
    else if (const QString plain = source->text(); !plain.isEmpty())
        textCursor().insertText(plain, currentCharFormat());
    ensureCursorVisible();
}

}  // namespace lirovan::notes
