// The main window's own geometry, in twips; that of the windows in it is in browse/window_places.h.
#pragma once

#include "platform/core/twips.h"

namespace lirovan::shell {

using platform::Twips;
using platform::TwipsRect;

/// Room for the other toolbar buttons beside the spacer after a resize.
inline constexpr Twips SpacerRoom{4600};

enum class WindowState { Normal, Minimized, Maximized };

/// Width of the browse window after a resize of the main window.
Twips browseWidth(Twips mainWidth, WindowState mainState);

/// Place of the main window at its first resize in the normal state; its top stays.
TwipsRect firstNormalPlace(Twips screenWidth, Twips screenHeight, Twips top);

}  // namespace lirovan::shell
