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
        file.execute(u"BEGIN")
            .author(1, u"Sabri")
            .author(2, u"Zeynep")
            .book(10, 1, u"YAZ")
            .book(20, 2, u"KIŞ");
        for (int topic = 1; topic <= 400; ++topic)
            file.topic(topic, topic <= 200 ? 10 : 20, u"KONU", u"<P>ilim ve irfan</P>");
        file.execute(u"COMMIT");
        library = file.open();
        tab = std::make_unique<SearchTab>(
            SearchTab::Parts{frame, dialogs, content, library, file.appFolder(), state});
        tab->show();
    }

    template <class Widget>
    Widget* child(const char* name) const {
        return tab->findChild<Widget*>(QString::fromUtf8(name));
    }

    void type(const QString& text) {
        child<QLineEdit>("txt_Bul")->setText(text);
        QTest::keyClick(child<QLineEdit>("txt_Bul"), Qt::Key_Return);
    }

    // Shown texts, children indented, as deep as `depth`.
    QStringList rows(int depth, const QModelIndex& parent = {}, const QString& indent = {}) const {
        const QAbstractItemModel* model = child<QTreeView>("tvw_Kitaplar_Bul")->model();
        QStringList lines;
        for (int row = 0; depth > 0 && row < model->rowCount(parent); ++row) {
            const QModelIndex at = model->index(row, 0, parent);
            lines += indent + at.data().toString();
            lines += rows(depth - 1, at, indent + u' ');
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
};

}  // namespace

TEST_F(SearchTabTest, EnterSearchesAndShowsTheTree) {
    auto* tree = child<QTreeView>("tvw_Kitaplar_Bul");
    const QAbstractItemModelTester tester(tree->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    type(u"irfan"_s);
    EXPECT_EQ(rows(3), (QStringList{u"Aranan :\"irfan\""_s, u" Sabri (200 adet)"_s, u"  Özet"_s,
                                    u"  Yaz  (200 adet)"_s, u" Zeynep (200 adet)"_s, u"  Özet"_s,
                                    u"  Kış  (200 adet)"_s}));
    EXPECT_EQ(rows(4).size(), 7 + 400);
    const QModelIndex root = tree->model()->index(0, 0);
    EXPECT_TRUE(tree->isExpanded(root));
    EXPECT_TRUE(tree->isExpanded(tree->model()->index(0, 0, root)));
    EXPECT_EQ(root.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(0, 255, 0));
    EXPECT_TRUE(root.data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(child<QPushButton>("cmd_Bul")->isVisible());
    EXPECT_FALSE(child<QPushButton>("cmdDur")->isVisible());

    type(u"ilim"_s);
    EXPECT_EQ(rows(1).size(), 2);
    type(u"bulunmaz"_s);
    EXPECT_EQ(rows(1).size(), 2);
    type(u"ilim "_s + QString(300, u'q'));
    const int wide = tree->header()->sectionSize(0);
    child<QCheckBox>("chk_ClearResult")->setChecked(true);
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
        EXPECT_FALSE(child<QPushButton>("cmd_Bul")->isVisible());
        EXPECT_FALSE(child<QGroupBox>("Frame1")->isEnabled());
        QTest::mouseClick(child<QPushButton>("cmdDur"), Qt::LeftButton);
    };
    dialogs.answer(platform::Answer::Ok);
    type(u"x irfan"_s);
    EXPECT_LE(rows(4).size(), 5);  // run, one author, summary, one book, one topic of 400
    EXPECT_FALSE(tab->decisions().isRunning());
    EXPECT_TRUE(child<QGroupBox>("Frame1")->isEnabled());
    EXPECT_TRUE(child<QPushButton>("cmd_Bul")->isVisible());
}

TEST_F(SearchTabTest, ClicksInTheTreeOpenPages) {
    type(u"irfan"_s);
    auto* tree = child<QTreeView>("tvw_Kitaplar_Bul");
    const QModelIndex author = tree->model()->index(0, 0, tree->model()->index(0, 0));
    const QModelIndex topic = tree->model()->index(0, 0, tree->model()->index(1, 0, author));
    tree->expandAll();
    tree->scrollTo(topic);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(topic).center());
    EXPECT_EQ(content.page.navigated.size(), 1);
    EXPECT_EQ(content.title, u"İçerik Penceresi - KONU");
    tree->setCurrentIndex(tree->model()->index(0, 0, author));
    QTest::keyClick(tree, Qt::Key_Return);
    EXPECT_EQ(content.title, u"İçerik Penceresi - ÖZET");
    Q_EMIT tree->customContextMenuRequested({1, 1});
    EXPECT_EQ(frame.poppedUp, u"mnu_listele");
}

TEST_F(SearchTabTest, ItsButtonStopsASummary) {
    type(u"irfan"_s);
    QTimer presser;
    QObject::connect(&presser, &QTimer::timeout, tab.get(), [this] {
        if (child<QFrame>("fraStopper")->isVisible())
            QTest::mouseClick(child<QPushButton>("cmd_Stop"), Qt::LeftButton);
        else
            QTest::qSleep(20);  // events are due again at the first passage
    });
    presser.start(0);
    auto* tree = child<QTreeView>("tvw_Kitaplar_Bul");
    const QModelIndex author = tree->model()->index(0, 0, tree->model()->index(0, 0));
    tree->setCurrentIndex(tree->model()->index(0, 0, author));
    QTest::keyClick(tree, Qt::Key_Return);
    QFile page(file.filePath(u"OKU/oku.html"_s));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    EXPECT_EQ(page.readAll().count("<hr>"), 1);
    EXPECT_FALSE(child<QFrame>("fraStopper")->isVisible());
}

TEST_F(SearchTabTest, TheVariantButtonMakesCircumflexWordsFound) {
    file.execute(u"UPDATE tbl_Konu SET Konu='<P>hakîkat</P>' WHERE KonuID=7");
    type(u"hakikat"_s);
    EXPECT_EQ(frame.panels[3], u"Gösterilecek başlık bulunamadı.");
    QTest::mouseClick(child<QPushButton>("cmd_KelimeKontOlustur"), Qt::LeftButton);
    EXPECT_TRUE(child<QGroupBox>("Frame1")->isEnabled());
    type(u"hakikat"_s);
    EXPECT_EQ(frame.panels[2], u"Arama Sonucu: 1 başlık bulundu.");
}

TEST_F(SearchTabTest, OptionsExcludeEachOther) {
    child<QCheckBox>("chk_HPI")->click();
    child<QCheckBox>("chk_FindWith")->click();
    EXPECT_FALSE(child<QCheckBox>("chk_HPI")->isChecked());
    child<QCheckBox>("chk_HPI")->click();
    EXPECT_FALSE(child<QCheckBox>("chk_FindWith")->isChecked());
}

// A horizontal bar that covers the only row which needs it must not come and go without end.
TEST_F(SearchTabTest, ComesToRestWithALongRowAtTheLowerEdge) {
    file.topic(999, 10, u"UZUN "_s.repeated(40), u"<P>irfan</P>", 150);
    type(u"irfan"_s);
    auto* tree = child<QTreeView>("tvw_Kitaplar_Bul");
    tree->expandAll();
    const QModelIndex start = tree->model()->index(0, 0);
    const auto found =
        tree->model()->match(start, Qt::DisplayRole, u"Uzun"_s, 1, Qt::MatchStartsWith | Qt::MatchRecursive);
    ASSERT_FALSE(found.isEmpty());
    for (int height = 380; height < 700; height += 3) {
        tab->resize(300, height);
        tree->scrollTo(found[0].siblingAtRow(found[0].row() - 8), QAbstractItemView::PositionAtTop);
        QApplication::processEvents();
    }
}
