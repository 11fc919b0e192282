// KitaplarMDI, the main window: a frame of child windows with its menus, toolbar, status bar and book
// selector. It opens the library, brings up the windows and, when it closes, ends the program.
#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <QTimer>

#include "data/library.h"
#include "platform/core/main_frame.h"
#include "shell/main_layout.h"
#include "shell/ui/services.h"
#include "shell/update_check.h"

namespace lirovan::shell {

class ChildWindows;
class FrameWidgets;
class SessionKeeper;

class KitaplarMDI : public QMainWindow {
    Q_OBJECT

  public:
    explicit KitaplarMDI(Services services);
    ~KitaplarMDI() override;

    /// The window's load: library, selector, splash, browse window, content window. False: the library could
    /// not be opened and the user has been told; the program ends.
    bool load();

    const data::Library& library() const { return library_; }
    platform::MainFrame& frame();
    ChildWindows& windows() { return *windows_; }
    /// Calls `act` as soon as the window is shown and neither it nor a dialog keeps the user waiting.
    void whenIdle(std::function<void()> act);

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    // Book files may be dropped on the window.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    class Frame;

    bool openLibrary();
    void fillSelector();
    void followFile();
    void startUpdateCheck();
    void GetXMLCheckVers();
    void showMain();
    void sizeChanged();
    WindowState state() const;

    Services services_;
    data::Library library_;
    QMdiArea area_;
    std::unique_ptr<Frame> frame_;
    std::unique_ptr<ChildWindows> windows_;
    std::unique_ptr<SessionKeeper> session_;
    std::unique_ptr<ManifestSource> manifest_;
    std::unique_ptr<UpdateCheck> updateCheck_;
    QTimer tmrVersion, fileTimer_;
    bool loaded_ = false;
    bool sizedOnce_ = false;
    bool sizing_ = false;
    bool maximizeWanted_ = false;
};

}  // namespace lirovan::shell
