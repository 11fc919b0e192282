// The notes file: its rows, and what happens when it is missing, damaged, full, read-only or shared.
#include "notes/notes_database.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "notes/export.h"
#include "support/files.h"
#include "support/full_disk.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace Qt::StringLiterals;

namespace {

class NotesDatabaseTest : public testing::Test {
  protected:
    platform::Result<NotesDatabase> open() const {
        return NotesDatabase::open(platform::AppFolder(folder_.path()));
    }

    QTemporaryDir folder_;
    const QString path_ = folder_.filePath(u"Notlar/notlar.vq"_s);
};

}  // namespace

TEST_F(NotesDatabaseTest, CreatesTheFileKeepsRowsAndNeverGivesAKeyTwice) {
    const QDate date(2008, 3, 14);
    EXPECT_EQ(open()->add(u" Işık "_s, u"{\\rtf1 a}"_s, date)->value, 1);
    EXPECT_EQ(open()->add(u"iki"_s, u" "_s, date)->value, 2);
    // No journal stays behind.
    EXPECT_EQ(QDir(folder_.filePath(u"Notlar"_s)).entryList(QDir::Files), QStringList{u"notlar.vq"_s});
    const NotesDatabase notes = *open();
    EXPECT_EQ(test::rows(notes.database(), u"select * from tbl_Notlar"),
              "1|2008-03-14| Işık |{\\rtf1 a}/2|2008-03-14|iki| ");
    ASSERT_TRUE(notes.remove({2}));
    EXPECT_EQ(notes.add(u"üç"_s, u"c"_s, date)->value, 3);
    ASSERT_TRUE(notes.database().execute(u"insert into tbl_Notlar values (70000, null, null, null)"));
    EXPECT_EQ(notes.add(u"dört"_s, u"d"_s, date)->value, 70001);
    ASSERT_EQ(notes.list(1)->size(), 4U);
    EXPECT_EQ(notes.list(1)->at(0).rtf, u"{");
    EXPECT_EQ(notes.list(1)->at(2).date, QString());
}

TEST_F(NotesDatabaseTest, RefusesWhatItCannotUseInTurkish) {
    const QByteArray foreign(5000, 'x');
    test::writeFile(path_, foreign);
    const auto damaged = open();
    ASSERT_FALSE(damaged);
    EXPECT_TRUE(damaged.error().message.contains(u"veritabanı")) << damaged.error().message.toStdString();
    EXPECT_EQ(test::readFile(path_), foreign);
    ASSERT_TRUE(QFile::remove(path_) && QDir().mkpath(path_));  // a folder in the place of the file
    EXPECT_FALSE(open());
    EXPECT_FALSE(NotesDatabase::open(platform::AppFolder(u"/dev/null"_s)));
    EXPECT_FALSE(NotesDatabase().add(u"a"_s, u"b"_s, {}));
}

TEST_F(NotesDatabaseTest, MakesAnEmptyFileAnew) {
    test::writeFile(path_, {});  // of a disk that was full
    const auto notes = NotesDatabase::open(platform::AppFolder(folder_.path()), [](const QString&) {
        return platform::Result<void>(platform::Error{u"Dosya boş (0 bayt)."_s});
    });
    ASSERT_TRUE(notes);
    EXPECT_TRUE(notes->add(u"a"_s, u"b"_s, {}));
}

TEST_F(NotesDatabaseTest, KeepsTheFileWholeWhenItCannotWrite) {
    const NotesDatabase notes = *open();
    const QString longText(500'000, u'x');
    const NoteId id = *notes.add(u"dolu"_s, u"önceki"_s, {});
    ASSERT_TRUE(notes.database().execute(u"PRAGMA max_page_count=20"));
    EXPECT_EQ(notes.add(u"büyük"_s, longText, {}).error().message, u"Diskte yer kalmadı.");
    EXPECT_FALSE(notes.replaceRtf(id, u"önceki"_s, longText));
    EXPECT_EQ(test::rows(notes.database(), u"select NotID, NotRTF from tbl_Notlar"), "1|önceki");
    ASSERT_TRUE(notes.database().execute(u"PRAGMA query_only=1"));
    EXPECT_EQ(notes.replaceRtf(id, u"önceki"_s, u"yeni"_s).error().message,
              u"Veritabanı dosyasına yazılamıyor.");
}

TEST_F(NotesDatabaseTest, ExportsEveryNoteInThreeForms) {
    const NotesDatabase notes = *open();
    const QString rtf = u"{\\rtf1\\ansicpg1254 {\\b I\\'fe\\'fdk}\\par x}"_s;
    ASSERT_TRUE(notes.add(u"Bir/İki: \"üç\"..."_s, rtf, {}) && notes.add({}, u" "_s, {}));
    const QDir target(folder_.filePath(u"dışarı"_s));
    EXPECT_EQ(*exportNotes(notes, target.path()), 2);
    const QStringList files = target.entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(files.join(u'|'),
              u"1 Bir_İki_ _üç_.html|1 Bir_İki_ _üç_.rtf|1 Bir_İki_ _üç_.txt|2.html|2.rtf|2.txt");
    EXPECT_TRUE(test::readFile(target.filePath(files[0])).contains("<b>Işık</b>"));
    EXPECT_TRUE(test::readFile(target.filePath(files[1])).contains("I\\'fe\\'fdk"));
    EXPECT_EQ(test::readFile(target.filePath(files[2])), "Işık\nx\n");
    EXPECT_FALSE(exportNotes(notes, path_));  // a file in the place of the folder
    const QTemporaryDir empty;
    const test::FullDisk full;
    EXPECT_FALSE(exportNotes(notes, empty.path()));
    EXPECT_TRUE(QDir(empty.path()).isEmpty());
}
