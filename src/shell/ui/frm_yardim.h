// frm_yardim, the help window: three topic buttons and a text.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QTextBrowser>
#include <QToolButton>
#include <functional>
#include <vector>

#include "platform/core/main_frame.h"
#include "shell/help_topics.h"

namespace lirovan::shell {

class frm_yardim : public QDialog {
    Q_OBJECT

  public:
    /// Loads the window and places it by `main`. `showTab` switches the browse window to the topic's tab,
    /// behind this window.
    frm_yardim(const platform::MainFrame& main, std::function<void(browse::Tab)> showTab,
               QWidget* parent = nullptr);

    /// The help-shown flag: true from loading until the window is closed.
    bool helpShown = true;

    QLabel* const lblBaslik;
    QLabel* const lblKBaslik;
    QLabel* const lblIcerik;

    void done(int result) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void addTopic(const HelpTopic& topic, QLayout* row);
    void showTopic(const HelpTopic& topic);
    void place(const platform::MainFrame& main);

    std::function<void(browse::Tab)> showTab_;
    std::vector<QTextBrowser*> texts_;  // lblKitaplar, lblArama, lblNotlar
};

}  // namespace lirovan::shell
