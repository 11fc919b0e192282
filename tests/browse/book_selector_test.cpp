#include "browse/book_selector.h"

#include <gtest/gtest.h>

#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

TEST(BookSelector, ListsAuthorsAndTheirBooksByTitle) {
    const test::LibraryFile file = test::smallLibrary();
    const BookSelector selector = readBookSelector(file.open());
    EXPECT_FALSE(selector.failure);
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
    EXPECT_EQ(rows[3].data, 40000999);
    EXPECT_EQ(rows[4].data, std::nullopt);  // 40000999700000 needs more than 32 bits
    EXPECT_EQ(rows[4].book, data::BookId{700000});
}
