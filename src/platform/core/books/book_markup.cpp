#include "platform/core/books/book_markup.h"

#include <algorithm>
#include <vector>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Elements[] = {
    u"a",       u"abbr",   u"address", u"b",     u"bdi",        u"bdo",      u"big",    u"blockquote", u"br",
    u"caption", u"center", u"cite",    u"code",  u"col",        u"colgroup", u"dd",     u"del",        u"dfn",
    u"div",     u"dl",     u"dt",      u"em",    u"figcaption", u"figure",   u"h1",     u"h2",         u"h3",
    u"h4",      u"h5",     u"h6",      u"hr",    u"i",          u"img",      u"ins",    u"kbd",        u"li",
    u"mark",    u"ol",     u"p",       u"pre",   u"q",          u"rb",       u"rp",     u"rt",         u"rtc",
    u"ruby",    u"s",      u"samp",    u"small", u"span",       u"strike",   u"strong", u"sub",        u"sup",
    u"table",   u"tbody",  u"td",      u"tfoot", u"th",         u"thead",    u"tr",     u"tt",         u"u",
    u"ul",      u"var",    u"wbr"};
constexpr QStringView Void[] = {u"br", u"col", u"hr", u"img", u"wbr"};
constexpr QStringView Attributes[] = {
    u"align",  u"alt",   u"border", u"cellpadding", u"cellspacing", u"class",   u"colspan", u"dir",
    u"height", u"href",  u"id",     u"lang",        u"reversed",    u"rowspan", u"scope",   u"span",
    u"src",    u"start", u"title",  u"type",        u"valign",      u"value",   u"width"};
constexpr size_t DeepestNesting = 2000;

template <size_t N>
bool isOneOf(const QStringView (&names)[N], QStringView name) {
    return std::any_of(std::begin(names), std::end(names),
                       [&](QStringView one) { return one.compare(name, Qt::CaseInsensitive) == 0; });
}
bool is(QStringView name, QStringView wanted) {
    return name.compare(wanted, Qt::CaseInsensitive) == 0;
}

bool isLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

struct Attribute {
    QStringView name, value;
    qsizetype begin = 0, end = 0;  // with the blank before it
};

struct Tag {
    QStringView name;
    bool end = false;
    std::vector<Attribute> attributes;
    qsizetype begin = 0, after = 0;
};

// Reads the tag whose "<" stands at `at`; nothing where it has not the strict form that the reader writes:
// <NAME attribute="value" ...> or </NAME>.
std::optional<Tag> readTag(QStringView html, qsizetype at) {
    Tag tag;
    tag.begin = at++;
    const auto here = [&] { return at < html.size() ? html[at] : QChar(); };
    const auto word = [&] {
        const qsizetype begin = at;
        while (isLetter(here()) || (at > begin && isDigit(here()))) ++at;
        return html.sliced(begin, at - begin);
    };
    if (here() == u'/') tag.end = true, ++at;
    tag.name = word();
    if (tag.name.isEmpty()) return std::nullopt;
    while (!tag.end && here() == u' ') {
        Attribute attribute;
        attribute.begin = at++;
        attribute.name = word();
        if (attribute.name.isEmpty() || here() != u'=') return std::nullopt;
        ++at;
        if (here() != u'"') return std::nullopt;
        const qsizetype close = html.indexOf(u'"', ++at);
        if (close < 0) return std::nullopt;
        attribute.value = html.sliced(at, close - at);
        attribute.end = at = close + 1;
        tag.attributes.push_back(attribute);
    }
    if (here() != u'>') return std::nullopt;
    tag.after = at + 1;
    return tag;
}

std::optional<QString> attributeFault(QStringView element, const Attribute& attribute) {
    if (!isOneOf(Attributes, attribute.name))
        return u"<%1> etiketinde “%2” özelliği"_s.arg(element, attribute.name.left(40));
    if (attribute.value.contains(u'<') || attribute.value.contains(u'>'))
        return u"<%1> etiketinde bozuk değer"_s.arg(element);
    const bool link = is(attribute.name, u"href"), source = is(attribute.name, u"src");
    if (!link && !source) return std::nullopt;
    const auto address = bookAddress(attribute.value);
    const bool fits = address && (address->kind == BookAddress::Kind::Picture) == source &&
                      is(element, source ? u"img" : u"a");
    if (!fits) return u"yabancı adres “%1”"_s.arg(attribute.value.left(80));
    return std::nullopt;
}

}  // namespace

std::optional<BookAddress> bookAddress(QStringView text) {
    BookAddress address;
    if (text.startsWith(u"resim:")) address.kind = BookAddress::Kind::Picture, text = text.sliced(6);
    if (text.startsWith(u"konu:")) address.kind = BookAddress::Kind::Topic, text = text.sliced(5);
    const qsizetype hash = text.indexOf(u'#');
    if (hash >= 0) {
        address.place = text.sliced(hash + 1).toString();
        text = text.first(hash);
        const bool plain = std::all_of(address.place.cbegin(), address.place.cend(), [](QChar c) {
            return isLetter(c) || isDigit(c) || c == u'-' || c == u'_';
        });
        if (address.place.isEmpty() || address.place.size() > 500 || !plain) return std::nullopt;
        if (address.kind == BookAddress::Kind::Picture) return std::nullopt;
    }
    if (address.kind == BookAddress::Kind::Place) return hash == 0 ? std::optional(address) : std::nullopt;
    bool ok = false;
    address.number = text.toLongLong(&ok);
    if (!ok || address.number < 0 || QString::number(address.number) != text) return std::nullopt;
    return address;
}

QString addressText(const BookAddress& address) {
    QString text;
    if (address.kind == BookAddress::Kind::Topic) text = u"konu:"_s + QString::number(address.number);
    if (address.kind == BookAddress::Kind::Picture) text = u"resim:"_s + QString::number(address.number);
    if (!address.place.isEmpty()) text += u'#' + address.place;
    return text;
}

std::optional<QString> bookMarkupFault(QStringView html) {
    std::vector<QStringView> open;
    for (qsizetype at = 0; (at = html.indexOf(u'<', at)) >= 0;) {
        const auto tag = readTag(html, at);
        if (!tag) return u"bozuk etiket “%1”"_s.arg(html.sliced(at).left(40));
        at = tag->after;
        if (!isOneOf(Elements, tag->name)) return u"<%1> etiketi"_s.arg(tag->name.left(40));
        for (const Attribute& attribute : tag->attributes)
            if (auto fault = attributeFault(tag->name, attribute)) return fault;
        if (isOneOf(Void, tag->name)) {
            if (tag->end) return u"</%1> fazla"_s.arg(tag->name);
        } else if (!tag->end) {
            open.push_back(tag->name);
            if (open.size() > DeepestNesting) return u"çok derin iç içe etiketler"_s;
        } else {
            if (open.empty() || !is(open.back(), tag->name)) return u"</%1> yerinde değil"_s.arg(tag->name);
            open.pop_back();
        }
    }
    if (!open.empty()) return u"<%1> kapanmamış"_s.arg(open.back());
    return std::nullopt;
}

QString withAddresses(QStringView html,
                      const std::function<std::optional<BookAddress>(const BookAddress&)>& changed) {
    QString text;
    text.reserve(html.size() + html.size() / 16);
    qsizetype taken = 0;
    for (qsizetype at = 0; (at = html.indexOf(u'<', at)) >= 0;) {
        const auto tag = readTag(html, at);
        if (!tag) {
            ++at;
            continue;
        }
        at = tag->after;
        for (const Attribute& attribute : tag->attributes) {
            if (!is(attribute.name, u"href") && !is(attribute.name, u"src")) continue;
            const auto old = bookAddress(attribute.value);
            const auto fresh = old ? changed(*old) : std::nullopt;
            const bool picture = is(attribute.name, u"src");
            text += html.sliced(taken, (fresh || !picture ? attribute.begin : tag->begin) - taken);
            if (fresh) text += u' ' + attribute.name.toString() + u"=\""_s + addressText(*fresh) + u'"';
            taken = fresh || !picture ? attribute.end : tag->after;
            if (!fresh && picture) break;
        }
    }
    return text += html.sliced(taken);
}

}  // namespace lirovan::platform
