#include "platform/core/rtf/parser.h"

#include <algorithm>
#include <utility>

namespace lirovan::platform::rtf {

Document Parser::read() {
    while (at_ != end_ && builder_.characters() < limit_.characters) {
        switch (*at_) {
            case '{':
                ++at_;
                openGroup();
                break;
            case '}':
                ++at_;
                closeGroup();
                break;
            case '\\':
                ++at_;
                control();
                break;
            case '\r':
            case '\n':
            case '\0':
                if (at_ == groupStart_) ++groupStart_;
                ++at_;
                break;
            default:
                plainBytes();
        }
    }
    flush();
    // The last paragraph mark ends the text; it does not begin another paragraph.
    if (!builder_.atParagraphStart() || !builder_.hasParagraphs())
        builder_.endParagraph({group_.alignment, group_.leftIndent, group_.firstIndent});
    return builder_.take();
}

void Parser::openGroup() {
    flush();
    toSkip_ = 0;
    starred_ = false;
    groupStart_ = at_;
    // Deeper than any real file. From here on groups are counted, and their formats run on into one another.
    constexpr size_t deepest = 200'000;
    if (outer_.size() < deepest)
        outer_.push_back(group_);
    else
        ++tooDeep_;
    group_.isField = false;
}

void Parser::closeGroup() {
    flush();
    toSkip_ = 0;
    starred_ = false;
    if (tooDeep_ > 0) {
        --tooDeep_;
    } else if (outer_.size() <= 1) {
        at_ = end_;  // the whole is one group, and what follows it is not part of it
    } else {
        const bool footnoteEnds = group_.footnote && !outer_.back().footnote;
        if (footnoteEnds) takeText(u"]");
        const bool instructionEnds = group_.destination == Destination::Instruction &&
                                     outer_.back().destination != Destination::Instruction;
        group_ = outer_.back();
        outer_.pop_back();
        format_.reset();
        if (instructionEnds) takeInstruction();
    }
}

void Parser::control() {
    if (at_ == end_) return;
    const char next = *at_;
    if ((next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z')) return controlWord();
    ++at_;
    controlSymbol(next);
}

void Parser::controlSymbol(char symbol) {
    switch (symbol) {
        case '\'':
            return hexByte();
        case '*':
            // Elsewhere the star has no meaning; some programs write it before the words of a style.
            starred_ = at_ - 2 == groupStart_;
            return;
        case '\\':
        case '{':
        case '}':
            return takeByte(symbol);
        case '~':
            return takeCharacter(0xA0);
        case '-':
            return takeCharacter(0xAD);
        case '_':
            return takeCharacter(0x2011);
        case '\t':
            return takeCharacter('\t');
        case '\r':
        case '\n':
            flush();
            return endParagraph();
        default:
            return;
    }
}

void Parser::hexByte() {
    int value = 0;
    for (int digits = 0; digits < 2; ++digits, ++at_) {
        const char c = at_ == end_ ? '\0' : *at_;
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9')
            value = value * 16 + (c - '0');
        else if (lower >= 'a' && lower <= 'f')
            value = value * 16 + (lower - 'a' + 10);
        else
            return;
    }
    takeByte(static_cast<char>(value));
}

void Parser::controlWord() {
    const char* begin = at_;
    while (at_ != end_ && ((*at_ >= 'a' && *at_ <= 'z') || (*at_ >= 'A' && *at_ <= 'Z'))) ++at_;
    const std::string_view name(begin, static_cast<size_t>(at_ - begin));
    bool hasValue = false;
    const int value = number(hasValue);
    if (at_ != end_ && *at_ == ' ') ++at_;

    const ControlWord* word = findControlWord(name);
    const bool starred = std::exchange(starred_, false);
    const bool isKnown =
        word && (word->action == Action::Transparent || word->action == Action::UnicodePart ||
                 word->action == Action::FieldInstruction);
    if (starred && !isKnown) {
        flush();
        skipGroup();
    } else if (word) {
        apply(*word, value, hasValue);
    }
    if (word && word->action == Action::Binary) at_ += std::clamp<qsizetype>(value, 0, end_ - at_);
}

int Parser::number(bool& present) {
    const char* digits = at_;
    const bool negative = digits != end_ && *digits == '-';
    if (negative) ++digits;
    present = digits != end_ && *digits >= '0' && *digits <= '9';
    if (!present) return 0;
    // Stays below what an int holds, however many digits follow.
    constexpr int largest = 2'000'000'000;
    qint64 value = 0;
    for (at_ = digits; at_ != end_ && *at_ >= '0' && *at_ <= '9'; ++at_)
        value = std::min<qint64>(value * 10 + (*at_ - '0'), largest);
    return static_cast<int>(negative ? -value : value);
}

void Parser::plainBytes() {
    const char* begin = at_;
    while (at_ != end_ && *at_ != '{' && *at_ != '}' && *at_ != '\\' && *at_ != '\r' && *at_ != '\n' &&
           *at_ != '\0')
        ++at_;
    const qsizetype skipped = std::min<qsizetype>(toSkip_, at_ - begin);
    toSkip_ -= static_cast<int>(skipped);
    begin += skipped;
    if (group_.destination == Destination::Text) {
        if (isShown()) bytes_.append(begin, at_ - begin);
    } else if (group_.destination != Destination::Skipped) {
        for (; begin != at_; ++begin) takeByte(*begin);
    }
}

}  // namespace lirovan::platform::rtf
