#include "notes/ui/system_clipboard.h"

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

std::optional<rtf::Document> richTextIn(const QMimeData& data) {
    rtf::Document text;
    if (const std::optional<QByteArray> bytes = platform::rtfIn(data))
        text = rtf::read(QByteArrayView(*bytes));
    if (text.isEmpty() && data.hasHtml()) text = rtf::fromHtml(data.html());
    return text.isEmpty() ? std::nullopt : std::optional(std::move(text));
}

void SystemClipboard::put(const rtf::Document& document) {
    // Copying nothing leaves the clipboard as it is.
    if (!document.isEmpty()) platform::putOnClipboard(formatted(document));
}

bool SystemClipboard::hasText() const {
    return platform::clipboardHasText();
}

}  // namespace lirovan::notes
