#include "platform/core/rtf/document.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <string_view>

namespace lirovan::platform::rtf {
namespace {

bool isLineBreak(QChar unit) {
    return unit == u'\n' || unit == u'\r' || unit == u'\v' || unit == u'\f' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

bool isLeftOut(QChar unit) {
    return (unit < u' ' && unit != u'\t') || unit == u'\x7f' || unit == QChar::ObjectReplacementCharacter ||
           unit == QChar(0xFDD0) || unit == QChar(0xFDD1);
}

bool needsCleaning(QStringView text) {
    return std::any_of(text.begin(), text.end(), [](QChar unit) {
        return isLeftOut(unit) || unit.isSurrogate() || unit == QChar::ParagraphSeparator;
    });
}

}  // namespace

QString cleanText(QStringView text) {
    if (!needsCleaning(text)) return text.toString();
    QString clean;
    clean.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text[i];
        if (isLineBreak(unit)) {
            if (unit == u'\n' && i > 0 && text[i - 1] == u'\r') continue;
            clean += QChar::LineSeparator;
        } else if (unit.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            clean += unit;
            clean += text[++i];
        } else if (unit.isSurrogate()) {
            clean += QChar::ReplacementCharacter;
        } else if (!isLeftOut(unit)) {
            clean += unit;
        }
    }
    return clean;
}

QString cleanFontName(QStringView name) {
    constexpr qsizetype longest = 64;
    QString clean;
    for (const QChar unit : cleanText(name.trimmed().left(longest)))
        if (unit >= u' ' && !unit.isSurrogate() && unit != QChar::LineSeparator && unit != u';' &&
            unit != u'{' && unit != u'}' && unit != u'\\')
            clean += unit;
    clean = clean.trimmed();
    // Old systems listed one face several times, once for each script.
    constexpr QStringView scripts[] = {u" Tur", u" CE", u" Cyr", u" Greek", u" Baltic"};
    const auto endsIn = [&clean](QStringView script) { return clean.endsWith(script); };
    for (auto script = std::find_if(std::begin(scripts), std::end(scripts), endsIn);
         script != std::end(scripts); script = std::find_if(std::begin(scripts), std::end(scripts), endsIn))
        clean = clean.chopped(script->size()).trimmed();
    return clean.isEmpty() ? DefaultFont.toString() : clean;
}

QString cleanLink(QStringView address) {
    constexpr qsizetype longest = 2000;
    constexpr QStringView schemes[] = {u"konu:", u"http://", u"https://", u"mailto:"};
    constexpr std::string_view digits = "0123456789ABCDEF", unsafe = "\"\\{}<>^`|%";
    QString trimmed = address.trimmed().toString();
    const auto* known = std::find_if(std::begin(schemes), std::end(schemes), [&](QStringView scheme) {
        return trimmed.startsWith(scheme, Qt::CaseInsensitive);  // ASCII
    });
    if (trimmed.size() > longest || known == std::end(schemes)) return {};
    trimmed = known->toString() + trimmed.sliced(known->size());
    QByteArray clean;
    const QByteArray bytes = trimmed.toUtf8();
    const auto isHex = [&](qsizetype i) { return i < bytes.size() && std::isxdigit(uchar(bytes[i])); };
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        const bool written = c == '%' && isHex(i + 1) && isHex(i + 2);
        if (written || (c > ' ' && c < '\x7f' && unsafe.find(c) == std::string_view::npos))
            clean += c;
        else
            for (const char digit : {'%', digits[uchar(c) >> 4], digits[uchar(c) & 15]}) clean += digit;
    }
    return clean.size() > longest ? QString() : QString::fromLatin1(clean);
}

bool Document::isEmpty() const {
    return paragraphs.empty() || (paragraphs.size() == 1 && paragraphs.front().runs.empty());
}

QString Document::plainText() const {
    QString text;
    for (const Paragraph& paragraph : paragraphs) {
        if (&paragraph != &paragraphs.front()) text += u'\n';
        for (const Run& run : paragraph.runs) text += run.text;
    }
    text.replace(QChar(QChar::LineSeparator), QChar(u'\n'));
    return text;
}

void Builder::append(QStringView text, const CharFormat& format) {
    QString clean = cleanText(text);
    if (clean.isEmpty()) return;
    characters_ += clean.size();
    CharFormat normal = format;
    if (format.font != font_) {
        font_ = format.font;
        cleanFont_ = cleanFontName(font_);
    }
    normal.font = cleanFont_;
    if (format.link != link_) {
        link_ = format.link;
        cleanLink_ = cleanLink(link_);
    }
    normal.link = cleanLink_;
    normal.halfPoints = std::clamp(normal.halfPoints, 1, MaxHalfPoints);
    if (normal.color == Black) normal.color.reset();
    if (!runs_.empty() && runs_.back().format == normal)
        runs_.back().text += clean;
    else
        runs_.push_back({std::move(clean), std::move(normal)});
}

void Builder::endParagraph(const ParagraphFormat& format) {
    ParagraphFormat normal = format;
    normal.leftIndent = std::clamp(normal.leftIndent, 0, MaxIndent);
    normal.firstIndent = std::clamp(normal.firstIndent, -MaxIndent, MaxIndent);
    document_.paragraphs.push_back({normal, std::move(runs_)});
    runs_.clear();
    ++characters_;
}

int prevailingHalfPoints(const Document& document) {
    std::map<int, qsizetype> lengths;
    for (const Paragraph& paragraph : document.paragraphs)
        for (const Run& run : paragraph.runs) lengths[run.format.halfPoints] += run.text.size();
    const auto longest = std::max_element(lengths.begin(), lengths.end(),
                                          [](const auto& a, const auto& b) { return a.second < b.second; });
    return longest == lengths.end() ? 0 : longest->first;
}

}  // namespace lirovan::platform::rtf
