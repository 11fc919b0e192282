// Finding out which topics match, on all processor cores, while the run lists them in their order.
//
// Every core but one runs a worker with a connection of its own. The run takes the answers in order, and
// where one is not there yet it scans some topics itself. With one core, few topics, or a library without a
// file it scans all.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "data/library.h"
#include "search/matching/kept_texts.h"
#include "search/matching/topic_scanner.h"

namespace lirovan::search {

class ScanAhead {
  public:
    /// `rows`: row ids of topics, each once, in any order; rows that do not exist match nothing. `kept`,
    /// where there is one, gives texts and gets those that it lacks. All outlive this object.
    ScanAhead(const data::Library& library, const TopicScanner& scanner, std::vector<qint64> rows,
              KeptTexts* kept);
    /// The workers end after the topic that each has at hand.
    ~ScanAhead();
    ScanAhead(const ScanAhead&) = delete;
    ScanAhead& operator=(const ScanAhead&) = delete;

    /// Whether it is known if the topic in `row` matches. Where it is not, scans some
    /// topics or waits a moment; to be called again, with events in between.
    bool ready(qint64 row);
    /// Whether the topic in `row`, which is ready, matches.
    platform::Result<bool> matches(qint64 row);
    /// The stored text of the topic in `row`; valid until the next call of any function.
    platform::Result<std::string_view> text(qint64 row);

  private:
    enum class State : char { Open, Done, Failed };
    class Reader;

    void startWorkers();
    void work();
    /// Scans the next chunk that nobody has; false when there is none.
    bool scanChunk(Reader& reader);
    State scanTopics(Reader& reader, size_t first, size_t last);

    size_t placeOf(qint64 row) const;

    const data::Library& library_;
    const TopicScanner& scanner_;
    KeptTexts* kept_;
    std::vector<qint64> rows_;   // ascending: read otherwise, most would bring in a page of their own
    std::vector<char> matches_;  // by place in rows_; to be read once its chunk is done
    std::vector<std::atomic<State>> chunks_;  // stretches of rows_ that are taken at once
    std::atomic<size_t> next_ = 0;            // first chunk that nobody has
    std::atomic<bool> stop_ = false;
    std::mutex mutex_;
    std::condition_variable finished_;  // a chunk
    std::unique_ptr<Reader> reader_;    // of the run itself
    std::vector<std::thread> workers_;
};

}  // namespace lirovan::search
