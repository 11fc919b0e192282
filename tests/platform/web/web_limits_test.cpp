// Pages that go on and on, want too much or share their file, and what the view lets them do.
#include <signal.h>

#include <QElapsedTimer>
#include <QPushButton>
#include <QSignalSpy>

#include "web_fixture.h"

using namespace lirovan::test;
using namespace std::chrono_literals;

namespace {
using WebLimitsTest = WebTest;
}

TEST_F(WebLimitsTest, LeavesAPageWhoseScriptNeverEnds) {
    const QString scripts[] = {u"setTimeout(() => { for (;;); })"_s,
                               u"addEventListener('pagehide', () => { for (;;); })"_s,
                               u"addEventListener('beforeunload', () => { for (;;); })"_s};
    for (const QString& script : scripts) {
        show(u"<script>%1</script>eski"_s.arg(script));
        const auto process = pid_t(page()->renderProcessPid());
        QTest::qWait(50);  // the script runs, and what is asked now is asked of it
        QElapsedTimer time;
        time.start();
        show(u"sıradaki"_s);
        EXPECT_EQ(shown(), u"sıradaki") << script.toStdString();
        EXPECT_LT(time.elapsed(), 5000) << script.toStdString();
        EXPECT_TRUE(until([&] { return ::kill(process, 0) != 0; })) << "its process goes, too";
    }
}

TEST_F(WebLimitsTest, WaitsForACommandsFirstQuestionOnly) {
    view->setTimeLimits(1s, 5s);
    show(u"x"_s);
    page()->runJavaScript(u"for (;;);"_s);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(view->innerHtml().outcome, Outcome::TimedOut);
    EXPECT_EQ(view->rewrite(u"y"_s), Outcome::TimedOut);
    EXPECT_EQ(view->offsets(u"a").outcome, Outcome::TimedOut);
    EXPECT_EQ(view->setScrollTop(1), Outcome::TimedOut);
    EXPECT_LT(time.elapsed(), 2000);
}

TEST_F(WebLimitsTest, BoundsThePagesMemory) {
    show(u"x"_s);
    const QString got = inPage(
        u"var a = []; try { while (a.length < 63) a.push(new ArrayBuffer(1 << 28)) } "
        "catch (e) {} '' + a.length"_s);
    EXPECT_TRUE(0 < got.toInt() && got.toInt() <= 16) << got.toStdString();
}

TEST_F(WebLimitsTest, OpensNoPrintDialogOverAnotherAndAsksAboutAPageThatGoesOn) {
    int open = 0, most = 0, dialogsOpened = 0;
    QObject::connect(view.get(), &WebView::printRequested, view.get(), [&] {
        most = std::max(most, ++open);
        ++dialogsOpened;
        until([] { return false; }, 100);  // the dialog stands open
        --open;
    });
    dialogs.answer(Answer::Yes).answer(Answer::No);
    const QString endless = u"<script>setInterval(() => print(), 5)</script>x"_s;
    show(endless);
    EXPECT_TRUE(until([&] { return dialogsOpened > 5; }));
    EXPECT_EQ(most, 1);
    EXPECT_EQ(dialogs.messages.size(), 1U) << "once a page";

    show(u"x"_s);
    dialogsOpened = 0;
    show(endless);
    EXPECT_TRUE(until([&] { return dialogs.messages.size() == 2; }));
    EXPECT_EQ(dialogsOpened, 3);
    inPage(u"location.reload()"_s);
    EXPECT_FALSE(until([&] { return dialogsOpened > 3 || dialogs.messages.size() > 2; }, 500));
    show(u"<script>print()</script>"_s);
    EXPECT_TRUE(until([&] { return dialogsOpened == 4; })) << "another page is heard";
}

TEST_F(WebLimitsTest, ShowsThePageThatItWasGivenWhateverTheFileHolds) {
    const auto reload = [&](const QString& script) {
        const QSignalSpy loaded(view.get(), &WebView::loaded);
        page()->runJavaScript(script);
        EXPECT_TRUE(until([&] { return loaded.count() > 0; }));
        return shown();
    };
    const auto afterTheEnd = [&] {
        ::kill(pid_t(page()->renderProcessPid()), SIGKILL);
        auto* button = view->findChild<QPushButton*>();
        EXPECT_TRUE(until([&] { return button->isVisible(); }));
        button->click();
        EXPECT_EQ(view->waitUntilComplete(), Outcome::Answered);
        return shown();
    };
    const QString ways[] = {u"location.reload()"_s, u"location = 'oku.html'"_s,
                            u"location.href = 'OKU.HTML'"_s};
    view->navigate(pagePath, toWindows1254(u"bu ığ ∞"_s));  // there is no file at all
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    writeFile(onDisk(u"OKU/oku.html"), "baska");
    for (const QString& way : ways) EXPECT_EQ(reload(way), u"bu ığ ∞");
    EXPECT_EQ(afterTheEnd(), u"bu ığ ∞");

    WebView other(engine, dialogs);
    other.navigate(pagePath, "oteki");
    ASSERT_EQ(other.waitUntilComplete(), Outcome::Answered);
    ASSERT_EQ(view->rewrite(u"<BODY>yazılmış"_s), Outcome::Answered);
    EXPECT_EQ(reload(ways[0]), u"yazılmış");
    view->navigateToText(pagePath, u"<BODY>metin ∞<IMG id=i src=\"print.gif\">"_s);
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(afterTheEnd(), u"metin ∞");
    EXPECT_EQ(inPage(u"i.naturalWidth"_s), u"1");
    EXPECT_TRUE(other.innerHtml().valueOr({}).contains(u"oteki"_s));
    navigate(pagePath);
    EXPECT_EQ(shown(), u"baska") << "navigated to without a page, the file counts";
}
