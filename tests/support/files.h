// Files and tables that tests write and look at.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <stdexcept>

#include "platform/core/database.h"

namespace lirovan::test {

/// Writes the file, and its folder where there is none; answers the path. Throws where it cannot.
inline QString writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(content) != content.size())
        throw std::runtime_error("cannot write " + path.toStdString());
    return path;
}

/// The content, "(missing)" where the file cannot be read.
inline QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

/// Leaves the database as a crash in the middle of a write does: changed, with the journal that undoes it.
inline void interruptWrite(const QString& path) {
    const auto database = platform::Database::open(path, platform::OpenMode::ReadWrite).value();
    const auto written = database.execute(
        u"PRAGMA cache_size=1; BEGIN; CREATE TABLE artik AS WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 "
        u"FROM n WHERE i<200) SELECT randomblob(3000) FROM n");
    const QByteArray half = readFile(path), journal = readFile(path + QStringLiteral("-journal"));
    if (!written || !database.execute(u"ROLLBACK")) throw std::runtime_error("cannot interrupt a write");
    writeFile(path, half);
    writeFile(path + QStringLiteral("-journal"), journal);
}

/// Every row of a query, values joined by "|", rows by "/", null as "-"; the message where it fails.
inline std::string rows(const platform::Database& database, QStringView sql) {
    platform::Result<platform::Statement> statement = database.prepare(sql);
    if (!statement) return statement.error().message.toStdString();
    QStringList lines;
    for (;;) {
        const platform::Result<platform::Step> step = statement->step();
        if (!step) return step.error().message.toStdString();
        if (*step == platform::Step::Done) return lines.join(u'/').toStdString();
        QStringList values;
        for (int i = 0; i < statement->columnCount(); ++i)
            values += statement->isNull(i) ? QString(u'-') : statement->text(i);
        lines += values.join(u'|');
    }
}

}  // namespace lirovan::test
