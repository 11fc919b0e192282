// The words of the library with their counts, for what is offered while a query is typed.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "data/library.h"
#include "platform/core/result.h"

namespace lirovan::search {

/// A word in all its spellings: with and without circumflexes, whatever the case.
struct IndexedWord {
    QString key;    ///< folded, without circumflexes and apostrophes
    QString shown;  ///< the most frequent spelling first: "kâr, kar"
    qint64 count = 0;
};

class WordIndex {
  public:
    /// Reads every topic, from any thread that has the connection to itself. Nothing where `goOn`, asked
    /// between topics, ended it.
    static platform::Result<std::optional<WordIndex>> build(const data::Library& library,
                                                            const std::function<bool()>& goOn);

    /// The most frequent words that begin with what was typed, most frequent first, equal ones in Turkish
    /// order.
    std::vector<IndexedWord> beginningWith(QStringView typed, size_t most) const;
    size_t size() const { return words_.size(); }

    /// The form in which words are looked up.
    static QString keyOf(QStringView word);

  private:
    std::vector<IndexedWord> words_;  // by key, unit by unit
};

/// The words of a stored text as it has them, folded: entities, and tags that break a line, end a word,
/// apostrophes between letters do not. For the index and its twin in the tests.
void eachWord(std::string_view storedText, const std::function<void(QStringView)>& onWord);

}  // namespace lirovan::search
