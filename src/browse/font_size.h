// Larger and smaller type on a shown page, by rewriting its markup.
#pragma once

#include <QString>

#include "platform/core/paths.h"

namespace lirovan::browse {

/// Relative image references of generated pages, print.gif and duaimages, as paths of the application folder:
/// a page that is written back into its view, or copied into another, has no folder of its own.
QString withAbsoluteImages(QString html, const platform::AppFolder& folder);

/// The markup of a page whose type changes from `oldSize` to `newSize` pixels. `html` is in the form of
/// PageView::innerHtml(). The first change of a page inserts a style block behind its title, later ones
/// replace it; the size of Verdana font tags follows. Markup without the expected head stays as it is. No
/// limits: sizes may pass zero.
QString withFontSize(QString html, int oldSize, int newSize);

}  // namespace lirovan::browse
