// A child window inside the main window's frame: its place in twips, and the events that the program's
// windows answer, as one hook each. Who makes the window sets the hooks.
#pragma once

#include <QIcon>
#include <QMdiSubWindow>
#include <functional>
#include <optional>

#include "platform/core/twips.h"

namespace lirovan::platform {

class MdiChild : public QMdiSubWindow {
    Q_OBJECT

  public:
    /// `name`: the window's objectName. The window deletes itself when it is closed.
    explicit MdiChild(const QString& name, QWidget* parent = nullptr);
    ~MdiChild() override;

    std::function<void()> onActivate;  ///< it became the active child window
    std::function<void()> onResize;    ///< its size or state changed
    std::function<bool()> onUnload;    ///< it is to be closed; false keeps it open

    /// Where the window stands, its frame included; while it is maximised, where it was put before. What
    /// setPlace() was given comes back to the bit as long as the window has not moved since.
    TwipsRect place() const;
    /// Where the window stands or, minimised or maximised, goes back to.
    TwipsRect normalPlace() const { return (isMinimized() || isMaximized()) && given_ ? *given_ : place(); }
    /// Moves and sizes a window that is neither minimised nor maximised; another keeps its place. A width
    /// that cuts captions off, as with a large type, is made larger. A place that reaches beyond the frame is
    /// moved and then cut, so that nothing of the window is out of reach.
    void setPlace(const TwipsRect& place);

    /// Shows and activates the window, restored if it was minimised.
    void bringForward();

    /// Keeps the window from being closed while something of it waits for an answer with events running; a
    /// close that was asked for meanwhile follows.
    class Hold {
      public:
        explicit Hold(MdiChild& window) : window_(window) { ++window_.holds_; }
        ~Hold() { window_.release(); }
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

      private:
        MdiChild& window_;
    };
    bool isHeld() const { return holds_ > 0; }

  Q_SIGNALS:
    void unloaded();                ///< it was closed and is about to be deleted
    void shownChanged(bool shown);  ///< it was shown or hidden inside the frame, whoever did it

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void tellResize();
    void showIcon();
    void release();

    QIcon icon_;                      // as it was set
    std::optional<TwipsRect> given_;  // by setPlace(), which made it givenPixels_
    QRect givenPixels_;
    bool telling_ = false;
    int holds_ = 0;
    bool closeWanted_ = false;
};

/// Moves, and then cuts, a window so that all of it lies inside the frame. One that is minimised or maximised
/// is where it belongs.
void keepInside(QMdiSubWindow& window);

}  // namespace lirovan::platform
