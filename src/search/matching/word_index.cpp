#include "search/matching/word_index.h"

#include <QStringList>
#include <QVarLengthArray>
#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>

#include "search/matching/stored_markup.h"
#include "text/alphabet.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

// Longer ones are no words; a single letter is not worth offering.
constexpr qsizetype LongestWord = 40, ShortestWord = 2;
// Spellings that are named with a word.
constexpr size_t MostForms = 3;

struct ViewHash {
    using is_transparent = void;
    size_t operator()(std::u16string_view text) const noexcept {
        return std::hash<std::u16string_view>()(text);
    }
};
using Counts = std::unordered_map<std::u16string, qint64, ViewHash, std::equal_to<>>;

bool isApostrophe(char16_t unit) {
    return unit == u'\'' || unit == u'’' || unit == u'`';
}

bool isLetter(char16_t unit) {
    return unit < 0x80 ? (unit | 0x20) >= u'a' && (unit | 0x20) <= u'z' : QChar(unit).isLetter();
}

// Tags that only change the type leave a word whole.
QString withoutMarkup(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const size_t next = std::min(text.find_first_of("<&", at), text.size());
        plain += text.substr(at, next - at);
        at = next;
        if (at == text.size()) break;
        const bool isTag = text[at] == '<';
        const auto end = isTag ? tagEnd(text, at) : entityEnd(text, at);
        if (!end || !isTag || separatesWords(text.substr(at, *end - at))) plain += ' ';
        at = end.value_or(at + 1);
    }
    return QString::fromUtf8(plain.data(), static_cast<qsizetype>(plain.size()));
}

void count(Counts& counts, std::string_view text) {
    eachWord(text, [&](QStringView word) {
        const std::u16string_view view(word.utf16(), static_cast<size_t>(word.size()));
        const auto known = counts.find(view);
        if (known != counts.end())
            ++known->second;
        else
            counts.emplace(view, 1);
    });
}

struct Forms {
    qint64 count = 0;
    std::vector<std::pair<QString, qint64>> forms;
};

std::vector<IndexedWord> grouped(const Counts& counts) {
    std::map<QString, Forms> byKey;
    for (const auto& [word, times] : counts) {
        const QString form = QString::fromUtf16(word.data(), static_cast<qsizetype>(word.size()));
        Forms& forms = byKey[WordIndex::keyOf(form)];
        forms.count += times;
        forms.forms.emplace_back(form, times);
    }
    std::vector<IndexedWord> words;
    words.reserve(byKey.size());
    for (auto& [key, forms] : byKey) {
        std::sort(forms.forms.begin(), forms.forms.end(), [](const auto& a, const auto& b) {
            return a.second != b.second ? a.second > b.second : a.first < b.first;
        });
        QStringList shown;
        for (size_t i = 0; i < std::min(forms.forms.size(), MostForms); ++i) shown += forms.forms[i].first;
        words.push_back({key, shown.join(u", "_s), forms.count});
    }
    return words;
}

}  // namespace

void eachWord(std::string_view text, const std::function<void(QStringView)>& onWord) {
    const QString plain = withoutMarkup(text);
    QVarLengthArray<char16_t, LongestWord + 1> word;
    bool tooLong = false;
    const auto end = [&] {
        while (!word.isEmpty() && isApostrophe(word.back())) word.removeLast();
        if (!tooLong && word.size() >= ShortestWord) onWord(QStringView(word.data(), word.size()));
        word.clear();
        tooLong = false;
    };
    for (const QChar each : plain) {
        const char16_t unit = each.unicode();
        if (!isLetter(unit) && (!isApostrophe(unit) || word.isEmpty())) {
            end();
        } else if (word.size() < LongestWord) {
            word.append(text::fold(unit));
        } else {
            tooLong = true;
        }
    }
    end();
}

QString WordIndex::keyOf(QStringView word) {
    QString key = text::SapkasizYaz(text::folded(word));
    key.removeIf([](QChar unit) { return isApostrophe(unit.unicode()); });
    return key;
}

Result<std::optional<WordIndex>> WordIndex::build(const data::Library& library,
                                                  const std::function<bool()>& goOn) {
    const auto reading = platform::Transaction::beginReading(library.database());
    Result<Statement> texts = library.query(data::catalogue::topicTextsFromRow());
    if (!texts) return texts.error();
    if (const auto bound = texts->bind(1, qint64(0)); !bound) return bound.error();
    Counts counts;
    while (true) {
        if (!goOn()) return std::optional<WordIndex>();
        const Result<Step> step = texts->step();
        if (!step) return step.error();
        if (*step == Step::Done) break;
        count(counts, texts->utf8(0));
    }
    WordIndex index;
    index.words_ = grouped(counts);
    return std::optional(std::move(index));
}

std::vector<IndexedWord> WordIndex::beginningWith(QStringView typed, size_t most) const {
    const QString key = keyOf(typed);
    if (key.isEmpty()) return {};
    const auto first =
        std::lower_bound(words_.begin(), words_.end(), key,
                         [](const IndexedWord& word, const QString& at) { return word.key < at; });
    std::vector<const IndexedWord*> found;
    for (auto word = first; word != words_.end() && word->key.startsWith(key); ++word)
        found.push_back(&*word);
    const auto end = found.begin() + static_cast<qsizetype>(std::min(most, found.size()));
    std::partial_sort(found.begin(), end, found.end(), [](const IndexedWord* a, const IndexedWord* b) {
        return a->count != b->count ? a->count > b->count : text::order(a->key, b->key) < 0;
    });
    std::vector<IndexedWord> result;
    for (auto word = found.begin(); word != end; ++word) result.push_back(**word);
    return result;
}

}  // namespace lirovan::search
