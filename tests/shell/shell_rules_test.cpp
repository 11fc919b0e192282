// The rules behind the shell: versions, pages of extra windows, the application folder and its record.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstring>

#include "shell/application_folder.h"
#include "shell/extra_windows.h"
#include "shell/settings_registry.h"
#include "shell/update_check.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::shell;
using namespace Qt::StringLiterals;

namespace {

QByteArray manifest(const char* parts) {
    return QByteArray("<?xml version='1.0'?><r><v>") + parts + "</v></r>";
}

class GivenManifest : public ManifestSource {
  public:
    std::optional<QByteArray> body;
    void fetch(Answer answer) override { answer(body); }
};

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
        for (const platform::Message& each : dialogs.messages)
            EXPECT_TRUE(each.text.contains(u"http://site.example adresinden"));
    }
}

TEST(ExtraWindowsTest, ACopiedPageHasAbsoluteImagesAndNoHomeEntry) {
    const QString page =
        u"<DIV class=menuitems url=\"/opt/k\\OKU\\VQ.htm\">Giriş Sayfası</DIV>\r\n<HR>\r\n"
        "<IMG src=\"print.gif\"><IMG src=\"duaimages/1.gif\"><IMG src=\"x/print.gif\"><DIV>Giriş Sayfası</DIV>"_s;
    EXPECT_EQ(copiedPage(page, platform::AppFolder(u"/opt/k"_s)),
              u"\r\n<IMG src=\"/opt/k\\OKU\\print.gif\"><IMG src=\"/opt/k\\OKU\\duaimages/1.gif\">"
              "<IMG src=\"x/print.gif\"><DIV>Giriş Sayfası</DIV>"_s);
}

// ---- The application folder ----

namespace {

class ApplicationFolderTest : public testing::Test {
  protected:
    QTemporaryDir temporary;
    QString at(const QString& name) const { return temporary.filePath(name); }
    FolderCandidates candidates{std::nullopt, at(u"bin"_s), at(u"share"_s), at(u"home/l"_s)};

    void SetUp() override {
        write(u"share/kitaplar.vq"_s, "library");
        write(u"share/OKU/VQ.htm"_s, "start");
    }
    void write(const QString& name, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(at(name)).path());
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QByteArray read(const QString& name) const {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
    /// The folder, or why there is none.
    QString chosen() const {
        const auto folder = applicationFolder(candidates);
        return folder ? folder->text() : folder.error().message;
    }
};

}  // namespace

TEST_F(ApplicationFolderTest, IsFilledOnceAndThenTheUsers) {
    EXPECT_EQ(chosen(), candidates.user);
    EXPECT_EQ(read(u"home/l/kitaplar.vq"_s), "library");
    EXPECT_EQ(read(u"home/l/OKU/VQ.htm"_s), "start");
    // The second start keeps what the user has and brings back only what is missing.
    write(u"home/l/kitaplar.vq"_s, "changed");
    QFile::remove(at(u"home/l/OKU/VQ.htm"_s));
    EXPECT_EQ(chosen(), candidates.user);
    EXPECT_EQ(read(u"home/l/kitaplar.vq"_s), "changed");
    EXPECT_EQ(read(u"home/l/OKU/VQ.htm"_s), "start");
}

TEST_F(ApplicationFolderTest, IsTheOptionThenTheProgramsThenTheUsers) {
    write(u"file"_s, "no folder");
    candidates.user = at(u"file"_s);
    EXPECT_TRUE(chosen().contains(candidates.user)) << "cannot be filled";
    write(u"bin/Kitaplar.VQ"_s, "own");
    EXPECT_EQ(chosen(), candidates.executable);
    candidates.option = at(u"chosen"_s);
    EXPECT_EQ(chosen(), *candidates.option);
    candidates = {std::nullopt, at(u"empty"_s), at(u"nowhere"_s), at(u"home/l"_s)};
    EXPECT_EQ(chosen(), candidates.executable) << "nothing is shipped";
}

// ---- Its record in the registry ----

namespace {

// One key with one value. Fails the call that it is told to; counts writes and the handles that are open.
struct FakeRegistry final : RegistryCalls {
    struct Value {
        std::uint32_t type;
        QByteArray data;
    };
    enum Call { None, Open, Read, Create, Write };
    Call failing = None;
    std::optional<Value> value;
    int open = 0, writes = 0;

    long opened(Call call) { return failing == call ? reg::FileNotFound : (++open, reg::Success); }
    long RegOpenKeyExA(RegHandle, const char*, std::uint32_t, RegHandle*) override { return opened(Open); }
    long RegCreateKeyExA(RegHandle, const char*, std::uint32_t, std::uint32_t, RegHandle*) override {
        return opened(Create);
    }
    long RegQueryValueExA(RegHandle, const char*, std::uint32_t* type, unsigned char* data,
                          std::uint32_t* size) override {
        if (!value || (failing == Read && data)) return reg::FileNotFound;
        if (data) std::memcpy(data, value->data.data(), std::min<std::size_t>(*size, value->data.size()));
        *type = value->type;
        *size = value->data.size();
        return reg::Success;
    }
    long RegSetValueExA(RegHandle, const char*, std::uint32_t type, const unsigned char* data,
                        std::uint32_t size) override {
        if (failing == Write) return reg::FileNotFound;
        ++writes;
        value = {type, QByteArray(reinterpret_cast<const char*>(data), size)};
        return reg::Success;
    }
    long RegCloseKey(RegHandle) override { return --open, reg::Success; }
};

}  // namespace

TEST(InstallRecord, IsWrittenOnlyWhenItTellsOtherwiseAndFailsSilently) {
    using Value = FakeRegistry::Value;
    const struct {
        const char* what;
        std::optional<Value> before;
        int writes = 1;
        FakeRegistry::Call failing = FakeRegistry::None;
    } cases[] = {
        {"the first start", std::nullopt},
        {"the same folder", Value{reg::String, QByteArray("C:\\Lirovan \0", 12)}, 0},
        {"another folder", Value{reg::String, QByteArray("C:\\Eski\0", 8)}},
        {"other case", Value{reg::String, QByteArray("c:\\lirovan\0", 11)}},
        {"a number", Value{reg::Dword, QByteArray("\1\0\0\0", 4)}},
        {"another type", Value{3, QByteArray("C:\\Lirovan\0", 11)}},
        {"an empty text without its zero", Value{reg::String, {}}},
        {"no key can be opened", Value{reg::String, "x"}, 0, FakeRegistry::Open},
        {"nor read", Value{reg::String, "x"}, 1, FakeRegistry::Read},
        {"nor made", Value{reg::String, "x"}, 1, FakeRegistry::Create},
        {"nor written", Value{reg::String, "x"}, 0, FakeRegistry::Write},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        FakeRegistry registry;
        registry.value = c.before;
        registry.failing = c.failing;
        reg_api api(registry);
        recordInstallPath(api, u" C:\\Lirovan"_s);
        EXPECT_EQ(registry.writes, c.writes);
        if (c.writes) {
            EXPECT_EQ(registry.value->data, QByteArray(" C:\\Lirovan\0", 12));
            EXPECT_EQ(registry.value->type, reg::String);
        }
        EXPECT_EQ(registry.open, 0);
    }
}

TEST(SettingsRegistry, ReadsBackWhatItWroteAndKeepsItBetweenRuns) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"yeni/kayit.ini"_s);
    SettingsRegistry store(file);
    reg_api api(store);
    api.writeValue(u"A\\B", u"v", u"no key yet"_s);
    EXPECT_EQ(api.readValue(u"A\\B", u"v"), std::nullopt);
    api.createKey(reg::CurrentUser, u"A\\B");
    EXPECT_EQ(api.readValue(u"A\\B", u"v"), std::nullopt);
    for (const RegValue& value : {RegValue(u"/home/ışık/Kitaplığım @x=1; \"y\""_s), RegValue(u""_s),
                                  RegValue(-2), RegValue(0x41424344)}) {
        api.writeValue(u"A\\B", u"v", value);
        SettingsRegistry nextRun(file);
        EXPECT_EQ(api.readValue(u"A\\B", u"v"), value);
        EXPECT_EQ(reg_api(nextRun).readValue(u"A\\B", u"v"), value);
    }
    recordInstallPath(api, u"/srv/lirovan"_s);
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().contains("[SOFTWARE]\nLirovan\\LirovanKey\\LirovanKey=/srv/lirovan"));
}
