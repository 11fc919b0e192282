#include "data/library.h"

#include <gtest/gtest.h>

#include "data/special_books.h"
#include "support/files.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::data;
using namespace Qt::StringLiterals;
using catalogue::TopicOrder;
using platform::OpenMode;

namespace {

QByteArray fileAfter(QStringView change) {
    test::LibraryFile library = test::smallLibrary();
    library.execute(change);
    return test::readFile(library.path());
}

}  // namespace

TEST(Library, FindsRowsInTheirOrderWithoutTheHiddenBook) {
    test::LibraryFile file = test::smallLibrary();
    file.topic(3200, 32, u"ARA", u"", 0, 0.5);
    file.variant(u"KUR'AN", u"Kuran").variant(u"kur'an", u"Kur`an").variant(u"su", u"su");
    const Library library = file.open();
    const AuthorId second{2};
    const BookId book{32};
    const TopicId topic{3202};
    const std::string byBook = "3200/3201/3202/4001/4002", byHeading = "3201/4001/3200/3202/4002";
    const std::tuple<QString, QStringView, std::string> cases[] = {
        {catalogue::selectorBooks(second), u"KitapID", "40/32"},
        {catalogue::treeBooks(AuthorId{1}), u"KitapID", "2/1/5"},
        {catalogue::treeBooks(second), u"KitapID", "32/35/40"},
        {catalogue::bookByTitle(u"ali'nin kitabı"), u"YazarID", "2"},
        {catalogue::bookByTitle(u"ali"), u"KitapID", ""},
        {catalogue::headings(book), u"KonuID", "3200/3201/3202"},
        {catalogue::heading(book, topic), u"KonuBaslik", "IRMAK BOYU"},
        {catalogue::heading(BookId{1}, topic), u"KonuBaslik", ""},
        {catalogue::topicWithHeading(topic), u"KonuBaslik", "IRMAK BOYU"},
        {catalogue::topicsOfAuthor(second, TopicOrder::Book), u"KonuID", byBook},
        {catalogue::topicsOfAuthor(second, TopicOrder::Heading), u"KonuID", byHeading},
        {catalogue::topicsOfBook(book, TopicOrder::Book), u"KonuID", "3200/3201/3202"},
        {catalogue::topicsOfBook(book, TopicOrder::Heading), u"KonuID", "3201/3200/3202"},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Book), u"KonuID", ""},
        {catalogue::topicsOfBook(HiddenBook, TopicOrder::Heading), u"KonuID", ""},
        {catalogue::variants(u"Kur'an"), u"KelimeKontAra", "Kur`an/Kuran"},
        {catalogue::variants(u"' OR 1=1 --"), u"KelimeKontAra", ""},
    };
    for (const auto& [sql, column, expected] : cases)
        EXPECT_EQ(test::rows(library.database(), u"SELECT %1 FROM (%2)"_s.arg(column, sql)), expected)
            << sql.toStdString();
}

TEST(Library, ReadsTypedRows) {
    test::LibraryFile file = test::smallLibrary();
    file.topic(700000, 5, u"BÜYÜK NUMARA", u"x", 7);
    const Library library = file.open(OpenMode::ReadOnly);
    EXPECT_EQ((**library.topic(TopicId{700000})).text, u"x");
    EXPECT_EQ((**library.topic(TopicId{700000})).partNumber, 7);
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
    const QString path = folder.filePath(u"kitaplar.vq"_s);
    for (const auto& [content, message] : cases) {
        test::writeFile(path, content);
        const auto library = Library::open(app);
        ASSERT_FALSE(library) << message.toString().toStdString();
        EXPECT_TRUE(library.error().message.contains(message)) << library.error().message.toStdString();
        EXPECT_EQ(test::readFile(path), content) << message.toString().toStdString();
    }
    ASSERT_TRUE(QFile::remove(path) && QDir().mkdir(path));
    EXPECT_TRUE(Library::open(app).error().message.contains(u"klasör"));
    EXPECT_FALSE(Library().authors());
    // Copying such a file fails like writing to a full disk.
    test::LibraryFile damaged = test::smallLibrary();
    EXPECT_EQ(damaged.damage(101).open().copyTo(folder.filePath(u"b.vq"_s)).error().message,
              u"Veritabanı dosyası bozuk.");
}
