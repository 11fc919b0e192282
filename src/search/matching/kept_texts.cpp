#include "search/matching/kept_texts.h"

namespace lirovan::search {

namespace {

// Rows are numbered without gaps in a file of ours; in one that somebody else has worked on, they need not.
constexpr qint64 MostRows = 4'000'000;

}  // namespace

void KeptTexts::refresh() {
    if (!changes_.any()) return;
    const auto row = library_.database().integer(data::catalogue::lastTopicRow());
    const qint64 last = row ? row->value_or(-1) : -1;
    const qint64 blocks = last >= 0 && last < MostRows ? last / BlockRows + 1 : 0;
    slots_ = std::vector<Slot>(static_cast<size_t>(blocks));
    bytes_ = 0;
}

std::optional<qint64> KeptTexts::blockOf(qint64 row) const noexcept {
    if (row < 0 || row / BlockRows >= static_cast<qint64>(slots_.size()) || bytes_ >= MostBytes)
        return std::nullopt;
    return row - row % BlockRows;
}

std::optional<std::string_view> KeptTexts::text(qint64 row) const noexcept {
    if (row < 0 || row / BlockRows >= static_cast<qint64>(slots_.size())) return std::nullopt;
    const Block* block = slots_[static_cast<size_t>(row / BlockRows)].block.load(std::memory_order_acquire);
    if (!block) return std::nullopt;
    const auto place = static_cast<size_t>(row % BlockRows);
    const size_t begin = place ? block->ends[place - 1] : 0;
    return std::string_view(block->bytes).substr(begin, block->ends[place] - begin);
}

void KeptTexts::keep(qint64 first, const Block& block) {
    auto kept = std::make_unique<const Block>(block);
    const Block* none = nullptr;
    std::atomic<const Block*>& slot = slots_[static_cast<size_t>(first / BlockRows)].block;
    if (!slot.compare_exchange_strong(none, kept.get(), std::memory_order_acq_rel)) return;
    bytes_ += kept.release()->bytes.size();
}

}  // namespace lirovan::search
