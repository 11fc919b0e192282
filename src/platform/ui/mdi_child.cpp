#include "platform/ui/mdi_child.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiArea>
#include <utility>

#include "platform/ui/icons.h"
#include "platform/ui/memory_bounds.h"
#include "platform/ui/twips_pixels.h"

namespace lirovan::platform {

namespace {

/// Moved, then cut, so that it lies inside an area of `room`.
QRect fitted(QRect place, const QSize& room) {
    place.setSize(place.size().boundedTo(room));
    place.moveLeft(qBound(0, place.left(), room.width() - place.width()));
    place.moveTop(qBound(0, place.top(), room.height() - place.height()));
    return place;
}

}  // namespace

MdiChild::MdiChild(const QString& name, QWidget* parent) : QMdiSubWindow(parent) {
    setObjectName(name);
    setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &QObject::destroyed, qApp, &giveBackMemory, Qt::QueuedConnection);
    connect(this, &QMdiSubWindow::windowStateChanged, this,
            [this](Qt::WindowStates before, Qt::WindowStates now) {
                if (now.testFlag(Qt::WindowActive) && !before.testFlag(Qt::WindowActive) && onActivate)
                    onActivate();
                if (now != before) showIcon();
                const Qt::WindowStates size = Qt::WindowMinimized | Qt::WindowMaximized;
                if ((before & size) != (now & size)) tellResize();
            });
}

// The toolkit's window tells its last change of state when this part of it is gone already.
MdiChild::~MdiChild() {
    disconnect(this, &QMdiSubWindow::windowStateChanged, this, nullptr);
}

TwipsRect MdiChild::place() const {
    if (given_ && (isMaximized() || geometry() == givenPixels_)) return *given_;
    return toTwips(geometry(), *this);
}

void MdiChild::setPlace(const TwipsRect& place) {
    if (isMinimized() || isMaximized()) return;
    QRect pixels = toPixels(place, *this);
    given_ = place;
    if (const int least = minimumSizeHint().width(); pixels.width() < least) {
        pixels.setWidth(least);
        given_->width = toTwipsX(least, *this);
    }
    if (mdiArea()) pixels = fitted(pixels, mdiArea()->contentsRect().size());
    // Set before the geometry: the resize that follows may ask for the place.
    givenPixels_ = pixels;
    setGeometry(pixels);
    givenPixels_ = geometry();
}

// The title bar of the active window has the colour of a selection. A maximised window shows its icon on the
// menu bar.
void MdiChild::showIcon() {
    if (icon_.isNull()) icon_ = windowIcon();
    const bool selected = windowState().testFlag(Qt::WindowActive) && !isMaximized();
    setWindowIcon(selected ? selectedIcon(icon_) : icon_);
}

void MdiChild::bringForward() {
    if (isMinimized()) {
        showNormal();
    } else {
        // What the hook makes of the size counts before the window is laid out for the first time.
        if (!isVisible()) tellResize();
        show();
    }
    if (mdiArea()) mdiArea()->setActiveSubWindow(this);
}

void MdiChild::release() {
    if (--holds_ > 0 || !std::exchange(closeWanted_, false)) return;
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

bool MdiChild::event(QEvent* event) {
    // Unlike those to be seen on the screen, these come only when the window itself is shown or hidden.
    if (event->type() == QEvent::ShowToParent) Q_EMIT shownChanged(true);
    if (event->type() == QEvent::HideToParent) Q_EMIT shownChanged(false);
    return QMdiSubWindow::event(event);
}

void MdiChild::closeEvent(QCloseEvent* event) {
    if (isHeld()) {
        closeWanted_ = true;
        event->ignore();
        return;
    }
    if (onUnload && !onUnload()) {
        event->ignore();
        return;
    }
    QMdiSubWindow::closeEvent(event);
    if (!event->isAccepted()) return;
    // It goes with the next events; nobody answers for it any more.
    onActivate = onResize = nullptr;
    onUnload = nullptr;
    Q_EMIT unloaded();
}

void MdiChild::resizeEvent(QResizeEvent* event) {
    QMdiSubWindow::resizeEvent(event);
    tellResize();
}

void MdiChild::tellResize() {
    // The hook sets the size itself and must not be told of its own change.
    if (telling_ || !onResize) return;
    telling_ = true;
    onResize();
    telling_ = false;
}

void keepInside(QMdiSubWindow& window) {
    if (!window.mdiArea() || window.isMinimized() || window.isMaximized()) return;
    const QRect place = fitted(window.geometry(), window.mdiArea()->contentsRect().size());
    if (place != window.geometry()) window.setGeometry(place);
}

}  // namespace lirovan::platform
