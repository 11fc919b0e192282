// The statements that the windows put to the library, as texts. Only the writing and checking of libraries
// and of added books has others.
//
// The texts are fixed to the character, doubled blanks included, so that a log or a test can name them.
// Values go in as plain decimal numbers or as text; a text is made safe where it goes in (apostrophes
// doubled), so `bookByTitle(u"Ali'nin Kitabı")` is a valid statement that finds that title.
//
// The comment above each function says which columns are read, by position or by name (see library.h for
// rows).
#pragma once

#include <QString>
#include <QStringView>

#include "data/ids.h"

namespace lirovan::data::catalogue {

/// Column position in tbl_Konu, for scans that read the stored text without converting it.
inline constexpr int TopicTextColumn = 2;
/// Column position of the fragment in tbl_scripts.
inline constexpr int ScriptColumn = 1;

/// How the topics of a search scope are ordered.
enum class TopicOrder {
    Book,    ///< by the books' reading order, then by the headings' order
    Heading  ///< by heading text
};

QString authors();                            ///< 0 YazarID, 1 Yazar; ascending YazarID
QString author(AuthorId author);              ///< Yazar
QString authorInOrder(AuthorId author);       ///< 0 YazarID, 1 Yazar; one author in the shape of authors()
QString selectorBooks(AuthorId author);       ///< 0 KitapID, 1 KitapAdi; by title, without HiddenBook
QString treeBooks(AuthorId author);           ///< 0 KitapID, 1 KitapAdi; in reading order
QString bookByTitle(QStringView title);       ///< 0 KitapID, YazarID; compared without regard to case
QString bookById(BookId book);                ///< KitapID, KitapAdi
QString headings(BookId book);                ///< 0 KonuID, 2 KonuBaslik; in the book's order
QString heading(BookId book, TopicId topic);  ///< 0 KonuID, 2 KonuBaslik
QString headingById(TopicId topic);           ///< 0 KonuID, KitapID, 2 KonuBaslik
/// KonuBaslik, KitapID, KitapAdi, YazarID; of all the topic's headings, or of the one in that row.
QString headingWithBook(TopicId topic, std::optional<qint64> headingRow = {});
QString scripts();                        ///< 1 fragment; only the first row counts
QString topic(TopicId topic);             ///< 2 Konu, 3 part number
QString topicWithHeading(TopicId topic);  ///< KonuBaslik, KitapAdi, Konu
QString topics();                         ///< every topic: 1 KonuID, 2 Konu

/// The topics of an author or a book as a search goes through them, without their texts and without
/// HiddenBook: 0 row id in tbl_Konu, 1 KonuID, 2 KitapID, 3 row id in tbl_KonuBaslik. Sorting carries no
/// texts, and a search reads what it needs straight from its row, with the statements below.
QString topicsOfAuthor(AuthorId author, TopicOrder order);
QString topicsOfBook(BookId book, TopicOrder order);
QString topicTextsFromRow();  ///< 0 Konu, 1 row id, by ascending row id; parameter 1: the first one
QString topicText();          ///< 0 Konu; the topic's id goes into parameter 1
QString topicRowSpan();       ///< 0 the first row id of tbl_Konu, 1 the last
QString lastTopicRow();       ///< 0 the last row id of tbl_Konu
QString headingByRow();       ///< 0 KonuBaslik; the row id goes into parameter 1

/// KelimeKontYazili, KelimeKontAra of the rows whose written form equals `word` without regard to case,
/// longest search form first; found by way of an index.
QString variants(QStringView word);
QString insertVariant(QStringView written, QStringView searchForm);
QString deleteVariants();
QString fileVersion();  ///< 0 a number that changes when another connection changes the file
QString ownChanges();   ///< 0 rows changed by this connection
QString copyInto();     ///< writes the whole file anew; its path goes into parameter 1

}  // namespace lirovan::data::catalogue
