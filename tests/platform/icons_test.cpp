// Icons: every key draws something at the sizes in use, in the colours that the palette asks for.
#include "platform/ui/icons.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPalette>

using namespace lirovan::platform;

namespace {

int solidPixels(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage();
    int count = 0;
    for (int i = 0; i < image.width() * image.height(); ++i)
        count += image.pixelColor(i % image.width(), i / image.width()).alpha() > 100;
    return count;
}

}  // namespace

TEST(Icons, DrawEveryKeyAtEverySizeInUse) {
    for (const QString& key : iconKeys())
        for (const int size : {16, 24, 48})
            EXPECT_GT(solidPixels(icon(key).pixmap(QSize(size, size), 1.0)), size) << qPrintable(key);
    EXPECT_GT(solidPixels(applicationIcon().pixmap(64, 64)), 1000);
}

TEST(Icons, FollowThePaletteAndTheScreenAfterTheyWereMade) {
    const QPalette before = QGuiApplication::palette();
    const QIcon up = icon(u"Up");
    for (const auto& [text, button] : {std::pair(Qt::black, Qt::white), std::pair(Qt::white, Qt::black)}) {
        QGuiApplication::setPalette(QPalette(text, button, text, text, text, text, button));
        const QImage drawn =
            up.pixmap(QSize(48, 48), 1.0).toImage().scaled(1, 1, {}, Qt::SmoothTransformation);
        EXPECT_NEAR(drawn.pixelColor(0, 0).lightness(), QColor(text).lightness(), 60);
    }
    QGuiApplication::setPalette(before);
    EXPECT_NE(up.pixmap(24).toImage(), up.pixmap(24, QIcon::Disabled).toImage());
    EXPECT_EQ(up.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48)) << "sharp on a dense screen";
}
