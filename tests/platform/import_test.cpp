// Imports with the real import program, and with programs that misbehave in its place.
#include "platform/core/import/importer.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/core/import/replace_file.h"
#include "support/jet_writer.h"

namespace lirovan::platform {
namespace {

using std::chrono_literals::operator""ms;

const QString Program = QStringLiteral(LIROVAN_BIN_DIR "/lirovan-jet-aktar");

constexpr QStringView PlainLibrary =
    u"CREATE TABLE tbl_Yazar (YazarID INTEGER PRIMARY KEY, Yazar TEXT);"
    u"CREATE TABLE TBL_KITAPLAR (KitapID, KitapAdi TEXT, YazarID, KitapSiraID, Fazla);"
    u"CREATE TABLE tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira);"
    u"CREATE TABLE tbl_Konu (Kayit, KonuID, Konu, Parca);"
    u"INSERT INTO tbl_Yazar VALUES (1,'Şükrü İnan');"
    u"INSERT INTO tbl_Kitaplar VALUES ('70000','Birinci',1,2.5,'x'),(35,'Saklı',1,'3',NULL);"
    u"INSERT INTO tbl_KonuBaslik VALUES (9,70000,'GİRİŞ',1),(9,35,NULL,NULL);"
    u"INSERT INTO tbl_Konu VALUES (4,9,'<P>ağaç</P>','7');";

constexpr QStringView PlainNotes =
    u"CREATE TABLE tbl_Notlar (NotID INTEGER, NotTarihi, NotBaslik TEXT, NotRTF TEXT);"
    u"INSERT INTO tbl_Notlar VALUES (3,'2008-03-14','bir','a'),(3,39521.5,'iki','b'),(NULL,NULL,NULL,'c');";

class ImportTest : public testing::Test {
  protected:
    QString path(const QString& name) const { return folder.filePath(name); }

    QString write(const QString& name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    QByteArray read(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString sqlite(const QString& name, QStringView sql) const {
        const Database database = Database::open(path(name), OpenMode::Create).value();
        EXPECT_TRUE(database.execute(sql));
        return path(name);
    }
    QString script(const QByteArray& lines) const {
        const QString name = write(QStringLiteral("program"), "#!/bin/sh\n" + lines + '\n');
        QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return name;
    }
    QStringList names() const {
        QStringList all = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
        all.removeAll(QStringLiteral("program"));
        return all;
    }

    // Every row of a query, values joined by "|", rows by "/".
    static std::string rows(const Database& database, QStringView sql) {
        Result<Statement> statement = database.prepare(sql);
        if (!statement) return statement.error().message.toStdString();
        QStringList lines;
        while (*statement->step() == Step::Row) {
            QStringList values;
            for (int i = 0; i < statement->columnCount(); ++i)
                values += statement->isNull(i) ? QStringLiteral("-") : statement->text(i);
            lines += values.join(u'|');
        }
        return lines.join(u'/').toStdString();
    }

    QTemporaryDir folder;
    const Importer importer{{Program, 60000ms}};
};

TEST_F(ImportTest, ReplacesAPlainLibraryAndKeepsTheOriginal) {
    const QString library = sqlite(QStringLiteral("kitaplar.vq"), PlainLibrary);
    const QByteArray original = read(QStringLiteral("kitaplar.vq"));
    write(QStringLiteral("kitaplar.vq.sqlite"), "mine");
    write(QStringLiteral("kitaplar.vq.aktarma"), "left by an interrupted import");

    const auto ensured = importer.ensureLayout(library, LayoutKind::Library);
    ASSERT_TRUE(ensured) << ensured.error().message.toUtf8().constData();
    EXPECT_TRUE(ensured->imported);
    EXPECT_EQ(ensured->backup, path(QStringLiteral("kitaplar.vq.2.sqlite")));
    EXPECT_EQ(read(QStringLiteral("kitaplar.vq.2.sqlite")), original);
    EXPECT_EQ(read(QStringLiteral("kitaplar.vq.sqlite")), "mine");
    EXPECT_EQ(names().size(), 3);

    const Database database = Database::open(library, OpenMode::ReadOnly).value();
    EXPECT_EQ(rows(database, u"select * from tbl_Yazar"), "1|Şükrü İnan");
    EXPECT_EQ(rows(database, u"select * from tbl_Kitaplar"), "70000|Birinci|1|2.5/35|Saklı|1|3");
    EXPECT_EQ(rows(database, u"select * from tbl_KonuBaslik"), "9|70000|GİRİŞ|1/9|35|-|-");
    EXPECT_EQ(rows(database, u"select * from tbl_Konu"), "4|9|<P>ağaç</P>|7");
    EXPECT_EQ(rows(database, u"select * from tbl_scripts"), "");

    const auto again = importer.ensureLayout(library, LayoutKind::Library);
    ASSERT_TRUE(again);
    EXPECT_FALSE(again->imported);
}

TEST_F(ImportTest, LosesNoNoteToADoubledOrMissingKey) {
    const QString notes = sqlite(QStringLiteral("notlar.vq"), PlainNotes);
    ASSERT_TRUE(importer.ensureLayout(notes, LayoutKind::Notes));
    const Database database = Database::open(notes, OpenMode::ReadOnly).value();
    EXPECT_EQ(rows(database, u"select * from tbl_Notlar"),
              "3|2008-03-14|bir|a/4|2008-03-14T12:00:00|iki|b/5|-|-|c");
}

TEST_F(ImportTest, ReadsAnOldFileWithoutTouchingIt) {
    const QString library = sqlite(QStringLiteral("eski.vq"), PlainLibrary);
    const QByteArray original = read(QStringLiteral("eski.vq"));
    const auto opened = importer.openForReading(library, LayoutKind::Library);
    ASSERT_TRUE(opened) << opened.error().message.toUtf8().constData();
    EXPECT_EQ(rows(opened->database, u"select KitapID from tbl_Kitaplar order by KitapSiraID"), "70000/35");
    EXPECT_EQ(read(QStringLiteral("eski.vq")), original);
    EXPECT_EQ(names(), QStringList{QStringLiteral("eski.vq")});
}

TEST_F(ImportTest, NeverOverwritesTheTargetOfAnImportByHand) {
    const QString library = sqlite(QStringLiteral("eski.vq"), PlainLibrary);
    const QString target = write(QStringLiteral("yeni.vq"), "mine");
    EXPECT_FALSE(importer.import(library, target, std::nullopt));
    EXPECT_EQ(read(QStringLiteral("yeni.vq")), "mine");
    write(QStringLiteral("b.vq.aktarma"), "mine");
    EXPECT_EQ(*importer.import(library, path(QStringLiteral("b.vq")), std::nullopt), LayoutKind::Library);
    EXPECT_EQ(read(QStringLiteral("b.vq.aktarma")), "mine");
    EXPECT_EQ(names().size(), 4);
}

// A library with what real files hold: texts in and outside the row, moved and deleted rows, missing values.
test::JetWriter jetLibrary(const QString& longText) {
    using test::JetRowState;
    using test::JetType;
    const auto text = [](QStringView value) { return test::JetCell(value.toString()); };
    test::JetWriter jet;
    jet.addTable(QStringLiteral("tbl_Yazar"),
                 {{QStringLiteral("YazarID"), JetType::Long}, {QStringLiteral("Yazar"), JetType::Text}},
                 {{{7, text(u"Şükrü İnan")}}});
    jet.addTable(QStringLiteral("tbl_Kitaplar"),
                 {{QStringLiteral("KitapID"), JetType::Long},
                  {QStringLiteral("KitapAdi"), JetType::Text},
                  {QStringLiteral("YazarID"), JetType::Long},
                  {QStringLiteral("KitapSiraID"), JetType::Double}},
                 {{{70000, text(u"Birinci"), 7, 1.5}}});
    jet.addTable(QStringLiteral("tbl_KonuBaslik"),
                 {{QStringLiteral("KonuID"), JetType::Long},
                  {QStringLiteral("KitapID"), JetType::Long},
                  {QStringLiteral("KonuBaslik"), JetType::Text},
                  {QStringLiteral("Konu_Sira"), JetType::Long}},
                 {{{1, 70000, text(u"GİRİŞ"), 1}, JetRowState::Moved},
                  {{2, 70000, text(u"silinmiş"), 2}, JetRowState::Deleted},
                  {{3, 70000, test::JetCell(), 3}}});
    jet.addTable(QStringLiteral("tbl_Konu"),
                 {{QStringLiteral("A"), JetType::Long},
                  {QStringLiteral("KonuID"), JetType::Long},
                  {QStringLiteral("Konu"), JetType::Memo},
                  {QStringLiteral("B"), JetType::Long}},
                 {{{1, 1, text(u"kısa"), 1}},
                  {{2, 2, test::JetCell(longText.left(900)), 2}},
                  {{3, 3, test::JetCell(longText), test::JetCell()}}});
    return jet;
}

TEST_F(ImportTest, CarriesEveryValueOfAJetLibraryOver) {
    QString longText;
    while (longText.size() < 2'000'000) longText += QStringLiteral("Ağaç ışığı, âlem ve 漢字 \U0001F333. ");
    const QByteArray jet = jetLibrary(longText).file();
    const QString library = write(QStringLiteral("kitaplar.vq"), jet);
    qint64 calls = 0;
    const auto ensured =
        importer.ensureLayout(library, LayoutKind::Library, [&](qint64, qint64) { return ++calls > 0; });
    ASSERT_TRUE(ensured) << ensured.error().message.toUtf8().constData();
    EXPECT_GT(calls, 0);
    EXPECT_EQ(read(QStringLiteral("kitaplar.vq.jet")), jet);
    const Database database = Database::open(library, OpenMode::ReadOnly).value();
    EXPECT_EQ(rows(database, u"select * from tbl_Yazar"), "7|Şükrü İnan");
    EXPECT_EQ(rows(database, u"select * from tbl_Kitaplar"), "70000|Birinci|7|1.5");
    EXPECT_EQ(rows(database, u"select * from tbl_KonuBaslik"), "1|70000|GİRİŞ|1/3|70000|-|3");
    EXPECT_EQ(rows(database, u"select * from tbl_Konu where KonuID<3"),
              "1|1|kısa|1/2|2|" + longText.left(900).toStdString() + "|2");
    EXPECT_TRUE(rows(database, u"select Konu, PartNumber from tbl_Konu where KonuID=3") ==
                longText.toStdString() + "|-");
}

TEST_F(ImportTest, CarriesTheNotesOfAJetFileOver) {
    using test::JetCell;
    using test::JetType;
    test::JetWriter jet;
    jet.addTable(QStringLiteral("tbl_Notlar"),
                 {{QStringLiteral("NotID"), JetType::Long},
                  {QStringLiteral("NotTarihi"), JetType::Date},
                  {QStringLiteral("NotBaslik"), JetType::Text},
                  {QStringLiteral("NotRTF"), JetType::Memo}},
                 {{{5, 39521.0, JetCell(QStringLiteral("Not")), JetCell(QStringLiteral("{\\rtf1 a}"))}},
                  {{9, -6800.25, JetCell(), JetCell(QString())}}});
    const QString notes = write(QStringLiteral("notlar.vq"), jet.file());
    const auto opened = importer.openForReading(notes, LayoutKind::Notes);
    ASSERT_TRUE(opened) << opened.error().message.toUtf8().constData();
    EXPECT_EQ(rows(opened->database, u"select * from tbl_Notlar"),
              "5|2008-03-14|Not|{\\rtf1 a}/9|1881-05-18T06:00:00|-|");
}

TEST_F(ImportTest, SaysWhatIsWrongAndLeavesTheFileAlone) {
    const QByteArray jetLong = jetLibrary(QString(300'000, u'ş')).file();
    const QByteArray jetLocked = jetLibrary(QStringLiteral("a")).file("parola");
    QByteArray jetOverwritten = jetLong;
    // The pages of the long text, in the middle of the file.
    jetOverwritten.replace(100 * 4096, 4096, QByteArray(4096, '\0'));
    const QString whole = sqlite(QStringLiteral("tam.vq"), PlainLibrary);
    const QByteArray bytes = read(QStringLiteral("tam.vq"));
    QFile::remove(whole);
    QByteArray overwritten = bytes;
    overwritten.replace(4096, overwritten.size() - 4096, QByteArray(overwritten.size() - 4096, 'x'));
    sqlite(QStringLiteral("a"), u"CREATE TABLE baska (a)");
    const QByteArray foreign = read(QStringLiteral("a"));
    QFile::remove(path(QStringLiteral("a")));
    sqlite(QStringLiteral("a"),
           PlainLibrary.toString().replace(QStringLiteral("KonuBaslik,"), QStringLiteral("Baslik,")));
    const QByteArray renamed = read(QStringLiteral("a"));
    QFile::remove(path(QStringLiteral("a")));
    const QByteArray jet = QByteArray("\0\1\0\0Standard Jet DB\0\1", 21).leftJustified(40960, '\0');
    const QString truncated = QStringLiteral("kitaplar.vq: Dosya eksik: sonu kesilmiş.");
    const QString locked = QStringLiteral(
        "kitaplar.vq: Dosya parola ile korunuyor. Parolayı dosyayı yapan programda kaldırıp yeniden "
        "deneyin.");

    const struct {
        QByteArray content;
        QString message;
    } cases[] = {
        {"", QStringLiteral("kitaplar.vq: Dosya boş (0 bayt).")},
        {"<html>", QStringLiteral("kitaplar.vq: Dosya bir veritabanı değil.")},
        {bytes.first(6000), truncated},
        {overwritten, QStringLiteral("kitaplar.vq: Veritabanı dosyası bozuk.")},
        {foreign,
         QStringLiteral("kitaplar.vq: Dosyada tbl_Yazar tablosu yok; bu bir kitaplık dosyası değil.")},
        {renamed, QStringLiteral("kitaplar.vq: Dosyadaki tbl_KonuBaslik tablosunda KonuBaslik sütunu yok.")},
        {jet.first(5000), truncated},
        {jetLong.first(5 * 4096 + 100), truncated},
        {jetLocked, locked},
        // The mask alone, in the place of a password: a header that was never written properly has one.
        {jet, locked},
    };
    for (const auto& [content, message] : cases) {
        const QString library = write(QStringLiteral("kitaplar.vq"), content);
        const auto ensured = importer.ensureLayout(library, LayoutKind::Library);
        ASSERT_FALSE(ensured) << message.toUtf8().constData();
        EXPECT_EQ(ensured.error().message, message);
        EXPECT_EQ(read(QStringLiteral("kitaplar.vq")), content);
        EXPECT_EQ(names(), QStringList{QStringLiteral("kitaplar.vq")});
    }
    for (const QByteArray& content : {jetOverwritten, jetLong.first(jetLong.size() - 3 * 4096)}) {
        const auto ensured =
            importer.ensureLayout(write(QStringLiteral("kitaplar.vq"), content), LayoutKind::Library);
        ASSERT_FALSE(ensured);
        EXPECT_TRUE(ensured.error().message.contains(u"bozuk")) << ensured.error().message.toStdString();
        EXPECT_EQ(read(QStringLiteral("kitaplar.vq")), content);
    }
    EXPECT_EQ(importer.ensureLayout(path(QStringLiteral("yok.vq")), LayoutKind::Library).error().message,
              QStringLiteral("yok.vq: Dosya bulunamadı."));
    EXPECT_EQ(importer.ensureLayout(QDir(folder.path()).absolutePath(), LayoutKind::Library).error().message,
              QStringLiteral("%1: Bu bir klasör, dosya değil.").arg(QDir(folder.path()).dirName()));
}

TEST_F(ImportTest, ChangesThatWaitBesideTheFileAreNotForgotten) {
    const QString library = sqlite(QStringLiteral("kitaplar.vq"), PlainLibrary);
    write(QStringLiteral("kitaplar.vq-wal"), "waiting");
    const auto ensured = importer.ensureLayout(library, LayoutKind::Library);
    ASSERT_FALSE(ensured);
    EXPECT_TRUE(ensured.error().message.contains(u"kitaplar.vq-wal"));
}

TEST_F(ImportTest, OutlivesAProgramThatMisbehaves) {
    const struct {
        QByteArray lines;
        QString message;
    } cases[] = {
        {"echo x >\"$4\"; kill -9 $$", QStringLiteral("Dosya bozuk: aktarma programı onu okurken çöktü.")},
        {"echo x >\"$4\"; kill -ABRT $$", QStringLiteral("Dosya bozuk: aktarma programı onu okurken çöktü.")},
        {"echo bir >&2; echo iki >&2; exit 1", QStringLiteral("iki")},
        {"exit 3", QStringLiteral("Aktarma başarısız oldu (durum 3).")},
        {"echo ilerleme 1 2", QStringLiteral("Aktarma programı işini bitirmeden kapandı.")},
        {"head -c 100000 /dev/zero; head -c 100000 /dev/zero >&2",
         QStringLiteral("Aktarma programı işini bitirmeden kapandı.")},
        {"echo bitti kitaplik", QStringLiteral("Veritabanı dosyası açılamadı.")},
        {"echo x >\"$4\"; exec sleep 100", QStringLiteral("Aktarma durdu: 1 saniyedir ilerleme yok.")},
        // Wrote everything, but not what it said.
        {'"' + Program.toUtf8() + "\" \"$@\"; echo tablo tbl_Konu 2",
         QStringLiteral("Yazılan dosyada tbl_Konu tablosu eksik.")},
    };
    const QString library = sqlite(QStringLiteral("kitaplar.vq"), PlainLibrary);
    const QByteArray original = read(QStringLiteral("kitaplar.vq"));
    for (const auto& [lines, message] : cases) {
        const Importer broken({script(lines), 300ms});
        const auto ensured = broken.ensureLayout(library, LayoutKind::Library);
        ASSERT_FALSE(ensured) << lines.constData();
        EXPECT_EQ(ensured.error().message, QStringLiteral("kitaplar.vq: ") + message);
        EXPECT_EQ(read(QStringLiteral("kitaplar.vq")), original);
        EXPECT_EQ(names(), QStringList{QStringLiteral("kitaplar.vq")}) << lines.constData();
    }
    const Importer missing({path(QStringLiteral("yok")), 300ms});
    EXPECT_TRUE(
        missing.ensureLayout(library, LayoutKind::Library).error().message.contains(u"başlatılamadı"));
}

TEST_F(ImportTest, CancelsWhenTheCallerSaysSo) {
    const QString library = sqlite(QStringLiteral("kitaplar.vq"), PlainLibrary);
    const Importer slow({script("echo ilerleme 5 10; echo x >\"$4\"; exec sleep 100"), 60000ms});
    const auto ensured = slow.ensureLayout(
        library, LayoutKind::Library, [](qint64 done, qint64 total) { return !(done == 5 && total == 10); });
    ASSERT_FALSE(ensured);
    EXPECT_EQ(ensured.error().message, QStringLiteral("kitaplar.vq: Aktarma iptal edildi."));
    EXPECT_EQ(names(), QStringList{QStringLiteral("kitaplar.vq")});
}

TEST_F(ImportTest, TellsWhenTheFolderCannotBeWritten) {
    const QString library = sqlite(QStringLiteral("kitaplar.vq"), PlainLibrary);
    // A folder in the place of the lock or of the new file: nothing can be written there, whoever tries.
    for (const QString& name : {QStringLiteral("kitaplar.vq.kilit"), QStringLiteral("kitaplar.vq.aktarma")}) {
        ASSERT_TRUE(QDir(folder.path()).mkpath(name + QStringLiteral("/a")));
        EXPECT_FALSE(importer.ensureLayout(library, LayoutKind::Library,
                                           [calls = 0](qint64, qint64) mutable { return ++calls < 3; }));
        ASSERT_TRUE(QDir(path(name)).removeRecursively());
    }
    EXPECT_TRUE(importer.ensureLayout(library, LayoutKind::Library));
}

TEST_F(ImportTest, AFailedReplacementLeavesNoBackup) {
    const QString file = write(QStringLiteral("a"), "old");
    EXPECT_FALSE(replaceFile(file, path(QStringLiteral("yok")), QStringLiteral(".jet")));
    EXPECT_EQ(names(), QStringList{QStringLiteral("a")});
}

}  // namespace
}  // namespace lirovan::platform
