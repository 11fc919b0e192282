// Icons: every key draws something at the sizes in use, in the colours that the palette asks for.
#include "platform/ui/icons.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPalette>

using namespace lirovan::platform;

namespace {

/// How many pixels are solid, and their mean lightness, 0 to 255.
std::pair<int, int> ink(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage();
    int sum = 0, count = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QColor color = image.pixelColor(i % image.width(), i / image.width());
        if (color.alpha() > 100) sum += color.lightness(), ++count;
    }
    return {count, sum / std::max(count, 1)};
}

}  // namespace

TEST(Icons, DrawEveryKeyAtEverySizeInUse) {
    for (const QString& key : iconKeys())
        for (const int size : {16, 24, 48})
            EXPECT_GT(ink(icon(key).pixmap(QSize(size, size), 1.0)).first, size) << qPrintable(key);
    EXPECT_GT(ink(applicationIcon().pixmap(64, 64)).first, 1000);
}

TEST(Icons, FollowThePaletteAndTheScreenAfterTheyWereMade) {
    const QPalette before = QGuiApplication::palette();
    const QIcon up = icon(u"Up");
    const auto lightnessWith = [&up](Qt::GlobalColor text, Qt::GlobalColor button) {
        QPalette palette;
        palette.setColor(QPalette::ButtonText, text);
        palette.setColor(QPalette::Button, button);
        QGuiApplication::setPalette(palette);
        return ink(up.pixmap(QSize(48, 48), 1.0)).second;
    };
    EXPECT_LT(lightnessWith(Qt::black, Qt::white), 60);
    EXPECT_GT(lightnessWith(Qt::white, Qt::black), 195);
    QGuiApplication::setPalette(before);
    EXPECT_NE(up.pixmap(24).toImage(), up.pixmap(24, QIcon::Disabled).toImage());
    EXPECT_EQ(up.pixmap(QSize(24, 24), 2.0).size(), QSize(48, 48)) << "sharp on a dense screen";
}
