#include "platform/ui/web_view.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
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
#include "platform/ui/script_text.h"

namespace lirovan::platform {

using namespace std::chrono_literals;

namespace {

// One line of the scroll bar: a line of page text.
constexpr int LineStep = 20;

// Between two looks at a page that is loading or being written; the end of loading is not waited out.
constexpr auto LookInterval = 10ms;

}  // namespace

WebView::WebView(std::shared_ptr<WebEngine> engine, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), engine_(std::move(engine)), dialogs_(dialogs) {
    stack_ = new QStackedLayout(this);
    view_ = new QWebEngineView(&engine_->profile(), this);
    stack_->addWidget(view_);
    setFocusProxy(view_);
    view_->installEventFilter(this);
    // Asked for only where the page's script shows no menu of its own.
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view_, &QWidget::customContextMenuRequested, this, &WebView::showContextMenu);

    notice_ = new QWidget(this);
    auto* rows = new QVBoxLayout(notice_);
    noticeText_ = new QLabel(notice_);
    noticeText_->setTextFormat(Qt::PlainText);
    noticeText_->setAlignment(Qt::AlignCenter);
    noticeText_->setWordWrap(true);
    reload_ = new QPushButton(QStringLiteral("Yeniden Yükle"), notice_);
    rows->addStretch();
    rows->addWidget(noticeText_);
    rows->addWidget(reload_, 0, Qt::AlignCenter);
    rows->addStretch();
    stack_->addWidget(notice_);
    connect(reload_, &QPushButton::clicked, this, [this] { navigate(location_); });

    makePage();
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
}

void WebView::setTimeLimits(std::chrono::milliseconds answer, std::chrono::milliseconds load) {
    answerLimit_ = answer;
    loadLimit_ = load;
}

void WebView::makePage() {
    ContentPage* old = page_;
    page_ = new ContentPage(engine_, dialogs_, view_);
    view_->setPage(page_);
    delete old;
    processEnded_ = hangs_ = false;
    page_->setZoomFactor(zoom_);

    connect(page_, &QWebEnginePage::loadingChanged, this, [this](const QWebEngineLoadingInfo& info) {
        if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus) loadEnded(false);
        if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus) loadEnded(true);
    });
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
                showNotice(QStringLiteral(
                               "Sayfa gösterilemiyor: sayfayı gösteren işlem beklenmedik biçimde sona erdi."),
                           true);
                Q_EMIT gone();
            });
    connect(page_, &QWebEnginePage::selectionChanged, this, &WebView::selectionChanged);
    connect(page_, &QWebEnginePage::printRequested, this, &WebView::printRequested);
}

void WebView::loadEnded(bool failed) {
    load_ = failed ? Load::Failed : loadIsAlone_ ? Load::Complete : Load::Idle;
    page_->setZoomFactor(zoom_);
    Q_EMIT loaded();
}

void WebView::showPage() {
    stack_->setCurrentWidget(view_);
}

void WebView::showNotice(const QString& text, bool offerReload) {
    noticeText_->setText(text);
    reload_->setVisible(offerReload);
    stack_->setCurrentWidget(notice_);
}

// ---- Navigation ----

void WebView::navigate(const QString& pathText) {
    if (const QUrl url(pathText); engine_->isInstaller(url)) {
        Q_EMIT installerRequested(url);
        return;
    }
    const auto file = engine_->access().file(pathText);
    if (!file) return;
    location_ = pathText;
    if (!QFileInfo(*file).isFile()) {
        load_ = Load::Failed;
        showNotice(QStringLiteral("Sayfa bulunamadı:\n%1").arg(QDir::toNativeSeparators(*file)), true);
        return;
    }
    // A page that does not answer cannot be left either; it is given up together with its process.
    if (processEnded_ || (hangs_ && !isPrinting_)) makePage();
    showPage();
    // With another load under way its end cannot be told from this one's.
    loadIsAlone_ = load_ != Load::Running && !page_->isLoading();
    load_ = Load::Running;
    page_->runJavaScript(QStringLiteral("lirovan.leave()"), QWebEngineScript::ApplicationWorld);
    page_->setUrl(engine_->access().address(*file));
}

Outcome WebView::waitUntilComplete() {
    const QDeadlineTimer deadline(loadLimit_);
    for (;;) {
        if (load_ == Load::Failed || load_ == Load::Complete) return Outcome::Answered;
        const Reply<QVariant> state = ask(QStringLiteral("lirovan.state()"), loadIsAlone_);
        if (state.outcome != Outcome::Answered) return state.outcome;
        // No value: nothing has ever been loaded, or the answer was not waited for.
        const bool complete = state.value ? state.value->toString() == u"complete" : load_ == Load::Idle;
        if (complete) return Outcome::Answered;
        if (deadline.hasExpired()) return Outcome::TimedOut;
        if (const Outcome paused = pause(LookInterval); paused == Outcome::Gone) return paused;
    }
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
        if (page_->isAsking()) return timer.start(limit);  // the user is reading
        question.close(Outcome::TimedOut);
    });
    connect(this, &WebView::gone, &question.loop, [&] { question.close(Outcome::Gone); });
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

Reply<QVariant> WebView::ask(const QString& expression, bool atMostUntilLoaded) {
    if (processEnded_) return {Outcome::Gone, {}};
    const auto question = std::make_shared<Question>();
    const QPointer self(this);
    // The answer is wrapped: what comes back bare is the engine's excuse for a page that went away.
    const QString script =
        QStringLiteral("(function(){try{const v=%1;return v==null?[]:[v]}catch(e){return []}})()")
            .arg(expression);
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
    if (atMostUntilLoaded)
        connect(this, &WebView::loaded, &question->loop, [&] { question->close(Outcome::Answered); });
    const Outcome outcome = waitFor(*question, answerLimit_);
    if (outcome == Outcome::TimedOut) hangs_ = true;
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
    return as<QString>(ask(QStringLiteral("lirovan.innerHtml()")));
}

Outcome WebView::rewrite(const QString& html) {
    if (load_ == Load::Complete) load_ = Load::Idle;
    const Outcome written = tell(
        QStringLiteral("lirovan.rewrite(%1)").arg(scriptText(readableAddresses(html, engine_->access()))));
    return written == Outcome::Answered ? waitUntilComplete() : written;
}

Reply<bool> WebView::hasElement(QStringView name) {
    return as<bool>(ask(QStringLiteral("lirovan.hasElement(%1)").arg(scriptText(name))));
}

Outcome WebView::focusElement(QStringView name) {
    setFocus();
    return tell(QStringLiteral("lirovan.focusElement(%1)").arg(scriptText(name)));
}

Reply<std::vector<double>> WebView::offsets(QStringView prefix) {
    const Reply<QString> reply =
        as<QString>(ask(QStringLiteral("lirovan.offsets(%1)").arg(scriptText(prefix))));
    if (!reply) return {reply.outcome, {}};
    std::vector<double> result;
    for (const QStringView number : QStringView(*reply.value).split(u' ', Qt::SkipEmptyParts))
        result.push_back(number.toDouble());
    return {reply.outcome, std::move(result)};
}

Reply<bool> WebView::isInFirstView(QStringView prefix) {
    return as<bool>(
        ask(QStringLiteral("lirovan.isInFirstView(%1,%2)").arg(scriptText(prefix)).arg(2 * LineStep)));
}

Outcome WebView::setScrollTop(int pixels) {
    return tell(QStringLiteral("lirovan.setScrollTop(%1)").arg(pixels));
}

Reply<double> WebView::scrollTop() {
    return as<double>(ask(QStringLiteral("lirovan.scrollTop()")));
}

Outcome WebView::scrollLinesDown(int lines) {
    return tell(QStringLiteral("lirovan.scrollBy(%1)").arg(lines * LineStep));
}

// ---- Selection, keys and menu ----

bool WebView::hasSelection() const {
    return page_->hasSelection();
}

QString WebView::selectedText() const {
    return page_->selectedText();
}

Reply<QString> WebView::selectionHtml() {
    return as<QString>(ask(QStringLiteral("lirovan.selectionHtml()")));
}

void WebView::selectAll() {
    page_->triggerAction(QWebEnginePage::SelectAll);
}

bool WebView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_) {
        // The widget that takes the keys comes and goes with the page's process.
        if (event->type() == QEvent::ChildPolished)
            static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        return false;
    }
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
    menu->addAction(QStringLiteral("&Kopyala"), this, &WebView::copy)->setEnabled(hasSelection());
    menu->addAction(QStringLiteral("&Tümünü Seç"), this, &WebView::selectAll);
    menu->addSeparator();
    menu->addAction(QStringLiteral("&Yazdır..."), this, &WebView::printRequested);
    Q_EMIT menuOpening(menu);
    menu->popup(view_->mapToGlobal(place));
}

}  // namespace lirovan::platform
