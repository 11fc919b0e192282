// The system's printers and its print dialog.
#pragma once

#include "platform/core/printing.h"

namespace lirovan::platform {

class SystemPrinting : public Printing {
  public:
    std::optional<PrintTarget> defaultPrinter() override;
    std::optional<PrintTarget> ask(bool hasSelection) override;
};

}  // namespace lirovan::platform
