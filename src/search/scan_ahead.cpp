#include "search/scan_ahead.h"

#include <algorithm>
#include <chrono>

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// Enough topics to make taking them cheap, few enough to share them out evenly.
constexpr size_t ChunkSize = 32;
// Below this many topics a worker would hardly be there before the work is done.
constexpr size_t WorthSharing = 256;
constexpr unsigned MostWorkers = 7;

}  // namespace

// Reads topic texts by row. Books mostly lie in the table in the order in which they are listed, so the row
// wanted is usually the next one, and seeking it would take as long as reading it.
class ScanAhead::Reader {
  public:
    explicit Reader(const data::Library& library)
        : statement_(library.query(data::catalogue::topicTextsFromRow())) {}

    /// Valid until the next call. A row that is gone has no text.
    Result<std::string_view> text(qint64 row) {
        if (!statement_) return statement_.error();
        Result<Step> step = Step::Done;
        if (at_ && *at_ + 1 == row) step = statement_->step();
        if (!step) return step.error();
        if (*step == Step::Done || statement_->integer(1) != row) step = seek(row);
        if (!step) return step.error();
        const bool found = *step == Step::Row && statement_->integer(1) == row;
        at_ = found ? std::optional(row) : std::nullopt;
        return found ? statement_->utf8(0) : std::string_view();
    }

  private:
    Result<Step> seek(qint64 row) {
        if (const Result<void> reset = statement_->reset(); !reset) return reset.error();
        if (const Result<void> bound = statement_->bind(1, row); !bound) return bound.error();
        return statement_->step();
    }

    Result<Statement> statement_;
    std::optional<qint64> at_;  // the row that was read last
};

ScanAhead::ScanAhead(const data::Library& library, const TopicScanner& scanner, std::vector<qint64> rows)
    : library_(library),
      scanner_(scanner),
      rows_(std::move(rows)),
      matches_(rows_.size()),
      chunks_((rows_.size() + ChunkSize - 1) / ChunkSize),
      reader_(std::make_unique<Reader>(library)) {
    std::sort(rows_.begin(), rows_.end());
    if (rows_.size() >= WorthSharing && !library_.path().isEmpty()) startWorkers();
}

ScanAhead::~ScanAhead() {
    stop_ = true;
    for (std::thread& worker : workers_) worker.join();
}

void ScanAhead::startWorkers() {
    const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
    for (unsigned i = 0; i < std::min(cores - 1, MostWorkers); ++i) workers_.emplace_back([this] { work(); });
}

void ScanAhead::work() {
    const Result<data::Library> library = library_.reopened();
    // Without a connection this worker leaves everything to the others.
    if (!library) return;
    const auto reading = platform::Transaction::beginReading(library->database());
    Reader reader(*library);
    while (!stop_ && scanChunk(reader)) {
    }
}

bool ScanAhead::scanChunk(Reader& reader) {
    const size_t chunk = next_.fetch_add(1);
    if (chunk >= chunks_.size()) return false;
    const size_t first = chunk * ChunkSize;
    const State state = scanTopics(reader, first, std::min(first + ChunkSize, rows_.size()));
    {
        const std::lock_guard lock(mutex_);
        chunks_[chunk] = state;
    }
    finished_.notify_one();
    return true;
}

ScanAhead::State ScanAhead::scanTopics(Reader& reader, size_t first, size_t last) {
    for (size_t place = first; place < last && !stop_; ++place) {
        const Result<std::string_view> text = reader.text(rows_[place]);
        if (!text) return State::Failed;
        matches_[place] = scanner_.matches(*text);
    }
    return State::Done;
}

size_t ScanAhead::placeOf(qint64 row) const {
    return static_cast<size_t>(std::lower_bound(rows_.begin(), rows_.end(), row) - rows_.begin());
}

bool ScanAhead::ready(qint64 row) {
    const size_t place = placeOf(row);
    // A row that came after the rows were counted is read when it is asked for.
    if (place == rows_.size()) return true;
    const std::atomic<State>& chunk = chunks_[place / ChunkSize];
    if (chunk != State::Open) return true;
    if (!scanChunk(*reader_)) {
        std::unique_lock lock(mutex_);
        finished_.wait_for(lock, std::chrono::milliseconds(5), [&] { return chunk != State::Open; });
    }
    return chunk != State::Open;
}

Result<bool> ScanAhead::matches(qint64 row) {
    const size_t place = placeOf(row);
    if (place < rows_.size() && chunks_[place / ChunkSize] == State::Done) return matches_[place] != 0;
    // Where a worker could not read it, what is wrong shows here.
    const Result<std::string_view> stored = text(row);
    if (!stored) return stored.error();
    return scanner_.matches(*stored);
}

Result<std::string_view> ScanAhead::text(qint64 row) {
    return reader_->text(row);
}

}  // namespace lirovan::search
