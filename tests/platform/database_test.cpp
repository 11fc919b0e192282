#include "platform/core/database.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

using namespace lirovan::platform;

namespace {

class DatabaseTest : public testing::Test {
  protected:
    void SetUp() override {
        Result<Database> opened = Database::open(folder_.filePath(QStringLiteral("a.db")), OpenMode::Create);
        ASSERT_TRUE(opened) << opened.error().message.toStdString();
        database_ = *opened;
        ASSERT_TRUE(
            database_.execute(u"CREATE TABLE t (id INTEGER PRIMARY KEY, ad TEXT COLLATE TURKCE);"
                              u"INSERT INTO t (ad) VALUES ('çam'), ('IŞIK'), ('cam'), ('İnsan')"));
    }

    QStringList column(QStringView sql) {
        QStringList values;
        Result<Statement> statement = database_.prepare(sql);
        if (!statement) return {statement.error().message};
        while (true) {
            const Result<Step> step = statement->step();
            if (!step || *step == Step::Done) return values;
            values += statement->text(0);
        }
    }

    QTemporaryDir folder_;
    Database database_;
};

}  // namespace

TEST_F(DatabaseTest, ComparesAndOrdersTextInTurkish) {
    EXPECT_EQ(column(u"select ad from t order by ad").join(u' '), u"cam çam IŞIK İnsan");
    EXPECT_EQ(column(u"select ad from t where ad='ışık'"), QStringList{QStringLiteral("IŞIK")});
    EXPECT_EQ(column(u"select ad from t where ad='işik'"), QStringList{});
    EXPECT_EQ(column(u"select ad from t where ad Like 'insan'"), QStringList{QStringLiteral("İnsan")});
    EXPECT_EQ(column(u"select ad from t where ad Like '%AM' order by id").join(u' '), u"çam cam");
    EXPECT_EQ(column(u"select LEN(ad) from t order by LEN(ad) DESC, id").join(u' '), u"5 4 3 3");
}

TEST_F(DatabaseTest, TellsRowEndAndErrorApart) {
    Result<Statement> statement = database_.prepare(u"select ad, id from t where id=1");
    ASSERT_TRUE(statement);
    EXPECT_EQ(*statement->step(), Step::Row);
    EXPECT_EQ(statement->column(u"AD"), 0);
    EXPECT_EQ(statement->column(u"yok"), -1);
    EXPECT_TRUE(statement->isNull(7));
    EXPECT_EQ(*statement->step(), Step::Done);
    EXPECT_EQ(database_.prepare(u"select * from t9").error().message,
              QStringLiteral("Dosyada t9 tablosu yok."));
    EXPECT_EQ(database_.execute(u"selam").error().message, QStringLiteral("Veritabanı hatası (SQLite 1)."));
    EXPECT_FALSE(Database().execute(u"select 1"));
}

TEST_F(DatabaseTest, RollsBackUnlessCommitted) {
    {
        Result<Transaction> transaction = Transaction::begin(database_);
        ASSERT_TRUE(transaction);
        ASSERT_TRUE(database_.execute(u"delete from t"));
    }
    EXPECT_EQ(**database_.integer(u"select count(*) from t"), 4);
}

TEST_F(DatabaseTest, TellsADamagedFileFromAFullDisk) {
    ASSERT_TRUE(
        database_.execute(u"create table s (id integer primary key autoincrement, ad text);"
                          u"insert into s (ad) values ('a')"));
    ASSERT_TRUE(database_.execute(u"update sqlite_sequence set seq=9.9e99"));
    const QString damaged = QStringLiteral("Veritabanı dosyası bozuk.");
    EXPECT_EQ(database_.execute(u"insert into s (ad) values ('b')").error().message, damaged);
    ASSERT_TRUE(database_.execute(u"update sqlite_sequence set seq=1; pragma max_page_count=1"));
    EXPECT_EQ(database_.execute(u"insert into s (ad) values (zeroblob(99999))").error().message,
              QStringLiteral("Diskte yer kalmadı."));
}

TEST_F(DatabaseTest, RefusesFilesThatAreNoDatabase) {
    const QString path = folder_.filePath(QStringLiteral("b.db"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    EXPECT_FALSE(Database::open(path, OpenMode::ReadOnly));
    EXPECT_FALSE(Database::open(folder_.path(), OpenMode::ReadOnly));
    EXPECT_FALSE(Database::open(folder_.filePath(QStringLiteral("yok.db")), OpenMode::ReadWrite));
}
