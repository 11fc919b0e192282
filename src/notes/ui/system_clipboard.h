// Notes on the system's clipboard: RTF, HTML and plain text for whoever asks.
#pragma once

#include <optional>

#include "notes/editor_ports.h"
#include "platform/ui/clipboard.h"

class QMimeData;

namespace lirovan::notes {

platform::FormattedText formatted(const platform::rtf::Document& document);

/// RTF, or else HTML, as programs that know no RTF offer it; nothing where neither holds any text.
std::optional<platform::rtf::Document> richTextIn(const QMimeData& data);

class SystemClipboard : public NoteClipboard {
  public:
    void put(const platform::rtf::Document& document) override;
    bool hasText() const override;
};

}  // namespace lirovan::notes
