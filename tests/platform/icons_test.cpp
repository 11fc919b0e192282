// Icons: every key draws something at the sizes in use, in the colours that the palette asks for.
#include "platform/ui/icons.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPalette>

namespace lirovan::platform {
namespace {

QImage drawn(QStringView key, int size, QIcon::Mode mode = QIcon::Normal) {
    return icon(key).pixmap(QSize(size, size), 1.0, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

int inkedPixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) count += qAlpha(image.pixel(x, y)) > 100;
    return count;
}

// Mean lightness of the solid pixels, 0 to 255.
int lineLightness(const QImage& image) {
    int sum = 0, count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 240) sum += QColor(image.pixel(x, y)).lightness(), ++count;
    return count == 0 ? -1 : sum / count;
}

TEST(Icons, DrawEveryKeyAtEverySizeInUse) {
    for (const QString& key : iconKeys())
        for (const int size : {16, 24, 48})
            EXPECT_GT(inkedPixels(drawn(key, size)), size) << qPrintable(key) << " at " << size;
    EXPECT_GT(inkedPixels(applicationIcon().pixmap(64, 64).toImage()), 1000);
}

TEST(Icons, FollowThePaletteAfterTheyWereMade) {
    const QPalette before = QGuiApplication::palette();
    const QIcon up = icon(u"Up");
    const auto lightnessWith = [&up](Qt::GlobalColor text) {
        QPalette palette;
        palette.setColor(QPalette::ButtonText, text);
        palette.setColor(QPalette::Button, text == Qt::black ? Qt::white : Qt::black);
        QGuiApplication::setPalette(palette);
        return lineLightness(up.pixmap(QSize(48, 48), 1.0).toImage());
    };
    EXPECT_LT(lightnessWith(Qt::black), 60);
    EXPECT_GT(lightnessWith(Qt::white), 195);
    QGuiApplication::setPalette(before);
}

TEST(Icons, AreGreyWhenDisabledAndSharpOnADenseScreen) {
    EXPECT_NE(drawn(u"cut", 24), drawn(u"cut", 24, QIcon::Disabled));
    const QPixmap dense = icon(u"cut").pixmap(QSize(24, 24), 2.0);
    EXPECT_EQ(dense.size(), QSize(48, 48));
    EXPECT_EQ(dense.devicePixelRatio(), 2.0);
}

}  // namespace
}  // namespace lirovan::platform
