#include "platform/core/rtf/byte_decoder.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <string>

#include "platform/core/code_page.h"

namespace lirovan::platform::rtf {
namespace {

struct Charset {
    int number;
    int codePage;
};

// The character sets of the Windows font mapper, which \fcharset uses.
constexpr std::array charsets{
    Charset{0, 1252},   Charset{2, 1252},   Charset{77, 10000}, Charset{128, 932},  Charset{129, 949},
    Charset{134, 936},  Charset{136, 950},  Charset{161, 1253}, Charset{162, 1254}, Charset{163, 1258},
    Charset{177, 1255}, Charset{178, 1256}, Charset{186, 1257}, Charset{204, 1251}, Charset{222, 874},
    Charset{238, 1250}, Charset{254, 437},  Charset{255, 850},
};

UConverter* open(const std::string& name) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* opened = ucnv_open(name.c_str(), &error);
    return U_SUCCESS(error) ? opened : nullptr;
}

UConverter* openCodePage(int codePage) {
    if (codePage == 65001) return open("UTF-8");
    if (codePage == 10000) return open("macintosh");
    if (codePage == 10081) return open("x-mac-turkish");
    const std::string number = std::to_string(codePage);
    for (const char* family : {"windows-", "cp", "ibm-"})
        if (UConverter* opened = open(family + number)) return opened;
    return open("windows-1252");
}

}  // namespace

void ByteDecoder::Close::operator()(UConverter* converter) const {
    ucnv_close(converter);
}
ByteDecoder::ByteDecoder() = default;
ByteDecoder::~ByteDecoder() = default;

int ByteDecoder::ofCharset(int charset) {
    const auto found = std::find_if(charsets.begin(), charsets.end(),
                                    [charset](const Charset& entry) { return entry.number == charset; });
    return found == charsets.end() ? 0 : found->codePage;
}

UConverter* ByteDecoder::converter(int codePage) {
    // A file can name any number of code pages that do not exist; they are not worth a converter each.
    constexpr size_t enough = 32;
    if (const auto found = converters_.find(codePage); found != converters_.end()) return found->second.get();
    if (converters_.size() >= enough) converters_.clear();
    return converters_.emplace(codePage, openCodePage(codePage)).first->second.get();
}

QString ByteDecoder::decode(int codePage, QByteArrayView bytes) {
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) == 0; });
    if (!ascii && codePage == Turkish) return fromWindows1254(bytes);
    UConverter* from = ascii ? nullptr : converter(codePage);
    if (!from) return QString::fromLatin1(bytes);
    QString text(bytes.size() * 2, Qt::Uninitialized);
    auto* out = reinterpret_cast<UChar*>(text.data());
    UChar* end = out;
    const char* in = bytes.data();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(from);
    ucnv_toUnicode(from, &end, out + text.size(), &in, bytes.data() + bytes.size(), nullptr, true, &error);
    text.truncate(end - out);
    return text;
}

}  // namespace lirovan::platform::rtf
