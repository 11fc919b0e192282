// Between the document model of rich text and Qt's text documents: what the edit box shows, and what a page
// copies.
//
// What fill() put into a document comes back from fromTextDocument() unchanged. Lists and tables of a text
// document come as text; pictures are left out.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "platform/core/rtf/document.h"

class QTextCharFormat;
class QTextCursor;
class QTextDocument;

namespace lirovan::platform::rtf {

Document fromTextDocument(const QTextDocument& document);
/// The selected text; an empty document when nothing is selected.
Document fromSelection(const QTextCursor& cursor);

/// Replaces the whole content. Nothing is left to undo.
void fill(QTextDocument& target, const Document& document);
/// Replaces the selection, as one step to undo. The first paragraph continues the one that the cursor stands
/// in.
void insert(QTextCursor& cursor, const Document& document);
/// The same in pieces of a few milliseconds, after each of which `goOn` is asked. False when that wanted an
/// end: then a part is there. With `format` all text gets that one.
bool insert(QTextCursor& cursor, const Document& document, const std::function<bool()>& goOn,
            const QTextCharFormat* format = nullptr);

/// The format that text typed or inserted with `format` has in a text document.
QTextCharFormat toCharFormat(const CharFormat& format);

/// A page, or a piece of one. Nothing that the HTML names is loaded.
Document fromHtml(const QString& html);
/// The piece of HTML as rich text for the clipboard.
QByteArray htmlToRtf(const QString& html);

}  // namespace lirovan::platform::rtf
