#include "platform/core/rtf/reader.h"

#include <QStringDecoder>
#include <algorithm>

#include "platform/core/code_page.h"
#include "platform/core/rtf/parser.h"

namespace lirovan::platform::rtf {
Document plainDocument(QStringView text, ReadLimit limit) {
    Builder builder;
    qsizetype begin = 0;
    while (builder.characters() < limit.characters) {
        qsizetype end = begin;
        while (end < text.size() && text[end] != u'\n' && text[end] != u'\r') ++end;
        builder.append(text.sliced(begin, end - begin), {});
        builder.endParagraph({});
        if (end == text.size()) break;
        begin = end + (text.sliced(end).startsWith(u"\r\n") ? 2 : 1);
    }
    return builder.take();
}

bool isRtf(QByteArrayView text) {
    return text.trimmed().startsWith("{\\rtf");
}

Document read(QByteArrayView rtf, ReadLimit limit) {
    if (isRtf(rtf)) return Parser(rtf.trimmed(), limit).read();
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(rtf);
    return plainDocument(utf8.hasError() ? fromWindows1254(rtf) : text, limit);
}

Document read(QStringView rtf, ReadLimit limit) {
    const QStringView begin = rtf.left(4096).trimmed();
    if (!begin.startsWith(u"{\\rtf")) return plainDocument(rtf, limit);
    // What we write ourselves is plain ASCII.
    if (std::all_of(rtf.begin(), rtf.end(), [](QChar c) { return c.unicode() < 0x80; }))
        return read(QByteArrayView(rtf.toLatin1()), limit);
    QByteArray bytes;
    bytes.reserve(rtf.size());
    for (const QChar unit : rtf) {
        if (const auto byte = windows1254Byte(unit.unicode()))
            bytes += static_cast<char>(*byte);
        else
            bytes += "\\u" + QByteArray::number(static_cast<qint16>(unit.unicode())) + "?";
    }
    return read(QByteArrayView(bytes), limit);
}

}  // namespace lirovan::platform::rtf
