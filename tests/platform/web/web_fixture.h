// An application folder with pages made by the test, and a view on it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <QtTest/QTest>
#include <functional>
#include <memory>

#include "platform/core/code_page.h"
#include "platform/ui/web_view.h"
#include "support/files.h"
#include "support/scripted_dialogs.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lirovan::test {

using namespace platform;
using namespace Qt::StringLiterals;

struct WebTest : testing::Test {
    QTemporaryDir root;
    AppFolder folder{root.path()};
    const QString pagePath = folder.pageText(u"\\OKU\\oku.html"), home = folder.pageText(u"\\OKU\\VQ.htm");
    // One picture, one pixel.
    const QByteArray picture =
        QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7");
    ScriptedDialogs dialogs;
    std::shared_ptr<WebEngine> engine =
        WebEngine::create(folder, QUrl(u"http://127.0.0.1:9/indir/kur.exe"_s));
    std::unique_ptr<WebView> view = std::make_unique<WebView>(engine, dialogs);

    explicit WebTest(const QString& name = u"/lirovan web ğ"_s)
        : root(QDir::tempPath() + name + u"-XXXXXX"_s) {}
    void SetUp() override {
        view->resize(700, 500);
        view->show();
        for (const QStringView name : {u"OKU/print.gif", u"OKU/duaimages/dua 1.gif"})
            writeFile(onDisk(name), picture);
    }

    QString onDisk(QStringView relative) const { return root.filePath(relative.toString()); }

    void navigate(const QString& path) {
        view->navigate(path);
        ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    }
    /// Writes the page file as the program does, and shows it.
    void show(const QString& html) {
        writeFile(onDisk(u"OKU/oku.html"), toWindows1254(html) + "\r\n");
        navigate(pagePath);
    }

    QString html() { return view->innerHtml().valueOr(QString()); }
    QWebEnginePage* page() const { return view->findChild<QWebEngineView*>()->page(); }
    QWidget* input() const { return view->findChild<QWebEngineView*>()->focusProxy(); }

    /// What a script of the page itself would see, as text.
    QString inPage(const QString& script) {
        std::optional<QString> result;
        page()->runJavaScript(script, [&](const QVariant& value) { result = value.toString(); });
        EXPECT_TRUE(until([&] { return result.has_value(); })) << script.toStdString();
        return result.value_or(QString());
    }
    /// What is read on the page, or in an element of it.
    QString shown(const QString& where = u"document.body"_s) {
        return inPage(where + u".innerText.trim()"_s);
    }

    /// Lets events run until `condition` holds, at most `limit` ms.
    static bool until(const std::function<bool()>& condition, int limit = 8000) {
        const QDeadlineTimer deadline(limit);
        while (!condition() && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        return condition();
    }
};

/// A page as the program makes it for a topic.
inline QString topicPage(const QString& title, const QString& content) {
    return uR"(<html><title>%1</title><body topmargin=0 leftmargin=0 bgcolor=#C0C0C0><table border=5 cellSpacing=0
        width=100% cellpadding=11><tbody><tr><td width=100% bgcolor=#000000><b><font color=#FFFFFF face=Arial>
        <span >Kitap </span></font></b></td></tr><tr><td width=100%><table border=0 width=100%><tr>
        <td width=90%><big><strong>%1</strong></big></td><td><a href=javascript:window.print();><img border=0
        src=print.gif width=67 height=17></a></td></tr></table></td></tr><tr><td width=75% valign=top ><font
        face=Arial>%2</font></td></tr></table></html>)"_s.arg(title, content);
}

inline QString hit(int number, const QString& word) {
    return u"<input type='submit' name='ggggittt%1' style='width:0px; height:0px;'><font color='#000080'>"
           "<span style='background-color:#00FF00'>%2</font></span>"_s.arg(number)
               .arg(word);
}

}  // namespace lirovan::test
