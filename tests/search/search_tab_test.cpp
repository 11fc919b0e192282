// The search tab and its decisions, as the user has them.
#include "search/ui/search_tab.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QHeaderView>
#include <QTest>
#include <QTimer>
#include <functional>

#include "browse/window_ports.h"
#include "support/fake_windows.h"
#include "support/files.h"
#include "support/library_file.h"
#include "support/scripted_dialogs.h"
#include "support/user_places.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;
using platform::Answer;
namespace button = platform::button;

namespace {

class SearchTabTest : public testing::Test {
  protected:
    SearchTabTest() {
        file.execute(u"BEGIN").author(1, u"Sabri").author(2, u"Zeynep");
        file.book(10, 1, u"YAZ").book(20, 1, u"KIŞ").book(30, 2, u"GÜZ");
        file.topic(1, 10, u"DAĞ<BR>YOLU", u"<P>ilim ve irfan</P><P>ilim</P>");
        file.topic(2, 20, u"AY", u"<P>irfan</P>");
        for (int topic = 100; topic < 500; ++topic) file.topic(topic, 30, u"KONU", u"<P>söz</P>");
        library = file.execute(u"COMMIT").open();
        content.page.elements = {u"ggggittt0"_s};  // a page has the buttons that were written to its file
        tab = std::make_unique<SearchTab>(
            SearchTab::Parts{frame, dialogs, content, library, file.appFolder(), commands, state, asked});
        tree = child<QTreeView>("tvw_Kitaplar_Bul");
        tab->show();
    }

    template <class Widget>
    Widget* child(const char* name) const {
        return tab->findChild<Widget*>(QString::fromUtf8(name));
    }
    QString text() const { return child<QLineEdit>("txt_Bul")->text(); }
    bool isOn(const char* box) const { return child<QCheckBox>(box)->isChecked(); }
    void press(const char* name) const { child<QAbstractButton>(name)->click(); }
    void type(const QString& query) const { child<QLineEdit>("txt_Bul")->setText(query); }
    // Searches; whatever comes of it, nothing is left under way.
    void find(const QString& query) const {
        type(query);
        QTest::keyClick(child<QLineEdit>("txt_Bul"), Qt::Key_Return);
        expectRunning(false);
    }
    void sort(ListOrder order) const {
        tab->mnu_Sirala_Click(order);
        expectRunning(false);
    }
    void click(const QString& key, int nth = 0) const {
        const QModelIndex at = found(key).value(nth);
        tree->scrollTo(at);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(at).center());
        expectRunning(false);
    }
    void expectRunning(bool on) const {
        EXPECT_EQ(child<QPushButton>("cmd_Bul")->isVisible(), !on);
        EXPECT_EQ(child<QPushButton>("cmdDur")->isVisible(), on);
        EXPECT_EQ(child<QGroupBox>("Frame1")->isEnabled(), !on);
        EXPECT_EQ(tree->viewport()->cursor().shape() == Qt::ForbiddenCursor, on);
        EXPECT_TRUE(tab->isRunning() == on && frame.locked == on);
        EXPECT_TRUE(frame.progressVisible == on && frame.toolTextVisible == on);
        EXPECT_FALSE(child<QFrame>("fraStopper")->isVisible() || frame.busy);
    }
    // What the only message since this was last asked says; empty: none.
    QString said() {
        EXPECT_LE(dialogs.messages.size(), 1u);
        const QString text = dialogs.messages.empty() ? QString() : dialogs.messages.back().text;
        dialogs.messages.clear();
        return text;
    }
    // From now on, whenever events run.
    void whenEventsRun(const std::function<void()>& action) {
        events.disconnect();
        events.callOnTimeout(tab.get(), action);
        events.start(0);
    }

    QModelIndex below(const QModelIndex& parent, int row = 0) const {
        return tree->model()->index(row, 0, parent);
    }
    QModelIndexList found(const QVariant& value, int role = ResultTreeModel::KeyRole) const {
        return tree->model()->match(below({}), role, value, -1, Qt::MatchStartsWith | Qt::MatchRecursive);
    }
    // Shown texts, children indented, as deep as `depth`.
    QStringList rows(int depth, const QModelIndex& parent = {}, const QString& indent = {}) const {
        QStringList lines;
        for (int row = 0; depth > 0 && row < tree->model()->rowCount(parent); ++row) {
            lines += indent + below(parent, row).data().toString();
            lines += rows(depth - 1, below(parent, row), indent + u' ');
        }
        return lines;
    }
    QByteArray page() const { return test::readFile(file.filePath(u"OKU/oku.html"_s)); }

    test::LibraryFile file;
    data::Library library;
    test::FakeMainFrame frame;
    test::ScriptedDialogs dialogs;
    test::FakeContentView content;
    browse::PageCommands commands{frame};
    browse::SearchTabState state;
    AskedSearches asked;
    std::unique_ptr<SearchTab> tab;
    QTreeView* tree;
    QTimer events;
};

}  // namespace

TEST_F(SearchTabTest, ShowsWhatWasFound) {
    const QAbstractItemModelTester tester(tree->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    find(u"irfan"_s);
    EXPECT_EQ(rows(4).join(u'|'),
              u"Aranan :\"irfan\"| Sabri (2 adet)|  Özet|  Yaz  (1 adet)|   Dağ Yolu  (1 adet)|"
              "  Kış  (1 adet)|   Ay  (1 adet)| Zeynep");
    const QModelIndex root = below({});
    EXPECT_TRUE(tree->isExpanded(root) && tree->isExpanded(below(root)));
    EXPECT_EQ(tree->currentIndex(), found(u"kitap12"_s).value(0));  // however short the run was
    EXPECT_EQ(frame.panels[2], u"Arama Sonucu: 2 başlık bulundu.");
    EXPECT_TRUE(frame.panelVisible[2] && !frame.panelVisible[3]);
    EXPECT_TRUE(state.showPanel2 && !state.showPanel3);
    EXPECT_FALSE(frame.button(button::Up).visible);

    tab->resize(300, 900);  // every row is in view
    find(u"irfan "_s + QString(300, u'q'));
    const auto isWide = [this] { return tree->header()->sectionSize(0) > 1000; };
    EXPECT_TRUE(QTest::qWaitFor(isWide));
    press("chk_ClearResult");
    find(u"söz"_s);
    EXPECT_EQ(rows(4).size(), 5 + 400);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isWide(); }));
}

TEST_F(SearchTabTest, SaysThatNothingWasFoundOrAsked) {
    find(u"irfan"_s);
    find(u"bulunmaz"_s);
    EXPECT_EQ(said(), u"Gösterilecek başlık bulunamadı.");
    EXPECT_FALSE(state.showPanel2);
    EXPECT_TRUE(!frame.panelVisible[2] && frame.panelVisible[3]);
    whenEventsRun([this] { tab->stop(); });  // the program closes: no message holds it up
    find(u"bulunmaz"_s);
    EXPECT_EQ(said(), QString());
    whenEventsRun([] { ADD_FAILURE() << "nothing is under way that could be shown"; });
    find(QString());
    EXPECT_EQ(said(), u"Aranacak kelime girmediniz!");
    find(u"   "_s);
    find(u"?!"_s);
    EXPECT_EQ(said(), QString());
    EXPECT_EQ(rows(1), QStringList{u"Aranan :\"irfan\""_s});
}

// Whichever way it ended; the focus was elsewhere before.
TEST_F(SearchTabTest, ReturnsToTheSearchBoxAfterAMessage) {
    file.damage(2);
    dialogs.whileShown = [this](const platform::Message&) { tree->setFocus(); };
    for (const QString& query : {QString(), u"bulunmaz"_s, u"x"_s, u"ilim"_s}) {
        tree->setFocus();
        type(query);
        tab->cmd_Bul_Click();
        EXPECT_FALSE(said().isEmpty()) << query.toStdString();
        EXPECT_EQ(tab->focusWidget(), child<QLineEdit>("txt_Bul")) << query.toStdString();
    }
}

TEST_F(SearchTabTest, ClearsOlderResultsOnlyForARunThatGoesOn) {
    find(u"irfan"_s);
    press("chk_ClearResult");
    dialogs.answer(Answer::Cancel);
    for (const QString& query : {u"   "_s, u"?!"_s, u"a"_s}) find(query);
    EXPECT_EQ(rows(1), QStringList{u"Aranan :\"irfan\""_s});
    find(u"ilim"_s);
    EXPECT_EQ(rows(1), QStringList{u"Aranan :\"ilim\""_s});
}

TEST_F(SearchTabTest, BringsANewRunToTheTopOfTheTree) {
    tab->resize(300, 500);
    find(u"söz irfan"_s);
    for (int run = 1; run < 3; ++run) {
        sort(ListOrder::Konu);  // more rows than fit
        EXPECT_EQ(tree->visualRect(below({}, run)).top(), 0) << run;
    }
    tree->scrollToTop();
    find(u"bulunmayan"_s);
    EXPECT_EQ(tree->visualRect(below({}, 0)).top(), 0) << "a run without a topic leaves the tree where it is";
}

TEST_F(SearchTabTest, LeavesNoLetterBehindWhenTheWarningIsCancelled) {
    dialogs.answer(Answer::Cancel).answer(Answer::Ok);
    find(u"a irfan b."_s);
    EXPECT_EQ(text(), u"irfan");
    EXPECT_TRUE(said().contains(u"harf girdiniz"));
    EXPECT_FALSE(isOn("chk_TMK"));
    EXPECT_TRUE(rows(1).isEmpty());
    EXPECT_EQ(tab->SonSorgu(), u"irfan");
    find(u"a b irfan"_s);
    EXPECT_TRUE(said().contains(u"harf girdiniz"));  // once
    EXPECT_TRUE(isOn("chk_TMK"));
    // Sorting warns again, and Cancel there takes the letters out of the query that is sorted.
    dialogs.answer(Answer::Cancel);
    sort(ListOrder::Konu);
    EXPECT_EQ(tab->SonSorgu(), u"irfan");
    EXPECT_EQ(text(), u"irfan");
}

TEST_F(SearchTabTest, TheStopButtonEndsASearchInTheMiddle) {
    // Pressed while the single-letter warning stands, it is seen before the first topic has been scanned or
    // at its first hit, whichever comes first.
    dialogs.whileShown = [this](const platform::Message& message) {
        if (message.buttons != platform::Buttons::OkCancel) return;
        expectRunning(true);
        press("cmdDur");
    };
    dialogs.answer(Answer::Ok);
    find(u"x söz"_s);
    EXPECT_LE(rows(4).size(), 6);  // run, two authors, summary, one book, one topic of 400
}

TEST_F(SearchTabTest, ShowsWhatWasListedBeforeALibraryError) {
    find(u"irfan"_s);
    file.damage(2);
    type(u"ilim"_s);
    sort(ListOrder::Kitap);
    EXPECT_EQ(said(), u"Veritabanı dosyası bozuk.");
    EXPECT_EQ(rows(4, below({}, 1)).join(u'|'), u"Sabri (1 adet)| Özet| Yaz  (1 adet)|  Dağ Yolu  (1 adet)");
    EXPECT_FALSE(state.showPanel2 || frame.panelVisible[2]);  // tells of the first run
    whenEventsRun([this] { tab->stop(); });
    find(u"irfan"_s);
    EXPECT_EQ(said(), QString());  // whether the stop or the error came first
}

TEST_F(SearchTabTest, RunsOneThingAtATime) {
    int reentered = 0;
    frame.panelVisible[3] = true;  // of a page before
    whenEventsRun([&] {
        ++reentered;
        expectRunning(true);
        EXPECT_FALSE(frame.panelVisible[3]);
        SearchTab& window = *tab;
        window.cmd_Bul_Click();
        window.mnu_Sirala_Click(ListOrder::Konu);
        window.cmd_KelimeKontOlustur_Click();
        window.resultTreePressed(true);
        if (below({}).isValid()) window.NodeClick(*ResultTreeModel::node(below({})));
    });
    find(u"irfan"_s);
    EXPECT_GT(reentered, 0);
    EXPECT_EQ(rows(1).size(), 1);
    EXPECT_TRUE(frame.poppedUp.isEmpty());
}

TEST_F(SearchTabTest, SortsTheLastQueryAgain) {
    file.execute(u"UPDATE tbl_Konu SET Konu='<P>&quot;irfan&quot;</P>' WHERE KonuID<3");
    find(u"\"irfan\", "_s);
    type(u"başka"_s);
    sort(ListOrder::Konu);
    EXPECT_EQ(rows(3, below({}, 1)).join(u'|'),
              u"Sabri (2 adet)| Özet| Ay  (1 adet)| Dağ Yolu  (1 adet)|Zeynep");
    EXPECT_EQ(below({}, 1).data().toString(), u"Aranan :\"başka\"");
    sort(ListOrder::Kitap);  // the query is cleaned anew each time
    EXPECT_EQ(rows(1).size(), 3);
    sort(ListOrder::Oran);
    EXPECT_EQ(rows(3, below({}, 3)).join(u'|'),
              u"Sabri (2 adet)| Özet| Dağ Yolu  (1 adet, binde 1.000,0)| Ay  (1 adet, binde 1.000,0)|Zeynep");
    Q_EMIT tree->customContextMenuRequested({1, 1});
    EXPECT_EQ(frame.poppedUp, u"mnu_listele");
}

TEST_F(SearchTabTest, TellsRunsOfTheSameWordsApart) {
    file.execute(u"UPDATE tbl_Konu SET Konu='<P>kitap, kitabı &amp; kitaba</P>' WHERE KonuID=1");
    find(u"kitap"_s);
    press("chk_Ses");
    frame.selection = {u"   Yaz <1>"_s, 1, 10};
    find(u"kitap"_s);
    EXPECT_EQ(below({}).data(Qt::ToolTipRole).toString(),
              u"Aranan :\"kitap\"\nkitap: 1\nKitaplar: hepsi\nSıra: kitap adına göre\nSeçenekler: yok");
    EXPECT_EQ(below({}, 1).data(Qt::ToolTipRole).toString(),
              u"Aranan :\"kitap\"\nkitap: 3\nKitaplar: Yaz <1>\nSıra: kitap adına göre\n"
              "Seçenekler: ses değişimleri");
    EXPECT_EQ(rows(1, below({}, 1)).value(0), u"Sabri (3 adet)");
}

TEST_F(SearchTabTest, ShowsATopicWithItsHits) {
    file.execute(
        u"INSERT INTO tbl_KonuBaslik(KonuID, KitapID, KonuBaslik, Konu_Sira) VALUES(1, 20, 'KAR', 9)");
    find(u"ilim"_s);
    click(u"konu11"_s, 1);  // the same topic in another book
    EXPECT_EQ(content.title, u"İçerik Penceresi - KAR");
    EXPECT_TRUE(page().contains("K\xFD\xFE"));
    find(u"irfan"_s);
    click(u"konu11"_s);  // of the older run: its words count
    EXPECT_EQ(frame.panels[3], u"Seçili başlıkta bulunan kelime sayısı: 2");
    EXPECT_TRUE(frame.panelVisible[3]);
    EXPECT_EQ(content.title, u"İçerik Penceresi - DAĞ YOLU");
    EXPECT_EQ(page().count("<input type='submit' name='ggggittt"), 2);
    EXPECT_TRUE(page().contains(">ilim</font></span>") && !page().contains(">irfan</font></span>"));
    EXPECT_EQ(content.page.location(), u"file:\\"_s + file.appFolder().text() + u"\\OKU\\oku.html"_s);
    EXPECT_TRUE(content.page.shown && !content.startPage.shown);
    EXPECT_EQ(frame.zeros, 2);
    EXPECT_TRUE(frame.button(button::Down).enabled && !frame.button(button::Up).enabled);
    content.page.elements.clear();
    click(u"konu11"_s);
    EXPECT_FALSE(frame.button(button::Down).enabled);
    for (const QString& key : {u"bul1"_s, u"ana10"_s, u"kitap11"_s}) {  // have no page of their own
        content.startPage.shown = false;
        click(key);
        EXPECT_TRUE(content.startPage.shown && !content.page.shown) << key.toStdString();
    }

    const qsizetype shown = content.page.navigated.size();
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=1");  // the page stays when the topic is gone
    click(u"konu11"_s);
    EXPECT_EQ(content.page.navigated.size(), shown);
    EXPECT_EQ(frame.panels[3], u"Seçili başlıkta bulunan kelime sayısı: 0");
    file.execute(u"DROP TABLE tbl_Konu");  // a text that cannot be read leaves its place empty
    click(u"konu11"_s);
    EXPECT_TRUE(page().contains("<font face=Arial></font>"));
}

TEST_F(SearchTabTest, ShowsOlderRunsByTheirOwnOptions) {
    file.topic(3, 20, u"BAĞ", u"<P>ilimler, ilim ve irfan</P><br>");
    press("chk_TMK");
    find(u"ilim"_s);
    press("chk_FindWith");
    find(u"ilim ve irfan"_s);
    for (const char* box : {"chk_TMK", "chk_FindWith", "chk_BKD", "chk_HPI"}) press(box);
    type(u"x"_s);
    click(u"konu13"_s);
    EXPECT_EQ(frame.panels[3], u"Seçili başlıkta bulunan kelime sayısı: 1");
    click(u"ozet20"_s);
    EXPECT_TRUE(page().contains(">ilim ve irfan</font></span>"));
}

TEST_F(SearchTabTest, CommandsOfThePageComeBackAfterASearchForThePageThatIsStillShown) {
    find(u"irfan"_s);
    click(u"konu11"_s);
    commands.setBooksInFront(false);
    EXPECT_TRUE(state.showPanel3);
    dialogs.whileShown = [this](const platform::Message&) {  // nothing but the message
        expectRunning(false);
        EXPECT_TRUE(frame.button(button::Down).visible && frame.panelVisible[3]);
    };
    find(QString());
    EXPECT_EQ(said(), u"Aranacak kelime girmediniz!");
    whenEventsRun([this] { EXPECT_FALSE(frame.button(button::Down).visible); });
    find(u"söz"_s);
    EXPECT_TRUE(frame.button(button::Down).visible && frame.button(button::Down).enabled);
    EXPECT_TRUE(frame.button(button::New).visible && frame.button(button::Buyult).visible);
    events.stop();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space}) {  // as a mouse press does
        frame.panelVisible[3] = state.showPanel3 = true;
        tree->setCurrentIndex(found(u"bul1"_s).value(0));
        QTest::keyClick(tree, key);
        EXPECT_FALSE(frame.panelVisible[3] || state.showPanel3);
    }
    EXPECT_FALSE(frame.button(button::Down).visible) << "the start page";
}

TEST_F(SearchTabTest, ShowsASummary) {
    find(u"ilim irfan"_s);
    click(u"konu11"_s);
    EXPECT_TRUE(frame.button(button::Down).enabled);
    tree->setCurrentIndex(found(u"ozet10"_s).value(0));
    QTest::keyClick(tree, Qt::Key_Return);
    expectRunning(false);
    EXPECT_EQ(content.title, u"İçerik Penceresi - ÖZET");
    EXPECT_EQ(page().count("<hr>"), 2);
    EXPECT_FALSE(frame.button(button::Up).enabled || frame.button(button::Down).enabled);
    EXPECT_EQ(frame.progressMaximum, 4 + 5);
    EXPECT_TRUE(frame.button(button::New).visible && frame.button(button::New).enabled);
    EXPECT_EQ(frame.pixels, 16);
    tab->stop();  // left over from an earlier close: no summary begins stopped
    click(u"ozet10"_s);
    EXPECT_EQ(page().count("<hr>"), 2);
    for (const bool closes : {true, false}) {
        whenEventsRun([this, closes] {
            if (!child<QFrame>("fraStopper")->isVisible())
                QTest::qSleep(20);  // events are due again at the first passage
            else if (closes)
                tab->stop();
            else
                QTest::mouseClick(child<QPushButton>("cmd_Stop"), Qt::LeftButton);
        });
        test::writeFile(file.filePath(u"OKU/oku.html"_s), {});
        click(u"ozet10"_s);
        EXPECT_EQ(page().count("<hr>"), 1);
    }

    // Where it fails the page stays as it is.
    ResultNode& summary = *ResultTreeModel::node(found(u"ozet10"_s).value(0));
    const qsizetype shown = content.page.navigated.size();
    summary.tag = u"OZET7"_s;
    click(u"ozet10"_s);
    EXPECT_TRUE(said().startsWith(u"9-"));
    EXPECT_EQ(page().count("<hr>"), 1);
    EXPECT_TRUE(frame.button(button::New).visible);  // of the page that is still there
    summary.tag = u"OZET0"_s;
    browse::showStartPage(content, commands);
    const QString pageFile = file.filePath(u"OKU/oku.html"_s);
    const test::UserPlaces user(test::UserPlaces::Kind::Shut);
    ASSERT_TRUE(QFile::remove(pageFile) && QDir().mkpath(pageFile));  // nothing can be written over it
    click(u"ozet10"_s);
    EXPECT_TRUE(said().startsWith(u"75-Sayfa dosyası yazılamadı"));
    EXPECT_TRUE(content.startPage.shown && content.page.navigated.size() == shown);
    EXPECT_FALSE(frame.button(button::New).visible || frame.button(button::Buyult).visible);
    // Of a topic too the page before stays, and its hits are not this topic's.
    click(u"konu11"_s);
    EXPECT_FALSE(frame.button(button::Down).enabled);
}

TEST_F(SearchTabTest, TheFrameOfOptionsWorks) {
    press("chk_HPI");
    press("chk_FindWith");
    EXPECT_FALSE(isOn("chk_HPI"));
    press("chk_HPI");
    EXPECT_FALSE(isOn("chk_FindWith"));
    file.execute(u"UPDATE tbl_Konu SET Konu='<P>hakîkat</P>' WHERE KonuID=2");
    find(u"hakikat"_s);
    EXPECT_EQ(frame.panels[3], u"Gösterilecek başlık bulunamadı.");
    press("cmd_KelimeKontOlustur");
    EXPECT_EQ(frame.passingText, u"1 özel kelime belirlendi.");
    find(u"hakikat"_s);
    EXPECT_EQ(frame.panels[2], u"Arama Sonucu: 1 başlık bulundu.");
}

// A horizontal bar that covers the only row which needs it must not come and go without end.
TEST_F(SearchTabTest, ComesToRestWithALongRowAtTheLowerEdge) {
    file.topic(999, 30, u"UZUN "_s.repeated(40), u"<P>söz</P>", 150);
    find(u"söz"_s);
    tree->expandAll();
    const QModelIndex longRow = found(u"Uzun"_s, Qt::DisplayRole).value(0);
    ASSERT_TRUE(longRow.isValid());
    for (int height = 380; height < 700; height += 3) {
        tab->resize(300, height);
        tree->scrollTo(longRow.siblingAtRow(longRow.row() - 8), QAbstractItemView::PositionAtTop);
        QApplication::processEvents();
    }
}

TEST_F(SearchTabTest, OffersWordsAndIsNeverInTheWayOfEnter) {
    auto* box = child<QLineEdit>("txt_Bul");
    auto* list = child<SuggestionList>("suggestions");
    find(u"irfan"_s);
    EXPECT_FALSE(list->isVisible());
    box->clear();
    QTest::keyClicks(box, u"i"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return list->hasWords() && list->count() == 3; }));
    EXPECT_EQ(list->item(0)->text(), u"irfan");
    EXPECT_EQ(list->item(1)->text(), u"ilim (2)");
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
    QTest::keyClicks(box, u"l"_s);
    QTest::keyClick(box, Qt::Key_Down);
    QTest::keyClick(box, Qt::Key_Return);  // takes it
    EXPECT_EQ(text(), u"ilim");
    EXPECT_TRUE(!list->isVisible() && rows(1).size() == 1);
    box->clear();
    QTest::keyClicks(box, u"ilim ir"_s);
    EXPECT_TRUE(list->isVisible());
    QTest::keyClick(box, Qt::Key_Return);  // with nothing chosen it searches
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(rows(1).value(1), u"Aranan :\"ilim ir\"");
}

TEST_F(SearchTabTest, ListsTheLastSearchesWithTheirOptions) {
    auto* box = child<QLineEdit>("txt_Bul");
    auto* list = child<SuggestionList>("suggestions");
    press("chk_TMK");
    press("chk_HPI");
    find(u"irfan ilim"_s);
    press("chk_TMK");
    press("chk_FindWith");
    find(u"söz"_s);
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_FALSE(list->isVisible()) << "the box holds a query";
    box->clear();
    QTest::keyClick(box, Qt::Key_Down);
    ASSERT_TRUE(list->isVisible() && list->count() == 2);
    EXPECT_EQ(list->item(0)->text(), u"söz (tümü birlikte)");
    QTest::keyClick(box, Qt::Key_Down);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(text(), u"irfan ilim");
    EXPECT_TRUE(isOn("chk_TMK") && isOn("chk_HPI") && !isOn("chk_FindWith"));
}

TEST_F(SearchTabTest, ReadsTheWordsAgainAfterTheyHadToMakeWay) {
    auto* box = child<QLineEdit>("txt_Bul");
    auto* list = child<SuggestionList>("suggestions");
    QTest::keyClicks(box, u"i"_s);
    press("cmd_KelimeKontOlustur");
    EXPECT_EQ(said(), QString());
    QTest::keyClicks(box, u"l"_s);
    list->stopReading();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        box->clear();
        QTest::keyClicks(box, u"i"_s);
        return list->hasWords();
    }));
}
