#include "data/library_check.h"
#include "platform/core/library_layout.h"
#include "tools/kitaplik/commands.h"
#include "tools/kitaplik/open_library.h"

namespace lirovan::tools {

using platform::Database;
using platform::Result;
using namespace Qt::StringLiterals;

namespace {

// A library in our layout is looked at as it is, so that every missing table is named and not only the first.
Result<QStringList> faultsOf(const QString& path) {
    if (const Result<Database> database = Database::open(path, platform::OpenMode::ReadOnly)) {
        const auto kind = platform::layoutOf(*database);
        if (kind && *kind == platform::LayoutKind::Library) return data::checkLibrary(*database);
    }
    const Result<OpenLibrary> open = openLibrary(path);
    if (!open) return open.error();
    return data::checkLibrary(open->library.database());
}

ExitStatus denetle(const Arguments& arguments) {
    const Result<QStringList> faults = faultsOf(arguments.positional[0]);
    if (!faults) return fail(faults.error());
    for (const QString& fault : *faults) printLine(fault);
    if (!faults->isEmpty()) return ExitStatus::Failure;
    printLine(u"Sorun bulunamadı."_s);
    return ExitStatus::Success;
}

}  // namespace

std::vector<Command> checkingCommands() {
    return {
        {u"denetle",
         u"DOSYA",
         u"Bir kitaplığı denetler; sorun varsa satır satır yazar ve 1 ile çıkar.",
         1,
         1,
         {},
         {},
         {},
         denetle},
    };
}

}  // namespace lirovan::tools
