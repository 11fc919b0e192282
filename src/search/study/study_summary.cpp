#include "search/study/study_summary.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "search/runs/run_tip.h"
#include "search/study/contexts.h"
#include "search/study/hit_lines.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// Bytes on each side of a hit, up to the next blank.
constexpr size_t Around = 320;

constexpr qsizetype WrittenAtOnce = 1 << 16;

struct Span {
    size_t begin, end;
};

QString escaped(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())).toHtmlEscaped();
}

// The hits of a topic by place, none within another.
std::vector<Span> hitsOf(const TopicContexts& topic) {
    std::vector<Span> hits;
    for (const Context& context : topic.contexts) {
        const auto begin = static_cast<size_t>(context.hit.data() - topic.plain.data());
        hits.push_back({begin, begin + context.hit.size()});
    }
    std::sort(hits.begin(), hits.end(), [](const Span& a, const Span& b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end > b.end;
    });
    size_t end = 0;
    std::erase_if(hits, [&end](const Span& hit) {
        if (hit.begin < end) return true;
        end = hit.end;
        return false;
    });
    return hits;
}

Span around(const Span& hit, std::string_view plain) {
    size_t begin = hit.begin > Around ? hit.begin - Around : 0;
    if (begin > 0) {
        const size_t blank = plain.find(' ', begin);
        begin = blank < hit.begin ? blank + 1 : hit.begin;
    }
    size_t end = std::min(plain.size(), hit.end + Around);
    if (end < plain.size()) {
        const size_t blank = plain.rfind(' ', end);
        end = blank != std::string_view::npos && blank > hit.end ? blank : hit.end;
    }
    return {begin, end};
}

// Passages one behind the other; those that overlap are one.
QString passages(const TopicContexts& topic) {
    const std::string_view plain = topic.plain;
    QString html;
    const std::vector<Span> hits = hitsOf(topic);
    for (size_t i = 0; i < hits.size();) {
        Span passage = around(hits[i], plain);
        QString text;
        size_t at = passage.begin;
        for (;
             i < hits.size() && (hits[i].begin < passage.end || around(hits[i], plain).begin <= passage.end);
             ++i) {
            text += escaped(plain.substr(at, hits[i].begin - at)) + u"<b class=\"isabet\">"_s +
                    escaped(plain.substr(hits[i].begin, hits[i].end - hits[i].begin)) + u"</b>"_s;
            at = hits[i].end;
            passage.end = std::max(passage.end, around(hits[i], plain).end);
        }
        text += escaped(plain.substr(at, passage.end - at));
        html += u"<p>"_s + (passage.begin > 0 ? u"… "_s : QString()) + text.trimmed() +
                (passage.end < plain.size() ? u" …"_s : QString()) + u"</p>\n"_s;
    }
    return html;
}

QString beginning(const RunHits& run, qint64 hits) {
    const QString options = namesOfOptions(run.run.request.options);
    return u"<!DOCTYPE html>\n<html lang=\"tr\"><head><meta charset=\"utf-8\"><title>%1</title>\n"
           "<style>body{font-family:serif}.isabet{background-color:#ffff66}"
           ".kaynak{color:#555555;font-size:small}</style></head>\n<body>\n<h1>%1</h1>\n"
           "<p class=\"kaynak\">%2 isabet%3</p>\n"_s.arg(
               run.run.request.query.trimmed().toHtmlEscaped(), formatCount(hits),
               options.isEmpty() ? QString() : u" · "_s + options.toHtmlEscaped());
}

// Which author's group each topic of the list is in.
std::vector<int> groupsOf(const SearchRun& run, size_t topics) {
    std::vector<int> groups;
    int group = -1;
    for (qsizetype i = 0; i < run.IsabetKaydi.size(); ++i) {
        const QChar sign = run.IsabetKaydi.at(i);
        if (sign == u'$') ++group;
        if (sign == u'#') groups.push_back(group);
    }
    groups.resize(topics, group);
    return groups;
}

}  // namespace

qint64 hitsOfSummary(const RunHits& run, int author) {
    if (author < 0) return std::ssize(run.list.hits);
    const std::vector<int> groups = groupsOf(run.run, run.list.topics.size());
    qint64 hits = 0;
    for (size_t i = 0; i < run.list.topics.size(); ++i)
        if (groups[i] == author) hits += run.list.hitsEnd(i) - run.list.topics[i].firstHit;
    return hits;
}

Result<bool> studySummary(const data::Library& library, const RunHits& run, int author,
                          const WritePiece& write, const HitProgress& progress) {
    const auto reading = platform::Transaction::beginReading(library.database());
    Result<Statement> texts = library.query(data::catalogue::topicText());
    if (!texts) return texts.error();
    const std::vector<int> groups = groupsOf(run.run, run.list.topics.size());
    QString authorName, bookName;
    QByteArray piece = beginning(run, hitsOfSummary(run, author)).toUtf8();
    for (size_t i = 0; i < run.list.topics.size(); ++i) {
        if (author >= 0 && groups[i] != author) continue;
        if (!progress(static_cast<qint64>(i), std::ssize(run.list.topics))) return false;
        const ListedTopic& topic = run.list.topics[i];
        texts->reset();
        if (const auto bound = texts->bind(1, topic.topic.value); !bound) return bound.error();
        const Result<Step> step = texts->step();
        if (!step) return step.error();
        const auto heading = library.headingWithBook(
            topic.topic, topic.headingRow != 0 ? std::optional(topic.headingRow) : std::nullopt);
        if (!heading) return heading.error();
        if (*step == Step::Done || !*heading) continue;
        const auto name = library.author((*heading)->author);
        if (!name) return name.error();
        QString html;
        if (*name && (*name)->name != authorName) {
            authorName = (*name)->name;
            bookName.clear();
            html += u"<h2>"_s + authorName.toHtmlEscaped() + u"</h2>\n"_s;
        }
        if (const QString book = plainTitle((*heading)->bookTitle); book != bookName) {
            bookName = book;
            html += u"<h3>"_s + book.toHtmlEscaped() + u"</h3>\n"_s;
        }
        const QString title = plainTitle((*heading)->title);
        html += u"<h4>"_s + title.toHtmlEscaped() + u"</h4>\n"_s +
                passages(contextsOf(texts->utf8(0), run.list.hitsOf(i), 0)) + u"<p class=\"kaynak\">"_s +
                (authorName + u", "_s + bookName + u", "_s + title).toHtmlEscaped() + u"</p>\n"_s;
        piece += html.toUtf8();
        if (piece.size() < WrittenAtOnce) continue;
        if (const Result<void> written = write(piece); !written) return written.error();
        piece.resize(0);
    }
    if (const Result<void> written = write(piece + "</body></html>\n"); !written) return written.error();
    return true;
}

}  // namespace lirovan::search
