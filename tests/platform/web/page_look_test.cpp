// The looks on real pages: every text can be read, marks and pictures stay, and nothing of it is in the page.
#include "platform/core/page_look.h"

#include <QRegularExpression>

#include "search/pages/highlighter.h"
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

// What a book may bring: grounds, colours, links, tables, a mark in each colour, words within words.
QString colourfulPage() {
    QString text =
        u"<style>body { background: #e4e2dc } td[width='75%'] { color: #1d2326 } a { color: #1f6f78 }</style>"
        "<p>düz <font color=red>kırmızı</font> <font color=#FFFF00>sarı</font> "
        "<span style='color:#cccccc'>soluk</span> <a href='konu:12'>bağ <b>kalın</b></a> "
        "<table border=1><tr><td bgcolor=#222222>koyu hücre</td><td>hücre</td></tr></table>"
        "<div id=kutu class=menuitems>menü</div><img src=print.gif>"_s;
    for (const QStringView colour : lirovan::search::VurguRenkleri)
        text +=
            u"<a name='ggggittt'></a><input type='submit' name='ggggittt0' style='width:0px; height:0px;'>"
            "<font color='#000080'><span style='background-color:%1'>iç<input type='submit' name="
            "'ggggittt1'><font color='#000080'><span style='background-color: #FB537D'>içe</font></span>"
            "</font></span> "_s.arg(colour);
    return topicPage(u"Renkler"_s, text);
}

const QString Summary =
    u"<font face=Verdana size =2><font color='#000080'><b>>>>>>Kitap >>>>>Konu</b></font></font><br><p>önce "
    "<font color='#000080'><span style='background-color:#00FF00'>söz</font></span> sonra</p><hr>"_s;

// The least contrast of a text of the page against the ground behind it, and the text.
const QString LeastOfPage =
    uR"((function () {
  const channel = c => { c /= 255; return c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4; };
  const light = c => 0.2126 * channel(c[0]) + 0.7152 * channel(c[1]) + 0.0722 * channel(c[2]);
  const parts = text => text.match(/[\d.]+/g).map(Number);
  let least = 21, where = '';
  const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  for (let node; (node = walker.nextNode());) {
    if (!node.data.trim() || node.parentNode.localName === 'style') continue;
    let ground = [255, 255, 255, 1];
    for (let up = node.parentNode; up && up.nodeType === 1; up = up.parentNode) {
      const own = parts(getComputedStyle(up).backgroundColor);
      if (own.length < 4 || own[3] > 0) { ground = own; break; }
    }
    const [one, two] = [light(parts(getComputedStyle(node.parentNode).color)), light(ground)];
    const ratio = (Math.max(one, two) + 0.05) / (Math.min(one, two) + 0.05);
    if (ratio < least) { least = ratio; where = node.data.trim(); }
  }
  return least.toFixed(2) + ' ' + where;
})())"_s;

struct PageLookTest : WebTest {
    LookColours desktop{.ground = 0x2E3436, .ink = 0xEEEEEC, .link = 0x729FCF};

    void look(const PageLook& look) {
        engine->style().set(lookStyle(look, desktop), QColor(QRgb(coloursOf(look.colours, desktop).ground)));
    }
    QString style(const QString& element, const QString& property) {
        return inPage(u"getComputedStyle(%1).%2"_s.arg(element, property));
    }
};

const QString FirstMark = u"document.querySelector('input[name=ggggittt0] + font > span')"_s;

}  // namespace

TEST_F(PageLookTest, LeavesEveryTextReadable) {
    // "Beyaz" leaves a book its own colours; of those without any, and of all marks, it is measured too.
    static const QRegularExpression own(
        u"<style>.*?</style>|<font color=(red|#FFFF00)>|style='color:[^']*'| bgcolor=#222222"_s);
    look({});
    for (const QString& page : {colourfulPage().remove(own), Summary}) {
        show(page);
        const QString least = inPage(LeastOfPage);
        EXPECT_GE(least.section(u' ', 0, 0).toDouble(), 4.5) << least.toStdString();
    }
    const QString pages[] = {colourfulPage(), Summary};
    const LookColours grey{.ground = 0x808080, .ink = 0x8A8A8A, .link = 0x7F7F7F};
    const std::pair<PageColours, LookColours> looks[] = {{PageColours::Sepia, desktop},
                                                         {PageColours::Night, desktop},
                                                         {PageColours::Desktop, desktop},
                                                         {PageColours::Desktop, grey},
                                                         {PageColours::Desktop, {}}};
    for (const auto& [colours, around] : looks) {
        desktop = around;
        for (const QString& page : pages) {
            look({colours});
            show(page);
            const QString least = inPage(LeastOfPage);
            EXPECT_GE(least.section(u' ', 0, 0).toDouble(), 4.5)
                << int(colours) << ' ' << least.toStdString();
        }
    }
    for (const QStringView colour : lirovan::search::VurguRenkleri)
        EXPECT_GE(contrast(MarkInk, colour.sliced(1).toUInt(nullptr, 16)), 4.5) << colour.toUtf8().data();
}

TEST_F(PageLookTest, ChangesAtOnceAndIsNotInThePage) {
    show(colourfulPage());
    const QString before = html();
    const QString plain = style(u"document.body"_s, u"backgroundColor"_s);
    look({PageColours::Night, true, LineWidth::Narrow, LineSpacing::Wide});
    EXPECT_EQ(style(u"document.body"_s, u"backgroundColor"_s), u"rgb(22, 25, 27)");
    EXPECT_EQ(style(FirstMark, u"backgroundColor"_s), u"rgb(0, 255, 0)") << "marks keep their colours";
    EXPECT_TRUE(style(u"document.querySelector('td font')"_s, u"fontFamily"_s).contains(u"serif"_s));
    EXPECT_EQ(inPage(u"document.querySelector('table').offsetWidth"_s), u"640") << "40 rem";
    inPage(u"document.body.insertAdjacentHTML('beforeend', '<a id=l href=konu:1>bağ</a>'); 0"_s);
    EXPECT_EQ(style(u"document.getElementById('l')"_s, u"color"_s), u"rgb(134, 197, 201)") << "a link's own";
    inPage(u"document.getElementById('l').remove(); 0"_s);
    EXPECT_EQ(html(), before);
    // A page that is written anew has it too.
    ASSERT_EQ(view->rewrite(before), Outcome::Answered);
    EXPECT_EQ(style(u"document.body"_s, u"backgroundColor"_s), u"rgb(22, 25, 27)");
    look({});
    EXPECT_EQ(style(u"document.body"_s, u"backgroundColor"_s), plain);
}

TEST_F(PageLookTest, GivesASummaryMarginsAndTheTypeOfATopic) {
    show(topicPage(u"T"_s, u"<span id=w>söz</span>"_s));
    const QString size = style(u"document.getElementById('w')"_s, u"fontSize"_s);
    EXPECT_EQ(style(u"document.body"_s, u"paddingLeft"_s), u"0px");
    EXPECT_EQ(style(u"document.body"_s, u"backgroundColor"_s), u"rgb(255, 255, 255)") << "no band below";
    show(Summary);
    EXPECT_EQ(style(u"document.querySelector('b')"_s, u"fontSize"_s), size);
    EXPECT_EQ(style(u"document.querySelector('b')"_s, u"fontFamily"_s), u"Arial");
    EXPECT_EQ(style(u"document.body"_s, u"paddingLeft"_s), u"30px");
    ASSERT_EQ(view->rewrite(html().replace(u"face=Verdana size=2"_s, u"face=Verdana size=3"_s)),
              Outcome::Answered);
    EXPECT_EQ(style(u"document.querySelector('b')"_s, u"fontSize"_s), u"18px") << "larger type is larger";
}

TEST_F(PageLookTest, KeepsWhatIsReadAtTheUpperEdge) {
    show(topicPage(u"T"_s, u"söz ve söz, "_s.repeated(600) + u"<span id=w>burada</span> "_s +
                               u"söz ve söz, "_s.repeated(2000)));
    const QString top = u"document.getElementById('w').getBoundingClientRect().top"_s;
    inPage(
        u"window.seen = 0; addEventListener('scroll', () => { seen = 1; }); "
        "document.scrollingElement.scrollTop += %1 - 4"_s.arg(top));
    ASSERT_TRUE(until([&] { return inPage(u"seen"_s) == u"1"; }));
    const auto isAtEdge = [&] { return std::abs(inPage(top).toDouble()) < 80; };
    ASSERT_TRUE(isAtEdge()) << inPage(top).toStdString();
    look({PageColours::Night, true, LineWidth::Narrow, LineSpacing::Wider});
    EXPECT_TRUE(until(isAtEdge)) << inPage(top).toStdString();
    view->setZoom(1.6);
    EXPECT_TRUE(until([&] { return inPage(u"innerWidth"_s).toInt() < 500; }));
    EXPECT_TRUE(until(isAtEdge, 3000)) << inPage(top).toStdString();
}

TEST_F(PageLookTest, OutlinesOneMarkUntilTheNextPage) {
    const QString width = u"outlineWidth"_s;
    show(topicPage(u"T"_s, hit(0, u"bir"_s) + hit(1, u"iki"_s)));
    const QString before = html();
    view->outlineMark(u"ggggittt", 0);
    EXPECT_EQ(style(FirstMark, u"outlineStyle"_s), u"solid");
    view->outlineMark(u"ggggittt", 1);
    EXPECT_EQ(style(FirstMark, u"outlineStyle"_s), u"none");
    EXPECT_EQ(style(u"document.querySelector('input[name=ggggittt1] + font > span')"_s, width), u"2px");
    EXPECT_EQ(html(), before);
}
