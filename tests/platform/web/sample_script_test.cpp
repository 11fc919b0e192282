// The sample library's page script in the real page view: its right-click menu, and the start-page entry that
// is taken out of a page opened in a new window.
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct SampleScriptTest : WebTest {
    const QString home = folder.pageText(u"\\OKU\\VQ.htm");
    const QString homeEntry = u"<DIV class=menuitems url=\"%1\">Giriş Sayfası</DIV>\r\n<HR>"_s.arg(home);

    QString fragment() const {
        QFile file(QStringLiteral(LIROVAN_SOURCE_DIR "/samples/kitaplik/betik.html"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).replace(u"homehomehomehome"_s, home);
    }

    /// A topic whose own script does what a reader would.
    void showAndRun(const QString& script) {
        show(topicPage(u"BİR"_s, fragment() + u"Metin.<script>"_s + script + u"</script>"_s));
    }

    QString html() { return view->innerHtml().valueOr(QString()); }
};

const QString RightClick =
    u"document.body.dispatchEvent(new MouseEvent('contextmenu', {bubbles: true, cancelable: true, clientX: "
    u"9999, "
    "clientY: 20}));"_s;
const QString ArrowDown =
    u"document.dispatchEvent(new KeyboardEvent('keydown', {key: 'ArrowDown', bubbles: true}));"_s;

}  // namespace

TEST_F(SampleScriptTest, HoldsTheStartPageEntryInTheFormThatNewWindowsTakeOut) {
    showAndRun({});
    ASSERT_TRUE(html().contains(homeEntry)) << html().toStdString();
    showAndRun(RightClick + ArrowDown + ArrowDown);
    QString opened = html();
    ASSERT_TRUE(opened.contains(u"display: block"_s)) << opened.toStdString();
    ASSERT_TRUE(opened.contains(homeEntry)) << opened.toStdString();

    opened.remove(homeEntry);
    ASSERT_EQ(view->rewrite(opened), Outcome::Answered);
    EXPECT_FALSE(html().contains(u"Giriş Sayfası</DIV>"_s));
    EXPECT_TRUE(html().contains(u">Yazdır</DIV>"_s));
}

TEST_F(SampleScriptTest, GoesToTheStartPageAndPrints) {
    write(u"OKU/VQ.htm", "<html><title>Giriş</title>Lirovan</html>");
    const QString choose = u"document.getElementsByClassName('menuitems')[%1].click();"_s;
    showAndRun(u"window.print = function () { document.title = 'printed'; };"_s + RightClick + choose.arg(1));
    EXPECT_EQ(inPage(u"document.title"_s), u"printed"_s);
    EXPECT_TRUE(html().contains(u"display: none"_s));

    showAndRun(u"setTimeout(function () { "_s + RightClick + choose.arg(0) + u" }, 0);"_s);
    EXPECT_TRUE(until([this] { return html().contains(u"Lirovan"_s); })) << html().toStdString();
}
