#include "notes/note_search.h"

#include <QHash>
#include <QSet>
#include <algorithm>
#include <atomic>
#include <thread>

#include "notes/note_text.h"
#include "search/matching/search_query.h"
#include "search/matching/topic_scanner.h"
#include "search/matching/word_list.h"
#include "search/runs/recorded_hits.h"
#include "text/comparison.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

// The search takes "<" and ">" for markup; these stand for them, in notes and queries alike.
constexpr char16_t Less = u'\uE000', Greater = u'\uE001';

QString withoutMarkupSigns(QString text) {
    return text.replace(u'<', QChar(Less)).replace(u'>', QChar(Greater));
}

// Of rich text, in units: so much is held at once, and so little is not worth another thread.
constexpr qsizetype ReadAtOnce = 8'000'000, FewUnits = 200'000;

using Forms = QHash<QString, QStringList>;  // by what is written, folded

// The circumflex forms in the notes, as a library's table has them.
Forms circumflexForms(const std::vector<SearchableNote>& notes) {
    Forms forms;
    QSet<QStringView> seen;
    for (const SearchableNote& note : notes)
        for (const text::WordVariant& variant : note.variants) {
            const qsizetype before = seen.size();
            seen.insert(variant.textForm);
            if (seen.size() == before) continue;
            QStringList& known = forms[text::folded(variant.written)];
            const QString form = QString(variant.textForm).replace(u'`', u'\'');
            if (!search::AyniKelimeVar(form, known, known.size(), text::Comparison::CaseInsensitive))
                known += form;
        }
    return forms;
}

search::SearchRun runOf(const QString& query, const search::SearchOptions& options, const Forms& forms) {
    QString cleaned = search::cleanQuery(query);
    cleaned = withoutMarkupSigns(cleaned.replace(u"&quot;"_s, u"\""_s));
    search::SearchRun run = search::startRun({query, options}, cleaned);
    if (search::hasSingleLetter(run)) run.request.options.wholeWord = true;
    search::completeRun(
        run, [&](const QString& word) { return forms.value(text::folded(search::withoutQuoteMarks(word))); });
    return run;
}

std::vector<NoteHit> hitsOf(search::SearchRun& run, const search::TopicScanner& scanner,
                            std::string_view text) {
    run.IsabetKaydi.clear();
    run.tally = {};
    scanner.BulKelimeSay(text, {{1}, {}}, {run.IsabetKaydi, &run.tally}, [] { return true; });
    search::RecordedHits record(run);
    search::HitTopic topic;
    std::vector<NoteHit> hits;
    // One blank stands before the note's own text.
    if (record.next(topic))
        for (const search::RecordedHit& hit : topic.hits) hits.push_back({hit.position - 1, hit.length});
    return hits;
}

// Puts the notes behind those that are ready.
void append(std::vector<SearchableNote>& ready, const std::vector<Note>& rows) {
    const size_t before = ready.size();
    ready.resize(before + rows.size());
    std::atomic<size_t> next = 0;
    const auto work = [&] {
        for (size_t i = next++; i < rows.size(); i = next++) ready[before + i] = searchable(rows[i]);
    };
    qsizetype units = 0;
    for (const Note& row : rows) units += row.rtf.size();
    const unsigned more = units < FewUnits ? 0 : std::max(1U, std::thread::hardware_concurrency()) - 1;
    std::vector<std::jthread> threads;
    for (unsigned i = 0; i < more; ++i) threads.emplace_back(work);
    work();
}

}  // namespace

SearchableNote searchable(const Note& note) {
    SearchableNote result = searchableText(note.id, textOf(note.rtf, {.formats = false}).plainText());
    result.date = note.date;
    result.title = note.title;
    return result;
}

SearchableNote searchableText(NoteId id, const QString& text) {
    const QString plain = u' ' + withoutMarkupSigns(text) + u' ';
    const QByteArray utf8 = plain.toUtf8();
    return {id, {}, {}, {utf8.constData(), static_cast<size_t>(utf8.size())}, text::extractVariants(plain)};
}

Result<std::vector<SearchableNote>> searchableNotes(const NotesDatabase& notes) {
    std::vector<SearchableNote> all;
    NotesDatabase::Row row = NotesDatabase::BeforeFirst;
    while (true) {
        const Result<std::vector<Note>> rows = notes.nextNotes(row, ReadAtOnce);
        if (!rows) return rows.error();
        if (rows->empty()) return all;
        append(all, *rows);
    }
}

std::vector<FoundNote> findNotes(const std::vector<SearchableNote>& notes, const QString& query,
                                 const search::SearchOptions& options) {
    search::SearchRun run = runOf(query, options, circumflexForms(notes));
    if (run.AramaKelimeleri.isEmpty()) return {};
    const search::TopicScanner scanner(run);
    std::vector<FoundNote> found;
    for (const SearchableNote& note : notes)
        if (scanner.matches(note.text)) found.push_back({&note, hitsOf(run, scanner, note.text)});
    return found;
}

}  // namespace lirovan::notes
