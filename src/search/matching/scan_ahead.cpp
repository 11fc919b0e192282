#include "search/matching/scan_ahead.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace lirovan::search {

using platform::Result;
using platform::Statement;
using platform::Step;
using platform::Transaction;

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
    /// Over the library's own connection.
    Reader(const data::Library& library, KeptTexts* kept) : library_(library), kept_(kept) {}
    /// Over a connection of its own, for another thread.
    static Reader ofThread(const data::Library& library, KeptTexts* kept) {
        Reader reader(library, kept);
        reader.connects_ = true;
        return reader;
    }

    /// Valid until the next call. A row that is gone has no text.
    Result<std::string_view> text(qint64 row) {
        if (!kept_) return stored(row);
        if (const auto text = kept_->text(row)) return *text;
        const std::optional<qint64> first = kept_->blockOf(row);
        if (!first) return stored(row);
        block_.bytes.clear();
        for (size_t i = 0; i < block_.ends.size(); ++i) {
            const Result<std::string_view> text = stored(*first + static_cast<qint64>(i));
            // What is wrong with one row is not the fault of its neighbours.
            if (!text) return stored(row);
            block_.bytes += *text;
            block_.ends[i] = block_.bytes.size();
        }
        kept_->keep(*first, block_);
        return *kept_->text(row);
    }

  private:
    Result<std::string_view> stored(qint64 row) {
        if (!statement_)
            if (const Result<void> opened = open(); !opened) return opened.error();
        if (!known_ || row < known_->from || row > known_->at) {
            const auto last = std::exchange(known_, std::nullopt);
            const bool isNext = last && row > last->at && row == last->at + 1;
            const Result<Step> step = isNext ? statement_->step() : seek(row);
            if (!step) return step.error();
            known_ = {row, *step == Step::Row ? statement_->integer(1) : std::numeric_limits<qint64>::max()};
        }
        return row == known_->at ? statement_->utf8(0) : std::string_view();
    }

    Result<void> open() {
        if (connects_) {
            Result<data::Library> own = library_.reopened();
            if (!own) return own.error();
            own_ = std::move(*own);
            // Held to the end: taking the lock anew for every row would cost more than reading it.
            if (Result<Transaction> reading = Transaction::beginReading(own_->database()); reading)
                reading_.emplace(std::move(*reading));
        }
        Result<Statement> statement = (own_ ? *own_ : library_).query(data::catalogue::topicTextsFromRow());
        if (!statement) return statement.error();
        statement_ = std::move(*statement);
        return {};
    }

    Result<Step> seek(qint64 row) {
        statement_->reset();
        if (const Result<void> bound = statement_->bind(1, row); !bound) return bound.error();
        return statement_->step();
    }

    const data::Library& library_;
    KeptTexts* kept_;
    bool connects_ = false;
    std::optional<data::Library> own_;
    std::optional<Transaction> reading_;
    std::optional<Statement> statement_;
    // The statement stands on row `at`, and between `from` and it there is none.
    struct Known {
        qint64 from, at;
    };
    std::optional<Known> known_;
    KeptTexts::Block block_;
};

ScanAhead::ScanAhead(const data::Library& library, const TopicScanner& scanner, std::vector<qint64> rows,
                     KeptTexts* kept)
    : library_(library),
      scanner_(scanner),
      kept_(kept),
      rows_(std::move(rows)),
      matches_(rows_.size()),
      chunks_((rows_.size() + ChunkSize - 1) / ChunkSize),
      reader_(std::make_unique<Reader>(library, kept)) {
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
    Reader reader = Reader::ofThread(library_, kept_);
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
    // Without gaps a row's place is its distance from the first.
    if (!rows_.empty() && row >= rows_.front()) {
        const auto place = static_cast<size_t>(row - rows_.front());
        if (place < rows_.size() && rows_[place] == row) return place;
    }
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
