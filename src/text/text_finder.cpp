#include "text/text_finder.h"

#include "text/alphabet.h"
#include "text/comparison.h"

namespace lirovan::text {

namespace {

constexpr QStringView Apostrophes = u"'`´‘’";

bool isApostrophe(char16_t unit) {
    return Apostrophes.contains(QChar(unit));
}

/// The letter without its circumflex, folded; others as they are.
char16_t plain(char16_t foldedUnit) {
    for (const CircumflexPair& pair : CircumflexPairs)
        if (pair.circumflex == foldedUnit) return pair.plain;
    return foldedUnit;
}

bool isBlank(char16_t unit) {
    return QChar(unit).isSpace();
}

}  // namespace

TextFinder::TextFinder(QStringView query) : query_(folded(query.toString().simplified())) {
    for (QChar& c : query_)
        if (isApostrophe(c.unicode())) c = u'\'';
    if (query_.isEmpty()) return;
    const char16_t first = query_.front().unicode();
    for (uint unit = 0; unit < begins_.size(); ++unit) {
        const char16_t letter = fold(static_cast<char16_t>(unit));
        begins_[unit] = letter == first || plain(letter) == first || (first == u'\'' && isApostrophe(letter));
    }
}

qsizetype TextFinder::endOfHit(QStringView text, qsizetype at) const {
    bool passedApostrophe = false, hasCircumflex = false;
    qsizetype here = at;
    for (const QChar wanted : query_) {
        if (wanted == u' ') {
            const qsizetype blanks = here;
            while (here < text.size() && isBlank(text[here].unicode())) ++here;
            if (here == blanks) return -1;
            continue;
        }
        // Words with circumflexes are found without their apostrophes too.
        while (wanted != u'\'' && here > at && here < text.size() && isApostrophe(text[here].unicode())) {
            passedApostrophe = true;
            ++here;
        }
        if (here == text.size()) return -1;
        char16_t letter = fold(text[here].unicode());
        if (isApostrophe(letter)) letter = u'\'';
        if (letter != wanted && plain(letter) != wanted) return -1;
        hasCircumflex |= plain(letter) != letter;
        ++here;
    }
    return passedApostrophe && !hasCircumflex ? -1 : here;
}

std::vector<TextRange> TextFinder::all(QStringView text) const {
    std::vector<TextRange> hits;
    if (isEmpty()) return hits;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!begins_[text[at].unicode()]) continue;
        const qsizetype end = endOfHit(text, at);
        if (end < 0) continue;
        hits.push_back({at, end});
        at = end - 1;
    }
    return hits;
}

}  // namespace lirovan::text
