#include "browse/window_places.h"

namespace lirovan::browse {

using platform::Twips;
using platform::TwipsRect;

TwipsRect browsePlaceAtLoad(TwipsRect now, Twips mainWidth) {
    return {Twips{0}, Twips{0}, mainWidth / 2.5, now.height};
}

TwipsRect browsePlace(TwipsRect now, Twips mainHeight) {
    return {Twips{0}, Twips{0}, now.width, mainHeight - ChromeHeight};
}

TwipsRect contentPlaceAtLoad(const TwipsRect& browse, bool browseMinimized, Twips mainWidth,
                             Twips mainHeight) {
    const Twips width = mainWidth - (browse.width + ChromeWidth);
    const Twips height = mainHeight - ChromeHeight;
    if (browseMinimized) return {browse.width + Twips{10}, Twips{0}, width, height};
    return {browse.width, browse.top, width, height};
}

TwipsRect contentPlaceBeside(const TwipsRect& browse, Twips mainWidth) {
    return {browse.width, browse.top, mainWidth - (browse.width + ChromeWidth), browse.height};
}

TwipsRect extraPlaceAtLoad(const TwipsRect& browse, bool browseMinimized, Twips mainWidth, Twips mainHeight) {
    const Twips height = mainHeight - ChromeHeight;
    if (browseMinimized) return {mainWidth / 2.53, Twips{0}, mainWidth / 1.69, height};
    return {browse.width, browse.top, mainWidth - browse.width - Twips{170}, height};
}

}  // namespace lirovan::browse
