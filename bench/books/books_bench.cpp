// books_bench LIBRARY FILE: reads and adds a book in the window, and prints the longest time in which no
// event could be answered meanwhile.
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "browse/ui/add_books_window.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() != 3) return std::fputs("books_bench LIBRARY FILE\n", stderr), 2;
    browse::AddBooksWindow window({words[2]}, words[1]);
    auto* add = window.findChild<QPushButton*>(u"add"_s);
    QElapsedTimer since;
    qint64 longest = 0;
    const char* phase = "read";
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, &window, [&] {
        if (since.isValid()) longest = std::max(longest, since.elapsed());
        since.start();
        if (*phase == 'r' && add->isEnabled()) {
            std::printf("window while the book was read: at most %lld ms\n", longest);
            longest = 0;
            phase = "added";
            since.invalidate();
            add->click();
        } else if (window.added() > 0) {
            std::printf("window while it was added: at most %lld ms\n", longest);
            QApplication::quit();
        }
    });
    beat.start(1);
    window.show();
    return QApplication::exec();
}
