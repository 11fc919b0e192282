// The 8-bit encoding of the generated pages: windows-1254, the Turkish code page.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>

namespace lirovan::platform {

/// Page text in windows-1254. A character that the code page lacks becomes a numeric character reference
/// ("&#8734;"); a lone surrogate becomes "&#65533;".
QByteArray toWindows1254(QStringView text);

/// The byte that stands for one unit of text in windows-1254; nothing for a unit that the code page lacks.
std::optional<unsigned char> windows1254Byte(char16_t unit);

/// Bytes in windows-1254 as text; bytes without a meaning there become U+FFFD.
QString fromWindows1254(QByteArrayView bytes);

}  // namespace lirovan::platform
