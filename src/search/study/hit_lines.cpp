#include "search/study/hit_lines.h"

#include <algorithm>

#include "text/title.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// Bytes of texts without markup that are kept for the lines around.
constexpr qsizetype KeptBytes = 32'000'000;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QString plainTitle(QString title) {
    return text::ClearTitle(title.replace(u"<BR>"_s, u" "_s)).simplified();
}

QString sourceOf(const data::Library& library, data::TopicId topic, qint64 headingRow) {
    const auto row = headingRow != 0 ? std::optional(headingRow) : std::nullopt;
    const auto heading = library.headingWithBook(topic, row);
    if (!heading || !*heading) return u"(konu kitaplıktan kaldırılmış)"_s;
    const auto author = library.author((*heading)->author);
    QStringList parts;
    if (author && *author) parts += (*author)->name;
    parts += plainTitle((*heading)->bookTitle);
    parts += plainTitle((*heading)->title);
    parts.removeAll(QString());
    return parts.join(u", "_s);
}

QString copiedLine(const HitLine& line) {
    return u"… "_s + (line.left + line.hit + line.right).simplified() + u" … ("_s + line.source + u')';
}

HitLines::HitLines(const data::Library& library, const HitList& list)
    : library_(library), list_(list), contexts_(KeptBytes) {}

const TopicContexts* HitLines::contextsOf(size_t topic) {
    if (const TopicContexts* known = contexts_.object(topic)) return known;
    Result<Statement> texts = library_.query(data::catalogue::topicText());
    if (!texts || !texts->bind(1, list_.topics[topic].topic.value)) return nullptr;
    const Result<Step> step = texts->step();
    if (!step || *step == Step::Done) return nullptr;
    auto* made = new TopicContexts(search::contextsOf(texts->utf8(0), list_.hitsOf(topic), Width));
    const qsizetype cost = std::ssize(made->plain) + std::ssize(made->contexts) * qsizetype{sizeof(Context)};
    // A topic larger than all that is kept is kept alone: else it would be read for each of its lines.
    contexts_.insert(topic, made, std::min(cost, KeptBytes));
    return contexts_.object(topic);
}

QString HitLines::source(size_t topic) {
    const auto known = sources_.constFind(topic);
    if (known != sources_.cend()) return *known;
    const ListedTopic& listed = list_.topics[topic];
    return *sources_.insert(topic, sourceOf(library_, listed.topic, listed.headingRow));
}

HitLine HitLines::line(quint32 hit) {
    const size_t topic = list_.topicOf(hit);
    HitLine line{{}, {}, {}, source(topic), list_.hits[hit].word};
    const TopicContexts* found = contextsOf(topic);
    if (!found) return line;
    // Contexts have the hits' order; hits that lie behind the text's end by now have none.
    const std::vector<Context>& contexts = found->contexts;
    const size_t place = hit - list_.topics[topic].firstHit;
    const size_t missing = list_.hitsEnd(topic) - list_.topics[topic].firstHit - contexts.size();
    for (size_t at = place - std::min(place, missing); at < contexts.size() && at <= place; ++at) {
        if (contexts[at].position != list_.hits[hit].position || contexts[at].word != line.word) continue;
        line.left = text(contexts[at].left);
        line.hit = text(contexts[at].hit);
        line.right = text(contexts[at].right);
        break;
    }
    return line;
}

}  // namespace lirovan::search
