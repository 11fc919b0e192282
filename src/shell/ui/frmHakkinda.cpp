#include "shell/ui/frmHakkinda.h"

#include <QVBoxLayout>

#include "platform/core/version.h"
#include "platform/ui/icons.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

frmHakkinda::frmHakkinda(QWidget* parent)
    : QDialog(parent),
      Frame1(new BrandFrame(this)),
      Label1(new QLabel(u"Bu program ve içindeki kitaplar, hak sahiplerinin izni olmadan kısmen ya da "
                        "tamamen çoğaltılamaz ve dağıtılamaz."_s,
                        this)),
      Label2(new QLabel(u"  Versiyon: "_s + platform::version().section(u'.', 0, 1), Frame1)) {
    setObjectName(u"frmHakkinda"_s);
    setWindowTitle(u"Hakkında"_s);
    setWindowIcon(platform::applicationIcon());
    Label1->setObjectName(u"Label1"_s);
    Label2->setObjectName(u"Label2"_s);

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
