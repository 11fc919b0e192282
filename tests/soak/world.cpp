#include "soak/world.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>

#include "shell/application_folder.h"
#include "soak/user_input.h"
#include "support/places.h"
#include "tools/kitaplik/build_library.h"

namespace lirovan::soak {

using namespace Qt::StringLiterals;

namespace {

constexpr int BeatMs = 5;
constexpr int AttentionMs = 15;
// A dialog that is still open after so many looks is left with Esc.
constexpr int PatienceLooks = 25;
// Every other action is looked at a while before the next.
constexpr int LookMs = 50;
constexpr int LayoutMs = 1000;
constexpr int RestLimitMs = 60'000;

/// How many ms this thread has waited for a processor so far.
qint64 queuedMs() {
    QFile schedule(u"/proc/thread-self/schedstat"_s);
    if (!schedule.open(QIODevice::ReadOnly)) return 0;
    return schedule.readAll().split(' ').value(1).toLongLong() / 1'000'000;
}

QString nameOf(const QWidget* widget) {
    return widget ? QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName()
                  : u"none"_s;
}

}  // namespace

World::World(const QString& library) {
    const QString samples = test::projectFile(u"samples"_s);
    const QString file = folder_.filePath(u"kitaplar.vq"_s);
    filled_ = shell::fillFolder(samples + u"/OKU"_s, folder_.filePath(u"OKU"_s)) &&
              (library.isEmpty() ? bool(tools::buildLibrary(samples + u"/kitaplik"_s, file))
                                 : QFile::copy(library, file));
    engine_ = platform::WebEngine::create(platform::AppFolder(folder_.path()), QUrl());
    connect(&attention_, &QTimer::timeout, this, &World::attend);
    connect(&heart_, &QTimer::timeout, this, &World::beat);
    heart_.setTimerType(Qt::PreciseTimer);
    qApp->installEventFilter(this);
}

World::~World() {
    qApp->removeEventFilter(this);
    action_.reset();
    window_.reset();
}

bool World::start() {
    window_.reset();
    window_ = std::make_unique<shell::KitaplarMDI>(
        shell::Services{platform::AppFolder(folder_.path()), *this, *this, registry_, {}, {}, engine_});
    if (!filled_ || !window_->load()) return false;
    window_->activateWindow();
    startPause();
    attention_.start(AttentionMs);
    heart_.start(BeatMs);
    return true;
}

void World::beginAction(quint32 seed, int number, const QString& name) {
    std::seed_seq sequence{seed, static_cast<quint32>(number)};
    chance_ = QRandomGenerator(sequence);
    action_ = std::make_unique<QObject>();
    actionName_ = name;
    details.clear();
    attended_ = 0;
    startPause();
}

void World::later(int ms, std::function<void()> act) {
    QTimer::singleShot(ms, action_.get(), [this, act = std::move(act)] {
        if (!isClosed()) act();
    });
}

void World::startPause() {
    sinceBeat_.start();
    queuedAtBeat_ = queuedMs();
}

void World::beat() {
    const int pause = int(sinceBeat_.elapsed() - BeatMs - (queuedMs() - queuedAtBeat_));
    if (pause > longest) longestIn = actionName_;
    longest = qMax(longest, pause);
    startPause();
}

// ---- The user before a box, a dialog or a menu ----

platform::Answer World::show(const platform::Message& message) {
    ++boxes;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, AttentionMs);
    const bool agrees = !oneIn(3);
    if (message.buttons == platform::Buttons::OkCancel)
        return agrees ? platform::Answer::Ok : platform::Answer::Cancel;
    if (message.buttons == platform::Buttons::YesNo)
        return agrees ? platform::Answer::Yes : platform::Answer::No;
    return platform::Answer::Ok;
}

std::optional<QString> World::ask(const platform::Question& question) {
    ++boxes;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, AttentionMs);
    if (oneIn(4)) return std::nullopt;
    return question.initial + u" #"_s + QString::number(below(50));
}

std::optional<platform::PrintTarget> World::defaultPrinter() {
    if (oneIn(3)) return std::nullopt;
    return platform::PrintTarget{nullptr, folder_.filePath(u"sayfa.pdf"_s), platform::PrintRange::Page};
}

std::optional<platform::PrintTarget> World::ask(bool selection) {
    auto chosen = defaultPrinter();
    if (chosen && selection && oneIn(2)) chosen->range = platform::PrintRange::Selection;
    return chosen;
}

void World::attend() {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* dialog = QApplication::activeModalWidget();
    if (!popup && !dialog) return;
    const bool leave = ++attended_ > PatienceLooks || (popup && !qobject_cast<QMenu*>(popup));
    if (leave) return key(popup ? *popup : *dialog, u"Esc"_s);
    if (!popup) return attendDialog(*dialog);
    key(*popup, anyOf(u"Down Down Up Return Esc"_s));
}

void World::attendDialog(QWidget& dialog) {
    if (oneIn(4)) return key(dialog, u"Esc"_s);
    if (auto* search = dialog.findChild<QLineEdit*>(); search && search->isVisible() && oneIn(6)) {
        click(*search);
        return type(dialog, anyOf(u"su ve ak zzq"_s));
    }
    if (auto* list = dialog.findChild<QListWidget*>()) {
        if (oneIn(3))
            click(*list->viewport(), {20, below(qMax(1, list->viewport()->height()))},
                  oneIn(4) ? Qt::RightButton : Qt::LeftButton);
        return key(dialog, anyOf(u"Down Up End Return Del"_s));
    }
    QList<QAbstractButton*> buttons = dialog.findChildren<QAbstractButton*>();
    buttons.removeIf([](const QAbstractButton* button) { return !button->isVisible(); });
    if (!buttons.isEmpty()) click(*any(buttons));
}

// ---- Coming to rest ----

bool World::isQuiet() const {
    return !QApplication::activePopupWidget() && !QApplication::activeModalWidget() &&
           (isClosed() || !window_->windows().isBusy());
}

bool World::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove && window_ && watched == window_->windowHandle()) ++answers_;
    return QObject::eventFilter(watched, event);
}

QString World::state() const {
    return u"pop-up %1, dialog %2, focus on %3%4"_s.arg(nameOf(QApplication::activePopupWidget()),
                                                        nameOf(QApplication::activeModalWidget()),
                                                        nameOf(QApplication::focusWidget()),
                                                        isClosed()                    ? u", closed"_s
                                                        : window_->windows().isBusy() ? u", busy"_s
                                                                                      : QString());
}

QString World::settle() {
    QElapsedTimer waiting;
    waiting.start();
    const int look = oneIn(2) ? LookMs : 0;
    qint64 slowest = 0;
    bool answered = true;
    int rounds = 0;  // quiet ones in a row: one action's end may be the beginning of something else
    while (rounds < 3 || waiting.elapsed() < look) {
        const qint64 began = waiting.elapsed();
        if (began > RestLimitMs)
            return u"the program does not come to rest: %1, the mouse is %2, longest step %3 ms"_s.arg(
                state(), answered ? u"heard"_s : u"not heard"_s, QString::number(slowest));
        const int before = answers_;
        // A move that goes nowhere is none.
        if (!isClosed() && isQuiet())
            mouse(*window_, {1 + ++moves_ % 2, 1}, QEvent::MouseMove, Qt::NoButton, nextTime());
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        slowest = qMax(slowest, waiting.elapsed() - began);
        answered = isClosed() || answers_ > before;
        rounds = isQuiet() && answered ? rounds + 1 : 0;
    }
    action_.reset();
    if (!isClosed())
        for (const QMdiSubWindow* each : children()) captions.insert(each->windowTitle());
    return {};
}

QString World::lastingFault() {
    QElapsedTimer waiting;
    waiting.start();
    QString wrong = fault();
    while (!wrong.isEmpty() && waiting.elapsed() < LayoutMs) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        wrong = fault();
    }
    return wrong;
}

QString World::fault() const {
    if (isClosed()) return {};
    const shell::ChildWindows& windows = window_->windows();
    const QList<QMdiSubWindow*> shown = children();
    QList<QMdiSubWindow*> loaded = {windows.loadedBrowseWindow(), windows.loadedContentWindow()};
    for (shell::frm_IcerikN* extra : windows.extraWindows().open()) loaded << extra;
    for (QMdiSubWindow* each : loaded)
        if (each && !shown.contains(each)) return u"not in the frame: "_s + each->objectName();
    for (const QMdiSubWindow* each : shown)
        if (!each->widget()) return u"a child window without content: "_s + each->objectName();

    // At rest nothing is left of a run.
    for (const QString& name : {u"prg_gosterge"_s, u"lbl_tool"_s, u"fraStopper"_s, u"cmdDur"_s})
        if (const QWidget* left = find(name); left && left->isVisible()) return name + u" is still shown"_s;
    const QWidget* options = find(u"Frame1"_s);
    if (options && !options->isEnabled()) return u"the options are still disabled"_s;
    if (window_->cursor().shape() == Qt::WaitCursor) return u"the pointer is still the busy one"_s;
    if (window_->minimumSizeHint().width() > 700) return u"the main window cannot be narrow any more"_s;
    if (find<QLabel>(u"StatusBar1_1"_s)->text().isEmpty()) return u"the status bar is empty"_s;
    return window_->library().isOpen() ? QString() : u"the library is closed"_s;
}

}  // namespace lirovan::soak
