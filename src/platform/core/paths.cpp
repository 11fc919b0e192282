#include "platform/core/paths.h"

#include <QDir>
#include <QFileInfo>

namespace lirovan::platform {
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

}  // namespace

QString existingPath(const QString& path) {
    QString clean = path;
    clean.replace(u'\\', u'/');
    if (QFileInfo::exists(clean)) return clean;
    QString result = clean.startsWith(u'/') ? QStringLiteral("/") : QString();
    const QStringList parts = clean.split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString folder = result.isEmpty() ? QStringLiteral("./") : result;
        result += matchEntry(folder, parts[i]);
        if (i + 1 < parts.size()) result += u'/';
    }
    return result;
}

AppFolder::AppFolder(QString folder) : folder_(std::move(folder)) {
    while (folder_.size() > 1 && (folder_.endsWith(u'/') || folder_.endsWith(u'\\'))) folder_.chop(1);
}

QString AppFolder::path(QStringView relative) const {
    return existingPath(pageText(relative));
}

}  // namespace lirovan::platform
