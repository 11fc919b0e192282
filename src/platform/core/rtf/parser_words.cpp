#include <algorithm>
#include <utility>

#include "platform/core/rtf/parser.h"

namespace lirovan::platform::rtf {

void Parser::apply(const ControlWord& word, int value, bool hasValue) {
    if (word.action == Action::Character) return takeCharacter(word.value);
    toSkip_ = 0;
    if (word.action >= Action::FontTable) return applyDestination(word);
    if (group_.destination == Destination::Skipped) return;
    const bool on = !hasValue || value != 0;
    if (applyText(word, value) || applyFont(word, value) || applyColor(word, value)) return;
    flush();
    if (applyCharFormat(word, value, on)) format_.reset();
    applyParagraphFormat(word, value);
}

bool Parser::applyCharFormat(const ControlWord& word, int value, bool on) {
    switch (word.action) {
        case Action::Bold:
            group_.bold = on;
            return true;
        case Action::Italic:
            group_.italic = on;
            return true;
        case Action::Underline:
            group_.underline = on;
            return true;
        case Action::UnderlineOff:
            group_.underline = false;
            return true;
        case Action::Strike:
            group_.strike = on;
            return true;
        case Action::Script:
            group_.script = on ? static_cast<rtf::Script>(word.value) : rtf::Script::None;
            return true;
        case Action::FontSize:
            group_.halfPoints = value > 0 ? std::min(value, MaxHalfPoints) : StandardHalfPoints;
            return true;
        case Action::Color:
            group_.color = value;
            return true;
        case Action::Background:
            group_.background = value;
            return true;
        case Action::Hidden:
            group_.hidden = on;
            return true;
        case Action::Plain:
            group_.font = NoFont;
            group_.halfPoints = StandardHalfPoints;
            group_.color = group_.background = 0;
            group_.bold = group_.italic = group_.underline = group_.strike = group_.hidden = false;
            group_.script = rtf::Script::None;
            return true;
        default:
            return false;
    }
}

bool Parser::applyParagraphFormat(const ControlWord& word, int value) {
    switch (word.action) {
        case Action::ParagraphDefault:
            group_.alignment = Alignment::Left;
            group_.leftIndent = group_.firstIndent = 0;
            return true;
        case Action::Align:
            group_.alignment = static_cast<Alignment>(word.value);
            return true;
        case Action::LeftIndent:
            group_.leftIndent = value;
            return true;
        case Action::FirstIndent:
            group_.firstIndent = value;
            return true;
        default:
            return false;
    }
}

bool Parser::applyText(const ControlWord& word, int value) {
    switch (word.action) {
        case Action::Unicode:
            takeUnicode(value < 0 ? value + 0x10000 : value);
            toSkip_ = group_.fallbackLength;
            return true;
        case Action::FallbackLength:
            group_.fallbackLength = std::max(value, 0);
            return true;
        case Action::Paragraph:
            flush();
            endParagraph();
            return true;
        case Action::Cell:
            flush();
            cell();
            return true;
        case Action::Row:
            flush();
            endRow();
            return true;
        case Action::Binary:
            return true;
        default:
            return false;
    }
}

bool Parser::applyFont(const ControlWord& word, int value) {
    const bool inTable = group_.destination == Destination::FontTable;
    switch (word.action) {
        case Action::CodePage:
            flush();
            documentCodePage_ = word.value ? word.value : value ? value : ByteDecoder::Turkish;
            return true;
        case Action::DocumentFont:
            flush();
            defaultFont_ = value;
            format_.reset();
            return true;
        case Action::Font:
            if (inTable) {
                flush();
                entryFont_ = value;
                fonts_.insert(entryFont_, {});
            } else {
                flush();
                group_.font = value;
            }
            format_.reset();
            return true;
        case Action::FontCharset:
            if (inTable) fonts_[entryFont_].charset = value;
            return true;
        case Action::FontCodePage:
            if (inTable) fonts_[entryFont_].codePage = value;
            return true;
        default:
            return false;
    }
}

bool Parser::applyColor(const ControlWord& word, int value) {
    if (word.action != Action::Red && word.action != Action::Green && word.action != Action::Blue)
        return false;
    if (group_.destination != Destination::ColorTable) return true;
    if (!entryColor_) entryColor_.emplace();
    const auto part = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
    if (word.action == Action::Red) entryColor_->red = part;
    if (word.action == Action::Green) entryColor_->green = part;
    if (word.action == Action::Blue) entryColor_->blue = part;
    return true;
}

void Parser::applyDestination(const ControlWord& word) {
    flush();
    // Within what is skipped nothing comes to life again, but for the Unicode half of a pair.
    if (group_.destination == Destination::Skipped) {
        if (word.action == Action::UnicodePart) group_.destination = group_.outsidePair;
        return;
    }
    switch (word.action) {
        case Action::FontTable:
            group_.destination = Destination::FontTable;
            break;
        case Action::ColorTable:
            group_.destination = Destination::ColorTable;
            break;
        case Action::Skip:
            skipGroup();
            break;
        case Action::UnicodePair:
            // The same text twice: for old programs, and in Unicode.
            group_.outsidePair = group_.destination;
            group_.destination = Destination::Skipped;
            break;
        case Action::Field:
            group_.isField = true;
            break;
        case Action::FieldInstruction:
            group_.destination = Destination::Instruction;
            instruction_.clear();
            break;
        case Action::Footnote:
            group_.footnote = true;
            takeText(u" [");
            break;
        default:
            break;
    }
}

void Parser::takeInstruction() {
    const QString instruction = std::exchange(instruction_, {}).trimmed();
    constexpr QStringView name = u"HYPERLINK";
    if (!group_.isField || !instruction.startsWith(name)) return;
    const QString rest = instruction.sliced(name.size()).trimmed();
    const QString address =
        rest.startsWith(u'"') ? rest.sliced(1).section(u'"', 0, 0) : rest.section(u' ', 0, 0);
    const QString link = cleanLink(address);
    if (link.isEmpty()) return;
    links_.push_back(link);
    group_.link = static_cast<int>(links_.size()) - 1;
    format_.reset();
}

void Parser::skipGroup() {
    group_.destination = group_.outsidePair = Destination::Skipped;
}

}  // namespace lirovan::platform::rtf
