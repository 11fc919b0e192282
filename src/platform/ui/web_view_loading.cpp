// The page view's way from one page to the next.
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

#include "platform/core/html_depth.h"
#include "platform/ui/content_page.h"
#include "platform/ui/page_process.h"
#include "platform/ui/script_text.h"
#include "platform/ui/web_view.h"

namespace lirovan::platform {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// The page before has to give a sign within the first time, and to let go within the second. What is left of
// two seconds is for a new process.
constexpr auto LeaveLimit = 400ms, ArrivalLimit = 1000ms;

// A page that has come and by then has no time for a question, which may take this long, is covered by a
// notice.
constexpr auto SignsLimit = 1400ms, SignLimit = 300ms;

// The engine's own tree is no deeper than 512.
constexpr qsizetype MostPageDepth = 500;

// Between two looks at a page that is loading or being written; the end of loading is not waited out.
constexpr auto LookInterval = 10ms;

// Pages below it are laid out, and left, within a second.
constexpr qsizetype LargePage = 2'000'000;

const QString LargePageScript = u"large_page"_s;

}  // namespace

void WebView::navigate(const QString& pathText) {
    if (const QUrl url(pathText); engine_->isInstaller(url)) {
        Q_EMIT installerRequested(url);
        return;
    }
    const auto file = engine_->access().file(pathText);
    if (!file) return;
    location_ = pathText;
    QFile content(*file);
    if (engine_->access().contentOf(*file).isEmpty()) {
        load_ = Load::Failed;
        showNotice(u"Sayfa bulunamadı:\n%1"_s.arg(QDir::toNativeSeparators(*file)), true);
        return;
    }
    if (engine_->access().isPageFile(*file) && content.open(QIODevice::ReadOnly))
        give({*file, content.readAll(), engine_->access().contentType(*file)});
    load();
}

void WebView::navigate(const QString& pathText, const QByteArray& page) {
    const auto file = engine_->access().file(pathText);
    if (!file) return;
    location_ = pathText;
    give({*file, page, engine_->access().contentType(*file)});
    load();
}

void WebView::navigateToText(const QString& pathText, const QString& html) {
    const auto file = engine_->access().file(pathText);
    if (!file) return;
    location_ = pathText;
    keepText(*file, readableAddresses(html, engine_->access()));
    load();
}

void WebView::showSameAs(const WebView& other) {
    const GivenPage* page = other.engine_->pages().of(other.number_);
    if (!page) return navigate(other.location_);
    location_ = other.location_;
    engine_->pages().give(number_, GivenPage(*page));
    changes_ = other.changes_;
    load();
}

void WebView::keepText(const QString& file, const QString& html) {
    give({file, html.toUtf8(), "text/html; charset=utf-8"});
}

void WebView::give(GivenPage page) {
    changes_.clear();
    page.bytes = withBoundedDepth(page.bytes, MostPageDepth);
    engine_->pages().give(number_, std::move(page));
}

bool WebView::isLarge() const {
    const GivenPage* given = engine_->pages().of(number_);
    return given && given->bytes.size() > LargePage && engine_->access().file(location_) == given->file;
}

void WebView::prepareForSize() {
    QWebEngineScriptCollection& scripts = page_->scripts();
    const auto inserted = scripts.find(LargePageScript);
    if (isLarge() && inserted.isEmpty())
        scripts.insert(WebEngine::pageScript(LargePageScript));
    else if (!isLarge())
        for (const QWebEngineScript& script : inserted) scripts.remove(script);
    showsLarge_ = isLarge();
}

QUrl WebView::address() const {
    const QString file = engine_->access().file(location_).value_or(QString());
    const QUrl plain = engine_->access().address(file);
    const GivenPage* given = engine_->pages().of(number_);
    return given && given->file == file ? GivenPages::addressOf(number_, plain) : plain;
}

void WebView::loadAgain() {
    const GivenPage* given = engine_->pages().of(number_);
    if (given && engine_->access().file(location_) == given->file)
        load();
    else
        navigate(location_);
}

void WebView::load() {
    loadsAfterEnd_ = false;
    // A page that does not answer cannot be left either; it is given up together with its process.
    if (processEnded_)
        makePage();
    else if (hangs_ || showsLarge_)
        return giveUp();
    showPage();
    // With another load under way its end cannot be told from this one's.
    loadIsAlone_ = load_ != Load::Running && !page_->isLoading();
    load_ = Load::Running;
    prepareForSize();
    page_->expectNext();
    // There is nothing to let go of in a process that is only starting.
    if (page_->hasShown())
        arrival_.start(LeaveLimit);
    else
        arrival_.stop();
    const QPointer self(this);
    const QPointer page(page_);
    page_->runJavaScript(u"lirovan.leave()"_s, QWebEngineScript::ApplicationWorld,
                         [self, page](const QVariant&) {
                             if (self && page && page == self->page_ && self->arrival_.isActive())
                                 self->arrival_.start(ArrivalLimit);
                         });
    page_->setUrl(address());
    signs_.start(SignsLimit);
}

bool WebView::hasArrived() const {
    return load_ != Load::Running || processEnded_ || page_->hasArrived();
}

void WebView::lookForArrival() {
    if (!hasArrived() && !page_->isAsking()) giveUp();
}

void WebView::lookForSigns() {
    if (load_ != Load::Running || processEnded_) return;
    if (!hasArrived() || page_->isAsking()) return signs_.start(SignLimit);
    const auto answered = std::make_shared<bool>(false);
    const QPointer self(this);
    const QPointer page(page_);
    page_->runJavaScript(u"1"_s, QWebEngineScript::ApplicationWorld,
                         [self, page, answered](const QVariant& answer) {
                             *answered = true;
                             // A page that goes answers, too, with nothing.
                             if (!answer.isValid() || !self || !page || page != self->page_) return;
                             // A large page has the changes before all of it has come.
                             self->makeChanges();
                             self->hangs_ = false;
                             if (self->isCovered_) self->showPage();
                         });
    QTimer::singleShot(SignLimit, this, [this, page, answered] {
        if (*answered || page != page_ || load_ != Load::Running || processEnded_ || page_->isAsking())
            return;
        showNotice(
            u"Bu sayfanın hazırlanması uzun sürüyor.\n"
            "Beklemeden başka bir konuya geçebilirsiniz."_s);
        isCovered_ = hangs_ = true;
    });
}

void WebView::giveUp() {
    Q_EMIT givenUp();
    load_ = Load::Running;
    if (isPrinting_) {
        // The engine ends the program when a page goes in the middle of being printed, but not when its
        // process does.
        loadsAfterEnd_ = true;
        return endPageProcess(page_->renderProcessPid());
    }
    makePage();
    load();
}

void WebView::loadEnded(bool failed) {
    load_ = failed ? Load::Failed : loadIsAlone_ ? Load::Complete : Load::Idle;
    page_->setZoomFactor(zoom_);
    if (isCovered_) showPage();
    makeChanges();
    Q_EMIT loaded();
}

void WebView::makeChanges() {
    if (engine_->fileAt(page_->url()) != engine_->access().file(location_)) return;
    for (const QString& change : changes_) page_->runJavaScript(change, QWebEngineScript::ApplicationWorld);
}

Outcome WebView::waitUntilComplete() {
    const QDeadlineTimer whole(loadLimit_);
    QDeadlineTimer here(QDeadlineTimer::Forever);
    for (;;) {
        if (load_ == Load::Failed || load_ == Load::Complete) return Outcome::Answered;
        if (here.isForever() && hasArrived()) here = QDeadlineTimer(patience());
        const Reply<QVariant> state =
            ask(u"lirovan.state()"_s, loadIsAlone_ ? Wait::UntilLoaded : Wait::BySize);
        // No answer, and yet it goes on: the page was given up for one that is still to come.
        const bool replaced = state.outcome == Outcome::TimedOut && !hangs_;
        if (state.outcome != Outcome::Answered && !replaced) return state.outcome;
        // No value: nothing has ever been loaded, or the answer was not waited for.
        const bool complete = state.value ? state.value->toString() == u"complete" : load_ == Load::Idle;
        if (complete) return Outcome::Answered;
        if (here.hasExpired() || whole.hasExpired()) return Outcome::TimedOut;
        if (const Outcome paused = pause(LookInterval); paused == Outcome::Gone) return paused;
    }
}

}  // namespace lirovan::platform
