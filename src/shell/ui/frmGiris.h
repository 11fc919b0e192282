// frmGiris, the splash window: shown while the book tree is filled.
#pragma once

#include <QLabel>
#include <QWidget>

#include "shell/reg_api.h"
#include "shell/ui/brand_frame.h"

namespace lirovan::shell {

class frmGiris : public QWidget {
    Q_OBJECT

  public:
    /// Loads the window: it is not on the screen yet. Records `folder`, the application folder, as the
    /// install path.
    frmGiris(reg_api& registry, const QString& folder, QWidget* parent = nullptr);

    /// The splash-shown flag: true from loading until the window is closed, by the program or by the user.
    bool splashShown = true;

    BrandFrame* const Frame1;
    QLabel* const Label1;
    QLabel* const Label2;

    /// Shows the window in the middle of the screen and returns when it is painted.
    void showAtOnce();
    /// Paints both labels at once, while no events are handled.
    void repaintLabels();

  protected:
    void closeEvent(QCloseEvent* event) override;
};

}  // namespace lirovan::shell
