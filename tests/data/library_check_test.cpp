#include "data/library_check.h"

#include <gtest/gtest.h>

#include "data/library_writer.h"
#include "support/files.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace lirovan::data;
using namespace Qt::StringLiterals;

namespace {

QStringList faults(const test::LibraryFile& file) {
    return *checkLibrary(*platform::Database::open(file.path(), platform::OpenMode::ReadOnly));
}

}  // namespace

TEST(LibraryCheck, NamesEveryFaultWithItsRow) {
    const std::pair<QStringView, QStringList> cases[] = {
        {u"ANALYZE", {}},  // no damage, no fault
        {u"DROP TABLE tbl_scripts; DROP TABLE tbl_Konu",
         {u"tbl_Konu tablosu yok ya da okunamıyor."_s, u"tbl_scripts tablosu yok ya da okunamıyor."_s}},
        {u"PRAGMA user_version=2", {u"Dosya programın daha yeni bir sürümüyle yazılmış."_s}},
        {u"ALTER TABLE tbl_Yazar RENAME COLUMN Yazar TO Ad",
         {u"tbl_Yazar tablosunun 2. sütunu Yazar değil."_s}},
        {u"INSERT INTO tbl_Yazar VALUES (2, 'Öteki')", {u"Yazar 2: numara birden çok kez verilmiş."_s}},
        {u"UPDATE tbl_Konu SET KonuID=101 WHERE KonuID=102",
         {u"Konu 101: birden çok metni var."_s, u"Konu 102: metni yok."_s}},
        {u"UPDATE tbl_Kitaplar SET YazarID=77 WHERE KitapID=1", {u"Kitap 1: yazarı yok."_s}},
        {u"UPDATE tbl_KonuBaslik SET KitapID=NULL WHERE KonuID=101", {u"Konu 101: kitabı yok."_s}},
        {u"DELETE FROM tbl_KonuBaslik WHERE KonuID=101", {u"Konu 101: başlığı yok."_s}},
        {u"UPDATE tbl_KonuBaslik SET KonuBaslik=' ' WHERE KonuID=101", {u"Konu 101: başlığı boş."_s}},
        {u"UPDATE tbl_Konu SET Konu=NULL WHERE KonuID=101", {u"Konu 101: metin boş."_s}},
        {u"UPDATE tbl_Konu SET Konu=CAST(x'41C4' AS TEXT) WHERE KonuID=101",
         {u"Konu 101: metinde bozuk karakter var."_s}},
        {u"UPDATE tbl_Konu SET Konu='<P><B>x</P>' WHERE KonuID=101", {u"Konu 101: <b> kapanmamış."_s}},
    };
    for (const auto& [damage, expected] : cases) {
        test::LibraryFile file = test::smallLibrary();
        file.execute(damage);
        EXPECT_EQ(faults(file), expected) << damage.toUtf8().constData();
    }
}

TEST(LibraryCheck, NamesDamagedPagesInOneTurkishLineEach) {
    const test::LibraryFile library = test::smallLibrary();
    const auto root = platform::Database::open(library.path(), platform::OpenMode::ReadOnly)
                          ->integer(u"SELECT rootpage FROM sqlite_master WHERE name='tbl_Konu'");
    QByteArray bytes = test::readFile(library.path());
    test::writeFile(library.path(), bytes.replace((**root - 1) * 32768, 32768, QByteArray(32768, 'x')));
    EXPECT_EQ(faults(library).value(0), u"Dosya bozuk (%1. sayfa)."_s.arg(**root));
}

TEST(MarkupFault, AsksForEndsOnlyWhereABrowserNeedsThem) {
    const std::pair<QStringView, QStringView> cases[] = {
        {u"<P>bir<BR>iki<LI>üç <b>a</B> 3 < 4", u""},
        {u"<!-- <b> --><P>", u""},
        {u"<script>if (a<b) document.write('<b>')</script>", u""},
        {u"<P>a</P", u"<P etiketinin “>” işareti yok"},
        {u"son <b", u"<b etiketinin “>” işareti yok"},
        {u"<!-- a", u"açıklama (<!--) kapanmamış"},
        {u"<FONT size=2>a", u"<font> kapanmamış"},
        {u"a</b><b>", u"</b> fazla"},
        {u"<style>a{}", u"<style> kapanmamış"},
        {u"<br/><body><base>", u""},  // not the element <b>
    };
    for (const auto& [html, expected] : cases)
        EXPECT_EQ(markupFault(html).value_or(QString()), expected) << html.toUtf8().constData();
}

TEST(LibraryWriter, LeavesNoRowsWhenItIsNotFinished) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.vq"_s);
    ASSERT_TRUE(LibraryWriter::create(path)->add(Author{AuthorId{1}, u"A"_s}));
    EXPECT_FALSE(Library::openFile(path, platform::OpenMode::ReadOnly));
    EXPECT_FALSE(LibraryWriter::create(path));  // the file is there
}
