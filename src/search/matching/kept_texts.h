// Topic texts kept in memory as they are stored, so that only the first of several runs has to get them out
// of the file: handing them out takes SQLite several times as long as scanning them.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/library.h"
#include "search/matching/library_changes.h"

namespace lirovan::search {

class KeptTexts {
  public:
    /// Neighbouring rows are kept together.
    static constexpr qint64 BlockRows = 32;
    static constexpr size_t MostBytes = 100'000'000;

    /// `library` outlives this object.
    explicit KeptTexts(const data::Library& library) : library_(library), changes_(library) {}

    /// Forgets what a change of the file since the last call may have made untrue. Not while others read.
    void refresh();

    /// First row of the block that may hold `row`, where there is one and still room.
    std::optional<qint64> blockOf(qint64 row) const noexcept;
    /// A kept text, which stays valid until refresh(); nothing where it is not kept. From any thread.
    std::optional<std::string_view> text(qint64 row) const noexcept;

    struct Block {
        std::string bytes;
        std::array<size_t, BlockRows> ends{};  // of the texts in `bytes`
    };
    /// Keeps the texts of the rows from `first` on, unless another thread has done it. From any thread.
    void keep(qint64 first, const Block& block);

  private:
    struct Slot {
        std::atomic<const Block*> block = nullptr;
        ~Slot() { delete block.load(); }
    };

    const data::Library& library_;
    LibraryChanges changes_;
    std::vector<Slot> slots_;
    std::atomic<size_t> bytes_ = 0;
};

}  // namespace lirovan::search
