// ODT documents as pandoc takes them whole: it leaves out the rows of a table that stand in a group of their
// own, the header rows before all.
#include <zip.h>

#include <QFile>
#include <QRegularExpression>

#include "tools/book_reader/files.h"
#include "tools/book_reader/limits.h"
#include "tools/book_reader/open_source.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;

namespace {

const QString Content = u"content.xml"_s;

Error unwritable() {
    return {u"Geçici dosya yazılamıyor."_s};
}

// The tags of the groups go, so that their rows are the table's.
QByteArray withoutRowGroups(const QByteArray& xml) {
    static const QRegularExpression group(u"</?table:table-(?:header-rows|rows|row-group)(?:\\s[^<>]*)?>"_s);
    return QString::fromUtf8(xml).remove(group).toUtf8();
}

Result<void> replaceContent(const QString& path, const QByteArray& content) {
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), 0, nullptr);
    if (!archive) return unwritable();
    const zip_int64_t index = zip_name_locate(archive, "content.xml", 0);
    zip_source_t* source =
        zip_source_buffer(archive, content.constData(), static_cast<zip_uint64_t>(content.size()), 0);
    if (index < 0 || !source ||
        zip_file_replace(archive, static_cast<zip_uint64_t>(index), source, ZIP_FL_OVERWRITE) != 0) {
        zip_source_free(source);
        zip_discard(archive);
        return unwritable();
    }
    if (zip_close(archive) == 0) return {};
    zip_discard(archive);
    return unwritable();
}

}  // namespace

Result<void> writePlainOdt(const QString& path, const QString& target) {
    // Looks at the container, too, before anything unpacks it.
    const auto files = openZip(path);
    if (!files) return files.error();
    const Result<QByteArray> content = (*files)->read(Content, MaximalDocumentBytes);
    if (!content) return content.error();
    QFile::remove(target);
    if (!QFile::copy(path, target) || !QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner))
        return unwritable();
    return replaceContent(target, withoutRowGroups(*content));
}

}  // namespace lirovan::book_reader
