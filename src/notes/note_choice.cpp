#include "notes/note_choice.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "text/comparison.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

NoteHits hitsByNote(const std::vector<SearchableNote>& notes, const QString& query,
                    const search::SearchOptions& options) {
    if (query.trimmed().isEmpty()) return std::nullopt;
    QHash<qint64, qint64> hits;
    for (const FoundNote& found : findNotes(notes, query, options))
        hits.insert(found.note->id.value, static_cast<qint64>(found.hits.size()));
    return hits;
}

std::vector<ListedNote> chosenNotes(const std::vector<ListedNote>& all, const NoteHits& hits,
                                    NoteOrder order) {
    std::vector<ListedNote> chosen;
    for (const ListedNote& note : all) {
        if (hits && !hits->contains(note.id.value)) continue;
        chosen.push_back(note);
        if (hits)
            chosen.back().line += u"  ("_s + search::formatCount(hits->value(note.id.value)) + u" isabet)"_s;
    }
    const auto comesFirst = [&](const ListedNote& a, const ListedNote& b) {
        switch (order) {
            case NoteOrder::Date:
                return a.date > b.date;
            case NoteOrder::Title:
                return text::order(a.title.trimmed(), b.title.trimmed()) < 0;
            case NoteOrder::Hits:
                return hits && hits->value(a.id.value) > hits->value(b.id.value);
            default:
                return false;
        }
    };
    std::stable_sort(chosen.begin(), chosen.end(), comesFirst);
    return chosen;
}

std::vector<NoteHit> hitsInText(const QString& text, const QString& query,
                                const search::SearchOptions& options) {
    if (query.trimmed().isEmpty()) return {};
    const std::vector<SearchableNote> note{searchableText({}, text)};
    const std::vector<FoundNote> found = findNotes(note, query, options);
    if (found.empty()) return {};
    std::vector<NoteHit> hits = found.front().hits;
    std::sort(hits.begin(), hits.end(), [](const NoteHit& a, const NoteHit& b) {
        return a.position != b.position ? a.position < b.position : a.length > b.length;
    });
    qint64 end = 0;
    std::erase_if(hits, [&end](const NoteHit& hit) {
        if (hit.position < end) return true;
        end = hit.position + hit.length;
        return false;
    });
    return hits;
}

QString hitState(qint64 current, qint64 all) {
    if (all == 0) return u"bulunamadı"_s;
    if (current < 0) return search::formatCount(all) + u" isabet"_s;
    return search::formatCount(current + 1) + u" / "_s + search::formatCount(all);
}

}  // namespace lirovan::notes
