// The install-path record: its rule against a fake of the five registry calls, and on the settings store.
#include "shell/reg_api.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <cstring>

#include "shell/settings_registry.h"

namespace lirovan::shell {
namespace {

using namespace Qt::StringLiterals;

// A registry in memory. Fails the calls it is told to, counts writes, and knows which handles are still open.
struct FakeRegistry final : RegistryCalls {
    struct Value {
        std::uint32_t type;
        QByteArray data;
    };
    QMap<QByteArray, QMap<QByteArray, Value>> keys;
    QMap<RegHandle, QByteArray> open;
    RegHandle last = 0;
    int writes = 0;
    std::uint32_t access = 0;
    bool failOpen = false, failRead = false, failCreate = false, failWrite = false;

    long opened(const char* path, RegHandle* key) {
        open.insert(++last, path);
        *key = last;
        return reg::Success;
    }
    long RegOpenKeyExA(RegHandle hive, const char* path, std::uint32_t mask, RegHandle* key) override {
        access = mask;
        if (failOpen || hive != reg::CurrentUser || !keys.contains(path)) return reg::FileNotFound;
        return opened(path, key);
    }
    long RegQueryValueExA(RegHandle key, const char* name, std::uint32_t* type, unsigned char* data,
                          std::uint32_t* size) override {
        const auto values = keys.value(open.value(key));
        if (!values.contains(name) || (failRead && data)) return reg::FileNotFound;
        const Value value = values.value(name);
        if (data) std::memcpy(data, value.data.constData(), std::min<std::size_t>(*size, value.data.size()));
        *type = value.type;
        *size = value.data.size();
        return reg::Success;
    }
    long RegCreateKeyExA(RegHandle hive, const char* path, std::uint32_t, std::uint32_t mask,
                         RegHandle* key) override {
        access = mask;
        if (failCreate || hive != reg::CurrentUser) return 5;
        if (!keys.contains(path)) keys.insert(path, {});
        return opened(path, key);
    }
    long RegSetValueExA(RegHandle key, const char* name, std::uint32_t type, const unsigned char* data,
                        std::uint32_t size) override {
        if (failWrite) return 5;
        ++writes;
        keys[open.value(key)].insert(name, {type, QByteArray(reinterpret_cast<const char*>(data), size)});
        return reg::Success;
    }
    long RegCloseKey(RegHandle key) override { return open.remove(key) ? reg::Success : 6; }
};

const QByteArray Key = "SOFTWARE\\Lirovan\\LirovanKey";

QByteArray recorded(const FakeRegistry& registry) {
    return registry.keys.value(Key).value("LirovanKey", {0, "(none)"}).data;
}

TEST(InstallRecord, IsMadeAtTheFirstStartAndLeftAloneAfterwards) {
    FakeRegistry registry;
    reg_api api(registry);
    recordInstallPath(api, u"C:\\Lirovan"_s);
    EXPECT_EQ(recorded(registry), QByteArray("C:\\Lirovan\0", 11));
    EXPECT_EQ(registry.keys[Key]["LirovanKey"].type, reg::String);
    EXPECT_EQ(registry.access, 63u);
    EXPECT_EQ(registry.writes, 1);

    recordInstallPath(api, u"C:\\Lirovan"_s);
    recordInstallPath(api, u"  C:\\Lirovan "_s);
    EXPECT_EQ(registry.writes, 1);
    EXPECT_TRUE(registry.open.isEmpty());
}

TEST(InstallRecord, FollowsAFolderThatMovedAndFailsSilently) {
    const struct {
        const char* what;
        std::optional<FakeRegistry::Value> before;
    } cases[] = {
        {"another folder", FakeRegistry::Value{reg::String, QByteArray("C:\\Eski\0", 8)}},
        {"other case", FakeRegistry::Value{reg::String, QByteArray("c:\\lirovan\0", 11)}},
        {"a number", FakeRegistry::Value{reg::Dword, QByteArray("\1\0\0\0", 4)}},
        {"another type", FakeRegistry::Value{3, QByteArray("C:\\Lirovan\0", 11)}},
        {"an empty text without its zero", FakeRegistry::Value{reg::String, {}}},
        {"a key without the value", std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        FakeRegistry registry;
        registry.keys.insert(Key, {});
        if (c.before) registry.keys[Key].insert("LirovanKey", *c.before);
        reg_api api(registry);
        recordInstallPath(api, u"C:\\Lirovan"_s);
        EXPECT_EQ(recorded(registry), QByteArray("C:\\Lirovan\0", 11));
        EXPECT_TRUE(registry.open.isEmpty());
    }
    for (bool FakeRegistry::*failure : {&FakeRegistry::failOpen, &FakeRegistry::failRead,
                                        &FakeRegistry::failCreate, &FakeRegistry::failWrite}) {
        FakeRegistry registry;
        registry.keys.insert(Key, {{"LirovanKey", {reg::String, QByteArray("x\0", 2)}}});
        registry.*failure = true;
        reg_api api(registry);
        recordInstallPath(api, u"y"_s);
        EXPECT_TRUE(registry.open.isEmpty());
    }
}

TEST(RegApi, ReadsBackWhatItWrote) {
    QTemporaryDir folder;
    FakeRegistry fake;
    SettingsRegistry store(folder.filePath(u"kayit.ini"_s));
    for (RegistryCalls* calls : {static_cast<RegistryCalls*>(&fake), static_cast<RegistryCalls*>(&store)}) {
        reg_api api(*calls);
        api.writeValue(u"A\\B", u"v", u"no key yet"_s);
        EXPECT_EQ(api.readValue(u"A\\B", u"v"), std::nullopt);
        api.createKey(reg::CurrentUser, u"A\\B");
        EXPECT_EQ(api.readValue(u"A\\B", u"v"), std::nullopt);
        for (const RegValue& value : {RegValue(u"/home/ışık/Kitaplığım @x=1; \"y\""_s), RegValue(u""_s),
                                      RegValue(-2), RegValue(0x41424344)}) {
            api.writeValue(u"A\\B", u"v", value);
            EXPECT_EQ(api.readValue(u"A\\B", u"v"), value);
        }
    }
}

TEST(SettingsRegistry, KeepsTheRecordBetweenRuns) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"yeni/kayit.ini"_s);
    for (const QString& path : {u"/opt/lirovan"_s, u"/opt/lirovan"_s, u"/srv/lirovan"_s}) {
        SettingsRegistry store(file);
        reg_api api(store);
        recordInstallPath(api, path);
        SettingsRegistry nextRun(file);
        EXPECT_EQ(reg_api(nextRun).readValue(InstallKey, InstallValue), RegValue(path));
    }
    QFile text(file);
    ASSERT_TRUE(text.open(QIODevice::ReadOnly));
    EXPECT_TRUE(text.readAll().contains("[SOFTWARE]\nLirovan\\LirovanKey\\LirovanKey=/srv/lirovan"));
}

}  // namespace
}  // namespace lirovan::shell
