#include "platform/core/paths.h"

#include <QDir>
#include <QFileInfo>

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

// One step down from `folder` (which ends in "/"): the entry as written, or the one that differs in case
// only.
QString matchEntry(const QString& folder, const QString& name) {
    if (QFileInfo::exists(folder + name)) return name;
    const QStringList entries = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return entry;
    return name;
}

// Walks `relative` (with slashes) down from `start`, which is empty or ends in "/".
QString matchDown(QString start, const QString& relative) {
    const QStringList parts = relative.split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString folder = start.isEmpty() ? u"./"_s : start;
        start += matchEntry(folder, parts[i]);
        if (i + 1 < parts.size()) start += u'/';
    }
    return start;
}

}  // namespace

QString existingPath(const QString& path) {
    QString clean = path;
    clean.replace(u'\\', u'/');
    if (QFileInfo::exists(clean)) return clean;
    // Two slashes begin the name of another machine.
    qsizetype slashes = 0;
    while (slashes < clean.size() && clean[slashes] == u'/') ++slashes;
    return matchDown(clean.first(slashes), clean);
}

AppFolder::AppFolder(QString folder) : folder_(std::move(folder)) {
    while (folder_.size() > 1 && (folder_.endsWith(u'/') || folder_.endsWith(u'\\'))) folder_.chop(1);
}

QString AppFolder::path(QStringView relative) const {
    QString below = relative.toString();
    below.replace(u'\\', u'/');
    if (QFileInfo::exists(folder_ + below)) return folder_ + below;
    return matchDown(folder_ + u'/', below);
}

}  // namespace lirovan::platform
