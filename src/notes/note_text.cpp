#include "notes/note_text.h"

#include "platform/core/rtf/writer.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace rtf = platform::rtf;

QString storedRtf(const rtf::Document& document) {
    return document.isEmpty() ? u" "_s : QString::fromLatin1(rtf::write(document));
}

rtf::Document textOf(const QString& notRtf, rtf::ReadLimit limit) {
    const QString trimmed = notRtf.trimmed();
    return rtf::read(QStringView(trimmed), limit);
}

QString fileTitle(const QString& title) {
    constexpr qsizetype longest = 60;
    QString name;
    for (const QChar unit : title.trimmed().left(longest))
        name += unit < u' ' || u"/\\:*?\"<>|"_s.contains(unit) || unit.isSurrogate() ? QChar(u'_') : unit;
    while (name.endsWith(u'.') || name.endsWith(u' ')) name.chop(1);
    return name;
}

bool sameText(const rtf::Document& a, const rtf::Document& b) {
    return a == b || (a.isEmpty() && b.isEmpty());
}

}  // namespace lirovan::notes
