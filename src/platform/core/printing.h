// Choosing a printer. A port: the real one asks the system and shows its dialog, a test answers at once. What
// is printed is the page view's matter (PageView::print).
#pragma once

#include <QString>
#include <memory>
#include <optional>

class QPrinter;

namespace lirovan::platform {

enum class PrintRange { Page, Selection };

/// Where to print and what. A PDF file where `pdfPath` is set, else `printer`.
struct PrintTarget {
    std::shared_ptr<QPrinter> printer;
    QString pdfPath;
    PrintRange range = PrintRange::Page;
};

class Printing {
  public:
    virtual ~Printing() = default;
    /// The system's printer, for printing without a dialog; nothing where there is none.
    virtual std::optional<PrintTarget> defaultPrinter() = 0;
    /// The print dialog, printing to a PDF file included; it offers printing the selection where
    /// `hasSelection`. Nothing when it was cancelled.
    virtual std::optional<PrintTarget> ask(bool hasSelection) = 0;
};

}  // namespace lirovan::platform
