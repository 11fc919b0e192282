// The notes file: its rows, and what happens when it is missing, damaged, full, read-only or shared.
#include "notes/notes_database.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "notes/export.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace Qt::StringLiterals;

namespace {

class NotesDatabaseTest : public testing::Test {
  protected:
    NotesDatabase open() {
        auto opened = NotesDatabase::open(platform::AppFolder(folder_.path()));
        EXPECT_TRUE(opened) << (opened ? "" : opened.error().message.toStdString());
        return opened ? *opened : NotesDatabase();
    }
    NoteId add(const NotesDatabase& notes, const QString& title, const QString& rtf) {
        const auto added = notes.add(title, rtf, QDate(2008, 3, 14));
        EXPECT_TRUE(added);
        return added ? *added : NoteId{};
    }
    QString path() const { return folder_.filePath(u"Notlar/notlar.vq"_s); }

    QTemporaryDir folder_;
};

}  // namespace

TEST_F(NotesDatabaseTest, CreatesFolderAndFileAndKeepsRows) {
    {
        const NotesDatabase notes = open();
        EXPECT_EQ(add(notes, u" Işık "_s, u"{\\rtf1 a}"_s).value, 1);
        EXPECT_EQ(add(notes, u"iki"_s, u" "_s).value, 2);
    }
    EXPECT_TRUE(QFile::exists(path()));
    EXPECT_EQ(QDir(folder_.filePath(u"Notlar"_s)).entryList(QDir::Files).size(),
              1);  // no journal stays behind
    const auto note = open().find({1});
    ASSERT_TRUE(note && *note);
    EXPECT_EQ((*note)->title, u" Işık ");
    EXPECT_EQ((*note)->date, u"2008-03-14");
    EXPECT_EQ((*note)->rtf, u"{\\rtf1 a}");
}

TEST_F(NotesDatabaseTest, NeverGivesAKeyTwice) {
    const NotesDatabase notes = open();
    add(notes, u"bir"_s, u"a"_s);
    const NoteId last = add(notes, u"iki"_s, u"b"_s);
    ASSERT_TRUE(notes.remove(last));
    EXPECT_GT(add(notes, u"üç"_s, u"c"_s).value, last.value);
    ASSERT_TRUE(notes.database().execute(u"insert into tbl_Notlar values (70000, null, null, null)"));
    EXPECT_EQ(add(notes, u"dört"_s, u"d"_s).value, 70001);
    const auto list = notes.list(1);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->size(), 4U);
    EXPECT_EQ(list->at(2).date, QString());
}

TEST_F(NotesDatabaseTest, RefusesWhatItCannotUseInTurkish) {
    ASSERT_TRUE(QDir().mkpath(folder_.filePath(u"Notlar"_s)));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(5000, 'x'));
    file.close();
    const auto damaged = NotesDatabase::open(platform::AppFolder(folder_.path()));
    ASSERT_FALSE(damaged);
    EXPECT_TRUE(damaged.error().message.contains(u"veritabanı")) << damaged.error().message.toStdString();
    EXPECT_EQ(file.size(), 5000);

    QFile::remove(path());
    ASSERT_TRUE(QDir().mkpath(path()));  // a folder in the place of the file
    EXPECT_FALSE(NotesDatabase::open(platform::AppFolder(folder_.path())));
    EXPECT_FALSE(NotesDatabase::open(platform::AppFolder(u"/dev/null"_s)));
    EXPECT_FALSE(NotesDatabase().add(u"a"_s, u"b"_s, {}));
}

TEST_F(NotesDatabaseTest, KeepsTheFileWholeWhenItCannotWrite) {
    const NotesDatabase notes = open();
    const NoteId id = add(notes, u"dolu"_s, u"önceki"_s);
    ASSERT_TRUE(notes.database().execute(u"PRAGMA max_page_count=20"));
    const auto added = notes.add(u"büyük"_s, QString(500'000, u'x'), {});
    ASSERT_FALSE(added);
    EXPECT_EQ(added.error().message, u"Diskte yer kalmadı.");
    EXPECT_FALSE(notes.replaceRtf(id, u"önceki"_s, QString(500'000, u'x')));
    EXPECT_EQ((**notes.find(id)).rtf, u"önceki");
    EXPECT_EQ(notes.list(10)->size(), 1U);
    ASSERT_TRUE(notes.database().execute(u"PRAGMA query_only=1"));
    EXPECT_EQ(notes.replaceRtf(id, u"önceki"_s, u"yeni"_s).error().message,
              u"Veritabanı dosyasına yazılamıyor.");
}

TEST_F(NotesDatabaseTest, ExportsEveryNoteInThreeForms) {
    const NotesDatabase notes = open();
    add(notes, u"Bir/İki: \"üç\"..."_s, u"{\\rtf1\\ansicpg1254 {\\b I\\'fe\\'fdk}\\par x}"_s);
    add(notes, QString(), u" "_s);
    const QString target = folder_.filePath(u"dışarı"_s);
    const auto count = exportNotes(notes, target);
    ASSERT_TRUE(count);
    EXPECT_EQ(*count, 2);
    const QStringList files = QDir(target).entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(files, QStringList({u"1 Bir_İki_ _üç_.html"_s, u"1 Bir_İki_ _üç_.rtf"_s,
                                  u"1 Bir_İki_ _üç_.txt"_s, u"2.html"_s, u"2.rtf"_s, u"2.txt"_s}));
    const auto content = [&](const QString& name) {
        QFile file(QDir(target).filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    };
    EXPECT_EQ(content(files[2]), u"Işık\nx\n");
    EXPECT_TRUE(content(files[1]).contains(u"I\\'fe\\'fdk"));
    EXPECT_TRUE(content(files[0]).contains(u"<b>Işık</b>"));
    EXPECT_FALSE(exportNotes(notes, path()));  // a file in the place of the folder
}
