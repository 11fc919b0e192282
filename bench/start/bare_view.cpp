// bare-view: a main window with an empty page view, the least that a reader on this toolkit could be.
#include <QApplication>
#include <QMainWindow>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

int main(int count, char* words[]) {
    QApplication application(count, words);
    QMainWindow window;
    window.setWindowTitle(u"bare-view"_s);
    auto* view = new QWebEngineView(&window);
    window.setCentralWidget(view);
    view->load(QUrl(u"about:blank"_s));
    window.showMaximized();
    return QApplication::exec();
}
