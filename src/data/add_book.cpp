// addBook() and removeBook().
#include <QDateTime>
#include <QFileInfo>
#include <QHash>

#include "data/added_books.h"
#include "data/book_rows.h"
#include "data/book_tables.h"
#include "data/book_text.h"
#include "platform/core/books/book_markup.h"
#include "text/comparison.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::BookAddress;
using platform::BookContent;
using platform::BookEntry;
using platform::Database;
using platform::Error;
using platform::Result;
using platform::Statement;
using platform::Transaction;

namespace {

Error stopped() {
    return {u"İşlem durduruldu; kitaplık eskisi gibi kaldı."_s};
}

// Changes stay in memory up to this size (in KiB) instead of locking out readers before the end.
Result<void> keepInMemory(const Database& database) {
    return database.execute(u"PRAGMA cache_size=-65536");
}

Result<AuthorId> authorNamed(const Database& database, const QString& name) {
    AuthorId found;
    const QString wanted = text::folded(name);
    const Result<void> read = forEachRow(
        database, u"SELECT YazarID, Yazar FROM tbl_Yazar ORDER BY YazarID DESC", [&](const Statement& row) {
            if (text::folded(row.text(1).simplified()) == wanted) found = AuthorId{row.integer(0)};
        });
    if (!read) return read.error();
    if (found != AuthorId{}) return found;
    const Result<qint64> id = nextId(database, Numbered::Author);
    if (!id) return id.error();
    const Result<void> added =
        execute(database, u"INSERT INTO tbl_Yazar (YazarID, Yazar) VALUES (?, ?)", *id, name);
    if (!added) return added.error();
    return AuthorId{*id};
}

// The book that is being written, in the transaction that the caller holds.
class Writer {
  public:
    Writer(const Database& database, const BookContent& book, const AddBook& request,
           const WriteProgress& progress)
        : database_(database), book_(book), request_(request), progress_(progress), variants_(database) {}

    Result<BookAdded> write(const std::optional<AddedBook>& replaced) {
        targets_ = linkTargets(book_, request_.left);
        for (size_t i = 0; i < targets_.size(); ++i) total_ += targets_[i] == qint64(i);
        if (total_ == 0) return Error{u"Eklenecek konu yok."_s};
        for (const auto step :
             {&Writer::takeOut, &Writer::writeBook, &Writer::numberTopics, &Writer::writePictures,
              &Writer::writeTopics, &Writer::settleVariants, &Writer::writeSource})
            if (const Result<void> done = (this->*step)(replaced); !done) return done.error();
        return BookAdded{true, replaced, id_, total_, qint64(pictures_.size())};
    }

  private:
    using Replaced = std::optional<AddedBook>;

    Result<void> takeOut(const Replaced& replaced) {
        if (!replaced) return {};
        const auto topics = topicsOf(database_, replaced->id);
        if (!topics) return topics.error();
        for (auto topic = topics->rbegin(); topic != topics->rend(); ++topic)
            oldTopics_[topic->title].push_back(topic->topic.value);
        const Result<void> row = forEachRow(
            database_, u"SELECT YazarID, KitapSiraID FROM tbl_Kitaplar WHERE KitapID=?",
            [&](const Statement& found) {
                oldAuthor_ = AuthorId{found.integer(0)};
                oldOrder_ = found.real(1);
            },
            replaced->id.value);
        if (!row) return row;
        return removeRows(database_, replaced->id, gone_);
    }

    Result<void> writeBook(const Replaced& replaced) {
        const Result<AuthorId> author = authorNamed(database_, authorOf(book_, request_));
        if (!author) return author.error();
        if (replaced && *author != oldAuthor_)
            if (const Result<void> idle = removeIdleAuthor(database_, oldAuthor_); !idle) return idle;
        double order = oldOrder_;
        if (!replaced || *author != oldAuthor_) {
            const auto last = database_.integer(
                u"SELECT cast(max(KitapSiraID) AS INTEGER) FROM tbl_Kitaplar WHERE YazarID=%1"_s.arg(
                    author->value));
            if (!last) return last.error();
            order = double(last->value_or(0) + 1);
        }
        const Result<qint64> id =
            replaced ? Result<qint64>(replaced->id.value) : nextId(database_, Numbered::Book);
        if (!id) return id.error();
        id_ = BookId{*id};
        return execute(
            database_,
            u"INSERT INTO tbl_Kitaplar (KitapID, KitapAdi, YazarID, KitapSiraID) VALUES (?, ?, ?, ?)", *id,
            titleOf(book_, request_), author->value, order);
    }

    // First all ids, since links go forwards too.
    Result<void> numberTopics(const Replaced&) {
        topics_.assign(targets_.size(), 0);
        for (size_t i = 0; i < targets_.size(); ++i) {
            if (targets_[i] != qint64(i)) continue;
            auto old = oldTopics_.find(storedTitle(book_.outline()[i].title));
            if (old != oldTopics_.end() && !old->empty()) {
                topics_[i] = old->back();
                old->pop_back();
                continue;
            }
            const Result<qint64> id = nextId(database_, Numbered::Topic);
            if (!id) return id.error();
            topics_[i] = *id;
        }
        return {};
    }

    Result<void> writePictures(const Replaced&) {
        for (size_t i = 0; i < topics_.size(); ++i) {
            if (topics_[i] == 0) continue;
            for (const qint64 number : book_.outline()[i].pictures) {
                if (pictures_.contains(number)) continue;
                if (const Result<void> written = writePicture(number); !written) return written;
                if (!goOn(0)) return stopped();
            }
        }
        return {};
    }

    Result<void> writePicture(qint64 number) {
        const Result<qint64> id = nextId(database_, Numbered::Picture);
        if (!id) return id.error();
        const Result<QByteArray> bytes = book_.picture(number);
        if (!bytes) return bytes.error();
        pictures_[number] = *id;
        const platform::BookPicture& picture = book_.pictures()[size_t(number)];
        return execute(
            database_,
            u"INSERT INTO tbl_Resim (ResimID, KitapID, ResimAdi, Bicim, Resim) VALUES (?, ?, ?, ?, ?)", *id,
            id_.value, picture.name, picture.type, *bytes);
    }

    Result<void> writeTopics(const Replaced&) {
        const auto last = database_.integer(u"SELECT max(ID) FROM tbl_Konu");
        if (!last) return last.error();
        qint64 row = last->value_or(0), order = 0;
        for (size_t i = 0; i < topics_.size(); ++i) {
            if (topics_[i] == 0) continue;
            if (!goOn(order)) return stopped();
            if (const Result<void> written = writeTopic(i, ++row, ++order); !written) return written;
        }
        return {};
    }

    Result<void> writeTopic(size_t entry, qint64 row, qint64 order) {
        const Result<QString> text = book_.text(qint64(entry));
        if (!text) return text.error();
        const QString stored = platform::withAddresses(
            *text, [&](const BookAddress& address) { return storedAddress(address, entry); });
        const Result<void> heading = execute(
            database_,
            u"INSERT INTO tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira) VALUES (?, ?, ?, ?)",
            topics_[entry], id_.value, storedTitle(book_.outline()[entry].title), order);
        if (!heading) return heading;
        return execute(database_, u"INSERT INTO tbl_Konu (ID, KonuID, Konu, PartNumber) VALUES (?, ?, ?, 1)",
                       row, topics_[entry], stored);
    }

    std::optional<BookAddress> storedAddress(const BookAddress& address, size_t entry) const {
        BookAddress stored = address;
        if (address.kind == BookAddress::Kind::Picture) {
            stored.number = pictures_.value(address.number);
        } else if (address.kind == BookAddress::Kind::Topic) {
            const qint64 target = targets_[size_t(address.number)];
            if (target < 0) return std::nullopt;
            if (target != address.number) stored.place.clear();  // the place is not on that page
            if (target == qint64(entry) && !stored.place.isEmpty())
                return BookAddress{BookAddress::Kind::Place, -1, stored.place};
            stored.number = topics_[size_t(target)];
        }
        return stored;
    }

    // Old forms first: the texts of this book may have some of them.
    Result<void> settleVariants(const Replaced&) {
        const Result<bool> settled = gone_.settle(database_, [&] { return goOn(total_); });
        if (!settled) return settled.error();
        if (!*settled) return stopped();
        for (size_t i = 0; i < topics_.size(); ++i) {
            if (topics_[i] == 0) continue;
            if (!goOn(total_)) return stopped();
            const Result<QString> text = book_.text(qint64(i));
            if (!text) return text.error();
            if (const Result<void> added = variants_.add(*text); !added) return added;
        }
        return {};
    }

    Result<void> writeSource(const Replaced&) {
        const platform::BookHead& head = book_.head();
        return execute(
            database_,
            u"INSERT INTO tbl_Kaynak (KitapID, Kimlik, Ozet, Bicim, Dosya, Tarih) VALUES (?, ?, ?, ?, ?, ?)",
            id_.value, head.identifier, head.digest, head.format, QFileInfo(book_.file()).fileName(),
            QDateTime::currentDateTime().toString(Qt::ISODate));
    }

    bool goOn(qint64 done) const { return !progress_ || progress_(done, total_); }

    const Database& database_;
    const BookContent& book_;
    const AddBook& request_;
    const WriteProgress& progress_;
    VariantAdder variants_;
    VariantRemover gone_;
    std::vector<qint64> targets_;
    std::vector<qint64> topics_;  // by entry: KonuID, 0 for none
    QHash<qint64, qint64> pictures_;
    QHash<QString, std::vector<qint64>> oldTopics_;  // last one first
    AuthorId oldAuthor_;
    double oldOrder_ = 0;
    BookId id_;
    qint64 total_ = 0;
};

// The book's row, with what speaks against taking it out.
Result<AuthorId> authorOfRemovable(const Database& database, BookId book, bool laidDownToo) {
    std::optional<AuthorId> author;
    const Result<void> read = forEachRow(
        database, u"SELECT YazarID FROM tbl_Kitaplar WHERE KitapID=?",
        [&](const Statement& row) { author = AuthorId{row.integer(0)}; }, book.value);
    if (!read) return read.error();
    if (!author) return Error{u"Kitaplıkta %1 numaralı kitap yok."_s.arg(book.value)};
    const auto source =
        database.integer(u"SELECT count(*) FROM tbl_Kaynak WHERE KitapID=%1"_s.arg(book.value));
    if (!source) return source.error();
    if (*source == 0 && !laidDownToo)
        return Error{
            u"%1 numaralı kitap bir dosyadan eklenmemiş; kitaplığın kendi kitabıdır."_s.arg(book.value)};
    return *author;
}

}  // namespace

Result<BookAdded> addBook(const Database& database, const BookContent& book, const AddBook& request,
                          const WriteProgress& progress) {
    if (const Result<void> kept = keepInMemory(database); !kept) return kept.error();
    Result<Transaction> transaction = Transaction::begin(database);
    if (!transaction) return transaction.error();
    const auto present = sameBook(database, book.head());
    if (!present) return present.error();
    if (*present && request.same == SameBook::Leave) return BookAdded{false, *present, (*present)->id, 0, 0};
    if (const Result<void> tables = makeBookTables(database); !tables) return tables.error();
    Result<BookAdded> added = Writer(database, book, request, progress)
                                  .write(request.same == SameBook::Replace ? *present : std::nullopt);
    if (!added) return added;
    added->present = *present;
    if (const Result<void> committed = transaction->commit(); !committed) return committed.error();
    return added;
}

Result<void> removeBook(const Database& database, BookId book, bool laidDownToo,
                        const WriteProgress& progress) {
    if (const Result<void> kept = keepInMemory(database); !kept) return kept;
    Result<Transaction> transaction = Transaction::begin(database);
    if (!transaction) return transaction.error();
    if (const Result<void> tables = makeBookTables(database); !tables) return tables;
    const Result<AuthorId> author = authorOfRemovable(database, book, laidDownToo);
    if (!author) return author.error();
    VariantRemover variants;
    if (const Result<void> removed = removeRows(database, book, variants); !removed) return removed;
    if (const Result<void> idle = removeIdleAuthor(database, *author); !idle) return idle;
    const Result<bool> settled = variants.settle(database, [&] { return !progress || progress(0, 0); });
    if (!settled) return settled.error();
    if (!*settled) return stopped();
    return transaction->commit();
}

}  // namespace lirovan::data
