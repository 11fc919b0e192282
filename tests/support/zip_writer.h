// Zip files as tests need them: with any names and attributes, honest or not.
#pragma once

#include <zip.h>
#include <QByteArray>
#include <QString>
#include <stdexcept>
#include <utility>
#include <vector>

#include "support/files.h"

namespace lirovan::test {

struct ZipEntry {
    QByteArray name, content;
    bool isLink = false;
};

/// Writes the entries in their order; answers the path.
inline QString writeZip(const QString& path, const std::vector<ZipEntry>& entries) {
    QFile::remove(path);
    QDir().mkpath(QFileInfo(path).path());
    int code = 0;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    if (!archive) throw std::runtime_error("cannot write a zip file");
    for (const ZipEntry& entry : entries) {
        zip_source_t* source = zip_source_buffer(archive, entry.content.constData(),
                                                 static_cast<zip_uint64_t>(entry.content.size()), 0);
        const zip_int64_t index = zip_file_add(archive, entry.name.constData(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) throw std::runtime_error("cannot add to a zip file");
        constexpr zip_uint32_t link = 0120777u << 16;
        if (entry.isLink)
            zip_file_set_external_attributes(archive, static_cast<zip_uint64_t>(index), 0, ZIP_OPSYS_UNIX,
                                             link);
    }
    if (zip_close(archive) != 0) throw std::runtime_error("cannot close a zip file");
    return path;
}

}  // namespace lirovan::test
