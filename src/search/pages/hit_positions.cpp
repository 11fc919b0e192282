#include "search/pages/hit_positions.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/core/main_frame.h"
#include "search/pages/highlighter.h"

namespace lirovan::search {

using platform::button::Down;
using platform::button::Up;

namespace {
// Hits on one line would be one stop; so many pixels apart each of them is a step that can be seen.
constexpr qint32 Spread = 33;
}  // namespace

std::vector<qint32> hitStops(const std::vector<double>& offsets) {
    std::vector<qint32> stops;
    stops.reserve(offsets.size() + 1);
    for (const double offset : offsets) stops.push_back(static_cast<qint32>(std::nearbyint(offset)));
    if (stops.empty()) stops.push_back(0);
    std::sort(stops.begin(), stops.end());
    for (size_t k = 0; k + 1 < stops.size(); ++k)
        if (stops[k] >= stops[k + 1]) stops[k + 1] += Spread;
    stops.back() += Spread;
    return stops;
}

HitPositions::HitPositions(platform::PageView& view, EnableButton enableButton)
    : view_(view), enableButton_(std::move(enableButton)) {}

void HitPositions::ReOrderPos() {
    const auto offsets = view_.offsets(HitAnchor);
    if (!offsets) return;
    stops_ = hitStops(*offsets.value);
    hasHits_ = !offsets.value->empty();
    order_.resize(offsets.value->size());
    std::iota(order_.begin(), order_.end(), 0);
    std::ranges::stable_sort(order_, {}, [&](int hit) { return (*offsets.value)[static_cast<size_t>(hit)]; });
}

void HitPositions::SetPosZero() {
    current_ = 0;
    stops_ = hitStops({});
    hasHits_ = false;
    order_.clear();
    ReOrderPos();
    scrollToFirst();
}

void HitPositions::goToButton(qint32 anchor) {
    ReOrderPos();
    const auto stop = std::find(order_.begin(), order_.end(), anchor);
    if (stop != order_.end()) goTo(static_cast<qint32>(stop - order_.begin()));
}

void HitPositions::UpperPos() {
    ReOrderPos();
    enableButton_(Down, true);
    if (current_ > 0) {
        --current_;
        current_ == 0 ? scrollToFirst() : scrollToCurrent();
    }
    if (current_ == 0) enableButton_(Up, false);
}

void HitPositions::DownerPos() {
    ReOrderPos();
    enableButton_(Up, true);
    if (current_ < lastIndex()) {
        ++current_;
        scrollToCurrent();
    }
    // The page may have got shorter since the last step.
    current_ = std::min(current_, lastIndex());
    if (current_ == lastIndex()) enableButton_(Down, false);
    if (lastIndex() == 0) {
        // The one stop can be gone back to at any time.
        scrollToCurrent();
        enableButton_(Down, true);
        enableButton_(Up, false);
    }
}

bool HitPositions::canStep(int step) {
    ReOrderPos();
    return hasHits_ && (step > 0 ? current_ < lastIndex() : current_ > 0);
}

void HitPositions::goToStop(qint32 hit) {
    ReOrderPos();
    goTo(hit);
}

void HitPositions::goToNextOf(const std::vector<HitRange>& hits) {
    ReOrderPos();
    const auto isOne = [&](int hit) {
        return std::ranges::any_of(hits, [hit](const HitRange& range) {
            return hit >= range.first && hit < range.first + range.count;
        });
    };
    const auto count = static_cast<qint32>(order_.size());
    for (qint32 step = 1; step <= count; ++step) {
        const qint32 next = (current_ + step) % count;
        if (isOne(order_[static_cast<size_t>(next)])) return goTo(next);
    }
}

void HitPositions::firstActivation() {
    if (activated_) return;
    enableButton_(Up, false);
    SetPosZero();
    if (!hasHits_) enableButton_(Down, false);
    activated_ = true;
}

void HitPositions::goTo(qint32 stop) {
    current_ = std::clamp(stop, 0, lastIndex());
    current_ == 0 ? scrollToFirst() : scrollToCurrent();
    enableButton_(Up, current_ > 0);
    // The one stop can be gone back to at any time.
    enableButton_(Down, hasHits_ && (current_ < lastIndex() || lastIndex() == 0));
}

void HitPositions::scrollToFirst() {
    if (!hasHits_ || view_.isInFirstView(HitAnchor).valueOr(false))
        view_.setScrollTop(0);
    else
        scrollToCurrent();
    outlineCurrent();
}

void HitPositions::scrollToCurrent() {
    const qint32 index = std::clamp(current_, 0, lastIndex());
    view_.setScrollTop(stops_[static_cast<size_t>(index)]);
    outlineCurrent();
}

void HitPositions::outlineCurrent() {
    const auto index = static_cast<size_t>(std::clamp(current_, 0, lastIndex()));
    if (index < order_.size()) view_.outlineMark(HitAnchor, order_[index]);
}

}  // namespace lirovan::search
