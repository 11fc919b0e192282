#include "data/library.h"

#include <QFile>
#include <QFileInfo>

#include "platform/core/library_layout.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Error;
using platform::OpenMode;
using platform::Result;
using platform::Statement;

namespace {

template <class Row>
Result<Rows<Row>> rows(const Database& database, const QString& sql) {
    Result<Statement> statement = database.prepare(sql);
    if (!statement) return statement.error();
    return Rows<Row>(std::move(*statement));
}

template <class Row>
Result<std::optional<Row>> first(const Database& database, const QString& sql) {
    Result<Rows<Row>> all = rows<Row>(database, sql);
    if (!all) return all.error();
    Row row;
    const Result<bool> found = all->next(row);
    if (!found) return found.error();
    return *found ? std::optional<Row>(std::move(row)) : std::nullopt;
}

bool readable(const QString& path) {
    // To open a pipe would wait for its writer.
    return QFileInfo(path).isFile() && QFile(path).open(QIODevice::ReadOnly);
}

}  // namespace

QString missingLibraryMessage() {
    return u"kitaplar.vq dosyası bulunamadı. Kitaplar okunamıyor..."_s;
}

QString Library::connectionString(const platform::AppFolder& folder) {
    return u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + folder.pageText(LibraryFile) +
           u";Persist Security Info=False;"_s;
}

Result<Library> Library::open(const platform::AppFolder& folder, OpenMode mode) {
    const QString path = folder.path(LibraryFile);
    const QFileInfo info(path);
    if (!info.exists() || (!info.isDir() && !readable(path))) return Error{missingLibraryMessage()};
    Result<Library> library = openFile(path, mode);
    if (library) library->connectionString_ = connectionString(folder);
    return library;
}

Result<Library> Library::openFile(const QString& path, OpenMode mode) {
    const QFileInfo info(path);
    if (!info.exists()) return Error{u"Dosya bulunamadı: %1"_s.arg(path)};
    if (info.isDir()) return Error{u"Bu bir klasör, kitaplık dosyası değil: %1"_s.arg(path)};
    if (!readable(path)) return Error{u"Dosya okunamıyor: %1"_s.arg(path)};
    if (info.size() == 0) return Error{u"Kitaplık dosyası boş: %1"_s.arg(path)};

    Result<Database> database = Database::open(path, mode);
    if (!database) return Error{u"%1 (%2)"_s.arg(database.error().message, path)};
    const Result<void> checked = platform::checkLayout(*database, platform::LayoutKind::Library);
    if (!checked) return Error{u"%1 (%2)"_s.arg(checked.error().message, path)};
    Library library;
    library.database_ = std::move(*database);
    library.connectionString_ =
        u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source="_s + path + u";Persist Security Info=False;"_s;
    return library;
}

Library Library::ofDatabase(Database database) {
    Library library;
    library.database_ = std::move(database);
    return library;
}

Result<Library> Library::reopened() const {
    Result<Database> database = Database::open(path(), OpenMode::ReadOnly);
    if (!database) return database.error();
    Library again = ofDatabase(std::move(*database));
    again.useScript(scriptIfNone_);
    return again;
}

Result<Rows<Author>> Library::authors() const {
    return rows<Author>(database_, catalogue::authors());
}

Result<Rows<Book>> Library::selectorBooks(AuthorId author) const {
    return rows<Book>(database_, catalogue::selectorBooks(author));
}

Result<Rows<Book>> Library::treeBooks(AuthorId author) const {
    return rows<Book>(database_, catalogue::treeBooks(author));
}

Result<Rows<Heading>> Library::headings(BookId book) const {
    return rows<Heading>(database_, catalogue::headings(book));
}

Result<Rows<Variant>> Library::variants(QStringView word) const {
    return rows<Variant>(database_, catalogue::variants(word));
}

Result<std::optional<Author>> Library::author(AuthorId author) const {
    return first<Author>(database_, catalogue::author(author));
}

Result<std::optional<Book>> Library::bookByTitle(QStringView title) const {
    return first<Book>(database_, catalogue::bookByTitle(title));
}

Result<std::optional<Book>> Library::bookById(BookId book) const {
    return first<Book>(database_, catalogue::bookById(book));
}

Result<std::optional<Heading>> Library::heading(BookId book, TopicId topic) const {
    return first<Heading>(database_, catalogue::heading(book, topic));
}

Result<std::optional<Heading>> Library::heading(TopicId topic) const {
    return first<Heading>(database_, catalogue::headingById(topic));
}

Result<std::optional<BookHeading>> Library::headingWithBook(TopicId topic,
                                                            std::optional<qint64> headingRow) const {
    return first<BookHeading>(database_, catalogue::headingWithBook(topic, headingRow));
}

Result<std::optional<TopicText>> Library::topic(TopicId topic) const {
    return first<TopicText>(database_, catalogue::topic(topic));
}

Result<QString> Library::script() const {
    Result<Statement> statement = database_.prepare(catalogue::scripts());
    if (!statement) return statement.error();
    const Result<platform::Step> step = statement->step();
    if (!step) return step.error();
    const QString own = *step == platform::Step::Row ? statement->text(catalogue::ScriptColumn) : QString();
    return own.isEmpty() ? scriptIfNone_ : own;
}

Result<void> Library::copyTo(const QString& path) const {
    Result<Statement> copy = database_.prepare(catalogue::copyInto());
    if (!copy) return copy.error();
    if (const Result<void> bound = copy->bind(1, path); !bound) return bound;
    const Result<platform::Step> done = copy->step();
    if (!done) return done.error();
    return {};
}

}  // namespace lirovan::data
