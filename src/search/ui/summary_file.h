// A summary document as a file.
#pragma once

#include <QString>
#include <memory>

#include "platform/core/dialogs.h"
#include "platform/core/result.h"
#include "search/study/hit_list.h"

class QWidget;

namespace lirovan::search {

inline constexpr QStringView SummaryFilter = u"PDF (*.pdf);;Web sayfası (*.html);;Metin belgesi, ODT (*.odt)";

/// Asks for a file, makes the summary of a run with a window that shows how far it is and can stop it, and
/// writes it. `author` as in studySummary().
void saveSummaryOf(const data::Library& library, const std::shared_ptr<const RunHits>& run, int author,
                   platform::Dialogs& dialogs, QWidget* parent);

enum class DocumentFormat { Html, Pdf, Odt };
/// "pdf", "odt"; anything else is HTML.
DocumentFormat documentFormat(QStringView suffix);
/// The HTML of studySummary() as a file's bytes; PDF has page numbers. From any thread.
platform::Result<QByteArray> documentBytes(const QString& html, const QString& title, DocumentFormat format);

}  // namespace lirovan::search
