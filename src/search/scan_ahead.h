// Finding out which topics match, on all processor cores, while the run lists them in their order.
//
// Every core but one runs a worker with a connection of its own. The run takes the answers in order, and
// where one is not there yet it scans some topics itself. With one core, few topics, or a library without a
// file it scans all.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

#include "data/library.h"
#include "search/topic_scanner.h"

namespace lirovan::search {

class ScanAhead {
  public:
    /// `rows`: row ids of the topics, in order. `library` and `scanner` outlive this object.
    ScanAhead(const data::Library& library, const TopicScanner& scanner, std::vector<qint64> rows);
    /// The workers end after the topic that each has at hand.
    ~ScanAhead();
    ScanAhead(const ScanAhead&) = delete;
    ScanAhead& operator=(const ScanAhead&) = delete;

    /// Whether it is known if topic `topic` matches. Where it is not, scans some topics or waits a moment; to
    /// be called again, with events in between.
    bool ready(size_t topic);
    /// Whether topic `topic`, which is ready, matches.
    platform::Result<bool> matches(size_t topic);
    /// The stored text of a topic; valid until the next call of any function.
    platform::Result<std::string_view> text(size_t topic);

  private:
    enum class State : char { Open, Done, Failed };
    class Reader;

    void startWorkers();
    void work();
    /// Scans the next chunk that nobody has; false when there is none.
    bool scanChunk(Reader& reader);
    State scanTopics(Reader& reader, size_t first, size_t last);

    const data::Library& library_;
    const TopicScanner& scanner_;
    std::vector<qint64> rows_;
    std::vector<std::uint32_t> byRow_;        // topics in the order in which they lie in the table
    std::vector<std::uint32_t> chunkOf_;      // by topic
    std::vector<char> matches_;               // by topic; to be read once its chunk is done
    std::vector<std::atomic<State>> chunks_;  // stretches of byRow_ that are taken at once
    std::atomic<size_t> next_ = 0;            // first chunk that nobody has
    std::atomic<bool> stop_ = false;
    std::mutex mutex_;
    std::condition_variable finished_;  // a chunk
    std::unique_ptr<Reader> reader_;    // of the run itself
    std::vector<std::thread> workers_;
};

}  // namespace lirovan::search
