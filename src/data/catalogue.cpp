#include "data/catalogue.h"

#include "data/special_books.h"

namespace lirovan::data::catalogue {

using namespace Qt::StringLiterals;

namespace {

template <class Tag>
QString number(Id<Tag> id) {
    return QString::number(id.value);
}

// A text between single quotes. The engine takes the statement as a C string, so nothing may follow a NUL.
QString quoted(QStringView text) {
    QString safe = text.toString();
    safe.remove(QChar(u'\0'));
    safe.replace(u'\'', u"''"_s);
    return u'\'' + safe + u'\'';
}

// What the statements over the topics of a search begin with, and how they end.
const QString TopicRows =
    u"SELECT tbl_Konu.rowid, tbl_Konu.KonuID, tbl_KonuBaslik.KitapID, tbl_KonuBaslik.rowid FROM "_s;
const QString HeadingsBooksTopics =
    u"(tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = tbl_Kitaplar.KitapID) "
    "INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID WHERE "_s;
const QString ByBook = u" ORDER BY tbl_Kitaplar.KitapSiraID, tbl_KonuBaslik.Konu_Sira"_s;
const QString ByHeading = u" ORDER BY tbl_KonuBaslik.KonuBaslik"_s;

QString exceptHidden(const QString& column) {
    return u" and "_s + column + u"<>"_s + number(HiddenBook);
}

}  // namespace

QString authors() {
    return u"select * from tbl_Yazar order by YazarID"_s;
}

QString author(AuthorId author) {
    return u"select * from tbl_Yazar where YazarID="_s + number(author);
}

QString authorInOrder(AuthorId author) {
    return u"select * from tbl_Yazar Where YazarID= "_s + number(author) + u" order by YazarID"_s;
}

QString selectorBooks(AuthorId author) {
    return u"select * from tbl_Kitaplar where YazarID="_s + number(author) + exceptHidden(u"KitapID"_s) +
           u" order by KitapAdi"_s;
}

QString treeBooks(AuthorId author) {
    return u"select * from tbl_Kitaplar Where YazarID="_s + number(author) + u" order by KitapSiraID"_s;
}

QString bookByTitle(QStringView title) {
    return u"select * from tbl_Kitaplar where KitapAdi="_s + quoted(title);
}

QString bookById(BookId book) {
    return u"select KitapID, KitapAdi from tbl_Kitaplar where KitapID="_s + number(book);
}

QString headings(BookId book) {
    return u"select * from tbl_KonuBaslik where KitapID="_s + number(book) + u" ORDER BY Konu_sira"_s;
}

QString heading(BookId book, TopicId topic) {
    return u"select * from tbl_KonuBaslik where KitapID="_s + number(book) + u" and KonuID="_s +
           number(topic);
}

QString headingById(TopicId topic) {
    return u"select * from tbl_KonuBaslik where KonuID="_s + number(topic);
}

QString headingWithBook(TopicId topic, std::optional<qint64> headingRow) {
    return u"SELECT tbl_Kitaplar.KitapID, tbl_Kitaplar.KitapAdi, tbl_KonuBaslik.KonuBaslik "
           u",tbl_Kitaplar.YazarID FROM "
           "tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = tbl_Kitaplar.KitapID where KonuID="_s +
           number(topic) +
           (headingRow ? u" and tbl_KonuBaslik.rowid="_s + QString::number(*headingRow) : QString());
}

QString scripts() {
    return u"select * from tbl_scripts"_s;
}

QString topic(TopicId topic) {
    return u"select * from tbl_Konu where KonuID="_s + number(topic);
}

QString topicWithHeading(TopicId topic) {
    return u"select * from (tbl_KonuBaslik INNER JOIN tbl_Kitaplar ON tbl_KonuBaslik.KitapID = "
           u"tbl_Kitaplar.KitapID) "
           "INNER JOIN tbl_Konu ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID where tbl_Konu.KonuID="_s +
           number(topic) + u" ORDER BY tbl_KonuBaslik.KonuBaslik"_s;
}

QString topics() {
    return u"select * from tbl_Konu "_s;
}

QString topicsOfAuthor(AuthorId author, TopicOrder order) {
    return TopicRows + HeadingsBooksTopics + u"tbl_Kitaplar.YazarID="_s + number(author) +
           exceptHidden(u"tbl_KonuBaslik.KitapID"_s) + (order == TopicOrder::Book ? ByBook : ByHeading);
}

QString topicsOfBook(BookId book, TopicOrder order) {
    if (order == TopicOrder::Heading)
        return TopicRows + HeadingsBooksTopics + u"tbl_KonuBaslik.KitapID="_s + number(book) +
               exceptHidden(u"tbl_KonuBaslik.KitapID"_s) + ByHeading;
    // Under every heading of the book's topics, in whichever book that stands.
    return TopicRows +
           u"tbl_Konu INNER JOIN tbl_KonuBaslik ON tbl_KonuBaslik.KonuID = tbl_Konu.KonuID WHERE "
           "tbl_Konu.KonuID IN (select KonuID from tbl_KonuBaslik where KitapID="_s +
           number(book) + u')' + exceptHidden(u"tbl_KonuBaslik.KitapID"_s) +
           u" ORDER BY tbl_KonuBaslik.Konu_Sira"_s;
}

QString topicTextsFromRow() {
    return u"SELECT Konu, rowid FROM tbl_Konu WHERE rowid>=? ORDER BY rowid"_s;
}

QString topicText() {
    return u"SELECT Konu FROM tbl_Konu WHERE KonuID=?"_s;
}

QString topicRowSpan() {
    return u"SELECT min(rowid), max(rowid) FROM tbl_Konu"_s;
}

QString lastTopicRow() {
    return u"SELECT max(rowid) FROM tbl_Konu"_s;
}

QString fileVersion() {
    return u"PRAGMA data_version"_s;
}

QString ownChanges() {
    return u"SELECT total_changes()"_s;
}

QString headingByRow() {
    return u"SELECT KonuBaslik FROM tbl_KonuBaslik WHERE rowid=?"_s;
}

QString variants(QStringView word) {
    return u"SELECT KelimeKontYazili, KelimeKontAra FROM tbl_KelimeKont WHERE KelimeKontYazili="_s +
           quoted(word) + u" ORDER BY LEN(KelimeKontAra) DESC"_s;
}

QString insertVariant(QStringView written, QStringView searchForm) {
    return u"INSERT INTO tbl_KelimeKont (KelimeKontYazili, KelimeKontAra ) Values ("_s + quoted(written) +
           u',' + quoted(searchForm) + u')';
}

QString deleteVariants() {
    return u"Delete FROM tbl_KelimeKont"_s;
}

QString copyInto() {
    return u"VACUUM INTO ?"_s;
}

}  // namespace lirovan::data::catalogue
