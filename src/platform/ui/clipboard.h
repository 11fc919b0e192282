// Formatted text on the clipboard, in the formats that programs look for.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

class QMimeData;

namespace lirovan::platform {

struct FormattedText {
    QString plain;
    QString html;
    QByteArray rtf;
};

/// The formats that are not empty, as the clipboard and dragging carry them.
std::unique_ptr<QMimeData> toMimeData(const FormattedText& text);

/// Puts the formats that are not empty on the clipboard.
void putOnClipboard(const FormattedText& text);

/// The RTF of a clipboard, under whichever name it was put there; nothing when there is none.
std::optional<QByteArray> rtfIn(const QMimeData& data);

/// Whether it is text, in any form.
bool hasText(const QMimeData& data);
bool clipboardHasText();

/// Ctrl+X in the widget that has the focus; nothing where it is none to cut from.
void cutInFocus();

}  // namespace lirovan::platform
