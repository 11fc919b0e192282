// bare-view: a main window with an empty page view, the least that a reader on this toolkit could be.
#include <QApplication>
#include <QMainWindow>
#include <QWebEngineView>

int main(int count, char* words[]) {
    QApplication application(count, words);
    QMainWindow window;
    window.setWindowTitle(QStringLiteral("bare-view"));
    auto* view = new QWebEngineView(&window);
    window.setCentralWidget(view);
    view->load(QUrl(QStringLiteral("about:blank")));
    window.showMaximized();
    return QApplication::exec();
}
