#include "desk/history.h"

namespace lirovan::desk {

void History::stands(std::optional<platform::PagePlace> place, int hit) {
    if (entries_.empty() || going_) return;
    if (place) entries_[now_].place = std::move(place);
    entries_[now_].hit = hit;
}

void History::shown(const browse::PageIdentity& page) {
    if (going_ || (current() && current()->page == page)) return;
    if (!entries_.empty()) entries_.resize(now_ + 1);
    entries_.push_back({page, std::nullopt, 0});
    if (entries_.size() > Most) entries_.erase(entries_.begin());
    now_ = entries_.size() - 1;
}

bool History::go(int step, const std::function<bool(const Entry&)>& show) {
    while (step < 0 ? now_ > 0 : now_ + 1 < entries_.size()) {
        const std::size_t next = step < 0 ? now_ - 1 : now_ + 1;
        going_ = true;
        const Entry entry = entries_[next];
        const bool isShown = show(entry);
        going_ = false;
        if (isShown) {
            now_ = next;
            return true;
        }
        entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(next));
        if (step < 0) --now_;
    }
    return false;
}

}  // namespace lirovan::desk
