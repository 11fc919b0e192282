// Finding on the page: the page hands its text out in pieces, what is found in one is marked before the next
// is asked for, so that neither the window nor the page stands still (page_find.js).
#include <QVariantMap>
#include <QWebEngineScript>

#include "platform/ui/content_page.h"
#include "platform/ui/web_view_finding.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

QString placesText(const std::vector<text::TextRange>& hits, qsizetype again) {
    QString places;
    for (const text::TextRange& hit : hits) {
        // It was found at the end of the piece before.
        if (hit.end <= again) continue;
        places += QString::number(hit.begin) + u',' + QString::number(hit.end) + u',';
    }
    return places;
}

}  // namespace

void WebView::askFinding(const QString& expression, std::function<void(const QVariant&)> then) {
    const QPointer self(this);
    page_->runJavaScript(expression, QWebEngineScript::ApplicationWorld,
                         [self, run = findRun_, then = std::move(then)](const QVariant& value) {
                             if (self && self->finding_ && self->findRun_ == run) then(value);
                         });
}

void WebView::findOnPage(const QString& query) {
    if (text::TextFinder(query).isEmpty()) {
        if (finding_) page_->runJavaScript(u"lirovanFind.clear()"_s, QWebEngineScript::ApplicationWorld);
        finding_.reset();
        ++findRun_;
        Q_EMIT foundChanged(0, 0, true);
        return;
    }
    finding_ = std::make_unique<Finding>(query);
    findAgain();
}

void WebView::findAgain() {
    if (!finding_) return;
    *finding_ = Finding(finding_->query);
    ++findRun_;
    page_->runJavaScript(u"lirovanFind.begin()"_s, QWebEngineScript::ApplicationWorld);
    findMore();
}

void WebView::findMore() {
    askFinding(u"lirovanFind.more()"_s, [this](const QVariant& value) {
        const QVariantMap piece = value.toMap();
        if (!piece.isEmpty()) return searchPiece(piece);
        finding_->complete = true;
        Q_EMIT foundChanged(finding_->count, finding_->current + 1, true);
    });
}

void WebView::searchPiece(const QVariantMap& piece) {
    const auto hits = finding_->finder.all(piece.value(u"text"_s).toString());
    const QString places = placesText(hits, piece.value(u"again"_s).toLongLong());
    const int number = finding_->pieces++;
    finding_->count += static_cast<int>(places.count(u',') / 2);
    const bool isLast = piece.value(u"isLast"_s).toBool();
    const auto next = [this, isLast](const QVariant& current) {
        finding_->current = current.toInt();
        finding_->complete = isLast;
        Q_EMIT foundChanged(finding_->count, finding_->current + 1, isLast);
        if (!isLast) findMore();
    };
    if (places.isEmpty() && !isLast) return findMore();
    QString expression = u"lirovanFind.mark(%1,[%2])"_s.arg(number).arg(places);
    if (isLast) expression = u'(' + expression + u",lirovanFind.choose(true))"_s;
    askFinding(expression, next);
}

void WebView::stepFound(int step) {
    if (!finding_ || finding_->count == 0 || finding_->current < 0) return;
    finding_->current = (finding_->current + step + finding_->count) % finding_->count;
    page_->runJavaScript(u"lirovanFind.show(%1)"_s.arg(finding_->current),
                         QWebEngineScript::ApplicationWorld);
    Q_EMIT foundChanged(finding_->count, finding_->current + 1, finding_->complete);
}

}  // namespace lirovan::platform
