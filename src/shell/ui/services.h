// What the main window and its children stand on; made by main(), or by a test.
#pragma once

#include <functional>
#include <memory>

#include "platform/core/dialogs.h"
#include "platform/core/paths.h"
#include "platform/core/printing.h"
#include "platform/ui/web_engine.h"

namespace lirovan::shell {

struct Services {
    platform::AppFolder folder;
    platform::Dialogs& dialogs;
    platform::Printing& printing;
    /// The page engine; started only when the first page view is made.
    std::shared_ptr<platform::WebEngine> engine;
};

}  // namespace lirovan::shell
