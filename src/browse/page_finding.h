// What the strip "Sayfada Bul" says.
#pragma once

#include <QString>

namespace lirovan::browse {

/// «3 / 17»; «3 / 17…» while the page is still looked through; «Bulunamadı». `current`: from 1, 0 none yet.
QString foundText(int count, int current, bool complete);

/// What the strip looks for when it opens over a selection: a short one, on one line; else what it looked for
/// before.
QString queryAtOpening(const QString& selection, const QString& before);

}  // namespace lirovan::browse
