#include "tools/book_reader/plan.h"

#include <algorithm>

namespace lirovan::book_reader {

Plan::Plan(const Package& package, std::vector<DocumentScan> scans, std::vector<Link> links,
           const QStringList& covers)
    : outline(makeOutline(package, scans, covers)), scans_(std::move(scans)), links_(std::move(links)) {
    for (int i = 0; i < package.documents.size(); ++i) numbers_.insert(package.documents[i], i);
    notesOf_.resize(scans_.size());
    refersToItself_.resize(scans_.size());
    findNotes();
    namePlaces();
}

Plan::Found Plan::find(const Link& link) const {
    Found found;
    found.document = numbers_.value(link.target, -1);
    if (found.document < 0 || link.fragment.isEmpty()) return found;
    const auto& places = scans_[static_cast<size_t>(found.document)].places;
    for (const QString& id : {link.fragment, decodedFragment(link.fragment)})
        if (const auto at = places.constFind(id); at != places.cend()) {
            found.id = id;
            found.place = &*at;
            break;
        }
    return found;
}

size_t Plan::firstLink(int document, quint32 token) const {
    const auto at = std::lower_bound(links_.begin(), links_.end(), Position{document, token},
                                     [](const Link& link, const Position& p) {
                                         return Position{link.document, link.token} < p;
                                     });
    return static_cast<size_t>(at - links_.begin());
}

const Link* Plan::linkAt(int document, quint32 token) const {
    const size_t at = firstLink(document, token);
    return at < links_.size() && links_[at].document == document && links_[at].token == token ? &links_[at]
                                                                                              : nullptr;
}

bool Plan::linksBack(const Link& link, const Found& found) const {
    for (size_t i = firstLink(found.document, found.place->bodyFirst); i < links_.size(); ++i) {
        const Link& back = links_[i];
        if (back.document != found.document || back.token > found.place->bodyLast) return false;
        if (numbers_.value(back.target, -1) != link.document || back.fragment.isEmpty()) continue;
        for (const QString& id : {back.fragment, decodedFragment(back.fragment)})
            if (std::find(link.ownIds.begin(), link.ownIds.end(), id) != link.ownIds.end()) return true;
    }
    return false;
}

bool Plan::isNote(const Link& link, const Found& found) const {
    if (!found.place || found.place->bodyLast == 0) return false;
    const Place& place = *found.place;
    const Position own{link.document, link.token};
    if (own > Position{found.document, place.bodyFirst} && own < Position{found.document, place.bodyLast})
        return false;
    return link.typedReference || place.typedNote || (link.isMarker && linksBack(link, found));
}

// Notes that the contents list names as a part of their own stay there.
bool Plan::staysInPlace(const Link& link, const Found& found, int owner) const {
    if (owner < 0) return false;
    const Position begin = outline.entries[static_cast<size_t>(owner)].position;
    if (begin.document != found.document) return false;
    if (found.place->notesPart != 0 && begin.token >= found.place->notesPart) return true;
    return begin.token == 0 && link.document != found.document &&
           !refersToItself_[static_cast<size_t>(found.document)];
}

void Plan::addNote(const Link& link, const Found& found) {
    const Position first{found.document, found.place->bodyFirst}, last{found.document, found.place->bodyLast};
    const auto cut = std::lower_bound(outline.cuts.begin(), outline.cuts.end(), first,
                                      [](const auto& a, const Position& p) { return a.first < p; });
    if (cut != outline.cuts.end() && cut->first <= last) return;
    auto& others = notesOf_[static_cast<size_t>(found.document)];
    const auto behind = std::upper_bound(
        others.begin(), others.end(), first.token,
        [this](quint32 token, int note) { return token < notes[static_cast<size_t>(note)].first; });
    if (behind != others.begin() && notes[static_cast<size_t>(*std::prev(behind))].last >= first.token)
        return;
    if (behind != others.end() && notes[static_cast<size_t>(*behind)].first <= last.token) return;
    const int owner = outline.owner(first);
    Note note;
    note.entry = outline.owner({link.document, link.token});
    if (note.entry < 0 || (note.entry != owner && staysInPlace(link, found, owner))) return;
    note.document = found.document;
    note.first = first.token;
    note.last = last.token;
    note.marker = link.marker;
    if (!linksBack(link, found)) {
        note.backPlace = "d" + QByteArray::number(link.document) + "-" + QByteArray::number(link.token);
        references_.insert({link.document, link.token}, note.backPlace);
    }
    others.insert(behind, static_cast<int>(notes.size()));
    notesAt_.insert({note.document, note.first}, static_cast<int>(notes.size()));
    notes.push_back(note);
}

void Plan::findNotes() {
    for (const Link& link : links_) {
        const Found found = find(link);
        // Looked for only where the body comes later: a note's link back is no reference to a note.
        if (found.document == link.document && found.place && found.place->bodyFirst > link.token &&
            isNote(link, found))
            refersToItself_[static_cast<size_t>(link.document)] = true;
    }
    for (const Link& link : links_) {
        const auto& around = notesOf_[static_cast<size_t>(link.document)];
        const auto behind = std::upper_bound(
            around.begin(), around.end(), link.token,
            [this](quint32 token, int note) { return token < notes[static_cast<size_t>(note)].first; });
        const bool inNote =
            behind != around.begin() && notes[static_cast<size_t>(*std::prev(behind))].last >= link.token;
        if (inNote && !link.typedReference) continue;
        const Found found = find(link);
        if (isNote(link, found)) addNote(link, found);
    }
}

void Plan::namePlaces() {
    for (const Link& link : links_) {
        const Found found = find(link);
        if (!found.place) continue;
        QByteArray& name = places_[{found.document, found.id}];
        if (name.isEmpty())
            name = "y" + QByteArray::number(found.document) + "-" + QByteArray::number(places_.size());
    }
}

LinkTarget Plan::target(const Link& link) const {
    const Found found = find(link);
    if (found.document < 0) return {};
    if (!found.place) return {outline.owner({found.document, 0}), {}};
    const auto& around = notesOf_[static_cast<size_t>(found.document)];
    const auto behind = std::upper_bound(
        around.begin(), around.end(), found.place->token,
        [this](quint32 token, int note) { return token < notes[static_cast<size_t>(note)].first; });
    LinkTarget target{outline.owner({found.document, found.place->token}),
                      places_.value({found.document, found.id})};
    if (behind != around.begin())
        if (const Note& note = notes[static_cast<size_t>(*std::prev(behind))];
            note.last >= found.place->token)
            target.entry = note.entry;
    return target;
}

int Plan::noteAt(int document, quint32 token) const {
    return notesAt_.value({document, token}, -1);
}
QByteArray Plan::placeOf(int document, const QString& id) const {
    return places_.value({document, id});
}
QByteArray Plan::referencePlace(int document, quint32 token) const {
    return references_.value({document, token});
}

}  // namespace lirovan::book_reader
