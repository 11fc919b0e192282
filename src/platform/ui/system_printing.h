// The system's printers and its print dialog.
#pragma once

#include "platform/core/printing.h"

class QPrinter;

namespace lirovan::platform {

class SystemPrinting : public Printing {
  public:
    std::optional<PrintTarget> defaultPrinter() override;
    std::optional<PrintTarget> ask(bool hasSelection) override;
};

/// Whether what was sent to the printer or into its file arrived there, as far as it can be told.
bool isPrinted(const QPrinter& printer);

}  // namespace lirovan::platform
