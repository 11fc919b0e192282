// main() of the tests that need windows: an application, Turkish as in the program, no window on a screen.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
