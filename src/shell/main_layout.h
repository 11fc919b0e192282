// Where the windows stand, in twips. The constants leave room for the frame, menu bar, toolbar and status bar
// of the main window as one toolkit draws them; the real room is that of the work area, so the main window
// reports its size as work area plus those constants, and every place is cut to the area.
#pragma once

#include "platform/core/twips.h"

namespace lirovan::shell {

using platform::Twips;
using platform::TwipsRect;

/// Room for the frame, menu bar, toolbar and status bar, and for the side frames.
inline constexpr Twips ChromeHeight{1530};
inline constexpr Twips ChromeWidth{210};
/// Room for the other toolbar buttons beside the spacer: after start-up, and after a resize.
inline constexpr Twips SpacerRoomAtStart{3910};
inline constexpr Twips SpacerRoom{4600};

enum class WindowState { Normal, Minimized, Maximized };

/// Width of the browse window after a resize of the main window.
Twips browseWidth(Twips mainWidth, WindowState mainState);

/// Place of the main window at its first resize in the normal state; its top stays.
TwipsRect firstNormalPlace(Twips screenWidth, Twips screenHeight, Twips top);

/// The shared content window beside the browse window.
TwipsRect contentPlace(const TwipsRect& browse, Twips mainWidth);

/// Moved and then shrunk so that all of it lies inside an area that begins at 0, 0.
TwipsRect fitted(TwipsRect place, Twips areaWidth, Twips areaHeight);

}  // namespace lirovan::shell
