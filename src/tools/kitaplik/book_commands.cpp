#include <QFileInfo>

#include "data/added_books.h"
#include "data/library_writer.h"
#include "platform/core/books/book_files.h"
#include "platform/core/books/read_book.h"
#include "platform/core/import/importer.h"
#include "platform/core/json_line.h"
#include "platform/core/library_layout.h"
#include "tools/kitaplik/commands.h"
#include "tools/kitaplik/make_file.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using data::AddBook;
using data::BookAdded;
using data::SameBook;
using platform::BookContent;
using platform::Database;
using platform::Error;
using platform::JsonLine;
using platform::Result;

namespace {

Result<BookAdded> addTo(const QString& path, const BookContent& book, const AddBook& request) {
    const Result<Database> database = Database::open(path, platform::OpenMode::ReadWrite);
    if (!database) return database.error();
    return data::addBook(*database, book, request);
}

// Into the library, which is made where it is missing: then the whole file appears with its first book.
Result<BookAdded> add(const QString& library, const BookContent& book, const AddBook& request) {
    if (!QFileInfo(library).exists()) {
        BookAdded added;
        const Result<void> made = makeFile(library, [&](const QString& path) -> Result<void> {
            if (const Result<void> empty = data::makeEmptyLibrary(path); !empty) return empty;
            const Result<BookAdded> first = addTo(path, book, request);
            if (!first) return first.error();
            added = *first;
            return {};
        });
        if (!made) return made.error();
        return added;
    }
    const auto ensured = platform::Importer().ensureLayout(library, platform::LayoutKind::Library);
    if (!ensured) return ensured.error();
    return addTo(library, book, request);
}

void printOutline(const BookContent& book, const AddBook& request) {
    for (const platform::BookEntry& entry : book.outline()) {
        JsonLine line;
        line.text("yazar", data::authorOf(book, request)).text("kitap", data::titleOf(book, request));
        line.number("derinlik", entry.depth).text("baslik", entry.title).number("sozcuk", entry.words);
        printBytes(line.finish() + '\n');
    }
}

void printAdded(const BookContent& book, const AddBook& request, const BookAdded& added) {
    JsonLine line;
    line.number("kitapid", added.id.value).text("yazar", data::authorOf(book, request));
    line.text("kitap", data::titleOf(book, request))
        .number("konu", added.topics)
        .number("resim", added.pictures);
    printBytes(line.finish() + '\n');
}

Result<void> addFile(const Arguments& arguments, const QString& file, const AddBook& request) {
    const bool dryRun = arguments.has(u"dene");
    platform::BookReaderOptions reader;
    reader.pictures = !dryRun;
    const Result<BookContent> book = platform::readBook(file, reader);
    if (!book) return book.error();
    for (const platform::BookSkippedLine& skipped : book->skipped())
        printNote(u"%1: alınmadı: %2 (%3)"_s.arg(QFileInfo(file).fileName(), skipped.name, skipped.reason));
    if (dryRun) return printOutline(*book, request), Result<void>();
    const Result<BookAdded> added = add(arguments.positional[0], *book, request);
    if (!added) return added.error();
    if (!added->added)
        return Error{
            u"Bu kitap kitaplıkta var (%1: “%2”). Yerine koymak için --degistir, yanına eklemek için "
            "--yanina verin."_s.arg(added->id.value)
                .arg(added->present->title)};
    printAdded(*book, request, *added);
    return {};
}

ExitStatus ekle(const Arguments& arguments) {
    const QStringList files = platform::bookFiles(arguments.positional.mid(1));
    AddBook request;
    request.author = arguments.value(u"yazar").value_or(QString());
    request.title = arguments.value(u"kitap").value_or(QString());
    if (arguments.has(u"degistir")) request.same = SameBook::Replace;
    if (arguments.has(u"yanina")) request.same = SameBook::Beside;
    if (arguments.has(u"degistir") && arguments.has(u"yanina")) {
        printNote(u"--degistir ve --yanina birlikte verilemez."_s);
        return ExitStatus::Usage;
    }
    if (!request.title.isEmpty() && files.size() > 1) {
        printNote(u"--kitap yalnız bir dosyayla verilebilir."_s);
        return ExitStatus::Usage;
    }
    if (files.isEmpty()) return fail({u"Klasörde kitap dosyası yok."_s});
    ExitStatus status = ExitStatus::Success;
    for (const QString& file : files)
        if (const Result<void> added = addFile(arguments, file, request); !added)
            status = fail({u"%1: %2"_s.arg(file, added.error().message)});
    return status;
}

ExitStatus cikar(const Arguments& arguments) {
    const Result<qint64> id = Arguments::id(arguments.positional[1], u"KİTAPID");
    if (!id) {
        fail(id.error());
        return ExitStatus::Usage;
    }
    const QString& library = arguments.positional[0];
    const auto ensured = platform::Importer().ensureLayout(library, platform::LayoutKind::Library);
    if (!ensured) return fail(ensured.error());
    const Result<Database> database = Database::open(library, platform::OpenMode::ReadWrite);
    if (!database) return fail(database.error());
    const Result<void> removed = data::removeBook(*database, data::BookId{*id}, arguments.has(u"zorla"));
    return removed ? ExitStatus::Success : fail(removed.error());
}

}  // namespace

std::vector<Command> bookCommands() {
    constexpr int many = std::numeric_limits<int>::max();
    return {
        {u"ekle",
         u"KİTAPLIK DOSYA… [--yazar AD] [--kitap AD] [--dene] [--degistir | --yanina]",
         u"Dosyalardan kitap ekler (kitaplık yoksa yapar); --dene yalnız içindekileri yazar.",
         2,
         many,
         {u"yazar", u"kitap"},
         {u"dene", u"degistir", u"yanina"},
         {},
         ekle},
        {u"cikar",
         u"KİTAPLIK KİTAPID [--zorla]",
         u"Dosyadan eklenmiş bir kitabı çıkarır; --zorla ile kitaplığın kendi kitabını da.",
         2,
         2,
         {},
         {u"zorla"},
         {},
         cikar},
    };
}

}  // namespace lirovan::tools
