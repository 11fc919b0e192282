// What a user does with mouse and keyboard, put into the window system's queue: it is delivered when the
// program takes input, in a nested event loop too, and not while the program holds input back.
#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

namespace lirovan::soak {

/// A click at `at`, in the widget's coordinates. It goes to whatever is seen there.
void click(const QWidget& widget, QPoint at, Qt::MouseButton button = Qt::LeftButton);
inline void click(const QWidget& widget) {
    click(widget, widget.rect().center());
}
void doubleClick(const QWidget& widget, QPoint at);
/// From one place to another with the button held.
void drag(const QWidget& widget, QPoint from, QPoint to);
/// The mouse goes there; changes nothing.
void hover(const QWidget& widget, QPoint at);

/// A key in the window that has the focus; without one in `window`.
void key(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {});
void type(const QWidget& window, const QString& text);

}  // namespace lirovan::soak
