#include "search/runs/ratio_order.h"

#include <QChar>
#include <algorithm>

#include "search/matching/search_query.h"
#include "search/matching/stored_markup.h"

namespace lirovan::search {
namespace {

enum class Kind : char { Blank, Mark, Letter };

Kind kindOf(char32_t c) {
    if (QChar::isSpace(c)) return Kind::Blank;
    return QChar::isLetterOrNumber(c) ? Kind::Letter : Kind::Mark;
}

// The character at `at`, which is moved behind it. Broken bytes are marks.
Kind nextKind(std::string_view text, size_t& at) noexcept {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) {
        if (lead <= ' ') return Kind::Blank;
        const bool letter =
            (lead >= 'a' && lead <= 'z') || (lead >= 'A' && lead <= 'Z') || (lead >= '0' && lead <= '9');
        return letter ? Kind::Letter : Kind::Mark;
    }
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t c = lead & (0x7Fu >> length);
    size_t read = 1;
    for (; read < length && at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80; ++read)
        c = c << 6 | (static_cast<unsigned char>(text[at++]) & 0x3F);
    return read == length ? kindOf(c) : Kind::Mark;
}

}  // namespace

qint64 wordsOfText(std::string_view text) noexcept {
    qint64 words = 0;
    bool counted = false;  // the word at hand
    for (size_t at = 0; at < text.size();) {
        const char c = text[at];
        const auto markup = c == '<' ? tagEnd(text, at) : c == '&' ? entityEnd(text, at) : std::nullopt;
        if (markup) {
            at = *markup;
            counted = false;
            continue;
        }
        const Kind kind = nextKind(text, at);
        if (kind == Kind::Letter && !counted) ++words;
        counted = kind == Kind::Letter || (counted && kind == Kind::Mark);
    }
    return words;
}

bool isHigher(const Ratio& a, const Ratio& b) noexcept {
    return a.hits * std::max<qint64>(b.words, 1) > b.hits * std::max<qint64>(a.words, 1);
}

QString formatRatio(const Ratio& ratio) {
    const qint64 words = std::max<qint64>(ratio.words, 1);
    const qint64 tenths = (ratio.hits * 20'000 + words) / (2 * words);
    return formatCount(tenths / 10) + u',' + QString::number(tenths % 10);
}

}  // namespace lirovan::search
