// The view with the real engine: loading, rewriting, asking, and what happens when a page does not answer.
#include "platform/ui/web_view.h"

#include <signal.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest/QTest>

#include "web_fixture.h"

using namespace lirovan::test;
using namespace std::chrono_literals;

namespace {

struct WebViewTest : WebTest {
    const QString pagePath = folder.pageText(u"\\OKU\\oku.html");

    QString text() { return inPage(u"document.body.innerText.trim()"_s); }

    /// The page's script runs for `ms` and lets nothing else run.
    void keepBusy(int ms) {
        page()->runJavaScript(
            u"(function(){ const t = Date.now(); while (Date.now() - t < %1); })()"_s.arg(ms));
    }

    void click(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view->findChild<QWebEngineView*>()->focusProxy(), button, {}, {x, y});
    }
};

}  // namespace

TEST_F(WebViewTest, LoadsAgainWhatIsShownAlready) {
    for (const QString& word : {u"bir"_s, u"iki"_s, u"ığüşöç İ"_s}) {
        show(topicPage(u"T"_s, u"<span id=w>%1</span>"_s.arg(word)));
        EXPECT_EQ(inPage(u"w.innerText"_s), word);
        EXPECT_EQ(view->location(), pagePath);
    }
    // Without waiting in between the last one counts.
    for (int i = 0; i < 5; ++i) {
        write(u"OKU/oku.html", u"<title>x</title>%1"_s.arg(i).toUtf8());
        view->navigate(pagePath);
    }
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(text(), u"4");
}

TEST_F(WebViewTest, TellsAMissingPageAndShowsTheNextOne) {
    view->navigate(folder.pageText(u"\\OKU\\yok.html"));
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_TRUE(view->findChild<QPushButton*>()->isVisible());
    show(u"sayfa"_s);
    EXPECT_FALSE(view->findChild<QPushButton*>()->isVisible());
    EXPECT_EQ(text(), u"sayfa");
}

TEST_F(WebViewTest, ReadsPagesInTheirEncoding) {
    write(u"OKU/a.htm", toWindows1254(u"<meta charset=utf-8>ığş"_s));
    const std::pair<QByteArray, QString> cases[] = {
        {toWindows1254(u"<p title='x'>tırnağı şöyle, güçlü çığ; Kur'ân, İSTANBUL ILIK"_s),
         u"tırnağı şöyle, güçlü çığ; Kur'ân, İSTANBUL ILIK"_s},
        {"plain ascii \xfd", u"plain ascii ı"_s},
        {u"<html><head><META http-equiv=Content-Type content='text/html; charset=utf-8'></head>ığş ∞"_s
             .toUtf8(),
         u"ığş ∞"_s},
        {"\xef\xbb\xbf" + u"ığş ∞"_s.toUtf8(), u"ığş ∞"_s},
    };
    for (const auto& [bytes, expected] : cases) {
        write(u"OKU/VQ.htm", bytes);
        view->navigate(folder.pageText(u"\\OKU\\VQ.htm"));
        ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
        EXPECT_EQ(text(), expected);
    }
    show(topicPage(u"T"_s, u"<meta charset=utf-8><b id=w>ığş</b>"_s));
    EXPECT_EQ(inPage(u"w.innerText"_s), u"ığş") << "a topic's text cannot change the page file's encoding";
}

TEST_F(WebViewTest, RewritesThePageInItsPlace) {
    show(topicPage(u"T"_s, u"eski"_s));
    const QString absolute = folder.pageText(u"\\OKU\\duaimages/dua 1.gif");
    ASSERT_EQ(
        view->rewrite(
            u"<HEAD><TITLE>Y</TITLE></HEAD><BODY><IMG id=a src=\"print.gif\"><IMG id=b src=\"%1\">"
            "<IMG id=c src=\"DUAIMAGES/Dua 1.GIF\"><IMG id=d src=\"%2\"><SCRIPT>var ran = 'evet';</SCRIPT> "
            "\"tırnak\" \\ \u2028 \U0001F600 son"_s.arg(
                absolute, QUrl::fromLocalFile(onDisk(u"OKU/print.gif")).toString())),
        Outcome::Answered);
    EXPECT_EQ(
        inPage(
            u"[a.naturalWidth, b.naturalWidth, c.naturalWidth, d.naturalWidth, ran, document.compatMode].join()"_s),
        u"1,1,1,1,evet,BackCompat");
    EXPECT_EQ(text(), u"\"tırnak\" \\ \u2028 \U0001F600 son");
    EXPECT_EQ(view->location(), pagePath);
    // A page cannot get in the way with its names, nor by replacing the document's operations.
    show(
        u"<form name=open></form><form name=write></form><script>Document.prototype.write = null</script>x"_s);
    ASSERT_EQ(view->rewrite(u"<BODY>yeni"_s), Outcome::Answered);
    EXPECT_EQ(text(), u"yeni");
}

TEST_F(WebViewTest, FollowsPicturesInAFolderWithAnAwkwardName) {
    const QString awkward = root.path() + u"/C# 100%25?"_s;
    QDir().mkpath(awkward + u"/OKU"_s);
    ASSERT_TRUE(QFile::copy(onDisk(u"OKU/print.gif"), awkward + u"/OKU/print.gif"_s));
    QFile page(awkward + u"/OKU/oku.html"_s);
    ASSERT_TRUE(page.open(QIODevice::WriteOnly) && page.write("<img id=a src=print.gif>") > 0);
    page.close();
    view = std::make_unique<WebView>(WebEngine::create(AppFolder(awkward)), dialogs);
    view->navigate(awkward + u"\\OKU\\oku.html"_s);
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(inPage(u"a.naturalWidth"_s), u"1");
    ASSERT_EQ(view->rewrite(u"<BODY><IMG id=a src=\"%1\\OKU\\print.gif\">"_s.arg(awkward)),
              Outcome::Answered);
    EXPECT_EQ(inPage(u"a.naturalWidth"_s), u"1");
}

TEST_F(WebViewTest, MeasuresHitsFromTheContentCellInTheOrderOfTheirNumbers) {
    const QString filler = u"<p style='height:300px;margin:0'></p>"_s;
    show(topicPage(u"T"_s, hit(1, u"iki"_s) + filler + u"<table><tr><td>"_s + hit(0, u"bir"_s) +
                               u"</table>"_s + filler + hit(2, u"üç"_s) + hit(4, u"atlanan"_s) + filler +
                               filler));
    const auto all = view->offsets(u"ggggittt");
    ASSERT_TRUE(all);
    ASSERT_EQ(all.value->size(), 3U);
    EXPECT_LT((*all.value)[1], (*all.value)[0]);
    EXPECT_LT((*all.value)[0], (*all.value)[2]);
    EXPECT_GE((*all.value)[1], 0);
    EXPECT_LT((*all.value)[1], 20);
    // Scrolled to, a hit is in view; scrolling does not change what is measured.
    ASSERT_EQ(view->setScrollTop(int((*all.value)[2]) + 33), Outcome::Answered);
    EXPECT_EQ(view->offsets(u"ggggittt").value, all.value);
    const double y =
        inPage(u"document.getElementsByName('ggggittt2')[0].nextSibling.getBoundingClientRect().top"_s)
            .toDouble();
    EXPECT_GE(y, 0);
    EXPECT_LT(y, 400);
    EXPECT_EQ(view->offsets(u"yok").value, std::vector<double>());
}

TEST_F(WebViewTest, HidesHitButtonsAndStillFocusesThem) {
    const QString around = u"<div id=%1 style='font:16px Arial'>önce %2 sonra</div>"_s;
    show(topicPage(u"T"_s,
                   around.arg(u"with"_s, hit(0, u"kelime"_s)) +
                       around.arg(u"without"_s, u"<font color='#000080'><span>kelime</span></font>"_s) +
                       u"<p style='height:3000px'></p>"_s + hit(1, u"uzak"_s)));
    const QString size =
        u"[document.getElementById('%1').offsetHeight, document.querySelector('#%1 font').offsetLeft]+''"_s;
    for (const int rewritten : {0, 1}) {
        EXPECT_EQ(inPage(size.arg(u"with"_s)), inPage(size.arg(u"without"_s))) << rewritten;
        EXPECT_EQ(inPage(u"getComputedStyle(document.getElementsByName('ggggittt0')[0]).backgroundColor"_s),
                  u"rgba(0, 0, 0, 0)");
        EXPECT_EQ(view->hasElement(u"ggggittt1").value, true);
        EXPECT_EQ(view->hasElement(u"ggggittt2").value, false);
        EXPECT_EQ(view->focusElement(u"ggggittt1"), Outcome::Answered);
        EXPECT_EQ(inPage(u"document.activeElement.name"_s), u"ggggittt1");
        const double top = view->scrollTop().valueOr(0);
        EXPECT_GT(top, 2000);
        EXPECT_EQ(view->setScrollTop(100), Outcome::Answered);
        EXPECT_EQ(view->scrollLinesDown(4), Outcome::Answered);
        EXPECT_EQ(view->scrollTop().value, 180);
        ASSERT_EQ(view->rewrite(view->innerHtml().valueOr(QString())), Outcome::Answered);
    }
}

TEST_F(WebViewTest, BeginsTheNextPageOfTheSameFileAtItsTop) {
    const QString filler = u"<p style='height:3000px'></p>"_s;
    show(filler + u"önceki"_s);
    ASSERT_EQ(view->setScrollTop(1500), Outcome::Answered);
    ASSERT_EQ(view->scrollTop().value, 1500);
    show(filler + u"sonraki"_s);
    EXPECT_EQ(view->scrollTop().value, 0);
}

TEST_F(WebViewTest, AnswersBeforeAnythingWasShown) {
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_FALSE(view->hasElement(u"ggggittt0").valueOr(false));
    EXPECT_FALSE(view->hasSelection());
    EXPECT_TRUE(view->location().isEmpty());
}

TEST_F(WebViewTest, GivesUpAPageThatHangsAndShowsTheNextOne) {
    show(u"dönüp duran"_s);
    view->setTimeLimits(300ms, 5s);
    keepBusy(60'000);
    EXPECT_EQ(view->innerHtml().outcome, Outcome::TimedOut);
    EXPECT_EQ(view->setScrollTop(5), Outcome::TimedOut);
    show(u"sıradaki"_s);
    view->setTimeLimits(5s, 5s);
    EXPECT_EQ(text(), u"sıradaki");
    EXPECT_TRUE(view->innerHtml());
}

TEST_F(WebViewTest, DropsAnAnswerThatComesLate) {
    show(u"x"_s);
    view->setTimeLimits(100ms, 5s);
    keepBusy(600);
    EXPECT_EQ(view->innerHtml().outcome, Outcome::TimedOut);
    view->setTimeLimits(5s, 5s);
    EXPECT_EQ(view->hasElement(u"yok").value, false)
        << "the first answer is not taken for the second question's";
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered);
}

TEST_F(WebViewTest, SaysGoneWhenItIsClosedWhileItWaits) {
    for (int i = 0; i < 2; ++i) {
        show(u"x"_s);
        keepBusy(60'000);
        QTimer::singleShot(100, [&] { view.reset(); });
        EXPECT_EQ(i ? view->innerHtml().outcome : view->rewrite(u"x"_s), Outcome::Gone);
        ASSERT_EQ(view, nullptr);
        view = std::make_unique<WebView>(engine, dialogs);
    }
}

TEST_F(WebViewTest, SurvivesTheEndOfThePagesProcess) {
    show(u"<p>ilk</p>"_s);
    keepBusy(60'000);
    const auto pid = pid_t(page()->renderProcessPid());
    ASSERT_GT(pid, 0);
    QTimer::singleShot(200, [&] { ::kill(pid, SIGKILL); });
    EXPECT_EQ(view->innerHtml().outcome, Outcome::Gone);
    EXPECT_EQ(view->rewrite(u"x"_s), Outcome::Gone);
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Gone);
    write(u"OKU/oku.html", "ikinci");
    auto* reload = view->findChild<QPushButton*>();
    ASSERT_TRUE(reload->isVisible());
    reload->click();
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(text(), u"ikinci");
}

TEST_F(WebViewTest, AsksThePagesQuestionsThroughTheProgramsDialogs) {
    dialogs.answer(Answer::Ok).answer(Answer::Cancel).answerText(u"yanıt"_s).answerText(std::nullopt);
    show(
        u"<script>alert('uyarı'); var r = [confirm('emin?'), prompt('ad?', 'x'), prompt('ad?')];</script>"_s);
    EXPECT_EQ(inPage(u"JSON.stringify(r)"_s), u"[false,\"yanıt\",null]");
    ASSERT_EQ(dialogs.messages.size(), 2U);
    EXPECT_EQ(dialogs.messages[0].text, u"uyarı");
    EXPECT_EQ(dialogs.messages[1].buttons, Buttons::OkCancel);
    ASSERT_EQ(dialogs.questions.size(), 2U);
    EXPECT_EQ(dialogs.questions[0].initial, u"x");
    show(u"<script>for (let i = 0; i < 1000; ++i) alert(i)</script>"_s);
    EXPECT_LT(dialogs.messages.size(), 100U);
}

TEST_F(WebViewTest, HandsOnThePrintLinkAndTheInstaller) {
    const QSignalSpy printed(view.get(), &WebView::printRequested);
    const QSignalSpy installer(view.get(), &WebView::installerRequested);
    show(topicPage(u"T"_s, u"metin"_s));
    inPage(u"document.querySelector('a[href^=javascript]').click()"_s);
    EXPECT_TRUE(until([&] { return printed.count() == 1; }));
    for (const QString& address :
         {u"http://127.0.0.1:9/indir/baska.exe"_s, u"http://127.0.0.2:9/indir/kur.exe"_s})
        view->navigate(address);
    EXPECT_EQ(installer.count(), 0);
    view->navigate(u"http://127.0.0.1:9/indir/kur.exe"_s);
    EXPECT_EQ(installer.count(), 1);
    EXPECT_EQ(view->location(), pagePath);
}

TEST_F(WebViewTest, FollowsLinksInsideTheFolderAlsoIntoNewWindows) {
    write(u"OKU/VQ.htm", "<title>b</title>baslangic");
    const QString home = folder.pageText(u"\\OKU\\VQ.htm");
    const QString contents[] = {
        u"<a href=vq.htm target=_blank style='font-size:100px'>bağ</a>"_s,
        u"<a href='%1' style='font-size:100px'>bağ</a>"_s.arg(home),
        u"<b onclick='location=\"file://\"+encodeURI(this.title.replace(/.OKU./, \"/OKU/\"))' title=\"%1\" "
        "style='font-size:100px'>bağ</b>"_s.arg(home),
        u"<b onclick='location=this.getAttribute(\"url\")' url=\"%1\" style='font-size:100px'>bağ</b>"_s.arg(
            home)};
    for (const QString& content : contents) {
        show(content);
        QSignalSpy loaded(view.get(), &WebView::loaded);
        click(50, 70);
        EXPECT_TRUE(until([&] { return loaded.count() > 0; }, 2000)) << content.toStdString();
        ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
        EXPECT_EQ(text(), u"baslangic") << content.toStdString();
        EXPECT_EQ(view->location(), onDisk(u"OKU/VQ.htm"));
    }
}

TEST_F(WebViewTest, TellsWhenThePageGetsTheFocus) {
    QWidget window;
    auto* other = new QPushButton(&window);
    view->setParent(&window);
    const QSignalSpy focused(view.get(), &WebView::gotFocus);
    window.show();
    window.activateWindow();
    other->setFocus();
    show(u"x"_s);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(focused.count(), 0);
    view->setFocus();
    EXPECT_TRUE(until([&] { return focused.count() > 0; }, 3000));
    view->setParent(nullptr);
}
