// The state of one reading of rich text. Its code lies in three files: the syntax (parser.cpp), what the
// control words do (parser_words.cpp), and what becomes of text (parser_text.cpp).
#pragma once

#include <QByteArray>
#include <QHash>
#include <optional>
#include <vector>

#include "platform/core/rtf/byte_decoder.h"
#include "platform/core/rtf/control_words.h"
#include "platform/core/rtf/document.h"
#include "platform/core/rtf/reader.h"

namespace lirovan::platform::rtf {

enum class Destination : std::uint8_t { Text, FontTable, ColorTable, Instruction, Skipped };

constexpr int NoFont = -1;
constexpr int NoLink = -1;
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
    bool isField = false;  ///< the group of a \field itself, not one within
    int link = NoLink;     ///< number of the address that its text leads to
};

struct FontEntry {
    QString name;
    int charset = -1;  ///< -1: none named
    int codePage = 0;  ///< \cpg
};

class Parser {
  public:
    Parser(QByteArrayView input, ReadLimit limit) : at_(input.begin()), end_(input.end()), limit_(limit) {}
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
    /// The instruction of a field has ended: the field may be a link.
    void takeInstruction();

    // Text and its surroundings
    void takeByte(char byte);
    void takeCharacter(int unicode);
    void takeUnicode(int value);
    void takeText(QStringView text);
    void addToInstruction(const QString& text);
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
    QString instruction_;  ///< of the field that is being read
    std::vector<QString> links_;

    ByteDecoder decoder_;
    Builder builder_;
};

}  // namespace lirovan::platform::rtf
