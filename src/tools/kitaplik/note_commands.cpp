#include <QFileInfo>

#include "notes/export.h"
#include "notes/note_search.h"
#include "notes/notes_place.h"
#include "platform/core/import/importer.h"
#include "platform/core/json_line.h"
#include "tools/kitaplik/commands.h"

namespace lirovan::tools {

using platform::Result;
using namespace Qt::StringLiterals;

namespace {

/// NOTLAR: a notes file, or an application folder, whose notes may be in the user's place. So may those of a
/// file that is not there.
QString notesFile(const QString& given) {
    const QFileInfo info(given);
    if (info.isFile()) return given;
    const platform::AppFolder library(info.isDir() ? info.filePath()
                                                   : QFileInfo(info.absolutePath()).absolutePath());
    if (!info.isDir() &&
        QFileInfo(library.path(notes::NotesFile)).absoluteFilePath() != info.absoluteFilePath())
        return given;
    return notes::notesPlace(library).home.path(notes::NotesFile);
}

ExitStatus notAktar(const Arguments& arguments) {
    const Result<platform::ReadableDatabase> file =
        platform::Importer().openForReading(notesFile(arguments.positional[0]), platform::LayoutKind::Notes);
    if (!file) return fail(file.error());
    const Result<int> written =
        notes::exportNotes(notes::NotesDatabase(file->database), arguments.positional[1]);
    if (!written) return fail(written.error());
    printNote(u"%1 not yazıldı."_s.arg(*written));
    return ExitStatus::Success;
}

ExitStatus notAra(const Arguments& arguments) {
    const Result<platform::ReadableDatabase> file =
        platform::Importer().openForReading(notesFile(arguments.positional[0]), platform::LayoutKind::Notes);
    if (!file) return fail(file.error());
    const auto all = notes::searchableNotes(notes::NotesDatabase(file->database));
    if (!all) return fail(all.error());
    const search::SearchOptions options{.caseSensitive = arguments.has(u"harf"),
                                        .wholeWord = arguments.has(u"tum-kelime"),
                                        .allWords = arguments.has(u"hepsi"),
                                        .together = arguments.has(u"birlikte")};
    for (const notes::FoundNote& found : notes::findNotes(*all, arguments.positional[1], options))
        printBytes(platform::JsonLine()
                       .number("not", found.note->id.value)
                       .text("tarih", found.note->date)
                       .text("baslik", found.note->title)
                       .number("isabet", static_cast<qint64>(found.hits.size()))
                       .finish() +
                   '\n');
    return ExitStatus::Success;
}

}  // namespace

std::vector<Command> noteCommands() {
    return {
        {u"not-aktar",
         u"NOTLAR KLASÖR",
         u"Her notu RTF, HTML ve düz metin dosyası olarak yazar. NOTLAR bir uygulama klasörü de olabilir.",
         2,
         2,
         {},
         {},
         {},
         notAktar},
        {u"not-ara",
         u"NOTLAR SORGU [--harf] [--tum-kelime] [--hepsi] [--birlikte]",
         u"Notlarda arar; bulunan her notu bir satır JSON olarak yazar. NOTLAR bir uygulama klasörü de "
         u"olabilir.",
         2,
         2,
         {},
         {u"harf", u"tum-kelime", u"hepsi", u"birlikte"},
         {},
         notAra},
    };
}

}  // namespace lirovan::tools
