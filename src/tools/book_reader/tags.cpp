#include "tools/book_reader/tags.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace lirovan::book_reader {
namespace {

constexpr TagRule Unknown{"", Tag::Other, Role::Transparent, ""};

// Sorted by what becomes of them. "P" is in capitals, since passages are cut at "<P>" and "</P>".
constexpr TagRule Rules[] = {
    {"p", Tag::P, Role::Block, "P"},
    {"h1", Tag::H1, Role::Block, "h1"},
    {"h2", Tag::H2, Role::Block, "h2"},
    {"h3", Tag::H3, Role::Block, "h3"},
    {"h4", Tag::H4, Role::Block, "h4"},
    {"h5", Tag::H5, Role::Block, "h5"},
    {"h6", Tag::H6, Role::Block, "h6"},
    {"blockquote", Tag::Blockquote, Role::Block, "blockquote"},
    {"pre", Tag::Pre, Role::Block, "pre"},
    {"ul", Tag::Ul, Role::Block, "ul"},
    {"ol", Tag::Ol, Role::Block, "ol"},
    {"li", Tag::Li, Role::Block, "li"},
    {"dl", Tag::Dl, Role::Block, "dl"},
    {"dt", Tag::Dt, Role::Block, "dt"},
    {"dd", Tag::Dd, Role::Block, "dd"},
    {"table", Tag::Table, Role::Block, "table"},
    {"caption", Tag::Caption, Role::Block, "caption"},
    {"thead", Tag::Thead, Role::Block, "thead"},
    {"tbody", Tag::Tbody, Role::Block, "tbody"},
    {"tfoot", Tag::Tfoot, Role::Block, "tfoot"},
    {"tr", Tag::Tr, Role::Block, "tr"},
    {"td", Tag::Td, Role::Block, "td"},
    {"th", Tag::Th, Role::Block, "th"},
    {"figcaption", Tag::Figcaption, Role::Block, "P"},

    {"html", Tag::Html, Role::Boundary, ""},
    {"body", Tag::Body, Role::Boundary, ""},
    {"section", Tag::Section, Role::Boundary, ""},
    {"aside", Tag::Aside, Role::Boundary, ""},
    {"div", Tag::Div, Role::Boundary, ""},
    {"nav", Tag::Nav, Role::Boundary, ""},
    {"article", Tag::Other, Role::Boundary, ""},
    {"main", Tag::Other, Role::Boundary, ""},
    {"header", Tag::Other, Role::Boundary, ""},
    {"footer", Tag::Other, Role::Boundary, ""},
    {"hgroup", Tag::Other, Role::Boundary, ""},
    {"figure", Tag::Other, Role::Boundary, ""},
    {"address", Tag::Other, Role::Boundary, ""},
    {"center", Tag::Other, Role::Boundary, ""},
    {"details", Tag::Other, Role::Boundary, ""},
    {"summary", Tag::Other, Role::Boundary, ""},
    {"fieldset", Tag::Other, Role::Boundary, ""},
    {"legend", Tag::Other, Role::Boundary, ""},
    {"form", Tag::Other, Role::Boundary, ""},
    {"menu", Tag::Other, Role::Boundary, ""},
    {"dir", Tag::Other, Role::Boundary, ""},
    {"option", Tag::Other, Role::Boundary, ""},
    {"textarea", Tag::Other, Role::Boundary, ""},

    {"b", Tag::Other, Role::Inline, "B"},
    {"strong", Tag::Other, Role::Inline, "strong"},
    {"i", Tag::Other, Role::Inline, "i"},
    {"em", Tag::Other, Role::Inline, "em"},
    {"cite", Tag::Other, Role::Inline, "i"},
    {"dfn", Tag::Other, Role::Inline, "i"},
    {"var", Tag::Other, Role::Inline, "i"},
    {"u", Tag::Other, Role::Inline, "u"},
    {"s", Tag::Other, Role::Inline, "s"},
    {"strike", Tag::Other, Role::Inline, "s"},
    {"del", Tag::Other, Role::Inline, "s"},
    {"sub", Tag::Other, Role::Inline, "sub"},
    {"sup", Tag::Other, Role::Inline, "sup"},
    {"code", Tag::Other, Role::Inline, "code"},
    {"tt", Tag::Other, Role::Inline, "code"},
    {"kbd", Tag::Other, Role::Inline, "code"},
    {"samp", Tag::Other, Role::Inline, "code"},

    {"a", Tag::A, Role::Transparent, ""},
    {"img", Tag::Img, Role::Transparent, ""},
    {"image", Tag::Image, Role::Transparent, ""},
    {"svg", Tag::Svg, Role::Transparent, ""},
    {"br", Tag::Br, Role::Transparent, ""},
    {"wbr", Tag::Wbr, Role::Transparent, ""},
    {"hr", Tag::Hr, Role::Transparent, ""},
    {"span", Tag::Span, Role::Transparent, ""},
    {"q", Tag::Q, Role::Transparent, ""},
    {"bdo", Tag::Bdo, Role::Transparent, ""},
    {"bdi", Tag::Bdi, Role::Transparent, ""},
    {"meta", Tag::Meta, Role::Skipped, ""},
    {"title", Tag::Title, Role::Transparent, ""},

    {"head", Tag::Head, Role::Skipped, ""},
    {"style", Tag::Script, Role::Skipped, ""},
    {"script", Tag::Script, Role::Skipped, ""},
    {"noscript", Tag::Script, Role::Skipped, ""},
    {"template", Tag::Script, Role::Skipped, ""},
    {"canvas", Tag::Script, Role::Skipped, ""},
    {"audio", Tag::Audio, Role::Skipped, ""},
    {"video", Tag::Video, Role::Skipped, ""},
    {"object", Tag::Object, Role::Skipped, ""},
    {"iframe", Tag::Script, Role::Skipped, ""},
    {"embed", Tag::Script, Role::Skipped, ""},
    {"applet", Tag::Script, Role::Skipped, ""},
    {"map", Tag::Script, Role::Skipped, ""},
    {"rt", Tag::Other, Role::Skipped, ""},
    {"rp", Tag::Other, Role::Skipped, ""},
    {"rtc", Tag::Other, Role::Skipped, ""},
    {"annotation", Tag::Other, Role::Skipped, ""},
    {"annotation-xml", Tag::Other, Role::Skipped, ""},
};

}  // namespace

const TagRule& tagRule(std::string_view name) {
    static const std::unordered_map<std::string_view, const TagRule*> table = [] {
        std::unordered_map<std::string_view, const TagRule*> made;
        for (const TagRule& rule : Rules) made.emplace(rule.name, &rule);
        return made;
    }();
    if (name.size() > 16) return Unknown;
    char lowered[16];
    std::transform(name.begin(), name.end(), lowered,
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    const auto found = table.find(std::string_view(lowered, name.size()));
    return found == table.end() ? Unknown : *found->second;
}

}  // namespace lirovan::book_reader
