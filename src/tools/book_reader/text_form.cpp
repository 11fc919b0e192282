#include "tools/book_reader/text_form.h"

#include <unicode/uchar.h>
#include <unicode/unorm2.h>

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

bool isJoiner(char16_t unit) {
    return unit == 0x200C || unit == 0x200D;
}
// Scripts whose letters the joiners shape (Arabic to the Indic ones), and emoji, which they put together.
bool needsJoiner(char16_t unit) {
    return (unit >= 0x0600 && unit < 0x1100) || unit >= 0x2600;
}
bool isDirectionMark(char16_t unit) {
    return unit == 0x200E || unit == 0x200F || (unit >= 0x202A && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069);
}
bool isRightToLeft(char16_t unit) {
    return (unit >= 0x0590 && unit < 0x0900) || (unit >= 0xFB1D && unit < 0xFE00) ||
           (unit >= 0xFE70 && unit < 0xFEFF);
}

bool isApostrophe(char16_t unit) {
    return unit == u'\'' || unit == 0x2019 || unit == 0x2018 || unit == 0x201B || unit == 0x02BC ||
           unit == 0x02B9 || unit == 0x2032 || unit == 0xFF07 || unit == 0x00B4 || unit == u'`';
}

// nullptr: stays as it is.
const char16_t* replacement(char16_t unit) {
    switch (unit) {
        case 0x201C:
        case 0x201D:
        case 0x201E:
        case 0x201F:
        case 0xFF02:
            return u"\"";
        case 0x2018:
        case 0x2019:
        case 0x201A:
        case 0x201B:
            return u"'";
        case 0x2010:
        case 0x2011:
            return u"-";
        case 0xFB00:
            return u"ff";
        case 0xFB01:
            return u"fi";
        case 0xFB02:
            return u"fl";
        case 0xFB03:
            return u"ffi";
        case 0xFB04:
            return u"ffl";
        case 0xFB05:
        case 0xFB06:
            return u"st";
        default:
            return nullptr;
    }
}

bool isLetterAt(const QString& text, qsizetype at) {
    return at >= 0 && at < text.size() &&
           (text[at].isLetter() || text[at].isMark() || text[at].isLowSurrogate());
}

// A dot above that composes with nothing belongs to an i that was made small from İ.
QString composed(const QString& text) {
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2* nfc = unorm2_getNFCInstance(&status);
    const auto* units = reinterpret_cast<const UChar*>(text.utf16());
    const int32_t length = static_cast<int32_t>(text.size());
    QString out = text;
    if (unorm2_quickCheck(nfc, units, length, &status) != UNORM_YES || U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        out.resize(text.size() * 3 + 16);
        const int32_t made = unorm2_normalize(nfc, units, length, reinterpret_cast<UChar*>(out.data()),
                                              static_cast<int32_t>(out.size()), &status);
        out = U_FAILURE(status) ? text.normalized(QString::NormalizationForm_C) : out.left(made);
    }
    constexpr QChar dotAbove(0x0307);
    if (out.contains(dotAbove)) {
        out.replace(u"i\u0307"_s, u"i"_s);
        out.replace(u"ı\u0307"_s, u"i"_s);
    }
    return out;
}

}  // namespace

bool isWordCharacter(char32_t character) {
    return u_isalpha(static_cast<UChar32>(character)) ||
           (U_GET_GC_MASK(static_cast<UChar32>(character)) & U_GC_N_MASK) || character == U'_';
}

bool isInvisible(char16_t unit) {
    return unit == 0x00AD || unit == 0x200B || unit == 0x2060 || unit == 0xFEFF || unit == 0x034F ||
           unit == 0x180E || (unit >= 0x2061 && unit <= 0x2064) || (unit >= 0xFFF9 && unit <= 0xFFFB) ||
           isJoiner(unit) || isDirectionMark(unit);
}

bool isBlank(char16_t unit) {
    return unit <= u' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0x1680 ||
           (unit >= 0x2000 && unit <= 0x200A) || unit == 0x2028 || unit == 0x2029 || unit == 0x202F ||
           unit == 0x205F;
}

QString inTextForm(QString text, bool keepLines) {
    bool rightToLeft = false;
    for (const QChar unit : std::as_const(text)) rightToLeft |= isRightToLeft(unit.unicode());
    QString visible;
    visible.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        if (isInvisible(unit)) {
            const bool shapes = isJoiner(unit) && i > 0 && needsJoiner(text[i - 1].unicode());
            if (!shapes && !(isDirectionMark(unit) && rightToLeft)) continue;
        }
        if (isBlank(unit)) {
            if (keepLines && unit == u'\r') continue;
            if (keepLines)
                visible += unit == u'\n' || unit == u'\t' ? QChar(unit) : QChar(u' ');
            else if (!visible.endsWith(u' '))
                visible += u' ';
        } else {
            visible += QChar(unit);
        }
    }
    visible = composed(visible);
    QString out;
    out.reserve(visible.size());
    for (qsizetype i = 0; i < visible.size(); ++i) {
        const char16_t unit = visible[i].unicode();
        if (isApostrophe(unit) && isLetterAt(visible, i - 1) && isLetterAt(visible, i + 1))
            out += u'\'';
        else if (const char16_t* other = replacement(unit))
            out += QStringView(other);
        else
            out += QChar(unit);
    }
    return out;
}

QByteArray escaped(const QString& text) {
    QByteArray out;
    for (const char c : text.toUtf8()) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '"')
            out += "&quot;";
        else
            out += c;
    }
    return out;
}

qint64 countWords(QStringView text) {
    qint64 words = 0;
    bool inside = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t character = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size()) {
            character = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const bool part = isWordCharacter(character);
        words += part && !inside;
        inside = part;
    }
    return words;
}

}  // namespace lirovan::book_reader
