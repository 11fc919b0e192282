#include "platform/core/json_line.h"

#include <QString>

namespace lirovan::platform {

void appendJsonString(QByteArray& json, std::string_view utf8) {
    const auto isPlain = [](char c) {
        return c != '"' && c != '\\' && static_cast<unsigned char>(c) >= 0x20;
    };
    json += '"';
    for (size_t at = 0; at < utf8.size();) {
        size_t end = at;
        while (end < utf8.size() && isPlain(utf8[end])) ++end;
        json.append(utf8.data() + at, static_cast<qsizetype>(end - at));
        at = end;
        if (at == utf8.size()) break;
        const char c = utf8[at++];
        if (c == '"' || c == '\\')
            json += '\\', json += c;
        else if (c == '\n')
            json += "\\n";
        else
            json += "\\u" + QByteArray::number(static_cast<int>(c), 16).rightJustified(4, '0');
    }
    json += '"';
}

QByteArray jsonString(QStringView text) {
    const QByteArray utf8 = text.toUtf8();
    QByteArray json;
    appendJsonString(json, {utf8.constData(), static_cast<size_t>(utf8.size())});
    return json;
}

}  // namespace lirovan::platform
