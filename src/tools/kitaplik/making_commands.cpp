#include <QFile>

#include "data/book_tables.h"
#include "platform/core/import/file_format.h"
#include "platform/core/import/importer.h"
#include "platform/core/library_layout.h"
#include "tools/kitaplik/build_library.h"
#include "tools/kitaplik/commands.h"

namespace lirovan::tools {

using platform::Result;

namespace {

ExitStatus olustur(const Arguments& arguments) {
    const Result<void> built = buildLibrary(arguments.positional[0], arguments.positional[1]);
    return built ? ExitStatus::Success : fail(built.error());
}

// The import knows the laid-down tables only. A library of ours may have those of added books, too.
Result<void> copyAdded(const QString& source, const QString& target) {
    const platform::FileHeader header = platform::probeFile(source);
    if (header.format != platform::FileFormat::Sqlite ||
        header.applicationId != platform::LibraryApplicationId)
        return {};
    const auto from = platform::Database::open(source, platform::OpenMode::ReadOnly);
    if (!from) return from.error();
    const Result<bool> has = data::hasBookTables(*from);
    if (!has) return has.error();
    if (!*has) return {};
    const auto into = platform::Database::open(target, platform::OpenMode::ReadWrite);
    return into ? data::copyBookTables(*from, *into) : Result<void>(into.error());
}

ExitStatus aktar(const Arguments& arguments) {
    const QString &source = arguments.positional[0], &target = arguments.positional[1];
    const Result<platform::LayoutKind> imported =
        platform::Importer().import(source, target, std::nullopt, {},
                                    [&](const QString& unfinished) { return copyAdded(source, unfinished); });
    return imported ? ExitStatus::Success : fail(imported.error());
}

}  // namespace

std::vector<Command> makingCommands() {
    return {
        {u"olustur",
         u"KLASÖR HEDEF",
         u"Bir klasörden (kitaplik.json ve konu dosyaları) kitaplık yapar.",
         2,
         2,
         {},
         {},
         {},
         olustur},
        {u"aktar",
         u"KAYNAK HEDEF",
         u"Bir Access ya da SQLite dosyasını kitaplık (ya da not) dosyası olarak yazar.",
         2,
         2,
         {},
         {},
         {},
         aktar},
    };
}

}  // namespace lirovan::tools
