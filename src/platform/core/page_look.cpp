#include "platform/core/page_look.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr LookColours Sepia{0xF6ECD8, 0x3B2F22, 0x7A4A12, 0x7A2E12, 0xEADCBF, 0x6B4A2B, 0xCDB995, 0xA0001C};
constexpr LookColours Night{0x16191B, 0xD5D2C8, 0x86C5C9, 0xE3B778, 0x252B2E, 0x184D55, 0x434C50, 0xFFD166};

constexpr std::array<QStringView, 4> ColourNames{u"beyaz", u"sepya", u"gece", u"masaustu"};

// Of the frame of a page and of a summary, in rem: the type size before any larger type.
constexpr std::array<int, 4> Widths{0, 62, 50, 40};
constexpr std::array<double, 3> Spacings{0, 1.8, 2.1};

// The marks of a highlighted page and of a summary.
const QString Mark = u"font[color=\"#000080\" i]>span[style^=\"background-color\" i]"_s;

double light(quint32 channel) {
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(quint32 colour) {
    return 0.2126 * light(colour >> 16 & 0xFF) + 0.7152 * light(colour >> 8 & 0xFF) +
           0.0722 * light(colour & 0xFF);
}

quint32 blackOrWhite(quint32 ground) {
    return contrast(ground, 0x000000) >= contrast(ground, 0xFFFFFF) ? 0x000000 : 0xFFFFFF;
}

// A part of the way from one colour to another.
quint32 between(quint32 from, quint32 to, double part) {
    quint32 result = 0;
    for (const int shift : {16, 8, 0}) {
        const int a = from >> shift & 0xFF, b = to >> shift & 0xFF;
        result |= static_cast<quint32>(std::lround(a + (b - a) * part)) << shift;
    }
    return result;
}

QString css(quint32 colour) {
    return u'#' + u"%1"_s.arg(colour, 6, 16, QChar(u'0'));
}

// Whatever colours the page gives, its text has the look's ink on the look's ground, marks excepted. The
// selectors that do better than the first rule name an id that no page has.
QString colourRules(const LookColours& c, bool dark) {
    QString rules =
        u"html,body{background:GROUND!important}body,body :not(MARK){color:INK!important;"
        "border-color:LINE!important}body :not(MARK,img,svg,svg *){background:none!important}"
        "a:link:not(#_),a:link:not(#_) :not(MARK,MARK *){color:LINK!important}"
        "[bgcolor]:not(#_,body,table,[bgcolor=\"#000000\"]),kbd:not(#_){background:TINT!important}"
        "td[bgcolor=\"#000000\"]:not(#_){background:BAND!important}"
        "td[bgcolor=\"#000000\"]:not(#_) *{color:#ffffff!important}"
        "font[color]:not(#_,[color=\"#000000\" i],[color=\"black\" i],[color=\"#ffffff\" i]),"
        "[style*=\"color:\" i]:not(#_,MARK){color:ACCENT!important}"
        "div[id]:not(#_){background:GROUND!important}[url]:not(#_):hover{background:TINT!important}"
        "MARK:not(#_),MARK:not(#_) *{color:MARKINK!important}"_s;
    if (dark) rules += u"img:not(#_){background:#fff!important;filter:brightness(.85)}"_s;
    rules.replace(u"MARKINK"_s, css(MarkInk)).replace(u"MARK"_s, Mark);
    // "LINK" holds "INK", and goes first.
    const std::pair<QStringView, quint32> values[] = {
        {u"LINK", c.link}, {u"GROUND", c.ground}, {u"INK", c.ink},  {u"LINE", c.line},
        {u"TINT", c.tint}, {u"ACCENT", c.accent}, {u"BAND", c.band}};
    for (const auto& [name, colour] : values) rules.replace(name.toString(), css(colour));
    return rules + u":root{color-scheme:%1}"_s.arg(dark ? u"dark"_s : u"light"_s);
}

template <class Enum>
Enum bounded(int value, Enum last) {
    return static_cast<Enum>(std::clamp(value, 0, static_cast<int>(last)));
}

}  // namespace

double contrast(quint32 one, quint32 other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

LookColours coloursOf(PageColours look, const LookColours& desktop) {
    switch (look) {
        case PageColours::AsWritten:
            return {};
        case PageColours::Sepia:
            return Sepia;
        case PageColours::Night:
            return Night;
        case PageColours::Desktop:
            break;
    }
    const bool dark = luminance(desktop.ground) < 0.18;
    LookColours result = dark ? Night : LookColours();
    result.ground = desktop.ground;
    result.ink = desktop.ink;
    if (contrast(result.ground, result.ink) < LeastContrast) result.ink = blackOrWhite(result.ground);
    result.tint = between(result.ground, result.ink, 0.08);
    result.line = between(result.ground, result.ink, 0.3);
    // The ink of a ground of its own.
    if (contrast(result.tint, result.ink) < LeastContrast) result.tint = result.ground;
    result.link = desktop.link;
    for (quint32* colour : {&result.link, &result.accent})
        if (contrast(result.tint, *colour) < LeastContrast ||
            contrast(result.ground, *colour) < LeastContrast)
            *colour = result.ink;
    return result;
}

QString lookStyle(const PageLook& look, const LookColours& desktop) {
    const LookColours colours = coloursOf(look.colours, desktop);
    QString rules = u":root{--lirovan-outline:%1}"_s.arg(css(colours.outline));
    if (look.colours != PageColours::AsWritten)
        rules += colourRules(colours, luminance(colours.ground) < 0.18);
    if (look.serif)
        rules +=
            u"body,td,font[face=\"Arial\" i],font[face=\"Verdana\" i]{font-family:\"Noto Serif\","
            "Georgia,\"DejaVu Serif\",\"Times New Roman\",serif!important}"_s;
    if (const int width = Widths.at(static_cast<size_t>(look.width)))
        rules +=
            u"body>table[border=\"5\"]{max-width:%1rem;margin-left:auto!important;"
            "margin-right:auto!important}:root{--lirovan-width:%1rem}"_s.arg(width);
    if (const double spacing = Spacings.at(static_cast<size_t>(look.spacing)); spacing > 0)
        rules += u"td[width=\"75%\"]{line-height:%1!important}:root{--lirovan-spacing:%1}"_s.arg(spacing);
    return u"@media screen{"_s + rules + u'}';
}

QString lookText(const PageLook& look) {
    return u"%1 serif=%2 satir=%3 aralik=%4"_s
        .arg(ColourNames.at(static_cast<size_t>(look.colours)).toString())
        .arg(look.serif ? 1 : 0)
        .arg(static_cast<int>(look.width))
        .arg(static_cast<int>(look.spacing));
}

PageLook lookFromText(const QString& text) {
    PageLook look;
    for (const QString& part : text.split(u' ', Qt::SkipEmptyParts)) {
        const auto name = std::ranges::find(ColourNames, QStringView(part));
        if (name != ColourNames.end()) look.colours = static_cast<PageColours>(name - ColourNames.begin());
        const int value = part.section(u'=', 1).toInt();
        if (part.startsWith(u"serif=")) look.serif = value == 1;
        if (part.startsWith(u"satir=")) look.width = bounded(value, LineWidth::Narrow);
        if (part.startsWith(u"aralik=")) look.spacing = bounded(value, LineSpacing::Wider);
    }
    return look;
}

}  // namespace lirovan::platform
