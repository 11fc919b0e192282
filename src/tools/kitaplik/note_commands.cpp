#include "notes/export.h"
#include "platform/core/import/importer.h"
#include "tools/kitaplik/commands.h"

namespace lirovan::tools {

using platform::Result;

namespace {

ExitStatus notAktar(const Arguments& arguments) {
    const Result<platform::ReadableDatabase> file =
        platform::Importer().openForReading(arguments.positional[0], platform::LayoutKind::Notes);
    if (!file) return fail(file.error());
    const Result<int> written =
        notes::exportNotes(notes::NotesDatabase(file->database), arguments.positional[1]);
    if (!written) return fail(written.error());
    printNote(QStringLiteral("%1 not yazıldı.").arg(*written));
    return ExitStatus::Success;
}

}  // namespace

std::vector<Command> noteCommands() {
    return {
        {u"not-aktar",
         u"NOTLAR KLASÖR",
         u"Her notu RTF, HTML ve düz metin dosyası olarak yazar.",
         2,
         2,
         {},
         {},
         {},
         notAktar},
    };
}

}  // namespace lirovan::tools
