// Where notes are kept, and that none is lost or hidden when the library's folder cannot be written.
#include "notes/notes_place.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QThread>

#include "notes/note_draft.h"
#include "support/files.h"
#include "support/user_places.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace Qt::StringLiterals;

namespace {

class NotesPlaceTest : public testing::Test {
  protected:
    NotesPlaceTest() { test::letLookInto(folder_.path()); }

    std::string titles() const {
        const auto notes = openNotes(notesPlace(library_));
        if (!notes) return notes.error().message.toStdString();
        return test::rows(notes->database(), u"SELECT NotID, NotBaslik FROM tbl_Notlar ORDER BY NotID");
    }
    static void add(const platform::Result<NotesDatabase>& notes, const QString& title) {
        ASSERT_TRUE(notes && notes->add(title, u"metin"_s, {}));
    }
    void addToLibrary(const QString& title) const { add(NotesDatabase::open(library_), title); }

    QTemporaryDir folder_;
    const platform::AppFolder library_{folder_.path()};
    const QString libraryNotes_ = folder_.filePath(u"Notlar"_s);
    const QString file_ = folder_.filePath(u"Notlar/notlar.vq"_s);
    test::UserPlaces user_;
};

}  // namespace

TEST_F(NotesPlaceTest, IsTheLibrarysFolderUnlessThatIsProtected) {
    EXPECT_FALSE(notesPlace(library_).isUsers());
    EXPECT_FALSE(notesPlace(platform::AppFolder(u"/dev/null"_s)).isUsers());
    {
        const test::ProtectedFolder without(folder_.path());
        const NotesPlace place = notesPlace(library_);
        ASSERT_TRUE(place.isUsers());
        EXPECT_FALSE(QFileInfo::exists(place.home.text()));
        EXPECT_TRUE(*preparePlace(place));
        EXPECT_FALSE(*preparePlace(place));  // told once
        add(openNotes(place), u"benim"_s);
        EXPECT_FALSE(QFileInfo::exists(libraryNotes_));
        EXPECT_EQ(titles(), "1|benim");
    }
    EXPECT_EQ(titles(), "1|benim");  // can be written again
    // Of another library there is nothing here.
    const QTemporaryDir other;
    EXPECT_FALSE(notesPlace(platform::AppFolder(other.path())).isUsers());
}

TEST_F(NotesPlaceTest, TakesWhatTheLibraryHasAndGetsLaterAndNothingTwice) {
    addToLibrary(u"silinen"_s);
    addToLibrary(u"eski"_s);
    ASSERT_TRUE(NotesDatabase::open(library_)->remove({1}));
    addToLibrary(u"bırakılan"_s);
    {
        const NoteDraft draft = NoteDraft::in(library_);
        draft.keep({{2}, u"eski"_s, {}, {}}, {});
        while (!draft.failure()) QThread::yieldCurrentThread();
    }
    const QByteArray before = test::readFile(file_);
    {
        const test::ProtectedFolder protectedNotes(libraryNotes_);
        EXPECT_EQ(titles(), "2|eski/3|bırakılan");
        const NotesPlace place = notesPlace(library_);
        EXPECT_EQ(NoteDraft::in(place.home).left()->note.value, 2);
        add(openNotes(place), u"benim"_s);
        ASSERT_TRUE(openNotes(place)->remove({3}));
        EXPECT_EQ(titles(), "2|eski/4|benim");
        EXPECT_EQ(test::readFile(file_), before);
    }
    addToLibrary(u"onların"_s);
    EXPECT_EQ(titles(), "2|eski/4|benim/5|onların");
    EXPECT_EQ(titles(), "2|eski/4|benim/5|onların");
}

TEST_F(NotesPlaceTest, TakesALibrarysFileAsItWasBeforeAnInterruptedWriteAndWaitsForRoom) {
    addToLibrary(u"eski"_s);
    test::interruptWrite(file_);
    const test::ProtectedFolder protectedNotes(libraryNotes_);
    {
        // Without the copy no notes file may come to be: the old notes would stay hidden behind it.
        const test::UserPlaces shut(test::UserPlaces::Kind::Shut);
        EXPECT_FALSE(openNotes(notesPlace(library_)));
    }
    const test::UserPlaces user;
    EXPECT_EQ(titles(), "1|eski");
    const auto notes = openNotes(notesPlace(library_));
    EXPECT_EQ(test::rows(notes->database(), u"PRAGMA integrity_check"), "ok");
}
