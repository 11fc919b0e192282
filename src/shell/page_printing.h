// Printing a shown page, or its selection.
#pragma once

#include "platform/core/dialogs.h"
#include "platform/core/page_view.h"
#include "platform/core/printing.h"

namespace lirovan::shell {

/// Through the print dialog, which offers the selection where there is one. A printer that was chosen and
/// then fails is reported; a cancelled dialog ends silently. `dialogs` outlives the printing.
void printWithDialog(platform::PageView& page, platform::Printing& printing, platform::Dialogs& dialogs);

/// To the system's printer, the selection where there is one. Without a printer, through the print dialog: it
/// can print to a file.
void printDirectly(platform::PageView& page, platform::Printing& printing, platform::Dialogs& dialogs);

}  // namespace lirovan::shell
