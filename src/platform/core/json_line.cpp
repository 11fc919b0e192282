#include "platform/core/json_line.h"

#include <QString>

namespace lirovan::platform {

QByteArray jsonString(QStringView text) {
    QByteArray json(1, '"');
    for (const char c : text.toUtf8()) {
        if (c == '"' || c == '\\')
            json += '\\', json += c;
        else if (c == '\n')
            json += "\\n";
        else if (static_cast<unsigned char>(c) < 0x20)
            json += "\\u" + QByteArray::number(static_cast<int>(c), 16).rightJustified(4, '0');
        else
            json += c;
    }
    return json + '"';
}

}  // namespace lirovan::platform
