#include "desk/bookmarks.h"

#include <QFileInfo>

#include "data/each_row.h"
#include "desk/reader_file.h"
#include "platform/core/each_row.h"
#include "search/study/contexts.h"
#include "text/blanks.h"
#include "text/title.h"

namespace lirovan::desk {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::PagePlace;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

constexpr QStringView Columns = u"Tarih, KonuID, KitapID, Yazar, Kitap, Konu, Yer, Satir";

Bookmark bookmarkIn(const Statement& row) {
    Bookmark bookmark;
    bookmark.id = row.integer(0);
    bookmark.made = QDateTime::fromString(row.text(1), Qt::ISODate);
    bookmark.topic = {row.integer(2)};
    bookmark.book = {row.integer(3)};
    bookmark.author = row.text(4);
    bookmark.bookTitle = row.text(5);
    bookmark.heading = row.text(6);
    bookmark.place = platform::placeFromJson(row.text(7).toUtf8()).value_or(PagePlace());
    bookmark.line = row.text(8);
    return bookmark;
}

Result<void> run(Statement& statement) {
    if (const Result<Step> done = statement.step(); !done) return done.error();
    return {};
}

Result<void> bindAll(Statement& row, const Bookmark& bookmark) {
    const auto bound = bookmark.id ? row.bind(1, bookmark.id) : row.bindNull(1);
    if (!bound) return bound;
    const qint64 numbers[] = {bookmark.topic.value, bookmark.book.value};
    for (int i = 0; i < 2; ++i)
        if (const auto done = row.bind(3 + i, numbers[i]); !done) return done;
    const std::pair<int, QString> texts[] = {{2, bookmark.made.toString(Qt::ISODate)},
                                             {5, bookmark.author},
                                             {6, bookmark.bookTitle},
                                             {7, bookmark.heading},
                                             {8, QString::fromUtf8(platform::placeJson(bookmark.place))},
                                             {9, bookmark.line}};
    for (const auto& [parameter, text] : texts)
        if (const auto done = row.bind(parameter, QStringView(text)); !done) return done;
    return {};
}

// In one transaction, which waits for the disk once.
Result<void> insert(const Database& database, const std::vector<Bookmark>& bookmarks) {
    Result<platform::Transaction> transaction = platform::Transaction::begin(database);
    if (!transaction) return transaction.error();
    {
        Result<Statement> row = database.prepare(
            u"INSERT OR IGNORE INTO tbl_YerImleri (YerImiID, %1) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"_s.arg(
                Columns));
        if (!row) return row.error();
        for (const Bookmark& each : bookmarks) {
            row->reset();
            if (const auto bound = bindAll(*row, each); !bound) return bound;
            if (const auto done = run(*row); !done) return done;
        }
    }
    return transaction->commit();
}

/// The topic's text as it is read; nothing where it is gone.
std::optional<QString> plainText(const data::Library& library, data::TopicId topic) {
    const auto found = library.topic(topic);
    if (!found || !*found) return std::nullopt;
    return QString::fromStdString(search::contextsOf((**found).text.toStdString(), {}, 0).plain);
}

bool holds(const QString& plain, const PagePlace& place) {
    return platform::findPlace(platform::withoutBlanks(plain), place) >= 0;
}

QString clean(const QString& title) {
    return text::trimBlanks(text::ClearTitle(QString(title))).toString();
}

std::optional<data::BookId> bookCalled(const data::Library& library, const Bookmark& bookmark) {
    const auto byId = library.bookById(bookmark.book);
    if (byId && *byId && clean((**byId).title) == bookmark.bookTitle) return bookmark.book;
    const auto byTitle = library.bookByTitle(bookmark.bookTitle);
    if (byTitle && *byTitle) return (**byTitle).id;
    return std::nullopt;
}

/// The topics of a book, those with the bookmark's heading in front.
std::vector<data::TopicId> topicsOf(const data::Library& library, data::BookId book, const QString& heading) {
    std::vector<data::TopicId> called, others;
    (void)data::eachRow(library.headings(book), [&](const data::Heading& row) {
        if (row.hasTopic) (clean(row.title) == heading ? called : others).push_back(row.topic);
    });
    called.insert(called.end(), others.begin(), others.end());
    return called;
}

}  // namespace

QString Bookmark::where() const {
    return heading + u" – "_s + bookTitle;
}

Result<std::vector<Bookmark>> Bookmarks::all() const {
    std::vector<Bookmark> bookmarks;
    if (QFileInfo(path_).size() == 0) return bookmarks;
    const Result<Database> database = readReaderFile(path_);
    if (!database) return database.error();
    const Result<void> read = platform::eachRow(
        database->prepare(u"SELECT YerImiID, %1 FROM tbl_YerImleri ORDER BY YerImiID"_s.arg(Columns)),
        [&](const Statement& row) { bookmarks.push_back(bookmarkIn(row)); });
    if (!read) return read.error();
    return bookmarks;
}

Result<qint64> Bookmarks::add(const Bookmark& bookmark) const {
    const Result<Database> database = openReaderFile(path_);
    if (!database) return database.error();
    if (const auto inserted = insert(*database, {bookmark}); !inserted) return inserted.error();
    const auto id = database->integer(u"SELECT last_insert_rowid()");
    if (!id) return id.error();
    return id->value_or(0);
}

Result<void> Bookmarks::restore(const std::vector<Bookmark>& bookmarks) const {
    const Result<Database> database = openReaderFile(path_);
    if (!database) return database.error();
    return insert(*database, bookmarks);
}

Result<void> Bookmarks::rename(qint64 id, const QString& line) const {
    const Result<Database> database = openReaderFile(path_);
    if (!database) return database.error();
    Result<Statement> row = database->prepare(u"UPDATE tbl_YerImleri SET Satir=? WHERE YerImiID=?");
    if (!row) return row.error();
    if (const auto bound = row->bind(1, QStringView(line)); !bound) return bound;
    if (const auto bound = row->bind(2, id); !bound) return bound;
    return run(*row);
}

Result<void> Bookmarks::remove(const std::vector<qint64>& ids) const {
    const Result<Database> database = openReaderFile(path_);
    if (!database) return database.error();
    Result<platform::Transaction> transaction = platform::Transaction::begin(*database);
    if (!transaction) return transaction.error();
    {
        Result<Statement> row = database->prepare(u"DELETE FROM tbl_YerImleri WHERE YerImiID=?");
        if (!row) return row.error();
        for (const qint64 id : ids) {
            row->reset();
            if (const auto bound = row->bind(1, id); !bound) return bound;
            if (const auto done = run(*row); !done) return done;
        }
    }
    return transaction->commit();
}

std::optional<Bookmark> bookmarkOf(const data::Library& library, data::TopicId topic, data::BookId book,
                                   PagePlace place) {
    const std::optional<QString> plain = plainText(library, topic);
    if (!plain) return std::nullopt;
    Bookmark bookmark;
    bookmark.topic = topic;
    bookmark.book = book;
    if (const auto heading = library.heading(book, topic); heading && *heading)
        bookmark.heading = clean((**heading).title);
    if (const auto found = library.bookById(book); found && *found)
        bookmark.bookTitle = clean((**found).title);
    if (const auto row = library.headingWithBook(topic); row && *row)
        if (const auto author = library.author((**row).author); author && *author)
            bookmark.author = (**author).name.trimmed();
    if (place.atTop || place.passage.isEmpty()) {
        const QString beginning = plain->left(qsizetype{2} * platform::PassageLength).simplified();
        const qsizetype end = beginning.lastIndexOf(u' ', platform::PassageLength);
        place.passage = beginning.size() <= platform::PassageLength || end <= 0
                            ? beginning.left(platform::PassageLength)
                            : beginning.left(end);
        place.before.clear();
    }
    bookmark.place = std::move(place);
    bookmark.made = QDateTime::currentDateTime();
    return bookmark;
}

namespace {
bool isCalled(const data::Library& library, const Bookmark& bookmark) {
    const auto heading = library.heading(bookmark.topic);
    return heading && *heading && clean((**heading).title) == bookmark.heading;
}
}  // namespace

Target targetOf(const data::Library& library, const Bookmark& bookmark) {
    const auto text = plainText(library, bookmark.topic);
    if (text && bookmark.place.passage.isEmpty() && isCalled(library, bookmark))
        return {Target::Kind::Place, bookmark.topic, bookmark.book};
    if (text && holds(*text, bookmark.place)) return {Target::Kind::Place, bookmark.topic, bookmark.book};
    const std::optional<data::BookId> book = bookCalled(library, bookmark);
    std::optional<data::TopicId> called;
    if (book)
        for (const data::TopicId topic : topicsOf(library, *book, bookmark.heading)) {
            const auto other = plainText(library, topic);
            if (other && holds(*other, bookmark.place)) return {Target::Kind::Place, topic, *book};
            const auto heading = library.heading(*book, topic);
            if (!called && heading && *heading && clean((**heading).title) == bookmark.heading)
                called = topic;
        }
    if (called) return {Target::Kind::Topic, *called, *book};
    // Another topic may have got the id in a library that was made anew.
    if (text && isCalled(library, bookmark)) return {Target::Kind::Topic, bookmark.topic, bookmark.book};
    return {};
}

}  // namespace lirovan::desk
