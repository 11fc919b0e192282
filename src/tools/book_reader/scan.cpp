#include "tools/book_reader/scan.h"

#include <QUrl>
#include <algorithm>

#include "tools/book_reader/files.h"
#include "tools/book_reader/limits.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {
namespace {

constexpr quint32 LargestNote = 20'000;  // tokens
constexpr qsizetype LongestMarker = 6;   // "[12]", "(12)", "***"

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

bool hasAny(const Markup& markup, quint32 i, std::initializer_list<const char*> types,
            std::initializer_list<const char*> roles) {
    const auto has = [&](const char* attribute) {
        return [&markup, i, attribute](const char* word) { return markup.hasWord(i, attribute, word); };
    };
    return std::any_of(types.begin(), types.end(), has("epub:type")) ||
           std::any_of(roles.begin(), roles.end(), has("role"));
}

bool isTypedNote(const Markup& markup, quint32 i) {
    return hasAny(markup, i, {"footnote", "endnote", "rearnote", "note"}, {"doc-footnote", "doc-endnote"});
}
bool isNotesPart(const Markup& markup, quint32 i) {
    return hasAny(markup, i, {"footnotes", "endnotes", "rearnotes", "notes"},
                  {"doc-endnotes", "doc-footnotes"});
}

// A number, a sign, or one letter, perhaps in brackets.
bool isMarkerText(QStringView piece) {
    piece = piece.trimmed();
    if (piece.isEmpty() || piece.size() > LongestMarker) return false;
    qsizetype letters = 0;
    for (const QChar unit : piece) letters += unit.isLetter();
    return letters <= 1 || std::all_of(piece.begin(), piece.end(), [](QChar u) {
               return !u.isLetter() || u == u'i' || u == u'v' || u == u'x';
           });
}

// "12" of "[12]"; empty for what is not a number.
QString markerDigits(QString piece) {
    piece.remove(u'[').remove(u']').remove(u'(').remove(u')');
    const bool digits =
        std::all_of(piece.begin(), piece.end(), [](QChar u) { return u >= u'0' && u <= u'9'; });
    return digits ? piece : QString();
}

class Scanner {
  public:
    Scanner(const Markup& markup, int number, const QString& name, std::vector<Link>& links)
        : markup_(markup), number_(number), name_(name), links_(links) {}

    DocumentScan run() {
        for (quint32 i = 0; i < markup_.size(); ++i) {
            const Markup::Token& token = markup_[i];
            if (token.kind == Markup::Kind::Text) {
                words(text(markup_.text(i)));
            } else if (token.kind == Markup::Kind::End) {
                if (!open_.empty()) open_.pop_back();
                if (const Role role = tagRole(token.partner);
                    role != Role::Inline && role != Role::Transparent)
                    inWord_ = false;
            } else {
                i = start(i);
            }
        }
        if (scan_.firstWords.size() > 60)
            scan_.firstWords = scan_.firstWords.left(60).section(u' ', 0, -2) + u'…';
        return std::move(scan_);
    }

  private:
    Role tagRole(quint32 i) const { return markup_.rule(i).role; }

    void words(const QString& piece) {
        if (scan_.firstWords.size() <= 60)
            scan_.firstWords = (scan_.firstWords + u' ' + piece.left(120).simplified()).simplified();
        scan_.words += countWords(piece);
        if (inWord_ && !piece.isEmpty() && isWordCharacter(piece.front().unicode())) --scan_.words;
        inWord_ = !piece.isEmpty() && isWordCharacter(piece.back().unicode());
    }

    // Returns the token to go on behind.
    quint32 start(quint32 i) {
        const Markup::Token& token = markup_[i];
        const TagRule& rule = markup_.rule(i);
        if (rule.tag == Tag::Head) return head(i);
        if (rule.tag == Tag::Svg || rule.tag == Tag::Img || rule.tag == Tag::Image || rule.tag == Tag::Object)
            ++scan_.pictures;
        if (rule.tag == Tag::Html || rule.tag == Tag::Body) body(i);
        if (markup_.hasWord(i, "epub:type", "cover")) scan_.saysCover = true;
        places(i);
        if (rule.role == Role::Skipped || rule.tag == Tag::Svg) return token.partner;
        if (rule.role == Role::Block || rule.role == Role::Boundary || rule.tag == Tag::Br) inWord_ = false;
        if (rule.tag == Tag::A) link(i);
        if (const int level = headingLevel(rule.tag)) heading(i, level);
        open_.push_back(i);
        return i;
    }

    quint32 head(quint32 i) {
        for (quint32 j = i; j < markup_[i].partner; ++j) {
            if (!markup_.isStart(j)) continue;
            if (markup_[j].tag == Tag::Title && scan_.title.isEmpty())
                scan_.title = markup_.simplifiedText(j);
            if (markup_[j].tag == Tag::Meta && markup_.attribute(j, "name") == "author")
                scan_.author = text(markup_.attribute(j, "content")).simplified();
        }
        return markup_[i].partner;
    }

    void body(quint32 i) {
        for (const char* name : {"xml:lang", "lang"})
            if (const auto value = markup_.attribute(i, name); !value.empty()) scan_.language = text(value);
    }

    bool inside(Tag tag) const {
        return std::any_of(open_.begin(), open_.end(), [&](quint32 i) { return markup_[i].tag == tag; });
    }

    void heading(quint32 i, int level) {
        const bool inNavigation = std::any_of(open_.begin(), open_.end(), [&](quint32 at) {
            return markup_[at].tag == Tag::Nav || markup_.attribute(at, "role") == "navigation";
        });
        const QString title = markup_.simplifiedText(i);
        if (title.isEmpty() || inNavigation || inside(Tag::Table)) return;
        scan_.headings.push_back({i, level, title, markup_.hasWord(i, "class", "title")});
    }

    void places(quint32 i) {
        for (const char* attribute : {"id", "name"}) {
            if (attribute[0] == 'n' && markup_[i].tag != Tag::A) continue;
            const QString id = text(markup_.attribute(i, attribute));
            if (id.isEmpty() || scan_.places.size() >= MaximalPlaces || scan_.places.contains(id)) continue;
            scan_.places.insert(id, placeOf(i));
        }
    }

    static bool mayBeNote(Tag tag, Role role) {
        if (tag == Tag::Html || tag == Tag::Body || tag == Tag::Table) return false;
        return tag == Tag::P || tag == Tag::Li || tag == Tag::Dd || role == Role::Boundary;
    }

    Place placeOf(quint32 i) const {
        Place place{i, 0, 0, false, 0};
        bool found = mayBeNote(markup_[i].tag, tagRole(i));
        if (found) place.bodyFirst = i;
        place.typedNote = isTypedNote(markup_, i);
        if (isNotesPart(markup_, i)) place.notesPart = i;
        for (auto at = open_.rbegin(); at != open_.rend(); ++at) {
            if (headingLevel(markup_[*at].tag)) place.token = *at;
            if (isNotesPart(markup_, *at)) place.notesPart = *at;
            if (!found && (tagRole(*at) == Role::Block || tagRole(*at) == Role::Boundary)) {
                found = true;
                if (mayBeNote(markup_[*at].tag, tagRole(*at))) place.bodyFirst = *at;
            }
        }
        if (place.bodyFirst != 0) {
            const quint32 last = markup_[place.bodyFirst].partner;
            bool fits = last - place.bodyFirst < LargestNote;
            for (quint32 j = place.bodyFirst; fits && j < last; ++j)
                if (markup_.isStart(j) && headingLevel(markup_[j].tag)) fits = false;
            if (fits) place.bodyLast = last;
        }
        return place;
    }

    void link(quint32 i) {
        const QString href = text(markup_.attribute(i, "href")).trimmed();
        if (href.isEmpty() || links_.size() >= static_cast<size_t>(MaximalLinks)) return;
        const qsizetype hash = href.indexOf(u'#');
        const QString file = hash < 0 ? href : href.left(hash);
        const QString scheme = file.left(std::max<qsizetype>(file.indexOf(u':'), 0));
        Link link;
        link.document = number_;
        link.token = i;
        link.end = markup_[i].partner;
        if (!scheme.isEmpty() && !scheme.contains(u'/')) return;
        link.target = file.isEmpty() ? name_ : resolvedName(name_, file);
        link.fragment = hash < 0 ? QString() : href.mid(hash + 1);
        link.typedReference =
            markup_.hasWord(i, "epub:type", "noteref") || markup_.hasWord(i, "role", "doc-noteref");
        link.isMarker = link.end - i < 12 && isMarkerText(markup_.simplifiedText(i));
        if (link.isMarker) link.marker = markerDigits(markup_.simplifiedText(i));
        if (link.isMarker || link.typedReference) link.ownIds = ownIds(i);
        links_.push_back(std::move(link));
    }

    // Ids of the link, of what stands in it, and of the inline elements and the block around it.
    std::vector<QString> ownIds(quint32 i) const {
        std::vector<QString> ids;
        const auto add = [&](quint32 at) {
            for (const char* attribute : {"id", "name"})
                if (const auto value = markup_.attribute(at, attribute); !value.empty())
                    ids.push_back(text(value));
        };
        add(i);
        for (quint32 j = i + 1; j < markup_[i].partner; ++j)
            if (markup_.isStart(j)) add(j);
        for (auto at = open_.rbegin(); at != open_.rend(); ++at) {
            add(*at);
            if (tagRole(*at) == Role::Block || tagRole(*at) == Role::Boundary) break;
        }
        // "<a id="r1"></a><a href="#n1">1</a>"
        for (quint32 back = i, steps = 0; back > 0 && steps < 3; ++steps) {
            --back;
            if (markup_[back].kind == Markup::Kind::Text) break;
            if (markup_.isStart(back)) add(back);
        }
        return ids;
    }

    const Markup& markup_;
    int number_;
    const QString& name_;
    std::vector<Link>& links_;
    DocumentScan scan_;
    std::vector<quint32> open_;
    bool inWord_ = false;
};

}  // namespace

DocumentScan scanDocument(const Markup& markup, int number, const QString& name, std::vector<Link>& links) {
    return Scanner(markup, number, name, links).run();
}

QString decodedFragment(const QString& fragment) {
    return QUrl::fromPercentEncoding(fragment.toUtf8());
}

}  // namespace lirovan::book_reader
