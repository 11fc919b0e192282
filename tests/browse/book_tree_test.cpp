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
