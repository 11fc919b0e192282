#include "search/runs/search_engine.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "search/matching/scan_ahead.h"
#include "search/matching/search_query.h"
#include "search/matching/word_list.h"
#include "search/runs/ratio_order.h"
#include "text/alphabet.h"
#include "text/blanks.h"
#include "text/title.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using data::AuthorId;
using data::BookId;
using data::TopicId;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace catalogue = data::catalogue;

namespace {

// Numbers of pictures in the tree's image list.
constexpr qint64 BookImage = 1, LeafImage = 3;

// The outline of so many topics takes longer than a window may stand still.
constexpr size_t ManyRows = 30'000;

QString countText(qint64 count) {
    return formatCount(count) + u" adet"_s;
}

QString inBrackets(const QString& text, const QString& count) {
    return text + u" ("_s + count + u')';
}

// A topic whose place among the others is not known before all are counted.
struct RatedTopic {
    const TopicRow* topic;
    Ratio ratio;
    QString record;  // its part of the hit record, and of the tally
    size_t tallyBegin, tallyEnd;
};

}  // namespace

struct SearchEngine::Listing {
    SearchRun& run;
    RunHost& host;
    ListOrder order = run.request.order;
    TopicScanner scanner{run};
    std::unique_ptr<ScanAhead> scan = {};  // of the whole library, when all of it is searched
    bool manyRows = false;                 // in it
    ResultNode* root = nullptr;

    ResultNode* author = nullptr;
    QString authorName = {};
    qint64 authorCount = 0;  // hits
    int authorIndex = 0;

    ResultNode* book = nullptr;
    BookId bookId = {};
    QString bookTitle = {};  // of the topic at hand, as stored
    QString bookName = {};
    qint64 bookCount = 0;
    int bookIndex = 0;  // the first book is 1

    std::vector<RatedTopic> rated = {};  // of the author at hand, when they are listed by ratio
    std::vector<WordTally::Hits> ratedTally = {};

    qint64 listed = 0;
    bool stopped = false;

    bool goOn() {
        stopped = stopped || !host.goOn();
        return !stopped;
    }

    // Every hit is counted one by one: a ratio of hits that were not there would mean nothing.
    void rate(const TopicRow& topic, std::string_view text) {
        RatedTopic one{&topic, {}, {}, ratedTally.size(), 0};
        std::swap(ratedTally, run.tally.record);
        one.ratio.hits = scanner.BulKelimeSay(text, {topic.topic, {}}, {one.record, &run.tally},
                                              [this] { return goOn(); });
        std::swap(ratedTally, run.tally.record);
        one.ratio.words = wordsOfText(text);
        one.tallyEnd = ratedTally.size();
        rated.push_back(std::move(one));
    }

    QString key(QStringView prefix, qint64 id) const {
        return prefix.toString() + QString::number(run.AramaNo) + QString::number(id);
    }
};

SearchEngine::Prepared SearchEngine::prepare(SearchRequest request, RunHost& host) {
    if (text::trimBlanks(request.query).isEmpty()) return {};
    const QString cleaned = cleanQuery(text::trimBlanks(request.query));
    SearchRun run = startRun(std::move(request), cleaned);
    run.AramaNo = ++AramaNo_;
    if (run.AramaKelimeleri.isEmpty()) return {};
    SearchOptions& options = run.request.options;
    if (hasSingleLetter(run)) {
        if (!host.acceptSingleLetter()) return {SearchOutcome::End::Cancelled};
        options.wholeWord = true;
    }
    completeRun(run, [&](const QString& word) { return tableVariants(word, options.caseSensitive); });
    return {SearchOutcome::End::Listed, std::move(run)};
}

QStringList SearchEngine::tableVariants(const QString& word, bool caseSensitive) const {
    QStringList variants;
    const QString written = withoutQuoteMarks(word);
    if (written.isEmpty()) return variants;
    // A library without the table has no variants.
    Result<data::Rows<data::Variant>> rows = library_.variants(written);
    data::Variant row;
    while (rows) {
        const Result<bool> more = rows->next(row);
        if (!more || !*more) break;
        if (caseSensitive && !row.written.contains(written)) continue;
        // The table stores apostrophes as grave accents.
        variants.append(row.searchForm.replace(u'`', u'\''));
    }
    return variants;
}

Result<SearchOutcome> SearchEngine::run(SearchRequest request, RunHost& host) {
    Prepared prepared = prepare(std::move(request), host);
    if (prepared.end != SearchOutcome::End::Listed) return SearchOutcome{prepared.end};
    if (prepared.run.request.options.clearResult) {
        tree_.SonuclariTemizle();
        stores_.clear();
    }
    SearchRun& run = stores_.add(std::move(prepared.run));

    Listing listing{run, host};
    const QString shown = text::trimBlanks(run.request.shown.value_or(run.request.query)).toString();
    listing.root = &tree_.add(nullptr, {NodeKind::Run, u"bul"_s + QString::number(run.AramaNo),
                                        u"Aranan :\""_s + shown + u'"', u"Bul"_s, qint64(run.AramaNo)});
    host.runStarted(*listing.root);
    const Result<void> ended = listAuthors(listing);
    if (listing.listed == 0) tree_.removeLastRun();
    // Both grew by doubling, and are kept as long as the tree shows the run.
    run.IsabetKaydi.squeeze();
    run.tally.record.shrink_to_fit();
    if (!ended) return ended.error();
    return SearchOutcome{prepared.end, listing.listed, &run};
}

Result<void> SearchEngine::listAuthors(Listing& listing) {
    const AuthorId wanted{listing.run.request.scope.authorId};
    Result<Statement> rows =
        library_.query(wanted.value == 0 ? catalogue::authors() : catalogue::authorInOrder(wanted));
    if (!rows) return rows.error();
    outline_.refresh();
    if (kept_) kept_->refresh();
    // Begun before the outline is read: which topics match does not depend on their order.
    if (wanted.value == 0)
        if (std::vector<qint64> all = outline_.allRows(); !all.empty()) {
            listing.manyRows = all.size() > ManyRows;
            listing.scan =
                std::make_unique<ScanAhead>(library_, listing.scanner, std::move(all), kept_.get());
        }
    for (; !listing.stopped; ++listing.authorIndex) {
        const Result<Step> step = rows->step();
        if (!step) return step.error();
        if (*step == Step::Done) break;
        const AuthorId author{rows->integer(0)};
        listing.authorName = rows->text(1);
        listing.authorCount = 0;
        listing.book = nullptr;
        listing.author = &tree_.add(listing.root, {NodeKind::Author,
                                                   listing.key(u"ana", listing.authorIndex),
                                                   listing.authorName,
                                                   author == AuthorId{1} ? u"vq"_s : u"Lirovan"_s,
                                                   {}});
        listing.run.IsabetKaydi += u'$';
        const Result<void> listed = listTopics(listing, author);
        const Result<void> byRatio = listByRatio(listing);
        if (!listed) return listed;
        if (!byRatio) return byRatio;
    }
    return {};
}

Result<void> SearchEngine::listTopics(Listing& listing, AuthorId author) {
    const bool byHeading = listing.order == ListOrder::Konu;
    const QString statement =
        topicsOfScope(listing.run.request.scope, author,
                      byHeading ? catalogue::TopicOrder::Heading : catalogue::TopicOrder::Book);
    // Of few topics the outline is there before another thread would have begun.
    const auto meanwhile = [&] { listing.goOn(); };
    const auto found =
        byHeading || listing.manyRows ? outline_.topics(statement, meanwhile) : outline_.topics(statement);
    if (!found) return found.error();
    const std::vector<TopicRow>& topics = **found;
    listing.host.authorStarted(static_cast<qsizetype>(topics.size()));
    std::unique_ptr<ScanAhead> ofAuthor;
    if (!listing.scan) {
        std::vector<qint64> rows;
        rows.reserve(static_cast<size_t>(topics.size()));
        for (const TopicRow& topic : topics) rows.push_back(topic.row);
        ofAuthor = std::make_unique<ScanAhead>(library_, listing.scanner, std::move(rows), kept_.get());
    }
    ScanAhead& scan = listing.scan ? *listing.scan : *ofAuthor;

    for (size_t i = 0; i < topics.size() && !listing.stopped; ++i) {
        const qint64 row = topics[i].row;
        while (!scan.ready(row))
            if (!listing.goOn()) return {};
        const Result<bool> matches = scan.matches(row);
        if (!matches) return matches.error();
        if (*matches)
            if (const Result<void> counted = countTopic(listing, topics[i], scan.text(row)); !counted)
                return counted;
        listing.host.topicDone(static_cast<qsizetype>(i) + 1, listing.bookIndex > 1 ? listing.book : nullptr);
        listing.goOn();
    }
    return {};
}

Result<void> SearchEngine::countTopic(Listing& listing, const TopicRow& topic,
                                      const Result<std::string_view>& text) {
    if (!text) return text.error();
    if (listing.order == ListOrder::Oran) {
        listing.rate(topic, *text);
        return {};
    }
    const Result<std::optional<QString>> heading = outline_.heading(topic);
    if (!heading) return heading.error();
    if (!*heading) return {};
    if (listing.order == ListOrder::Kitap) {
        const Result<std::optional<QString>> title = outline_.bookTitle(topic.book);
        if (!title) return title.error();
        // A topic whose book is missing cannot stand under it.
        if (!*title) return {};
        listing.bookTitle = **title;
        AktifKitapID_ = topic.book;
    }
    const qint64 count = listing.scanner.BulKelimeSay(*text, {topic.topic, AktifKitapID_},
                                                      {listing.run.IsabetKaydi, &listing.run.tally},
                                                      [&] { return listing.goOn(); });
    listing.host.topicCounted(listing.run, topic, *text);
    listTopic(listing, topic, **heading, count, countText(count));
    return {};
}

Result<void> SearchEngine::listByRatio(Listing& listing) {
    std::vector<RatedTopic> rated = std::exchange(listing.rated, {});
    const std::vector<WordTally::Hits> tally = std::exchange(listing.ratedTally, {});
    std::stable_sort(rated.begin(), rated.end(),
                     [](const RatedTopic& a, const RatedTopic& b) { return isHigher(a.ratio, b.ratio); });
    for (const RatedTopic& topic : rated) {
        const Result<std::optional<QString>> heading = outline_.heading(*topic.topic);
        if (!heading) return heading.error();
        if (!*heading) continue;
        listing.run.IsabetKaydi += topic.record;
        auto& record = listing.run.tally.record;
        record.insert(record.end(), tally.begin() + static_cast<qsizetype>(topic.tallyBegin),
                      tally.begin() + static_cast<qsizetype>(topic.tallyEnd));
        listTopic(listing, *topic.topic, **heading, topic.ratio.hits,
                  countText(topic.ratio.hits) + u", binde "_s + formatRatio(topic.ratio));
        // What was counted is listed even when the run is stopped meanwhile.
        listing.goOn();
    }
    return {};
}

void SearchEngine::listTopic(Listing& listing, const TopicRow& topic, const QString& heading, qint64 count,
                             const QString& shownCount) {
    ResultNode& author = *listing.author;
    if (author.children.empty())
        tree_.add(&author, {NodeKind::Summary, listing.key(u"ozet", listing.authorIndex), u"Özet"_s,
                            LeafImage, u"OZET"_s + QString::number(listing.authorIndex)});
    ResultNode* parent = &author;
    if (listing.order == ListOrder::Kitap) {
        if (!listing.book || topic.book != listing.bookId) {
            parent = &startBook(listing, topic.book);
        } else {
            parent = listing.book;
        }
        listing.bookCount += count;
        tree_.setText(*parent, inBrackets(listing.bookName, countText(listing.bookCount)));
    }
    listing.authorCount += count;
    tree_.setText(author, inBrackets(listing.authorName, countText(listing.authorCount)));
    tree_.add(parent, {NodeKind::Topic, listing.key(u"konu", topic.topic.value),
                       inBrackets(text::ClearTitle(QString(heading)), shownCount), LeafImage,
                       topic.topic.value, topic.headingRow});
    ++listing.listed;
}

ResultNode& SearchEngine::startBook(Listing& listing, BookId book) {
    listing.bookId = book;
    listing.bookName = text::ClearTitle(QString(listing.bookTitle));
    listing.bookCount = 0;
    listing.book = &tree_.add(
        listing.author,
        {NodeKind::Book, listing.key(u"kitap", ++listing.bookIndex), listing.bookName, BookImage, {}});
    return *listing.book;
}

}  // namespace lirovan::search
