#include "search/pages/result_page.h"

#include <utility>

#include "browse/page_layout.h"
#include "browse/topic_page.h"
#include "search/pages/hit_anchor.h"
#include "search/pages/passages.h"
#include "text/blanks.h"
#include "text/title.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using data::Library;
using platform::Error;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// Numbers that the message of a failed summary begins with.
constexpr int NoSuchRun = 5, NoSuchGroup = 9, LibraryFailed = -2147467259;

template <class T>
T orEmpty(Result<std::optional<T>> result) {
    return result ? std::move(*result).value_or(T()) : T();
}

// The stored topic with the titles around it; nothing where a part is missing.
Result<std::optional<SummaryTopic>> summaryTopic(const Library& library, data::TopicId topic) {
    Result<Statement> row = library.query(data::catalogue::topicWithHeading(topic));
    if (!row) return row.error();
    const Result<Step> step = row->step();
    if (!step) return step.error();
    if (*step == Step::Done) return std::optional<SummaryTopic>();
    const auto text = [&](QStringView column) { return row->text(row->column(column)); };
    return std::optional(SummaryTopic{text(u"Konu"), text(u"KitapAdi"), text(u"KonuBaslik")});
}

// One phrase is marked over its whole length.
std::optional<qsizetype> phraseLength(const SearchRun& run) {
    if (!run.request.options.together) return std::nullopt;
    return text::trimBlanks(run.request.query).size();
}

}  // namespace

std::optional<ResultPage> highlightedPage(const Library& library, const platform::AppFolder& folder,
                                          data::TopicId topic, std::optional<qint64> headingRow,
                                          const SearchRun& run, const MarkingProgress& progress,
                                          qint64 wanted) {
    Result<std::optional<data::TopicText>> row = library.topic(topic);
    if (row && !*row) return std::nullopt;
    data::TopicText text = orEmpty(std::move(row));

    ResultPage result;
    const QString stored = wanted > 0 ? text.text : QString();
    result.marks = markHits(std::move(text.text), wordsToMark(run), run, progress);
    if (wanted > 0) result.wanted = anchorOf(stored, result.marks.text, wanted);
    text.text = std::exchange(result.marks.text, QString());

    const data::BookHeading heading = orEmpty(library.headingWithBook(topic, headingRow));
    result.heading = heading.title;
    result.heading.replace(u"<BR>"_s, u" "_s);
    browse::PageFrame frame;
    frame.title = result.heading;
    frame.bookName = text::ClearTitle(QString(heading.bookTitle));
    frame.authorName = orEmpty(library.author(heading.author)).name;
    frame.book = heading.book;
    frame.background = browse::PageFrame::Background::None;
    result.page = browse::framedPage(
        frame, browse::topicContent(browse::scriptFragment(library, folder), text, heading.book));
    return result;
}

Error summaryError(int number, const QString& description) {
    return {QString::number(number) + u'-' + description};
}

Result<QString> summaryPage(const Library& library, const SearchRun* run, int group,
                            const std::function<void(qsizetype hits)>& started,
                            const std::function<bool()>& passageDone) {
    if (!run) return summaryError(NoSuchRun, u"Bu aramanın kaydı bulunamadı."_s);
    const auto topics = recordedTopics(run->IsabetKaydi, group);
    if (!topics) return summaryError(NoSuchGroup, u"Bu yazar arama kaydında yok."_s);
    qsizetype hits = 0;
    for (const RecordedTopic& topic : *topics) hits += static_cast<qsizetype>(topic.positions.size());
    started(hits);

    QString page;
    bool stopped = false;
    for (const RecordedTopic& recorded : *topics) {
        const auto topic = summaryTopic(library, recorded.topic);
        if (!topic) return summaryError(LibraryFailed, topic.error().message);
        if (!*topic) continue;
        appendPassages(page, **topic, recorded.positions, phraseLength(*run), [&] {
            stopped = !passageDone();
            return !stopped;
        });
        if (stopped) break;
    }
    return page;
}

std::optional<data::TopicId> topicOfPassage(const Library& library, const SearchRun& run, int group,
                                            int passage, const std::function<bool()>& passageDone) {
    const auto topics = recordedTopics(run.IsabetKaydi, group);
    if (!topics) return std::nullopt;
    int before = 0;
    bool goesOn = true;
    const auto onPassage = [&] { return goesOn = passageDone(); };
    for (const RecordedTopic& recorded : *topics) {
        const auto topic = summaryTopic(library, recorded.topic);
        if (!topic || !*topic) continue;
        QString page;
        before += appendPassages(page, **topic, recorded.positions, phraseLength(run), onPassage);
        if (!goesOn) break;
        if (passage < before) return recorded.topic;
    }
    return std::nullopt;
}

}  // namespace lirovan::search
