#include "search/ui/search_tab.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QTest>
#include <QTimer>

#include "support/fake_windows.h"
#include "support/library_file.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

class SearchTabTest : public testing::Test {
  protected:
    SearchTabTest() {
        file.execute(u"BEGIN").author(1, u"Sabri").author(2, u"Zeynep");
        file.book(10, 1, u"YAZ").book(20, 2, u"KIŞ");
        for (int topic = 1; topic <= 400; ++topic)
            file.topic(topic, topic <= 200 ? 10 : 20, u"KONU", u"<P>ilim ve irfan</P>");
        file.execute(u"COMMIT");
        library = file.open();
        tab = std::make_unique<SearchTab>(
            SearchTab::Parts{frame, dialogs, content, library, file.appFolder(), state});
        tree = child<QTreeView>("tvw_Kitaplar_Bul");
        tab->show();
    }

    template <class Widget>
    Widget* child(const char* name) const {
        return tab->findChild<Widget*>(QString::fromUtf8(name));
    }
    void press(const char* button) const { child<QAbstractButton>(button)->click(); }
    void type(const QString& text) const {
        child<QLineEdit>("txt_Bul")->setText(text);
        QTest::keyClick(child<QLineEdit>("txt_Bul"), Qt::Key_Return);
    }
    void expectSearching(bool on) const {
        EXPECT_EQ(child<QPushButton>("cmd_Bul")->isVisible(), !on);
        EXPECT_EQ(child<QPushButton>("cmdDur")->isVisible(), on);
        EXPECT_EQ(child<QGroupBox>("Frame1")->isEnabled(), !on);
    }

    QModelIndex below(const QModelIndex& parent, int row = 0) const {
        return tree->model()->index(row, 0, parent);
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

    test::LibraryFile file;
    data::Library library;
    test::FakeMainFrame frame;
    test::ScriptedDialogs dialogs;
    test::FakeContentView content;
    browse::SearchTabState state;
    std::unique_ptr<SearchTab> tab;
    QTreeView* tree;
};

}  // namespace

TEST_F(SearchTabTest, EnterSearchesAndShowsTheTree) {
    const QAbstractItemModelTester tester(tree->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    type(u"irfan"_s);
    EXPECT_EQ(rows(3).join(u'|'),
              u"Aranan :\"irfan\"| Sabri (200 adet)|  Özet|  Yaz  (200 adet)| Zeynep (200 adet)|  Özet"
              "|  Kış  (200 adet)");
    EXPECT_EQ(rows(4).size(), 7 + 400);
    const QModelIndex root = below({});
    EXPECT_TRUE(tree->isExpanded(root) && tree->isExpanded(below(root)));
    EXPECT_EQ(root.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(0, 255, 0));
    EXPECT_TRUE(root.data(Qt::FontRole).value<QFont>().bold());
    expectSearching(false);

    type(u"ilim"_s);
    type(u"bulunmaz"_s);
    EXPECT_EQ(rows(1).size(), 2);
    type(u"ilim "_s + QString(300, u'q'));
    const int wide = tree->header()->sectionSize(0);
    press("chk_ClearResult");
    type(u"ve"_s);
    EXPECT_EQ(rows(1), QStringList{u"Aranan :\"ve\""_s});
    QApplication::processEvents();
    EXPECT_LT(tree->header()->sectionSize(0), wide / 2);
}

TEST_F(SearchTabTest, TheStopButtonEndsASearchInTheMiddle) {
    // Pressed while the single-letter warning stands, it is seen before the first topic has been scanned or
    // at its first hit, whichever comes first.
    dialogs.whileShown = [this](const platform::Message& message) {
        if (message.buttons != platform::Buttons::OkCancel) return;
        expectSearching(true);
        press("cmdDur");
    };
    dialogs.answer(platform::Answer::Ok);
    type(u"x irfan"_s);
    EXPECT_LE(rows(4).size(), 5);  // run, one author, summary, one book, one topic of 400
    EXPECT_FALSE(tab->decisions().isRunning());
    expectSearching(false);
}

TEST_F(SearchTabTest, ClicksInTheTreeOpenPages) {
    type(u"irfan"_s);
    const QModelIndex author = below(below({})), topic = below(below(author, 1));
    tree->expandAll();
    tree->scrollTo(topic);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(topic).center());
    EXPECT_EQ(content.page.navigated.size(), 1);
    EXPECT_EQ(content.title, u"İçerik Penceresi - KONU");
    tree->setCurrentIndex(below(author));
    // The stop button comes up before the first passage; events are due again after it.
    QTimer::singleShot(0, tab.get(), [&] {
        QTest::qSleep(20);
        QTimer::singleShot(0, tab.get(),
                           [&] { QTest::mouseClick(child<QPushButton>("cmd_Stop"), Qt::LeftButton); });
    });
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_EQ(content.title, u"İçerik Penceresi - ÖZET");
    QFile page(file.filePath(u"OKU/oku.html"_s));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    EXPECT_EQ(page.readAll().count("<hr>"), 1);
    EXPECT_FALSE(child<QFrame>("fraStopper")->isVisible());
    Q_EMIT tree->customContextMenuRequested({1, 1});
    EXPECT_EQ(frame.poppedUp, u"mnu_listele");
}

TEST_F(SearchTabTest, TheFrameOfOptionsWorks) {
    press("chk_HPI");
    press("chk_FindWith");
    EXPECT_FALSE(child<QCheckBox>("chk_HPI")->isChecked());
    press("chk_HPI");
    EXPECT_FALSE(child<QCheckBox>("chk_FindWith")->isChecked());

    file.execute(u"UPDATE tbl_Konu SET Konu='<P>hakîkat</P>' WHERE KonuID=7");
    type(u"hakikat"_s);
    EXPECT_EQ(frame.panels[3], u"Gösterilecek başlık bulunamadı.");
    press("cmd_KelimeKontOlustur");
    type(u"hakikat"_s);
    EXPECT_EQ(frame.panels[2], u"Arama Sonucu: 1 başlık bulundu.");
}

// A horizontal bar that covers the only row which needs it must not come and go without end.
TEST_F(SearchTabTest, ComesToRestWithALongRowAtTheLowerEdge) {
    file.topic(999, 10, u"UZUN "_s.repeated(40), u"<P>irfan</P>", 150);
    type(u"irfan"_s);
    tree->expandAll();
    const auto found = tree->model()->match(below({}), Qt::DisplayRole, u"Uzun"_s, 1,
                                            Qt::MatchStartsWith | Qt::MatchRecursive);
    ASSERT_FALSE(found.isEmpty());
    for (int height = 380; height < 700; height += 3) {
        tab->resize(300, height);
        tree->scrollTo(found[0].siblingAtRow(found[0].row() - 8), QAbstractItemView::PositionAtTop);
        QApplication::processEvents();
    }
}
