// Twips and the logical pixels of the windowing toolkit. A logical pixel is 1/96 inch at every scale of the
// screen, so the factor is fixed; the toolkit multiplies by the screen's scale.
#pragma once

#include <QtGlobal>

#include "platform/core/twips.h"

namespace lirovan::platform {

inline constexpr double TwipsPerPixel = 15;

inline int toPixels(Twips length) {
    return qRound(length.value / TwipsPerPixel);
}

constexpr Twips toTwips(int pixels) {
    return {pixels * TwipsPerPixel};
}

}  // namespace lirovan::platform
