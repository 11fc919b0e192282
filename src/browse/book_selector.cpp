#include "browse/book_selector.h"

#include "data/each_row.h"
#include "text/blanks.h"
#include "text/comparison.h"
#include "text/title.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

// "999" between the ids marks where the author's ends.
std::optional<qint32> itemData(data::AuthorId author, const QString& book) {
    bool fits = false;
    const qint32 data = (QString::number(author.value) + u"999"_s + book).toInt(&fits);
    return fits ? std::optional(data) : std::nullopt;
}

Result<void> appendBooks(const data::Library& library, data::AuthorId author,
                         std::vector<SelectorRow>& rows) {
    return data::eachRow(library.selectorBooks(author), [&](data::Book& book) {
        rows.push_back(
            {bookRowText(book.title), itemData(author, QString::number(book.id.value)), author, book.id});
    });
}

Result<void> appendAuthors(const data::Library& library, std::vector<SelectorRow>& rows) {
    return data::eachRow(library.authors(), [&](const data::Author& author) {
        rows.push_back({authorRowText(author.name), itemData(author.id, {}), author.id, {}});
        return appendBooks(library, author.id, rows);
    });
}

}  // namespace

QString authorRowText(QString name) {
    name.replace(u'i', u'İ').replace(u'ı', u'I');
    return text::upper(name);
}

QString bookRowText(QString title) {
    QString shown = text::trimBlanks(text::ClearTitle(title)).toString();
    shown.remove(u"(Kuran Sırası)"_s);
    return u".:: "_s + shown + u" ::."_s;
}

BookSelector readBookSelector(const data::Library& library) {
    BookSelector selector;
    selector.rows.push_back({u"<Lirovan>"_s, 0, {}, {}});
    if (const Result<void> done = appendAuthors(library, selector.rows); !done)
        selector.failure = done.error();
    return selector;
}

}  // namespace lirovan::browse
