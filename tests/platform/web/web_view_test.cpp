// The view with the real engine: loading, rewriting, asking, and what happens when a page does not answer.
#include "platform/ui/web_view.h"

#include <signal.h>

#include <QPushButton>
#include <QSignalSpy>

#include "web_fixture.h"

using namespace lirovan::test;
using namespace std::chrono_literals;

namespace {

struct WebViewTest : WebTest {
    /// The page's script runs for `ms` and lets nothing else run.
    void keepBusy(int ms) {
        page()->runJavaScript(
            u"(function(){ const t = Date.now(); while (Date.now() - t < %1); })()"_s.arg(ms));
    }
    QPushButton* reload() { return view->findChild<QPushButton*>(); }
};

struct AwkwardFolderTest : WebTest {
    AwkwardFolderTest() : WebTest(u"/C# 100%25? ğ"_s) {}
};

const QString Filler = u"<p style='height:300px;margin:0'></p>"_s;

}  // namespace

TEST_F(WebViewTest, LoadsAgainWhatIsShownAlready) {
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered) << "before anything was shown";
    EXPECT_FALSE(view->hasElement(u"ggggittt0").valueOr(false));
    EXPECT_TRUE(view->location().isEmpty() && !view->hasSelection());
    navigate(folder.pageText(u"\\OKU\\yok.html"));
    EXPECT_TRUE(reload()->isVisible()) << "a missing page is told";
    for (const QString& word : {u"bir"_s, u"iki"_s, u"ığüşöç İ"_s}) {
        show(topicPage(u"T"_s, u"<span id=w>%1</span>"_s.arg(word) + Filler.repeated(5)));
        EXPECT_EQ(shown(u"w"_s), word);
        EXPECT_EQ(view->location(), pagePath);
        EXPECT_FALSE(reload()->isVisible());
        EXPECT_EQ(view->scrollTop().value, 0) << "the next page of the same file begins at its top";
        EXPECT_EQ(view->setScrollTop(500), Outcome::Answered);
        EXPECT_EQ(view->scrollTop().value, 500);
    }
    // Without waiting in between the last one counts.
    for (int i = 0; i < 5; ++i) {
        writeFile(onDisk(u"OKU/oku.html"), "<title>x</title>" + QByteArray::number(i));
        view->navigate(pagePath);
    }
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(shown(), u"4");
}

TEST_F(WebViewTest, ReadsPagesInTheirEncoding) {
    const std::pair<QByteArray, QString> cases[] = {
        {toWindows1254(u"<p title='x'>tırnağı şöyle, güçlü çığ; Kur'ân, İSTANBUL ILIK"_s),
         u"tırnağı şöyle, güçlü çığ; Kur'ân, İSTANBUL ILIK"_s},
        {"plain ascii \xfd", u"plain ascii ı"_s},
        {"<head><META http-equiv=Content-Type content='text/html; charset=utf-8'></head>\xc4\xb1", u"ı"_s},
        {"\xef\xbb\xbf\xc4\xb1\xe2\x88\x9e", u"ı∞"_s},
    };
    for (const auto& [bytes, expected] : cases) {
        writeFile(onDisk(u"OKU/VQ.htm"), bytes);
        navigate(home);
        EXPECT_EQ(shown(), expected);
    }
    show(topicPage(u"T"_s, u"<meta charset=utf-8><b id=w>ığş</b>"_s));
    EXPECT_EQ(shown(u"w"_s), u"ığş") << "a topic's text cannot change the page file's encoding";
}

TEST_F(AwkwardFolderTest, HasItsPagesRewrittenInTheirPlace) {
    show(topicPage(u"T"_s, u"eski"_s));
    const QString text =
        u"<HEAD><TITLE>Y</TITLE></HEAD><BODY><IMG id=a src=\"print.gif\"><IMG id=b src=\"%1\">"
        "<IMG id=c src=\"DUAIMAGES/Dua 1.GIF\"><IMG id=d src=\"%2\"><SCRIPT>var ran = 'evet';"
        "</SCRIPT> \"tırnak\" \\ \u2028 \U0001F600 son"_s;
    ASSERT_EQ(view->rewrite(text.arg(folder.pageText(u"\\OKU\\duaimages/dua 1.gif"),
                                     QUrl::fromLocalFile(onDisk(u"OKU/print.gif")).toString())),
              Outcome::Answered);
    EXPECT_EQ(inPage(u"[a, b, c, d].map(i => i.naturalWidth) + ran + document.compatMode"_s),
              u"1,1,1,1evetBackCompat");
    EXPECT_EQ(shown(), u"\"tırnak\" \\ \u2028 \U0001F600 son");
    EXPECT_EQ(view->location(), pagePath);
    // A page cannot get in the way with its names, nor by replacing the document's operations.
    show(
        u"<form name=open></form><form name=write></form><script>Document.prototype.write = null</script>x"_s);
    ASSERT_EQ(view->rewrite(u"<BODY>yeni"_s), Outcome::Answered);
    EXPECT_EQ(shown(), u"yeni");
}

TEST_F(WebViewTest, MeasuresHitsFromTheContentCellInTheOrderOfTheirNumbers) {
    show(topicPage(u"T"_s, hit(1, u"iki"_s) + Filler + u"<table><tr><td>"_s + hit(0, u"bir"_s) +
                               u"</table>"_s + Filler + hit(2, u"üç"_s) + hit(4, u"atlanan"_s) + Filler +
                               Filler));
    const std::vector<double> all = view->offsets(u"ggggittt").valueOr({});
    ASSERT_EQ(all.size(), 3U);
    EXPECT_TRUE(0 <= all[1] && all[1] < 20 && all[1] < all[0] && all[0] < all[2])
        << testing::PrintToString(all);
    // Scrolled to, a hit is in view; scrolling does not change what is measured.
    ASSERT_EQ(view->setScrollTop(int(all[2]) + 33), Outcome::Answered);
    EXPECT_EQ(view->offsets(u"ggggittt").value, all);
    inPage(u"var y = document.getElementsByName('ggggittt2')[0].nextSibling.getBoundingClientRect().top"_s);
    EXPECT_EQ(inPage(u"y >= 0 && y < 400"_s), u"true");
    EXPECT_EQ(view->offsets(u"yok").value, std::vector<double>());
}

TEST_F(WebViewTest, HidesHitButtonsAndStillFocusesThem) {
    const QString around = u"<div id=%1 style='font:16px Arial'>önce %2 sonra</div>"_s;
    show(topicPage(u"T"_s,
                   around.arg(u"with"_s, hit(0, u"kelime"_s)) +
                       around.arg(u"without"_s, u"<font color='#000080'><span>kelime</span></font>"_s) +
                       Filler.repeated(10) + hit(1, u"uzak"_s)));
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
        EXPECT_GT(view->scrollTop().valueOr(0), 2000);
        EXPECT_EQ(view->setScrollTop(100), Outcome::Answered);
        EXPECT_EQ(view->scrollLinesDown(4), Outcome::Answered);
        EXPECT_EQ(view->scrollTop().value, 180);
        ASSERT_EQ(view->rewrite(html()), Outcome::Answered);
    }
}

TEST_F(WebViewTest, DropsALateAnswerAndGivesUpAPageThatHangs) {
    show(u"x"_s);
    view->setTimeLimits(100ms, 5s);
    keepBusy(600);
    EXPECT_EQ(view->innerHtml().outcome, Outcome::TimedOut);
    view->setTimeLimits(5s, 5s);
    EXPECT_EQ(shown(), u"x");
    EXPECT_EQ(view->hasElement(u"yok").value, false) << "not the answer to the first question";
    EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered);

    view->setTimeLimits(300ms, 5s);
    keepBusy(60'000);
    EXPECT_EQ(view->innerHtml().outcome, Outcome::TimedOut);
    EXPECT_EQ(view->setScrollTop(5), Outcome::TimedOut);
    show(u"sıradaki"_s);
    view->setTimeLimits(5s, 5s);
    EXPECT_EQ(shown(), u"sıradaki");
    EXPECT_TRUE(view->innerHtml());
}

TEST_F(WebViewTest, SaysGoneWhenItIsClosedWhileItWaits) {
    for (const bool asked : {true, false}) {
        show(u"x"_s);
        keepBusy(60'000);
        QTimer::singleShot(100, [&] { view.reset(); });
        EXPECT_EQ(asked ? view->innerHtml().outcome : view->rewrite(u"x"_s), Outcome::Gone);
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
    ASSERT_TRUE(reload()->isVisible());
    reload()->click();
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(shown(), u"ilk");
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

TEST_F(WebViewTest, HandsOnTheFocusThePrintLinkAndTheInstaller) {
    QWidget window;
    QPushButton other(&window);
    view->setParent(&window);
    window.show();
    window.activateWindow();
    other.setFocus();
    const QSignalSpy focused(view.get(), &WebView::gotFocus), printed(view.get(), &WebView::printRequested),
        installer(view.get(), &WebView::installerRequested);
    show(topicPage(u"T"_s, u"metin"_s));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    EXPECT_EQ(focused.count(), 0);
    view->setFocus();
    EXPECT_TRUE(until([&] { return focused.count() > 0; }, 3000));
    inPage(u"document.querySelector('a[href^=javascript]').click()"_s);
    EXPECT_TRUE(until([&] { return printed.count() == 1; }));
    view->navigate(u"http://127.0.0.1:9/indir/baska.exe"_s);
    view->navigate(u"http://127.0.0.2:9/indir/kur.exe"_s);
    EXPECT_EQ(installer.count(), 0);
    view->navigate(u"http://127.0.0.1:9/indir/kur.exe"_s);
    EXPECT_EQ(installer.count(), 1);
    EXPECT_EQ(view->location(), pagePath);
    view->setParent(nullptr);
}

TEST_F(WebViewTest, FollowsLinksInsideTheFolderAlsoIntoNewWindows) {
    writeFile(onDisk(u"OKU/VQ.htm"), "<title>b</title>baslangic");
    const QString links[] = {
        u"a href=vq.htm target=_blank"_s,
        u"a href='%1'"_s,
        u"b onclick='location=\"file://\"+this.title' title=\"%2\""_s,
        u"b onclick='location=this.getAttribute(\"url\")' url=\"%1\""_s,
    };
    const QString encoded = QUrl::fromLocalFile(onDisk(u"OKU/VQ.htm")).path(QUrl::FullyEncoded);
    for (const QString& link : links) {
        show(u'<' + QString(link).replace(u"%1"_s, home).replace(u"%2"_s, encoded) +
             u" style='font-size:100px'>bağ"_s);
        QSignalSpy loaded(view.get(), &WebView::loaded);
        const auto follow = [&] {  // until the page is painted the engine drops clicks
            QTest::mouseClick(input(), Qt::LeftButton, {}, {50, 70});
            return until([&] { return view->location() != pagePath; }, 200);
        };
        EXPECT_TRUE(until(follow, 20'000)) << link.toStdString();
        EXPECT_TRUE(until([&] { return loaded.count() > 0; }, 20'000)) << link.toStdString();
        ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
        EXPECT_TRUE(until([&] { return shown() == u"baslangic"; })) << link.toStdString();
        EXPECT_EQ(view->location(), onDisk(u"OKU/VQ.htm"));
    }
}

TEST_F(WebViewTest, AsksForThePassageWhoseHeadingIsClicked) {
    QSignalSpy wanted(view.get(), &WebView::passageWanted);
    const QString heading =
        u"<font face=Verdana size =2><font color='#000080'><b%1>>>>>>Kitap >>>>>Konu</b></font></font><br>"_s;
    show(heading.arg(u" style='position:absolute;top:400px'"_s) + u"<p><b>kalın</b> söz<hr>"_s +
         heading.arg(u" id=l style='display:block;height:300px;background:#eee'"_s));
    inPage(u"l.click()"_s);    // nobody clicked
    const auto follow = [&] {  // until the page is painted the engine drops clicks
        QTest::mouseClick(input(), Qt::LeftButton, {}, {100, 200});
        return wanted.count() > 0;
    };
    ASSERT_TRUE(until(follow)) << "a click on a heading does nothing";
    EXPECT_EQ(wanted.first(), QVariantList{1});
    EXPECT_EQ(shown(u"l"_s), u">>>>>Kitap >>>>>Konu") << "the page goes with the click";
}

TEST_F(WebViewTest, AsksForTheTopicThatAClickedLinkNames) {
    QSignalSpy wanted(view.get(), &WebView::topicWanted);
    show(topicPage(u"T"_s, u"<a id=l href='konu:70005#y2-2' style='display:block;height:300px'>oraya</a>"_s));
    inPage(u"l.click(); location = 'konu:3'"_s);
    const auto follow = [&] {  // until the page is painted the engine drops clicks
        QTest::mouseClick(input(), Qt::LeftButton, {}, {100, 200});
        return wanted.count() > 0;
    };
    ASSERT_TRUE(until(follow)) << "a link to a topic is not followed";
    EXPECT_EQ(wanted.first(), (QVariantList{70005LL, u"y2-2"_s})) << "a script asked first";
    EXPECT_EQ(shown(u"l"_s), u"oraya") << "the page goes with the click";
}
