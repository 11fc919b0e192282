// The program's own icons: one family of line drawings, drawn anew in the colours of the palette whenever
// they are painted, so that they follow a change of theme, a disabled button, a selected row and the screen's
// scale.
#pragma once

#include <QIcon>
#include <QStringList>
#include <QStringView>

namespace lirovan::platform {

/// The icon of a toolbar button ("tlbtn_Kitap", "cut", "New", "kirmizi", ...) or of a tree node ("vq",
/// "Lirovan", "Ac", "Acik", "Incele", "Bul"; the numbered images "1", a closed book, and "3", a topic). Keys
/// are compared exactly: "New" opens a window, "new" starts a note. A null icon for an unknown key.
QIcon icon(QStringView key);

/// An icon in the colour that it has on a selection, wherever it is shown.
QIcon selectedIcon(const QIcon& icon);

/// All keys that icon() knows, in the order of the table.
QStringList iconKeys();

/// The book motif of windows, splash and about box, in its own colours.
QIcon applicationIcon();

}  // namespace lirovan::platform
