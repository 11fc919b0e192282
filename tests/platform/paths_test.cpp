#include "platform/core/paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace lirovan::platform;

TEST(AppFolder, MatchesNamesWithoutRegardToCase) {
    QTemporaryDir root;
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("Oku/duaimages")));
    ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("a\\b/Oku")));
    EXPECT_EQ(AppFolder(root.path() + QStringLiteral("/a\\b")).path(u"\\OKU\\x.htm"),
              root.path() + QStringLiteral("/a\\b/Oku/x.htm"));
    QFile page(root.filePath(QStringLiteral("Oku/Oku.HTML")));
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    const AppFolder folder(root.path() + u'/');
    EXPECT_EQ(folder.text(), root.path());
    EXPECT_EQ(folder.path(u"\\OKU\\oku.html"), root.path() + QStringLiteral("/Oku/Oku.HTML"));
    EXPECT_EQ(folder.path(u"\\OKU\\yeni.html"), root.path() + QStringLiteral("/Oku/yeni.html"));
    EXPECT_EQ(folder.pageText(u"\\OKU\\VQ.htm"), root.path() + QStringLiteral("\\OKU\\VQ.htm"));
}
