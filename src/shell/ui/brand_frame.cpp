#include "shell/ui/brand_frame.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

#include "platform/ui/icons.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
namespace {

// The start page's colours, light and dark.
const QColor LightGround(0xf3, 0xf1, 0xea), DarkGround(0x1e, 0x24, 0x26);
const QColor LightInk(0x23, 0x29, 0x2c), DarkInk(0xe8, 0xe5, 0xdc);
const QColor LightSoft(0x5d, 0x68, 0x6b), DarkSoft(0xa9, 0xb3, 0xb4);
const QColor LightAmber(0x9c, 0x58, 0x14), DarkAmber(0xe0, 0xa4, 0x58);
const QColor Teal(0x1f, 0x6f, 0x78);

constexpr int StripeHeight = 5;

void setInk(QLabel* label, const QColor& colour) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, colour);
    label->setPalette(palette);
}

}  // namespace

QFont headingFont(double factor) {
    QFont font = QApplication::font();
    font.setFamilies({u"Palatino Linotype"_s, u"Palatino"_s, u"P052"_s, u"Georgia"_s, u"serif"_s});
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(int(font.pixelSize() * factor));
    return font;
}

BrandFrame::BrandFrame(QWidget* parent)
    : QFrame(parent),
      imgLogo(new QLabel(this)),
      lblCompanyProduct(new QLabel(u"Veskaran`nin"_s, this)),
      lblProductName(new QLabel(u"Lirovan"_s, this)),
      lines_(new QVBoxLayout),
      all_(new QVBoxLayout(this)) {
    setObjectName(u"Frame1"_s);
    imgLogo->setObjectName(u"imgLogo"_s);
    imgLogo->setAccessibleName(u"Lirovan simgesi"_s);
    lblCompanyProduct->setObjectName(u"lblCompanyProduct"_s);
    lblProductName->setObjectName(u"lblProductName"_s);

    const int em = fontMetrics().height();
    imgLogo->setPixmap(platform::applicationIcon().pixmap(QSize(7 * em, 7 * em), devicePixelRatioF()));
    lblCompanyProduct->setFont(headingFont(1.3));
    lblProductName->setFont(headingFont(3.4));

    lines_->setSpacing(0);
    lines_->addStretch(1);
    lines_->addWidget(lblCompanyProduct);
    lines_->addWidget(lblProductName);
    lines_->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(int(1.6 * em));
    row->addWidget(imgLogo);
    row->addLayout(lines_, 1);
    all_->setContentsMargins(2 * em, int(1.6 * em), 2 * em, int(1.4 * em) + StripeHeight);
    all_->setSpacing(em / 4);
    all_->addLayout(row, 1);
    colourLabels();
}

bool BrandFrame::isDark() const {
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

void BrandFrame::addLine(QLabel* line) {
    lines_->insertWidget(lines_->count() - 1, line);
    colourLabels();
}

void BrandFrame::addFootLine(QLabel* line) {
    all_->addWidget(line);
    colourLabels();
}

void BrandFrame::colourLabels() {
    for (QLabel* label : findChildren<QLabel*>()) setInk(label, isDark() ? DarkSoft : LightSoft);
    setInk(lblCompanyProduct, isDark() ? DarkAmber : LightAmber);
    setInk(lblProductName, isDark() ? DarkInk : LightInk);
}

void BrandFrame::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), isDark() ? DarkGround : LightGround);
    painter.fillRect(0, height() - StripeHeight, width(), StripeHeight, Teal);
}

void BrandFrame::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ApplicationPaletteChange) colourLabels();
    QFrame::changeEvent(event);
}

}  // namespace lirovan::shell
