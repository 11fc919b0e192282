#include "soak/user_input.h"

#include <qpa/qwindowsysteminterface.h>

#include <QGuiApplication>
#include <QWindow>

namespace lirovan::soak {

namespace {

using System = QWindowSystemInterface;

// Farther apart than a double click.
constexpr ulong Apart = 1000;

ulong now() {
    static ulong time = 0;
    return time += Apart;
}

struct Place {
    QWindow* window;
    QPoint local, global;
};

Place place(const QWidget& widget, QPoint at) {
    const QPoint inWindow = widget.mapTo(widget.window(), at);
    return {widget.window()->windowHandle(), inWindow, widget.window()->mapToGlobal(inWindow)};
}

void mouse(const Place& at, QEvent::Type type, Qt::MouseButton button, ulong time) {
    if (!at.window) return;
    const bool released = type == QEvent::MouseButtonRelease || button == Qt::NoButton;
    const bool moves = type == QEvent::MouseMove;
    System::handleMouseEvent<System::AsynchronousDelivery>(at.window, time, at.local, at.global,
                                                           released ? Qt::NoButton : button,
                                                           moves ? Qt::NoButton : button, type);
}

void press(const Place& at, Qt::MouseButton button, ulong time) {
    mouse(at, QEvent::MouseButtonPress, button, time);
    mouse(at, QEvent::MouseButtonRelease, button, time);
}

}  // namespace

void click(const QWidget& widget, QPoint at, Qt::MouseButton button) {
    press(place(widget, at), button, now());
}

void doubleClick(const QWidget& widget, QPoint at) {
    const ulong time = now();
    press(place(widget, at), Qt::LeftButton, time);
    press(place(widget, at), Qt::LeftButton, time + 10);
}

void drag(const QWidget& widget, QPoint from, QPoint to) {
    const ulong time = now();
    mouse(place(widget, from), QEvent::MouseButtonPress, Qt::LeftButton, time);
    mouse(place(widget, (from + to) / 2), QEvent::MouseMove, Qt::LeftButton, time);
    mouse(place(widget, to), QEvent::MouseMove, Qt::LeftButton, time);
    mouse(place(widget, to), QEvent::MouseButtonRelease, Qt::LeftButton, time);
}

void hover(const QWidget& widget, QPoint at) {
    mouse(place(widget, at), QEvent::MouseMove, Qt::NoButton, now());
}

void key(const QWidget& window, Qt::Key code, Qt::KeyboardModifiers modifiers, const QString& text) {
    QWindow* focused = QGuiApplication::focusWindow();
    QWindow* target = focused ? focused : window.windowHandle();
    if (!target) return;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        System::handleKeyEvent<System::AsynchronousDelivery>(target, type, code, modifiers, text);
}

void type(const QWidget& window, const QString& text) {
    for (const QChar letter : text) key(window, Qt::Key(letter.toUpper().unicode()), {}, letter);
}

}  // namespace lirovan::soak
