// Trimming as the library's texts need it: blanks only. Tabs, line ends and no-break spaces are part of a
// text.
#pragma once

#include <QStringView>

namespace lirovan::text {

/// `text` without the blanks (U+0020) at either end.
inline QStringView trimBlanks(QStringView text) noexcept {
    while (text.startsWith(u' ')) text = text.sliced(1);
    while (text.endsWith(u' ')) text.chop(1);
    return text;
}

}  // namespace lirovan::text
