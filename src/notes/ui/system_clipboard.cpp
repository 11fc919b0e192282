#include "notes/ui/system_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
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
    if (const std::optional<QByteArray> bytes = platform::rtfIn(data))
        return rtf::read(QByteArrayView(*bytes));
    if (data.hasHtml()) return rtf::fromHtml(data.html());
    return std::nullopt;
}

void SystemClipboard::put(const rtf::Document& document) {
    // Copying nothing leaves the clipboard as it is.
    if (!document.isEmpty()) platform::putOnClipboard(formatted(document));
}

std::optional<rtf::Document> SystemClipboard::richText() const {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data ? richTextIn(*data) : std::nullopt;
}

bool SystemClipboard::hasPlainText() const {
    return platform::clipboardHasText();
}

}  // namespace lirovan::notes
