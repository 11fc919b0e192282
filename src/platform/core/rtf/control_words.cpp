#include "platform/core/rtf/control_words.h"

#include <algorithm>
#include <array>

#include "platform/core/rtf/document.h"

namespace lirovan::platform::rtf {
namespace {

constexpr int number(Alignment alignment) {
    return static_cast<int>(alignment);
}
constexpr int number(Script script) {
    return static_cast<int>(script);
}

using enum Action;

// In the order of the names: findControlWord() searches by halves.
constexpr std::array words{
    ControlWord{"annotation", Skip},
    ControlWord{"ansi", CodePage, 0},
    ControlWord{"ansicpg", CodePage},
    ControlWord{"atnauthor", Skip},
    ControlWord{"atnid", Skip},
    ControlWord{"b", Bold},
    ControlWord{"bin", Binary},
    ControlWord{"blue", Blue},
    ControlWord{"bullet", Character, 0x2022},
    ControlWord{"buptim", Skip},
    ControlWord{"cb", Background},
    ControlWord{"cell", Cell},
    ControlWord{"cf", Color},
    ControlWord{"chcbpat", Background},
    ControlWord{"colortbl", ColorTable},
    ControlWord{"column", Row},
    ControlWord{"comment", Skip},
    ControlWord{"cpg", FontCodePage},
    ControlWord{"creatim", Skip},
    ControlWord{"deff", DocumentFont},
    ControlWord{"deleted", Hidden},
    ControlWord{"dn", Script, number(Script::Sub)},
    ControlWord{"do", Transparent},
    ControlWord{"emdash", Character, 0x2014},
    ControlWord{"emspace", Character, 0x2003},
    ControlWord{"endash", Character, 0x2013},
    ControlWord{"enspace", Character, 0x2002},
    ControlWord{"f", Font},
    ControlWord{"falt", Skip},
    ControlWord{"fchars", Skip},
    ControlWord{"fcharset", FontCharset},
    ControlWord{"fi", FirstIndent},
    ControlWord{"field", Field},
    ControlWord{"fldinst", FieldInstruction},
    ControlWord{"fonttbl", FontTable},
    ControlWord{"footer", Skip},
    ControlWord{"footerf", Skip},
    ControlWord{"footerl", Skip},
    ControlWord{"footerr", Skip},
    ControlWord{"footnote", Footnote},
    ControlWord{"fs", FontSize},
    ControlWord{"ftncn", Skip},
    ControlWord{"ftnsep", Skip},
    ControlWord{"ftnsepc", Skip},
    ControlWord{"green", Green},
    ControlWord{"header", Skip},
    ControlWord{"headerf", Skip},
    ControlWord{"headerl", Skip},
    ControlWord{"headerr", Skip},
    ControlWord{"highlight", Background},
    ControlWord{"i", Italic},
    ControlWord{"info", Skip},
    ControlWord{"lchars", Skip},
    ControlWord{"ldblquote", Character, 0x201C},
    ControlWord{"li", LeftIndent},
    ControlWord{"line", Character, 0x2028},
    ControlWord{"lquote", Character, 0x2018},
    ControlWord{"mac", CodePage, 10000},
    ControlWord{"nestcell", Cell},
    ControlWord{"nestrow", Row},
    ControlWord{"nesttableprops", Transparent},
    ControlWord{"nonesttables", Skip},
    ControlWord{"nonshppict", Skip},
    ControlWord{"nosupersub", Script, number(Script::None)},
    ControlWord{"objdata", Skip},
    ControlWord{"page", Row},
    ControlWord{"par", Paragraph},
    ControlWord{"pard", ParagraphDefault},
    ControlWord{"pc", CodePage, 437},
    ControlWord{"pca", CodePage, 850},
    ControlWord{"pict", Skip},
    ControlWord{"plain", Plain},
    ControlWord{"pntxta", Skip},
    ControlWord{"pntxtb", Skip},
    ControlWord{"printim", Skip},
    ControlWord{"private1", Skip},
    ControlWord{"qc", Align, number(Alignment::Center)},
    ControlWord{"qd", Align, number(Alignment::Justify)},
    ControlWord{"qj", Align, number(Alignment::Justify)},
    ControlWord{"ql", Align, number(Alignment::Left)},
    ControlWord{"qmspace", Character, 0x2005},
    ControlWord{"qr", Align, number(Alignment::Right)},
    ControlWord{"rdblquote", Character, 0x201D},
    ControlWord{"red", Red},
    ControlWord{"revtim", Skip},
    ControlWord{"row", Row},
    ControlWord{"rquote", Character, 0x2019},
    ControlWord{"rxe", Skip},
    ControlWord{"sect", Row},
    ControlWord{"shpinst", Transparent},
    ControlWord{"shprslt", Skip},
    ControlWord{"sn", Skip},
    ControlWord{"softline", Character, 0x2028},
    ControlWord{"sp", Skip},
    ControlWord{"strike", Strike},
    ControlWord{"striked", Strike},
    ControlWord{"stylesheet", Skip},
    ControlWord{"sub", Script, number(Script::Sub)},
    ControlWord{"super", Script, number(Script::Super)},
    ControlWord{"sv", Skip},
    ControlWord{"tab", Character, '\t'},
    ControlWord{"tc", Skip},
    ControlWord{"tcn", Skip},
    ControlWord{"template", Skip},
    ControlWord{"txe", Skip},
    ControlWord{"u", Unicode},
    ControlWord{"uc", FallbackLength},
    ControlWord{"ud", UnicodePart},
    ControlWord{"ul", Underline},
    ControlWord{"uld", Underline},
    ControlWord{"uldash", Underline},
    ControlWord{"uldashd", Underline},
    ControlWord{"uldashdd", Underline},
    ControlWord{"uldb", Underline},
    ControlWord{"ulhwave", Underline},
    ControlWord{"ulldash", Underline},
    ControlWord{"ulnone", UnderlineOff},
    ControlWord{"ulth", Underline},
    ControlWord{"ulthd", Underline},
    ControlWord{"ulthdash", Underline},
    ControlWord{"ulthdashd", Underline},
    ControlWord{"ulthdashdd", Underline},
    ControlWord{"ulthldash", Underline},
    ControlWord{"ululdbwave", Underline},
    ControlWord{"ulw", Underline},
    ControlWord{"ulwave", Underline},
    ControlWord{"up", Script, number(Script::Super)},
    ControlWord{"upr", UnicodePair},
    ControlWord{"v", Hidden},
    ControlWord{"xe", Skip},
    ControlWord{"zwj", Character, 0x200D},
    ControlWord{"zwnj", Character, 0x200C},
};

constexpr bool inOrder() {
    for (size_t i = 1; i < words.size(); ++i)
        if (words[i].name <= words[i - 1].name) return false;
    return true;
}
static_assert(inOrder());

}  // namespace

const ControlWord* findControlWord(std::string_view name) {
    const auto found =
        std::lower_bound(words.begin(), words.end(), name,
                         [](const ControlWord& word, std::string_view wanted) { return word.name < wanted; });
    return found != words.end() && found->name == name ? &*found : nullptr;
}

}  // namespace lirovan::platform::rtf
