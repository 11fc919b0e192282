#include "shell/main_layout.h"

namespace lirovan::shell {

Twips browseWidth(Twips mainWidth, WindowState mainState) {
    if (mainState == WindowState::Maximized) return Twips{4815};
    return mainWidth / 3 + Twips{500};
}

TwipsRect firstNormalPlace(Twips screenWidth, Twips screenHeight, Twips top) {
    return {screenWidth / 5, top, screenWidth / 1.5, screenHeight / 1.5};
}

}  // namespace lirovan::shell
