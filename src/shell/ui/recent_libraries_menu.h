// The libraries that were open last, as items below "Kitaplık Aç...".
#pragma once

#include <QMenu>
#include <functional>

#include "shell/reg_api.h"

namespace lirovan::shell {

class RecentLibrariesMenu : public QObject {
  public:
    /// Fills `menu` behind its item mnu_KitaplikAc whenever it is about to be shown. `open` gets a folder.
    RecentLibrariesMenu(QMenu& menu, const reg_api& registry, QString current,
                        std::function<void(const QString& folder)> open);

  private:
    void fill();

    QMenu& menu_;
    const reg_api& registry_;
    QString current_;
    std::function<void(const QString&)> open_;
    QList<QAction*> items_;
};

}  // namespace lirovan::shell
