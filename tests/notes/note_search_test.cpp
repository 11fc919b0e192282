// Which notes a query finds, and where in them.
#include "notes/note_search.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "notes/note_choice.h"

using namespace lirovan::notes;
using lirovan::search::SearchOptions;
using namespace Qt::StringLiterals;

namespace {

// "note: hits" of what is found, hits as position+length.
std::string found(const std::vector<SearchableNote>& notes, const QString& query,
                  SearchOptions options = {}) {
    QString all;
    for (const FoundNote& note : findNotes(notes, query, options)) {
        all += QString::number(note.note->id.value) + u':';
        for (const NoteHit& hit : note.hits) all += u" %1+%2"_s.arg(hit.position).arg(hit.length);
        all += u'\n';
    }
    return all.toStdString();
}

}  // namespace

TEST(NoteSearch, FollowsTheRulesOfTheLibrary) {
    const QTemporaryDir folder;
    const NotesDatabase notes = *NotesDatabase::openFile(folder.filePath(u"notlar.vq"_s));
    for (const QString& rtf : {u"{\\rtf1 ilim ve \\b irfan\\b0\\par ilimsiz}"_s,
                               u"{\\rtf1 hak\\u238?kat a<\\'fdlim>b \"s\\'f6z\"}"_s,
                               u"{\\rtf1 \\u304?L\\u304?M}"_s, u" "_s, u"{\\rtf1 bozuk"_s})
        ASSERT_TRUE(notes.add(u"b"_s, rtf, QDate(2008, 3, 14)));
    const auto all = *searchableNotes(notes);
    ASSERT_EQ(all.size(), 5U);
    const struct {
        QString query;
        SearchOptions options;
        std::string found;
    } cases[] = {
        {u"ilim"_s, {}, "1: 1+4 15+4\n3: 1+4\n"},
        {u"ilim"_s, {.caseSensitive = true}, "1: 1+4 15+4\n"},
        {u"ilim"_s, {.wholeWord = true}, "1: 1+4\n3: 1+4\n"},
        {u"irfan ilimsiz"_s, {.allWords = true}, "1: 9+5 15+7\n"},
        {u"ve irfan"_s, {.together = true}, "1: 6+8\n"},
        {u"hakikat"_s, {}, "2: 1+7\n"},
        {u"ılim"_s, {}, "2: 11+4\n"},  // between "<" and ">", which are no markup here
        {u"a<ılim>"_s, {}, "2: 9+7\n"},
        {u"\"söz\""_s, {}, "2: 18+5\n"},
        {u"s"_s, {}, ""},  // a single letter is a whole word
        {u""_s, {}, ""},
        {u" .!? "_s, {}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(found(all, c.query, c.options), c.found) << c.query.toStdString();
    EXPECT_FALSE(searchableNotes(NotesDatabase()));

    // Piece by piece all of them come, each once, whatever their keys.
    ASSERT_TRUE(notes.database().execute(u"update tbl_Notlar set NotID=-7 where NotID=3"));
    NotesDatabase::Row row = NotesDatabase::BeforeFirst;
    QString keys;
    for (int piece = 0; piece < 9; ++piece) {
        const auto next = notes.nextNotes(row, 20);
        ASSERT_TRUE(next);
        for (const Note& note : *next) keys += u"%1/%2 "_s.arg(piece).arg(note.id.value);
    }
    EXPECT_EQ(keys, u"0/-7 1/1 2/2 3/4 3/5 ");
}

TEST(NoteChoice, FiltersCountsAndSorts) {
    const std::vector<ListedNote> all{{{1}, u"2008-03-14"_s, u"Çay"_s, u"a"_s},
                                      {{2}, u"2009-01-01"_s, u"cam"_s, u"b"_s},
                                      {{3}, u"2007-01-01"_s, u"Dağ"_s, u"c"_s}};
    const auto shown = [&](const NoteHits& hits, NoteOrder order) {
        QStringList lines;
        for (const ListedNote& note : chosenNotes(all, hits, order)) lines += note.line;
        return lines.join(u'|');
    };
    EXPECT_EQ(shown({}, NoteOrder::Kept), u"a|b|c");
    EXPECT_EQ(shown({}, NoteOrder::Date), u"b|a|c");
    EXPECT_EQ(shown({}, NoteOrder::Title), u"b|a|c");
    const NoteHits hits = QHash<qint64, qint64>{{1, 2}, {3, 1500}};
    EXPECT_EQ(shown(hits, NoteOrder::Hits), u"c  (1.500 isabet)|a  (2 isabet)");
    EXPECT_FALSE(hitsByNote({}, u" "_s, {}).has_value());

    std::string places;
    for (const NoteHit& hit : hitsInText(u"<ilim>\nilimsiz ve hakîkat"_s, u"hakikat ilim ilimsiz"_s, {}))
        places += std::to_string(hit.position) + '+' + std::to_string(hit.length) + ' ';
    EXPECT_EQ(places, "2+4 8+7 19+7 ");
}
