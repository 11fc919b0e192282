// The rules behind the shell: versions, pages of extra windows, the application folder.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "shell/application_folder.h"
#include "shell/extra_windows.h"
#include "shell/update_check.h"
#include "support/scripted_dialogs.h"

using namespace Qt::StringLiterals;

using namespace lirovan;
using namespace lirovan::shell;

namespace {

QByteArray manifest(const char* parts) {
    return QByteArray("<?xml version='1.0'?><r><v>") + parts + "</v></r>";
}

class GivenManifest : public ManifestSource {
  public:
    std::optional<QByteArray> body;
    void fetch(Answer answer) override { answer(body); }
};

QString write(const QDir& folder, const QString& name, const QByteArray& content) {
    folder.mkpath(QFileInfo(folder.filePath(name)).path());
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return file.fileName();
}

QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

}  // namespace

TEST(UpdateCheckTest, AManifestGivesItsFirstFourElementsAsAVersion) {
    const struct {
        QByteArray xml;
        std::optional<QString> version;
    } cases[] = {
        {manifest("<a>5</a><b>1</b><c>1</c><d>6</d>"), u"5.1.1.6"_s},
        {manifest("<a> 5 </a><b>1x</b><c>yok</c>"), u"5.1.0.0"_s},
        {manifest("<a>05</a><b>1.50</b><c>-2</c><d><e>7</e></d><f>9</f>"), u"5.1.5.-2.7"_s},
        {manifest("<a>100000</a>"), u"100000.0.0.0"_s},
        {"<r/>", u"0.0.0.0"_s},
        {"<r><v/><w><a>9</a></w></r>", u"0.0.0.0"_s},
        {"", std::nullopt},
        {"<html><body>404<br></body>", std::nullopt},
        {manifest("<a>6</a>") + "<r/>", std::nullopt},
        {"<!DOCTYPE r [<!ENTITY a '9'>]><r><v><a>&a;</a></v></r>", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(manifestVersion(c.xml), c.version) << c.xml.toStdString();
}

TEST(UpdateCheckTest, OnlyANewerVersionIsToldAndOnlyALoadedManifestIsDone) {
    const struct {
        std::optional<QByteArray> body;
        bool done, told;
    } cases[] = {
        {std::nullopt, false, false},
        {"", false, false},
        {manifest("<a>5</a><a>1</a><a>1</a><a>5</a>"), true, false},
        {manifest("<a>5</a><a>1</a><a>1</a><a>6</a>"), true, true},
        {manifest("<a>5</a><a>1</a><a>1</a><a>10</a>"), true, false},  // versions compare as texts
        {manifest("<a>5</a><a>1</a><a>2</a><a>0</a>"), true, true},
        {manifest("<a>6</a><a>0</a><a>0</a><a>0</a>"), true, true},
        {"<r/>", true, false},
    };
    for (const auto& c : cases) {
        GivenManifest source;
        source.body = c.body;
        test::ScriptedDialogs dialogs;
        int downloads = 0;
        std::function<void()> tell = [] {};
        UpdateCheck check(
            source, dialogs, u"http://site.example"_s, [&](auto act) { tell = std::move(act); },
            [&] { ++downloads; });
        std::optional<bool> done;
        check.check([&](bool value) { done = value; });
        EXPECT_EQ(done, c.done);
        EXPECT_TRUE(dialogs.messages.empty()) << "the window is busy";
        tell();
        EXPECT_EQ(downloads, c.told ? 1 : 0);
        ASSERT_EQ(dialogs.messages.size(), c.told ? 1U : 0U);
        if (c.told) {
            EXPECT_EQ(dialogs.messages[0].text,
                      u"Lirovan programının yeni versiyonunu \r\nhttp://site.example adresinden "
                      "yükleyebilirsiniz."_s);
        }
    }
}

TEST(ExtraWindowsTest, ACopiedPageHasAbsoluteImagesAndNoHomeEntry) {
    const platform::AppFolder folder(u"/opt/k"_s);
    const QString page =
        u"<DIV class=menuitems url=\"/opt/k\\OKU\\VQ.htm\">Giriş Sayfası</DIV>\r\n<HR>\r\n"
        "<IMG src=\"print.gif\"><IMG src=\"duaimages/1.gif\"><DIV>Giriş Sayfası</DIV>"_s;
    EXPECT_EQ(copiedPage(page, folder),
              u"\r\n<IMG src=\"/opt/k\\OKU\\print.gif\"><IMG src=\"/opt/k\\OKU\\duaimages/1.gif\">"
              "<DIV>Giriş Sayfası</DIV>"_s);
    EXPECT_EQ(copiedCaption(u"İçerik Penceresi - Sabır "_s), u"Sabır "_s);
}

TEST(ApplicationFolderTest, TheOptionThenTheProgramThenTheUsersFolder) {
    QTemporaryDir temporary;
    const QDir root(temporary.path());
    write(root, u"share/kitaplar.vq"_s, "library");
    write(root, u"share/OKU/VQ.htm"_s, "start");
    for (const char* name : {"bin", "portable", "chosen"}) root.mkpath(QString::fromLatin1(name));
    write(root, u"portable/Kitaplar.VQ"_s, "own");
    FolderCandidates candidates{std::nullopt, root.filePath(u"portable"_s), root.filePath(u"share"_s),
                                root.filePath(u"home/l"_s)};

    EXPECT_EQ(applicationFolder(candidates)->text(), candidates.executable);

    candidates.executable = root.filePath(u"bin"_s);
    EXPECT_EQ(applicationFolder(candidates)->text(), candidates.user);
    EXPECT_EQ(read(root.filePath(u"home/l/kitaplar.vq"_s)), "library");
    EXPECT_EQ(read(root.filePath(u"home/l/OKU/VQ.htm"_s)), "start");

    // The second start keeps what the user has and brings back only what is missing.
    write(root, u"home/l/kitaplar.vq"_s, "changed");
    QFile::remove(root.filePath(u"home/l/OKU/VQ.htm"_s));
    EXPECT_EQ(applicationFolder(candidates)->text(), candidates.user);
    EXPECT_EQ(read(root.filePath(u"home/l/kitaplar.vq"_s)), "changed");
    EXPECT_EQ(read(root.filePath(u"home/l/OKU/VQ.htm"_s)), "start");

    candidates.option = root.filePath(u"chosen"_s);
    EXPECT_EQ(applicationFolder(candidates)->text(), *candidates.option);

    candidates.option.reset();
    candidates.shipped = root.filePath(u"nowhere"_s);
    EXPECT_EQ(applicationFolder(candidates)->text(), candidates.executable) << "nothing is shipped";
}

TEST(ApplicationFolderTest, AFolderThatCannotBeFilledIsReported) {
    QTemporaryDir temporary;
    const QDir root(temporary.path());
    write(root, u"share/kitaplar.vq"_s, "library");
    const QString blocked = write(root, u"file"_s, "no folder");
    const auto folder =
        applicationFolder({std::nullopt, temporary.path() + u"/bin"_s, root.filePath(u"share"_s), blocked});
    ASSERT_FALSE(folder);
    EXPECT_TRUE(folder.error().message.contains(blocked));
}
