#include "platform/ui/web_view.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QStackedLayout>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineLoadingInfo>
#include <QWebEngineScript>
#include <QWebEngineView>

#include "platform/ui/content_page.h"
#include "platform/ui/page_process.h"
#include "platform/ui/script_text.h"
#include "platform/ui/web_view_finding.h"

namespace lirovan::platform {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

// One line of the scroll bar: a line of page text.
constexpr int LineStep = 20;

// What a page that does not answer is asked once more: it may be done with its work.
constexpr auto SecondQuestion = 100ms;

// What is asked before a page is left must not hold up the next one.
constexpr auto PassingQuestion = 150ms;

// How fast a page is worked through at the least, in bytes a millisecond.
constexpr int LeastSpeed = 5'000;

}  // namespace

WebView::WebView(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), engine_(std::move(engine)), dialogs_(dialogs), number_(engine_->pages().open()) {
    stack_ = new QStackedLayout(this);
    view_ = new QWebEngineView(&engine_->profile(), this);
    stack_->addWidget(view_);
    setFocusProxy(view_);
    view_->installEventFilter(this);
    // What is dropped on a page is the main window's.
    view_->setAcceptDrops(false);
    // Asked for only where the page's script shows no menu of its own.
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view_, &QWidget::customContextMenuRequested, this, &WebView::showContextMenu);

    notice_ = new QWidget(this);
    auto* rows = new QVBoxLayout(notice_);
    noticeText_ = new QLabel(notice_);
    noticeText_->setTextFormat(Qt::PlainText);
    noticeText_->setAlignment(Qt::AlignCenter);
    noticeText_->setWordWrap(true);
    reload_ = new QPushButton(u"Yeniden Yükle"_s, notice_);
    rows->addStretch();
    rows->addWidget(noticeText_);
    rows->addWidget(reload_, 0, Qt::AlignCenter);
    rows->addStretch();
    stack_->addWidget(notice_);
    connect(reload_, &QPushButton::clicked, this, &WebView::loadAgain);
    arrival_.setSingleShot(true);
    connect(&arrival_, &QTimer::timeout, this, &WebView::lookForArrival);
    signs_.setSingleShot(true);
    connect(&signs_, &QTimer::timeout, this, &WebView::lookForSigns);

    makePage();
    connect(this, &WebView::loaded, this, &WebView::findAgain);
    connect(&engine_->style(), &PageStyle::changed, this, &WebView::takeLook);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && (now == view_ || view_->isAncestorOf(now))) Q_EMIT gotFocus();
    });
}

WebView::~WebView() {
    Q_EMIT gone();
    if (isPrinting_)
        leaveToPrinting();
    else
        delete view_;  // with its page, before the engine's profile
    engine_->pages().close(number_);
}

void WebView::setTimeLimits(std::chrono::milliseconds answer, std::chrono::milliseconds load) {
    answerLimit_ = answer;
    loadLimit_ = load;
}

std::chrono::milliseconds WebView::patience() const {
    const GivenPage* page = engine_->pages().of(number_);
    return answerLimit_ + std::chrono::milliseconds(page ? page->bytes.size() / LeastSpeed : 0);
}

void WebView::makePage() {
    ContentPage* old = page_;
    const bool hadFocus = view_->hasFocus() || (view_->focusProxy() && view_->focusProxy()->hasFocus());
    page_ = new ContentPage(engine_, dialogs_, number_, view_);
    view_->setPage(page_);
    delete old;
    if (hadFocus) {
        view_->setFocus();
        // The widget that takes the keys comes with the new process.
        const auto focusAgain = [this] {
            const QWidget* now = QApplication::focusWidget();
            if (!now || now == view_) setFocus();
        };
        connect(page_, &QWebEnginePage::loadFinished, this, focusAgain, Qt::SingleShotConnection);
    }
    processEnded_ = hangs_ = showsLarge_ = false;
    page_->setZoomFactor(zoom_);
    page_->setBackgroundColor(engine_->style().ground());

    connect(page_, &QWebEnginePage::loadingChanged, this, [this](const QWebEngineLoadingInfo& info) {
        if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) loadEnded(false);
        if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus) loadEnded(true);
    });
    connect(page_, &ContentPage::topicWanted, this, &WebView::topicWanted);
    connect(page_, &ContentPage::passageWanted, this, &WebView::passageWanted);
    connect(page_, &ContentPage::leaving, this, [this](const QString& file) {
        // The text that was navigated to stays where the page is the same file.
        if (engine_->access().file(location_) != file) location_ = file;
        if (load_ == Load::Complete) load_ = Load::Idle;
    });
    connect(page_, &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status) {
                if (status == QWebEnginePage::NormalTerminationStatus) return;
                processEnded_ = true;
                load_ = Load::Idle;
                if (loadsAfterEnd_) {
                    QTimer::singleShot(0, this, &WebView::load);
                    return;
                }
                showNotice(u"Sayfa gösterilemiyor: sayfayı gösteren işlem beklenmedik biçimde sona erdi."_s,
                           true);
                Q_EMIT gone();
            });
    connect(page_, &QWebEnginePage::selectionChanged, this, &WebView::selectionChanged);
    connect(page_, &ContentPage::printWanted, this, &WebView::printRequested);
    // The engine does not always tell that a process has started.
    const auto bound = [page = page_.data()] { boundPageMemory(page->renderProcessPid()); };
    connect(page_, &QWebEnginePage::renderProcessPidChanged, page_, bound);
    connect(page_, &QWebEnginePage::loadingChanged, page_, bound);
    connect(page_, &QWebEnginePage::loadProgress, page_, bound);
}

void WebView::showPage() {
    isCovered_ = false;
    stack_->setCurrentWidget(view_);
}

void WebView::showNotice(const QString& text, bool offerReload) {
    isCovered_ = false;
    noticeText_->setText(text);
    reload_->setVisible(offerReload);
    stack_->setCurrentWidget(notice_);
}

void WebView::setFocus() {
    view_->setFocus(Qt::OtherFocusReason);
}

void WebView::setZoom(double factor) {
    zoom_ = factor;
    page_->setZoomFactor(factor);
}

// ---- Asking the page ----

struct WebView::Question {
    QEventLoop loop;
    Outcome outcome = Outcome::Gone;
    std::optional<QVariant> value;
    bool closed = false;  ///< answered, or no longer waited for

    void close(Outcome how) {
        if (closed) return;
        closed = true;
        outcome = how;
        loop.quit();
    }
};

Outcome WebView::waitFor(Question& question, std::chrono::milliseconds limit) {
    if (question.closed) return question.outcome;
    QTimer timer;
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, &timer, [&] {
        // The user is reading, or the page is still to come.
        if (page_->isAsking() || !hasArrived()) return timer.start(limit);
        question.close(Outcome::TimedOut);
    });
    connect(this, &WebView::gone, &question.loop, [&] { question.close(Outcome::Gone); });
    connect(this, &WebView::givenUp, &question.loop, [&] { question.close(Outcome::TimedOut); });
    timer.start(limit);
    question.loop.exec(QEventLoop::ExcludeUserInputEvents);
    question.closed = true;  // also when the program is quitting
    return question.outcome;
}

Outcome WebView::pause(std::chrono::milliseconds time) {
    Question question;
    QTimer::singleShot(time, &question.loop, [&] { question.close(Outcome::Answered); });
    connect(this, &WebView::loaded, &question.loop, [&] { question.close(Outcome::Answered); });
    return waitFor(question, time + answerLimit_);
}

Reply<QVariant> WebView::ask(const QString& expression, Wait wait) {
    if (processEnded_) return {Outcome::Gone, {}};
    const auto question = std::make_shared<Question>();
    const QPointer self(this);
    // The answer is wrapped: what comes back bare is the engine's excuse for a page that went away.
    const QString script =
        u"(function(){try{const v=%1;return v==null?[]:[v]}catch(e){return []}})()"_s.arg(expression);
    page_->runJavaScript(script, QWebEngineScript::ApplicationWorld,
                         [question, self](const QVariant& answer) {
                             if (question->closed) {
                                 if (self) self->hangs_ = false;
                                 return;
                             }
                             if (answer.typeId() != QMetaType::QVariantList)
                                 return question->close(Outcome::Gone);
                             const QVariantList values = answer.toList();
                             if (!values.isEmpty()) question->value = values.first();
                             question->close(Outcome::Answered);
                         });
    // A page that has come is busy laying itself out; it answers after that.
    if (wait == Wait::UntilLoaded)
        connect(this, &WebView::loaded, &question->loop, [&] { question->close(Outcome::Answered); });
    // One command asks several questions, and only the first is waited for in full.
    const QPointer page(page_);
    auto limit = wait == Wait::Passing ? PassingQuestion : wait == Wait::Usual ? answerLimit_ : patience();
    if (hangs_) limit = std::min(limit, SecondQuestion);
    const Outcome outcome = waitFor(*question, limit);
    if (outcome == Outcome::TimedOut && page && wait != Wait::Passing) hangs_ = true;
    return {outcome, std::move(question->value)};
}

namespace {

template <class T>
Reply<T> as(const Reply<QVariant>& reply) {
    if (!reply) return {reply.outcome, {}};
    return {reply.outcome, reply.value->value<T>()};
}

}  // namespace

Reply<QString> WebView::innerHtml() {
    return as<QString>(ask(u"lirovan.innerHtml()"_s, Wait::BySize));
}

Outcome WebView::rewrite(const QString& html) {
    if (load_ == Load::Complete) load_ = Load::Idle;
    const QString text = readableAddresses(html, engine_->access());
    const Outcome written = ask(u"lirovan.rewrite(%1)"_s.arg(scriptText(text)), Wait::BySize).outcome;
    if (written != Outcome::Answered) return written;
    if (const auto file = engine_->access().file(location_)) keepText(*file, text);
    return waitUntilComplete();
}

Reply<bool> WebView::replaceInPlace(const std::vector<Replacement>& changes) {
    if (!isLarge()) return {Outcome::Answered, false};
    QString pairs;
    for (const Replacement& change : changes)
        pairs += u"[%1,%2],"_s.arg(scriptText(change.from), scriptText(change.to));
    // A page that has no time now makes the change later; what is still to come has it once all is there.
    changes_ += u"lirovan.replaceInPlace([%1])"_s.arg(pairs);
    const Outcome told = tell(changes_.last());
    return {told == Outcome::Gone ? told : Outcome::Answered, true};
}

Reply<bool> WebView::hasElement(QStringView name) {
    return as<bool>(ask(u"lirovan.hasElement(%1)"_s.arg(scriptText(name))));
}

Outcome WebView::scrollTo(QStringView name) {
    return tell(u"lirovan.scrollTo(%1)"_s.arg(scriptText(name)));
}

Outcome WebView::focusElement(QStringView name) {
    setFocus();
    return tell(u"lirovan.focusElement(%1)"_s.arg(scriptText(name)));
}

Reply<std::vector<double>> WebView::offsets(QStringView prefix) {
    const Reply<QString> reply = as<QString>(ask(u"lirovan.offsets(%1)"_s.arg(scriptText(prefix))));
    if (!reply) return {reply.outcome, {}};
    std::vector<double> result;
    for (const QStringView number : QStringView(*reply.value).split(u' ', Qt::SkipEmptyParts))
        result.push_back(number.toDouble());
    return {reply.outcome, std::move(result)};
}

Reply<bool> WebView::isInFirstView(QStringView prefix) {
    return as<bool>(ask(u"lirovan.isInFirstView(%1,%2)"_s.arg(scriptText(prefix)).arg(2 * LineStep)));
}

Outcome WebView::setScrollTop(int pixels) {
    return tell(u"lirovan.setScrollTop(%1)"_s.arg(pixels));
}

Reply<double> WebView::scrollTop() {
    return as<double>(ask(u"lirovan.scrollTop()"_s));
}

Outcome WebView::scrollLinesDown(int lines) {
    return tell(u"lirovan.scrollBy(%1)"_s.arg(lines * LineStep));
}

// ---- Places ----

Reply<PagePlace> WebView::place(bool ofSelection) {
    if (hangs_ || load_ == Load::Running || page_->isAsking()) return {Outcome::TimedOut, {}};
    const QString question = ofSelection ? u"lirovanPlaces.ofSelection()"_s : u"lirovanPlaces.atTopEdge()"_s;
    const Reply<QString> reply = as<QString>(ask(question, ofSelection ? Wait::Usual : Wait::Passing));
    if (!reply) return {reply.outcome, {}};
    return {reply.outcome, placeFromJson(reply.value->toUtf8())};
}

Reply<bool> WebView::goTo(const PagePlace& place, bool select) {
    return as<bool>(ask(u"lirovanPlaces.goTo(%1,%2)"_s.arg(QString::fromUtf8(placeJson(place)),
                                                           select ? u"true" : u"false")));
}

// ---- Selection, keys and menu ----

bool WebView::hasSelection() const {
    return page_->hasSelection();
}

QString WebView::selectedText() const {
    return page_->selectedText();
}

Reply<QString> WebView::selectionHtml(bool withMarks) {
    return as<QString>(ask(u"lirovan.selectionHtml(%1)"_s.arg(withMarks ? u"true" : u"false"), Wait::BySize));
}

void WebView::selectAll() {
    page_->triggerAction(QWebEnginePage::SelectAll);
}

bool WebView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::KeyPress) page_->userActed();
    if (watched == view_) {
        // The widget that takes the keys comes and goes with the page's process.
        if (event->type() == QEvent::ChildPolished)
            static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        return false;
    }
    if (zoomsWith(*event)) return true;
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!key || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) return false;
    // The page's own key: as the menu's it would copy from the shared content window.
    event->accept();
    if (event->type() == QEvent::KeyPress) copy();
    return true;
}

void WebView::showContextMenu(const QPoint& place) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"&Kopyala"_s, this, &WebView::copy)->setEnabled(hasSelection());
    menu->addAction(u"&Tümünü Seç"_s, this, &WebView::selectAll);
    menu->addSeparator();
    menu->addAction(u"&Yazdır..."_s, this, &WebView::printRequested);
    Q_EMIT menuOpening(menu);
    menu->popup(view_->mapToGlobal(place));
}

}  // namespace lirovan::platform
