#include "shell/recent_libraries.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace lirovan::shell {

namespace {

constexpr QStringView Key = u"SOFTWARE\\Lirovan\\Kitapliklar";
// One more than is shown: the one that is open stands in the list, too.
constexpr int MostKept = MostRecentLibraries + 1;

QString valueName(int index) {
    return u"Kitaplik%1"_s.arg(index + 1);
}

QStringList kept(const reg_api& registry) {
    QStringList folders;
    for (int i = 0; i < MostKept; ++i) {
        const auto value = registry.readValue(Key, valueName(i));
        const QString* folder = value ? std::get_if<QString>(&*value) : nullptr;
        if (folder && !folder->isEmpty() && !folders.contains(*folder)) folders += *folder;
    }
    return folders;
}

void keep(reg_api& registry, const QStringList& folders) {
    registry.createKey(Key);
    for (int i = 0; i < MostKept; ++i) registry.writeValue(Key, valueName(i), folders.value(i));
}

}  // namespace

QStringList recentLibraries(const reg_api& registry, const QString& current) {
    QStringList folders = kept(registry);
    folders.removeAll(current);
    return folders.mid(0, MostRecentLibraries);
}

void rememberLibrary(reg_api& registry, const QString& folder) {
    QStringList folders = kept(registry);
    if (folders.value(0) == folder) return;
    folders.removeAll(folder);
    folders.prepend(folder);
    keep(registry, folders);
}

void forgetLibrary(reg_api& registry, const QString& folder) {
    QStringList folders = kept(registry);
    if (folders.removeAll(folder) > 0) keep(registry, folders);
}

QString libraryCaption(const QString& folder, int most) {
    const QString name = QFileInfo(folder).fileName();
    QString place = QDir::toNativeSeparators(QFileInfo(folder).path());
    if (place.size() > most) place = u'…' + place.last(most - 1);
    return name.isEmpty() ? QDir::toNativeSeparators(folder) : u"%1  (%2)"_s.arg(name, place);
}

}  // namespace lirovan::shell
