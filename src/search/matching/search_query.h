// From what the user typed to the list of words that a run searches.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include "text/comparison.h"

namespace lirovan::search {

/// The query without punctuation, quotation marks as "&quot;" (so they stand in the texts), runs of blanks
/// shortened. «ilim, irfan!» gives «ilim irfan».
QString cleanQuery(QStringView query);

/// The words of a cleaned query, or the whole of it as one phrase; nothing but blanks gives an empty list.
QStringList queryWords(const QString& cleaned, bool together);

/// The dotted/dotless I variant of every word, to be appended to `words`; words without an I have none.
QStringList IVariants(const QStringList& words);

/// Orders by length, longest first. Words of one length come out in the order of an exchange sort that swaps
/// equal neighbours too.
void orderLongestFirst(QStringList& words);

/// AyniKelimeVar — whether `word` equals one of the first `n` entries of `list`, blanks at the ends aside, as
/// the run compares. An entry that does would mark and count the same hits again.
bool AyniKelimeVar(QStringView word, const QStringList& list, qsizetype n, text::Comparison comparison);

/// A word as the variant table writes words: without quote marks.
QString withoutQuoteMarks(QStringView word);

/// `typed` without the words that come to a single letter.
QString withoutSingleLetters(const QString& typed);

/// "#,##0" in Turkish: 1234567 gives «1.234.567».
QString formatCount(qint64 count);

}  // namespace lirovan::search
