#include "notes/export.h"

#include <QDir>

#include "notes/note_text.h"
#include "platform/core/file_writer.h"
#include "platform/core/rtf/html_writer.h"
#include "platform/core/rtf/writer.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

using platform::Error;
using platform::Result;
namespace rtf = platform::rtf;

QString fileName(const Note& note) {
    const QString title = fileTitle(note.title);
    return title.isEmpty() ? QString::number(note.id.value) : u"%1 %2"_s.arg(note.id.value).arg(title);
}

}  // namespace

Result<int> exportNotes(const NotesDatabase& notes, const QString& folder) {
    const Result<std::vector<Note>> rows = notes.list(0);
    if (!rows) return rows.error();
    if (!QDir().mkpath(folder)) return Error{u"Klasör oluşturulamadı: %1"_s.arg(folder)};
    int written = 0;
    for (const Note& row : *rows) {
        const Result<std::optional<Note>> note = notes.find(row.id);
        if (!note) return note.error();
        if (!*note) continue;
        const rtf::Document text = textOf((*note)->rtf);
        const QString base = QDir(folder).filePath(fileName(**note));
        const struct {
            QStringView ending;
            QByteArray content;
        } files[] = {{u".rtf", rtf::write(text)},
                     {u".html", rtf::toHtml(text, (*note)->title).toUtf8()},
                     {u".txt", (text.plainText() + u'\n').toUtf8()}};
        for (const auto& file : files)
            if (const Result<void> done =
                    platform::writeWholeFile(base + file.ending.toString(), file.content);
                !done)
                return done.error();
        ++written;
    }
    return written;
}

}  // namespace lirovan::notes
