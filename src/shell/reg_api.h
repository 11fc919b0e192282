// reg_api, the registry module: reads and writes values of the current user's hive through the five calls of
// the system's registry. Where there is no registry, settings_registry.h answers the same calls.
#pragma once

#include <QByteArray>
#include <QStringView>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

namespace lirovan::shell {

using RegHandle = std::uintptr_t;

/// Constants of the registry calls, with the values that the system gives them.
namespace reg {
inline constexpr RegHandle CurrentUser = 0x80000001;
inline constexpr long Success = 0;
inline constexpr long FileNotFound = 2;
inline constexpr std::uint32_t FullAccess = 63;
inline constexpr std::uint32_t NonVolatile = 0;
inline constexpr std::uint32_t String = 1;
inline constexpr std::uint32_t Dword = 4;
}  // namespace reg

/// The five calls in their 8-bit character form, without the arguments that are always null or zero. Each
/// answers reg::Success or a system error code. Texts are in the system's 8-bit code page.
class RegistryCalls {
  public:
    virtual ~RegistryCalls() = default;
    virtual long RegOpenKeyExA(RegHandle hive, const char* path, std::uint32_t access, RegHandle* key) = 0;
    /// With `data` null only type and size are told; otherwise `*size` is the room that `data` has.
    virtual long RegQueryValueExA(RegHandle key, const char* name, std::uint32_t* type, unsigned char* data,
                                  std::uint32_t* size) = 0;
    virtual long RegCreateKeyExA(RegHandle hive, const char* path, std::uint32_t options,
                                 std::uint32_t access, RegHandle* key) = 0;
    virtual long RegSetValueExA(RegHandle key, const char* name, std::uint32_t type,
                                const unsigned char* data, std::uint32_t size) = 0;
    virtual long RegCloseKey(RegHandle key) = 0;
};

/// The registry of this machine: the system's own, or the per-user settings store.
std::unique_ptr<RegistryCalls> systemRegistry();

/// A text (REG_SZ) or a 32-bit integer (REG_DWORD).
using RegValue = std::variant<QString, std::int32_t>;

class reg_api {
  public:
    /// `calls` outlives this.
    explicit reg_api(RegistryCalls& calls) : calls_(calls) {}

    /// Nothing when key or value is missing, cannot be read, or is of another type. A text comes without the
    /// zero that ends it.
    std::optional<RegValue> readValue(QStringView keyPath, QStringView valueName);
    /// Creates the key below `hive` if it is missing. Failures are not reported.
    void createKey(RegHandle hive, QStringView keyPath);
    /// Writes into an existing key; a text is stored with one zero behind it, which its length counts.
    /// Failures are not reported.
    void writeValue(QStringView keyPath, QStringView valueName, const RegValue& value);

  private:
    RegistryCalls& calls_;
};

/// Where the install path is recorded, below the current user's hive.
inline constexpr QStringView InstallKey = u"SOFTWARE\\Lirovan\\LirovanKey";
inline constexpr QStringView InstallValue = u"LirovanKey";

/// Records the application folder unless it is recorded already. Both texts are compared without the spaces
/// around them, and otherwise exactly.
void recordInstallPath(reg_api& registry, const QString& folder);

}  // namespace lirovan::shell
