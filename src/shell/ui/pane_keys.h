// The keyboard's way between the parts of the main window. Tab stays inside the child window that it is
// pressed in, so F6 goes on from there: to the window's own toolbar, to the main toolbar, and back; Shift+F6
// goes the other way round and Esc leaves a toolbar at once. Alt+- opens the active child window's system
// menu, Ctrl+F4 closes the window.
#pragma once

#include <QMdiArea>
#include <QPointer>
#include <QToolBar>

class QMainWindow;

namespace lirovan::shell {

class PaneKeys : public QObject {
    Q_OBJECT

  public:
    PaneKeys(QMainWindow& window, QMdiArea& area, QToolBar& mainBar);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// The toolbars in the order of F6.
    QList<QToolBar*> bars() const;
    /// Where the focus is in bars(); -1: in none of them.
    static qsizetype current(const QList<QToolBar*>& bars);
    void move(int step);
    void leaveBars();

    QMdiArea& area_;
    QToolBar& mainBar_;
    QPointer<QWidget> left_;  // what had the focus before it went to a toolbar
};

}  // namespace lirovan::shell
