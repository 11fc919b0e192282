#include "data/library_writer.h"

#include <QFileInfo>

#include "platform/core/library_layout.h"
#include "platform/core/own_pages.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Error;
using platform::LayoutKind;
using platform::Result;
using platform::Statement;

namespace {

Result<void> bind(Statement& statement, int parameter, const QString& value) {
    return statement.bind(parameter, QStringView(value));
}
Result<void> bind(Statement& statement, int parameter, qint64 value) {
    return statement.bind(parameter, value);
}
Result<void> bind(Statement& statement, int parameter, double value) {
    return statement.bind(parameter, value);
}

template <class... Values>
Result<void> insert(const Database& database, QStringView sql, const Values&... values) {
    Result<Statement> statement = database.prepare(sql);
    if (!statement) return statement.error();
    Result<void> bound;
    int parameter = 0;
    (void)((bound = bind(*statement, ++parameter, values), static_cast<bool>(bound)) && ...);
    if (!bound) return bound;
    const Result<platform::Step> step = statement->step();
    if (!step) return step.error();
    return {};
}

}  // namespace

Result<LibraryWriter> LibraryWriter::create(const QString& path) {
    if (QFileInfo::exists(path)) return Error{u"Dosya zaten var: %1"_s.arg(path)};
    Result<Database> database = Database::open(path, platform::OpenMode::Create);
    if (!database) return database.error();
    const Result<void> prepared = platform::prepareFile(*database, LayoutKind::Library);
    if (!prepared) return prepared.error();
    Result<platform::Transaction> transaction = platform::Transaction::begin(*database);
    if (!transaction) return transaction.error();
    if (const Result<void> made = platform::createTables(*database, LayoutKind::Library); !made)
        return made.error();
    return LibraryWriter(std::move(*database), std::move(*transaction));
}

Result<void> LibraryWriter::add(const Author& author) {
    return insert(database_, u"INSERT INTO tbl_Yazar (YazarID, Yazar) VALUES (?, ?)", author.id.value,
                  author.name);
}

Result<void> LibraryWriter::add(const Book& book) {
    return insert(database_,
                  u"INSERT INTO tbl_Kitaplar (KitapID, KitapAdi, YazarID, KitapSiraID) VALUES (?, ?, ?, ?)",
                  book.id.value, book.title, book.author.value, book.order);
}

Result<void> LibraryWriter::add(const Heading& heading) {
    return insert(database_,
                  u"INSERT INTO tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira) VALUES (?, ?, ?, ?)",
                  heading.topic.value, heading.book.value, heading.title, heading.order);
}

Result<void> LibraryWriter::add(const TopicText& topic) {
    return insert(database_, u"INSERT INTO tbl_Konu (ID, KonuID, Konu, PartNumber) VALUES (?, ?, ?, ?)",
                  ++topics_, topic.topic.value, topic.text, topic.partNumber);
}

Result<void> LibraryWriter::addScript(QStringView fragment) {
    return insert(database_, u"INSERT INTO tbl_scripts (ID, Script) VALUES (?, ?)", ++scripts_,
                  fragment.toString());
}

Result<void> LibraryWriter::finish() {
    if (const Result<void> made = platform::createIndexes(database_, LayoutKind::Library); !made) return made;
    return transaction_.commit();
}

Result<void> makeEmptyLibrary(const QString& path) {
    Result<LibraryWriter> writer = LibraryWriter::create(path);
    if (!writer) return writer.error();
    if (const Result<void> added = writer->addScript(platform::ownFragment()); !added) return added;
    return writer->finish();
}

}  // namespace lirovan::data
