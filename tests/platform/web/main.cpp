#include <gtest/gtest.h>

#include <QApplication>

#include "platform/ui/web_engine.h"

int main(int argc, char** argv) {
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
    lirovan::platform::WebEngine::prepare();
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
