// The database under libraries and notes: Turkish comparison, the outcomes of a step, the layouts.
#include "platform/core/database.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/core/library_layout.h"
#include "support/files.h"

using namespace lirovan::platform;
using lirovan::test::rows;
using namespace Qt::StringLiterals;

namespace {

struct DatabaseTest : testing::Test {
    QTemporaryDir folder;
    const Database database = Database::open(folder.filePath(u"a.db"_s), OpenMode::Create).value();

    void SetUp() override {
        ASSERT_TRUE(
            database.execute(u"CREATE TABLE t (id INTEGER PRIMARY KEY, ad TEXT COLLATE TURKCE);"
                             u"INSERT INTO t (ad) VALUES ('çam'), ('IŞIK'), ('cam'), ('İnsan')"));
    }
};

}  // namespace

TEST_F(DatabaseTest, ComparesAndOrdersTextInTurkish) {
    const std::pair<QStringView, const char*> cases[] = {
        {u"select ad from t order by ad", "cam/çam/IŞIK/İnsan"},
        {u"select ad from t where ad='ışık'", "IŞIK"},
        {u"select ad from t where ad='işik'", ""},
        {u"select ad from t where ad Like 'insan'", "İnsan"},
        {u"select ad from t where ad Like '%AM' order by id", "çam/cam"},
        {u"select LEN(ad) from t order by LEN(ad) DESC, id", "5/4/3/3"},
    };
    for (const auto& [sql, expected] : cases) EXPECT_EQ(rows(database, sql), expected);
}

TEST_F(DatabaseTest, WaitsForAnotherProgramsWriting) {
    EXPECT_GE(*database.integer(u"PRAGMA busy_timeout"), 1000);
}

TEST_F(DatabaseTest, TellsRowEndAndErrorApart) {
    Result<Statement> statement = database.prepare(u"select ad, id from t where id=1");
    ASSERT_TRUE(statement);
    EXPECT_EQ(*statement->step(), Step::Row);
    EXPECT_EQ(statement->column(u"AD"), 0);
    EXPECT_EQ(statement->column(u"yok"), -1);
    EXPECT_TRUE(statement->isNull(7));
    EXPECT_EQ(*statement->step(), Step::Done);
    EXPECT_EQ(database.prepare(u"select * from t9").error().message, u"Dosyada t9 tablosu yok.");
    EXPECT_EQ(database.execute(u"selam").error().message, u"Veritabanı hatası (SQLite 1).");
    EXPECT_FALSE(Database().execute(u"select 1"));
}

TEST_F(DatabaseTest, TellsADamagedFileAFullDiskAndWhatIsNoDatabase) {
    ASSERT_TRUE(
        database.execute(u"create table s (id integer primary key autoincrement, ad text);"
                         u"insert into s (ad) values ('a'); update sqlite_sequence set seq=9.9e99"));
    EXPECT_EQ(database.execute(u"insert into s (ad) values ('b')").error().message,
              u"Veritabanı dosyası bozuk.");
    ASSERT_TRUE(database.execute(u"update sqlite_sequence set seq=1; pragma max_page_count=1"));
    EXPECT_EQ(database.execute(u"insert into s (ad) values (zeroblob(99999))").error().message,
              u"Diskte yer kalmadı.");
    const QString text = lirovan::test::writeFile(folder.filePath(u"b.db"_s), QByteArray(4096, 'x'));
    for (const QString& path : {text, folder.path(), folder.filePath(u"yok.db"_s)})
        EXPECT_FALSE(Database::open(path, OpenMode::ReadWrite)) << path.toStdString();
}

TEST_F(DatabaseTest, TellsWhatIsWrongWithALayout) {
    ASSERT_TRUE(createLayout(database, LayoutKind::Library));
    const std::pair<QStringView, QStringView> cases[] = {
        {u"PRAGMA application_id=5", u"Dosya bir kitaplık dosyası değil."},
        {u"PRAGMA user_version=2", u"Dosya programın daha yeni bir sürümüyle yazılmış."},
        {u"DROP TABLE tbl_scripts; CREATE VIEW tbl_scripts AS SELECT 1 AS ID, 2 AS Script",
         u"Dosyada tbl_scripts tablosu yok."},
        {u"ALTER TABLE tbl_Konu RENAME COLUMN Konu TO Metin",
         u"tbl_Konu tablosunun sütunları beklenen sırada değil (Konu)."},
    };
    for (const auto& [change, message] : cases) {
        const Result<Transaction> undone = Transaction::begin(database);
        ASSERT_TRUE(undone && database.execute(change));
        EXPECT_EQ(checkLayout(database, LayoutKind::Library).error().message, message);
    }
    EXPECT_TRUE(checkLayout(database, LayoutKind::Library)) << "each change was rolled back";
}
