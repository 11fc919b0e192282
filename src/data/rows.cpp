#include "data/rows.h"

namespace lirovan::data {

namespace {

using platform::Statement;

void find(const Statement& statement, int* positions, std::initializer_list<QStringView> names) {
    for (const QStringView name : names) *positions++ = statement.column(name);
}

// For each kind of row: which columns are looked up by name, and how one row is read.

void resolve(const Statement&, int*, const Author*) {}
void read(const Statement& s, const int*, Author& row) {
    row = {AuthorId{s.integer(0)}, s.text(1)};
}

void resolve(const Statement& s, int* at, const Book*) {
    find(s, at, {u"YazarID", u"KitapSiraID"});
}
void read(const Statement& s, const int* at, Book& row) {
    row = {BookId{s.integer(0)}, s.text(1), AuthorId{s.integer(at[0])}, s.real(at[1])};
}

void resolve(const Statement& s, int* at, const Heading*) {
    find(s, at, {u"KitapID", u"Konu_Sira"});
}
void read(const Statement& s, const int* at, Heading& row) {
    row = {TopicId{s.integer(0)}, BookId{s.integer(at[0])}, s.text(2), s.real(at[1]), !s.isNull(0)};
}

void resolve(const Statement&, int*, const TopicText*) {}
void read(const Statement& s, const int*, TopicText& row) {
    row = {TopicId{s.integer(1)}, s.text(2), s.real(3)};
}

void resolve(const Statement& s, int* at, const BookHeading*) {
    find(s, at, {u"KonuBaslik", u"KitapID", u"KitapAdi", u"YazarID"});
}
void read(const Statement& s, const int* at, BookHeading& row) {
    row = {s.text(at[0]), BookId{s.integer(at[1])}, s.text(at[2]), AuthorId{s.integer(at[3])}};
}

void resolve(const Statement& s, int* at, const Variant*) {
    find(s, at, {u"KelimeKontYazili", u"KelimeKontAra"});
}
void read(const Statement& s, const int* at, Variant& row) {
    row = {s.text(at[0]), s.text(at[1])};
}

}  // namespace

template <class Row>
Rows<Row>::Rows(platform::Statement statement) : statement_(std::move(statement)) {
    resolve(statement_, named_, static_cast<const Row*>(nullptr));
}

template <class Row>
platform::Result<bool> Rows<Row>::next(Row& row) {
    const platform::Result<platform::Step> step = statement_.step();
    if (!step) return step.error();
    if (*step == platform::Step::Done) return false;
    read(statement_, named_, row);
    return true;
}

template class Rows<Author>;
template class Rows<Book>;
template class Rows<Heading>;
template class Rows<TopicText>;
template class Rows<BookHeading>;
template class Rows<Variant>;

}  // namespace lirovan::data
