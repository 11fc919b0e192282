#include "tools/book_reader/markup.h"

#include <libxml/HTMLparser.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <cstring>

#include "tools/book_reader/limits.h"
#include "tools/book_reader/source_text.h"

namespace lirovan::book_reader {

using platform::Error;
using platform::Result;
using namespace Qt::StringLiterals;

// Takes what the parsers report. `stopped` once a limit is passed; the parser is told to stop, and whatever
// it still says is dropped.
class MarkupBuilder {
  public:
    Markup markup;
    bool stopped = false;
    Error reason;
    xmlParserCtxtPtr parser = nullptr;

    void start(std::string_view name) {
        if (stopped) return;
        if (open_.size() >= static_cast<size_t>(MaximalDepth))
            return stop(u"Kitabın bir belgesinde ögeler ölçüsüz derin iç içe; alınmadı."_s);
        if (full()) return;
        Markup::Token token{};
        token.kind = Markup::Kind::Start;
        token.tag = tagRule(name).tag;
        token.first = static_cast<quint32>(markup.attributes_.size());
        token.name = keep(name);
        token.nameBytes = static_cast<quint32>(name.size());
        open_.push_back(markup.size());
        markup.tokens_.push_back(token);
        joins_ = false;
    }

    void attribute(std::string_view prefix, std::string_view name, std::string_view value) {
        if (stopped || full()) return;
        const quint32 at = static_cast<quint32>(markup.store_.size());
        if (!prefix.empty()) keep(prefix), keep(":");
        keep(name);
        const quint32 bytes = static_cast<quint32>(markup.store_.size()) - at;
        const quint32 valueAt = keep(value);
        markup.attributes_.push_back({at, bytes, valueAt, static_cast<quint32>(value.size())});
        ++markup.tokens_.back().count;
    }

    void end() {
        if (stopped || open_.empty()) return;
        Markup::Token token{};
        token.kind = Markup::Kind::End;
        token.partner = open_.back();
        token.tag = markup.tokens_[token.partner].tag;
        markup.tokens_[token.partner].partner = markup.size();
        open_.pop_back();
        markup.tokens_.push_back(token);
        joins_ = false;
    }

    // Parsers hand a text over in pieces.
    void text(std::string_view piece) {
        if (stopped || piece.empty() || full()) return;
        const quint32 at = keep(piece);
        if (joins_) {
            markup.tokens_.back().count += static_cast<quint32>(piece.size());
            return;
        }
        Markup::Token token{};
        token.kind = Markup::Kind::Text;
        token.first = at;
        token.count = static_cast<quint32>(piece.size());
        markup.tokens_.push_back(token);
        joins_ = true;
    }

    void finish() {
        while (!stopped && !open_.empty()) end();
    }

  private:
    quint32 keep(std::string_view piece) {
        const size_t at = markup.store_.size();
        markup.store_ += piece;
        return static_cast<quint32>(at);
    }
    bool full() {
        constexpr size_t entries = static_cast<size_t>(MaximalTokens);
        if (markup.tokens_.size() < entries && markup.attributes_.size() < entries &&
            markup.store_.size() < 3 * static_cast<size_t>(MaximalDocumentBytes))
            return false;
        stop(u"Kitabın bir belgesi çok büyük."_s);
        return true;
    }
    void stop(const QString& message) {
        stopped = true;
        reason = {message};
        if (parser) xmlStopParser(parser);
    }

    std::vector<quint32> open_;
    bool joins_ = false;
};

namespace {

std::string_view view(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

MarkupBuilder& builder(void* context) {
    return *static_cast<MarkupBuilder*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

void startElementNs(void* context, const xmlChar* name, const xmlChar*, const xmlChar*, int, const xmlChar**,
                    int attributeCount, int, const xmlChar** attributes) {
    MarkupBuilder& target = builder(context);
    target.start(view(name));
    for (int i = 0; i < attributeCount; ++i, attributes += 5) {
        const auto* begin = reinterpret_cast<const char*>(attributes[3]);
        const auto* end = reinterpret_cast<const char*>(attributes[4]);
        target.attribute(view(attributes[1]), view(attributes[0]), {begin, static_cast<size_t>(end - begin)});
    }
}
void endElementNs(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    builder(context).end();
}
void startElement(void* context, const xmlChar* name, const xmlChar** attributes) {
    MarkupBuilder& target = builder(context);
    target.start(view(name));
    for (; attributes && attributes[0]; attributes += 2)
        target.attribute({}, view(attributes[0]), view(attributes[1]));
}
void endElement(void* context, const xmlChar*) {
    builder(context).end();
}
void characters(void* context, const xmlChar* text, int bytes) {
    builder(context).text({reinterpret_cast<const char*>(text), static_cast<size_t>(bytes)});
}

xmlSAXHandler handler(bool html) {
    xmlSAXHandler made;
    std::memset(&made, 0, sizeof made);
    made.initialized = html ? 1 : XML_SAX2_MAGIC;
    if (html) {
        made.startElement = startElement;
        made.endElement = endElement;
    } else {
        made.startElementNs = startElementNs;
        made.endElementNs = endElementNs;
    }
    made.characters = made.ignorableWhitespace = made.cdataBlock = characters;
    return made;
}

// Whether the text was well-formed. Document type and entities are gone from it, and its size is bounded, so
// the parser's own limits (ten megabytes of text, 256 levels) may be lifted: ours are tighter where it
// matters.
bool parseXml(const QByteArray& text, MarkupBuilder& target) {
    xmlParserCtxtPtr parser = xmlCreateMemoryParserCtxt(text.constData(), static_cast<int>(text.size()));
    if (!parser) return false;
    xmlCtxtUseOptions(parser, XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE |
                                  XML_PARSE_IGNORE_ENC | XML_PARSE_COMPACT);
    xmlSAXHandler own = handler(false);
    *parser->sax = own;
    parser->_private = &target;
    target.parser = parser;
    xmlParseDocument(parser);
    const bool wellFormed = parser->wellFormed;
    target.parser = nullptr;
    target.finish();
    xmlFreeDoc(parser->myDoc);
    xmlFreeParserCtxt(parser);
    return wellFormed;
}

void parseHtml(const QByteArray& text, MarkupBuilder& target) {
    htmlParserCtxtPtr parser = htmlNewParserCtxt();
    if (!parser) return;
    xmlSAXHandler own = handler(true);
    *parser->sax = own;
    parser->_private = &target;
    target.parser = parser;
    htmlDocPtr document =
        htmlCtxtReadMemory(parser, text.constData(), static_cast<int>(text.size()), nullptr, "UTF-8",
                           HTML_PARSE_NONET | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                               HTML_PARSE_IGNORE_ENC | HTML_PARSE_RECOVER);
    target.parser = nullptr;
    target.finish();
    xmlFreeDoc(document);
    htmlFreeParserCtxt(parser);
}

}  // namespace

Result<Markup> Markup::parse(const QByteArray& bytes) {
    Result<QByteArray> plain = withoutEntities(toUtf8(bytes, SourceKind::Markup));
    if (!plain) return plain.error();
    if (plain->size() > 3 * MaximalDocumentBytes) return Error{u"Kitabın bir belgesi çok büyük."_s};
    if (hasEndlessElement(*plain)) return Error{u"Kitabın bir belgesinde bir öge ölçüsüz uzun; alınmadı."_s};
    // The declaration speaks of the bytes, not of this text.
    const qsizetype first = plain->indexOf('<');
    if (first >= 0 && QByteArrayView(*plain).sliced(first).startsWith("<?xml ")) {
        const qsizetype end = plain->indexOf("?>");
        plain->remove(0, end < 0 ? 0 : end + 2);
    }
    MarkupBuilder strict;
    if (parseXml(*plain, strict) && !strict.stopped) return std::move(strict.markup);
    if (strict.stopped) return strict.reason;
    MarkupBuilder lenient;
    parseHtml(*plain, lenient);
    if (lenient.stopped) return lenient.reason;
    return std::move(lenient.markup);
}

std::string_view Markup::attribute(quint32 index, std::string_view name) const {
    const Token& token = tokens_[index];
    for (quint32 i = token.first; i < token.first + token.count; ++i)
        if (view(attributes_[i].name, attributes_[i].nameBytes) == name)
            return view(attributes_[i].value, attributes_[i].valueBytes);
    return {};
}

std::vector<Markup::Attribute> Markup::attributes(quint32 index) const {
    std::vector<Attribute> all;
    const Token& token = tokens_[index];
    for (quint32 i = token.first; i < token.first + token.count; ++i)
        all.push_back({view(attributes_[i].name, attributes_[i].nameBytes),
                       view(attributes_[i].value, attributes_[i].valueBytes)});
    return all;
}

QString Markup::simplifiedText(quint32 index) const {
    QByteArray all;
    for (quint32 i = index + 1; i < tokens_[index].partner; ++i) {
        if (tokens_[i].kind == Kind::Text)
            all += QByteArrayView(text(i).data(), static_cast<qsizetype>(text(i).size()));
        else if (const Role role = isStart(i) ? rule(i).role : Role::Transparent;
                 role == Role::Block || role == Role::Boundary || tokens_[i].tag == Tag::Br)
            all += ' ';
        else if (role == Role::Skipped)
            i = tokens_[i].partner;
    }
    return QString::fromUtf8(all).simplified();
}

bool Markup::hasWord(quint32 index, std::string_view attributeName, std::string_view word) const {
    std::string_view list = attribute(index, attributeName);
    while (!list.empty()) {
        const size_t end = std::min(list.find_first_of(" \t\r\n"), list.size());
        if (list.substr(0, end) == word) return true;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return false;
}

}  // namespace lirovan::book_reader
