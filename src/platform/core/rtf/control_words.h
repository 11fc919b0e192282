// The control words of rich text that mean something to the notebook. All others are passed over.
#pragma once

#include <QtGlobal>
#include <optional>
#include <string_view>

namespace lirovan::platform::rtf {

enum class Action {
    // Character format
    Bold,
    Italic,
    Underline,
    UnderlineOff,
    Strike,
    Script,
    Font,
    FontSize,
    Color,
    Background,
    Hidden,
    Plain,
    // Paragraph format
    ParagraphDefault,
    Align,
    LeftIndent,
    FirstIndent,
    // Text
    Character,
    Unicode,
    FallbackLength,
    Paragraph,
    Cell,
    Row,
    Binary,
    // Code page of the document and of fonts
    CodePage,
    DocumentFont,
    FontCharset,
    FontCodePage,
    // Colour table
    Red,
    Green,
    Blue,
    // Destinations: what becomes of the group
    FontTable,
    ColorTable,
    Skip,
    Field,
    FieldInstruction,
    Footnote,
    UnicodePair,
    UnicodePart,
    Transparent
};

struct ControlWord {
    std::string_view name;
    Action action;
    int value = 0;  ///< what the word stands for: a character, an alignment, a code page
};

/// nullptr for a word without a meaning here.
const ControlWord* findControlWord(std::string_view name);

}  // namespace lirovan::platform::rtf
