// Books from files in a library: what stands in its tables, and what a failure or a kill leaves.
#include "data/added_books.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "data/library_check.h"
#include "search/matching/variant_table.h"
#include "support/book_lines.h"
#include "support/library_file.h"

namespace lirovan::data {
namespace {

using namespace lirovan::test;
using namespace Qt::StringLiterals;
using platform::BookContent;
using platform::Database;
using platform::OpenMode;

// Two topics under a level, with a picture, links both ways, and circumflex words.
QByteArray book(const QByteArray& title, const QByteArray& identifier, char digest = 'a') {
    return headLine(title, "ayşe IŞIK", identifier, digest) + pictureLine(0) + topicLine(0, "Bölüm", "") +
           topicLine(1, "Giriş <B>", "<P id='y'>hakîkat <a href='konu:2#z'>x</a><img src='resim:0'></P>", 0,
                     1) +
           topicLine(
               2, "SON",
               "<P id='z'>dünyâ <a href='konu:0'>a</a><a href='konu:1#y'>b</a><a href='konu:2#z'>c</a></P>",
               0, 1) +
           doneLine(3, 1);
}

struct AddedBooksTest : testing::Test {
    test::LibraryFile file = smallLibrary();
    FakeReader reader;
    Database database;

    void SetUp() override {
        file.variant(u"dunya", u"DÜNYÂ").topic(3000, 40, u"ESKİ", u"<P>DÜNYÂ Kur'ân</P>");
        const Library library = file.open();
        ASSERT_TRUE(search::rebuildVariantTable(library, [] { return true; }));
        database = library.database();
    }
    BookContent content(const QByteArray& lines) { return std::move(*reader.read(lines)); }
    BookAdded add(const QByteArray& lines, const AddBook& request = {}) {
        auto added = addBook(database, content(lines), request);
        EXPECT_TRUE(added) << added.error().message.toStdString();
        return *added;
    }
    std::string faults() { return checkLibrary(database)->join(u'/').toStdString(); }
    std::string variants() {
        return rows(database, u"SELECT KelimeKontYazili, KelimeKontAra FROM tbl_KelimeKont ORDER BY 2, 1");
    }
    // Everything but the counters and the variants' own keys.
    std::string all() {
        std::string text = variants();
        for (const QStringView table : {u"tbl_Yazar", u"tbl_Kitaplar", u"tbl_KonuBaslik", u"tbl_Konu"})
            text += rows(database, u"SELECT * FROM "_s + table.toString());
        return text;
    }
};

}  // namespace

TEST_F(AddedBooksTest, StandsInTheTablesLikeAnyOther) {
    const BookAdded added = add(book("Deniz &amp; <Dağ>", "urn:1"));
    EXPECT_TRUE(added.added);
    EXPECT_EQ(added.id.value, 1001);
    EXPECT_EQ(rows(database, u"SELECT * FROM tbl_Yazar WHERE YazarID>2"), "1001|ayşe IŞIK");
    EXPECT_EQ(rows(database, u"SELECT * FROM tbl_Kitaplar WHERE KitapID>1000"),
              "1001|Deniz ＆amp; ‹Dağ›|1001|1");
    // The greatest id of a topic was 4002, of a topic's text 3000.
    EXPECT_EQ(rows(database, u"SELECT * FROM tbl_KonuBaslik WHERE KitapID=1001"),
              "4003|1001|Giriş ‹B›|1/4004|1001|SON|2");
    EXPECT_EQ(rows(database, u"SELECT Konu, PartNumber FROM tbl_Konu WHERE KonuID>4002 ORDER BY KonuID"),
              "<P id=\"y\">hakîkat <a href=\"konu:4004#z\">x</a><img src=\"resim:1001\"></P>|1/"
              "<P id=\"z\">dünyâ <a href=\"konu:4003\">a</a><a href=\"konu:4003#y\">b</a><a "
              "href=\"#z\">c</a></P>|1");
    EXPECT_EQ(rows(database, u"SELECT ResimID, KitapID, Bicim, length(Resim) FROM tbl_Resim"),
              "1001|1001|image/gif|43");
    EXPECT_EQ(faults(), "");
    ASSERT_EQ(addedBooks(database)->size(), 1u);
    EXPECT_EQ(addedBooks(database)->at(0).author, u"ayşe IŞIK");

    // Another spelling of the author's name, another order.
    AddBook request{u" Ayşe ışık "_s, u"Ikinci"_s, SameBook::Leave, {false, true}};
    const BookAdded second = add(book("x", "urn:2", 'b'), request);
    EXPECT_EQ(second.topics, 1);
    EXPECT_EQ(rows(database, u"SELECT YazarID, KitapSiraID FROM tbl_Kitaplar WHERE KitapID=1002"), "1001|2");
    EXPECT_EQ(rows(database, u"SELECT Konu FROM tbl_Konu WHERE KonuID=4005"),
              "<P id=\"z\">dünyâ <a href=\"konu:4005\">a</a><a>b</a><a href=\"#z\">c</a></P>");
    EXPECT_EQ(rows(database, u"SELECT count(*) FROM tbl_Resim"), "1") << "no topic of the second shows it";
    EXPECT_EQ(faults(), "");
}

TEST_F(AddedBooksTest, TheSameBookIsLeftReplacedOrStandsBeside) {
    const BookAdded first = add(book("Deniz", "urn:1"));
    const std::string before = all();
    const BookAdded again = add(book("Deniz", "urn:1", 'b'));
    EXPECT_FALSE(again.added);
    EXPECT_EQ(again.id, first.id);
    EXPECT_EQ(all(), before);

    const QByteArray changed = headLine("Deniz 2", "ayşe IŞIK", "urn:2", 'a') +
                               topicLine(0, "Yeni", "<P>îman</P>") + topicLine(1, "SON", "<P>son</P>") +
                               doneLine(2);
    const BookAdded replaced = add(changed, {{}, {}, SameBook::Replace, {}});
    EXPECT_EQ(replaced.id, first.id);
    EXPECT_EQ(rows(database,
                   u"SELECT KonuID, KonuBaslik FROM tbl_KonuBaslik WHERE KitapID=1001 ORDER BY Konu_Sira"),
              "4005|Yeni/4004|SON");
    EXPECT_EQ(variants(), "DÜNYA|DÜNYÂ/iman|îman/Kuran|Kur`ân");
    EXPECT_EQ(faults(), "");

    EXPECT_EQ(add(changed, {{}, {}, SameBook::Beside, {}}).id.value, 1002);
    EXPECT_EQ(addedBooks(database)->size(), 2u);
}

TEST_F(AddedBooksTest, LeavesNoTraceWhenItIsTakenOutAndItsNumbersFree) {
    const std::string before = all();
    ASSERT_TRUE(removeBook(database, add(book("Deniz", "urn:1")).id));
    EXPECT_EQ(all(), before);
    EXPECT_EQ(rows(database, u"SELECT count(*) FROM tbl_Resim"), "0");
    EXPECT_EQ(faults(), "");
    EXPECT_EQ(add(book("Deniz", "urn:1")).id.value, 1002);
    EXPECT_EQ(rows(database, u"SELECT min(KonuID) FROM tbl_KonuBaslik WHERE KitapID=1002"), "4005");
    for (const qint64 own : {5, 32, 35, 40, 77}) EXPECT_FALSE(removeBook(database, BookId{own})) << own;
    EXPECT_TRUE(removeBook(database, BookId{1}, true));
    EXPECT_EQ(faults(), "");
}

TEST_F(AddedBooksTest, VariantsAreThoseOfAWholeRebuild) {
    const std::vector<QByteArray> words{"hakîkat", "Hakîkat", "îman", "HAKÎKAT",
                                        "Kur'ân",  "dünyâ",   "âlem", "Âlem"};
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 60; ++round) {
        const auto books = *addedBooks(database);
        if (books.size() > 3 || (!books.empty() && random() % 3 == 0)) {
            ASSERT_TRUE(removeBook(database, books[random() % books.size()].id));
        } else {
            QByteArray lines = headLine("K", "Y", QByteArray::number(random() % 4), 'a');
            for (int topic = 0; topic < 2; ++topic)
                lines += topicLine(topic, "k" + QByteArray::number(topic),
                                   "<P>" + QByteArray(words[random() % 8]).replace('\'', "’") + ' ' +
                                       words[random() % 4] + "</P>");
            add(lines + doneLine(2), {{}, {}, random() % 2 ? SameBook::Replace : SameBook::Beside, {}});
        }
        const std::string kept = variants();
        ASSERT_TRUE(search::rebuildVariantTable(Library::ofDatabase(database), [] { return true; }));
        ASSERT_EQ(kept, variants()) << round;
    }
}

TEST_F(AddedBooksTest, AFailureLeavesTheFileByteForByte) {
    add(book("Deniz", "urn:1"));
    const QByteArray before = readFile(file.path());
    const auto unchanged = [&](const char* what, const platform::Result<BookAdded>& added,
                               const char* words) {
        ASSERT_FALSE(added) << what;
        EXPECT_NE(added.error().message.toStdString().find(words), std::string::npos)
            << added.error().message.toStdString();
        EXPECT_TRUE(readFile(file.path()) == before) << what;
    };
    QByteArray lines = headLine("Uzun", "Y", "urn:3", 'c');
    for (int i = 0; i < 40; ++i) lines += topicLine(i, "k", "<P>" + QByteArray(50'000, 'a') + "</P>");
    const BookContent large = content(lines + doneLine(40));

    for (const qint64 stopAt : {1, 20, 40})
        unchanged("cancelled",
                  addBook(database, large, {}, [&](qint64 done, qint64) { return done < stopAt; }),
                  "durduruldu");
    ASSERT_TRUE(database.execute(u"PRAGMA max_page_count=20"));
    unchanged("full disk", addBook(database, large, {}), "yer kalmadı");
    ASSERT_TRUE(database.execute(u"PRAGMA max_page_count=1000000"));
    ASSERT_TRUE(database.execute(u"PRAGMA query_only=1"));
    unchanged("read-only", addBook(database, large, {}), "yazılamıyor");
    ASSERT_TRUE(database.execute(u"PRAGMA query_only=0; PRAGMA busy_timeout=50"));
    file.execute(u"BEGIN IMMEDIATE");
    unchanged("locked", addBook(database, large, {}), "kullanılıyor");
    file.execute(u"ROLLBACK");
    unchanged("nothing chosen",
              addBook(database, content(book("x", "urn:4", 'd')), {{}, {}, {}, {true, true, true}}),
              "konu yok");
    EXPECT_TRUE(addBook(database, large, {}));
}

TEST_F(AddedBooksTest, AKillLeavesTheLibraryBeforeOrBehindTheBook) {
    QByteArray lines = headLine("Uzun", "Y", "urn:3", 'c') + pictureLine(0);
    for (int i = 0; i < 30; ++i)
        lines += topicLine(i, "k", "<P>" + QByteArray(40'000, 'a') + " hakîkat</P><img src='resim:0'>");
    const BookContent large = content(lines + doneLine(30, 1));
    const std::string without = all();
    database.close();
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int with = 0;
    for (int round = 0; round < 60; ++round) {
        const pid_t program = fork();
        if (program == 0) {
            const Database own = Database::open(file.path(), OpenMode::ReadWrite).value();
            // Spilled early, so that the file itself is half written for most of the time. A kill, unlike a
            // power cut, loses nothing that was handed to the system.
            (void)static_cast<bool>(own.execute(u"PRAGMA cache_spill=5; PRAGMA synchronous=OFF"));
            while (true) {
                const auto presentBooks = addedBooks(own);
                for (const AddedBook& present : *presentBooks)
                    if (!removeBook(own, present.id)) _exit(1);
                if (!addBook(own, large, {})) _exit(1);
            }
        }
        usleep(random() % 250'000);
        kill(program, SIGKILL);
        int status = 0;
        waitpid(program, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        database = Database::open(file.path(), OpenMode::ReadOnly).value();
        ASSERT_EQ(rows(database, u"PRAGMA integrity_check"), "ok");
        const auto books = *addedBooks(database);
        if (books.empty()) {
            ASSERT_EQ(all(), without);
        } else {
            ++with;
            ASSERT_EQ(books.size(), 1u);
            ASSERT_EQ(books[0].topics, 30);
            ASSERT_EQ(faults(), "");
            ASSERT_EQ(rows(database, u"SELECT count(*) FROM tbl_KelimeKont WHERE KelimeKontAra='hakîkat'"),
                      "1");
        }
        database.close();
    }
    EXPECT_GT(with, 0);
    EXPECT_LT(with, 60);
}

TEST_F(AddedBooksTest, TheCheckNamesWhatLeadsNowhere) {
    add(book("Deniz", "urn:1"));
    ASSERT_TRUE(
        database.execute(u"UPDATE tbl_Konu SET Konu='<P><a href=\"konu:77\">a</a><img src=\"resim:78\"></P>' "
                         u"WHERE KonuID=4003;"
                         u"INSERT INTO tbl_Kaynak (KitapID) VALUES (79);"
                         u"INSERT INTO tbl_Resim VALUES (80,79,'a','image/png',x'00')"));
    EXPECT_EQ(
        faults(),
        "Kaynak 79: kitabı yok./Konu 4003: bağlandığı konu yok (77)./Konu 4003: gösterdiği resim yok (78)./"
        "Resim 1001: hiçbir konuda yok./Resim 80: hiçbir konuda yok./Resim 80: kitabı yok./"
        "Resim 80: resim image/png türünde değil.");
    ASSERT_TRUE(database.execute(u"DROP TABLE tbl_Kaynak"));
    EXPECT_NE(faults().find("yalnız bir bölümü"), std::string::npos);
}

}  // namespace lirovan::data
