#include "platform/core/import/importer.h"
#include "tools/kitaplik/build_library.h"
#include "tools/kitaplik/commands.h"

namespace lirovan::tools {

using platform::Result;

namespace {

ExitStatus olustur(const Arguments& arguments) {
    const Result<void> built = buildLibrary(arguments.positional[0], arguments.positional[1]);
    return built ? ExitStatus::Success : fail(built.error());
}

ExitStatus aktar(const Arguments& arguments) {
    const Result<platform::LayoutKind> imported =
        platform::Importer().import(arguments.positional[0], arguments.positional[1], std::nullopt);
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
