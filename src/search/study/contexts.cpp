#include "search/study/contexts.h"

#include <QByteArray>
#include <QChar>
#include <algorithm>
#include <array>

#include "search/matching/stored_markup.h"
#include "search/matching/stored_text.h"

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// The first or the last unit of a hit, on its way from the stored text to the plain one.
struct Edge {
    qint64 position;  // 1-based unit; of an end, the one behind the hit
    size_t hit;
    bool isEnd;
    size_t stored = 0;  // bytes
};

std::vector<Edge> edgesOf(const std::vector<RecordedHit>& hits) {
    std::vector<Edge> edges;
    edges.reserve(2 * hits.size());
    for (size_t i = 0; i < hits.size(); ++i) {
        edges.push_back({hits[i].position, i, false});
        edges.push_back({hits[i].position + hits[i].length, i, true});
    }
    std::sort(edges.begin(), edges.end(),
              [](const Edge& a, const Edge& b) { return a.position < b.position; });
    return edges;
}

constexpr std::array<bool, 256> markedBytes() {
    std::array<bool, 256> table{};
    for (const char c : {'<', '&', ' ', '\n', '\r', '\t'}) table[static_cast<unsigned char>(c)] = true;
    return table;
}
// Bytes that are not simply copied.
constexpr std::array<bool, 256> Marked = markedBytes();

// Whether so many bytes are all simply copied, blanks between two words included. The byte behind them is
// read too. The compiler makes this test many bytes wide.
constexpr size_t Block = 64;
bool isPlain(const char* bytes) {
    const auto isMarked = [](char c) {
        return (c == '<') | (c == '&') | (c == ' ') | (c == '\n') | (c == '\r') | (c == '\t');
    };
    int marks = 0;
    for (size_t i = 0; i < Block; ++i)
        marks |= isMarked(bytes[i]) & ((bytes[i] != ' ') | isMarked(bytes[i + 1]));
    return marks == 0;
}

// Takes the markup out of a text and follows the edges of hits through it.
class Stripper {
  public:
    Stripper(std::string_view text, std::vector<Edge>& edges, size_t hits)
        : text_(text), edges_(edges), begins_(hits, None), ends_(hits, None) {}

    std::string strip() {
        plain_.reserve(text_.size());
        for (size_t at = 0; at < text_.size();) at = takePiece(at);
        passEdges(text_.size(), text_.size() + 1, plain_.size());
        return std::move(plain_);
    }

    static constexpr size_t None = std::string::npos;
    size_t begin(size_t hit) const { return begins_[hit]; }
    size_t end(size_t hit) const { return ends_[hit]; }

  private:
    // Returns where the next piece begins.
    size_t takePiece(size_t at) {
        const char c = text_[at];
        if (c == '<') {
            if (const auto end = tagEnd(text_, at)) {
                const bool blank = separatesWords(text_.substr(at, *end - at));
                return replace(at, *end, blank ? std::string_view(" ") : std::string_view());
            }
        } else if (c == '&') {
            if (const auto end = entityEnd(text_, at)) {
                const auto character = entityCharacter(text_.substr(at, *end - at));
                if (!character) return replace(at, *end, text_.substr(at, *end - at));
                if (*character == U' ') return replace(at, *end, " ");
                const QByteArray bytes = QString::fromUcs4(&*character, 1).toUtf8();
                return replace(at, *end, {bytes.constData(), static_cast<size_t>(bytes.size())});
            }
        } else if (Marked[static_cast<unsigned char>(c)]) {
            return replace(at, at + 1, " ");
        }
        return copy(at, plainEnd(at + 1));
    }

    // A blank between two words stays one.
    size_t plainEnd(size_t end) const {
        const auto isMarked = [this](size_t at) { return Marked[static_cast<unsigned char>(text_[at])]; };
        while (text_.size() - end > Block && isPlain(text_.data() + end)) end += Block;
        for (; end < text_.size(); ++end) {
            if (!isMarked(end)) continue;
            if (text_[end] != ' ' || end + 1 == text_.size() || isMarked(end + 1)) break;
        }
        return end;
    }

    size_t copy(size_t at, size_t end) {
        const size_t plainAt = plain_.size();
        plain_ += text_.substr(at, end - at);
        while (edge_ < edges_.size() && edges_[edge_].stored < end)
            set(edges_[edge_], plainAt + (edges_[edge_].stored - at)), ++edge_;
        return end;
    }

    // An edge inside moves out: a begin to the front, an end behind.
    size_t replace(size_t at, size_t end, std::string_view with) {
        if (with == " " && (plain_.empty() || plain_.back() == ' ')) with = {};
        passEdges(at, end, plain_.size() + with.size());
        plain_ += with;
        return end;
    }

    void passEdges(size_t at, size_t end, size_t plainEnd) {
        for (; edge_ < edges_.size() && edges_[edge_].stored < end; ++edge_) {
            const bool inside = edges_[edge_].stored > at;
            set(edges_[edge_], inside && edges_[edge_].isEnd ? plainEnd : plain_.size());
        }
    }

    void set(const Edge& edge, size_t plainAt) { (edge.isEnd ? ends_ : begins_)[edge.hit] = plainAt; }

    std::string_view text_;
    std::vector<Edge>& edges_;
    size_t edge_ = 0;  // the next one
    std::string plain_;
    std::vector<size_t> begins_, ends_;  // by hit, bytes of the plain text
};

bool isTrail(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

int unitsOf(char lead) {
    return static_cast<unsigned char>(lead) >= 0xF0 ? 2 : 1;
}

std::string_view leftOf(std::string_view plain, size_t at, qsizetype width) {
    size_t begin = at;
    for (qsizetype units = 0; begin > 0;) {
        size_t character = begin - 1;
        while (character > 0 && isTrail(plain[character])) --character;
        units += unitsOf(plain[character]);
        if (units > width) break;
        begin = character;
    }
    return plain.substr(begin, at - begin);
}

std::string_view rightOf(std::string_view plain, size_t at, qsizetype width) {
    size_t end = at;
    for (qsizetype units = 0; end < plain.size();) {
        units += unitsOf(plain[end]);
        if (units > width) break;
        for (++end; end < plain.size() && isTrail(plain[end]);) ++end;
    }
    return plain.substr(at, end - at);
}

}  // namespace

TopicContexts contextsOf(std::string_view text, const std::vector<RecordedHit>& hits, qsizetype width) {
    const QByteArray proper = properUtf8(text);
    if (!proper.isNull()) text = {proper.constData(), static_cast<size_t>(proper.size())};
    std::vector<Edge> edges = edgesOf(hits);
    UnitCounter units(text);
    for (Edge& edge : edges) edge.stored = units.byteOf(edge.position);
    std::erase_if(edges, [&](const Edge& edge) { return edge.stored > text.size(); });

    TopicContexts result;
    Stripper stripper(text, edges, hits.size());
    result.plain = stripper.strip();
    const std::string_view plain = result.plain;
    for (size_t i = 0; i < hits.size(); ++i) {
        const size_t begin = stripper.begin(i), end = stripper.end(i);
        if (begin == Stripper::None || end == Stripper::None) continue;
        result.contexts.push_back({hits[i].position, hits[i].word, leftOf(plain, begin, width),
                                   plain.substr(begin, end - begin), rightOf(plain, end, width)});
    }
    return result;
}

Result<void> contextsOfRun(const data::Library& library, const SearchRun& run, qsizetype width,
                           const OnTopic& onTopic) {
    // Held to the end: taking the lock anew for every topic would cost more than reading it.
    const auto reading = platform::Transaction::beginReading(library.database());
    Result<Statement> texts = library.query(data::catalogue::topicText());
    if (!texts) return texts.error();
    RecordedHits record(run);
    HitTopic topic;
    while (record.next(topic)) {
        texts->reset();
        if (const Result<void> bound = texts->bind(1, topic.topic.value); !bound) return bound.error();
        const Result<Step> step = texts->step();
        if (!step) return step.error();
        if (*step == Step::Done) continue;
        const TopicContexts found = contextsOf(texts->utf8(0), topic.hits, width);
        if (!onTopic(topic.topic, found.contexts)) break;
    }
    return {};
}

}  // namespace lirovan::search
