// Page files: which file a text or an address means, and what their bytes say.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/core/code_page.h"
#include "platform/core/page_access.h"
#include "support/files.h"

using namespace lirovan::platform;
using lirovan::test::writeFile;
using namespace Qt::StringLiterals;

namespace {

struct PageFilesTest : testing::Test {
    QTemporaryDir parent;
    const QString root = QDir(parent.path()).canonicalPath() + u"/uygulama\\ğ"_s;
    const AppFolder folder{root + u'/'};
    const PageAccess access{folder};
    const QString page = writeFile(root + u"/Oku/VQ.htm"_s, "x");

    void SetUp() override {
        writeFile(root + u"-baska/gizli.htm"_s, "x");
        QFile::link(root + u"-baska"_s, root + u"/Oku/disari"_s);
    }
};

}  // namespace

TEST_F(PageFilesTest, AreMeantByPathTextsInsideTheFolderWhateverTheirCase) {
    EXPECT_EQ(folder.text(), root);
    EXPECT_EQ(folder.path(u"\\OKU\\vq.HTM"), page);
    EXPECT_EQ(folder.path(u"\\OKU\\yeni.html"), root + u"/Oku/yeni.html"_s);
    EXPECT_EQ(folder.pageText(u"\\OKU\\VQ.htm"), root + u"\\OKU\\VQ.htm"_s);
    for (const QString& text : {root + u"\\OKU\\vq.HTM"_s, u"file:\\"_s + root + u"\\OKU\\VQ.htm"_s,
                                u"file:\\\\\\"_s + root + u"\\oku\\vq.htm"_s,
                                QUrl::fromLocalFile(page).toString(), root + u"/x/../Oku/./VQ.htm"_s})
        EXPECT_EQ(access.file(text), page) << text.toStdString();
    EXPECT_EQ(access.file(root + u"\\OKU\\yok.htm"_s), root + u"/Oku/yok.htm"_s) << "still to be written";
    for (const QString& text :
         {u""_s, root, root + u"-baska/gizli.htm"_s, root + u"\\..\\uygulama\\ğ-baska\\gizli.htm"_s,
          root + u"/Oku/disari/gizli.htm"_s, root + u"/Oku/disari/yok.htm"_s, u"/etc/passwd"_s,
          u"Oku/VQ.htm"_s, u"http://x/"_s + page, u"file://sunucu"_s + page})
        EXPECT_EQ(access.file(text), std::nullopt) << text.toStdString();
}

TEST_F(PageFilesTest, HaveAnAddressAndNoOther) {
    for (const QString& name : {u"VQ.htm"_s, u"a b.htm"_s, u"50% #1?.htm"_s, u"şöç.htm"_s}) {
        const QString file = writeFile(root + u"/Oku/"_s + name, "x");
        const QUrl address = access.address(file);
        EXPECT_EQ(access.fileAt(address), file);
        QString encoded = address.toString(QUrl::FullyEncoded);
        EXPECT_EQ(access.fileAt(QUrl(encoded.replace(u"/Oku/"_s, u"%5COKU%5C"_s))), file);
        const QString elsewhere = address.toString(QUrl::FullyEncoded).replace(address.host(), u"baska"_s);
        EXPECT_EQ(access.fileAt(QUrl(elsewhere)), std::nullopt);
        EXPECT_EQ(access.fileAt(QUrl::fromLocalFile(file)), std::nullopt);
    }
    EXPECT_EQ(access.fileAt(access.address(root + u"/Oku"_s)), std::nullopt);
}

TEST_F(PageFilesTest, HaveTheEncodingThatTheyTellOrTheProgramsOwn) {
    EXPECT_EQ(access.contentType(page), "text/html; charset=windows-1254");
    writeFile(page, "<META HTTP-EQUIV=x content='text/html; CHARSET=utf-8'>");
    EXPECT_EQ(access.contentType(page), "text/html");
    const QString shown = writeFile(folder.path(u"\\OKU\\oku.html"), "<meta charset=utf-8>");
    EXPECT_EQ(access.contentType(shown), "text/html; charset=windows-1254");
    EXPECT_EQ(access.contentType(u"/x/PRINT.GIF"_s), "image/gif");
    EXPECT_EQ(access.contentType(u"/x/kitaplar.vq"_s), "application/octet-stream");
}

TEST(CodePage, WritesTurkishAndReferencesForTheRest) {
    const std::pair<QString, QByteArray> cases[] = {
        {u"ğüşıöç İĞÜŞÖÇ âîû “x”"_s,
         "\xF0\xFC\xFE\xFD\xF6\xE7 \xDD\xD0\xDC\xDE\xD6\xC7 \xE2\xEE\xFB \x93x\x94"},
        {u"∞\U0001F600"_s, "&#8734;&#128512;"},
        {u"a"_s + QChar(0xD83D) + u"b"_s, "a&#65533;b"},
    };
    for (const auto& [text, bytes] : cases) EXPECT_EQ(toWindows1254(text), bytes);
    EXPECT_EQ(fromWindows1254(toWindows1254(u"Şimdi «işte» €")), u"Şimdi «işte» €");
}

TEST_F(PageFilesTest, AreTheProgramsOwnWhereTheFolderHasNone) {
    PageAccess bare(folder);
    QFile::remove(page);
    const auto content = [&](const QString& name) {
        const auto file = bare.fileAt(bare.address(folder.path(u"\\OKU\\"_s + name)));
        return file ? bare.contentOf(*file) : u"yok"_s;
    };
    EXPECT_EQ(content(u"oku.html"_s), u"yok") << "what the program writes is not made up";
    EXPECT_EQ(content(u"../print.gif"_s), u"yok");
    EXPECT_TRUE(QFile(content(u"print.gif"_s)).open(QIODevice::ReadOnly));
    const QString ordinary = content(u"VQ.HTM"_s);
    bare.setFirstPage(FirstPage::OfEmptyLibrary);
    const QString empty = content(u"VQ.HTM"_s);
    EXPECT_TRUE(ordinary != empty && QFile::exists(ordinary) && QFile::exists(empty));
    EXPECT_EQ(bare.contentType(folder.path(u"\\OKU\\vq.htm")), "text/html") << "it names its encoding";
    writeFile(page, "benim");
    EXPECT_EQ(content(u"VQ.HTM"_s), page) << "the folder's own page goes first";
}
