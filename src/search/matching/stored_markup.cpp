#include "search/matching/stored_markup.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace lirovan::search {

using namespace std::string_view_literals;

namespace {

constexpr size_t LongestEntity = 32;

bool isAsciiLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

char lowerAscii(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

// Those that stand inside words; every other tag keeps the words beside it apart.
constexpr std::array InlineTags = {"a"sv,    "abbr"sv,   "b"sv,    "bdo"sv, "big"sv, "em"sv, "font"sv,
                                   "i"sv,    "ins"sv,    "mark"sv, "s"sv,   "del"sv, "u"sv,  "small"sv,
                                   "span"sv, "strong"sv, "sub"sv,  "sup"sv, "tt"sv};

constexpr std::pair<std::string_view, char32_t> Entities[] = {
    {"quot", U'"'},        {"amp", U'&'},        {"lt", U'<'},          {"gt", U'>'},
    {"apos", U'\''},       {"nbsp", U' '},       {"lsquo", U'\u2018'},  {"rsquo", U'\u2019'},
    {"ldquo", U'\u201C'},  {"rdquo", U'\u201D'}, {"laquo", U'\u00AB'},  {"raquo", U'\u00BB'},
    {"ndash", U'\u2013'},  {"mdash", U'\u2014'}, {"hellip", U'\u2026'}, {"acirc", U'â'},
    {"icirc", U'î'},       {"ucirc", U'û'},      {"ocirc", U'ô'},       {"ecirc", U'ê'},
    {"Acirc", U'Â'},       {"Icirc", U'Î'},      {"Ucirc", U'Û'},       {"Ocirc", U'Ô'},
    {"Ecirc", U'Ê'},       {"ccedil", U'ç'},     {"Ccedil", U'Ç'},      {"ouml", U'ö'},
    {"Ouml", U'Ö'},        {"uuml", U'ü'},       {"Uuml", U'Ü'},        {"bull", U'\u2022'},
    {"middot", U'\u00B7'}, {"shy", U'\u00AD'},   {"copy", U'\u00A9'}};

}  // namespace

std::optional<size_t> tagEnd(std::string_view text, size_t at) noexcept {
    if (at + 1 >= text.size()) return std::nullopt;
    if (text.compare(at, 4, "<!--") == 0) {
        const size_t end = text.find("-->", at + 4);
        if (end != std::string_view::npos) return end + 3;
    }
    const char first = text[at + 1];
    if (!isAsciiLetter(first) && first != '/' && first != '!' && first != '?') return std::nullopt;
    const size_t end = text.find_first_of("<>", at + 1);
    if (end == std::string_view::npos || text[end] == '<') return std::nullopt;
    return end + 1;
}

bool separatesWords(std::string_view tag) noexcept {
    std::array<char, 8> name{};
    size_t length = 0;
    for (size_t i = tag.size() > 1 && tag[1] == '/' ? 2 : 1; i < tag.size(); ++i, ++length) {
        const char c = lowerAscii(tag[i]);
        if (!isAsciiLetter(c) && (c < '0' || c > '9')) break;
        if (length == name.size()) return true;
        name[length] = c;
    }
    return std::find(InlineTags.begin(), InlineTags.end(), std::string_view(name.data(), length)) ==
           InlineTags.end();
}

std::optional<size_t> entityEnd(std::string_view text, size_t at) noexcept {
    size_t end = at + 1;
    if (end < text.size() && text[end] == '#') ++end;
    const size_t begin = end;
    while (end < text.size() && end - at < LongestEntity &&
           (isAsciiLetter(text[end]) || (text[end] >= '0' && text[end] <= '9')))
        ++end;
    if (end == begin || end >= text.size() || text[end] != ';') return std::nullopt;
    return end + 1;
}

std::optional<char32_t> entityCharacter(std::string_view entity) {
    const std::string_view name = entity.substr(1, entity.size() - 2);
    if (name.front() != '#') {
        const auto* const found = std::find_if(std::begin(Entities), std::end(Entities),
                                               [&](const auto& known) { return known.first == name; });
        return found == std::end(Entities) ? std::nullopt : std::optional(found->second);
    }
    const bool isHex = name.size() > 1 && lowerAscii(name[1]) == 'x';
    const std::string_view digits = name.substr(isHex ? 2 : 1);
    uint32_t value = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, isHex ? 16 : 10);
    const bool isCharacter = read.ec == std::errc() && read.ptr == digits.data() + digits.size() &&
                             value >= 0x20 && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    if (!isCharacter) return std::nullopt;
    return value == 0xA0 ? U' ' : static_cast<char32_t>(value);
}

}  // namespace lirovan::search
