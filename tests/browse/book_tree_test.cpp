#include "browse/book_tree.h"

#include <gtest/gtest.h>

#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

namespace {

QStringList keys(const BookTree& tree) {
    QStringList found;
    for (const TreeNode& node : tree.nodes) found += node.key;
    return found;
}

}  // namespace

TEST(BookTree, NumbersItsNodesThroughTheWholeTree) {
    const test::LibraryFile file = test::smallLibrary();
    const BookTree tree = readBookTree(file.open());
    EXPECT_FALSE(tree.failure);
    EXPECT_EQ(keys(tree).join(u' '), u"T0 P1 C1 C2 P2 C3 C4 P3 C5 C6 T1 P4 C7 C8 P5 C9 C10 P6 C11 C12");
    const std::vector<TreeNode>& nodes = tree.nodes;
    EXPECT_EQ(nodes[0].text, u"Sabri Işık");
    EXPECT_EQ(nodes[0].image, u"vq");
    EXPECT_EQ(nodes[10].image, u"Lirovan");
    EXPECT_EQ(nodes[1].text, u"Kuran (Kuran Sırası) ");
    EXPECT_EQ(nodes[1].book, data::BookId{2});
    EXPECT_EQ(nodes[1].children, 2);
    EXPECT_EQ(nodes[2].text, u"Giriş ");
    EXPECT_EQ(nodes[2].image, u"Acik");
    EXPECT_EQ(nodes[2].topic, data::TopicId{201});
    EXPECT_EQ(nodes[2].parent, 1);
    EXPECT_EQ(nodes[14].book, data::HiddenBook);  // hidden from the search only
}

TEST(BookTree, TellsItsProgressInSplashLines) {
    test::LibraryFile file;
    file.author(1, u"Y").book(1, 1, u"ÖNSÖZ<br>GİRİŞ").topic(1, 1, u"  BAŞ  ", u"");
    QStringList lines;
    const BookTree tree =
        readBookTree(file.open(), {{},
                                   [&](const QString& book) { lines += bookLoadingText(book); },
                                   [&](const QString& topic) { lines += topicLoadedText(topic); }});
    EXPECT_EQ(lines,
              (QStringList{u"Kitap Adı: Önsöz Giriş  kitabı yükleniyor."_s, u"Konu: Baş  yüklendi."_s}));
}

TEST(BookTree, KeepsWhatWasReadBeforeAFailure) {
    test::LibraryFile file = test::smallLibrary();
    const data::Library library = file.open();
    file.execute(u"DROP TABLE tbl_KonuBaslik");
    const BookTree tree = readBookTree(library);
    EXPECT_TRUE(tree.failure);
    EXPECT_EQ(keys(tree).join(u' '), u"T0 P1");
}

TEST(BookTree, ClassifiesClicks) {
    test::LibraryFile file;
    file.author(1, u"A").author(2, u"B").book(1, 1, u"BOŞ KİTAP").book(2, 2, u"DOLU").topic(1, 2, u"K", u"");
    const BookTree tree = readBookTree(file.open());
    ASSERT_EQ(keys(tree).join(u' '), u"T0 P1 T1 P2 C1");
    EXPECT_EQ(clickTarget(tree.nodes, 0), ClickTarget::StartPage);
    EXPECT_EQ(clickTarget(tree.nodes, 1), ClickTarget::StartPage);  // a book without topics
    EXPECT_EQ(clickTarget(tree.nodes, 2), ClickTarget::Topic);  // an author behind the first: finds no page
    EXPECT_EQ(clickTarget(tree.nodes, 3), ClickTarget::StartPage);
    EXPECT_EQ(clickTarget(tree.nodes, 4), ClickTarget::Topic);
}

TEST(BookTree, ChangesImages) {
    EXPECT_EQ(expandedImage(u"Lirovan"), u"Ac");
    EXPECT_EQ(expandedImage(u"vq"), u"vq");
    EXPECT_EQ(collapsedImage(u"Ac"), u"Lirovan");
    EXPECT_EQ(collapsedImage(u"vq"), u"vq");
    EXPECT_EQ(openedImage(u"Acik"), u"Incele");
    EXPECT_EQ(openedImage(u"Incele"), u"Incele");
}
