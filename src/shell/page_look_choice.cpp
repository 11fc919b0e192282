#include "shell/page_look_choice.h"

#include <algorithm>

namespace lirovan::shell {

namespace {

template <class Enum, size_t N>
void choose(Enum& value, const QStringView (&items)[N], QStringView item) {
    const auto* found = std::ranges::find(items, item);
    if (found != std::end(items)) value = static_cast<Enum>(found - std::begin(items));
}

template <class Enum, size_t N>
void mark(std::vector<std::pair<QStringView, bool>>& marks, const QStringView (&items)[N], Enum value) {
    for (size_t i = 0; i < N; ++i) marks.emplace_back(items[i], i == static_cast<size_t>(value));
}

}  // namespace

platform::PageLook lookAfter(platform::PageLook look, QStringView item) {
    choose(look.colours, ColourItems, item);
    choose(look.width, WidthItems, item);
    choose(look.spacing, SpacingItems, item);
    if (item == SerifItem) look.serif = !look.serif;
    return look;
}

std::vector<std::pair<QStringView, bool>> checkedItems(const platform::PageLook& look) {
    std::vector<std::pair<QStringView, bool>> marks = {{SerifItem, look.serif}};
    mark(marks, ColourItems, look.colours);
    mark(marks, WidthItems, look.width);
    mark(marks, SpacingItems, look.spacing);
    return marks;
}

}  // namespace lirovan::shell
