// Formatted text as the notebook knows it: paragraphs of runs. The common ground between rich text (RTF)
// files, the edit box and pages.
#pragma once

#include <QString>
#include <QStringView>
#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

namespace lirovan::platform::rtf {

struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0;
    friend constexpr auto operator<=>(const Rgb&, const Rgb&) = default;
};

inline constexpr Rgb Black{0, 0, 0};

/// The face and size of text for which nothing else is said: 10 points, as in the notebook's edit box.
inline constexpr QStringView DefaultFont = u"Arial";
inline constexpr int DefaultHalfPoints = 20;
inline constexpr int MaxHalfPoints = 3200;
inline constexpr int MaxIndent = 31680;  ///< 22 inches in twips, the largest that word processors accept

enum class Script : std::uint8_t { None, Super, Sub };

struct CharFormat {
    QString font = DefaultFont.toString();
    int halfPoints = DefaultHalfPoints;
    bool bold = false, italic = false, underline = false, strike = false;
    Script script = Script::None;
    std::optional<Rgb> color = {};  ///< nothing: the text colour of the place where it is shown. Never black.
    std::optional<Rgb> background = {};  ///< a marker pen
    QString link = {};  ///< address that a click leads to, as cleanLink() has it; empty: none
    friend bool operator==(const CharFormat&, const CharFormat&) = default;
};

struct Run {
    QString text;  ///< never empty; may hold tabs and line breaks (U+2028), no other control character
    CharFormat format;
    friend bool operator==(const Run&, const Run&) = default;
};

enum class Alignment : std::uint8_t { Left, Center, Right, Justify };

struct ParagraphFormat {
    Alignment alignment = Alignment::Left;
    int leftIndent = 0;   ///< twips
    int firstIndent = 0;  ///< twips, relative to leftIndent
    friend bool operator==(const ParagraphFormat&, const ParagraphFormat&) = default;
};

struct Paragraph {
    ParagraphFormat format;
    std::vector<Run> runs;  ///< neighbours differ in format
    friend bool operator==(const Paragraph&, const Paragraph&) = default;
};

struct Document {
    std::vector<Paragraph> paragraphs;

    /// True when there is no text and no paragraph break.
    bool isEmpty() const;
    /// Paragraphs and line breaks as "\n".
    QString plainText() const;
    friend bool operator==(const Document&, const Document&) = default;
};

/// Line breaks become U+2028; control characters other than the tab, and the marks that editors use for
/// themselves (U+FFFC, U+FDD0, U+FDD1), are left out; a lone surrogate becomes U+FFFD.
QString cleanText(QStringView text);

/// A font name without the characters that would end it in a font table and without the script that old
/// systems added ("Arial Tur"); DefaultFont for an empty one.
QString cleanFontName(QStringView name);

/// An address that text may lead to: a topic of the library ("konu:12"), a page of the web, or mail; blanks,
/// quotes, backslashes, braces and what is not ASCII as %XX. Empty for any other, and for one that is longer
/// than 2,000 characters.
QString cleanLink(QStringView address);

/// Puts a document in its one normal form: clean texts, runs of equal format joined, sizes and indents in
/// range.
class Builder {
  public:
    void append(QStringView text, const CharFormat& format);
    void endParagraph(const ParagraphFormat& format);
    /// Text of the paragraph that has not ended yet?
    bool atParagraphStart() const { return runs_.empty(); }
    qsizetype characters() const { return characters_; }
    bool hasParagraphs() const { return !document_.paragraphs.empty(); }
    Document take() { return std::move(document_); }

  private:
    Document document_;
    std::vector<Run> runs_;
    QString font_, cleanFont_ = DefaultFont.toString();  // the last one, since a text has few
    QString link_, cleanLink_;                           // likewise
    qsizetype characters_ = 0;
};

/// The size that most of the text has; 0 when there is no text.
int prevailingHalfPoints(const Document& document);

}  // namespace lirovan::platform::rtf
