// Larger and smaller type on a shown page, by rewriting its markup.
#pragma once

#include <QString>

#include "platform/core/page_view.h"
#include "platform/core/paths.h"

namespace lirovan::browse {

/// Relative image references of generated pages, print.gif and duaimages, as paths of the application folder:
/// a page that is written back into its view, or copied into another, has no folder of its own.
QString withAbsoluteImages(QString html, const platform::AppFolder& folder);

/// What changes in a page whose type goes from `oldSize` to `newSize` pixels. The first change of a page
/// inserts a style block behind its title, later ones replace it; the size of Verdana font tags follows.
/// Markup without the expected head stays as it is. No limits: sizes may pass zero.
std::vector<platform::Replacement> fontSizeChanges(int oldSize, int newSize);

/// The markup of such a page. `html` is in the form of PageView::innerHtml().
QString withFontSize(QString html, int oldSize, int newSize);

}  // namespace lirovan::browse
