#include "text/alphabet.h"

#include <bitset>

#include "text/comparison.h"

namespace lirovan::text {
namespace {

using UnitSet = std::bitset<65536>;

const UnitSet& wordLetters() {
    static const UnitSet letters = [] {
        UnitSet folded;
        for (const QChar letter : KelimeHarfleri) folded.set(fold(letter.unicode()));
        UnitSet all;
        for (size_t unit = 0; unit < all.size(); ++unit)
            all[unit] = folded[fold(static_cast<char16_t>(unit))];
        return all;
    }();
    return letters;
}

}  // namespace

bool isWordLetter(char16_t unit) noexcept {
    return wordLetters()[unit];
}

bool KontTumKelime(char16_t before, std::optional<char16_t> behind) noexcept {
    return !isWordLetter(before) && behind && !isWordLetter(*behind);
}

QString SapkasizYaz(QStringView word) {
    // No plain form is itself a circumflex letter, so one pass gives what ten passes would.
    QString result = word.toString();
    for (QChar& unit : result)
        for (const CircumflexPair& pair : CircumflexPairs)
            if (unit == pair.circumflex) {
                unit = pair.plain;
                break;
            }
    return result;
}

std::optional<QString> IVaryanti(QStringView word) {
    struct Row {
        char16_t letter;
        char16_t replacement;
    };
    constexpr Row rows[] = {{u'İ', u'i'}, {u'I', u'ı'}, {u'ı', u'I'}, {u'i', u'İ'}};
    for (const Row& row : rows)
        if (word.contains(row.letter)) return word.toString().replace(row.letter, row.replacement);
    return std::nullopt;
}

}  // namespace lirovan::text
