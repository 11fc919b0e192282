// The strip under a page that finds on it: Ctrl+F opens it, Esc closes it. Enter and Shift+Enter step.
#pragma once

#include <QWidget>

#include "platform/ui/web_view.h"

class QLabel;
class QLineEdit;
class QShortcut;
class QToolButton;

namespace lirovan::browse {

class FindStrip : public QWidget {
    Q_OBJECT

  public:
    /// For the one of two views that is shown; both outlive the strip.
    FindStrip(platform::WebView* page, platform::WebView* startPage, QWidget* parent);

    /// Shows the strip with the keys in its line.
    void open();
    void leave();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    platform::WebView& shown() const;
    QToolButton* addButton(const QString& name, const QString& text, const QString& tip);
    void look();
    void showFound();

    platform::WebView* page_;
    platform::WebView* startPage_;
    QLineEdit* line_;
    QLabel* found_;
    QString onPage_, onStartPage_;  ///< what was found there, as text
    QShortcut* escape_;
};

}  // namespace lirovan::browse
