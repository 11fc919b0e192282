// How the program looks beside the desktop's own settings.
#pragma once

class QApplication;

namespace lirovan::shell {

/// Icon, the toolkit's texts in Turkish and, where the desktop brings no colours of its own, the accent of
/// the program's drawings.
void dress(QApplication& application);

}  // namespace lirovan::shell
