#pragma once

#include "platform/core/printing.h"

namespace lirovan::test {

class FakePrinting : public platform::Printing {
  public:
    std::optional<platform::PrintTarget> printer, chosen;
    bool offeredSelection = false;
    std::optional<platform::PrintTarget> defaultPrinter() override { return printer; }
    std::optional<platform::PrintTarget> ask(bool hasSelection) override {
        offeredSelection = hasSelection;
        return chosen;
    }
};

}  // namespace lirovan::test
