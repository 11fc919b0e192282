// frmHakkinda, the about window.
#pragma once

#include <QDialog>
#include <QLabel>

#include "shell/ui/brand_frame.h"

namespace lirovan::shell {

class frmHakkinda : public QDialog {
    Q_OBJECT

  public:
    explicit frmHakkinda(QWidget* parent = nullptr);

    BrandFrame* const Frame1;
    QLabel* const Label1;  ///< the notice on reproduction
    QLabel* const Label2;  ///< the version
};

}  // namespace lirovan::shell
