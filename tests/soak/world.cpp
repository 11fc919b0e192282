#include "soak/world.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QMdiArea>
#include <QMenu>
#include <QMouseEvent>
#include <QWindow>
#include <stdexcept>

#include "platform/core/library_layout.h"
#include "soak/user_input.h"
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

void copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QFileInfo& each : QDir(from).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString target = to + u'/' + each.fileName();
        if (each.isDir())
            copyFolder(each.filePath(), target);
        else if (!QFile::copy(each.filePath(), target))
            throw std::runtime_error("cannot copy " + each.filePath().toStdString());
    }
}

/// How many ms this thread has waited for a processor so far.
qint64 queuedMs() {
    QFile schedule(u"/proc/thread-self/schedstat"_s);
    if (!schedule.open(QIODevice::ReadOnly)) return 0;
    return schedule.readAll().split(' ').value(1).toLongLong() / 1'000'000;
}

}  // namespace

/// Answers message boxes and input boxes by chance, after the program had a moment behind them.
class World::User : public platform::Dialogs {
  public:
    explicit User(World& world) : world_(world) {}

    platform::Answer show(const platform::Message& message) override {
        moment();
        const bool first = world_.chance().bounded(3) > 0;
        switch (message.buttons) {
            case platform::Buttons::OkCancel:
                return first ? platform::Answer::Ok : platform::Answer::Cancel;
            case platform::Buttons::YesNo:
                return first ? platform::Answer::Yes : platform::Answer::No;
            case platform::Buttons::Ok:
                break;
        }
        return platform::Answer::Ok;
    }
    std::optional<QString> ask(const platform::Question& question) override {
        moment();
        if (world_.chance().bounded(4) == 0) return std::nullopt;
        return question.initial + u" #"_s + QString::number(world_.chance().bounded(50));
    }
    QString askSavePath(const QString&, const QString&, const QString&) override { return {}; }

  private:
    void moment() {
        ++world_.boxes_;
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, AttentionMs);
    }

    World& world_;
};

/// Prints into a file, or is cancelled.
class World::Printer : public platform::Printing {
  public:
    explicit Printer(World& world) : world_(world) {}
    std::optional<platform::PrintTarget> defaultPrinter() override { return target(); }
    std::optional<platform::PrintTarget> ask(bool selection) override {
        auto chosen = target();
        if (chosen && selection && world_.chance().bounded(2) == 0)
            chosen->range = platform::PrintRange::Selection;
        return chosen;
    }

  private:
    std::optional<platform::PrintTarget> target() const {
        if (world_.chance().bounded(3) == 0) return std::nullopt;
        return platform::PrintTarget{nullptr, world_.folder_.filePath(u"sayfa.pdf"_s),
                                     platform::PrintRange::Page};
    }

    World& world_;
};

World::World(const QString& library)
    : user_(std::make_unique<User>(*this)), printer_(std::make_unique<Printer>(*this)) {
    const QString samples = QStringLiteral(LIROVAN_SOURCE_DIR) + u"/samples"_s;
    copyFolder(samples + u"/OKU"_s, folder_.filePath(u"OKU"_s));
    const QString file = folder_.filePath(u"kitaplar.vq"_s);
    if (library.isEmpty()) {
        const auto built = tools::buildLibrary(samples + u"/kitaplik"_s, file);
        if (!built) throw std::runtime_error(built.error().message.toStdString());
    } else if (!QFile::copy(library, file)) {
        throw std::runtime_error("cannot copy the library");
    }
    settings_ = std::make_unique<shell::SettingsRegistry>(folder_.filePath(u"kayit.ini"_s));
    registry_ = std::make_unique<shell::reg_api>(*settings_);
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
        shell::Services{platform::AppFolder(folder_.path()), *user_, *printer_, *registry_, {}, {}, engine_});
    if (!window_->load()) return false;
    window_->activateWindow();
    startPause();
    attention_.start(AttentionMs);
    heart_.start(BeatMs);
    return true;
}

QWidget* World::usable(const QString& name) const {
    for (QWidget* each : window_->findChildren<QWidget*>(name))
        if (each->isVisible() && each->isEnabled()) return each;
    return nullptr;
}

QList<QMdiSubWindow*> World::children() const {
    return find<QMdiArea>(u"workArea"_s)->subWindowList();
}

void World::beginAction(quint32 seed, int number, const QString& name) {
    const std::array<quint32, 2> key{seed, static_cast<quint32>(number)};
    std::seed_seq sequence(key.begin(), key.end());
    chance_ = QRandomGenerator(sequence);
    action_ = std::make_unique<QObject>();
    actionName_ = name;
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
    const qint64 pause = sinceBeat_.elapsed() - BeatMs - (queuedMs() - queuedAtBeat_);
    int& longest = longest_[actionName_];
    longest = qMax(longest, int(pause));
    startPause();
}

// ---- The user before a dialog or a menu ----

void World::attend() {
    if (QWidget* popup = QApplication::activePopupWidget()) return attendPopup(*popup);
    if (QWidget* dialog = QApplication::activeModalWidget()) return attendDialog(*dialog);
}

void World::attendPopup(QWidget& popup) {
    const bool leave = ++attended_ > PatienceLooks || !qobject_cast<QMenu*>(&popup);
    constexpr Qt::Key Keys[] = {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Escape};
    key(popup, leave ? Qt::Key_Escape : Keys[chance_.bounded(int(std::size(Keys)))]);
}

void World::attendDialog(QWidget& dialog) {
    if (++attended_ > PatienceLooks || chance_.bounded(4) == 0) return key(dialog, Qt::Key_Escape);
    if (auto* list = dialog.findChild<QListWidget*>()) {
        constexpr Qt::Key Keys[] = {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Return, Qt::Key_Delete};
        if (chance_.bounded(3) == 0)
            click(*list->viewport(), {20, chance_.bounded(qMax(1, list->viewport()->height()))},
                  chance_.bounded(4) == 0 ? Qt::RightButton : Qt::LeftButton);
        return key(dialog, Keys[chance_.bounded(int(std::size(Keys)))]);
    }
    QList<QAbstractButton*> buttons = dialog.findChildren<QAbstractButton*>();
    buttons.removeIf([](const QAbstractButton* button) { return !button->isVisible(); });
    if (!buttons.isEmpty()) click(*buttons[chance_.bounded(int(buttons.size()))]);
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
    const auto name = [](const QWidget* widget) {
        return widget ? QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName()
                      : u"none"_s;
    };
    const QWindow* focused = QGuiApplication::focusWindow();
    return u"pop-up "_s + name(QApplication::activePopupWidget()) + u", dialog "_s +
           name(QApplication::activeModalWidget()) + u", focus in "_s +
           (focused ? focused->objectName() : u"no window"_s) + u" on "_s +
           name(QApplication::focusWidget()) +
           (isClosed()                    ? u", closed"_s
            : window_->windows().isBusy() ? u", busy"_s
                                          : QString());
}

std::optional<QString> World::settle() {
    QElapsedTimer waiting;
    waiting.start();
    const int look = chance_.bounded(2) == 0 ? LookMs : 0;
    qint64 slowest = 0;
    bool answered = true;
    int rounds = 0;  // quiet ones in a row: one action's end may be the beginning of something else
    while (rounds < 3 || waiting.elapsed() < look) {
        const qint64 began = waiting.elapsed();
        if (began > RestLimitMs)
            return u"the program does not come to rest: %1, the mouse is %2, longest step %3 ms"_s.arg(
                state(), answered ? u"heard"_s : u"not heard"_s, QString::number(slowest));
        const int before = answers_;
        if (!isClosed() && isQuiet())
            hover(*window_, {1 + ++moves_ % 2, 1});  // a move that goes nowhere is none
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        slowest = qMax(slowest, waiting.elapsed() - began);
        answered = isClosed() || answers_ > before;
        rounds = isQuiet() && answered ? rounds + 1 : 0;
    }
    action_.reset();
    if (!isClosed())
        for (const QMdiSubWindow* each : children()) captions_.insert(each->windowTitle());
    return std::nullopt;
}

std::optional<QString> World::lastingFault() {
    QElapsedTimer waiting;
    waiting.start();
    auto wrong = fault();
    while (wrong && waiting.elapsed() < LayoutMs) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        wrong = fault();
    }
    return wrong;
}

std::optional<QString> World::fault() {
    if (isClosed()) return std::nullopt;
    shell::ChildWindows& windows = window_->windows();
    const QList<QMdiSubWindow*> shown = children();
    const auto isShown = [&shown](const auto* each) {
        return std::any_of(shown.begin(), shown.end(),
                           [each](const QMdiSubWindow* window) { return window == each; });
    };
    for (const QMdiSubWindow* each : shown)
        if (!each->widget()) return u"a child window without content: "_s + each->objectName();
    if (windows.loadedBrowseWindow() && !isShown(windows.loadedBrowseWindow()))
        return u"the browse window is not in the frame"_s;
    if (windows.loadedContentWindow() && !isShown(windows.loadedContentWindow()))
        return u"the content window is not in the frame"_s;
    for (const auto* extra : windows.extraWindows().open())
        if (!isShown(extra)) return u"an extra window is not in the frame"_s;

    // At rest nothing is left of a run.
    for (const QString& name : {u"prg_gosterge"_s, u"lbl_tool"_s, u"fraStopper"_s, u"cmdDur"_s})
        if (const QWidget* left = find(name); left && left->isVisible()) return name + u" is still shown"_s;
    if (const QWidget* options = find(u"Frame1"_s); options && !options->isEnabled())
        return u"the options are still disabled"_s;
    if (window_->cursor().shape() == Qt::WaitCursor) return u"the pointer is still the busy one"_s;
    if (const int width = window_->minimumSizeHint().width(); width > 700)
        return u"the main window cannot be narrower than "_s + QString::number(width);
    if (find<QLabel>(u"StatusBar1_1"_s)->text().isEmpty()) return u"the status bar is empty"_s;
    if (!window_->library().isOpen()) return u"the library is closed"_s;
    return std::nullopt;
}

}  // namespace lirovan::soak
