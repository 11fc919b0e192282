// The search run: from the query to the nodes of the result tree and the hit record. The search window and
// the command-line companion run the same.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string_view>

#include "data/library.h"
#include "platform/core/main_frame.h"
#include "platform/core/result.h"
#include "search/matching/kept_texts.h"
#include "search/matching/topic_scanner.h"
#include "search/runs/result_tree.h"
#include "search/runs/search_run.h"
#include "search/runs/topic_outline.h"

namespace lirovan::search {

/// What a run asks and tells while it works. The defaults suit a run that nobody watches.
class RunHost {
  public:
    virtual ~RunHost() = default;
    /// The word list holds a single letter: go on, as a search for whole words, or give up?
    virtual bool acceptSingleLetter() { return true; }
    /// The run goes on: its root stands in the tree.
    virtual void runStarted(ResultNode& root) { Q_UNUSED(root); }
    /// An author's topics are about to be searched.
    virtual void authorStarted(qsizetype topics) { Q_UNUSED(topics); }
    /// A topic that is listed in book or heading order has been counted: its hits are the record's last ones.
    /// `text`, as stored, is valid during the call.
    virtual void topicCounted(const SearchRun& run, const TopicRow& topic, std::string_view text) {
        Q_UNUSED(run);
        Q_UNUSED(topic);
        Q_UNUSED(text);
    }
    /// `done` of them are searched; `book` is the newest book node, if the tree is to follow it. Events may
    /// run here.
    virtual void topicDone(qsizetype done, ResultNode* book) {
        Q_UNUSED(done);
        Q_UNUSED(book);
    }
    /// Asked at every hit; false ends the run after the topic at hand. Events may run here.
    virtual bool goOn() { return true; }
};

struct SearchOutcome {
    enum class End {
        NoWords,    ///< nothing but blanks and punctuation was asked for
        Cancelled,  ///< at the single-letter warning
        Listed      ///< the run is stored, whether or not it found or was stopped
    } end = End::NoWords;
    qint64 listed = 0;               ///< BulunanKonuSayisi: topics in the tree
    const SearchRun* run = nullptr;  ///< as stored; null unless Listed
};

class SearchEngine {
  public:
    /// `library` and `tree` outlive the engine.
    SearchEngine(const data::Library& library, ResultTree& tree) : library_(library), tree_(tree) {}

    /// Keeps the topic texts from one run to the next, for who searches more than once.
    void keepTexts() { kept_ = std::make_unique<KeptTexts>(library_); }

    struct Prepared {
        SearchOutcome::End end = SearchOutcome::End::NoWords;
        SearchRun run = {};  ///< without words unless Listed
    };
    /// Everything up to the word list: cleans the query, gives the run its number, adds I variants and table
    /// variants, and asks about single letters, which turns the run's `wholeWord` on.
    Prepared prepare(SearchRequest request, RunHost& host);

    /// listele — the run. When it lists no topic, all its nodes are removed again. An error of the library
    /// ends the run where it stands; what was listed stays.
    platform::Result<SearchOutcome> run(SearchRequest request, RunHost& host);

    const RunStores& stores() const { return stores_; }
    TopicOutline& outline() { return outline_; }

  private:
    struct Listing;  // one run under way

    QStringList tableVariants(const QString& word, bool caseSensitive) const;
    platform::Result<void> listAuthors(Listing& listing);
    platform::Result<void> listTopics(Listing& listing, data::AuthorId author);
    platform::Result<void> countTopic(Listing& listing, const TopicRow& topic,
                                      const platform::Result<std::string_view>& text);
    platform::Result<void> listByRatio(Listing& listing);
    void listTopic(Listing& listing, const TopicRow& topic, const QString& heading, qint64 count,
                   const QString& shownCount);
    ResultNode& startBook(Listing& listing, data::BookId book);

    const data::Library& library_;
    ResultTree& tree_;
    TopicOutline outline_{library_};
    std::unique_ptr<KeptTexts> kept_;
    RunStores stores_;
    int AramaNo_ = 0;
    data::BookId AktifKitapID_;  // as of the last listing in book order
};

}  // namespace lirovan::search
