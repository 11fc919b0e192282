// The mouse's back and forward buttons, wherever in a window they are pressed.
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>

namespace lirovan::shell {

class SideButtons : public QObject {
  public:
    /// `pressed` is told -1 for back and 1 for forward. Modal windows in front of `window` keep their own.
    SideButtons(QWidget& window, std::function<void(int step)> pressed);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget& window_;
    std::function<void(int)> pressed_;
};

}  // namespace lirovan::shell
