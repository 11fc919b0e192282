#include "platform/core/rtf/reader.h"

#include <QHash>
#include <QStringDecoder>
#include <algorithm>

#include "platform/core/code_page.h"
#include "platform/core/rtf/byte_decoder.h"
#include "platform/core/rtf/control_words.h"

namespace lirovan::platform::rtf {
namespace {

enum class Destination : std::uint8_t { Text, FontTable, ColorTable, Skipped };

constexpr int NoFont = -1;
constexpr int StandardHalfPoints = 24;  // what \plain and the beginning of a file mean

/// What a group hands down to the groups within, and gets back at its end. Plain data: a file can open a
/// hundred thousand groups, one in another.
struct Group {
    int font = NoFont;  ///< NoFont: the document's default font
    int halfPoints = StandardHalfPoints;
    int color = 0, background = 0;
    int leftIndent = 0, firstIndent = 0;
    int fallbackLength = 1;  ///< \uc
    Alignment alignment = Alignment::Left;
    Script script = Script::None;
    Destination destination = Destination::Text;
    Destination outsidePair = Destination::Skipped;  ///< what the \upr around stands in
    bool bold = false, italic = false, underline = false, strike = false;
    bool hidden = false;
    bool footnote = false;
};

struct FontEntry {
    QString name;
    int charset = -1;  ///< -1: none named
    int codePage = 0;  ///< \cpg
};

// The bullets of the symbol fonts, which lie in a private area of Unicode. Their other pictures stay as they
// are.
QChar fromSymbolFont(char16_t unit) {
    if (unit == 0xF0B7) return QChar(0x2022);
    if (unit == 0xF0A7) return QChar(0x25AA);
    return QChar(unit);
}

class Reader {
  public:
    Reader(QByteArrayView input, ReadLimit limit) : at_(input.begin()), end_(input.end()), limit_(limit) {}
    Document read();

  private:
    // The layers of the syntax
    void openGroup();
    void closeGroup();
    void control();
    void controlWord();
    void controlSymbol(char symbol);
    int number(bool& present);
    void hexByte();
    void plainBytes();

    // What the words do
    void apply(const ControlWord& word, int value, bool hasValue);
    bool applyCharFormat(const ControlWord& word, int value, bool on);
    bool applyParagraphFormat(const ControlWord& word, int value);
    bool applyText(const ControlWord& word, int value);
    bool applyFont(const ControlWord& word, int value);
    bool applyColor(const ControlWord& word, int value);
    void applyDestination(const ControlWord& word);
    void skipGroup();

    // Text and its surroundings
    void takeByte(char byte);
    void takeCharacter(int unicode);
    void takeUnicode(int value);
    void takeText(QStringView text);
    void flush();
    void endParagraph();
    void cell();
    void endRow();
    void endColorEntry();
    const CharFormat& format();
    int codePage();
    bool isShown() const { return group_.destination == Destination::Text && !group_.hidden; }

    const char* at_;
    const char* end_;
    ReadLimit limit_;

    Group group_;
    std::vector<Group> outer_;
    qsizetype tooDeep_ = 0;  // open groups beyond those that are kept
    const char* groupStart_ = nullptr;
    bool starred_ = false;  // after \*: a destination that may be skipped
    int toSkip_ = 0;        // characters that stand for the \u before them

    QByteArray bytes_;  // text in the current code page, not decoded yet
    char16_t highSurrogate_ = 0;
    bool cellPending_ = false;
    std::optional<CharFormat> format_;  // of group_; nothing: not worked out since it changed

    int documentCodePage_ = ByteDecoder::Turkish;
    int defaultFont_ = NoFont;
    QHash<int, FontEntry> fonts_;
    int entryFont_ = NoFont;
    std::vector<std::optional<Rgb>> colors_;
    std::optional<Rgb> entryColor_;

    ByteDecoder decoder_;
    Builder builder_;
};

Document Reader::read() {
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

void Reader::openGroup() {
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
}

void Reader::closeGroup() {
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
        group_ = outer_.back();
        outer_.pop_back();
        format_.reset();
    }
}

void Reader::control() {
    if (at_ == end_) return;
    const char next = *at_;
    if ((next >= 'a' && next <= 'z') || (next >= 'A' && next <= 'Z')) return controlWord();
    ++at_;
    controlSymbol(next);
}

void Reader::controlSymbol(char symbol) {
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

void Reader::hexByte() {
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

void Reader::controlWord() {
    const char* begin = at_;
    while (at_ != end_ && ((*at_ >= 'a' && *at_ <= 'z') || (*at_ >= 'A' && *at_ <= 'Z'))) ++at_;
    const std::string_view name(begin, static_cast<size_t>(at_ - begin));
    bool hasValue = false;
    const int value = number(hasValue);
    if (at_ != end_ && *at_ == ' ') ++at_;

    const ControlWord* word = findControlWord(name);
    const bool starred = std::exchange(starred_, false);
    if (starred && (!word || (word->action != Action::Transparent && word->action != Action::UnicodePart))) {
        flush();
        skipGroup();
    } else if (word) {
        apply(*word, value, hasValue);
    }
    if (word && word->action == Action::Binary) at_ += std::clamp<qsizetype>(value, 0, end_ - at_);
}

int Reader::number(bool& present) {
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

void Reader::plainBytes() {
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

void Reader::apply(const ControlWord& word, int value, bool hasValue) {
    if (word.action == Action::Character) return takeCharacter(word.value);
    toSkip_ = 0;
    if (word.action >= Action::FontTable) return applyDestination(word);
    if (group_.destination == Destination::Skipped) return;
    const bool on = !hasValue || value != 0;
    if (applyText(word, value) || applyFont(word, value) || applyColor(word, value)) return;
    flush();
    if (applyCharFormat(word, value, on)) format_.reset();
    if (word.action == Action::FontSize && !hasValue) group_.halfPoints = StandardHalfPoints;
    applyParagraphFormat(word, value);
}

bool Reader::applyCharFormat(const ControlWord& word, int value, bool on) {
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
            group_.halfPoints = std::clamp(value, 1, MaxHalfPoints);
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

bool Reader::applyParagraphFormat(const ControlWord& word, int value) {
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

bool Reader::applyText(const ControlWord& word, int value) {
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

bool Reader::applyFont(const ControlWord& word, int value) {
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

bool Reader::applyColor(const ControlWord& word, int value) {
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

void Reader::applyDestination(const ControlWord& word) {
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
        case Action::Footnote:
            group_.footnote = true;
            takeText(u" [");
            break;
        default:
            break;
    }
}

void Reader::skipGroup() {
    group_.destination = group_.outsidePair = Destination::Skipped;
}

void Reader::takeByte(char byte) {
    if (toSkip_ > 0) {
        --toSkip_;
        return;
    }
    switch (group_.destination) {
        case Destination::Text:
            if (isShown()) bytes_ += byte;
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
void Reader::takeCharacter(int unicode) {
    if (toSkip_ > 0)
        --toSkip_;
    else if (group_.destination != Destination::Skipped)
        takeUnicode(unicode);
}

void Reader::takeUnicode(int value) {
    flush();
    if (group_.destination == Destination::FontTable && value >= ' ' && value <= 0xFFFF) {
        fonts_[entryFont_].name += QChar(static_cast<char16_t>(value));
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

void Reader::takeText(QStringView text) {
    if (!isShown()) return;
    highSurrogate_ = 0;
    if (std::exchange(cellPending_, false)) builder_.append(u"\t", format());
    builder_.append(text, format());
}

void Reader::flush() {
    if (bytes_.isEmpty()) return;
    const QByteArray bytes = std::exchange(bytes_, {});
    if (group_.destination == Destination::FontTable) {
        fonts_[entryFont_].name += decoder_.decode(codePage(), bytes);
        return;
    }
    const int font = group_.font == NoFont ? defaultFont_ : group_.font;
    const bool symbols = fonts_.value(font).charset == ByteDecoder::SymbolCharset;
    QString text = decoder_.decode(codePage(), bytes);
    if (symbols)
        text.replace(QChar(0xB7), fromSymbolFont(0xF0B7)).replace(QChar(0xA7), fromSymbolFont(0xF0A7));
    takeText(text);
}

int Reader::codePage() {
    const bool inTable = group_.destination == Destination::FontTable;
    const int number = inTable ? entryFont_ : group_.font == NoFont ? defaultFont_ : group_.font;
    const auto font = fonts_.constFind(number);
    if (font == fonts_.cend()) return documentCodePage_;
    if (font->codePage) return font->codePage;
    const int ofCharset = font->charset >= 0 ? ByteDecoder::ofCharset(font->charset) : 0;
    return ofCharset ? ofCharset : documentCodePage_;
}

const CharFormat& Reader::format() {
    if (format_) return *format_;
    format_.emplace();
    const FontEntry font = fonts_.value(group_.font == NoFont ? defaultFont_ : group_.font);
    if (font.charset != ByteDecoder::SymbolCharset) format_->font = cleanFontName(font.name);
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
    return *format_;
}

void Reader::endParagraph() {
    if (!isShown()) return;
    if (group_.footnote) return takeText(u" ");
    cellPending_ = false;
    builder_.endParagraph({group_.alignment, group_.leftIndent, group_.firstIndent});
}

// A tab stands between two cells, so it is written only once the second one has begun.
void Reader::cell() {
    if (!isShown()) return;
    if (std::exchange(cellPending_, false)) builder_.append(u"\t", format());
    cellPending_ = true;
}

void Reader::endRow() {
    if (!isShown()) return;
    if (cellPending_ || !builder_.atParagraphStart()) endParagraph();
}

void Reader::endColorEntry() {
    // More colours than any table has; a file that lists millions of them is not asked for them again.
    constexpr size_t most = 65'536;
    if (colors_.size() < most) colors_.push_back(entryColor_);
    entryColor_.reset();
}

Document plainDocument(QStringView text, ReadLimit limit) {
    Builder builder;
    qsizetype begin = 0;
    while (builder.characters() < limit.characters) {
        qsizetype end = begin;
        while (end < text.size() && text[end] != u'\n' && text[end] != u'\r') ++end;
        builder.append(text.sliced(begin, end - begin), {});
        builder.endParagraph({});
        if (end == text.size()) break;
        begin = end + (text.sliced(end).startsWith(u"\r\n") ? 2 : 1);
    }
    return builder.take();
}

}  // namespace

bool isRtf(QByteArrayView text) {
    return text.trimmed().startsWith("{\\rtf");
}

Document read(QByteArrayView rtf, ReadLimit limit) {
    if (isRtf(rtf)) return Reader(rtf.trimmed(), limit).read();
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(rtf);
    return plainDocument(utf8.hasError() ? fromWindows1254(rtf) : text, limit);
}

Document read(QStringView rtf, ReadLimit limit) {
    const QStringView begin = rtf.left(4096).trimmed();
    if (!begin.startsWith(u"{\\rtf")) return plainDocument(rtf, limit);
    QByteArray bytes;
    bytes.reserve(rtf.size());
    for (const QChar unit : rtf) {
        if (const auto byte = windows1254Byte(unit.unicode()))
            bytes += static_cast<char>(*byte);
        else
            bytes += "\\u" + QByteArray::number(static_cast<qint16>(unit.unicode())) + "?";
    }
    return read(QByteArrayView(bytes), limit);
}

}  // namespace lirovan::platform::rtf
