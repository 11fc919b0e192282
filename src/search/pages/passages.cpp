#include "search/pages/passages.h"

#include <QList>
#include <algorithm>

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView MarkOpening = u"<font color='#000080'><span style='background-color:#00FF00'>";
constexpr QStringView MarkClosing = u"</font></span>";
constexpr qsizetype MarkLength = MarkOpening.size() + MarkClosing.size();
constexpr QStringView PassageFont = u"<font face=Verdana size =2>";
constexpr QStringView HeaderOpening = u"<font color='#000080'><b>>>>>>";
constexpr QStringView HeaderSeparator = u" >>>>>";
constexpr QStringView HeaderClosing = u"</b></font></font><br>";
constexpr QStringView NewTail = u"</font></font><br></u></p></b></i></strong><hr>";
constexpr QStringView ContinuedTail = u"</font><br></u></p></b></i></strong></font><hr>";
constexpr QStringView Rule = u"<hr>";

// What ends the word that a hit begins.
constexpr QStringView WordEnds = u" .,<-\"`;“”’";

// A passage that ends this far behind its hit is long enough with one paragraph.
constexpr qsizetype LongPassage = 200;

// A topic's text with its hits marked, and where the hits stand in it.
struct MarkedTopic {
    QString text;
    std::vector<qsizetype> hits;  // 1-based, in the order of the sorted positions; marked or not
};

MarkedTopic markTopic(QStringView text, const std::vector<qint64>& positions,
                      std::optional<qsizetype> phraseLength) {
    MarkedTopic result;
    qsizetype copied = 0;   // how much of the text stands in the result, its marks included
    qsizetype wordEnd = 0;  // first word end at or behind the hit at hand
    qsizetype marks = 0;
    for (const qint64 position : positions) {
        result.hits.push_back(position + MarkLength * marks);
        // Inside the mark before, or behind the text's end.
        if (position <= copied || position > text.size()) continue;
        const qsizetype hit = position - 1;
        qsizetype length = 0;
        if (phraseLength) {
            length = std::min(*phraseLength, text.size() - hit);
        } else {
            for (wordEnd = std::max(wordEnd, hit);
                 wordEnd < text.size() && !WordEnds.contains(text[wordEnd]);)
                ++wordEnd;
            // A word that the text's end cuts off is not marked.
            length = wordEnd < text.size() ? wordEnd - hit : 0;
        }
        if (length <= 0) continue;
        result.text += text.sliced(copied, hit - copied);
        result.text += MarkOpening;
        result.text += text.sliced(hit, length);
        result.text += MarkClosing;
        copied = hit + length;
        ++marks;
    }
    result.text += text.sliced(std::min(copied, text.size()));
    return result;
}

// Places of a text where passages may begin and end, all 1-based and ascending.
struct Breaks {
    std::vector<qsizetype> begins;    // "<P>" and "<br>"
    std::vector<qsizetype> ends;      // "</P>" and "<br>"
    std::vector<qsizetype> closings;  // of hit marks

    explicit Breaks(QStringView text) {
        for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at + 1)) {
            const QStringView rest = text.sliced(at);
            const bool line = rest.startsWith(u"<br>"_s);
            if (line || rest.startsWith(u"<P>"_s)) begins.push_back(at + 1);
            if (line || rest.startsWith(u"</P>"_s)) ends.push_back(at + 1);
            if (rest.startsWith(MarkClosing)) closings.push_back(at + 1);
        }
    }

    // The second begin at or before the hit.
    qsizetype passageBegin(qsizetype hit) const {
        const auto behind = std::upper_bound(begins.begin(), begins.end(), hit);
        return behind - begins.begin() < 2 ? 1 : *(behind - 2);
    }

    qsizetype passageEnd(qsizetype hit, qsizetype textLength) const {
        const auto closing = std::lower_bound(closings.begin(), closings.end(), hit);
        int count = 0;
        for (auto end = std::lower_bound(ends.begin(), ends.end(), hit); end != ends.end(); ++end) {
            count += *end - hit > LongPassage ? 2 : 1;
            if (count > 1 && (closing == closings.end() || *closing < *end)) return *end;
        }
        return textLength + 1;
    }
};

QStringView between(QStringView text, qsizetype begin, qsizetype end) {
    begin = std::clamp<qsizetype>(begin, 1, text.size() + 1);
    end = std::clamp<qsizetype>(end, begin, text.size() + 1);
    return text.sliced(begin - 1, end - begin);
}

}  // namespace

std::optional<std::vector<RecordedTopic>> recordedTopics(QStringView IsabetKaydi, int group) {
    const QList<QStringView> groups = IsabetKaydi.split(u'$');
    if (group < 0 || group + 1 >= groups.size()) return std::nullopt;
    std::vector<RecordedTopic> topics;
    const QList<QStringView> entries = groups.at(group + 1).split(u'#');
    for (qsizetype i = 1; i < entries.size(); ++i) {
        const QList<QStringView> parts = entries.at(i).split(u';');
        RecordedTopic topic{{parts.first().toLongLong()}, {}};
        for (qsizetype j = 1; j < parts.size(); ++j) topic.positions.push_back(parts.at(j).toLongLong());
        topics.push_back(std::move(topic));
    }
    return topics;
}

int appendPassages(QString& page, const SummaryTopic& topic, std::vector<qint64> positions,
                   std::optional<qsizetype> phraseLength, const std::function<bool()>& passageDone) {
    std::sort(positions.begin(), positions.end());
    const MarkedTopic marked = markTopic(topic.text, positions, phraseLength);
    const Breaks breaks(marked.text);

    qsizetype passageEnd = 0;  // of the last passage
    int headings = 0;
    for (size_t j = 0; j < marked.hits.size(); ++j) {
        // Hits inside the last passage continue it: all of them at once, up to the last one.
        qsizetype continued = 0;
        for (size_t k = j; k < marked.hits.size() && marked.hits[k] < passageEnd; ++k) {
            continued = passageEnd;
            j = k;
        }
        const qsizetype hit = marked.hits[j];
        const qsizetype begin = continued ? continued : breaks.passageBegin(hit);
        passageEnd = std::max<qsizetype>({passageEnd, breaks.passageEnd(hit, marked.text.size()), 1});

        if (continued) {
            page.chop(Rule.size());
        } else {
            ++headings;
            for (const QStringView piece : {PassageFont, HeaderOpening, QStringView(topic.bookTitle),
                                            HeaderSeparator, QStringView(topic.heading), HeaderClosing})
                page += piece;
        }
        page += PassageFont;
        page += between(marked.text, begin, passageEnd);
        page += continued ? ContinuedTail : NewTail;
        if (!passageDone()) break;
    }
    return headings;
}

}  // namespace lirovan::search
