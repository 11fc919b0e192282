#include "platform/core/html_depth.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace lirovan::platform {
namespace {

// Longer than any name that counts, and short enough for a string to need no memory.
constexpr qsizetype LongestName = 15;

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

bool isOneOf(QByteArrayView name, std::initializer_list<const char*> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Names of elements are ASCII, and compared as such.
template <class Name>
Name elementName(Name name) {
    for (char& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return name;
}

bool isVoid(QByteArrayView name) {
    return isOneOf(name, {"br", "hr", "img", "input", "meta", "link", "base", "col", "area", "wbr"});
}

/// Ends where the next of its kind, or another that cannot lie in it, begins.
bool endsItself(QByteArrayView name) {
    return isOneOf(name, {"p", "li", "dt", "dd", "td", "th", "tr", "option"});
}

bool beginsALine(QByteArrayView name) {
    return endsItself(name) || isOneOf(name, {"div", "h1", "h2", "h3", "h4", "h5", "h6", "ul", "ol", "dl",
                                              "table", "blockquote", "pre", "center", "section", "article"});
}

/// Reads tags one after the other and copies what lies between them.
class DepthBound {
  public:
    DepthBound(const QString& html, qsizetype depth) : html_(html), depth_(depth) {}

    QString run() {
        result_.reserve(html_.size());
        for (qsizetype open; (open = html_.indexOf(u'<', at_)) >= 0;) {
            const QStringView text = html_.sliced(at_, open - at_);
            if (!text.trimmed().isEmpty()) lineHasText_ = true;
            copyTo(open);
            const QChar next = open + 1 < html_.size() ? html_.at(open + 1) : QChar();
            if (html_.sliced(open).startsWith(u"<!--"))
                copyTo(endOf(u"-->", open));
            else if (next == u'/' || next.isLetter())
                tag(open, next == u'/');
            else
                copyTo(open + 1);
        }
        copyTo(html_.size());
        return std::move(result_);
    }

  private:
    void copyTo(qsizetype end) {
        result_ += html_.sliced(at_, end - at_);
        at_ = end;
    }
    qsizetype endOf(QStringView mark, qsizetype from) const {
        const qsizetype found = html_.indexOf(mark, from, Qt::CaseInsensitive);
        return found < 0 ? html_.size() : found + mark.size();
    }
    /// Behind the '>' that ends a tag; one in quotes does not.
    qsizetype tagEnd(qsizetype from) const {
        QChar quote;
        for (qsizetype i = from; i < html_.size(); ++i) {
            const QChar c = html_.at(i);
            if (quote.isNull() && c == u'>') return i + 1;
            if (c == quote)
                quote = {};
            else if (quote.isNull() && (c == u'"' || c == u'\''))
                quote = c;
        }
        return html_.size();
    }

    void tag(qsizetype open, bool closes) {
        const qsizetype end = tagEnd(open);
        qsizetype nameEnd = open + (closes ? 2 : 1);
        const qsizetype nameBegin = nameEnd;
        while (nameEnd < end && html_.at(nameEnd).isLetterOrNumber()) ++nameEnd;
        const QByteArray name = elementName(html_.sliced(nameBegin, nameEnd - nameBegin).toLatin1());
        if (closes)
            close(name, end);
        else if (isOneOf(name, {"script", "style", "title", "textarea"}))
            copyTo(endOf(QString::fromLatin1("</" + name), end));
        else if (isVoid(name) || html_.at(end - 1) != u'>')
            copyTo(end);
        else
            begin(name, end);
    }

    void begin(const QByteArray& name, qsizetype end) {
        if (endsItself(name)) leave(name);
        // One anchor ends the other, as pages with unclosed <a name=…> rely on.
        if (name == "a" && !open_.empty() && open_.back() == "a") open_.pop_back();
        // In a drawing "/>" ends an element; in the page's own markup it means nothing.
        if (drawing_ && html_.at(end - 2) == u'/')
            return std::ssize(open_) < depth_ ? copyTo(end) : leaveOut(name, end);
        open_.push_back(name);
        if (!drawing_ && isOneOf(name, {"svg", "math"})) drawing_ = std::ssize(open_);
        if (std::ssize(open_) > depth_) return leaveOut(name, end);
        if (beginsALine(name)) lineHasText_ = false;
        copyTo(end);
    }

    void close(const QByteArray& name, qsizetype end) {
        // A tag that was left out is closed by none.
        const bool wasLeftOut = std::ssize(open_) > depth_;
        leave(name);
        if (wasLeftOut && std::ssize(open_) >= depth_)
            leaveOut(name, end);
        else
            copyTo(end);
    }

    /// Where a block begins or ends, so does a line.
    void leaveOut(const QByteArray& name, qsizetype end) {
        if (beginsALine(name) && std::exchange(lineHasText_, false)) result_ += u"<br>";
        at_ = end;
    }

    /// Ends the innermost element of this name with all in it; nothing when there is none near. Far up none
    /// is looked for, so that a long row of tags that close nothing takes no long time.
    void leave(const QByteArray& name) {
        const qsizetype least = std::max<qsizetype>(0, std::ssize(open_) - 2 * depth_);
        for (qsizetype i = std::ssize(open_) - 1; i >= least; --i) {
            if (open_[static_cast<size_t>(i)] == name) {
                open_.resize(static_cast<size_t>(i));
                if (drawing_ && i < *drawing_) drawing_.reset();
                return;
            }
            // What ends itself does so within its own list or table.
            if (endsItself(name) && isOneOf(open_[static_cast<size_t>(i)], {"ul", "ol", "table"})) return;
        }
    }

    QStringView html_;
    qsizetype depth_;
    qsizetype at_ = 0;
    bool lineHasText_ = false;
    std::vector<QByteArray> open_;
    std::optional<qsizetype> drawing_;  ///< how many were open when a drawing had begun, in which it goes on
    QString result_;
};

/// A quick look that a page of ordinary depth passes. What closes nothing lowers nothing.
bool mayBeDeeper(QByteArrayView page, qsizetype depth) {
    qsizetype open = 0;
    std::unordered_map<std::string, qsizetype> openOf;
    for (qsizetype at = page.indexOf('<'); at >= 0; at = page.indexOf('<', at + 1)) {
        const bool closes = page.sliced(at + 1).startsWith('/');
        const qsizetype begin = at + (closes ? 2 : 1);
        qsizetype end = begin;
        while (end < page.size() && end - begin < LongestName && isLetterOrDigit(page[end])) ++end;
        const std::string name =
            elementName(std::string(page.data() + begin, static_cast<size_t>(end - begin)));
        if (name.empty() || isVoid(name) || endsItself(name)) continue;
        qsizetype& ofName = openOf[name];
        if (closes && ofName == 0) continue;
        const int change = closes ? -1 : 1;
        ofName += change;
        open += change;
        if (open > depth) return true;
    }
    return false;
}

}  // namespace

QString withBoundedDepth(const QString& html, qsizetype depth) {
    return DepthBound(html, depth).run();
}

QByteArray withBoundedDepth(const QByteArray& page, qsizetype depth) {
    if (!mayBeDeeper(page, depth)) return page;
    // Tags are ASCII, and every other byte comes through as it is.
    return withBoundedDepth(QString::fromLatin1(page), depth).toLatin1();
}

}  // namespace lirovan::platform
