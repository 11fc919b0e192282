#include "shell/ui/frmHakkinda.h"

#include <QVBoxLayout>

#include "platform/core/version.h"
#include "platform/ui/icons.h"

namespace lirovan::shell {

frmHakkinda::frmHakkinda(QWidget* parent)
    : QDialog(parent),
      Frame1(new BrandFrame(this)),
      Label1(new QLabel(
          QStringLiteral("Bu program ve içindeki kitaplar, hak sahiplerinin izni olmadan kısmen ya da "
                         "tamamen çoğaltılamaz ve dağıtılamaz."),
          this)),
      Label2(new QLabel(QStringLiteral("  Versiyon: ") + platform::version().section(u'.', 0, 1), Frame1)) {
    setObjectName(QStringLiteral("frmHakkinda"));
    setWindowTitle(QStringLiteral("Hakkında"));
    setWindowIcon(platform::applicationIcon());
    Label1->setObjectName(QStringLiteral("Label1"));
    Label2->setObjectName(QStringLiteral("Label2"));

    const int em = fontMetrics().height();
    Frame1->addLine(Label2);
    Label1->setWordWrap(true);
    Label1->setContentsMargins(2 * em, em, 2 * em, em);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Frame1);
    layout->addWidget(Label1);
    Frame1->setMinimumWidth(29 * em);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace lirovan::shell
