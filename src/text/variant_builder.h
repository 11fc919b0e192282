// Words with circumflex letters, found in a topic's text, as rows of the word-variant table.
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace lirovan::text {

struct WordVariant {
    QString written;   ///< KelimeKontYazili: as a user types it, without circumflexes and quote marks
    QString textForm;  ///< KelimeKontAra: as the text has it, apostrophes stored as grave accents

    friend bool operator==(const WordVariant&, const WordVariant&) = default;
};

/// Longest word that the table's text columns take; a longer run of letters is no word.
inline constexpr qsizetype MaxVariantLength = 255;

/// The variants in `topicText`, once for every circumflex letter of a word: letter by letter in the order of
/// CircumflexPairs, for each letter in the order of the text. Repetitions stay in; the table's builder drops
/// them. «<p>hakîkat ve îman</p>» gives {hakikat, hakîkat} and {iman, îman}; «Kur'ân'ı» gives {Kuranı,
/// Kur`ân`ı}.
std::vector<WordVariant> extractVariants(QStringView topicText);

}  // namespace lirovan::text
