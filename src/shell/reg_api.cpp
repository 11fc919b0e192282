#include "shell/reg_api.h"

#include <QString>

#include "shell/settings_registry.h"
#include "text/blanks.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace lirovan::shell {
namespace {

// Closes the key on every way out.
class OpenKey {
  public:
    OpenKey(RegistryCalls& calls, QStringView path) : calls_(calls) {
        const QByteArray name = path.toLocal8Bit();
        open_ =
            calls_.RegOpenKeyExA(reg::CurrentUser, name.constData(), reg::FullAccess, &key_) == reg::Success;
    }
    ~OpenKey() {
        if (open_) calls_.RegCloseKey(key_);
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;

    explicit operator bool() const { return open_; }
    RegHandle handle() const { return key_; }

  private:
    RegistryCalls& calls_;
    RegHandle key_ = 0;
    bool open_ = false;
};

unsigned char* bytes(void* data) {
    return static_cast<unsigned char*>(data);
}

}  // namespace

std::optional<RegValue> reg_api::readValue(QStringView keyPath, QStringView valueName) {
    const OpenKey key(calls_, keyPath);
    if (!key) return std::nullopt;
    const QByteArray name = valueName.toLocal8Bit();
    const auto query = [&](std::uint32_t* type, unsigned char* data, std::uint32_t* size) {
        return calls_.RegQueryValueExA(key.handle(), name.constData(), type, data, size) == reg::Success;
    };

    std::uint32_t type = 0, size = 0;
    if (!query(&type, nullptr, &size)) return std::nullopt;

    if (type == reg::String) {
        if (size == 0) return QString();
        QByteArray buffer(size, '\0');
        if (!query(&type, bytes(buffer.data()), &size)) return std::nullopt;
        buffer.chop(1);
        return QString::fromLocal8Bit(buffer);
    }
    if (type == reg::Dword) {
        std::int32_t number = 0;
        size = sizeof number;
        if (!query(&type, bytes(&number), &size)) return std::nullopt;
        return number;
    }
    return std::nullopt;
}

void reg_api::createKey(RegHandle hive, QStringView keyPath) {
    RegHandle key = 0;
    const QByteArray path = keyPath.toLocal8Bit();
    if (calls_.RegCreateKeyExA(hive, path.constData(), reg::NonVolatile, reg::FullAccess, &key) ==
        reg::Success)
        calls_.RegCloseKey(key);
}

void reg_api::writeValue(QStringView keyPath, QStringView valueName, const RegValue& value) {
    const OpenKey key(calls_, keyPath);
    if (!key) return;
    const QByteArray name = valueName.toLocal8Bit();
    const auto set = [&](std::uint32_t type, QByteArray data) {
        calls_.RegSetValueExA(key.handle(), name.constData(), type, bytes(data.data()),
                              static_cast<std::uint32_t>(data.size()));
    };
    if (const auto* text = std::get_if<QString>(&value))
        set(reg::String, text->toLocal8Bit() + '\0');
    else
        set(reg::Dword, QByteArray(reinterpret_cast<const char*>(&std::get<std::int32_t>(value)), 4));
}

void recordInstallPath(reg_api& registry, const QString& folder) {
    const std::optional<RegValue> recorded = registry.readValue(InstallKey, InstallValue);
    const QString* path = recorded ? std::get_if<QString>(&*recorded) : nullptr;
    if (path && text::trimBlanks(*path) == text::trimBlanks(folder)) return;
    registry.createKey(reg::CurrentUser, InstallKey);
    registry.writeValue(InstallKey, InstallValue, folder);
}

#ifdef _WIN32

namespace {

HKEY native(RegHandle key) {
    return reinterpret_cast<HKEY>(key);
}

class NativeRegistry final : public RegistryCalls {
  public:
    long RegOpenKeyExA(RegHandle hive, const char* path, std::uint32_t access, RegHandle* key) override {
        HKEY opened = nullptr;
        const long status = ::RegOpenKeyExA(root(hive), path, 0, access, &opened);
        *key = reinterpret_cast<RegHandle>(opened);
        return status;
    }
    long RegQueryValueExA(RegHandle key, const char* name, std::uint32_t* type, unsigned char* data,
                          std::uint32_t* size) override {
        DWORD nativeType = *type, nativeSize = *size;
        const long status = ::RegQueryValueExA(native(key), name, nullptr, &nativeType, data, &nativeSize);
        *type = nativeType;
        *size = nativeSize;
        return status;
    }
    long RegCreateKeyExA(RegHandle hive, const char* path, std::uint32_t options, std::uint32_t access,
                         RegHandle* key) override {
        HKEY created = nullptr;
        const long status =
            ::RegCreateKeyExA(root(hive), path, 0, nullptr, options, access, nullptr, &created, nullptr);
        *key = reinterpret_cast<RegHandle>(created);
        return status;
    }
    long RegSetValueExA(RegHandle key, const char* name, std::uint32_t type, const unsigned char* data,
                        std::uint32_t size) override {
        return ::RegSetValueExA(native(key), name, 0, type, data, size);
    }
    long RegCloseKey(RegHandle key) override { return ::RegCloseKey(native(key)); }

  private:
    // The number of a hive is widened with its sign.
    static HKEY root(RegHandle hive) { return hive == reg::CurrentUser ? HKEY_CURRENT_USER : native(hive); }
};

}  // namespace

std::unique_ptr<RegistryCalls> systemRegistry() {
    return std::make_unique<NativeRegistry>();
}

#else

std::unique_ptr<RegistryCalls> systemRegistry() {
    return std::make_unique<SettingsRegistry>(SettingsRegistry::userFile());
}

#endif

}  // namespace lirovan::shell
