#include "notes/ui/note_printing.h"

#include <QPrinter>

#include "platform/ui/rtf_document.h"
#include "platform/ui/system_printing.h"

namespace lirovan::notes {

bool printNote(const NoteBox& box, const QString& title, const platform::PrintTarget& target) {
    QTextDocument sheet;
    sheet.setDefaultFont(box.font());
    sheet.setMetaInformation(QTextDocument::DocumentTitle, title);
    const bool selection = target.range == platform::PrintRange::Selection && box.hasSelection();
    platform::rtf::fill(sheet, selection ? box.selection() : box.document());
    if (!target.pdfPath.isEmpty()) {
        QPrinter pdf(QPrinter::HighResolution);
        pdf.setOutputFormat(QPrinter::PdfFormat);
        pdf.setOutputFileName(target.pdfPath);
        sheet.print(&pdf);
        return platform::isPrinted(pdf);
    }
    if (!target.printer || !target.printer->isValid()) return false;
    sheet.print(target.printer.get());
    return platform::isPrinted(*target.printer);
}

}  // namespace lirovan::notes
