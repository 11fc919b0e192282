// Links in the edit box: Ctrl and a click, or Enter within one, follow it; what is typed behind one is not
// part of it.
#include <QKeyEvent>
#include <QMouseEvent>

#include "notes/ui/note_box.h"

namespace lirovan::notes {

namespace {

QTextCharFormat formatBehind(QTextCursor cursor) {
    if (cursor.atBlockEnd()) return {};
    cursor.movePosition(QTextCursor::NextCharacter);
    return cursor.charFormat();
}

}  // namespace

QString NoteBox::linkAtCursor() const {
    const QTextCursor cursor = textCursor();
    if (cursor.hasSelection() || cursor.atBlockStart()) return {};
    const QString link = cursor.charFormat().anchorHref();
    return formatBehind(cursor).anchorHref() == link ? link : QString();
}

bool NoteBox::followsLink(const QKeyEvent& event) {
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (!enter || (event.modifiers() & (Qt::ShiftModifier | Qt::AltModifier))) return false;
    const QString link = linkAtCursor();
    if (link.isEmpty()) return false;
    Q_EMIT linkWanted(link);
    return true;
}

bool NoteBox::followsLink(const QMouseEvent& event) {
    if (event.button() != Qt::LeftButton || !(event.modifiers() & Qt::ControlModifier)) return false;
    const QString link = anchorAt(event.position().toPoint());
    if (link.isEmpty()) return false;
    Q_EMIT linkWanted(link);
    return true;
}

void NoteBox::leaveLink() {
    QTextCharFormat format = currentCharFormat();
    if (!format.isAnchor() || textCursor().hasSelection() || !linkAtCursor().isEmpty()) return;
    for (const int property :
         {QTextFormat::IsAnchor, QTextFormat::AnchorHref, QTextFormat::AnchorName, QTextFormat::FontUnderline,
          QTextFormat::TextUnderlineStyle, QTextFormat::ForegroundBrush})
        format.clearProperty(property);
    setCurrentCharFormat(format);
}

void NoteBox::mouseMoveEvent(QMouseEvent* event) {
    QTextEdit::mouseMoveEvent(event);
    const bool leads = (event->modifiers() & Qt::ControlModifier) && !event->buttons() &&
                       !anchorAt(event->position().toPoint()).isEmpty();
    viewport()->setCursor(leads ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

}  // namespace lirovan::notes
