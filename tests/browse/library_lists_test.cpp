// What the library holds as the windows list it: the nodes of the book tree, the rows of the book selector.
#include <gtest/gtest.h>

#include "browse/book_selector.h"
#include "browse/book_tree.h"
#include "data/special_books.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

namespace {

QString keys(const BookTree& tree) {
    QStringList found;
    for (const TreeNode& node : tree.nodes) found += node.key;
    return found.join(u' ');
}

}  // namespace

TEST(BookTree, NumbersItsNodesThroughTheWholeTree) {
    const BookTree tree = readBookTree(test::smallLibrary().open());
    EXPECT_FALSE(tree.failure);
    EXPECT_EQ(keys(tree), u"T0 P1 C1 C2 P2 C3 C4 P3 C5 C6 T1 P4 C7 C8 P5 C9 C10 P6 C11 C12");
    const std::vector<TreeNode>& nodes = tree.nodes;
    EXPECT_EQ(nodes[0].image, u"vq");
    EXPECT_EQ(nodes[10].text, u"Zeynep Ersoy");
    EXPECT_EQ(nodes[1].text, u"Kuran (Kuran Sırası) ");
    EXPECT_EQ(nodes[2].text, u"Giriş ");
    EXPECT_EQ(nodes[2].topic, data::TopicId{201});
    EXPECT_EQ(nodes[14].book, data::HiddenBook);  // hidden from the search only
}

TEST(BookTree, TellsItsProgressAndKeepsWhatWasReadBeforeAFailure) {
    test::LibraryFile file;
    file.author(1, u"Y").book(1, 1, u"ÖNSÖZ<br>GİRİŞ").topic(1, 1, u"  BAŞ  ", u"");
    const data::Library library = file.open();
    QStringList lines;
    const TreeProgress progress{{},
                                [&](const QString& book) { lines += bookLoadingText(book); },
                                [&](const QString& topic) { lines += topicLoadedText(topic); }};
    EXPECT_FALSE(readBookTree(library, progress).failure);
    EXPECT_EQ(lines,
              (QStringList{u"Kitap Adı: Önsöz Giriş  kitabı yükleniyor."_s, u"Konu: Baş  yüklendi."_s}));

    file.execute(u"DROP TABLE tbl_KonuBaslik");
    const BookTree tree = readBookTree(library);
    EXPECT_TRUE(tree.failure);
    EXPECT_EQ(keys(tree), u"T0 P1");
}

TEST(BookSelector, ListsAuthorsAndTheirBooksByTitle) {
    const BookSelector selector = readBookSelector(test::smallLibrary().open());
    QStringList rows;
    for (const SelectorRow& row : selector.rows)
        rows += row.text + u" = "_s + QString::number(row.data.value_or(-1));
    EXPECT_EQ(rows, (QStringList{u"<Lirovan> = 0"_s, u"SABRİ IŞIK = 1999"_s, u".:: Söylev ::. = 19995"_s,
                                 u".:: Kuran  ::. = 19992"_s, u".:: Yaz Defteri ::. = 19991"_s,
                                 u"ZEYNEP ERSOY = 2999"_s, u".:: Ağaçlar ::. = 299940"_s,
                                 u".:: Ali'nin Kitabı ::. = 299932"_s}));
}

TEST(BookSelector, KeepsIdsBesideItemData) {
    test::LibraryFile file;
    file.author(9, u"a").book(99, 9, u"k").author(40000, u"b").book(700000, 40000, u"l");
    const std::vector<SelectorRow> rows = readBookSelector(file.open()).rows;
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[2].data, 999999);  // no telling where the author's id ends
    EXPECT_EQ(rows[2].author, data::AuthorId{9});
    EXPECT_EQ(rows[2].book, data::BookId{99});
    EXPECT_EQ(rows[4].data, std::nullopt);  // 40000999700000 needs more than 32 bits
    EXPECT_EQ(rows[4].book, data::BookId{700000});
}
