#include "shell/ui/recent_libraries_menu.h"

#include <QAction>

#include "shell/recent_libraries.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

RecentLibrariesMenu::RecentLibrariesMenu(QMenu& menu, const reg_api& registry, QString current,
                                         std::function<void(const QString&)> open)
    : QObject(&menu), menu_(menu), registry_(registry), current_(std::move(current)), open_(std::move(open)) {
    connect(&menu_, &QMenu::aboutToShow, this, &RecentLibrariesMenu::fill);
}

void RecentLibrariesMenu::fill() {
    qDeleteAll(items_);
    items_.clear();
    const QList<QAction*> actions = menu_.actions();
    const auto opens = std::find_if(actions.begin(), actions.end(), [](const QAction* action) {
        return action->objectName() == u"mnu_KitaplikAc";
    });
    if (opens == actions.end()) return;
    QAction* next = opens + 1 == actions.end() ? nullptr : *(opens + 1);
    for (const QString& folder : recentLibraries(registry_, current_)) {
        const auto number = items_.size() + 1;
        auto* item =
            new QAction(u"&%1  %2"_s.arg(number).arg(libraryCaption(folder).replace(u'&', u"&&"_s)), this);
        item->setObjectName(u"mnu_Kitaplik%1"_s.arg(number));
        // What keeps another library from being chosen keeps these, too.
        item->setEnabled((*opens)->isEnabled());
        connect(item, &QAction::triggered, this, [this, folder] { open_(folder); });
        menu_.insertAction(next, item);
        items_ += item;
    }
}

}  // namespace lirovan::shell
