// Every statement runs as it stands on a library and finds what it says.
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
        QStringView column;
        QStringView expected;
    } const cases[] = {
        {catalogue::authors(), u"YazarID", u"1 2"},
        {catalogue::author(second), u"Yazar", u"Zeynep Ersoy"},
        {catalogue::authorInOrder(first), u"Yazar", u"Sabri Işık"},
        {catalogue::selectorBooks(second), u"KitapID", u"40 32"},
        {catalogue::treeBooks(second), u"KitapID", u"32 35 40"},
        {catalogue::bookByTitle(u"ali'nin kitabı"), u"YazarID", u"2"},
        {catalogue::bookByTitle(u"ali"), u"KitapID", u""},
        {catalogue::bookById(book), u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::headings(book), u"KonuID", u"3201 3202"},
        {catalogue::heading(book, topic), u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::heading(BookId{1}, topic), u"KonuBaslik", u""},
        {catalogue::headingById(topic), u"KitapID", u"32"},
        {catalogue::headingWithBook(topic), u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::headingWithBook(topic), u"YazarID", u"2"},
        {catalogue::topic(topic), u"Konu", u"<P>Su akar, yatağını bulur.</P>"},
        {catalogue::topicWithHeading(topic), u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::topics(), u"KonuID", u"101 102 201 202 501 502 3201 3202 3501 3502 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Book), u"KonuID",
         u"3201 3202 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Book), u"KonuID",
         u"3201 3202 4001 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Heading), u"KonuID",
         u"3201 4001 3202 4002"},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Heading), u"KonuID",
         u"3201 4001 3202 4002"},
        {catalogue::topicsOfBook(book, TopicOrder::Book), u"KonuID", u"3201 3202"},
        {catalogue::topicsOfBook(book, TopicOrder::Heading), u"KonuID", u"3201 3202"},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Book), u"KonuID", u""},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Heading), u"KonuID", u""},
        {catalogue::variants(u"Kur'an"), u"KelimeKontAra", u"Kur`an Kuran"},
        {catalogue::variants(u"' OR 1=1 --"), u"KelimeKontAra", u""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(values(library, one.sql, one.column), one.expected) << one.sql.toStdString();
}
