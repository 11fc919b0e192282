// Looks, zoom, finding on the page, the words of a run and windows beside each other, in the real main
// window.
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QWebEnginePage>
#include <QWebEngineView>

#include "browse/ui/find_strip.h"
#include "main_window_fixture.h"

using namespace lirovan;
using namespace lirovan::test;

namespace {

struct PageDeskTest : MainWindowTest {
    QWebEnginePage& inner(platform::WebView& view) { return *view.findChild<QWebEngineView*>()->page(); }
    QString background(platform::WebView& view) {
        std::optional<QString> result;
        view.waitUntilComplete();
        inner(view).runJavaScript(u"getComputedStyle(document.body).backgroundColor"_s,
                                  [&](const QVariant& value) { result = value.toString(); });
        EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }));
        return result.value_or(QString());
    }
    bool isChecked(const QString& item) { return find<QAction>(item)->isChecked(); }
    double zoom() { return inner(page()).zoomFactor(); }
};

const QString Night = u"rgb(22, 25, 27)"_s;

}  // namespace

TEST_F(PageDeskTest, KeepsLookAndZoomOverPagesWindowsAndARestart) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    choose(u"mnu_Gece"_s);
    choose(u"mnu_Tirnakli"_s);
    choose(u"mnu_Yaklastir"_s);
    EXPECT_TRUE(isChecked(u"mnu_Gece"_s) && !isChecked(u"mnu_Beyaz"_s) && isChecked(u"mnu_Tirnakli"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return background(page()) == Night; }));
    press(u"New"_s);
    EXPECT_EQ(background(*extra(1)->wb_Icerik), Night);
    clickNode(u"C2"_s);
    EXPECT_EQ(background(page()), Night);
    EXPECT_DOUBLE_EQ(zoom(), 1.2);
    window.reset();
    ASSERT_TRUE(start());
    EXPECT_TRUE(isChecked(u"mnu_Gece"_s));
    clickNode(u"C1"_s);
    EXPECT_EQ(background(page()), Night);
    EXPECT_DOUBLE_EQ(zoom(), 1.2);
    choose(u"mnu_GercekBoyut"_s);
    EXPECT_DOUBLE_EQ(zoom(), 1);
}

TEST_F(PageDeskTest, FindsOnThePageOfTheActiveWindow) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    page().waitUntilComplete();
    choose(u"mnu_SayfadaBul"_s);
    auto* strip = content().findChild<browse::FindStrip*>();
    auto* line = strip->findChild<QLineEdit*>(u"txt_SayfadaBul"_s);
    auto* found = strip->findChild<QLabel*>(u"lbl_Bulunan"_s);
    ASSERT_TRUE(strip->isVisible() && line->hasFocus());
    QTest::keyClicks(line, u"a"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return found->text().startsWith(u"1 / "); }))
        << found->text().toStdString();
    QTest::keyClick(line, Qt::Key_Return);
    EXPECT_TRUE(found->text().startsWith(u"2 / "));
    QTest::keyClick(line, Qt::Key_Escape);
    EXPECT_TRUE(!strip->isVisible() && strip->isHidden());
    press(u"New"_s);
    choose(u"mnu_SayfadaBul"_s);
    EXPECT_FALSE(strip->isVisible());
    EXPECT_TRUE(extra(1)->findChild<browse::FindStrip*>()->isVisible());
}

TEST_F(PageDeskTest, PutsWindowsBesideEachOtherAndBringsATopicIntoSight) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    press(u"New"_s);
    ASSERT_TRUE(extra(1));
    const auto isAbove = [&](QWidget* one, QWidget* other) {
        const QObjectList order = one->parentWidget()->children();
        return order.indexOf(one) > order.indexOf(other);
    };
    EXPECT_TRUE(isAbove(extra(1), &content()));
    clickNode(u"C2"_s);
    EXPECT_TRUE(isAbove(&content(), extra(1))) << "the topic that was clicked is seen";
    EXPECT_EQ(area().activeSubWindow(), child(u"frm_Arama"_s));
    choose(u"mnu_YanYana"_s);
    EXPECT_EQ(content().geometry().left(), child(u"frm_Arama"_s)->geometry().right() + 1);
    EXPECT_EQ(extra(1)->geometry().left(), content().geometry().right() + 1);
    EXPECT_EQ(extra(1)->geometry().right(), area().rect().right());
}

TEST_F(PageDeskTest, AnExtraWindowHasTheWordsAndTheSourceOfItsPage) {
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    box->setText(u"su"_s);
    QTest::keyClick(box, Qt::Key_Return);
    auto& results = *find<QTreeView>(u"tvw_Kitaplar_Bul"_s);
    results.expandAll();
    click(results, match(results, Qt::DisplayRole, u"Irmak Boyu"_s, Qt::MatchStartsWith));
    page().waitUntilComplete();
    press(u"New"_s);
    ASSERT_TRUE(extra(1));
    clickNode(u"C1"_s);  // the shared window shows another topic now
    area().setActiveSubWindow(extra(1));
    search::WordsStrip& strip = *extra(1)->words;
    EXPECT_TRUE(strip.isVisible() && strip.words().size() == 1);
    choose(u"mnu_KelimeSeridi"_s);
    EXPECT_FALSE(strip.isVisible());
    inner(*extra(1)->wb_Icerik).runJavaScript(u"getSelection().selectAllChildren(document.body)"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return extra(1)->wb_Icerik->hasSelection(); }));
    choose(u"mnu_KaynaklaKopyala"_s);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(u"Irmak Boyu"_s))
        << QGuiApplication::clipboard()->text().toStdString();
}
