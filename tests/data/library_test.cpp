#include "data/library.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::data;
using platform::OpenMode;

namespace {

// Bytes 68 to 71 of a SQLite file hold its application id.
QByteArray withoutId(QByteArray bytes) {
    return bytes.replace(68, 4, QByteArray(4, '\0'));
}

}  // namespace

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
    EXPECT_EQ(Library::connectionString(platform::AppFolder(QStringLiteral("C:\\Lirovan\\"))),
              u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\Lirovan\\kitaplar.vq;Persist Security "
              u"Info=False;");
    EXPECT_EQ(*library.script(), u"<script>/**/</script>");
}

TEST(Library, SaysWhatIsWrongWithAFileAndLeavesItAlone) {
    const test::LibraryFile good = test::smallLibrary();
    QFile goodFile(good.path());
    ASSERT_TRUE(goodFile.open(QIODevice::ReadOnly));
    const QByteArray bytes = goodFile.readAll();

    test::LibraryFile withoutTable;
    withoutTable.execute(u"DROP TABLE tbl_Konu");
    QFile foreign(withoutTable.path());
    ASSERT_TRUE(foreign.open(QIODevice::ReadOnly));

    test::LibraryFile wrongOrder;
    wrongOrder.execute(u"DROP TABLE tbl_Yazar; CREATE TABLE tbl_Yazar (Yazar TEXT, YazarID INTEGER)");
    QFile disordered(wrongOrder.path());
    ASSERT_TRUE(disordered.open(QIODevice::ReadOnly));

    struct {
        const char* what;
        QByteArray content;
        QStringView message;
    } const cases[] = {
        {"zero bytes", QByteArray(), u"boş"},
        {"text", QByteArray(5000, 'x'), u"veritabanı değil"},
        {"overwritten header", QByteArray(100, '\0') + bytes.mid(100), u"veritabanı değil"},
        {"missing table", foreign.readAll(), u"tbl_Konu"},
        {"columns in another order", disordered.readAll(), u"YazarID"},
        {"no application id", withoutId(bytes), u"kitaplık dosyası değil"},
    };
    for (const auto& one : cases) {
        const QTemporaryDir folder;
        const platform::AppFolder app(folder.path());
        QFile file(folder.filePath(QStringLiteral("kitaplar.vq")));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.write(one.content);
        file.flush();
        const auto library = Library::open(app);
        ASSERT_FALSE(library) << one.what;
        EXPECT_TRUE(library.error().message.contains(one.message)) << library.error().message.toStdString();
        file.seek(0);
        EXPECT_EQ(file.readAll(), one.content) << one.what;
    }
}

TEST(Library, AnswersTheFixedMessageWhereThereIsNoFile) {
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    ASSERT_FALSE(Library::open(app));
    EXPECT_EQ(Library::open(app).error().message, u"kitaplar.vq dosyası bulunamadı. Kitaplar okunamıyor...");
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("kitaplar.vq")));
    EXPECT_TRUE(Library::open(app).error().message.contains(u"klasör"));
    EXPECT_FALSE(Library().authors());
}
