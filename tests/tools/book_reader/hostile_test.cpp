// Files that are broken or made to do harm: one sentence, exit status 1, no crash, whatever they hold.
#include <gtest/gtest.h>

#include "support/epub_writer.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {
namespace {

class HostileBooks : public ::testing::Test {
  protected:
    QString path(const char* name = "k.epub") { return folder_.filePath(QString::fromLatin1(name)); }
    std::string failure(const std::vector<ZipEntry>& files) {
        return failure(readBook(writeZip(path(), files)));
    }
    static std::string failure(const ReaderRun& run) {
        return run.status == 1 && run.lines.back()[u"tur"].toString() == u"hata"
                   ? run.failure()
                   : "status " + std::to_string(run.status);
    }
    static Epub good(const QByteArray& body = "<p>söz</p>") {
        return {{{"a.xhtml", body}}, "<ol><li><a href=\"a.xhtml\">A</a></li></ol>"};
    }
    static Epub whole(const QByteArray& page) { return {{{"a.xhtml", {}, {}, page}}}; }
    static std::vector<ZipEntry> with(std::vector<ZipEntry> files, ZipEntry more) {
        files.push_back(std::move(more));
        return files;
    }
    static std::vector<ZipEntry> without(std::vector<ZipEntry> files, const QByteArray& name) {
        std::erase_if(files, [&](const ZipEntry& entry) { return entry.name == name; });
        return files;
    }
    QTemporaryDir folder_;
};

TEST_F(HostileBooks, GetASentence) {
    const auto ok = entries(good());
    const QByteArray laughs =
        "<!DOCTYPE html [<!ENTITY a \"haha\"><!ENTITY b \"&a;&a;&a;\">]><html><body>&b;</body></html>";
    const QByteArray outside =
        "<!DOCTYPE html [<!ENTITY a SYSTEM \"file:///etc/passwd\">]><html><body>&a;</body></html>";
    std::vector<ZipEntry> many = ok;
    for (int i = 0; i < 20'001; ++i) many.push_back({QByteArray::number(i), {}});
    const struct {
        std::vector<ZipEntry> files;
        const char* part;
    } cases[] = {
        {with(ok, {"../../x", "x"}), "dışına çıkan"},
        {with(ok, {"/etc/x", "x"}), "dışına çıkan"},
        {with(ok, {"a\\..\\x", "x"}), "dışına çıkan"},
        {with(ok, {"bag", "/etc/passwd", true}), "dışına çıkan"},
        {with(ok, {"buyuk.xhtml", QByteArray(40 << 20, ' ')}), "ölçüsüz büyüyor"},
        {many, "çok fazla parça"},
        {without(ok, "META-INF/container.xml"), "container.xml"},
        {without(ok, "k/paket.opf"), "paket dosyası"},
        {without(ok, "k/a.xhtml"), "Kitap eksik"},
        {entries(whole(laughs)), "kendini çoğaltan"},
        {entries(whole(outside)), "dışarıdan dosya"},
        {entries(good(QByteArray("<div>").repeated(100'000) + "söz")), "derin"},
        {entries(good("<img src=\"a.png\"/>")), "metin yok"},
        {with(ok, {"META-INF/encryption.xml",
                   "<encryption><EncryptionMethod "
                   "Algorithm=\"http://www.w3.org/2001/04/xmlenc#aes256-cbc\"/></encryption>"}),
         "şifreli"},
    };
    for (const auto& one : cases)
        EXPECT_NE(failure(one.files).find(one.part), std::string::npos)
            << one.part << " / " << failure(one.files);
}

TEST_F(HostileBooks, OnlyWhatCoversFontsIsFree) {
    const struct {
        const char* algorithms;
        int status;
    } cases[] = {
        {"http://www.idpf.org/2008/embedding", 0},
        {"http://ns.adobe.com/pdf/enc#RC", 0},
        {"http://www.idpf.org/2008/embedding http://www.w3.org/2001/04/xmlenc#aes128-cbc", 1},
        {"http://www.w3.org/2001/04/xmlenc#kw-aes128", 1},
    };
    for (const auto& one : cases) {
        QByteArray parts;
        for (const QByteArray& algorithm : QByteArray(one.algorithms).split(' '))
            parts +=
                "<e:EncryptedData><e:EncryptionMethod Algorithm=\"" + algorithm + "\"/></e:EncryptedData>";
        const auto files =
            with(entries(good()),
                 {"META-INF/encryption.xml",
                  "<encryption xmlns:e=\"http://www.w3.org/2001/04/xmlenc#\">" + parts + "</encryption>"});
        EXPECT_EQ(readBook(writeZip(path(), files)).status, one.status) << one.algorithms;
    }
}

TEST_F(HostileBooks, NestingThatRealPagesHaveLosesNoText) {
    for (const QByteArray tag : {"div", "span", "blockquote", "b"}) {
        const int depth = 900;
        const QByteArray body = QByteArray("<" + tag + ">").repeated(depth) + "derindeki söz" +
                                QByteArray("</" + tag + ">").repeated(depth);
        EXPECT_NE(readBook(writeZip(path(), entries(good(body)))).text().find("derindeki söz"),
                  std::string::npos)
            << tag.toStdString();
    }
}

TEST_F(HostileBooks, DamagedFilesAreToldApartFromBooks) {
    const QByteArray zip = readFile(writeZip(path(), entries(good(QByteArray("<p>söz</p>").repeated(500)))));
    for (const qsizetype size : {qsizetype(4), qsizetype(100), zip.size() / 2, zip.size() - 10})
        EXPECT_NE(failure(readBook(writeFile(path(), zip.left(size)))).find("bozuk"), std::string::npos)
            << size;
    // One wrong byte in the packed data: the sum does not fit.
    QByteArray wrong = zip;
    const qsizetype at = wrong.indexOf("k/a.xhtml") + 40;
    wrong[at] = static_cast<char>(wrong[at] ^ 0x55);
    EXPECT_EQ(readBook(writeFile(path(), wrong)).status, 1);
    EXPECT_EQ(failure(readBook(writeFile(path("bos.epub"), {}))), "Dosya boş.");
    EXPECT_EQ(failure(readBook(path("yok.epub"))), "Dosya yok.");
    EXPECT_EQ(failure(readBook(writeFile(path("resim.txt"), "\x89PNG\r\n\x1a\n" + QByteArray(40, '\0')))),
              "Dosyadaki baytlar metin değil.");
    EXPECT_EQ(failure(readBook(writeFile(path("resim.rtf"), "\x89PNG"))), "Bu bir RTF belgesi değil.");
    EXPECT_NE(failure(readBook(writeFile(path("a.bin"), "x"))).find("tanınmıyor"), std::string::npos);
    EXPECT_EQ(failure(readBook(folder_.path())), "Klasörde index.html yok.");
}

// Comparing each attribute with all others would take the parser minutes.
TEST_F(HostileBooks, AnElementWithoutEndIsRefused) {
    QByteArray attributes;
    for (int i = 0; i < 250'000; ++i) attributes += " a" + QByteArray::number(i) + "=\">\"";
    EXPECT_NE(failure(entries(whole("<p" + attributes + ">x</p>"))).find("ölçüsüz uzun"), std::string::npos);
}

TEST_F(HostileBooks, AChapterOfHundredsOfMegabytesIsRefused) {
    // Not a trap by its packing: noise does not shrink that far.
    QByteArray noise;
    for (quint32 i = 0, x = 1; i < 30u << 20; ++i)
        noise += static_cast<char>('a' + ((x = x * 1664525u + 1013904223u) >> 27) % 26);
    EXPECT_NE(failure(entries(good("<p>" + noise + "</p>"))).find("çok büyük"), std::string::npos);
}

}  // namespace
}  // namespace lirovan::test
