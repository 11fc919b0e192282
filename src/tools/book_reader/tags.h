// The elements that the reader tells apart, and what becomes of each.
#pragma once

#include <string_view>

namespace lirovan::book_reader {

enum class Tag : unsigned char {
    Other,
    Html,
    Head,
    Title,
    Body,
    A,
    Img,
    Svg,
    Image,
    Br,
    Wbr,
    Hr,
    Span,
    Q,
    Bdo,
    Bdi,
    P,
    H1,
    H2,
    H3,
    H4,
    H5,
    H6,
    Li,
    Ol,
    Ul,
    Dl,
    Dt,
    Dd,
    Pre,
    Blockquote,
    Table,
    Caption,
    Thead,
    Tbody,
    Tfoot,
    Tr,
    Td,
    Th,
    Figcaption,
    Section,
    Aside,
    Div,
    Nav,
    Object,
    Audio,
    Video,
    Script,
    Meta
};

enum class Role : unsigned char {
    Transparent,  ///< an inline element that carries no reading: its text stays
    Boundary,     ///< a block that only divides: its text stays, in paragraphs of its own
    Block,        ///< stays as the element `output`
    Inline,       ///< stays as the element `output`
    Skipped       ///< goes with everything in it
};

struct TagRule {
    std::string_view name;
    Tag tag;
    Role role;
    std::string_view output;  ///< as written into a text; empty: none
};

/// The rule of an element by its name in any case; elements that are not known are Transparent and `Other`.
const TagRule& tagRule(std::string_view name);

/// 1 to 6, 0 for what is no heading.
inline int headingLevel(Tag tag) {
    return tag >= Tag::H1 && tag <= Tag::H6 ? static_cast<int>(tag) - static_cast<int>(Tag::H1) + 1 : 0;
}

}  // namespace lirovan::book_reader
