#include "search/ui/summary_file.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QEventLoop>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QProgressDialog>
#include <QTextDocument>
#include <QTextDocumentWriter>

#include "platform/core/file_writer.h"
#include "search/study/study_summary.h"
#include "search/ui/reading_work.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

constexpr double MarginMm = 20, FootMm = 12;
constexpr int PointsOfText = 11;
constexpr int ProgressSteps = 1000;
// Laying out more takes minutes and gigabytes.
constexpr qint64 MostLaidOut = 20'000;

void paintPages(QPdfWriter& pdf, QTextDocument& document) {
    QPainter painter(&pdf);
    const double dots = pdf.resolution() / 25.4;
    const QRectF sheet(0, 0, pdf.width(), pdf.height());
    const QSizeF page(sheet.width(), sheet.height() - FootMm * dots);
    document.documentLayout()->setPaintDevice(&pdf);
    document.setPageSize(page);
    const int pages = document.pageCount();
    for (int number = 1; number <= pages; ++number) {
        if (number > 1) pdf.newPage();
        const QRectF part(0, (number - 1) * page.height(), page.width(), page.height());
        painter.save();
        painter.translate(0, -part.top());
        document.drawContents(&painter, part);
        painter.restore();
        painter.setFont(document.defaultFont());
        painter.drawText(QRectF(0, page.height(), page.width(), FootMm * dots),
                         Qt::AlignHCenter | Qt::AlignBottom, u"%1 / %2"_s.arg(number).arg(pages));
    }
}

}  // namespace

Result<QByteArray> documentBytes(const QString& html, const QString& title, DocumentFormat format) {
    if (format == DocumentFormat::Html) return html.toUtf8();
    QTextDocument document;
    document.setDefaultFont(QFont(u"serif"_s, PointsOfText));
    document.setHtml(html);
    document.setMetaInformation(QTextDocument::DocumentTitle, title);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (format == DocumentFormat::Odt) {
        QTextDocumentWriter writer(&buffer, "odf");
        if (!writer.write(&document)) return Error{u"Belge ODT olarak yazılamadı."_s};
    } else {
        QPdfWriter pdf(&buffer);
        pdf.setTitle(title);
        pdf.setPageSize(QPageSize(QPageSize::A4));
        pdf.setPageMargins({MarginMm, MarginMm, MarginMm, MarginMm}, QPageLayout::Millimeter);
        paintPages(pdf, document);
    }
    return bytes;
}

DocumentFormat documentFormat(QStringView suffix) {
    const QString folded = text::folded(suffix);
    return folded == u"pdf"   ? DocumentFormat::Pdf
           : folded == u"odt" ? DocumentFormat::Odt
                              : DocumentFormat::Html;
}

namespace {

// A web page of any length goes into the file as it is made. False: stopped, and nothing is left behind.
Result<bool> writeSummary(const data::Library& library, const RunHits& run, int author, const QString& path,
                          DocumentFormat format, browse::BackgroundWork& work) {
    const auto report = [&work](qint64 done, qint64 all) { return work.report(done, all); };
    platform::FileWriter file(path);
    if (const Result<void> opened = file.open(); !opened) return opened.error();
    QByteArray html;
    const auto write = [&](const QByteArray& piece) -> Result<void> {
        if (format == DocumentFormat::Html) return file.write(piece);
        html += piece;
        return {};
    };
    const Result<bool> made = studySummary(library, run, author, write, report);
    if (!made || !*made) return made;
    if (format != DocumentFormat::Html) {
        const auto laidOut = documentBytes(QString::fromUtf8(html), run.run.request.query.trimmed(), format);
        if (!laidOut) return laidOut.error();
        if (const Result<void> written = file.write(*laidOut); !written) return written.error();
    }
    if (work.wasStopped()) return false;
    if (const Result<void> committed = file.commit(); !committed) return committed.error();
    return true;
}

}  // namespace

void saveSummaryOf(const data::Library& library, const std::shared_ptr<const RunHits>& run, int author,
                   platform::Dialogs& dialogs, QWidget* parent) {
    const QString path = dialogs.askSavePath(u"Özeti Kaydet"_s, u"Özet.pdf"_s, SummaryFilter.toString());
    if (path.isEmpty()) return;
    const auto fail = [&](const QString& message) {
        dialogs.show(platform::errorMessage(message, u"Özeti Kaydet"_s));
    };
    const DocumentFormat format = documentFormat(QFileInfo(path).suffix());
    if (format != DocumentFormat::Html && hitsOfSummary(*run, author) > MostLaidOut)
        return fail(u"Bu aramanın özeti bu biçim için çok uzun. Web sayfası (.html) olarak kaydedin."_s);
    QProgressDialog window(u"Özet hazırlanıyor..."_s, u"Durdur"_s, 0, ProgressSteps, parent);
    window.setWindowTitle(u"Özeti Kaydet"_s);
    window.setWindowModality(Qt::WindowModal);
    QEventLoop loop;
    browse::BackgroundWork work;
    QObject::connect(&work, &browse::BackgroundWork::progress, &window, [&](qint64 done, qint64 all) {
        if (!window.wasCanceled())
            window.setValue(static_cast<int>(done * (ProgressSteps - 1) / std::max<qint64>(all, 1)));
    });
    QObject::connect(&window, &QProgressDialog::canceled, &work, [&] { work.stop(); });
    const Result<void> started = startReading<bool>(
        work, library,
        [&work, run, author, path, format](const data::Library& own) {
            return writeSummary(own, *run, author, path, format, work);
        },
        [&](Result<bool>& written) {
            loop.quit();
            if (!written) fail(written.error().message);
        });
    if (!started) return fail(started.error().message);
    loop.exec();
    window.reset();
}

}  // namespace lirovan::search
