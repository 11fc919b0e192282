#include "search/search_window.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <functional>

#include "support/fake_windows.h"
#include "support/library_file.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;
using platform::Answer;
namespace button = platform::button;

namespace {

class FakeSearchView : public SearchView {
  public:
    QString text;
    SearchOptions boxes;
    bool optionsEnabled = true, stopShown = false, summaryStopShown = false, noDrop = false;
    std::function<void()> onEvents = [] {};
    QStringList followed;

    QString searchText() const override { return text; }
    void setSearchText(const QString& t) override { text = t; }
    SearchOptions options() const override { return boxes; }
    void setWholeWord(bool on) override { boxes.wholeWord = on; }
    void setAllWords(bool on) override { boxes.allWords = on; }
    void setTogether(bool on) override { boxes.together = on; }
    void setOptionsEnabled(bool on) override { optionsEnabled = on; }
    void showStopButton(bool on) override { stopShown = on; }
    void showSummaryStop(bool on) override { summaryStopShown = on; }
    void setNoDropPointer(bool on) override { noDrop = on; }
    void follow(ResultNode& book) override { followed += book.key; }
    void letEventsRun() override { onEvents(); }
};

class SearchWindowTest : public testing::Test {
  protected:
    SearchWindowTest() {
        file.execute(u"BEGIN").author(1, u"Sabri").book(10, 1, u"YAZ").book(20, 1, u"KIŞ");
        file.topic(1, 10, u"DAĞ<BR>YOLU", u"<P>ilim ve irfan</P><P>ilim</P>");
        file.topic(2, 20, u"AY", u"<P>irfan</P>").execute(u"COMMIT");
        library = file.open();
        // A page has the buttons that were written to its file.
        content.page.elements = {u"ggggittt0"_s};
    }

    // Searches; whatever comes of it, nothing is left of the run.
    void find(const QString& query) {
        view.text = query;
        window.cmd_Bul_Click();
        expectIdle();
    }
    // Clicks a node of a run (counted from 0).
    void click(int run, const QString& key) {
        window.NodeClick(node(run, key));
        expectIdle();
    }

    ResultNode& node(int run, const QString& key) {
        for (const ResultNode& n : tree.nodes(run))
            if (n.key == key) return const_cast<ResultNode&>(n);
        throw std::runtime_error("no node " + key.toStdString());
    }

    QByteArray page() const {
        QFile oku(file.filePath(u"OKU/oku.html"_s));
        return oku.open(QIODevice::ReadOnly) ? oku.readAll() : QByteArray();
    }

    void expectIdle() const {
        EXPECT_FALSE(window.isRunning() || frame.locked || frame.busy);
        EXPECT_TRUE(view.optionsEnabled && !view.noDrop);
        EXPECT_FALSE(view.stopShown || view.summaryStopShown);
        EXPECT_FALSE(frame.progressVisible || frame.toolTextVisible);
    }

    void expectMessages(size_t count, QStringView title) const {
        ASSERT_EQ(dialogs.messages.size(), count);
        EXPECT_EQ(dialogs.messages.back().title, title);
    }

    test::LibraryFile file;
    data::Library library;
    test::FakeMainFrame frame;
    test::ScriptedDialogs dialogs;
    FakeSearchView view;
    test::FakeContentView content;
    browse::SearchTabState state;
    ResultTree tree;
    SearchWindow window{{frame, dialogs, view, content, library, file.appFolder(), state, tree}};
};

}  // namespace

TEST_F(SearchWindowTest, TellsWhatWasFound) {
    find(u"irfan"_s);
    EXPECT_EQ(frame.panels[2], u"Arama Sonucu: 2 başlık bulundu.");
    EXPECT_TRUE(frame.panelVisible[2] && !frame.panelVisible[3]);
    EXPECT_TRUE(state.showPanel2 && !state.showPanel3);
    EXPECT_FALSE(frame.button(button::Up).visible);
    EXPECT_EQ(view.followed.value(view.followed.size() - 1), u"kitap12");  // however short the run was

    find(u"bulunmaz"_s);
    expectMessages(1, u"Aranan Kelime Bulunamadı");
    EXPECT_EQ(tree.runCount(), 1);
    EXPECT_FALSE(state.showPanel2);
    EXPECT_TRUE(!frame.panelVisible[2] && frame.panelVisible[3]);
    view.onEvents = [this] { window.stop(); };  // the program closes: no message holds it up
    find(u"bulunmaz"_s);
    EXPECT_EQ(dialogs.messages.size(), 1u);

    find(QString());
    expectMessages(2, u"Arama Hatası");
    view.onEvents = [] { ADD_FAILURE() << "nothing is under way that could be shown"; };
    find(u"   "_s);
    find(u"?!"_s);
    EXPECT_EQ(dialogs.messages.size(), 2u);
    EXPECT_EQ(tree.runCount(), 1);
}

TEST_F(SearchWindowTest, LeavesNoLetterBehindWhenTheWarningIsCancelled) {
    dialogs.answer(Answer::Cancel).answer(Answer::Ok);
    find(u"a irfan b."_s);
    EXPECT_EQ(view.text, u"irfan");
    EXPECT_FALSE(view.boxes.wholeWord);
    EXPECT_EQ(tree.runCount(), 0);
    EXPECT_EQ(window.SonSorgu(), u"irfan");
    find(u"a b irfan"_s);  // asks once
    EXPECT_TRUE(view.boxes.wholeWord);
    EXPECT_EQ(dialogs.messages.size(), 2u);
    // Sorting warns again, and Cancel there takes the letters out of the query that is sorted.
    dialogs.answer(Answer::Cancel);
    window.mnu_Sirala_Click(u"Konu");
    EXPECT_EQ(window.SonSorgu(), u"irfan");
    EXPECT_EQ(view.text, u"irfan");
    EXPECT_EQ(dialogs.messages.size(), 3u);
    expectIdle();
}

TEST_F(SearchWindowTest, RunsOneThingAtATime) {
    int reentered = 0;
    view.onEvents = [&] {
        ++reentered;
        EXPECT_TRUE(state.running && frame.locked && !view.optionsEnabled);
        window.cmd_Bul_Click();
        window.mnu_Sirala_Click(u"Konu");
        window.cmd_KelimeKontOlustur_Click();
        window.resultTreePressed(true);
        if (tree.runCount() > 0) window.NodeClick(tree.run(0));
    };
    find(u"irfan"_s);
    EXPECT_GT(reentered, 0);
    EXPECT_EQ(tree.runCount(), 1);
    EXPECT_TRUE(frame.poppedUp.isEmpty());
}

TEST_F(SearchWindowTest, SortsTheLastQueryAgain) {
    find(u"irfan, "_s);
    view.text = u"başka"_s;
    window.mnu_Sirala_Click(u"Konu");
    EXPECT_EQ(tree.run(1).text, u"Aranan :\"başka\"");
    EXPECT_EQ(node(1, u"konu22"_s).parent->kind, NodeKind::Author);
    EXPECT_EQ(window.SonSorgu(), u"irfan");
    window.mnu_Sirala_Click(u"Oran");
    EXPECT_EQ(tree.runCount(), 2);
    expectIdle();
}

TEST_F(SearchWindowTest, ShowsATopicWithItsHits) {
    file.execute(
        u"INSERT INTO tbl_KonuBaslik(KonuID, KitapID, KonuBaslik, Konu_Sira) VALUES(1, 20, 'KAR', 9)");
    find(u"ilim"_s);
    window.NodeClick(const_cast<ResultNode&>(tree.nodes(0).back()));  // the same topic in another book
    EXPECT_EQ(content.title, u"İçerik Penceresi - KAR");
    EXPECT_TRUE(page().contains("K\xFD\xFE"));
    find(u"irfan"_s);
    click(0, u"konu11"_s);  // of the older run: its words count
    EXPECT_EQ(frame.panels[3], u"Seçili başlıkta bulunan kelime sayısı: 2");
    EXPECT_TRUE(frame.panelVisible[3]);
    EXPECT_EQ(content.title, u"İçerik Penceresi - DAĞ YOLU");
    EXPECT_EQ(page().count("<input type='submit' name='ggggittt"), 2);
    EXPECT_TRUE(page().contains(">ilim</font></span>") && !page().contains(">irfan</font></span>"));
    EXPECT_EQ(content.page.location(), u"file:\\"_s + file.appFolder().text() + u"\\OKU\\oku.html"_s);
    EXPECT_TRUE(content.page.shown && !content.startPage.shown);
    EXPECT_EQ(frame.zeros, 2);
    EXPECT_TRUE(frame.button(button::Down).enabled && !frame.button(button::Up).enabled);
    EXPECT_EQ(frame.toolText, u"Araştırılıyor...");
    content.page.elements.clear();
    click(0, u"konu11"_s);
    EXPECT_FALSE(frame.button(button::Down).enabled);
    for (const QString& key : {u"bul1"_s, u"ana10"_s, u"kitap11"_s}) {  // have no page of their own
        content.startPage.shown = false;
        click(0, key);
        EXPECT_TRUE(content.startPage.shown && !content.page.shown) << key.toStdString();
    }

    const qsizetype shown = content.page.navigated.size();
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=1");  // the page stays when the topic is gone
    click(0, u"konu11"_s);
    EXPECT_EQ(content.page.navigated.size(), shown);
    EXPECT_EQ(frame.panels[3], u"Seçili başlıkta bulunan kelime sayısı: 0");
    file.execute(u"DROP TABLE tbl_Konu");  // a text that cannot be read leaves its place empty
    click(0, u"konu11"_s);
    EXPECT_TRUE(page().contains("<font face=Arial></font>"));
}

TEST_F(SearchWindowTest, ShowsASummary) {
    find(u"ilim irfan"_s);
    click(0, u"ozet10"_s);
    EXPECT_EQ(content.title, u"İçerik Penceresi - ÖZET");
    EXPECT_TRUE(content.page.shown);
    EXPECT_EQ(page().count("<hr>"), 2);
    EXPECT_EQ(frame.progressMaximum, 4 + 5);
    EXPECT_EQ(frame.toolTextWidth.value, 1125);
    EXPECT_TRUE(frame.button(button::New).visible && frame.button(button::New).enabled);
    EXPECT_EQ(frame.pixels, 16);
    window.stop();  // left over from an earlier close: no summary begins stopped
    click(0, u"ozet10"_s);
    EXPECT_EQ(page().count("<hr>"), 2);
    view.onEvents = [this] { window.cmd_Stop_Click(); };
    click(0, u"ozet10"_s);
    EXPECT_EQ(page().count("<hr>"), 1);
}

TEST_F(SearchWindowTest, LeavesTheSummaryIdleWhenItFails) {
    find(u"irfan"_s);
    node(0, u"ozet10"_s).tag = u"OZET7"_s;
    click(0, u"ozet10"_s);
    expectMessages(1, u"Hata");
    EXPECT_TRUE(dialogs.messages.back().text.startsWith(u"9-"));
    EXPECT_TRUE(page().isEmpty());

    node(0, u"ozet10"_s).tag = u"OZET0"_s;
    browse::showStartPage(content);
    ASSERT_TRUE(QDir().mkpath(file.filePath(u"OKU/oku.html"_s)));  // nothing can be written over it
    click(0, u"ozet10"_s);
    expectMessages(2, u"Hata");
    EXPECT_TRUE(dialogs.messages.back().text.startsWith(u"75-Sayfa dosyası yazılamadı"));
    EXPECT_TRUE(content.startPage.shown && content.page.navigated.isEmpty());
}
