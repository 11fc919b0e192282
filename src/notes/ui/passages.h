// Notes on the system's clipboard: RTF, HTML and plain text for whoever asks.
#pragma once

#include <optional>

#include "platform/core/rtf/document.h"
#include "platform/ui/clipboard.h"

class QMimeData;

namespace lirovan::notes {

platform::FormattedText formatted(const platform::rtf::Document& document);
/// An empty passage leaves the clipboard as it is.
void putOnClipboard(const platform::rtf::Document& document);

/// What a clipboard holds of a text, taken out of it.
struct ClipboardText {
    std::optional<QByteArray> rtf;
    QString html, plain;
    qsizetype size() const { return (rtf ? rtf->size() : 0) + html.size() + plain.size(); }
};
ClipboardText textIn(const QMimeData& data);

struct Passage {
    platform::rtf::Document text;
    bool isPlain = false;  ///< without formats of its own
};
/// Of RTF, or else HTML, as programs that know no RTF offer it, or else plain text. On any thread.
Passage read(const ClipboardText& text);

}  // namespace lirovan::notes
