// Where the browse window and the content windows stand inside the main window, in twips. Constants are the
// room that the main window's frame, menu bar, toolbar and status bar take.
#pragma once

#include "platform/core/twips.h"

namespace lirovan::browse {

inline constexpr platform::Twips ChromeHeight{1530}, ChromeWidth{210};

/// frm_Arama when it is loaded; its height is set by its first resize.
platform::TwipsRect browsePlaceAtLoad(platform::TwipsRect now, platform::Twips mainWidth);

/// frm_Arama when it or the main window was resized: in the corner, as high as there is room.
platform::TwipsRect browsePlace(platform::TwipsRect now, platform::Twips mainHeight);

/// frm_Icerik when it is loaded, beside the browse window or, where that is minimized, in its place.
platform::TwipsRect contentPlaceAtLoad(const platform::TwipsRect& browse, bool browseMinimized,
                                       platform::Twips mainWidth, platform::Twips mainHeight);

/// frm_Icerik after the browse window was resized.
platform::TwipsRect contentPlaceBeside(const platform::TwipsRect& browse, platform::Twips mainWidth);

/// frm_IcerikN when it is loaded.
platform::TwipsRect extraPlaceAtLoad(const platform::TwipsRect& browse, bool browseMinimized,
                                     platform::Twips mainWidth, platform::Twips mainHeight);

}  // namespace lirovan::browse
