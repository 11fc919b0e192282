// The manifest of a library folder, kitaplik.json (docs/LIBRARY-FORMAT.md).
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "platform/core/result.h"

namespace lirovan::tools {

struct ManifestTopic {
    qint64 id = 0;
    QString heading;
    QString file;  ///< relative to the folder, inside it
    double part = 1;
    double order = 0;
};

struct ManifestBook {
    qint64 id = 0;
    QString title;
    double order = 0;
    std::vector<ManifestTopic> topics;
};

struct ManifestAuthor {
    qint64 id = 0;
    QString name;
    std::vector<ManifestBook> books;
};

struct Manifest {
    QString scriptFile;  ///< empty: none
    std::vector<ManifestAuthor> authors;
};

/// The manifest in `json`. Strict: an unknown or missing key, a value of the wrong kind, an id that is given
/// twice or a path that leads out of the folder is an error, and its message names the entry
/// ("yazarlar[0].kitaplar[2].konular[4]").
platform::Result<Manifest> readManifest(const QByteArray& json);

}  // namespace lirovan::tools
