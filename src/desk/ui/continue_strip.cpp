#include "desk/ui/continue_strip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace lirovan::desk {

using namespace Qt::StringLiterals;

ContinueStrip::ContinueStrip(const QString& heading, const QString& bookTitle, QWidget* parent)
    : QFrame(parent) {
    setObjectName(u"kaldiginizYer"_s);
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    auto* text = new QLabel(u"Kaldığınız yer: %1 – %2"_s.arg(heading, bookTitle));
    text->setObjectName(u"kaldiginizYerMetni"_s);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    auto* go = new QPushButton(u"Sü&rdür"_s);
    go->setObjectName(u"cmdSurdur"_s);
    go->setAccessibleDescription(text->text());
    connect(go, &QPushButton::clicked, this, &ContinueStrip::continueWanted);
    auto* close = new QToolButton;
    close->setObjectName(u"cmdSurdurme"_s);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(u"Kapat"_s);
    close->setAccessibleName(u"Kapat"_s);
    connect(close, &QToolButton::clicked, this, &ContinueStrip::closed);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    layout->addWidget(text, 1);
    layout->addWidget(go);
    layout->addWidget(close);
}

}  // namespace lirovan::desk
