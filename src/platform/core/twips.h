// Window geometry is computed in twips, 1/1440 inch. The computing is free of widgets; platform/ui turns the
// results into pixels of the screen at hand.
#pragma once

#include <compare>

namespace lirovan::platform {

/// A length in twips. Floating point: divisions are exact and rounded once, when they become pixels.
struct Twips {
    double value = 0;

    friend constexpr Twips operator+(Twips a, Twips b) { return {a.value + b.value}; }
    friend constexpr Twips operator-(Twips a, Twips b) { return {a.value - b.value}; }
    friend constexpr Twips operator*(Twips a, double factor) { return {a.value * factor}; }
    friend constexpr Twips operator/(Twips a, double divisor) { return {a.value / divisor}; }
    friend constexpr auto operator<=>(Twips a, Twips b) = default;
};

constexpr Twips operator""_tw(unsigned long long value) {
    return {static_cast<double>(value)};
}

/// Place and size of a child window inside the main window's work area, or of a window on the screen.
struct TwipsRect {
    Twips left, top, width, height;
    friend constexpr bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

}  // namespace lirovan::platform
