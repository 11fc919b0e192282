// Imports with the real import program, and with programs that misbehave in its place.
#include "platform/core/import/importer.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QLockFile>
#include <QTemporaryDir>

#include "platform/core/import/replace_file.h"
#include "support/files.h"
#include "support/jet_writer.h"
#include "support/places.h"

namespace lirovan::platform {
namespace {

using namespace lirovan::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString Program = test::builtProgram(u"lirovan-jet-aktar"_s);

constexpr QStringView PlainLibrary =
    u"CREATE TABLE tbl_Yazar (YazarID INTEGER PRIMARY KEY, Yazar TEXT);"
    u"CREATE TABLE TBL_KITAPLAR (KitapID, KitapAdi TEXT, YazarID, KitapSiraID, Fazla);"
    u"CREATE TABLE tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira);"
    u"CREATE TABLE tbl_Konu (Kayit, KonuID, Konu, Parca);"
    u"INSERT INTO tbl_Yazar VALUES (1,'Şükrü İnan');"
    u"INSERT INTO tbl_Kitaplar VALUES ('70000','Birinci',1,2.5,'x'),(35,'Saklı',1,'3',NULL);"
    u"INSERT INTO tbl_KonuBaslik VALUES (9,70000,'GİRİŞ',1),(9,35,NULL,NULL);"
    u"INSERT INTO tbl_Konu VALUES (4,9,'<P>ağaç</P>','7');";

// A library with what real files hold: texts in and outside the row, moved and deleted rows, missing values.
QByteArray jetLibrary(const QString& longText, bool locked = false) {
    using enum JetType;
    return jetFile(
        {{u"tbl_Yazar"_s, {{u"YazarID"_s, Long}, {u"Yazar"_s, Text}}, {{{7, u"Şükrü İnan"_s}}}},
         {u"tbl_Kitaplar"_s,
          {{u"KitapID"_s, Long}, {u"KitapAdi"_s, Text}, {u"YazarID"_s, Long}, {u"KitapSiraID"_s, Double}},
          {{{70000, u"Birinci"_s, 7, 1.5}}}},
         {u"tbl_KonuBaslik"_s,
          {{u"KonuID"_s, Long}, {u"KitapID"_s, Long}, {u"KonuBaslik"_s, Text}, {u"Konu_Sira"_s, Long}},
          {{{1, 70000, u"GİRİŞ"_s, 1}, JetRowState::Moved},
           {{2, 70000, u"silinmiş"_s, 2}, JetRowState::Deleted},
           {{3, 70000, JetCell(), 3}}}},
         {u"tbl_Konu"_s,
          {{u"A"_s, Long}, {u"KonuID"_s, Long}, {u"Konu"_s, Memo}, {u"B"_s, Long}},
          {{{1, 1, u"kısa"_s, 1}}, {{2, 2, longText.left(900), 2}}, {{3, 3, longText, JetCell()}}}}},
        locked);
}

struct ImportTest : testing::Test {
    QTemporaryDir folder;
    const QString library = path(u"kitaplar.vq"_s);
    const Importer importer{{Program, 60000ms}};

    QString path(const QString& name) const { return folder.filePath(name); }

    QString sqlite(const QString& file, QStringView sql) const {
        QFile::remove(file);
        EXPECT_TRUE(Database::open(file, OpenMode::Create).value().execute(sql));
        return file;
    }
    QStringList names() const {
        return QDir(folder.path()).entryList({u"*.vq*"_s}, QDir::Files | QDir::Hidden, QDir::Name);
    }

    Database imported(LayoutKind kind, const ImportProgress& progress = {}) const {
        const auto ensured = importer.ensureLayout(library, kind, progress);
        EXPECT_TRUE(ensured && ensured->imported) << (ensured ? "" : ensured.error().message.toStdString());
        return Database::open(library, OpenMode::ReadOnly).value();
    }
    // What the tables of a library hold, one in a line.
    static std::string content(const Database& database) {
        std::string all;
        for (const QStringView table : {u"tbl_Yazar", u"tbl_Kitaplar", u"tbl_KonuBaslik", u"tbl_Konu"})
            all += rows(database, u"select * from %1"_s.arg(table)) + '\n';
        return all;
    }
    // A failed import says why, leaves the file as it was, and nothing beside it.
    void expectFailure(const Importer& by, const QByteArray& bytes, QStringView message,
                       const ImportProgress& progress = {}) const {
        writeFile(library, bytes);
        const auto ensured = by.ensureLayout(library, LayoutKind::Library, progress);
        ASSERT_FALSE(ensured) << message.toUtf8().constData();
        EXPECT_TRUE(ensured.error().message.contains(message)) << ensured.error().message.toStdString();
        EXPECT_EQ(readFile(library), bytes);
        EXPECT_EQ(names(), QStringList{u"kitaplar.vq"_s});
    }
};

TEST_F(ImportTest, ReplacesAPlainLibraryAndKeepsTheOriginal) {
    const QByteArray original = readFile(sqlite(library, PlainLibrary));
    writeFile(path(u"kitaplar.vq.sqlite"_s), "mine");
    writeFile(path(u"kitaplar.vq.aktarma"_s), original.first(5000));  // left by an interrupted import
    EXPECT_EQ(
        content(imported(LayoutKind::Library)),
        "1|Şükrü İnan\n70000|Birinci|1|2.5/35|Saklı|1|3\n9|70000|GİRİŞ|1/9|35|-|-\n4|9|<P>ağaç</P>|7\n");
    EXPECT_EQ(readFile(path(u"kitaplar.vq.2.sqlite"_s)), original);
    EXPECT_EQ(readFile(path(u"kitaplar.vq.sqlite"_s)), "mine");
    EXPECT_EQ(names().size(), 3);
    EXPECT_FALSE(importer.ensureLayout(library, LayoutKind::Library)->imported) << "once only";
}

TEST_F(ImportTest, WaitsForNoLockWhoseHolderIsGone) {
    const QByteArray original = readFile(sqlite(library, PlainLibrary));
    const QString lock = library + u".kilit"_s;
    const Importer hasty({Program, 1000ms});
    const QByteArray elsewhere = "1234\nlirovan\nbaska-bilgisayar\n\n\n";
    for (const bool old : {false, true}) {
        writeFile(library, original);
        QFile file(writeFile(lock, elsewhere));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const QDateTime hour = QDateTime::currentDateTime().addSecs(-3600);
        EXPECT_TRUE(!old || file.setFileTime(hour, QFile::FileModificationTime));
        // One that is old is not waited for at all.
        const auto ensured =
            (old ? importer : hasty)
                .ensureLayout(library, LayoutKind::Library, [&, waited = 0](qint64, qint64 total) mutable {
                    return total > 0 || !old || ++waited < 20;
                });
        EXPECT_TRUE(ensured && ensured->imported) << old;
        EXPECT_FALSE(QFile::exists(lock));
    }
    writeFile(library, original);
    QLockFile held(lock);
    ASSERT_TRUE(held.tryLock());
    const auto refused = hasty.ensureLayout(library, LayoutKind::Library);
    EXPECT_TRUE(!refused && refused.error().message.contains(lock));
    held.unlock();
    writeFile(library + u".aktarma"_s, "mine");
    const auto inTheWay = hasty.ensureLayout(library, LayoutKind::Library);
    EXPECT_TRUE(!inTheWay && inTheWay.error().message.contains(u"kitaplar.vq.aktarma"));
    EXPECT_EQ(readFile(library + u".aktarma"_s), "mine");
    EXPECT_EQ(readFile(library), original);
}

TEST_F(ImportTest, LosesNoNoteToADoubledOrMissingKey) {
    sqlite(library,
           u"CREATE TABLE tbl_Notlar (NotID INTEGER, NotTarihi, NotBaslik TEXT, NotRTF TEXT);"
           u"INSERT INTO tbl_Notlar VALUES (3,'2008-03-14','bir','a'),(3,39521.5,'iki','b'),"
           u"(NULL,NULL,NULL,'c')");
    EXPECT_EQ(rows(imported(LayoutKind::Notes), u"select * from tbl_Notlar"),
              "3|2008-03-14|bir|a/4|2008-03-14T12:00:00|iki|b/5|-|-|c");
}

TEST_F(ImportTest, UndoesAWriteThatACrashInterrupted) {
    const auto keepsIt = [&](const QString& file, LayoutKind kind) {
        interruptWrite(file);
        const auto ensured = importer.ensureLayout(file, kind);
        ASSERT_TRUE(ensured) << ensured.error().message.toStdString();
        EXPECT_FALSE(hasJournal(file));
        const Database database = Database::open(file, OpenMode::ReadOnly).value();
        EXPECT_EQ(rows(database, u"PRAGMA integrity_check"), "ok");
        EXPECT_EQ(rows(database, u"SELECT count(*) FROM sqlite_master WHERE name='artik'"), "0");
    };
    const QString notes = path(u"notlar.vq"_s);
    ASSERT_TRUE(createLayout(Database::open(notes, OpenMode::Create).value(), LayoutKind::Notes));
    keepsIt(notes, LayoutKind::Notes);
    sqlite(library, PlainLibrary);
    imported(LayoutKind::Library);
    keepsIt(library, LayoutKind::Library);
    // A journal that belongs to an older file of this name goes with the file that is kept.
    writeFile(library, jetLibrary(u"metin"_s));
    writeFile(library + u"-journal"_s, "eski");
    EXPECT_EQ(rows(imported(LayoutKind::Library), u"PRAGMA integrity_check"), "ok");
    EXPECT_EQ(readFile(library + u".jet-journal"_s), "eski");
}

TEST_F(ImportTest, NeverOverwritesTheTargetOfAnImportByHand) {
    sqlite(library, PlainLibrary);
    const QString target = writeFile(path(u"yeni.vq"_s), "mine");
    EXPECT_FALSE(importer.import(library, target, std::nullopt));
    EXPECT_EQ(readFile(target), "mine");
    writeFile(path(u"b.vq.aktarma"_s), "mine");
    EXPECT_EQ(*importer.import(library, path(u"b.vq"_s), std::nullopt), LayoutKind::Library);
    EXPECT_EQ(readFile(path(u"b.vq.aktarma"_s)), "mine");
    EXPECT_EQ(names().size(), 4);
}

TEST_F(ImportTest, CarriesEveryValueOfAJetLibraryOver) {
    const QString longText = u"Ağaç ışığı, âlem ve 漢字 \U0001F333. "_s.repeated(70'000);
    const QByteArray jet = jetLibrary(longText);
    writeFile(library, jet);
    qint64 calls = 0;
    const Database database = imported(LayoutKind::Library, [&](qint64, qint64) { return ++calls > 0; });
    EXPECT_GT(calls, 0);
    EXPECT_EQ(readFile(path(u"kitaplar.vq.jet"_s)), jet);
    EXPECT_TRUE(content(database) ==
                "7|Şükrü İnan\n70000|Birinci|7|1.5\n1|70000|GİRİŞ|1/3|70000|-|3\n1|1|kısa|1/2|2|" +
                    longText.left(900).toStdString() + "|2/3|3|" + longText.toStdString() + "|-\n")
        << content(database).substr(0, 2000);
}

TEST_F(ImportTest, ReadsTheNotesOfAJetFileWithoutTouchingIt) {
    const QByteArray jet = jetNotes();
    const auto opened = importer.openForReading(writeFile(library, jet), LayoutKind::Notes);
    ASSERT_TRUE(opened) << opened.error().message.toUtf8().constData();
    EXPECT_EQ(rows(opened->database, u"select NotID, NotTarihi, NotBaslik, LEN(NotRTF) from tbl_Notlar"),
              "5|2008-03-14|Not|20000/7|2008-03-14T12:00:00|-|4/9|1881-05-18T06:00:00||9");
    EXPECT_EQ(readFile(library), jet);
    EXPECT_EQ(names(), QStringList{u"kitaplar.vq"_s});
}

TEST_F(ImportTest, SaysWhatIsWrongAndLeavesTheFileAlone) {
    const QByteArray jet = jetLibrary(QString(300'000, u'ş'));
    QByteArray jetOverwritten = jet;  // in the middle of the file: the pages of the long text
    jetOverwritten.replace(100 * 4096, 4096, QByteArray(4096, '\0'));
    const QByteArray whole = readFile(sqlite(library, PlainLibrary));
    const QByteArray foreign = readFile(sqlite(library, u"CREATE TABLE baska (a)"));
    const QString otherColumn = PlainLibrary.toString().replace(u"KonuBaslik,"_s, u"Baslik,"_s);
    const std::pair<QByteArray, QStringView> cases[] = {
        {"<html>", u"kitaplar.vq: Dosya bir veritabanı değil."},
        {whole.first(4096).leftJustified(whole.size(), 'x'), u"kitaplar.vq: Veritabanı dosyası bozuk."},
        {foreign, u"kitaplar.vq: Dosyada tbl_Yazar tablosu yok; bu bir kitaplık dosyası değil."},
        {readFile(sqlite(library, otherColumn)), u"tbl_KonuBaslik tablosunda KonuBaslik sütunu yok."},
        {jet.first(5 * 4096 + 100), u"Dosya eksik: sonu kesilmiş."},
        {jetOverwritten, u"bozuk"},
        {jet.first(jet.size() - 3 * 4096), u"bozuk"},
        {jetLibrary(u"a"_s, true), u"Dosya parola ile korunuyor."},
    };
    for (const auto& [content, message] : cases) expectFailure(importer, content, message);
    EXPECT_EQ(importer.ensureLayout(path(u"yok.vq"_s), LayoutKind::Library).error().message,
              u"yok.vq: Dosya bulunamadı.");
    EXPECT_TRUE(
        importer.ensureLayout(folder.path(), LayoutKind::Library).error().message.contains(u"bir klasör"));

    // Changes that wait beside the file are not forgotten.
    writeFile(library, whole);
    writeFile(path(u"kitaplar.vq-wal"_s), "waiting");
    const auto waiting = importer.ensureLayout(library, LayoutKind::Library);
    EXPECT_TRUE(!waiting && waiting.error().message.contains(u"kitaplar.vq-wal"));
}

TEST_F(ImportTest, OutlivesAProgramThatMisbehaves) {
    const QByteArray original = readFile(sqlite(library, PlainLibrary));
    const auto program = [&](const QByteArray& lines, std::chrono::milliseconds silence = 300ms) {
        const QString name = writeFile(path(u"program"_s), "#!/bin/sh\n" + lines + '\n');
        QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return Importer({name, silence});
    };
    const std::pair<QByteArray, QStringView> cases[] = {
        {"echo x >\"$4\"; kill -9 $$", u"Dosya bozuk: aktarma programı onu okurken çöktü."},
        {"echo bir >&2; echo iki >&2; exit 1", u"kitaplar.vq: iki"},
        {"exit 3", u"Aktarma başarısız oldu (durum 3)."},
        {"echo ilerleme 1 2", u"Aktarma programı işini bitirmeden kapandı."},
        {"head -c 100000 /dev/zero; head -c 100000 /dev/zero >&2", u"işini bitirmeden kapandı."},
        {"echo bitti kitaplik", u"Veritabanı dosyası açılamadı."},
        {"echo x >\"$4\"; exec sleep 100", u"Aktarma durdu: 1 saniyedir ilerleme yok."},
        // Wrote everything, but not what it said.
        {'"' + Program.toUtf8() + "\" \"$@\"; echo tablo tbl_Konu 2", u"tbl_Konu tablosu eksik."},
    };
    for (const auto& [lines, message] : cases) expectFailure(program(lines), original, message);
    expectFailure(Importer({path(u"yok"_s), 300ms}), original, u"başlatılamadı");
    expectFailure(program("echo ilerleme 5 10; echo x >\"$4\"; exec sleep 100", 60000ms), original,
                  u"Aktarma iptal edildi.",
                  [](qint64 done, qint64 total) { return done != 5 || total != 10; });
}

TEST_F(ImportTest, TellsWhenTheFolderCannotBeWritten) {
    const QByteArray original = readFile(sqlite(library, PlainLibrary));
    // A folder in the place of the lock or of the new file: nothing can be written there, whoever tries.
    for (const QString& name : {u"kitaplar.vq.kilit"_s, u"kitaplar.vq.aktarma"_s}) {
        ASSERT_TRUE(QDir(folder.path()).mkpath(name + u"/a"_s));
        expectFailure(importer, original, u"kitaplar.vq: ",
                      [calls = 0](qint64, qint64) mutable { return ++calls < 3; });
        ASSERT_TRUE(QDir(path(name)).removeRecursively());
    }
    EXPECT_FALSE(replaceFile(library, path(u"yok"_s), u".jet"_s));
    EXPECT_EQ(names(), QStringList{u"kitaplar.vq"_s}) << "a failed replacement leaves no backup";
    EXPECT_TRUE(importer.ensureLayout(library, LayoutKind::Library));
}

}  // namespace
}  // namespace lirovan::platform
