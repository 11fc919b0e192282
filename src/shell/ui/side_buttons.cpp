#include "shell/ui/side_buttons.h"

#include <QApplication>
#include <QMouseEvent>

namespace lirovan::shell {

SideButtons::SideButtons(QWidget& window, std::function<void(int)> pressed)
    : QObject(&window), window_(window), pressed_(std::move(pressed)) {
    qApp->installEventFilter(this);
}

bool SideButtons::eventFilter(QObject* watched, QEvent* event) {
    const bool press =
        event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (!press && event->type() != QEvent::MouseButtonRelease) return false;
    const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
    if (button != Qt::BackButton && button != Qt::ForwardButton) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != &window_ || QApplication::activeModalWidget()) return false;
    // The page engine would go back in a history of its own.
    if (press)
        QMetaObject::invokeMethod(
            this, [this, button] { pressed_(button == Qt::BackButton ? -1 : 1); }, Qt::QueuedConnection);
    return true;
}

}  // namespace lirovan::shell
