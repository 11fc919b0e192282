// What a user does with mouse and keyboard, put into the window system's queue: it is delivered when the
// program takes input, in a nested event loop too, and not while the program holds input back.
#pragma once

#include <qpa/qwindowsysteminterface.h>

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace lirovan::soak {

using System = QWindowSystemInterface;

/// A time for what comes next, farther from the last than the clicks of a double click.
inline ulong nextTime() {
    static ulong time = 0;
    return time += 1000;
}

/// It goes to whatever is seen at `at`, in the widget's coordinates.
inline void mouse(const QWidget& widget, QPoint at, QEvent::Type type, Qt::MouseButton button, ulong time) {
    QWindow* window = widget.window()->windowHandle();
    if (!window) return;
    const QPoint local = widget.mapTo(widget.window(), at);
    System::handleMouseEvent<System::AsynchronousDelivery>(
        window, time, local, widget.window()->mapToGlobal(local),
        type == QEvent::MouseButtonRelease ? Qt::NoButton : button,
        type == QEvent::MouseMove ? Qt::NoButton : button, type);
}

inline void click(const QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton,
                  ulong time = nextTime()) {
    mouse(widget, at, QEvent::MouseButtonPress, button, time);
    mouse(widget, at, QEvent::MouseButtonRelease, button, time);
}

inline void click(const QWidget& widget) {
    click(widget, widget.rect().center());
}

inline void doubleClick(const QWidget& widget, QPoint at) {
    const ulong time = nextTime();
    for (const ulong each : {time, time + 10}) click(widget, at, Qt::LeftButton, each);
}

/// From one place to another with the button held.
inline void drag(const QWidget& widget, QPoint from, QPoint to) {
    const ulong time = nextTime();
    mouse(widget, from, QEvent::MouseButtonPress, Qt::LeftButton, time);
    for (const QPoint at : {(from + to) / 2, to}) mouse(widget, at, QEvent::MouseMove, Qt::LeftButton, time);
    mouse(widget, to, QEvent::MouseButtonRelease, Qt::LeftButton, time);
}

/// A key that gives `text`, in the window that has the focus; without one in `window`.
inline void key(const QWidget& window, QKeyCombination code, const QString& text = {}) {
    QWindow* focused = QGuiApplication::focusWindow();
    QWindow* target = focused ? focused : window.windowHandle();
    if (!target) return;
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        System::handleKeyEvent<System::AsynchronousDelivery>(target, type, code.key(),
                                                             code.keyboardModifiers(), text);
}

/// A key like "Ctrl+Home".
inline void key(const QWidget& window, const QString& name) {
    key(window, QKeySequence(name, QKeySequence::PortableText)[0]);
}

inline void type(const QWidget& window, const QString& text) {
    for (const QChar letter : text) key(window, Qt::Key(letter.toUpper().unicode()), letter);
}

}  // namespace lirovan::soak
