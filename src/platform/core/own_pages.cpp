#include "platform/core/own_pages.h"

#include <QFile>
#include <algorithm>
#include <array>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1StringView Resources{":/lirovan/own/"};
constexpr QLatin1StringView FirstPageName{"VQ.htm"};
constexpr std::array Names{FirstPageName, QLatin1StringView("print.gif"), QLatin1StringView("print2x.gif")};

}  // namespace

QString ownContent(const AppFolder& folder, const QString& path, FirstPage first) {
    const QString pages = folder.path(u"\\OKU") + u'/';
    if (!path.startsWith(pages)) return {};
    const QStringView name = QStringView(path).mid(pages.size());
    const auto* found = std::find_if(Names.begin(), Names.end(), [name](QLatin1StringView own) {
        return name.compare(own, Qt::CaseInsensitive) == 0;
    });
    if (found == Names.end()) return {};
    if (*found == FirstPageName && first == FirstPage::OfEmptyLibrary) return Resources + u"bos.html"_s;
    return Resources + *found;
}

QString ownFragment() {
    QFile file(Resources + u"betik.html"_s);
    const bool opened = file.open(QIODevice::ReadOnly);
    Q_ASSERT_X(opened, "own fragment", "not built in");
    return opened ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace lirovan::platform
