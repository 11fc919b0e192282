#include <QRegularExpression>

#include "tools/book_reader/source_text.h"

#include <unicode/ucnv.h>

namespace lirovan::book_reader {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// The characters of the 256 bytes of a code page.
class CodePage {
  public:
    explicit CodePage(const QByteArray& rtf) {
        const qsizetype at = rtf.left(4096).indexOf("\\ansicpg");
        qsizetype end = at < 0 ? 0 : at + 8;
        const qsizetype begin = end;
        while (end < rtf.size() && end - begin < 5 && isDigit(rtf[end])) ++end;
        const QByteArray name =
            "windows-" + (end > begin ? rtf.sliced(begin, end - begin) : QByteArray("1254"));
        UErrorCode status = U_ZERO_ERROR;
        converter_ = ucnv_open(name.constData(), &status);
    }
    ~CodePage() { ucnv_close(converter_); }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    // 0: no single byte of this code page.
    int character(char byte) const {
        if (!converter_ || ucnv_getMaxCharSize(converter_) != 1) return 0;
        UChar out[4] = {};
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = ucnv_toUChars(converter_, out, 4, &byte, 1, &status);
        return U_SUCCESS(status) && length == 1 ? static_cast<int16_t>(out[0]) : 0;
    }

  private:
    UConverter* converter_ = nullptr;
};

}  // namespace

QByteArray plainRtf(const QByteArray& rtf) {
    const CodePage page(rtf);
    QByteArray out;
    out.reserve(rtf.size() * 2);
    for (qsizetype i = 0; i < rtf.size(); ++i) {
        if (rtf[i] != '\\' || i + 1 >= rtf.size()) {
            out += rtf[i];
            continue;
        }
        if (rtf[i + 1] == '\'' && i + 3 < rtf.size()) {
            const char byte = static_cast<char>(rtf.sliced(i + 2, 2).toInt(nullptr, 16));
            const int character = static_cast<unsigned char>(byte) >= 0x80 ? page.character(byte) : 0;
            out += character != 0 ? "\\u" + QByteArray::number(character) + " ?" : rtf.sliced(i, 4);
            i += 3;
            continue;
        }
        // A control word as it is; behind a Unicode character its substitute is left alone.
        qsizetype end = i + 1;
        while (end < rtf.size() && isLetter(rtf[end])) ++end;
        const bool isUnicode = end == i + 2 && rtf[i + 1] == 'u';
        const qsizetype digits = end;
        if (end < rtf.size() && rtf[end] == '-') ++end;
        while (end < rtf.size() && isDigit(rtf[end])) ++end;
        if (end == i + 1) ++end;  // an escaped sign
        out += rtf.sliced(i, end - i);
        if (isUnicode && end > digits) {
            if (end >= rtf.size() || rtf[end] != ' ') out += ' ';
            if (rtf.sliced(end).startsWith("\\'"))
                out += rtf.sliced(end, std::min<qsizetype>(4, rtf.size() - end)), end += 4;
        }
        i = end - 1;
    }
    return out;
}

}  // namespace lirovan::book_reader
