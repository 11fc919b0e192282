#include "browse/page_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

namespace {

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

}  // namespace

TEST(PageFile, OverwritesThePageWhateverTheCaseOfItsName) {
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"oku"_s));
    QFile old(folder.filePath(u"oku/OKU.html"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("eski ve daha uzun bir sayfa");
    old.close();
    ASSERT_TRUE(writePage(app, u"yeni ş"));
    EXPECT_EQ(content(old.fileName()), QByteArray("yeni \xFE\r\n"));
    EXPECT_EQ(QDir(folder.filePath(u"oku"_s)).entryList(QDir::Files).size(), 1);
}

TEST(PageFile, FailsWithoutHarmWhereItCannotWrite) {
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    EXPECT_FALSE(writePage(app, u"x"));                          // no OKU
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"OKU/oku.html"_s));  // a folder in the file's place
    EXPECT_FALSE(writePage(app, u"x"));
    EXPECT_EQ(QDir(folder.filePath(u"OKU"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"oku.html"_s});
}
