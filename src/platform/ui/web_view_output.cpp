// The page view's ways out: clipboard and printer.
#include <QEventLoop>
#include <QPageLayout>
#include <QPointer>
#include <QPrinter>
#include <QTimer>
#include <QWebEngineView>

#include "platform/ui/clipboard.h"
#include "platform/ui/content_page.h"
#include "platform/ui/rtf_document.h"
#include "platform/ui/web_view.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

QString selectionPage(const QString& html) {
    return u"<HTML><HEAD><TITLE></TITLE></HEAD><BODY>%1</BODY></HTML>"_s.arg(html);
}

}  // namespace

void WebView::copy() {
    if (!hasSelection()) return;
    FormattedText text;
    text.plain = selectedText();
    // A page that does not answer still gives its plain text.
    if (const Reply<QString> html = selectionHtml()) {
        text.html = selectionPage(*html.value);
        text.rtf = rtf::htmlToRtf(text.html);
    }
    putOnClipboard(text);
}

void WebView::copyWithSource(const QString& source, const QString& address) {
    if (!hasSelection()) return;
    FormattedText text;
    text.plain = selectedText() + u'\n' + source + u'\n';
    if (const Reply<QString> html = selectionHtml(false)) {
        text.html = selectionPage(u"%1<P><A href=\"%2\">%3</A></P>"_s.arg(
            *html.value, address.toHtmlEscaped(), source.toHtmlEscaped()));
        text.rtf = rtf::htmlToRtf(text.html);
    }
    putOnClipboard(text);
}

void WebView::print(const PrintTarget& target, std::function<void(bool)> finished) {
    if (target.range == PrintRange::Selection && hasSelection())
        printSelection(target, std::move(finished));
    else
        printWhole(target, std::move(finished));
}

void WebView::printSelection(const PrintTarget& target, std::function<void(bool)> finished) {
    const QPointer self(this);
    const Reply<QString> html = selectionHtml();
    if (!self) return;
    if (!html) return finished(false);
    // The selection becomes a page of its own in the same place, so that its pictures are found.
    auto* sheet = new WebView(engine_, dialogs_);
    sheet->resize(size());
    connect(this, &WebView::gone, sheet, &QObject::deleteLater);
    const QPointer sheetAlive(sheet);
    sheet->navigateToText(location_, selectionPage(*html.value));
    if (sheet->waitUntilComplete() != Outcome::Answered || !sheetAlive) {
        if (sheetAlive) sheet->deleteLater();
        if (self) finished(false);
        return;
    }
    sheet->printWhole(target, [self, sheet, finished = std::move(finished)](bool printed) {
        sheet->deleteLater();
        if (self) finished(printed);
    });
}

void WebView::printWhole(const PrintTarget& target, std::function<void(bool)> finished) {
    // The engine refuses a page that is being printed.
    if (isPrinting_)
        return waitingPrints_.push_back([this, target, finished = std::move(finished)]() mutable {
            printWhole(target, std::move(finished));
        });
    if (processEnded_ || (!target.printer && target.pdfPath.isEmpty())) return finished(false);
    QString pdf = target.pdfPath;
    QPageLayout layout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                       QPageLayout::Millimeter);
    if (target.printer) {
        layout = target.printer->pageLayout();
        if (target.printer->outputFormat() == QPrinter::PdfFormat) pdf = target.printer->outputFileName();
    }
    // Each run has its own receiver, which goes with the view. The first end is the only one told.
    auto* run = new QObject(this);
    const auto done = std::make_shared<bool>(false);
    const auto end = [this, run, done, finished = std::move(finished),
                      printer = target.printer](bool printed) {
        if (std::exchange(*done, true)) return;
        isPrinting_ = false;
        run->deleteLater();
        if (page_) page_->setBackgroundColor(engine_->style().ground());
        // Not before the engine is done with this one.
        for (auto& waiting : std::exchange(waitingPrints_, {}))
            QTimer::singleShot(0, this, std::move(waiting));
        finished(printed);
    };
    isPrinting_ = true;
    // Of the look's ground the style sheet knows that paper is white; this one is drawn on everything.
    page_->setBackgroundColor(Qt::white);
    if (pdf.isEmpty()) {
        connect(view_, &QWebEngineView::printFinished, run, [end](bool printed) { end(printed); });
        view_->print(target.printer.get());
    } else {
        connect(page_, &QWebEnginePage::pdfPrintingFinished, run,
                [end, pdf](const QString& path, bool printed) {
                    if (path == pdf) end(printed);
                });
        page_->printToPdf(pdf, layout);
    }
    connect(page_, &QWebEnginePage::renderProcessTerminated, run, [end] { end(false); });
}

void WebView::leaveToPrinting() {
    // The engine ends the program when a page goes in the middle of being printed.
    view_->setParent(nullptr);
    view_->disconnect(this);
    page_->disconnect(this);
    const auto end = [view = view_, engine = engine_] { view->deleteLater(); };
    connect(view_, &QWebEngineView::printFinished, view_, end);
    connect(page_, &QWebEnginePage::pdfPrintingFinished, view_, end);
    connect(page_, &QWebEnginePage::renderProcessTerminated, view_, end);
}

}  // namespace lirovan::platform
