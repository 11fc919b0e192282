// The reader's file: session and bookmarks, kept, read again, and what becomes of bad files.
#include "desk/reader_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include "desk/bookmark_list.h"
#include "desk/session_store.h"
#include "support/full_disk.h"
#include "support/library_file.h"
#include "support/user_places.h"

using namespace lirovan;
using namespace lirovan::desk;
using namespace lirovan::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

Session someSession() {
    Session session;
    session.continues = true;
    session.window = {10, 20, 900, 700};
    session.maximized = false;
    session.browseWidth = 4321.5;
    session.tab = 1;
    session.unfoldedAuthors = {{1}, {2}};
    session.unfoldedBooks = {{40}};
    platform::PagePlace place;
    place.passage = u"yatağını \"bulur\" 😀"_s;
    place.share = 0.5;
    session.page = LastPage{{4002}, {40}, u"Irmak Boyu"_s, u"Ağaçlar"_s, place};
    session.searches.add({u"su"_s, {.caseSensitive = true, .together = true}});
    session.searches.add({u"dağ ışık"_s, {.soundChanges = true}});
    return session;
}

struct ReaderFileTest : testing::Test {
    LibraryFile file = smallLibrary();
    const QString path = readerFilePath(file.appFolder());
    data::Library library = file.open();
    Bookmarks bookmarks{path};

    Bookmark at(qint64 topic, const QString& passage, const QString& line = {}) {
        platform::PagePlace place;
        place.passage = passage;
        Bookmark bookmark = bookmarkOf(library, {topic}, {topic / 100}, place).value();
        bookmark.line = line;
        return bookmark;
    }
};

}  // namespace

TEST_F(ReaderFileTest, GivesASessionBackAsItWasKept) {
    EXPECT_EQ(path, file.filePath(u"Notlar/okur.vq"_s));
    {
        SessionStore store(path);
        EXPECT_EQ(store.load(5s), std::nullopt);
        EXPECT_FALSE(QFileInfo::exists(path)) << "nothing is made by looking";
        for (int i = 0; i < 50; ++i) {
            Session session = someSession();
            session.tab = i % 2;
            store.keep(session);
        }
    }
    const auto session = SessionStore(path).load(5s);
    ASSERT_TRUE(session);
    EXPECT_EQ(sessionJson(*session), sessionJson(someSession()));
    EXPECT_EQ(session->page->place, someSession().page->place);
    EXPECT_EQ(session->window, someSession().window);
}

TEST_F(ReaderFileTest, AStartGoesOnWithoutASessionThatCannotBeReadOrIsSlowToCome) {
    ASSERT_TRUE(writeSession(path, someSession()));
    const QByteArray good = readFile(path);
    QByteArray newer = good, foreign = good;
    newer[63] = 2;    // the last byte of the user version
    foreign[71] = 1;  // and of the application id
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("bu bir veritabanı değil, yalnızca bir metin").repeated(300),
          good.first(5000), newer, foreign}) {
        writeFile(path, bytes);
        EXPECT_EQ(SessionStore(path).load(5s), std::nullopt) << bytes.size();
        const QByteArray before = readFile(path);
        if (bytes.isEmpty()) continue;
        SessionStore(path).keep(someSession());
        EXPECT_EQ(readFile(path), before) << "what is not ours to read is not ours to write";
        EXPECT_FALSE(bookmarks.all()) << "lost bookmarks are told";
        EXPECT_FALSE(bookmarks.add(at(101, u"Şu dağın"_s)));
    }
    writeFile(path, good);
    auto other = platform::Database::open(path, platform::OpenMode::ReadWrite);
    ASSERT_TRUE(other && other->execute(u"BEGIN EXCLUSIVE"));
    QElapsedTimer time;
    time.start();
    SessionStore store(path);
    EXPECT_EQ(store.load(100ms), std::nullopt) << "another program writes";
    EXPECT_LT(time.elapsed(), 2000);
    other->close();
    EXPECT_EQ(sessionFromJson("[1,{\"a\":").searches.all().size(), 0U);
    EXPECT_EQ(sessionFromJson(R"({"sekme":77,"pencere":[1],"aramalar":[3,[],["x",1]],"sayfa":{}})")
                  .searches.all()
                  .size(),
              1U);
}

TEST(AskedSearches, AreTwentyEachOnce) {
    search::AskedSearches asked;
    for (int i = 0; i < 30; ++i) asked.add({QString::number(i), {}});
    asked.add({u" 25"_s, {.clearResult = true}});
    asked.add({u"25"_s, {.wholeWord = true}});
    asked.add({QString(), {}});
    ASSERT_EQ(asked.all().size(), search::AskedSearches::Most);
    EXPECT_EQ(asked.all()[0].query + asked.all()[1].query + asked.all()[2].query, u"252529"_s);
}

TEST_F(ReaderFileTest, TwoProgramsAddBookmarksToOneFileAndADeletedOneComesBack) {
    const Bookmarks other{path};
    ASSERT_TRUE(bookmarks.all() && bookmarks.all()->empty());
    EXPECT_FALSE(QFileInfo::exists(path));
    const auto first = bookmarks.add(at(101, u"Şu dağın ardı"_s, u"tepe"_s));
    const auto second = other.add(at(4002, u"Su akar"_s));
    ASSERT_TRUE(first && second && *first != *second);
    ASSERT_TRUE(other.rename(*first, u"dağ"_s));
    auto all = bookmarks.all();
    ASSERT_TRUE(all && all->size() == 2);
    EXPECT_EQ(all->front().line, u"dağ"_s);
    EXPECT_EQ(all->front().where(), u"Giriş – Yaz Defteri"_s);
    EXPECT_EQ(all->front().author, u"Sabri Işık"_s);

    BookmarkList list(bookmarks, [](const Bookmark& each) { return each.topic.value == 101 ? 5 : 3; });
    ASSERT_TRUE(list.load());
    EXPECT_EQ(list.at(0).id, *second) << "the newest first";
    list.sort(BookmarkList::Order::Place);
    EXPECT_EQ(list.at(0).topic.value, 4002);
    ASSERT_TRUE(list.remove({1, 0}));
    EXPECT_EQ(list.count(), 0U);
    EXPECT_EQ(bookmarks.all()->size(), 0U);
    const auto third = bookmarks.add(at(102, u"Su akar"_s));
    EXPECT_GT(*third, *second) << "no id comes twice";
    ASSERT_TRUE(list.undo());
    EXPECT_FALSE(list.canUndo());
    EXPECT_EQ(list.countOfAll(), 3U);
    EXPECT_EQ(bookmarks.all()->front().id, *first);
}

TEST_F(ReaderFileTest, ListsWhatTheSearchFindsAndWritesItOut) {
    for (const auto& [topic, line] :
         {std::pair(101, u"İlk <yer>"_s), {102, u"IŞIĞA dair"_s}, {4001, QString()}})
        ASSERT_TRUE(bookmarks.add(at(topic, topic == 102 ? u"Su akar"_s : u"Şu dağın ardı ışıktır"_s, line)));
    BookmarkList list(bookmarks, [](const Bookmark&) { return 0; });
    ASSERT_TRUE(list.load());
    for (const auto& [query, count] : {std::pair(u"ışığa"_s, 1),
                                       {u"IŞIK"_s, 3},
                                       {u"ağaçlar"_s, 1},
                                       {u"yok"_s, 0},
                                       {u"<yer>"_s, 1},
                                       {u"  "_s, 3}}) {
        list.search(query);
        EXPECT_EQ(int(list.count()), count) << query.toStdString();
    }
    list.search(u"ilk"_s);
    EXPECT_TRUE(
        list.asText().startsWith(u"İlk <yer>\n\"Şu dağın ardı ışıktır\"\nSabri Işık, Yaz Defteri, Giriş\n"_s))
        << list.asText().toStdString();
    EXPECT_TRUE(list.asHtml().contains(u"<h2>İlk &lt;yer&gt;</h2>"_s));
    EXPECT_FALSE(list.asHtml().contains(u"Ağaçlar"_s)) << "only what is listed";
}

TEST_F(ReaderFileTest, ABookmarkFindsItsPassageInALibraryThatWasMadeAnew) {
    platform::PagePlace top;
    top.atTop = true;
    top.passage = u"Ağaçlar Irmak Boyu"_s;  // the page's frame
    const Bookmark mark = bookmarkOf(library, {4002}, {40}, top).value();
    EXPECT_EQ(mark.place.passage, u"Su akar, yatağını bulur."_s);
    using Kind = Target::Kind;
    EXPECT_EQ(targetOf(library, mark).kind, Kind::Place);

    const std::tuple<const char16_t*, Kind, qint64> changes[] = {
        {u"UPDATE tbl_Konu SET Konu='<P>Önsöz.</P><P>Su <i>akar</i>,\nyatağını  bulur.</P>' WHERE "
         u"KonuID=4002",
         Kind::Place, 4002},
        // Other ids, and another topic that has got the id.
        {u"UPDATE tbl_Konu SET KonuID=KonuID+7 WHERE KonuID>4000; UPDATE tbl_KonuBaslik SET KonuID=KonuID+7 "
         u"WHERE KonuID>4000;"
         "UPDATE tbl_Konu SET KonuID=4002 WHERE KonuID=101; UPDATE tbl_KonuBaslik SET KonuID=4002 WHERE "
         "KonuID=101",
         Kind::Place, 4009},
        {u"UPDATE tbl_KonuBaslik SET KonuBaslik='NEHİR' WHERE KonuID=4009", Kind::Place, 4009},
        {u"UPDATE tbl_KonuBaslik SET KonuBaslik='IRMAK BOYU' WHERE KonuID=4009; UPDATE tbl_Konu SET "
         u"Konu='kurudu' WHERE KonuID=4009",
         Kind::Topic, 4009},
        {u"DELETE FROM tbl_Konu WHERE KonuID>4000; DELETE FROM tbl_KonuBaslik WHERE KonuID>4000", Kind::None,
         0}};
    for (const auto& [sql, kind, topic] : changes) {
        file.execute(QStringView(sql));
        const Target target = targetOf(library, mark);
        EXPECT_EQ(target.kind, kind) << QStringView(sql).toString().toStdString();
        EXPECT_EQ(target.topic.value, topic);
    }
}

TEST_F(ReaderFileTest, SetsABadFileAsideAndGoesOnWithAnother) {
    QDir().mkpath(QFileInfo(path).path());
    writeFile(path, "bozuk");
    EXPECT_FALSE(bookmarks.add(at(101, u"Şu dağın"_s)));
    const auto aside = setReaderFileAside(path);
    ASSERT_TRUE(aside);
    EXPECT_TRUE(bookmarks.add(at(101, u"Şu dağın"_s)));
    EXPECT_EQ(readFile(*aside), "bozuk");

    const QByteArray good = readFile(path);
    QByteArray page = good, schema = good, layout = good;
    page.replace(good.size() - 4096, 4096, QByteArray(4096, '\xff'));
    schema.replace(100, 1000, QByteArray(1000, '\xff'));
    layout[63] = 9;  // of a newer version, and sound
    const std::pair<QByteArray, bool> files[] = {{good, false},           {layout, false}, {page, true},
                                                 {schema, true},          {{}, false},     {"bozuk", true},
                                                 {good.first(5000), true}};
    for (const auto& [bytes, damaged] : files) {
        writeFile(path, bytes);
        EXPECT_EQ(isDamagedReaderFile(path), damaged) << (&bytes - &files[0].first);
    }
    EXPECT_TRUE(QFile::remove(path));
    EXPECT_FALSE(isDamagedReaderFile(path));
}

TEST_F(ReaderFileTest, ASessionThatCouldNotBeReadIsNotWrittenOver) {
    ASSERT_TRUE(writeSession(path, someSession()));
    const QByteArray before = readFile(path);
    auto other = platform::Database::open(path, platform::OpenMode::ReadWrite);
    ASSERT_TRUE(other && other->execute(u"BEGIN EXCLUSIVE"));
    SessionStore store(path);
    EXPECT_EQ(store.load(10s), std::nullopt) << "another program held it too long";
    EXPECT_FALSE(store.isAnswered()) << "it is read again";
    other->close();
    EXPECT_TRUE(store.load(10s));
    EXPECT_TRUE(store.isAnswered());
    EXPECT_EQ(readFile(path), before);
}

TEST_F(ReaderFileTest, AFullDiskIsToldAndLosesNothing) {
    {
        const FullDisk full;
        EXPECT_FALSE(bookmarks.add(at(101, u"Şu dağın"_s))) << "not even made";
        EXPECT_FALSE(writeSession(path, someSession()));
    }
    ASSERT_TRUE(bookmarks.add(at(101, u"Şu dağın"_s)));
    {
        const FullDisk full;
        EXPECT_FALSE(bookmarks.add(at(102, u"Su akar"_s)));
        EXPECT_FALSE(bookmarks.remove({1}));
        SessionStore(path).keep(someSession());
    }
    ASSERT_TRUE(bookmarks.all());
    EXPECT_EQ(bookmarks.all()->size(), 1U);
    EXPECT_TRUE(bookmarks.add(at(102, u"Su akar"_s)));
}

TEST_F(ReaderFileTest, GoesOnInTheUsersFolderWhereTheLibrarysCannotBeWritten) {
    const UserPlaces places;
    ASSERT_TRUE(bookmarks.add(at(101, u"Şu dağın"_s)));
    letLookInto(file.folder());
    const ProtectedFolder notes(file.filePath(u"Notlar"_s));
    const Bookmarks users{readerFilePath(file.appFolder())};
    EXPECT_NE(users.path(), path);
    ASSERT_TRUE(users.add(at(102, u"Su akar"_s)));
    EXPECT_EQ(users.all()->size(), 2U);
    EXPECT_EQ(readerFilePath(file.appFolder()), users.path());
    EXPECT_EQ(bookmarks.all()->size(), 1U);
}
