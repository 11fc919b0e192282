// The companion as it is called: exit status, bytes on standard output, words on standard error.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

#include "support/library_file.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

namespace {

struct Called {
    int status = -1;
    QByteArray out;
    QString error;
};

Called call(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(LIROVAN_BIN_DIR "/lirovan-kitaplik"), arguments);
    process.waitForFinished(60000);
    if (process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), process.readAllStandardOutput(),
            QString::fromUtf8(process.readAllStandardError())};
}

void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("no file");
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A folder with one author, one book and two topics.
class SourceFolder {
  public:
    SourceFolder() {
        write(path(u"kitaplik.json"_s),
              R"({"surum":1,"betik":"b.html","yazarlar":[{"id":1,"ad":"Sabri","kitaplar":[
            {"id":3,"ad":"ÖNSÖZ<br>GİRİŞ","konular":[{"id":7,"baslik":"İLK","dosya":"7.html"},
                                                     {"id":8,"baslik":"SON","dosya":"8.html"}]}]}]})");
        write(path(u"b.html"_s), "<i>homehomehomehome</i>");
        write(path(u"7.html"_s), "<P>hakîkat</P>");
        write(path(u"8.html"_s), "<P>son</P>");
    }
    QString path(const QString& name = {}) const { return folder_.filePath(name); }

  private:
    QTemporaryDir folder_;
};

}  // namespace

TEST(Companion, MakesALibraryThatItCanRead) {
    const SourceFolder source;
    const QTemporaryDir folder;
    const QString library = folder.filePath(u"kitaplar.vq"_s);
    ASSERT_EQ(call({u"olustur"_s, source.path(), library}).status, 0);
    write(library + u".yapim"_s, "a killed run's");
    write(library + u".yapim-journal"_s, "and its journal");
    const Called made = call({u"olustur"_s, source.path(), library});
    ASSERT_EQ(made.status, 0) << made.error.toStdString();
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList{u"kitaplar.vq"_s});

    EXPECT_EQ(call({u"denetle"_s, library}).status, 0);
    EXPECT_EQ(
        call({u"agac"_s, library}).out,
        QByteArray(
            "{\"anahtar\":\"T0\",\"ust\":null,\"metin\":\"Sabri\",\"simge\":\"vq\",\"etiket\":null}\n"
            "{\"anahtar\":\"P1\",\"ust\":\"T0\",\"metin\":\"Önsöz Giriş "
            "\",\"simge\":\"Lirovan\",\"etiket\":null}\n"
            "{\"anahtar\":\"C1\",\"ust\":\"P1\",\"metin\":\"İlk \",\"simge\":\"Acik\",\"etiket\":7}\n"
            "{\"anahtar\":\"C2\",\"ust\":\"P1\",\"metin\":\"Son \",\"simge\":\"Acik\",\"etiket\":8}\n"));
    EXPECT_EQ(call({u"secici"_s, library}).out,
              QByteArray("{\"metin\":\"<Lirovan>\",\"veri\":0}\n"
                         "{\"metin\":\"SABRİ\",\"veri\":1999}\n"
                         "{\"metin\":\".:: Önsöz Giriş ::.\",\"veri\":19993}\n"));
    const Called page = call({u"konu"_s, library, u"7"_s, u"--klasor"_s, u"C:\\L\\"_s});
    EXPECT_EQ(page.status, 0);
    EXPECT_TRUE(page.out.startsWith("<html><title>\xDDLK</title>"));
    EXPECT_TRUE(page.out.contains("<span >\xD6ns\xF6z Giri\xFE </span>"));
    EXPECT_TRUE(
        page.out.endsWith("<i>C:\\L\\OKU\\VQ.htm</i><P>hak\xEEkat</P></font></td></tr></table></html>\r\n"));

    const auto opened = data::Library::openFile(library, platform::OpenMode::ReadOnly);
    ASSERT_TRUE(opened);
    auto variants = opened->variants(u"Hakikat");
    data::Variant variant;
    ASSERT_TRUE(variants && *variants->next(variant));
    EXPECT_EQ(variant.searchForm, u"hakîkat");
}

TEST(Companion, LeavesTheTargetAloneWhenItCannotMakeTheLibrary) {
    const test::LibraryFile folder;
    QString target = folder.path();
    QStringList names{u"kitaplar.vq"_s};
    const auto refused = [&](const SourceFolder& source, QStringView reason) {
        const QByteArray before = read(target);
        const Called run = call({u"olustur"_s, source.path(), target});
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.error.contains(reason)) << run.error.toStdString();
        EXPECT_EQ(read(target), before);
        EXPECT_EQ(QDir(folder.folder()).entryList(QDir::Files | QDir::Hidden), names);
    };
    const SourceFolder withoutFile;
    QFile::remove(withoutFile.path(u"8.html"_s));
    refused(withoutFile, u"8.html bulunamadı");

    for (const QByteArray bytes : {"\xFE", "ka\xC4"}) {  // no character, half a character
        const SourceFolder wrongEncoding;
        write(wrongEncoding.path(u"8.html"_s), bytes);
        refused(wrongEncoding, u"8.html geçerli UTF-8 değil");
    }
#ifdef Q_OS_UNIX
    const SourceFolder pipe;  // to open it would wait for a writer that never comes
    QFile::remove(pipe.path(u"8.html"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe.path(u"8.html"_s)).constData(), 0600), 0);
    refused(pipe, u"8.html bir dosya değil");
#endif

    const SourceFolder linkOut;
    QFile::remove(linkOut.path(u"8.html"_s));
    ASSERT_TRUE(QFile::link(target, linkOut.path(u"8.html"_s)));
    refused(linkOut, u"8.html klasörün dışında");

    const SourceFolder noManifest;
    QFile::remove(noManifest.path(u"kitaplik.json"_s));
    refused(noManifest, u"kitaplik.json bulunamadı");
    EXPECT_EQ(call({u"olustur"_s, SourceFolder().path(), folder.folder()}).status, 1);

    target = folder.filePath(u"yazi.txt"_s);
    names += u"yazi.txt"_s;
    write(target, "mine");
    refused(SourceFolder(), u"üzerine yazılmadı");
    EXPECT_EQ(call({u"kelimeler"_s, folder.path(), target}).status, 1);
    EXPECT_EQ(read(target), QByteArray("mine"));
}

TEST(Companion, ReadsForeignFilesWithoutChangingThem) {
    test::LibraryFile file;
    file.author(1, u"Y").book(1, 1, u"K").topic(5, 1, u"B", u"<P>m</P>");
    file.execute(
        u"INSERT INTO tbl_KonuBaslik VALUES (NULL, 1, 'Numarasız', 9);"
        u"PRAGMA application_id=0; DROP TABLE tbl_KelimeKont");
    const QByteArray before = read(file.path());
    const QByteArray tree = call({u"agac"_s, file.path()}).out;
    EXPECT_EQ(tree.count('\n'), 4);
    EXPECT_TRUE(tree.endsWith("\"simge\":\"Acik\",\"etiket\":null}\n")) << tree.constData();
    EXPECT_EQ(call({u"denetle"_s, file.path()}).out, "Konu (numarasız): metni yok.\n");
    EXPECT_EQ(read(file.path()), before);

    const QString imported = file.filePath(u"yeni.vq"_s);
    EXPECT_EQ(call({u"aktar"_s, file.path(), imported}).status, 0);
    EXPECT_TRUE(call({u"konu"_s, imported, u"5"_s, u"--klasor"_s, u"/l"_s}).out.contains("<P>m</P>"));
}

TEST(Companion, RebuildsTheWordsInACopyOrInPlace) {
    test::LibraryFile file;
    file.author(1, u"Y").book(1, 1, u"K").topic(5, 1, u"B", u"<P>hakîkat, Hakîkat ve îman</P>");
    file.execute(u"PRAGMA application_id=0");
    const QByteArray before = read(file.path());
    const QString copy = file.filePath(u"kopya.vq"_s);
    EXPECT_EQ(call({u"kelimeler"_s, file.path(), copy}).out, QByteArray("2\n"));
    EXPECT_EQ(read(file.path()), before);
    EXPECT_EQ(call({u"denetle"_s, copy}).status, 0);

    EXPECT_EQ(call({u"kelimeler"_s, file.path()}).out, QByteArray("2\n"));
    EXPECT_EQ(read(file.path() + u".sqlite"_s), before);
    EXPECT_TRUE(data::Library::openFile(file.path(), platform::OpenMode::ReadOnly));
    EXPECT_EQ(call({u"kelimeler"_s, file.filePath(u"yok.vq"_s)}).status, 1);
}

TEST(Companion, TellsFaultsAndFailuresByItsExitStatus) {
    test::LibraryFile file = test::smallLibrary();
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=101");
    const Called faults = call({u"denetle"_s, file.path()});
    EXPECT_EQ(faults.status, 1);
    EXPECT_EQ(faults.out, QByteArray("Konu 101: metni yok.\n"));

    for (const QString& topic : {u"101"_s, u"99"_s}) {
        const Called nothing = call({u"konu"_s, file.path(), topic, u"--klasor"_s, u"/l"_s});
        EXPECT_EQ(nothing.status, 0);
        EXPECT_EQ(nothing.out, QByteArray());
    }
    const QString broken = file.filePath(u"bozuk.vq"_s);
    write(broken, "bu bir kitaplık değil");
    for (const QString& command : {u"agac"_s, u"secici"_s, u"denetle"_s}) {
        const Called run = call({command, broken});
        EXPECT_EQ(run.status, 1) << command.toStdString();
        EXPECT_EQ(run.out, QByteArray());
        EXPECT_FALSE(run.error.isEmpty());
    }
    EXPECT_EQ(call({}).status, 2);
    EXPECT_EQ(call({u"yok"_s}).status, 2);
    EXPECT_EQ(call({u"konu"_s, file.path(), u"101"_s}).status, 2);
    EXPECT_EQ(call({u"konu"_s, file.path(), u"yüz"_s, u"--klasor"_s, u"/l"_s}).status, 2);
    EXPECT_EQ(call({u"--yardim"_s}).status, 0);
}
