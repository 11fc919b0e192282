#include "shell/ui/KitaplarMDI.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMimeData>
#include <QScreen>
#include <QThread>

#include "browse/book_selector.h"
#include "browse/book_tree.h"
#include "desk/reader_file.h"
#include "platform/core/books/book_files.h"
#include "platform/core/own_pages.h"
#include "platform/core/replaced_database.h"
#include "platform/core/version.h"
#include "platform/ui/icons.h"
#include "platform/ui/twips_pixels.h"
#include "shell/recent_libraries.h"
#include "shell/ui/child_windows.h"
#include "shell/ui/command_table.h"
#include "shell/ui/frame_widgets.h"
#include "shell/ui/frmGiris.h"
#include "shell/ui/import_progress.h"
#include "shell/ui/main_toolbar.h"
#include "shell/ui/pane_keys.h"
#include "shell/ui/recent_libraries_menu.h"
#include "shell/ui/session_keeper.h"
#include "shell/ui/side_buttons.h"
#include "shell/ui/update_download.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
namespace button = platform::button;

namespace {

/// Page font size before the first topic, in pixels.
constexpr int FontSizeAtStart = 12;

constexpr int FrameMs = 16;

constexpr int CloseAgainMs = 20;

constexpr std::chrono::milliseconds IdleAgain{500}, LookAtFile{1000};

// Smaller than that, a 1366 × 768 screen at double scale could not show the window.
constexpr QSize LeastSize{480, 320};

/// The splash window's lines. Titles fly past: what no screen could show is not put there.
browse::TreeProgress splashProgress(frmGiris& splash) {
    struct State {
        QElapsedTimer sinceFrame;
        QString book;
    };
    auto state = std::make_shared<State>();
    const auto frameIsDue = [&splash, state] {
        if (!splash.splashShown) return false;
        if (state->sinceFrame.isValid() && state->sinceFrame.elapsed() < FrameMs) return false;
        state->sinceFrame.start();
        return true;
    };
    browse::TreeProgress progress;
    progress.started = [&splash] {
        if (!splash.splashShown) return;
        splash.Label1->setText(browse::loadingText());
        splash.repaintLabels();
    };
    progress.bookStarted = [state](const QString& book) { state->book = book; };
    progress.topicAdded = [&splash, state, frameIsDue](const QString& topic) {
        if (!frameIsDue()) return;
        splash.Label1->setText(browse::bookLoadingText(state->book));
        splash.Label2->setText(browse::topicLoadedText(topic));
        splash.repaintLabels();
    };
    return progress;
}

}  // namespace

/// The frame with what belongs to the shared content window.
class KitaplarMDI::Frame : public FrameWidgets {
  public:
    Frame(KitaplarMDI& window, QMdiArea& area) : FrameWidgets(window, area), window_(window) {}

    int fontSize() const override { return fontSize_; }
    void FontSize(int pixels) override { fontSize_ = pixels; }
    void ReOrderPos() override { window_.windows_->ReOrderPos(); }
    void SetPosZero() override { window_.windows_->SetPosZero(); }

  private:
    KitaplarMDI& window_;
    int fontSize_ = FontSizeAtStart;
};

KitaplarMDI::KitaplarMDI(Services services) : services_(std::move(services)) {
    setObjectName(u"KitaplarMDI"_s);
    setWindowTitle(status::Idle.toString());
    setWindowIcon(platform::applicationIcon());
    setMinimumSize(LeastSize);
    setContextMenuPolicy(Qt::NoContextMenu);
    area_.setObjectName(u"workArea"_s);
    area_.setFrameShape(QFrame::NoFrame);
    area_.setBackground(palette().brush(QPalette::Dark));
    // The window behind follows a closed one, not the browse window each time.
    area_.setActivationOrder(QMdiArea::ActivationHistoryOrder);
    // Windows are kept inside the frame instead.
    area_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCentralWidget(&area_);

    frame_ = std::make_unique<Frame>(*this, area_);
    windows_ = std::make_unique<ChildWindows>(area_, *frame_, library_, services_);
    windows_->pageMenuItems = frame_->typeSizeItems();
    connect(frame_.get(), &FrameWidgets::commandChosen, this,
            [this](const CommandRow& row) { row.run(*windows_); });
    connect(windows_.get(), &ChildWindows::quitWanted, this, &QWidget::close);
    connect(windows_.get(), &ChildWindows::libraryChanged, this, &KitaplarMDI::fillSelector);
    new RecentLibrariesMenu(*frame_->menu(u"mnu_Okuma"), services_.registry, services_.folder.text(),
                            [this](const QString& folder) { windows_->openLibrary(folder); });
    setAcceptDrops(true);
    session_ = std::make_unique<SessionKeeper>(*this, *windows_, desk::readerFilePath(services_.folder));
    windows_->toggleContinues = [this] {
        session_->setContinues(!session_->continues());
        frame_->setMenuChecked(u"mnu_Surdur", session_->continues());
    };
    new SideButtons(*this, [this](int step) { windows_->goInHistory(step); });
    new PaneKeys(*this, area_, frame_->toolBar());
    connect(&fileTimer_, &QTimer::timeout, this, &KitaplarMDI::followFile);
}

KitaplarMDI::~KitaplarMDI() {
    session_.reset();
    windows_.reset();
    // The central widget is a member.
    takeCentralWidget();
}

platform::MainFrame& KitaplarMDI::frame() {
    return *frame_;
}

bool KitaplarMDI::load() {
    frame_->FontSize(FontSizeAtStart);
    sizedOnce_ = false;
    startUpdateCheck();
    if (!openLibrary()) return false;

    fillSelector();
    for (QStringView key : {button::New, button::Up, button::Down}) frame_->setButtonEnabled(key, false);

    frmGiris splash(services_.registry, services_.folder.text());
    splash.showAtOnce();
    resize(screen()->size());
    windows_->treeProgress = splashProgress(splash);
    windows_->maximizeMainWindow = [this] {
        if (isVisible()) showMaximized();
        maximizeWanted_ = true;
    };
    windows_->browseWindow();
    windows_->treeProgress = {};
    // A page view needs another kind of native window than a plain frame: made before the frame becomes one,
    // the toolkit does not have to make the frame anew, in which it would lose its state.
    windows_->contentWindow();
    splash.close();
    if (const auto place = session_->windowPlace()) {
        maximizeWanted_ = false;
        sizedOnce_ = true;
        setGeometry(*place);
    }
    showMain();
    windows_->showBrowse();
    windows_->showContent();
    windows_->showBrowse();
    windows_->loadedBrowseWindow()->bookTree().setFocus();
    windows_->pageCommands().showPageCommands(browse::ShownPage::None);
    session_->begin();
    fileTimer_.start(LookAtFile);
    loaded_ = true;
    return true;
}

void KitaplarMDI::fillSelector() {
    browse::BookSelector selector = browse::readBookSelector(library_);
    frame_->fillSelector(std::move(selector.rows));
    if (selector.failure)
        services_.dialogs.show(
            platform::errorMessage(browse::incompleteListMessage(*selector.failure), u"Okuma Hatası"_s));
}

bool KitaplarMDI::openLibrary() {
    const auto refuse = [this](const platform::Error& error) {
        services_.dialogs.show(platform::errorMessage(error.message, u"Okuma Hatası"_s));
        return false;
    };
    // A file that is not there, or cannot be read, is reported by opening it.
    const QFileInfo file(services_.folder.path(data::LibraryFile));
    if (file.isFile() && file.isReadable()) {
        const auto ensured = ensureLayout(file.filePath(), platform::LayoutKind::Library, nullptr);
        if (!ensured) return refuse(ensured.error());
    }
    auto opened = data::Library::open(services_.folder);
    if (!opened) return refuse(opened.error());
    library_ = std::move(*opened);
    library_.useScript(platform::ownFragment());
    rememberLibrary(services_.registry, services_.folder.text());
    return true;
}

// Another library that was put in the place of this one is read instead, but not under a search, a dialog or
// a click that waits for a page. One that cannot be opened is left alone until it can.
void KitaplarMDI::followFile() {
    if (QThread::currentThread()->loopLevel() > 1 || windows_->isBusy() ||
        !platform::hasLostItsName(library_.database()))
        return;
    auto opened = data::Library::open(services_.folder);
    if (!opened) return;
    library_ = std::move(*opened);
    library_.useScript(platform::ownFragment());
    windows_->followLibrary();
}

void KitaplarMDI::startUpdateCheck() {
    const QUrl manifest = onServer(services_.updateServer, ManifestPath);
    if (!manifest.isValid()) return;
    manifest_ = std::make_unique<ManifestDownload>(manifest);
    updateCheck_ = std::make_unique<UpdateCheck>(
        platform::version(), *manifest_, services_.dialogs, services_.webSite,
        [this](std::function<void()> tell) { whenIdle(std::move(tell)); },
        [this] {
            windows_->contentWindow().wb_Icerik2->navigate(
                onServer(services_.updateServer, InstallerPath).toString());
        });
    connect(&tmrVersion, &QTimer::timeout, this, &KitaplarMDI::GetXMLCheckVers);
    tmrVersion.setSingleShot(true);
    tmrVersion.start(FirstCheck);
}

// One check; it is repeated until a manifest could be read.
void KitaplarMDI::GetXMLCheckVers() {
    updateCheck_->check([this](bool done) {
        if (!done) tmrVersion.start(NextCheck);
    });
}

// Not over a long first import, a search or another dialog.
void KitaplarMDI::whenIdle(std::function<void()> act) {
    const bool idle = loaded_ && isVisible() && !windows_->isBusy() && !QApplication::activeModalWidget() &&
                      !QApplication::activePopupWidget();
    if (idle) return act();
    QTimer::singleShot(IdleAgain, this, [this, act = std::move(act)]() mutable { whenIdle(std::move(act)); });
}

void KitaplarMDI::showMain() {
    if (maximizeWanted_)
        showMaximized();
    else
        show();
    sizeChanged();
}

WindowState KitaplarMDI::state() const {
    if (isMinimized()) return WindowState::Minimized;
    return isMaximized() || isFullScreen() ? WindowState::Maximized : WindowState::Normal;
}

void KitaplarMDI::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    sizeChanged();
}

void KitaplarMDI::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) sizeChanged();
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && windows_) windows_->followOthers();
    if (event->type() == QEvent::PaletteChange) area_.setBackground(palette().brush(QPalette::Dark));
}

void KitaplarMDI::sizeChanged() {
    if (sizing_ || !frame_ || !windows_) return;
    sizing_ = true;
    if (isVisible() && state() == WindowState::Normal && !sizedOnce_) {
        const QSize screenSize = screen()->size();
        const TwipsRect place =
            firstNormalPlace(platform::toTwipsX(screenSize.width(), *this),
                             platform::toTwipsY(screenSize.height(), *this), platform::toTwipsY(y(), *this));
        sizedOnce_ = true;
        const QRect pixels = platform::toPixels(place, *this);
        move(pixels.left(), y());
        resize(pixels.size() - (frameGeometry().size() - size()));
    }
    if (isVisible() && state() != WindowState::Minimized)
        windows_->arrange(browseWidth(frame_->width(), state()));
    frame_->setSpacerWidth(frame_->width() - SpacerRoom);
    sizing_ = false;
}

void KitaplarMDI::dragEnterEvent(QDragEnterEvent* event) {
    if (!windows_->isBusy() && !platform::draggedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void KitaplarMDI::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    // The window that was dragged from waits for an answer.
    QTimer::singleShot(
        0, this, [this, files = platform::draggedFiles(*event->mimeData())] { windows_->addBooks(files); });
}

void KitaplarMDI::closeEvent(QCloseEvent* event) {
    if (windows_->isBusy()) {
        // What runs is stopped; the window closes once it has unwound.
        windows_->stopRun();
        QTimer::singleShot(CloseAgainMs, this, &QWidget::close);
        event->ignore();
        return;
    }
    if (!windows_->closeNotebook()) {
        event->ignore();
        return;
    }
    session_->keep();
    windows_->closeExtraWindows();
    library_.close();
    QMainWindow::closeEvent(event);
}

}  // namespace lirovan::shell
