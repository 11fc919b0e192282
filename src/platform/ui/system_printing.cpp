#include "platform/ui/system_printing.h"

#include <QApplication>
#include <QFile>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

/// A printer whose paper keeps a margin around the text.
std::shared_ptr<QPrinter> withMargins(std::shared_ptr<QPrinter> printer) {
    printer->setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
    return printer;
}

// The toolkit's dialog shows its choice of pages whatever its options say: all but these in that group goes.
void hidePageRange(const QPrintDialog& dialog) {
    const auto* range = dialog.findChild<QWidget*>(u"gbPrintRange"_s);
    if (!range) return;
    for (auto* part : range->findChildren<QWidget*>())
        if (part->objectName() != u"printAll" && part->objectName() != u"printSelection") part->hide();
}

}  // namespace

std::optional<PrintTarget> SystemPrinting::defaultPrinter() {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return std::nullopt;
    PrintTarget target;
    target.printer = withMargins(std::make_shared<QPrinter>(info, QPrinter::HighResolution));
    if (!target.printer->isValid()) return std::nullopt;
    return target;
}

std::optional<PrintTarget> SystemPrinting::ask(bool hasSelection) {
    PrintTarget target;
    target.printer = withMargins(std::make_shared<QPrinter>(QPrinter::HighResolution));
    if (hasSelection) target.printer->setPrintRange(QPrinter::Selection);
    QPrintDialog dialog(target.printer.get(), QApplication::activeWindow());
    dialog.setObjectName(u"printDialog"_s);
    dialog.setWindowTitle(u"Yazdır"_s);
    // A page of the reader is one stream: page numbers are known only when it has been printed.
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
    dialog.setOption(QAbstractPrintDialog::PrintSelection, hasSelection);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
    hidePageRange(dialog);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    if (target.printer->printRange() == QPrinter::Selection) target.range = PrintRange::Selection;
    return target;
}

bool isPrinted(const QPrinter& printer) {
    if (printer.outputFileName().isEmpty()) return printer.printerState() != QPrinter::Error;
    // The toolkit does not tell of a full disk; a PDF file that is whole ends with this mark.
    const QByteArray mark = "%%EOF\n";
    QFile file(printer.outputFileName());
    return file.open(QIODevice::ReadOnly) && file.seek(std::max<qint64>(0, file.size() - mark.size())) &&
           file.readAll() == mark;
}

}  // namespace lirovan::platform
