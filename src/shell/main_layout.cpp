#include "shell/main_layout.h"

#include <algorithm>

namespace lirovan::shell {

Twips browseWidth(Twips mainWidth, WindowState mainState) {
    if (mainState == WindowState::Maximized) return Twips{4815};
    return mainWidth / 3 + Twips{500};
}

TwipsRect firstNormalPlace(Twips screenWidth, Twips screenHeight, Twips top) {
    return {screenWidth / 5, top, screenWidth / 1.5, screenHeight / 1.5};
}

TwipsRect contentPlace(const TwipsRect& browse, Twips mainWidth) {
    return {browse.width, browse.top, mainWidth - (browse.width + ChromeWidth), browse.height};
}

TwipsRect fitted(TwipsRect place, Twips areaWidth, Twips areaHeight) {
    place.width = std::clamp(place.width, Twips{0}, areaWidth);
    place.height = std::clamp(place.height, Twips{0}, areaHeight);
    place.left = std::clamp(place.left, Twips{0}, areaWidth - place.width);
    place.top = std::clamp(place.top, Twips{0}, areaHeight - place.height);
    return place;
}

}  // namespace lirovan::shell
