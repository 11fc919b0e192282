// The registry's five calls on the per-user settings store, for systems without a registry. Keys become
// groups
// ("SOFTWARE\Lirovan\LirovanKey" is SOFTWARE/Lirovan/LirovanKey) and values their entries, in a text file
// that people can read.
#pragma once

#include <QHash>
#include <QSet>
#include <QSettings>

#include "shell/reg_api.h"

namespace lirovan::shell {

class SettingsRegistry final : public RegistryCalls {
  public:
    /// `file`: written when a key is closed; made with its folder when it is missing.
    explicit SettingsRegistry(const QString& file);

    /// The file in the user's settings folder.
    static QString userFile();

    /// A key exists while it holds values or keys, or once it was created in this run.
    long RegOpenKeyExA(RegHandle hive, const char* path, std::uint32_t access, RegHandle* key) override;
    long RegQueryValueExA(RegHandle key, const char* name, std::uint32_t* type, unsigned char* data,
                          std::uint32_t* size) override;
    long RegCreateKeyExA(RegHandle hive, const char* path, std::uint32_t options, std::uint32_t access,
                         RegHandle* key) override;
    long RegSetValueExA(RegHandle key, const char* name, std::uint32_t type, const unsigned char* data,
                        std::uint32_t size) override;
    long RegCloseKey(RegHandle key) override;

  private:
    bool exists(const QString& group);
    RegHandle handleOf(const QString& group);

    QSettings settings_;
    QSet<QString> created_;
    QHash<RegHandle, QString> open_;
    RegHandle last_ = 0;
};

}  // namespace lirovan::shell
