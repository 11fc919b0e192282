#include "platform/core/code_page.h"

#include <array>
#include <map>

#include <unicode/ucnv.h>

namespace lirovan::platform {
namespace {

using DecodeTable = std::array<char16_t, 256>;

const DecodeTable& decodeTable() {
    static const DecodeTable table = [] {
        DecodeTable made{};
        UErrorCode status = U_ZERO_ERROR;
        UConverter* converter = ucnv_open("windows-1254", &status);
        if (U_FAILURE(status)) qFatal("ICU has no windows-1254: %s", u_errorName(status));
        for (int byte = 0; byte < 256; ++byte) {
            const char in = static_cast<char>(byte);
            UChar out[4] = {};
            UErrorCode one = U_ZERO_ERROR;
            ucnv_toUChars(converter, out, 4, &in, 1, &one);
            made[static_cast<size_t>(byte)] = U_SUCCESS(one) ? out[0] : u'\uFFFD';
        }
        ucnv_close(converter);
        return made;
    }();
    return table;
}

const std::map<char16_t, char>& encodeTable() {
    static const std::map<char16_t, char> table = [] {
        std::map<char16_t, char> made;
        for (int byte = 128; byte < 256; ++byte)
            if (const char16_t unit = decodeTable()[static_cast<size_t>(byte)]; unit != u'\uFFFD')
                made.emplace(unit, static_cast<char>(byte));
        return made;
    }();
    return table;
}

void appendReference(QByteArray& out, char32_t character) {
    out += "&#";
    out += QByteArray::number(static_cast<uint>(character));
    out += ';';
}

}  // namespace

QByteArray toWindows1254(QStringView text) {
    QByteArray out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (unit.unicode() < 128) {
            out += static_cast<char>(unit.unicode());
        } else if (const auto found = encodeTable().find(unit.unicode()); found != encodeTable().end()) {
            out += found->second;
        } else if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            appendReference(out, QChar::surrogateToUcs4(unit, text[i + 1]));
            ++i;
        } else {
            appendReference(out, unit.isSurrogate() ? U'\uFFFD' : char32_t(unit.unicode()));
        }
    }
    return out;
}

std::optional<unsigned char> windows1254Byte(char16_t unit) {
    if (unit < 128) return static_cast<unsigned char>(unit);
    const auto found = encodeTable().find(unit);
    if (found == encodeTable().end()) return std::nullopt;
    return static_cast<unsigned char>(found->second);
}

QString fromWindows1254(QByteArrayView bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text[i] = QChar(decodeTable()[static_cast<unsigned char>(bytes[i])]);
    return text;
}

}  // namespace lirovan::platform
