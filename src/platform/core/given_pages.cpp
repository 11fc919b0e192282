#include "platform/core/given_pages.h"

namespace lirovan::platform {

namespace {
constexpr QLatin1StringView Key{"pencere="};
}

const GivenPage* GivenPages::of(int view) const {
    const auto found = pages_.find(view);
    return found == pages_.end() ? nullptr : &found->second;
}

const GivenPage* GivenPages::at(const QUrl& address) const {
    const QString query = address.query();
    return query.startsWith(Key) ? of(QStringView(query).mid(Key.size()).toInt()) : nullptr;
}

QUrl GivenPages::addressOf(int view, QUrl fileAddress) {
    fileAddress.setQuery(Key + QString::number(view));
    return fileAddress;
}

}  // namespace lirovan::platform
