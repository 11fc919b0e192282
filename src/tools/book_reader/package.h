// What a book says about itself: names, reading order, contents list.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "tools/book_reader/files.h"

namespace lirovan::book_reader {

struct Creator {
    QString name, role;
};

struct Skipped {
    QString name, reason;
};

/// An entry of the contents list, in its order.
struct ContentsEntry {
    QString title;
    int depth = 0;
    QString document;  ///< name in the container; empty: the entry only groups
    QString fragment;  ///< as written, without "#"
};

struct Package {
    QString title, subtitle, language, identifier, format;
    QString series;  ///< with the place in it, where one is given: "Kıyı Kitapları, 2"
    std::vector<Creator> creators;
    QStringList documents;  ///< in reading order, each once, without the navigation document
    QStringList covers;     ///< documents that call themselves the cover
    std::vector<ContentsEntry> contents;
    bool needsContents = false;  ///< EPUB: a missing contents list is worth a word
    bool fixedLayout = false;
    std::vector<Skipped> skipped;
};

/// Reads an EPUB's container and package; refuses what is encrypted or incomplete.
Result<Package> readPackage(Files& files);

/// The contents list from a navigation document or an NCX; empty where it holds none. `covers` gets the
/// documents that landmarks name as the cover.
Result<std::vector<ContentsEntry>> readNavigation(Files& files, const QString& name, QStringList& covers);
Result<std::vector<ContentsEntry>> readNcx(Files& files, const QString& name);

}  // namespace lirovan::book_reader
