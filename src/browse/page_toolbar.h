// The main toolbar's buttons that belong to a shown page.
#pragma once

#include "platform/core/main_frame.h"

namespace lirovan::browse {

/// As after start-up: no page command is visible, "Up", "Down" and "New" are disabled.
void hidePageButtons(platform::MainFrame& frame);

/// Font size buttons and separators come with a topic, before its page is built; "New" is enabled.
void showTopicButtons(platform::MainFrame& frame);

/// After a topic's page: "New", "Up" and "Down" are visible too.
void showPageButtons(platform::MainFrame& frame);

}  // namespace lirovan::browse
