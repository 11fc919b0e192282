#include "tools/book_reader/source_text.h"

#include <libxml/HTMLparser.h>
#include <unicode/ucnv.h>
#include <QHash>

#include <array>
#include <cstring>

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

using platform::Error;
using platform::Result;

constexpr qsizetype DeclarationBytes = 1024;  // where an encoding may be named

bool isUtf8(const QByteArray& bytes) {
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.constData());
    const auto* end = at + bytes.size();
    while (at < end) {
        if (*at < 0x80) {
            ++at;
            continue;
        }
        const int more = *at >= 0xF0 && *at < 0xF5   ? 3
                         : *at >= 0xE0 && *at < 0xF0 ? 2
                         : *at >= 0xC2 && *at < 0xE0 ? 1
                                                     : 0;
        if (more == 0 || end - at <= more) return false;
        for (int i = 1; i <= more; ++i)
            if ((at[i] & 0xC0) != 0x80) return false;
        at += more + 1;
    }
    return true;
}

QByteArray lowerAscii(QByteArrayView bytes) {
    QByteArray lowered = bytes.toByteArray();
    for (char& c : lowered)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return lowered;
}

// The value behind `key`, up to a quote, blank or the end of the element.
QByteArray valueBehind(const QByteArray& lowered, const char* key) {
    qsizetype at = lowered.indexOf(key);
    if (at < 0) return {};
    at += static_cast<qsizetype>(std::strlen(key));
    while (at < lowered.size() && std::strchr(" \t\r\n='\"", lowered[at])) ++at;
    qsizetype end = at;
    while (end < lowered.size() && !std::strchr(" \t\r\n'\"/>;?", lowered[end])) ++end;
    return lowered.sliced(at, end - at);
}

QByteArray declaredEncoding(const QByteArray& bytes) {
    const QByteArray head = lowerAscii(QByteArrayView(bytes).first(std::min(bytes.size(), DeclarationBytes)));
    if (head.trimmed().startsWith("<?xml")) {
        const QByteArray declaration = head.left(head.indexOf("?>") + 1);
        if (const QByteArray named = valueBehind(declaration, "encoding"); !named.isEmpty()) return named;
    }
    const qsizetype meta = head.indexOf("<meta");
    return meta < 0 ? QByteArray() : valueBehind(head.sliced(meta), "charset");
}

QByteArray converted(const QByteArray& bytes, const char* encoding) {
    UErrorCode status = U_ZERO_ERROR;
    UConverter* from = ucnv_open(encoding, &status);
    if (U_FAILURE(status)) return {};
    UConverter* to = ucnv_open("UTF-8", &status);
    QByteArray out;
    std::array<UChar, 2048> pivot;
    UChar *pivotSource = pivot.data(), *pivotTarget = pivot.data();
    const char *source = bytes.constData(), *end = source + bytes.size();
    std::array<char, 8192> chunk;
    bool reset = true;
    do {
        char* target = chunk.data();
        status = U_ZERO_ERROR;
        ucnv_convertEx(to, from, &target, chunk.data() + chunk.size(), &source, end, pivot.data(),
                       &pivotSource, &pivotTarget, pivot.data() + pivot.size(), reset, true, &status);
        out.append(chunk.data(), target - chunk.data());
        reset = false;
    } while (status == U_BUFFER_OVERFLOW_ERROR);
    ucnv_close(from);
    ucnv_close(to);
    return out;
}

const char* markedEncoding(const QByteArray& bytes, qsizetype& mark) {
    mark = 3;
    if (bytes.startsWith("\xEF\xBB\xBF")) return "UTF-8";
    mark = 2;
    if (bytes.startsWith("\xFF\xFE")) return "UTF-16LE";
    if (bytes.startsWith("\xFE\xFF")) return "UTF-16BE";
    mark = 0;
    if (bytes.startsWith(QByteArrayView("<\0", 2))) return "UTF-16LE";
    if (bytes.startsWith(QByteArrayView("\0<", 2))) return "UTF-16BE";
    return nullptr;
}

QByteArray cleanUtf8(const QByteArray& bytes) {
    return isUtf8(bytes) ? bytes : converted(bytes, "UTF-8");
}

bool isNameByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '.' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

void appendCharacter(QByteArray& out, char32_t character) {
    const bool valid =
        character == 9 || character == 10 || character == 13 || (character >= 0x20 && character < 0xD800) ||
        (character >= 0xE000 && character < 0xFFFE) || (character >= 0x10000 && character < 0x110000);
    if (!valid) character = 0xFFFD;
    if (character == '<')
        out += "&lt;";
    else if (character == '&')
        out += "&amp;";
    else
        out += QString::fromUcs4(&character, 1).toUtf8();
}

// The character of "&#…;" or "&#x…;" at `at`, with `length` the bytes it takes; 0 where there is none.
char32_t numericReference(QByteArrayView text, qsizetype at, qsizetype& length) {
    qsizetype i = at + 2;
    const bool hex = i < text.size() && (text[i] == 'x' || text[i] == 'X');
    if (hex) ++i;
    const qsizetype digits = i;
    char32_t value = 0;
    for (; i < text.size() && i < digits + 10; ++i) {
        const char c = text[i];
        const int digit = c >= '0' && c <= '9'          ? c - '0'
                          : hex && c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : hex && c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                        : -1;
        if (digit < 0) break;
        value = std::min<char32_t>(value * (hex ? 16 : 10) + static_cast<char32_t>(digit), 0x110000);
    }
    if (i == digits || i >= text.size() || text[i] != ';') return 0;
    length = i + 1 - at;
    // The code page that writers of such numbers mean.
    if (value >= 0x80 && value < 0xA0) {
        const QByteArray mapped = converted(QByteArray(1, static_cast<char>(value)), "windows-1252");
        return QString::fromUtf8(mapped).toUcs4().value(0, 0xFFFD);
    }
    return value == 0 ? 0xFFFD : value;
}

class Rewriter {
  public:
    explicit Rewriter(const QByteArray& text) : text_(text) { out_.reserve(text.size() + text.size() / 64); }

    Result<QByteArray> run() {
        while (at_ < text_.size()) {
            const char c = text_[at_];
            if (c == '&') {
                reference();
            } else if (c == '<' && startsWith("<![CDATA[")) {
                copyUntil("]]>");
            } else if (c == '<' && startsWith("<!--")) {
                // Comments go here, since "--" inside one breaks them for the XML parser.
                const qsizetype end = text_.indexOf("-->", at_ + 4);
                at_ = end < 0 ? text_.size() : end + 3;
            } else if (c == '<' && isDoctype()) {
                if (const Result<void> read = doctype(); !read) return read.error();
            } else if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t' && c != '\r') {
                out_ += ' ';
                ++at_;
            } else {
                copyPlain();
            }
        }
        return out_;
    }

  private:
    bool startsWith(const char* word) const { return QByteArrayView(text_).sliced(at_).startsWith(word); }
    bool isDoctype() const {
        return startsWith("<!") && lowerAscii(QByteArrayView(text_).sliced(
                                       at_, std::min<qsizetype>(9, text_.size() - at_))) == "<!doctype";
    }
    void copyUntil(const char* word) {
        const qsizetype found = text_.indexOf(word, at_);
        const qsizetype end = found < 0 ? text_.size() : found + static_cast<qsizetype>(std::strlen(word));
        out_ += QByteArrayView(text_).sliced(at_, end - at_);
        at_ = end;
    }
    void copyPlain() {
        qsizetype end = at_ + 1;
        while (end < text_.size() && text_[end] != '&' && text_[end] != '<' &&
               static_cast<unsigned char>(text_[end]) >= 0x20)
            ++end;
        out_ += QByteArrayView(text_).sliced(at_, end - at_);
        at_ = end;
    }

    void reference() {
        qsizetype length = 0;
        if (at_ + 2 < text_.size() && text_[at_ + 1] == '#') {
            if (const char32_t character = numericReference(text_, at_, length)) {
                appendCharacter(out_, character);
                at_ += length;
                return;
            }
        }
        qsizetype end = at_ + 1;
        while (end < text_.size() && end - at_ < 40 && isNameByte(text_[end])) ++end;
        if (end > at_ + 1 && end < text_.size() && text_[end] == ';' &&
            named(text_.sliced(at_ + 1, end - at_ - 1))) {
            at_ = end + 1;
            return;
        }
        out_ += "&amp;";
        ++at_;
    }

    bool named(const QByteArray& name) {
        for (const char* kept : {"lt", "gt", "amp", "quot"})
            if (name == kept) {
                out_ += '&' + name + ';';
                return true;
            }
        if (name == "apos") {
            out_ += "&#39;";
            return true;
        }
        if (const auto own = declared_.constFind(name); own != declared_.cend()) {
            out_ += *own;
            return true;
        }
        const htmlEntityDesc* known = htmlEntityLookup(reinterpret_cast<const xmlChar*>(name.constData()));
        if (known) appendCharacter(out_, known->value);
        return known != nullptr;
    }

    // Skips the document type; entities that it declares are kept where they are plain text.
    Result<void> doctype() {
        qsizetype i = at_ + 9;
        char quote = 0;
        bool inside = false;
        for (; i < text_.size(); ++i) {
            const char c = text_[i];
            if (quote) {
                if (c == quote) quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (inside && c == '<' && QByteArrayView(text_).sliced(i).startsWith("<!ENTITY")) {
                if (const Result<void> read = entity(i); !read) return read;
            } else if (inside && c == '<' && QByteArrayView(text_).sliced(i).startsWith("<!--")) {
                const qsizetype end = text_.indexOf("-->", i);
                i = end < 0 ? text_.size() : end + 2;
            } else if (c == '[') {
                inside = true;
            } else if (c == ']') {
                inside = false;
            } else if (c == '>' && !inside) {
                break;
            }
        }
        at_ = std::min(i + 1, text_.size());
        return {};
    }

    // `i`: at "<!ENTITY"; moved to the ">" that ends it.
    Result<void> entity(qsizetype& i) {
        const Error refused{
            u"Kitabın bir belgesi dışarıdan dosya isteyen ya da kendini çoğaltan tanımlar "
            "içeriyor; alınmadı."_s};
        qsizetype at = i + 8;
        const auto skip = [&] {
            while (at < text_.size() && std::strchr(" \t\r\n", text_[at])) ++at;
        };
        skip();
        const qsizetype begin = at;
        while (at < text_.size() && isNameByte(text_[at])) ++at;
        const QByteArray name = text_.sliced(begin, at - begin);
        skip();
        if (name.isEmpty() || at >= text_.size() || (text_[at] != '"' && text_[at] != '\'')) return refused;
        const qsizetype end = text_.indexOf(text_[at], at + 1);
        if (end < 0 || end - at > 200) return refused;
        const QByteArray value = text_.sliced(at + 1, end - at - 1);
        QByteArray plain;
        for (qsizetype v = 0; v < value.size();) {
            qsizetype length = 1;
            if (value[v] == '&') {
                const char32_t character =
                    v + 2 < value.size() && value[v + 1] == '#' ? numericReference(value, v, length) : 0;
                if (character == 0 || character == '&') return refused;
                appendCharacter(plain, character);
            } else if (value[v] == '<' || value[v] == '%') {
                return refused;
            } else {
                plain += value[v];
            }
            v += length;
        }
        if (declared_.size() < 1000) declared_.insert(name, plain);
        i = text_.indexOf('>', end);
        if (i < 0) i = text_.size();
        return {};
    }

    const QByteArray& text_;
    QByteArray out_;
    qsizetype at_ = 0;
    QHash<QByteArray, QByteArray> declared_;
};

}  // namespace

QByteArray toUtf8(const QByteArray& bytes, SourceKind kind) {
    qsizetype mark = 0;
    if (const char* marked = markedEncoding(bytes, mark)) {
        const QByteArray body = bytes.sliced(mark);
        return qstrcmp(marked, "UTF-8") == 0 ? cleanUtf8(body) : converted(body, marked);
    }
    if (kind == SourceKind::Markup) {
        const QByteArray declared = declaredEncoding(bytes);
        const bool wide =
            declared.startsWith("utf-16") || declared.startsWith("utf16");  // it was read as bytes
        if (!declared.isEmpty() && !wide && declared != "utf-8" && declared != "utf8")
            // Pages that say so mostly hold the larger Turkish code page.
            if (const QByteArray text =
                    converted(bytes, declared == "iso-8859-9" ? "windows-1254" : declared.constData());
                !text.isEmpty())
                return text;
        if (declared == "utf-8" || declared == "utf8") return cleanUtf8(bytes);
    }
    return isUtf8(bytes) ? bytes : converted(bytes, "windows-1254");
}

QString withPlainLineEnds(const QByteArray& utf8) {
    QString text = QString::fromUtf8(utf8);
    text.replace(u"\r\n"_s, u"\n"_s);
    return text.replace(u'\r', u'\n').replace(u'\f', u'\n');
}

bool hasEndlessElement(const QByteArray& markup) {
    constexpr int mostWords = 2'000;
    bool inside = false;
    char quote = 0, last = 0;
    int words = 0;
    for (qsizetype i = 0; i < markup.size(); ++i) {
        const char c = markup[i];
        if (!inside) {
            inside = c == '<' && i + 1 < markup.size() && isNameByte(markup[i + 1]);
            words = 0;
        } else if (quote) {
            if (c == quote) quote = 0;
        } else if ((c == '"' || c == '\'') && last == '=') {
            quote = c;
        } else if (c == '>') {
            inside = false;
        } else if (std::strchr(" \t\r\n/", c)) {
            if (++words > mostWords) return true;
            continue;  // blanks may stand around "="
        }
        last = c;
    }
    return false;
}

Result<QByteArray> withoutEntities(const QByteArray& utf8) {
    return Rewriter(utf8).run();
}

}  // namespace lirovan::book_reader
