#include "platform/core/page_access.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace lirovan::platform;
using namespace Qt::StringLiterals;

namespace {

struct PageAccessTest : ::testing::Test {
    QTemporaryDir parent;
    const QString root = QDir(parent.path()).canonicalPath() + u"/uygulama\\ğ"_s;
    const AppFolder folder{root};

    void SetUp() override {
        QDir().mkpath(root + u"/Oku"_s);
        QDir().mkpath(root + u"-baska"_s);
        write(root + u"/Oku/VQ.htm"_s, "x");
        write(root + u"-baska/gizli.htm"_s, "x");
        QFile::link(root + u"-baska"_s, root + u"/Oku/disari"_s);
    }

    static void write(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

}  // namespace

TEST_F(PageAccessTest, BringsPathTextsToFilesOfTheFolder) {
    const PageAccess access(folder);
    const QString page = root + u"/Oku/VQ.htm"_s;
    for (const QString& text : {root + u"\\OKU\\vq.HTM"_s, u"file:\\"_s + root + u"\\OKU\\VQ.htm"_s,
                                u"file:\\\\\\"_s + root + u"\\oku\\vq.htm"_s,
                                QUrl::fromLocalFile(page).toString(), root + u"/x/../Oku/./VQ.htm"_s})
        EXPECT_EQ(access.file(text), page) << text.toStdString();
    EXPECT_EQ(access.file(root + u"\\OKU\\yok.htm"_s), root + u"/Oku/yok.htm"_s)
        << "a page still to be written";
    for (const QString& text :
         {u""_s, root, root + u"-baska/gizli.htm"_s, root + u"\\..\\uygulama\\ğ-baska\\gizli.htm"_s,
          root + u"/Oku/disari/gizli.htm"_s, root + u"/Oku/disari/yok.htm"_s, u"/etc/passwd"_s,
          u"Oku/VQ.htm"_s, u"http://x/"_s + page, u"file://sunucu"_s + page})
        EXPECT_EQ(access.file(text), std::nullopt) << text.toStdString();
}

TEST_F(PageAccessTest, GivesFilesAnAddressAndTakesNoOther) {
    for (const QString& name : {u"VQ.htm"_s, u"a b.htm"_s, u"50% #1?.htm"_s, u"şöç.htm"_s}) {
        const QString page = root + u"/Oku/"_s + name;
        write(page, "x");
        const QUrl address = PageAccess(folder).address(page);
        EXPECT_EQ(PageAccess(folder).fileAt(address), page);
        EXPECT_EQ(PageAccess(folder).fileAt(
                      QUrl(address.toString(QUrl::FullyEncoded).replace(u"/Oku/"_s, u"%5COKU%5C"_s))),
                  page);
        QUrl other = address;
        other.setHost(u"baska"_s);
        EXPECT_EQ(PageAccess(folder).fileAt(other), std::nullopt);
        EXPECT_EQ(PageAccess(folder).fileAt(QUrl::fromLocalFile(page)), std::nullopt);
    }
    EXPECT_EQ(PageAccess(folder).fileAt(PageAccess(folder).address(root + u"/Oku"_s)), std::nullopt);
}

TEST_F(PageAccessTest, TellsTheEncodingOfPagesThatDoNot) {
    const PageAccess access(folder);
    const QString page = root + u"/Oku/VQ.htm"_s;
    EXPECT_EQ(access.contentType(page), "text/html; charset=windows-1254");
    write(page, "<META HTTP-EQUIV=x content='text/html; CHARSET=utf-8'>");
    EXPECT_EQ(access.contentType(page), "text/html");
    write(root + u"/Oku/oku.html"_s, "<meta charset=utf-8>");
    EXPECT_EQ(access.contentType(folder.path(u"\\OKU\\oku.html")), "text/html; charset=windows-1254");
    EXPECT_EQ(access.contentType(u"/x/PRINT.GIF"_s), "image/gif");
    EXPECT_EQ(access.contentType(u"/x/kitaplar.vq"_s), "application/octet-stream");
}
