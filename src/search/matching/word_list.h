// The entries of a run: the words that were typed, and what else is searched for their sake.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "search/runs/search_run.h"

namespace lirovan::search {

/// The forms of a word in the texts (with circumflexes), for a word as the reader writes it.
using VariantSource = std::function<QStringList(const QString& word)>;

/// A run with the words of the request's query, `cleaned`, and, unless case matters, their I variants. No
/// words: no entries.
SearchRun startRun(SearchRequest request, const QString& cleaned);

/// Whether an entry is a single letter; the run then has to look for whole words.
bool hasSingleLetter(const SearchRun& run);

/// Completes the list: sound forms where they are asked for, then the variants of every entry. With all words
/// asked for, variants stand in for their word; otherwise they are entries like the others, longest first
/// unless whole words are asked for.
void completeRun(SearchRun& run, const VariantSource& variants);

/// An entry that is looked for, counted and marked.
struct CountedWord {
    qsizetype entry;  ///< its place in the list
    qsizetype word;   ///< of the entry that it counts for and whose colour it has: for most, itself
};

/// The entries of `list` that have hits of their own: neither a repetition of an earlier one nor a sound form
/// that finds what its word finds anyway. `list`: the words of `run`, in whatever order, with or without its
/// variants.
std::vector<CountedWord> countedWords(const QStringList& list, const SearchRun& run);

/// The words of the run with the hits counted for each, forms with their word; in the order of the list.
struct WordCount {
    QString word;
    qint64 hits = 0;
};
std::vector<WordCount> wordCounts(const SearchRun& run);

}  // namespace lirovan::search
