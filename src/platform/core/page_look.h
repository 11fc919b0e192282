// How pages look in the view: colours, type, line width, line spacing. A look is a style of the view: the
// page itself, what is copied and what is printed stay as they are written.
#pragma once

#include <QString>
#include <QtGlobal>
#include <array>

namespace lirovan::platform {

enum class PageColours {
    AsWritten,  ///< "Beyaz"
    Sepia,
    Night,
    Desktop  ///< those of the desktop's own windows
};

enum class LineWidth { AsWritten, Wide, Medium, Narrow };
enum class LineSpacing { AsWritten, Wide, Wider };

struct PageLook {
    PageColours colours = PageColours::AsWritten;
    bool serif = false;
    LineWidth width = LineWidth::AsWritten;
    LineSpacing spacing = LineSpacing::AsWritten;

    friend bool operator==(const PageLook&, const PageLook&) = default;
};

/// Colours as 0xRRGGBB.
struct LookColours {
    quint32 ground = 0xFFFFFF;
    quint32 ink = 0x000000;
    quint32 link = 0x1F6F78;
    quint32 accent = 0x000080;  ///< what the page sets off by a colour of its own
    quint32 tint = 0xF0F0F0;    ///< ground of what the page sets off by a ground of its own
    quint32 band = 0x184D55;    ///< ground of the page's header, which has white text
    quint32 line = 0xB9C4C4;
    quint32 outline = 0xB00020;  ///< around the current hit
};

/// Text of a mark in every look; the marks keep their own colours under it.
inline constexpr quint32 MarkInk = 0x000080;
/// Least contrast of text and ground, as the accessibility guidelines reckon it.
inline constexpr double LeastContrast = 4.5;

/// From 1 (equal) to 21 (black on white).
double contrast(quint32 one, quint32 other);

/// The colours of a look. `desktop`: ground, ink and link of the desktop's windows; where they are too near
/// to each other, ink and link give way.
LookColours coloursOf(PageColours look, const LookColours& desktop);

/// The style sheet of a look, for every page. Marks keep their colours.
QString lookStyle(const PageLook& look, const LookColours& desktop);

/// A look in one line, for storing: "gece serif=1 satir=2 aralik=0", and back. What is not understood is as
/// it is written.
QString lookText(const PageLook& look);
PageLook lookFromText(const QString& text);

}  // namespace lirovan::platform
