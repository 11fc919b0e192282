// What the main window and its children stand on; made by main(), or by a test.
#pragma once

#include <memory>

#include "platform/core/dialogs.h"
#include "platform/core/paths.h"
#include "platform/core/printing.h"
#include "platform/ui/web_engine.h"
#include "shell/reg_api.h"

namespace lirovan::shell {

struct Services {
    platform::AppFolder folder;
    platform::Dialogs& dialogs;
    platform::Printing& printing;
    reg_api& registry;
    /// Base address of the update server; empty: no check is made.
    QString updateServer = {};
    /// Named in the message on a new version.
    QString webSite = {};
    /// The page engine; where there is none yet, it is started when the first page view is made.
    std::shared_ptr<platform::WebEngine> engine = nullptr;
};

}  // namespace lirovan::shell
