// Every statement has its fixed text, runs as it stands on a library and finds what it says.
#include "data/catalogue.h"

#include <gtest/gtest.h>

#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::data;
using catalogue::AuthorScope;
using catalogue::TopicOrder;

namespace {

// The values of one column of all rows, joined by blanks, or the error.
QString values(const Library& library, const QString& sql, QStringView column) {
    platform::Result<platform::Statement> statement = library.query(sql);
    if (!statement) return statement.error().message;
    QStringList found;
    while (true) {
        const platform::Result<platform::Step> step = statement->step();
        if (!step) return step.error().message;
        if (*step == platform::Step::Done) return found.join(u' ');
        found += statement->text(statement->column(column));
    }
}

}  // namespace

TEST(Catalogue, EveryStatementFindsItsRows) {
    test::LibraryFile file = test::smallLibrary();
    file.variant(u"KUR'AN", u"Kuran").variant(u"kur'an", u"Kur`an").variant(u"su", u"su");
    const Library library = file.open();
    const AuthorId first{1}, second{2};
    const BookId book{32};
    const TopicId topic{3202};
    struct {
        QString sql;
        QStringView text;  ///< empty: an earlier row has it
        QStringView column;
        QStringView expected;
    } const cases[] = {
        {catalogue::authors(), u"select * from tbl_Yazar order by YazarID", u"YazarID", u"1 2"},
        {catalogue::author(second), u"select * from tbl_Yazar where YazarID=2", u"Yazar", u"Zeynep Ersoy"},
        {catalogue::authorInOrder(first), u"select * from tbl_Yazar Where YazarID= 1 order by YazarID",
         u"Yazar", u"Sabri Işık"},
        {catalogue::selectorBooks(second),
         u"select * from tbl_Kitaplar where YazarID=2 and KitapID<>35 order by KitapAdi", u"KitapID",
         u"40 32"},
        {catalogue::treeBooks(second), u"select * from tbl_Kitaplar Where YazarID=2 order by KitapSiraID",
         u"KitapID", u"32 35 40"},
        {catalogue::bookByTitle(u"ali'nin kitabı"),
         u"select * from tbl_Kitaplar where KitapAdi='ali''nin kitabı'", u"YazarID", u"2"},
        {catalogue::bookByTitle(u"ali"), u"", u"KitapID", u""},
        {catalogue::bookById(book), u"select KitapID, KitapAdi from tbl_Kitaplar where KitapID=32",
         u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::headings(book), u"select * from tbl_KonuBaslik where KitapID=32 ORDER BY Konu_sira",
         u"KonuID", u"3201 3202"},
        {catalogue::heading(book, topic), u"select * from tbl_KonuBaslik where KitapID=32 and KonuID=3202",
         u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::heading(BookId{1}, topic), u"", u"KonuBaslik", u""},
        {catalogue::headingById(topic), u"select * from tbl_KonuBaslik where KonuID=3202", u"KitapID", u"32"},
        {catalogue::headingWithBook(topic),
         u"SELECT tbl_Kitaplar.KitapID, tbl_Kitaplar.KitapAdi, tbl_KonuBaslik.KonuBaslik "
         u",tbl_Kitaplar.YazarID FROM tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID where KonuID=3202",
         u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::headingWithBook(topic), u"", u"YazarID", u"2"},
        {catalogue::topic(topic), u"select * from tbl_Konu where KonuID=3202", u"Konu",
         u"<P>Su akar, yatağını bulur.</P>"},
        {catalogue::topicWithHeading(topic),
         u"select * from (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID where "
         u"tbl_Konu.KonuID=3202 ORDER BY tbl_KonuBaslik.KonuBaslik",
         u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::topics(), u"select * from tbl_Konu ", u"KonuID",
         u"101 102 201 202 501 502 3201 3202 3501 3502 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Book),
         u"SELECT  tbl_Konu.* FROM (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID Where "
         u"tbl_Kitaplar.YazarID=2 and tbl_KonuBaslik.KitapID<>35 ORDER BY tbl_Kitaplar.KitapSiraID, "
         u"tbl_KonuBaslik.Konu_Sira",
         u"KonuID", u"3201 3202 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Book),
         u"SELECT tbl_Konu.* FROM (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID WHERE "
         u"tbl_Kitaplar.YazarID=2  and tbl_KonuBaslik.KitapID<>35 ORDER BY tbl_Kitaplar.KitapSiraID, "
         u"tbl_KonuBaslik.Konu_Sira",
         u"KonuID", u"3201 3202 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Heading),
         u"SELECT  tbl_Konu.* FROM (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID Where "
         u"tbl_Kitaplar.YazarID=2  and tbl_KonuBaslik.KitapID<>35  ORDER BY tbl_KonuBaslik.KonuBaslik",
         u"KonuID", u"3201 4001 3202 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Heading),
         u"SELECT tbl_Konu.* FROM (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID WHERE "
         u"tbl_Kitaplar.YazarID=2  and tbl_KonuBaslik.KitapID<>35 ORDER BY tbl_KonuBaslik.KonuBaslik",
         u"KonuID", u"3201 4001 3202 4002"},
        {catalogue::topicsOfBook(book, TopicOrder::Book),
         u"select * from tbl_Konu INNER JOIN tbl_KonuBaslik ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID where "
         u"tbl_Konu.KonuID IN (select KonuID from tbl_KonuBaslik where KitapID=32)  and "
         u"tbl_KonuBaslik.KitapID<>35 ORDER BY tbl_KonuBaslik.Konu_Sira",
         u"KonuID", u"3201 3202"},
        {catalogue::topicsOfBook(book, TopicOrder::Heading),
         u"SELECT tbl_Konu.* FROM (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
         u"tbl_Kitaplar.KitapID) INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID where "
         u"tbl_KonuBaslik.KitapID=32  and tbl_KonuBaslik.KitapID<>35 ORDER BY tbl_KonuBaslik.KonuBaslik",
         u"KonuID", u"3201 3202"},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Book), u"", u"KonuID", u""},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Heading), u"", u"KonuID", u""},
        {catalogue::variants(u"Kur'an"), u"", u"KelimeKontAra", u"Kur`an Kuran"},
        {catalogue::variants(u"' OR 1=1 --"), u"", u"KelimeKontAra", u""},
    };
    for (const auto& one : cases) {
        if (!one.text.isEmpty()) {
            EXPECT_EQ(one.sql, one.text);
        }
        EXPECT_EQ(values(library, one.sql, one.column), one.expected) << one.sql.toStdString();
    }
}
