#include "platform/core/file_writer.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "support/files.h"
#include "support/full_disk.h"

using namespace lirovan;
using namespace lirovan::platform;
using namespace Qt::StringLiterals;

TEST(FileWriter, ReplacesAWholeFileOrLeavesTheOldOne) {
    const QTemporaryDir folder;
    const QString file = test::writeFile(folder.filePath(u"dosya"_s), "eski"),
                  link = folder.filePath(u"bağ"_s);
    ASSERT_TRUE(QFile::link(file, link));
    ASSERT_TRUE(QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner));
    for (const Durability durability : {Durability::OnDisk, Durability::Fast}) {
        for (const rlim_t room : {0, 3}) {
            const test::FullDisk full(room);
            const Result<void> written = writeWholeFile(file, "yeni metin", durability);
            ASSERT_FALSE(written) << room;
            EXPECT_TRUE(written.error().message.startsWith(u"Dosyaya yazılamadı: "_s + file));
            EXPECT_EQ(test::readFile(file), "eski");
        }
        {
            FileWriter given(file, durability);
            EXPECT_TRUE(given.open() && given.write("yarım"));  // and not committed
        }
        EXPECT_EQ(test::readFile(file), "eski");
        ASSERT_TRUE(writeWholeFile(link, "yeni", durability));
        EXPECT_EQ(test::readFile(file), "yeni");
        EXPECT_TRUE(QFileInfo(link).isSymLink());
        EXPECT_EQ(QFile::permissions(file) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        EXPECT_FALSE(writeWholeFile(folder.path(), "x", durability));
        EXPECT_FALSE(writeWholeFile(folder.filePath(u"yok/dosya"_s), "x", durability));
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 2) << "nothing else is left";
        test::writeFile(file, "eski");
    }
}
