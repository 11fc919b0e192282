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
    // A script that meets the exchange of two pages is lost with the one that goes.
    const auto reloads = [&](const QString& script, const QString& text) {
        const QSignalSpy loaded(view.get(), &WebView::loaded);
        for (int tries = 0; tries < 8 && loaded.isEmpty(); ++tries) {
            page()->runJavaScript(script);
            until([&] { return !loaded.isEmpty(); }, 3000);
        }
        return !loaded.isEmpty() && until([&] { return shown() == text; });
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
    for (const QString& way : ways) EXPECT_TRUE(reloads(way, u"bu ığ ∞"_s)) << way.toStdString();
    EXPECT_EQ(afterTheEnd(), u"bu ığ ∞");

    WebView other(engine, dialogs);
    other.navigate(pagePath, "oteki");
    ASSERT_EQ(other.waitUntilComplete(), Outcome::Answered);
    ASSERT_EQ(view->rewrite(u"<BODY>yazılmış"_s), Outcome::Answered);
    EXPECT_TRUE(reloads(ways[0], u"yazılmış"_s));
    view->navigateToText(pagePath, u"<BODY>metin ∞<IMG id=i src=\"print.gif\">"_s);
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(afterTheEnd(), u"metin ∞");
    EXPECT_EQ(inPage(u"i.naturalWidth"_s), u"1");
    EXPECT_TRUE(other.innerHtml().valueOr({}).contains(u"oteki"_s));
    navigate(pagePath);
    EXPECT_EQ(shown(), u"baska") << "navigated to without a page, the file counts";
}

namespace {

/// A summary of `megabytes`, of passages as the program makes them.
QString summary(double megabytes) {
    const QString head =
        u"<font face=Verdana size =2><font color='#000080'><b>>>>>>Kitap</b></font></font><br>"_s;
    const QString text = u"sözlerden biri "_s.repeated(130);
    QString page;
    for (int i = 0; page.size() < megabytes * 1e6; ++i)
        page +=
            head +
            u"<font face=Verdana size =2><P>%1 %2</P><P>son</font></font><br></u></p><hr>"_s.arg(i).arg(text);
    return page;
}

const std::vector<Replacement> Larger = {
    {u"</TITLE></HEAD>"_s, u"</TITLE><style>td {font-size: 17px;}</style></HEAD>"_s},
    {u"<FONT face=Verdana size=2>"_s, u"<FONT face=Verdana size=3>"_s}};

QString replaced(QString html) {
    for (const Replacement& each : Larger) html.replace(each.from, each.to);
    return html;
}

}  // namespace

TEST_F(WebLimitsTest, LaysALargePageOutWhereItIsSeenAndChangesItInPlace) {
    show(u"<html><title>ı</title><body>"_s + summary(2.1));
    const QString before = html();
    EXPECT_TRUE(before.contains(u"<BODY><FONT face=Verdana size=2><FONT color=#000080>"_s));
    EXPECT_TRUE(before.endsWith(u"<HR>\r\n</BODY>"_s)) << before.right(200).toStdString();
    EXPECT_EQ(inPage(u"try { document.body.attachShadow({mode: 'open'}) } catch (e) { 'dealt' }"_s),
              u"dealt");
    inPage(u"[...document.querySelectorAll('body > hr')].pop().scrollIntoView()"_s);
    EXPECT_TRUE(until([&] {
        return inPage(
                   u"[...Array(40).keys()].some(i => document.elementFromPoint(60, innerHeight * i / 40)"
                   ".tagName === 'B')"_s) == u"true";
    })) << "the end is laid out when it is gone to";
    inPage(
        u"const b = document.createElement('b'); b.textContent = 'araya'; document.body.insertBefore(b, "
        "document.body.childNodes[4]); scrollTo(0, 0)"_s);
    EXPECT_TRUE(until([&] { return inPage(u"b.offsetHeight"_s).toInt() > 0; }))
        << "what a script adds is seen";
    inPage(u"b.remove()"_s);

    inPage(u"document.querySelector('font').mark = 1"_s);
    ASSERT_EQ(view->replaceInPlace(Larger).value, true);
    EXPECT_TRUE(html() == replaced(before)
                              .replace(u"</TITLE><style>"_s, u"</TITLE>\r\n<STYLE>"_s)
                              .replace(u"</style></HEAD>"_s, u"</STYLE>\r\n</HEAD>"_s));
    EXPECT_EQ(inPage(u"document.querySelector('font').mark"_s), u"1") << "nothing is written anew";
    const QString changed = html();
    const QSignalSpy loaded(view.get(), &WebView::loaded);
    page()->runJavaScript(u"location.reload()"_s);
    EXPECT_TRUE(until([&] { return loaded.count() > 0; }));
    EXPECT_TRUE(html() == changed) << "loaded again, it has the changes";

    const auto process = pid_t(page()->renderProcessPid());
    view->setFocus();
    ASSERT_TRUE(until([&] { return input()->hasFocus(); }));
    show(u"sıradaki"_s);
    EXPECT_TRUE(until([&] { return input() && input()->hasFocus(); })) << "and keeps the keys";
    EXPECT_EQ(shown(), u"sıradaki");
    EXPECT_TRUE(until([&] { return ::kill(process, 0) != 0; })) << "a large page goes with its process";
    EXPECT_EQ(view->replaceInPlace(Larger).value, false) << "a small page is written anew";
}

TEST_F(WebLimitsTest, ShowsADeeplyNestedPageLikeAnyOther) {
    QElapsedTimer time;
    time.start();
    show(u"<html><title>d</title><body>"_s + u"<div>"_s.repeated(50'000) + u"dip"_s);
    EXPECT_EQ(shown(), u"dip");
    EXPECT_LT(time.elapsed(), 5000) << "as it stands it takes a minute";
}

TEST_F(WebLimitsTest, CoversAPageThatHasNoTimeToBeShown) {
    show(u"eski"_s);
    auto* notice = view->findChild<QPushButton*>()->parentWidget();
    view->navigate(pagePath, "<script>for (const end = Date.now() + 4000; Date.now() < end;);</script>yeni");
    EXPECT_TRUE(until([&] { return notice->isVisible(); })) << "the page before would stay on view";
    EXPECT_TRUE(until([&] { return !notice->isVisible(); })) << "it has come";
    ASSERT_EQ(view->waitUntilComplete(), Outcome::Answered);
    EXPECT_EQ(shown(), u"yeni");
}

TEST_F(WebLimitsTest, ShowsWhatAnotherViewWasGivenWithItsChanges) {
    view->navigate(pagePath,
                   toWindows1254(u"<html><title>ı</title><script></script><body>"_s + summary(2.1)));
    ASSERT_EQ(view->replaceInPlace(Larger).value, true);  // while it loads
    WebView other(engine, dialogs);
    other.showSameAs(*view);
    for (WebView* each : {view.get(), &other}) {
        ASSERT_EQ(each->waitUntilComplete(), Outcome::Answered);
        const QString html = each->innerHtml().valueOr({});
        EXPECT_GT(html.count(Larger[1].to), 1000);
        EXPECT_FALSE(html.contains(Larger[1].from)) << "what came later has it, too";
    }
}
