// Which files of a folder are books.
#pragma once

#include <QString>
#include <QStringList>

class QMimeData;

namespace lirovan::platform {

/// Whether the name has the ending of a format that the book reader knows.
bool isBookFile(const QString& path);

/// What a reader means who names files and folders: a folder with an index page is one book; of any other
/// folder every book file directly in it, by name. Files stay as they are, whatever their names.
QStringList bookFiles(const QStringList& paths);

/// The files and folders of this machine that were dragged here.
QStringList draggedFiles(const QMimeData& dragged);

}  // namespace lirovan::platform
