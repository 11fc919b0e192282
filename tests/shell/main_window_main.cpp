// main() of the tests that show the main window: the page engine needs its settings before the application.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

#include "platform/ui/web_engine.h"

int main(int argc, char** argv) {
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
    lirovan::platform::WebEngine::prepare();
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
