#include "data/library.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::data;
using namespace Qt::StringLiterals;
using catalogue::AuthorScope;
using catalogue::TopicOrder;
using platform::OpenMode;

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

QByteArray fileAfter(QStringView change) {
    test::LibraryFile library = test::smallLibrary();
    library.execute(change);
    QFile file(library.path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

TEST(Library, FindsRowsInTheirOrderWithoutTheHiddenBook) {
    test::LibraryFile file = test::smallLibrary();
    file.topic(3200, 32, u"ARA", u"", 0, 0.5);
    file.variant(u"KUR'AN", u"Kuran").variant(u"kur'an", u"Kur`an").variant(u"su", u"su");
    const Library library = file.open();
    const AuthorId first{1}, second{2};
    const BookId book{32};
    const TopicId topic{3202};
    const QStringView byBook = u"3200 3201 3202 4001 4002", byHeading = u"3201 4001 3200 3202 4002";
    const std::tuple<QString, QStringView, QStringView> cases[] = {
        {catalogue::authors(), u"YazarID", u"1 2"},
        {catalogue::author(second), u"Yazar", u"Zeynep Ersoy"},
        {catalogue::authorInOrder(first), u"Yazar", u"Sabri Işık"},
        {catalogue::selectorBooks(second), u"KitapID", u"40 32"},
        {catalogue::treeBooks(first), u"KitapID", u"2 1 5"},
        {catalogue::treeBooks(second), u"KitapID", u"32 35 40"},
        {catalogue::bookByTitle(u"ali'nin kitabı"), u"YazarID", u"2"},
        {catalogue::bookByTitle(u"ali"), u"KitapID", u""},
        {catalogue::bookById(book), u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::headings(book), u"KonuID", u"3200 3201 3202"},
        {catalogue::heading(book, topic), u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::heading(BookId{1}, topic), u"KonuBaslik", u""},
        {catalogue::headingById(topic), u"KitapID", u"32"},
        {catalogue::headingWithBook(topic), u"KitapAdi", u"ALİ'NİN KİTABI"},
        {catalogue::topic(topic), u"Konu", u"<P>Su akar, yatağını bulur.</P>"},
        {catalogue::topicWithHeading(topic), u"KonuBaslik", u"IRMAK BOYU"},
        {catalogue::topicsOfAuthor(first, AuthorScope::All, TopicOrder::Book), u"KonuID",
         u"201 202 101 102 501 502"},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Book), u"KonuID", byBook},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Book), u"KonuID", byBook},
        {catalogue::topicsOfAuthor(second, AuthorScope::All, TopicOrder::Heading), u"KonuID", byHeading},
        {catalogue::topicsOfAuthor(second, AuthorScope::One, TopicOrder::Heading), u"KonuID", byHeading},
        {catalogue::topicsOfBook(book, TopicOrder::Book), u"KonuID", u"3200 3201 3202"},
        {catalogue::topicsOfBook(book, TopicOrder::Heading), u"KonuID", u"3201 3200 3202"},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Book), u"KonuID", u""},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Heading), u"KonuID", u""},
        {catalogue::variants(u"Kur'an"), u"KelimeKontAra", u"Kur`an Kuran"},
        {catalogue::variants(u"' OR 1=1 --"), u"KelimeKontAra", u""},
    };
    for (const auto& [sql, column, expected] : cases)
        EXPECT_EQ(values(library, sql, column), expected) << sql.toStdString();
}

TEST(Library, ReadsTypedRows) {
    test::LibraryFile file = test::smallLibrary();
    file.topic(700000, 5, u"BÜYÜK NUMARA", u"x", 7);
    const Library library = file.open(OpenMode::ReadOnly);
    const auto book = library.bookByTitle(u"ağaçlar");
    ASSERT_TRUE(book && *book);
    EXPECT_EQ((**book).id, BookId{40});
    EXPECT_EQ((**book).author, AuthorId{2});
    const auto topic = library.topic(TopicId{700000});
    ASSERT_TRUE(topic && *topic);
    EXPECT_EQ((**topic).text, u"x");
    EXPECT_EQ((**topic).partNumber, 7);
    const auto context = library.headingWithBook(TopicId{700000});
    ASSERT_TRUE(context && *context);
    EXPECT_EQ((**context).title, u"BÜYÜK NUMARA");
    EXPECT_EQ((**context).bookTitle, u"<B>SÖYLEV</B>");
    EXPECT_EQ((**context).author, AuthorId{1});
    EXPECT_FALSE(*library.topic(TopicId{1}));
    EXPECT_EQ(*library.script(), u"<script>/**/</script>");
    EXPECT_EQ(Library::connectionString(platform::AppFolder(u"C:\\Lirovan\\"_s)),
              u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\Lirovan\\kitaplar.vq;Persist Security "
              u"Info=False;");
}

TEST(Library, SaysWhatIsWrongWithAFileAndLeavesItAlone) {
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    EXPECT_EQ(Library::open(app).error().message, u"kitaplar.vq dosyası bulunamadı. Kitaplar okunamıyor...");
    const QByteArray good = fileAfter(u"ANALYZE");
    const std::pair<QByteArray, QStringView> cases[] = {
        {{}, u"boş"},
        {QByteArray(5000, 'x'), u"veritabanı değil"},
        {QByteArray(100, '\0') + good.mid(100), u"veritabanı değil"},
        {fileAfter(u"DROP TABLE tbl_Konu"), u"tbl_Konu"},
        {fileAfter(u"DROP TABLE tbl_Yazar; CREATE TABLE tbl_Yazar (Yazar TEXT, YazarID INTEGER)"),
         u"YazarID"},
        // Bytes 68 to 71 of a SQLite file hold its application id.
        {QByteArray(good).replace(68, 4, QByteArray(4, '\0')), u"kitaplık dosyası değil"},
    };
    QFile file(folder.filePath(u"kitaplar.vq"_s));
    for (const auto& [content, message] : cases) {
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
        file.write(content);
        file.flush();
        const auto library = Library::open(app);
        ASSERT_FALSE(library) << message.toString().toStdString();
        EXPECT_TRUE(library.error().message.contains(message)) << library.error().message.toStdString();
        file.seek(0);
        EXPECT_EQ(file.readAll(), content) << message.toString().toStdString();
        file.close();
    }
    ASSERT_TRUE(file.remove() && QDir(folder.path()).mkdir(u"kitaplar.vq"_s));
    EXPECT_TRUE(Library::open(app).error().message.contains(u"klasör"));
    EXPECT_FALSE(Library().authors());
}
