// reg_api, the registry module: values of the current user's hive. On a system without a registry they stand
// in a text file of the user's settings folder, keys as groups ("SOFTWARE\Lirovan\LirovanKey" is
// SOFTWARE/Lirovan/LirovanKey) and values as their entries.
#pragma once

#include <QSet>
#include <QSettings>
#include <QStringView>
#include <cstdint>
#include <optional>
#include <variant>

namespace lirovan::shell {

/// A text (REG_SZ) or a 32-bit integer (REG_DWORD).
using RegValue = std::variant<QString, std::int32_t>;

class reg_api {
  public:
    /// The current user's hive, or the file in its place.
    reg_api();
    /// A hive in `file`, which is made with its folder when a value is written.
    explicit reg_api(const QString& file) : hive_(file, QSettings::IniFormat) {}

    /// Nothing when key or value is missing, cannot be read, or is of another type.
    std::optional<RegValue> readValue(QStringView keyPath, QStringView valueName) const;
    void createKey(QStringView keyPath);
    /// Writes into an existing key: one that holds values or keys, or was created in this run. Failures are
    /// not reported.
    void writeValue(QStringView keyPath, QStringView valueName, const RegValue& value);

  private:
    bool exists(const QString& group);

    QSettings hive_;
    QSet<QString> created_;
};

/// Where the install path is recorded.
inline constexpr QStringView InstallKey = u"SOFTWARE\\Lirovan\\LirovanKey";
inline constexpr QStringView InstallValue = u"LirovanKey";

/// Records the application folder unless it is recorded already. Both texts are compared without the spaces
/// around them, and otherwise exactly.
void recordInstallPath(reg_api& registry, const QString& folder);

}  // namespace lirovan::shell
