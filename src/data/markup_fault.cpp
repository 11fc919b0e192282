#include "data/library_check.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;

namespace {

// Elements that a browser does not close by itself without changing what follows.
constexpr QStringView MustClose[] = {
    u"a",      u"b",     u"big",    u"blockquote", u"center", u"div",   u"em",  u"font", u"h1",    u"h2",
    u"h3",     u"h4",    u"h5",     u"h6",         u"i",      u"ol",    u"pre", u"s",    u"small", u"span",
    u"strong", u"style", u"script", u"sub",        u"sup",    u"table", u"u",   u"ul"};
constexpr size_t MustCloseCount = std::size(MustClose);

struct Tag {
    QStringView name;  // as written
    bool end = false;
};

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool isNameUnit(QChar c) {
    return isAsciiLetter(c) || (c >= u'0' && c <= u'9');
}

// Walks the tags of a text in order.
class Tags {
  public:
    explicit Tags(QStringView html) : html_(html) {}

    // Moves to the next tag; false at the end or at a fault.
    bool next(Tag& tag) {
        while (true) {
            const qsizetype open = html_.indexOf(u'<', at_);
            if (open < 0) return false;
            if (html_.sliced(open).startsWith(u"<!--")) {
                const qsizetype close = html_.indexOf(u"-->", open + 4);
                if (close < 0) return fail(u"açıklama (<!--) kapanmamış"_s);
                at_ = close + 3;
                continue;
            }
            tag.end = open + 1 < html_.size() && html_[open + 1] == u'/';
            const qsizetype name = open + (tag.end ? 2 : 1);
            if (name >= html_.size() || !isAsciiLetter(html_[name])) {  // a bare "<" is text
                at_ = open + 1;
                continue;
            }
            qsizetype after = name;
            while (after < html_.size() && isNameUnit(html_[after])) ++after;
            tag.name = html_.sliced(name, after - name);
            const qsizetype close = html_.indexOf(u'>', after);
            if (close < 0) return fail(u"<%1 etiketinin “>” işareti yok"_s.arg(tag.name));
            at_ = close + 1;
            return true;
        }
    }

    // Behind the opening tag of a script or style: what it holds is no markup.
    void skipTo(QStringView endTag) {
        const qsizetype end = html_.indexOf(endTag, at_, Qt::CaseInsensitive);
        at_ = end < 0 ? html_.size() : end;
    }

    const std::optional<QString>& fault() const { return fault_; }

  private:
    bool fail(QString fault) {
        fault_ = std::move(fault);
        return false;
    }

    QStringView html_;
    qsizetype at_ = 0;
    std::optional<QString> fault_;
};

}  // namespace

std::optional<QString> markupFault(QStringView html) {
    int open[MustCloseCount] = {};
    Tags tags(html);
    for (Tag tag; tags.next(tag);) {
        for (size_t i = 0; i < MustCloseCount; ++i) {
            if (tag.name.compare(MustClose[i], Qt::CaseInsensitive) != 0) continue;
            open[i] += tag.end ? -1 : 1;
            if (open[i] < 0) return u"</%1> fazla"_s.arg(MustClose[i]);
            if (!tag.end && MustClose[i] == u"script") tags.skipTo(u"</script");
            if (!tag.end && MustClose[i] == u"style") tags.skipTo(u"</style");
        }
    }
    if (tags.fault()) return tags.fault();
    for (size_t i = 0; i < MustCloseCount; ++i)
        if (open[i] > 0) return u"<%1> kapanmamış"_s.arg(MustClose[i]);
    return std::nullopt;
}

}  // namespace lirovan::data
