// Finding what a reader types in a text that is read, as a search finds words: Turkish folding, and the forms
// with circumflexes for letters typed without ("kuran" finds "Kur'ân"; "hakîkat" does not find "hakikat").
#pragma once

#include <QString>
#include <QStringView>
#include <bitset>
#include <vector>

namespace lirovan::text {

/// Zero-based units of the text; `end` is behind the hit.
struct TextRange {
    qsizetype begin = 0;
    qsizetype end = 0;

    friend bool operator==(const TextRange&, const TextRange&) = default;
};

class TextFinder {
  public:
    /// Blanks at the ends do not count, blanks inside stand for any blanks of the text.
    explicit TextFinder(QStringView query);

    /// Nothing but blanks was typed: it is found nowhere.
    bool isEmpty() const { return query_.isEmpty(); }
    /// The hits from left to right; none begins inside the one before. Linear but for repeated beginnings.
    std::vector<TextRange> all(QStringView text) const;

  private:
    /// Behind the hit at `at`, or -1.
    qsizetype endOfHit(QStringView text, qsizetype at) const;

    QString query_;                ///< folded, runs of blanks one
    std::bitset<0x10000> begins_;  ///< units that a hit can begin with
};

}  // namespace lirovan::text
