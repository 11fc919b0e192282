#include "platform/core/library_layout.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace lirovan::platform {
namespace {

Database emptyDatabase(const QTemporaryDir& folder) {
    return Database::open(folder.filePath(QStringLiteral("a.vq")), OpenMode::Create).value();
}

TEST(LibraryLayout, KeepsTheColumnsThatReadersTakeByPosition) {
    const QTemporaryDir folder;
    const Database database = emptyDatabase(folder);
    ASSERT_TRUE(createLayout(database, LayoutKind::Library));
    const struct {
        QStringView table, column;
        int position;
    } contract[] = {
        {u"tbl_Yazar", u"YazarID", 0},     {u"tbl_Yazar", u"Yazar", 1},
        {u"tbl_Kitaplar", u"KitapID", 0},  {u"tbl_Kitaplar", u"KitapAdi", 1},
        {u"tbl_KonuBaslik", u"KonuID", 0}, {u"tbl_KonuBaslik", u"KonuBaslik", 2},
        {u"tbl_Konu", u"KonuID", 1},       {u"tbl_Konu", u"Konu", 2},
    };
    for (const auto& [table, column, position] : contract)
        EXPECT_EQ(database.prepare(QStringLiteral("select * from %1").arg(table))->column(column), position)
            << column.toUtf8().constData();
    EXPECT_EQ(database.prepare(u"select * from tbl_Konu")->columnCount(), 4);
}

TEST(LibraryLayout, NeverGivesTheKeyOfADeletedNoteToAnother) {
    const QTemporaryDir folder;
    const Database database = emptyDatabase(folder);
    ASSERT_TRUE(createLayout(database, LayoutKind::Notes));
    ASSERT_TRUE(
        database.execute(u"INSERT INTO tbl_Notlar VALUES (9,'2008-03-14','a','b'); DELETE FROM tbl_Notlar;"
                         u"INSERT INTO tbl_Notlar (NotBaslik) VALUES ('c')"));
    EXPECT_EQ(*database.integer(u"select max(NotID) as NtID from tbl_notlar"), 10);
}

TEST(LibraryLayout, CheckTellsWhatIsWrong) {
    const struct {
        QString change, message;
    } cases[] = {
        {QString(), QString()},
        {QStringLiteral("PRAGMA application_id=5"), QStringLiteral("Dosya bir kitaplık dosyası değil.")},
        {QStringLiteral("PRAGMA user_version=2"),
         QStringLiteral("Dosya programın daha yeni bir sürümüyle yazılmış.")},
        {QStringLiteral("DROP TABLE tbl_scripts"), QStringLiteral("Dosyada tbl_scripts tablosu yok.")},
        {QStringLiteral("ALTER TABLE tbl_Konu RENAME COLUMN Konu TO Metin"),
         QStringLiteral("tbl_Konu tablosunun sütunları beklenen sırada değil (Konu).")},
    };
    for (const auto& [change, message] : cases) {
        const QTemporaryDir folder;
        const Database database = emptyDatabase(folder);
        ASSERT_TRUE(createLayout(database, LayoutKind::Library));
        ASSERT_TRUE(database.execute(change));
        const Result<void> checked = checkLayout(database, LayoutKind::Library);
        EXPECT_EQ(checked ? QString() : checked.error().message, message);
    }
}

}  // namespace
}  // namespace lirovan::platform
