// An application folder with pages made by the test, and a view on it.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWebEnginePage>
#include <QWebEngineView>
#include <functional>
#include <memory>

#include "platform/core/code_page.h"
#include "platform/ui/web_view.h"
#include "support/scripted_dialogs.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace lirovan::test {

using namespace platform;
using namespace Qt::StringLiterals;

class WebTest : public ::testing::Test {
  protected:
    QTemporaryDir root{QDir::tempPath() + u"/lirovan web ğ-XXXXXX"_s};
    AppFolder folder{root.path()};
    ScriptedDialogs dialogs;
    std::shared_ptr<WebEngine> engine =
        WebEngine::create(folder, QUrl(u"http://127.0.0.1:9/indir/kur.exe"_s));
    std::unique_ptr<WebView> view = std::make_unique<WebView>(engine, dialogs);

    void SetUp() override {
        view->resize(700, 500);
        view->show();
        // One picture, one pixel.
        write(u"OKU/print.gif",
              QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7"));
        write(u"OKU/duaimages/dua 1.gif", read(u"OKU/print.gif"));
    }

    QString onDisk(QStringView relative) const { return root.path() + u'/' + relative.toString(); }

    void write(QStringView relative, const QByteArray& content) {
        QDir().mkpath(QFileInfo(onDisk(relative)).path());
        QFile file(onDisk(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray read(QStringView relative) const {
        QFile file(onDisk(relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Writes the page file as the program does, and shows it.
    void show(const QString& html) {
        write(u"OKU/oku.html", toWindows1254(html) + "\r\n");
        view->navigate(folder.pageText(u"\\OKU\\oku.html"));
        ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    }

    QWebEnginePage* page() const { return view->findChild<QWebEngineView*>()->page(); }

    /// What a script of the page itself would see, as text.
    QString inPage(const QString& script) {
        QString result;
        bool answered = false;
        page()->runJavaScript(script, [&](const QVariant& value) {
            result = value.toString();
            answered = true;
        });
        EXPECT_TRUE(until([&] { return answered; })) << script.toStdString();
        return result;
    }

    /// Lets events run until `condition` holds, at most `limit` ms.
    static bool until(const std::function<bool()>& condition, int limit = 8000) {
        QElapsedTimer clock;
        clock.start();
        while (!condition() && clock.elapsed() < limit)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
        return condition();
    }
};

/// A page as the program makes it for a topic.
inline QString topicPage(const QString& title, const QString& content) {
    return u"<html><title>"_s + title +
           u"</title><body topmargin=0 leftmargin=0 rightmargin=0 bottommargin=0 bgcolor=#C0C0C0>"
           "<table bgColor=#FFFFFF border=5 cellSpacing=0 width=100% bordercolor=#000000 cellpadding=11 "
           "align=top>"
           "<tbody><tr><td width=100% bgcolor=#000000><table width=100%><tr><td width=60%>"
           "<b><font color=#FFFFFF face=Arial size=3><span >Işıklar Kitabı </span></font></b></td>"
           "<td width=40% align=right><b><font face=Arial size=3 "
           "color=#FFFFFF><span>Yazar</span></font></b></td>"
           "</tr></table></td></tr><tr><td width=100% valign=top><table border=0 width=100%><tr>            "
           "<td width=90% valign=top align=center><big><big><strong>"_s +
           title +
           u"</strong></big></big></td><td align=right width=10% valign=top><a "
           u"href=javascript:window.print();>"
           "<img border=0 src=print.gif width=67 height=17></a></td></tr></table></td></tr>"
           "<tr><td width=75% valign=top ><font face=Arial>"_s +
           content + u"</font></td></tr></table></html>"_s;
}

inline QString hit(int number, const QString& word) {
    return u"<input type='submit' name='ggggittt%1' style='width:0px; height:0px;'><font color='#000080'>"
           "<span style='background-color:#00FF00'>%2</font></span>"_s.arg(number)
               .arg(word);
}

}  // namespace lirovan::test
