#include <utility>

#include "platform/core/rtf/parser.h"

namespace lirovan::platform::rtf {
namespace {

// The bullets of the symbol fonts, which lie in a private area of Unicode. Their other pictures stay as they
// are.
QChar fromSymbolFont(char16_t unit) {
    if (unit == 0xF0B7) return QChar(0x2022);
    if (unit == 0xF0A7) return QChar(0x25AA);
    return QChar(unit);
}

}  // namespace

void Parser::takeByte(char byte) {
    if (toSkip_ > 0) {
        --toSkip_;
        return;
    }
    switch (group_.destination) {
        case Destination::Text:
            if (isShown()) bytes_ += byte;
            break;
        case Destination::Instruction:
            bytes_ += byte;
            break;
        case Destination::FontTable:
            if (byte == ';')
                flush();
            else
                bytes_ += byte;
            break;
        case Destination::ColorTable:
            if (byte == ';') endColorEntry();
            break;
        case Destination::Skipped:
            break;
    }
}

// A word or symbol that stands for one character.
void Parser::takeCharacter(int unicode) {
    if (toSkip_ > 0)
        --toSkip_;
    else if (group_.destination != Destination::Skipped)
        takeUnicode(unicode);
}

void Parser::takeUnicode(int value) {
    flush();
    if (group_.destination == Destination::FontTable && value >= ' ' && value <= 0xFFFF) {
        fonts_[entryFont_].name += QChar(static_cast<char16_t>(value));
    } else if (group_.destination == Destination::Instruction) {
        if (value <= 0xFFFF) addToInstruction(QString(QChar(static_cast<char16_t>(value))));
    } else if (value > 0xFFFF) {
        const char32_t whole = value <= 0x10FFFF ? static_cast<char32_t>(value) : U'\uFFFD';
        takeText(QString::fromUcs4(&whole, 1));
    } else if (QChar::isHighSurrogate(static_cast<char32_t>(value)) && isShown()) {
        highSurrogate_ = static_cast<char16_t>(value);
    } else {
        const QChar unit = fromSymbolFont(static_cast<char16_t>(value));
        if (unit.isLowSurrogate() && highSurrogate_) {
            const QChar pair[] = {QChar(highSurrogate_), unit};
            highSurrogate_ = 0;
            takeText(QStringView(pair, 2));
        } else {
            takeText(QStringView(&unit, 1));
        }
    }
}

void Parser::takeText(QStringView text) {
    if (!isShown()) return;
    highSurrogate_ = 0;
    if (std::exchange(cellPending_, false)) builder_.append(u"\t", format());
    builder_.append(text, format());
}

// No address is longer; a file may call anything an instruction.
void Parser::addToInstruction(const QString& text) {
    constexpr qsizetype longest = 10'000;
    if (instruction_.size() < longest) instruction_ += text;
}

void Parser::flush() {
    if (bytes_.isEmpty()) return;
    const bool isInstruction = group_.destination == Destination::Instruction;
    QString text = decoder_.decode(isInstruction ? documentCodePage_ : codePage(), bytes_);
    bytes_.resize(0);  // its memory serves the next text too
    if (group_.destination == Destination::FontTable) {
        fonts_[entryFont_].name += text;
        return;
    }
    if (isInstruction) return addToInstruction(text);
    const int font = group_.font == NoFont ? defaultFont_ : group_.font;
    const bool symbols = fonts_.value(font).charset == ByteDecoder::SymbolCharset;
    if (symbols)
        text.replace(QChar(0xB7), fromSymbolFont(0xF0B7)).replace(QChar(0xA7), fromSymbolFont(0xF0A7));
    takeText(text);
}

int Parser::codePage() {
    const bool inTable = group_.destination == Destination::FontTable;
    const int number = inTable ? entryFont_ : group_.font == NoFont ? defaultFont_ : group_.font;
    const auto font = fonts_.constFind(number);
    if (font == fonts_.cend()) return documentCodePage_;
    if (font->codePage) return font->codePage;
    const int ofCharset = font->charset >= 0 ? ByteDecoder::ofCharset(font->charset) : 0;
    return ofCharset ? ofCharset : documentCodePage_;
}

const CharFormat& Parser::format() {
    if (format_) return *format_;
    format_.emplace();
    if (!limit_.formats) return *format_;
    const FontEntry font = fonts_.value(group_.font == NoFont ? defaultFont_ : group_.font);
    if (font.charset != ByteDecoder::SymbolCharset) format_->font = font.name;
    format_->halfPoints = group_.halfPoints;
    format_->bold = group_.bold;
    format_->italic = group_.italic;
    format_->underline = group_.underline;
    format_->strike = group_.strike;
    format_->script = group_.script;
    const auto color = [this](int index) -> std::optional<Rgb> {
        return index >= 0 && index < std::ssize(colors_) ? colors_[static_cast<size_t>(index)] : std::nullopt;
    };
    format_->color = color(group_.color);
    format_->background = color(group_.background);
    if (group_.link != NoLink) format_->link = links_[static_cast<size_t>(group_.link)];
    return *format_;
}

void Parser::endParagraph() {
    if (!isShown()) return;
    if (group_.footnote) return takeText(u" ");
    cellPending_ = false;
    builder_.endParagraph({group_.alignment, group_.leftIndent, group_.firstIndent});
}

// A tab stands between two cells, so it is written only once the second one has begun.
void Parser::cell() {
    if (!isShown()) return;
    if (std::exchange(cellPending_, false)) builder_.append(u"\t", format());
    cellPending_ = true;
}

void Parser::endRow() {
    if (!isShown()) return;
    if (cellPending_ || !builder_.atParagraphStart()) endParagraph();
}

void Parser::endColorEntry() {
    // More colours than any table has; a file that lists millions of them is not asked for them again.
    constexpr size_t most = 65'536;
    if (colors_.size() < most) colors_.push_back(entryColor_);
    entryColor_.reset();
}

}  // namespace lirovan::platform::rtf
