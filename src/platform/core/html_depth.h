// Elements within elements: readers of HTML go through all that are open at every tag, the toolkit's as well
// as the page engine's, and tens of thousands of them keep it busy for minutes.
#pragma once

#include <QByteArray>
#include <QString>

namespace lirovan::platform {

/// The same text with elements of at most `depth` within one another: tags that lie deeper are left out, and
/// where they would have begun or ended a line with text, there is a <br>.
QString withBoundedDepth(const QString& html, qsizetype depth);
/// For a page in any character set that extends ASCII.
QByteArray withBoundedDepth(const QByteArray& page, qsizetype depth);

}  // namespace lirovan::platform
