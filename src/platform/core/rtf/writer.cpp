#include "platform/core/rtf/writer.h"

#include <algorithm>
#include <map>
#include <span>

#include "platform/core/code_page.h"

namespace lirovan::platform::rtf {
namespace {

/// Numbers values in the order in which they first occur.
template <class T>
class Numbering {
  public:
    qsizetype of(const T& value) {
        const auto [place, isNew] = numbers_.try_emplace(value, static_cast<qsizetype>(values_.size()));
        if (isNew) values_.push_back(value);
        return place->second;
    }
    const std::vector<T>& values() const { return values_; }

  private:
    std::map<T, qsizetype> numbers_;
    std::vector<T> values_;
};

class Writer {
  public:
    QByteArray write(const Document& document, Ending ending);

  private:
    /// A run's format with the table indexes in place of names and colours.
    struct Look {
        qsizetype font = -1;
        int halfPoints = -1;
        bool bold = false, italic = false, underline = false, strike = false;
        Script script = Script::None;
        qsizetype color = 0, background = 0;  // 0: none
    };

    Look look(const CharFormat& format);
    /// Text to an address is a field, within which formats begin and end.
    void changeLink(const QString& link);
    qsizetype colorIndex(const std::optional<Rgb>& color);
    void paragraphFormat(const ParagraphFormat& format);
    void charFormat(const Look& next);
    void text(QStringView text);
    void character(QChar unit);
    void word(const char* name);
    void word(const char* name, qsizetype value);
    void toggle(const char* name, bool from, bool to);
    QByteArray header() const;

    QByteArray body_;
    bool afterWord_ = false;  // a letter that follows needs a space in between
    Look current_;
    Look beforeLink_;
    QString link_;
    std::optional<ParagraphFormat> currentParagraph_;
    Numbering<QString> fonts_;
    Numbering<Rgb> colors_;
};

QByteArray Writer::write(const Document& document, Ending ending) {
    const Paragraph nothing;
    const std::span<const Paragraph> paragraphs = document.paragraphs.empty()
                                                      ? std::span(&nothing, 1)
                                                      : std::span<const Paragraph>(document.paragraphs);
    for (const Paragraph& paragraph : paragraphs) {
        paragraphFormat(paragraph.format);
        for (const Run& run : paragraph.runs) {
            changeLink(cleanLink(run.format.link));
            charFormat(look(run.format));
            text(run.text);
        }
        changeLink({});
        const bool last = &paragraph == &paragraphs.back();
        if (last && ending == Ending::Inline && !paragraph.runs.empty()) break;
        word("par");
        body_ += '\n';
        afterWord_ = false;
    }
    return header() + body_ + '}';
}

void Writer::changeLink(const QString& link) {
    if (link == link_) return;
    if (!link_.isEmpty()) {
        body_ += "}}";
        current_ = beforeLink_;
        afterWord_ = false;
    }
    if (!link.isEmpty()) {
        body_ += "{\\field{\\*\\fldinst{HYPERLINK \"" + link.toLatin1() + "\"}}{";
        word("fldrslt");
        beforeLink_ = current_;
    }
    link_ = link;
}

Writer::Look Writer::look(const CharFormat& format) {
    Look made;
    made.font = fonts_.of(cleanFontName(format.font));
    made.halfPoints = std::clamp(format.halfPoints, 1, MaxHalfPoints);
    made.bold = format.bold;
    made.italic = format.italic;
    made.underline = format.underline;
    made.strike = format.strike;
    made.script = format.script;
    made.color = format.color == Black ? 0 : colorIndex(format.color);
    made.background = colorIndex(format.background);
    return made;
}

qsizetype Writer::colorIndex(const std::optional<Rgb>& color) {
    return color ? colors_.of(*color) + 1 : 0;
}

void Writer::paragraphFormat(const ParagraphFormat& format) {
    if (currentParagraph_ == format) return;
    currentParagraph_ = format;
    word("pard");
    switch (format.alignment) {
        case Alignment::Left:
            break;
        case Alignment::Center:
            word("qc");
            break;
        case Alignment::Right:
            word("qr");
            break;
        case Alignment::Justify:
            word("qj");
            break;
    }
    if (const int indent = std::clamp(format.firstIndent, -MaxIndent, MaxIndent)) word("fi", indent);
    if (const int indent = std::clamp(format.leftIndent, 0, MaxIndent)) word("li", indent);
}

void Writer::charFormat(const Look& next) {
    if (next.font != current_.font) word("f", next.font);
    if (next.halfPoints != current_.halfPoints) word("fs", next.halfPoints);
    toggle("b", current_.bold, next.bold);
    toggle("i", current_.italic, next.italic);
    if (current_.underline != next.underline) word(next.underline ? "ul" : "ulnone");
    toggle("strike", current_.strike, next.strike);
    if (current_.script != next.script)
        word(next.script == Script::Super ? "super" : next.script == Script::Sub ? "sub" : "nosupersub");
    if (next.color != current_.color) word("cf", next.color);
    if (next.background != current_.background) word("highlight", next.background);
    current_ = next;
}

void Writer::text(QStringView text) {
    for (const QChar unit : cleanText(text)) character(unit);
}

void Writer::character(QChar unit) {
    switch (unit.unicode()) {
        case u'\t':
            return word("tab");
        case QChar::LineSeparator:
            return word("line");
        case u'\\':
        case u'{':
        case u'}':
            body_ += '\\';
            body_ += static_cast<char>(unit.unicode());
            break;
        case 0xA0:
            body_ += "\\~";
            break;
        case 0xAD:
            body_ += "\\-";
            break;
        case 0x2011:
            body_ += "\\_";
            break;
        default:
            if (unit.unicode() < 0x80) {
                if (afterWord_) body_ += ' ';
                body_ += static_cast<char>(unit.unicode());
            } else if (const std::optional<unsigned char> byte = windows1254Byte(unit.unicode())) {
                body_ += "\\'";
                body_ += QByteArray::number(*byte, 16);
            } else {
                body_ += "\\u";
                body_ += QByteArray::number(static_cast<qint16>(unit.unicode()));
                body_ += '?';
            }
    }
    afterWord_ = false;
}

void Writer::word(const char* name) {
    body_ += '\\';
    body_ += name;
    afterWord_ = true;
}

void Writer::word(const char* name, qsizetype value) {
    word(name);
    body_ += QByteArray::number(value);
}

void Writer::toggle(const char* name, bool from, bool to) {
    if (from == to) return;
    word(name);
    if (!to) body_ += '0';
}

QByteArray Writer::header() const {
    // Character set 162 is Turkish: the bytes of the text are those of windows-1254 in every program.
    QByteArray out("{\\rtf1\\ansi\\ansicpg1254\\uc1\\deff0{\\fonttbl");
    const std::vector<QString> standard{DefaultFont.toString()};
    const std::vector<QString>& fonts = fonts_.values().empty() ? standard : fonts_.values();
    for (size_t i = 0; i < fonts.size(); ++i) {
        Writer name;
        name.text(fonts[i]);
        out += "{\\f" + QByteArray::number(static_cast<qsizetype>(i)) + "\\fnil\\fcharset162 " + name.body_ +
               ";}";
    }
    out += "}\n";
    if (colors_.values().empty()) return out;
    out += "{\\colortbl ;";
    for (const Rgb& color : colors_.values())
        out += "\\red" + QByteArray::number(color.red) + "\\green" + QByteArray::number(color.green) +
               "\\blue" + QByteArray::number(color.blue) + ';';
    return out + "}\n";
}

}  // namespace

QByteArray write(const Document& document, Ending ending) {
    return Writer().write(document, ending);
}

}  // namespace lirovan::platform::rtf
