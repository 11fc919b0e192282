// The companion as it is called: exit status, bytes on standard output, words on standard error.
#include <gtest/gtest.h>

#include <QProcess>
#include <algorithm>

#ifdef Q_OS_UNIX
#include <sys/stat.h>

#include <csignal>
#endif

#include "support/files.h"
#include "support/library_file.h"
#include "support/places.h"

using namespace lirovan;
using namespace test;
using namespace Qt::StringLiterals;

namespace {

struct Called {
    int status = -1;
    QByteArray out, error;
};

Called call(const QStringList& arguments) {
    QProcess process;
    process.start(test::builtProgram(u"lirovan-kitaplik"_s), arguments);
    process.waitForFinished(60000);
    if (process.exitStatus() != QProcess::NormalExit) return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

QStringList names(const QString& folder) {
    return QDir(folder).entryList(QDir::Files | QDir::Hidden);
}

// A folder with one author, one book and two topics.
struct SourceFolder {
    QTemporaryDir folder;
    const QString last = folder.filePath(u"8.html"_s);

    SourceFolder() {
        writeFile(folder.filePath(u"kitaplik.json"_s),
                  R"({"surum":1,"betik":"b.html","yazarlar":[{"id":1,"ad":"Sabri","kitaplar":[
            {"id":3,"ad":"ÖNSÖZ<br>GİRİŞ","konular":[{"id":7,"baslik":"İLK","dosya":"x/../7.html"},
                                                     {"id":8,"baslik":"SON","dosya":"8.html","parca":7,"sira":2.5}]},
            {"id":4,"ad":"BOŞ","sira":0.5,"konular":[]}]}]})");
        writeFile(folder.filePath(u"b.html"_s), "<i>homehomehomehome</i>");
        writeFile(folder.filePath(u"7.html"_s), "<P>hakîkat</P>");
        writeFile(last, "<P>son</P>");
    }
};

}  // namespace

TEST(Companion, MakesALibraryThatItCanRead) {
    const SourceFolder source;
    const QTemporaryDir folder;
    const QString library = folder.filePath(u"kitaplar.vq"_s);
    ASSERT_EQ(call({u"olustur"_s, source.folder.path(), library}).status, 0);
    writeFile(library + u".yapim"_s, readFile(library).first(5000));  // a killed run's
    writeFile(library + u".yapim-journal"_s, "and its journal");
    interruptWrite(library);
    const auto own = QFile::ReadOwner | QFile::WriteOwner;
    const QString link = folder.filePath(u"bag.vq"_s);
    ASSERT_TRUE(QFile::setPermissions(library, own) && QFile::link(library, link));
    const Called made = call({u"olustur"_s, source.folder.path(), link});
    ASSERT_EQ(made.status, 0) << made.error.constData();
    EXPECT_EQ(names(folder.path()), QStringList({u"bag.vq"_s, u"kitaplar.vq"_s}));
    EXPECT_EQ(QFile::permissions(library) & ~(QFile::ReadUser | QFile::WriteUser), own);

    EXPECT_EQ(call({u"denetle"_s, library}).status, 0);
    EXPECT_EQ(call({u"agac"_s, library}).out,
              QByteArray(R"({"anahtar":"T0","ust":null,"metin":"Sabri","simge":"vq","etiket":null}
{"anahtar":"P1","ust":"T0","metin":"Boş ","simge":"Lirovan","etiket":null}
{"anahtar":"P2","ust":"T0","metin":"Önsöz Giriş ","simge":"Lirovan","etiket":null}
{"anahtar":"C1","ust":"P2","metin":"İlk ","simge":"Acik","etiket":7}
{"anahtar":"C2","ust":"P2","metin":"Son ","simge":"Acik","etiket":8}
)"));
    EXPECT_TRUE(
        call({u"secici"_s, library})
            .out.startsWith("{\"metin\":\"<Lirovan>\",\"veri\":0}\n{\"metin\":\"SABRİ\",\"veri\":1999}\n"));
    const Called page = call({u"konu"_s, library, u"7"_s, u"--klasor"_s, u"C:\\L\\"_s});
    EXPECT_EQ(page.status, 0);
    EXPECT_TRUE(page.out.startsWith("<html><title>\xDDLK</title>"));
    EXPECT_TRUE(
        page.out.endsWith("<i>C:\\L\\OKU\\VQ.htm</i><P>hak\xEEkat</P></font></td></tr></table></html>\r\n"));
    const auto database = platform::Database::open(library, platform::OpenMode::ReadOnly).value();
    EXPECT_EQ(rows(database, u"select KitapID, KitapSiraID from tbl_Kitaplar"), "3|1/4|0.5");
    EXPECT_EQ(rows(database, u"select KonuID, Konu_Sira from tbl_KonuBaslik"), "7|1/8|2.5");
    EXPECT_EQ(rows(database, u"select KonuID, PartNumber from tbl_Konu"), "7|1/8|7");
    EXPECT_EQ(rows(database, u"select KelimeKontYazili, KelimeKontAra from tbl_KelimeKont"),
              "hakikat|hakîkat");
}

TEST(Companion, LeavesTheTargetAloneWhenItCannotMakeTheLibrary) {
    const LibraryFile file;
    QString target = file.path();
    const auto refused = [&](const SourceFolder& source, const char* reason) {
        const QByteArray before = readFile(target);
        const QStringList beside = names(file.folder());
        const Called run = call({u"olustur"_s, source.folder.path(), target});
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.error.contains(reason)) << run.error.constData();
        EXPECT_EQ(readFile(target), before);
        EXPECT_EQ(names(file.folder()), beside);
    };
    const SourceFolder source;
    for (const QByteArray bytes : {"\xFE", "ka\xC4"}) {  // no character, half a character
        writeFile(source.last, bytes);
        refused(source, "8.html geçerli UTF-8 değil");
    }
    QFile::remove(source.last);
    refused(source, "8.html bulunamadı");
#ifdef Q_OS_UNIX
    // To open it would wait for a writer that never comes.
    ASSERT_EQ(::mkfifo(QFile::encodeName(source.last).constData(), 0600), 0);
    refused(source, "8.html bir dosya değil");
    QFile::remove(source.last);
    writeFile(source.last, "");
    ASSERT_TRUE(
        QFile::resize(writeFile(source.last, {}), qint64(1) << 40));  // it would not fit the memory either
    refused(source, "8.html bir kitaplık için çok büyük");
    QFile::remove(source.last);
#endif
    ASSERT_TRUE(QFile::link(target, source.last));
    refused(source, "8.html klasörün dışında");
    QFile::remove(source.folder.filePath(u"kitaplik.json"_s));
    refused(source, "kitaplik.json bulunamadı");
    EXPECT_EQ(call({u"olustur"_s, SourceFolder().folder.path(), file.folder()}).status, 1);

    target = writeFile(file.filePath(u"yazi.txt"_s), "mine");
    refused(SourceFolder(), "üzerine yazılmadı");
    EXPECT_EQ(call({u"kelimeler"_s, file.path(), target}).status, 1);
    EXPECT_EQ(readFile(target), "mine");
}

TEST(Companion, ReadsAndRebuildsForeignFilesWithoutChangingThem) {
    LibraryFile file;
    file.author(1, u"Y").book(1, 1, u"K").topic(5, 1, u"B", u"<P>hakîkat, Hakîkat ve îman</P>");
    file.execute(
        u"INSERT INTO tbl_KonuBaslik VALUES (NULL, 1, 'Numarasız', 9);"
        u"PRAGMA application_id=0; DROP TABLE tbl_KelimeKont");
    const QByteArray before = readFile(file.path());
    const QString imported = file.filePath(u"yeni.vq"_s), copy = file.filePath(u"kopya.vq"_s);
    const QByteArray tree = call({u"agac"_s, file.path()}).out;
    EXPECT_EQ(tree.count('\n'), 4);
    EXPECT_TRUE(tree.endsWith("\"simge\":\"Acik\",\"etiket\":null}\n")) << tree.constData();
    EXPECT_EQ(call({u"denetle"_s, file.path()}).out, "Konu (numarasız): metni yok.\n");
    EXPECT_EQ(call({u"aktar"_s, file.path(), imported}).status, 0);
    EXPECT_TRUE(call({u"konu"_s, imported, u"5"_s, u"--klasor"_s, u"/l"_s}).out.contains("<P>hak"));
    EXPECT_EQ(call({u"kelimeler"_s, file.path(), copy}).out, "2\n");
    EXPECT_EQ(readFile(file.path()), before);

    EXPECT_EQ(call({u"kelimeler"_s, file.path()}).out, "2\n") << "in place";
    EXPECT_EQ(readFile(file.path() + u".sqlite"_s), before);
    for (const QString& made : {copy, file.path()})
        EXPECT_TRUE(data::Library::openFile(made, platform::OpenMode::ReadOnly)) << made.toStdString();
    EXPECT_EQ(call({u"kelimeler"_s, file.filePath(u"yok.vq"_s)}).status, 1);
}

#ifdef Q_OS_UNIX
TEST(Companion, LeavesNothingWhenItIsEndedFromOutside) {
    LibraryFile large = smallLibrary();
    large.execute(
        u"INSERT INTO tbl_Konu (KonuID, Konu) WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE "
        u"i<300000) SELECT i, 'metin' FROM n; PRAGMA application_id=0");
    LibraryFile small = smallLibrary();
    small.execute(u"PRAGMA application_id=0");
    const QTemporaryDir place;
    const QDir folder(place.path());
    const auto entries = [&] { return folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot); };
    const QString target = place.filePath(u"yeni.vq"_s);
    const struct {
        QStringList words, next;
        QString prefix;
    } cases[] = {
        {{u"aktar"_s, large.path(), target}, {u"aktar"_s, small.path(), target}, u"yeni.vq.aktarma-"_s},
        {{u"agac"_s, large.path()}, {u"agac"_s, small.path()}, u"lirovan-okuma-"_s},
    };
    for (const auto& c : cases) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, place.path());
        process.setProcessEnvironment(environment);
        // A kill is not heard: only from its lock does the next run know that the folder is done with.
        const auto isLocked = [&] {
            const QStringList folders = folder.entryList({c.prefix + u'*'}, QDir::Dirs);
            return std::count_if(folders.begin(), folders.end(), [&](const QString& each) {
                       return QFileInfo(folder.filePath(each + u"/kilit"_s)).size() > 0;  // written, too
                   }) > 0;
        };
        const auto endedBy = [&](int number, const QStringList& words) {
            const qsizetype there = entries().size();
            process.start(test::builtProgram(u"lirovan-kitaplik"_s), words);
            const auto isAtWork = [&] { return number == SIGKILL ? isLocked() : entries().size() != there; };
            while (number != 0 && process.state() != QProcess::NotRunning && !isAtWork())
                process.waitForFinished(5);
            if (number != 0) ::kill(static_cast<pid_t>(process.processId()), number);
            process.waitForFinished(60000);
            return process.exitStatus() == QProcess::CrashExit;
        };
        const QStringList before = entries();
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            EXPECT_TRUE(endedBy(number, c.words));
            EXPECT_EQ(entries(), before) << number;
        }
        // A folder that is not ours, however much it looks like one.
        writeFile(folder.filePath(c.prefix + u"benimm/kilit"_s), "");
        writeFile(folder.filePath(c.prefix + u"benimm/metin"_s), "mine");
        EXPECT_TRUE(endedBy(SIGKILL, c.words));
        EXPECT_EQ(folder.entryList({c.prefix + u'*'}, QDir::Dirs).size(), 2);
        EXPECT_FALSE(endedBy(0, c.next));
        EXPECT_EQ(folder.entryList({c.prefix + u'*'}, QDir::Dirs), QStringList{c.prefix + u"benimm"_s});
        EXPECT_EQ(readFile(folder.filePath(c.prefix + u"benimm/metin"_s)), "mine");
    }
}
#endif

TEST(Companion, TellsFaultsAndFailuresByItsExitStatus) {
    LibraryFile file = smallLibrary();
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=101");
    const QString broken = writeFile(file.filePath(u"bozuk.vq"_s), "bu bir kitaplık değil");
    const std::tuple<QStringList, int, QByteArray> cases[] = {
        {{u"denetle"_s, file.path()}, 1, "Konu 101: metni yok.\n"},
        {{u"konu"_s, file.path(), u"101"_s, u"--klasor"_s, u"/l"_s}, 0, ""},
        {{u"konu"_s, file.path(), u"99"_s, u"--klasor"_s, u"/l"_s}, 0, ""},
        {{u"agac"_s, broken}, 1, ""},
        {{u"secici"_s, broken}, 1, ""},
        {{u"denetle"_s, broken}, 1, ""},
        {{}, 2, ""},
        {{u"yok"_s}, 2, ""},
        {{u"konu"_s, file.path(), u"101"_s}, 2, ""},
        {{u"konu"_s, file.path(), u"yüz"_s, u"--klasor"_s, u"/l"_s}, 2, ""},
    };
    for (const auto& [words, status, out] : cases) {
        SCOPED_TRACE(words.join(u' ').toStdString());
        const Called run = call(words);
        EXPECT_EQ(run.status, status);
        EXPECT_EQ(run.out, out);
        EXPECT_FALSE(run.out.isEmpty() && run.error.isEmpty());
    }
    EXPECT_EQ(call({u"--yardim"_s}).status, 0);
}

TEST(Companion, TakesForNotesWhatWasNamed) {
    const LibraryFile file = smallLibrary();
    const QString notes = file.filePath(u"Notlar/notlar.vq"_s);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(notes).path()));
    {
        const auto database = platform::Database::open(notes, platform::OpenMode::Create);
        ASSERT_TRUE(database && platform::createLayout(*database, platform::LayoutKind::Notes));
    }
    const std::pair<QString, int> cases[] = {
        {notes, 0},
        {file.folder(), 0},
        {file.filePath(u"yedek/notlar.vq"_s), 1},  // not there: no other file stands in for it
        {file.filePath(u"notlar.vq"_s), 1},
    };
    for (const auto& [given, status] : cases)
        EXPECT_EQ(call({u"not-ara"_s, given, u"söz"_s}).status, status) << given.toStdString();
}

TEST(Companion, TellsHowItAndEachOfItsCommandsIsUsed) {
    const Called whole = call({u"--help"_s});
    EXPECT_EQ(whole.status, 0);
    EXPECT_TRUE(whole.out.startsWith("Kullanım: lirovan-kitaplik KOMUT"));
    int commands = 0;
    for (const QByteArray& line : whole.out.split('\n')) {
        if (!line.startsWith("  ") || line.startsWith("   ")) continue;
        ++commands;
        const QByteArray usage = "Kullanım: lirovan-kitaplik " + line.mid(2);
        const QString name = QString::fromUtf8(line.mid(2)).section(u' ', 0, 0);
        for (const QStringList& words :
             {QStringList{name, u"--help"_s}, QStringList{name, u"x"_s, u"-h"_s}}) {
            const Called one = call(words);
            EXPECT_EQ(one.status, 0);
            EXPECT_TRUE(one.out.startsWith(usage)) << one.out.constData();
            EXPECT_EQ(one.error, "");
        }
        EXPECT_TRUE(call({name, u"--version"_s}).out.startsWith("lirovan-kitaplik "));
        const Called wrong = call({name, u"--yok"_s, u"--"_s, u"--help"_s});
        EXPECT_EQ(wrong.status, 2);
        EXPECT_EQ(wrong.out, "");
        EXPECT_TRUE(wrong.error.contains(usage));
    }
    EXPECT_GE(commands, 11);
}

TEST(Companion, StudiesTheHitsOfASearch) {
    LibraryFile file;
    file.author(1, u"Sabri").book(1, 1, u"YAZ").book(2, 1, u"KIŞ");
    file.topic(1, 1, u"UZUN", u"<P>kitap "_s + QString(40, u'a') + u"</P>"_s);
    file.topic(2, 2, u"KISA", u"<P>kitabı &amp; söz</P>");
    const auto ask = [&](const QString& command, const QStringList& words) {
        return call(QStringList{command, file.path(), u"kitap"_s} + words);
    };
    const QByteArray byRatio = ask(u"ara"_s, {u"--sira"_s, u"oran"_s, u"--ses"_s}).out;
    EXPECT_TRUE(byRatio.contains("Uzun  (1 adet, binde 500,0)") && byRatio.contains("Kısa "));
    EXPECT_FALSE(ask(u"ara"_s, {}).out.contains("Kısa"));
    EXPECT_EQ(ask(u"baglam"_s, {u"--ses"_s, u"--yazar"_s, u"1"_s, u"--kitap"_s, u"2"_s}).out,
              "{\"konu\":2,\"konum\":4,\"sol\":\"\",\"isabet\":\"kitab\",\"sag\":\"ı & söz \"}\n");
    EXPECT_EQ(ask(u"dagilim"_s, {}).out, "{\"kitap\":1,\"uzunluk\":53,\"isabetler\":[[0,4]]}\n");
    const Called summary = ask(u"ozet"_s, {u"--bicim"_s, u"html"_s, u"--ses"_s});
    EXPECT_TRUE(summary.status == 0 && summary.out.contains("<h1>kitap</h1>"));
    EXPECT_TRUE(summary.out.contains("<b class=\"isabet\">kitab</b>ı &amp; söz"));
    for (const QStringList& wrong : {QStringList{u"--bicim"_s, u"doc"_s}, QStringList{}})
        EXPECT_EQ(ask(u"ozet"_s, wrong).status, 2);
    EXPECT_EQ(call({u"ozet"_s, file.path(), u"."_s, u"--bicim"_s, u"html"_s}).status, 1);
}

TEST(Companion, AddsBooksFromFilesAndTakesThemOut) {
    const QTemporaryDir folder;
    const QString library = folder.filePath(u"yeni.vq"_s), good = folder.filePath(u"Güzel Gün.md"_s);
    writeFile(good, "# Bir\n\nHakîkat burada.\n\n# İki\n\nSon söz.\n");
    const QString bad = writeFile(folder.filePath(u"bozuk.epub"_s), "PK");

    const Called tried = call({u"ekle"_s, library, good, u"--dene"_s, u"--yazar"_s, u"Ayşe"_s});
    EXPECT_EQ(tried.status, 0) << tried.error.toStdString();
    EXPECT_TRUE(
        tried.out.startsWith("{\"yazar\":\"Ayşe\",\"kitap\":\"Güzel Gün\",\"derinlik\":0,"
                             "\"baslik\":\"Bir\",\"sozcuk\":"))
        << tried.out.toStdString();
    EXPECT_FALSE(QFile::exists(library));
    EXPECT_EQ(call({u"ekle"_s, library, bad}).status, 1);
    EXPECT_EQ(names(folder.path()).filter(u"yeni"_s), QStringList())
        << "nothing was added, so nothing was made";

    const Called added = call({u"ekle"_s, library, bad, good});
    EXPECT_EQ(added.status, 1);
    EXPECT_TRUE(added.error.contains("bozuk.epub")) << added.error.toStdString();
    EXPECT_EQ(added.out,
              "{\"kitapid\":1001,\"yazar\":\"Bilinmeyen Yazar\",\"kitap\":\"Güzel Gün\",\"konu\":2,"
              "\"resim\":0}\n");
    EXPECT_TRUE(call({u"ara"_s, library, u"hakikat"_s}).out.contains("\"bulunan\":1"));
    EXPECT_EQ(call({u"denetle"_s, library}).status, 0);
    EXPECT_TRUE(call({u"konu"_s, library, u"1001"_s, u"--klasor"_s, u"/k"_s}).out.contains("/k\\OKU\\VQ.htm"))
        << "a new library's pages have no fragment";

    const QByteArray before = readFile(library);
    const Called again = call({u"ekle"_s, library, good});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.error.contains("--degistir")) << again.error.toStdString();
    EXPECT_TRUE(readFile(library) == before);
    EXPECT_EQ(call({u"ekle"_s, library, good, u"--degistir"_s}).status, 0);
    EXPECT_EQ(call({u"ekle"_s, library, good, u"--yanina"_s}).status, 0);
    EXPECT_EQ(call({u"ekle"_s, library, good, u"--yanina"_s, u"--degistir"_s}).status, 2);

    const QString copy = folder.filePath(u"kopya.vq"_s);
    EXPECT_EQ(call({u"aktar"_s, library, copy}).status, 0);
    EXPECT_EQ(call({u"denetle"_s, copy}).status, 0);
    EXPECT_EQ(call({u"ekle"_s, copy, good}).status, 1) << "the copy does not know its books any more";
    EXPECT_EQ(call({u"cikar"_s, copy, u"1002"_s}).status, 0);

    for (const QString& id : {u"1001"_s, u"1002"_s}) EXPECT_EQ(call({u"cikar"_s, library, id}).status, 0);
    EXPECT_EQ(call({u"cikar"_s, library, u"1002"_s}).status, 1);
    EXPECT_EQ(call({u"agac"_s, library}).out, "");
    EXPECT_TRUE(call({u"ara"_s, library, u"hakikat"_s}).out.contains("\"varyantlar\":[]"));
}
