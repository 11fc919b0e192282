// The old markup form of a page's inner HTML: what the page rewrites look for in it, and that it says the
// same.
#include "support/places.h"
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

/// Every node of the page, written without regard to the form; blanks that mean nothing are left out.
constexpr QStringView ShapeScript =
    uR"((function shape(node) {
    const blank = n => n && n.nodeType === 3 && !n.data.trim();
    if (blank(node) && (node.parentNode.nodeName === 'HEAD' || (node.nextSibling && node.nextSibling.nodeName === 'HR' &&
        node.previousSibling && node.previousSibling.nodeName === 'DIV' && node.parentNode.nodeName !== 'PRE'))) return '';
    if (node.nodeType === 3) return JSON.stringify(node.data);
    if (node.nodeType === 8) return '!' + JSON.stringify(node.data);
    if (node.nodeType !== 1) return '?' + node.nodeType;
    const attributes = node === document.documentElement ? '' :
        JSON.stringify(Array.from(node.attributes, a => [a.name, a.value]));
    const content = node.content || node;
    return '(' + node.nodeName + attributes + Array.from(content.childNodes, shape).join('') + ')';
})(document.documentElement) + document.compatMode)";

struct PageFormTest : WebTest {
    const QString homeEntry = u"<DIV class=menuitems url=\"%1\">Giriş Sayfası</DIV>\r\n<HR>"_s.arg(home);

    void expectInForm(const QString& piece) {
        EXPECT_TRUE(html().contains(piece)) << piece.toStdString() << "\n" << html().toStdString();
    }
};

}  // namespace

TEST_F(PageFormTest, HoldsTheTextsThatThePageRewritesReplace) {
    for (const QString& between : {u""_s, u"\r\n"_s, u"\n  "_s}) {
        show(topicPage(
            u"BİR"_s,
            u"<div id=ie5menu><div class=\"menuitems\" url=\"%1\">Giriş Sayfası</div>%2<hr>"
            "<div class=\"menuitems\" url=\"javascript:history.back();\">Geri</div></div>"
            "<font face=Verdana size=2>x</font><IMG SRC='duaimages/dua 1.gif'>"_s.arg(home, between)));
        for (const QString& piece : {u"</TITLE></HEAD>"_s, u" src=\"print.gif\""_s, homeEntry,
                                     u" src=\"duaimages/dua 1.gif\""_s, u"<FONT face=Verdana size=2>"_s})
            expectInForm(piece);
    }
}

TEST_F(PageFormTest, SetsAStyleBlockOffByLineBreaks) {
    const QString style = u"%1td {font-size: %3px;font-family: Arial;}%2</HEAD>"_s;
    const QString inserted = style.arg(u"</TITLE><style>"_s, u"</style>"_s);
    const QString returned = style.arg(u"</TITLE>\r\n<STYLE>"_s, u"</STYLE>\r\n"_s);
    show(topicPage(u"İKİ"_s, u"metin"_s));
    for (int size = 17; size < 20; ++size) {
        QString page = html();
        page.replace(size == 17 ? u"</TITLE></HEAD>"_s : returned.arg(size - 1), inserted.arg(size));
        ASSERT_TRUE(page.contains(inserted.arg(size))) << page.toStdString();
        ASSERT_EQ(view->rewrite(page), Outcome::Answered);
        expectInForm(returned.arg(size));
    }
    EXPECT_EQ(
        inPage(u"getComputedStyle(document.querySelector('td font[face=Arial]').parentNode).fontSize"_s),
        u"19px"_s);
}

TEST_F(PageFormTest, WritesNamesValuesAndTextsAsTheOldFormDoes) {
    const std::pair<QString, QString> cases[] = {
        {u"<b>x</b><BR/><i class=''>y</i>"_s, u"<B>x</B><BR><I class=\"\">y</I>"_s},
        {u"<span style='background-color: #00FF00'>a</span><span style='color:red'>b</span>"_s,
         u"<SPAN style=\"background-color: #00FF00\">a</SPAN><SPAN style=color:red>b</SPAN>"_s},
        {u"<a href=x.htm title='\"tırnak\"' name=n>z</a>"_s,
         u"<A href=\"x.htm\" title=\"&quot;tırnak&quot;\" name=n>z</A>"_s},
        {u"a &lt; b &amp;amp; c&nbsp;d &quot;e&quot; ∞"_s, u"a &lt; b &amp;amp; c&nbsp;d \"e\" ∞"_s},
        {u"bir\r\niki\nüç"_s, u"bir\r\niki\r\nüç"_s},
        {u"<td nowrap>x<input disabled value=1>"_s, u"x<INPUT disabled=\"\" value=1>"_s},
        {u"<img src='/a&b/c=1&d;&amp;copy=x'>"_s, u"<IMG src=\"/a&b/c=1&d;&copy=x\">"_s},
        {u"<img src='a&amp;copy;b'>"_s, u"<IMG src=\"a&amp;copy;b\">"_s},
    };
    for (const auto& [content, expected] : cases) {
        show(u"<html><title>t</title><body><div id=c>"_s + content + u"</div></html>"_s);
        expectInForm(u"<DIV id=c>"_s + expected + u"</DIV>"_s);
    }
}

TEST_F(PageFormTest, SaysTheSameWhenWrittenBack) {
    const QString contents[] = {
        u"<p>Bir <b>iki <i>üç</b> dört</i><P>beş<br>altı"_s,
        hit(0, u"kelime"_s) + u" ve "_s + hit(1, u"kelime"_s),
        u"<font color=red><span style='background-color: #00FFFF'>yanlış</font></span> sıra <b><p>x</b>y</p>"_s,
        u"<PRE>\n\nilk satır boş\r\n  girinti <b>koyu</b>\n</PRE><pre>\r\nx</pre><listing>\n\na</listing>"_s,
        u"<pre><div>a</div>\n\n<hr></pre><div>a</div>\n\n<hr>"_s,
        u"<textarea>\n\nmetin &lt;b&gt; &amp;amp;</textarea><input type=text value='a \"b\" c'><select><option selected>bir</select>"_s,
        u"<script>if (1 < 2 && 3 > 2) window.q = '<b>&amp;</b>';\n// ğüşıöç\n</script><style>p > b {color: red}</style>"_s,
        u"<!-- yorum -- <b>x</b> --><!><?xml?>son<!doctype x>"_s,
        u"&lt;&gt;&amp;&nbsp;&quot;&#39;&#305;&#13;&#8734;&#128512; &amp;lt; &ouml; &bilinmez;"_s,
        u"<table><caption>c</caption><tr><th>a<td>b<tr><td colspan=2><table><tr><td>iç</table></table>"_s,
        u"<table>dışarı<tr><b>kaçan</b><td>x</table>"_s,
        u"<ol start=101 style='line-height:200%'><li>bir</li><li>iki<ul><li>üç</ul></ol><dl><dt>a<dd>b</dl>"_s,
        u"<a name=x></a><a href='a b.htm?c=1&amp;copy=2#d' title=\"it's\" onclick='f(\"a\")'>bağ</a>"_s,
        u"<xmp><b>&amp;</b></xmp><noscript><b>&amp;</b></noscript><iframe></iframe><template><td>x</td></template>"_s,
        u"<svg viewBox='0 0 1 1'><linearGradient id=a></linearGradient><style>a&gt;b</style></svg><math><mi>x</mi></math>"_s,
        u"<form><input name=open><input type=hidden name=write value=1></form><center><font size=+1>x</center>"_s,
        u"boş nitelik <font color='' size=>x</font> <img alt='a\nb\tc' src=''>"_s,
        u"<div title='&#13;&#10;&nbsp;&amp;nbsp;'>x</div>"_s,
        QString(400, u'a').replace(u"a"_s, u"<font size=2>"_s) + u"derin"_s,
        u"son <plaintext><b>düz & metin</b> <"_s,
    };
    QStringList pages = {
        u""_s,
        u"yalnız metin"_s,
        u"<html lang=tr><head>\n<meta "
        u"charset=utf-8>\n<title>x</title>\n<style>a{}</style><script>1</script>\n</head>"
        "\n<body class='a b' onload='window.y=1'>\n<p>x</body></html>\n"_s,
        u"<html><head></head><frameset cols=50%,50%><frame name=a><frame name=b></frameset></html>"_s,
    };
    for (const QString& content : contents) pages += topicPage(u"DENEME &amp; <SON>"_s, content);
    for (const QString& page : pages) {
        show(page);
        const QString before = inPage(ShapeScript.toString()), once = html();
        ASSERT_TRUE(before.endsWith(u"BackCompat"));
        ASSERT_EQ(view->rewrite(once), Outcome::Answered);
        EXPECT_EQ(inPage(ShapeScript.toString()), before) << once.toStdString();
        EXPECT_EQ(html(), once);
    }
}

TEST_F(PageFormTest, IsNotLedAstrayByNamesOfElements) {
    const QString names =
        u"body documentElement scrollingElement images readyState childNodes firstChild lastChild "
        u"nextSibling "
        "previousSibling parentNode nodeType tagName namespaceURI attributes textContent"_s;
    QString images = u"<FORM id=f>"_s, inputs;
    for (const QString& name : names.split(u' ')) {
        images += u"<IMG name=%1>"_s.arg(name);
        inputs += u"<INPUT name=%1>"_s.arg(name);
    }
    const QString form = images + inputs + u"</FORM>"_s;
    show(topicPage(u"AD"_s, form + hit(0, u"kelime"_s) + u"<p style=height:2000px>x"_s));
    for (const int rewritten : {0, 1}) {
        expectInForm(form);
        EXPECT_EQ(view->setScrollTop(100), Outcome::Answered) << rewritten;
        EXPECT_EQ(view->scrollTop().value, 100) << rewritten;
        EXPECT_EQ(view->offsets(u"ggggittt").valueOr({}).size(), 1U) << rewritten;
        ASSERT_EQ(view->rewrite(html()), Outcome::Answered);
    }
}

TEST_F(PageFormTest, HoldsTheStartPageEntryOfTheSampleThatNewWindowsTakeOut) {
    const QByteArray fragment = readFile(projectFile(u"samples/kitaplik/betik.html"_s));
    const QString rightClick =
        u"document.body.dispatchEvent(new MouseEvent('contextmenu', {bubbles: true, cancelable: true}));"
        "for (let i = 0; i < 2; ++i)"
        "    document.dispatchEvent(new KeyboardEvent('keydown', {key: 'ArrowDown', bubbles: true}));"_s;
    for (const QString& script : {QString(), rightClick}) {
        show(topicPage(u"BİR"_s, QString::fromUtf8(fragment).replace(u"homehomehomehome"_s, home) +
                                     u"Metin.<script>%1</script>"_s.arg(script)));
        expectInForm(homeEntry);
    }
    expectInForm(u"display: block"_s);
    ASSERT_EQ(view->rewrite(html().remove(homeEntry)), Outcome::Answered);
    EXPECT_FALSE(html().contains(u"Giriş Sayfası</DIV>"_s));
    expectInForm(u">Yazdır</DIV>"_s);
}
