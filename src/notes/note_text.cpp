#include "notes/note_text.h"

#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

namespace lirovan::notes {

namespace rtf = platform::rtf;

QString storedRtf(const rtf::Document& document) {
    return document.isEmpty() ? QStringLiteral(" ") : QString::fromLatin1(rtf::write(document));
}

rtf::Document textOf(const QString& notRtf) {
    const QString trimmed = notRtf.trimmed();
    return rtf::read(QStringView(trimmed));
}

bool sameText(const rtf::Document& a, const rtf::Document& b) {
    return storedRtf(a) == storedRtf(b);
}

}  // namespace lirovan::notes
