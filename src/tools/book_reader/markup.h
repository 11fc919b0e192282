// A document as a flat list of elements and texts, read by an XML parser or, where it is not well-formed, by
// an HTML parser. Flat, so that no depth of nesting needs a stack.
#pragma once

#include <QByteArray>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/result.h"
#include "tools/book_reader/tags.h"

namespace lirovan::book_reader {

class Markup {
  public:
    enum class Kind : unsigned char { Start, End, Text };
    struct Token {
        Kind kind;
        Tag tag;          ///< Start and End
        quint32 partner;  ///< of a Start its End, of an End its Start
        quint32 first;    ///< Text: offset in the store; Start: first attribute
        quint32 count;    ///< Text: bytes; Start: attributes
        quint32 name;     ///< Start: offset of the name
        quint32 nameBytes;
    };

    /// Bytes in any code page. Fails where the document is hostile or larger than limits.h allows; broken
    /// markup is read as well as it goes, and none of its text is lost.
    static platform::Result<Markup> parse(const QByteArray& bytes);

    quint32 size() const { return static_cast<quint32>(tokens_.size()); }
    const Token& operator[](quint32 index) const { return tokens_[index]; }
    std::string_view text(quint32 index) const { return view(tokens_[index].first, tokens_[index].count); }
    /// The name of a Start as written, without a prefix.
    std::string_view name(quint32 index) const { return view(tokens_[index].name, tokens_[index].nameBytes); }
    const TagRule& rule(quint32 index) const { return tagRule(name(index)); }
    bool isStart(quint32 index) const { return tokens_[index].kind == Kind::Start; }
    bool isStart(quint32 index, std::string_view name_) const {
        return isStart(index) && name(index) == name_;
    }

    /// The value of an attribute ("href", "epub:type"); empty where it is missing.
    std::string_view attribute(quint32 index, std::string_view name) const;
    struct Attribute {
        std::string_view name, value;
    };
    std::vector<Attribute> attributes(quint32 index) const;
    /// All texts of an element, blanks simplified.
    QString simplifiedText(quint32 index) const;
    /// Whether the attribute, a list of words, holds `word`.
    bool hasWord(quint32 index, std::string_view attributeName, std::string_view word) const;

  private:
    friend class MarkupBuilder;
    struct StoredAttribute {
        quint32 name, nameBytes, value, valueBytes;
    };
    std::string_view view(quint32 offset, quint32 bytes) const {
        return std::string_view(store_).substr(offset, bytes);
    }

    std::string store_;
    std::vector<Token> tokens_;
    std::vector<StoredAttribute> attributes_;
};

}  // namespace lirovan::book_reader
