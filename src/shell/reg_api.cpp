#include "shell/reg_api.h"

#include <QString>

#include "text/blanks.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {
namespace {

QString groupOf(QStringView keyPath) {
    return keyPath.toString().replace(u'\\', u'/');
}

}  // namespace

#ifdef Q_OS_WIN
reg_api::reg_api() : hive_(u"HKEY_CURRENT_USER"_s, QSettings::NativeFormat) {}
#else
reg_api::reg_api() : hive_(QSettings::IniFormat, QSettings::UserScope, u"Lirovan"_s) {}
#endif

bool reg_api::exists(const QString& group) {
    if (created_.contains(group)) return true;
    hive_.beginGroup(group);
    const bool filled = !hive_.allKeys().isEmpty();
    hive_.endGroup();
    return filled;
}

std::optional<RegValue> reg_api::readValue(QStringView keyPath, QStringView valueName) const {
    const QVariant value = hive_.value(groupOf(keyPath) + u'/' + valueName.toString());
    switch (value.typeId()) {
        case QMetaType::QString:
            return value.toString();
        case QMetaType::Int:
            return value.toInt();
        case QMetaType::QByteArray:  // a number in the file
            return value.toByteArray().toInt();
        default:
            return std::nullopt;
    }
}

void reg_api::createKey(QStringView keyPath) {
    created_.insert(groupOf(keyPath));
}

void reg_api::writeValue(QStringView keyPath, QStringView valueName, const RegValue& value) {
    const QString group = groupOf(keyPath);
    if (!exists(group)) return;
    const QString entry = group + u'/' + valueName.toString();
    if (const auto* text = std::get_if<QString>(&value))
        hive_.setValue(entry, *text);
    else if (const std::int32_t number = std::get<std::int32_t>(value);
             hive_.format() == QSettings::NativeFormat)
        hive_.setValue(entry, number);
    else  // a plain number would come back as text
        hive_.setValue(entry, QByteArray::number(number));
    hive_.sync();
}

void recordInstallPath(reg_api& registry, const QString& folder) {
    const std::optional<RegValue> recorded = registry.readValue(InstallKey, InstallValue);
    const QString* path = recorded ? std::get_if<QString>(&*recorded) : nullptr;
    if (path && text::trimBlanks(*path) == text::trimBlanks(folder)) return;
    registry.createKey(InstallKey);
    registry.writeValue(InstallKey, InstallValue, folder);
}

}  // namespace lirovan::shell
