// Work that reads the library in a thread of its own, with a connection of its own.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "browse/ui/background_work.h"
#include "data/library.h"
#include "platform/core/result.h"

namespace lirovan::search {

/// Runs `read` in the thread of `work`, then `after` with what came of it in this one. An error: the library
/// could not be opened again, and nothing runs. What `read` refers to outlives `work`.
template <class T>
platform::Result<void> startReading(browse::BackgroundWork& work, const data::Library& library,
                                    std::function<platform::Result<T>(const data::Library&)> read,
                                    std::function<void(platform::Result<T>&)> after) {
    auto opened = library.reopened();
    if (!opened) return opened.error();
    auto own = std::make_shared<data::Library>(std::move(*opened));
    auto result = std::make_shared<std::optional<platform::Result<T>>>();
    work.start([own, result, read = std::move(read)] { *result = read(*own); },
               [result, after = std::move(after)] { after(**result); });
    return {};
}

}  // namespace lirovan::search
