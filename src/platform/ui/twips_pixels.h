// Twips to device-independent pixels and back, by the logical resolution of a widget's screen: 1440 twips are
// one inch, at 96 dots an inch 15 twips are one pixel.
#pragma once

#include <QRect>
#include <QWidget>
#include <cmath>

#include "platform/core/twips.h"

namespace lirovan::platform {

/// Rounded once, half away from zero.
inline int toPixels(Twips length, int logicalDpi) {
    return int(std::lround(length.value * logicalDpi / 1440.0));
}
inline Twips toTwips(int pixels, int logicalDpi) {
    return {pixels * 1440.0 / logicalDpi};
}

inline int toPixelsX(Twips length, const QWidget& widget) {
    return toPixels(length, widget.logicalDpiX());
}
inline int toPixelsY(Twips length, const QWidget& widget) {
    return toPixels(length, widget.logicalDpiY());
}
inline Twips toTwipsX(int pixels, const QWidget& widget) {
    return toTwips(pixels, widget.logicalDpiX());
}
inline Twips toTwipsY(int pixels, const QWidget& widget) {
    return toTwips(pixels, widget.logicalDpiY());
}

inline QRect toPixels(const TwipsRect& rect, const QWidget& widget) {
    return {toPixelsX(rect.left, widget), toPixelsY(rect.top, widget), toPixelsX(rect.width, widget),
            toPixelsY(rect.height, widget)};
}

inline TwipsRect toTwips(const QRect& rect, const QWidget& widget) {
    return {toTwipsX(rect.x(), widget), toTwipsY(rect.y(), widget), toTwipsX(rect.width(), widget),
            toTwipsY(rect.height(), widget)};
}

}  // namespace lirovan::platform
