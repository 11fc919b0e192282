#include "notes/ui/passages.h"

#include <QMimeData>

#include "platform/core/rtf/html_writer.h"
#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"
#include "platform/ui/rtf_document.h"

namespace lirovan::notes {

namespace rtf = platform::rtf;

platform::FormattedText formatted(const rtf::Document& document) {
    if (document.isEmpty()) return {};
    return {document.plainText(), rtf::toHtml(document), rtf::write(document, rtf::Ending::Inline)};
}

ClipboardText textIn(const QMimeData& data) {
    return {platform::rtfIn(data), data.hasHtml() ? data.html() : QString(), data.text()};
}

Passage read(const ClipboardText& text) {
    Passage passage;
    if (text.rtf) passage.text = rtf::read(QByteArrayView(*text.rtf));
    if (passage.text.isEmpty() && !text.html.isEmpty()) passage.text = rtf::fromHtml(text.html);
    if (!passage.text.isEmpty() || text.plain.isEmpty()) return passage;
    return {rtf::plainDocument(text.plain), true};
}

void putOnClipboard(const rtf::Document& document) {
    if (!document.isEmpty()) platform::putOnClipboard(formatted(document));
}

}  // namespace lirovan::notes
