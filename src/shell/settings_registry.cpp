#include "shell/settings_registry.h"

#include <algorithm>
#include <cstring>

namespace lirovan::shell {
namespace {

constexpr long InvalidHandle = 6, InvalidData = 13, NotSupported = 50, MoreData = 234;

QString groupOf(const char* path) {
    return QString::fromLocal8Bit(path).replace(u'\\', u'/');
}

QString entryOf(const QString& group, const char* name) {
    return group + u'/' + QString::fromLocal8Bit(name);
}

}  // namespace

SettingsRegistry::SettingsRegistry(const QString& file) : settings_(file, QSettings::IniFormat) {}

QString SettingsRegistry::userFile() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Lirovan")).fileName();
}

bool SettingsRegistry::exists(const QString& group) {
    if (created_.contains(group)) return true;
    settings_.beginGroup(group);
    const bool filled = !settings_.allKeys().isEmpty();
    settings_.endGroup();
    return filled;
}

RegHandle SettingsRegistry::handleOf(const QString& group) {
    open_.insert(++last_, group);
    return last_;
}

long SettingsRegistry::RegOpenKeyExA(RegHandle hive, const char* path, std::uint32_t, RegHandle* key) {
    const QString group = groupOf(path);
    if (hive != reg::CurrentUser || !exists(group)) return reg::FileNotFound;
    *key = handleOf(group);
    return reg::Success;
}

long SettingsRegistry::RegQueryValueExA(RegHandle key, const char* name, std::uint32_t* type,
                                        unsigned char* data, std::uint32_t* size) {
    if (!open_.contains(key)) return InvalidHandle;
    const QVariant value = settings_.value(entryOf(open_.value(key), name));
    if (!value.isValid()) return reg::FileNotFound;
    // A number is kept as its four bytes, which the file tells from a text.
    const bool number = value.typeId() == QMetaType::QByteArray;
    const QByteArray content = number ? value.toByteArray() : value.toString().toLocal8Bit() + '\0';
    const std::uint32_t room = *size;
    *type = number ? reg::Dword : reg::String;
    *size = static_cast<std::uint32_t>(content.size());
    if (data == nullptr) return reg::Success;
    if (room < *size) return MoreData;
    std::memcpy(data, content.constData(), *size);
    return reg::Success;
}

long SettingsRegistry::RegCreateKeyExA(RegHandle hive, const char* path, std::uint32_t, std::uint32_t,
                                       RegHandle* key) {
    if (hive != reg::CurrentUser) return NotSupported;
    const QString group = groupOf(path);
    created_.insert(group);
    *key = handleOf(group);
    return reg::Success;
}

long SettingsRegistry::RegSetValueExA(RegHandle key, const char* name, std::uint32_t type,
                                      const unsigned char* data, std::uint32_t size) {
    if (!open_.contains(key)) return InvalidHandle;
    const QByteArray content(reinterpret_cast<const char*>(data), size);
    const QString entry = entryOf(open_.value(key), name);
    if (type == reg::String) {
        settings_.setValue(entry, QString::fromLocal8Bit(content.left(content.indexOf('\0'))));
    } else if (type == reg::Dword) {
        if (size != 4) return InvalidData;
        settings_.setValue(entry, content);
    } else {
        return NotSupported;
    }
    return reg::Success;
}

long SettingsRegistry::RegCloseKey(RegHandle key) {
    if (open_.remove(key) == 0) return InvalidHandle;
    settings_.sync();
    return reg::Success;
}

}  // namespace lirovan::shell
