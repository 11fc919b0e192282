#include "search/matching/word_list.h"

#include <algorithm>

#include "search/matching/search_query.h"
#include "text/blanks.h"
#include "text/sound_changes.h"

namespace lirovan::search {
namespace {

// Whether what `form` finds is found by a shorter entry of its word too.
bool isCovered(const QString& form, const QString& word, const QStringList& forms,
               text::Comparison comparison) {
    const auto covers = [&](const QString& other) {
        return other.size() < form.size() && text::find(form, other, 0, comparison) >= 0;
    };
    return covers(word) || std::any_of(forms.begin(), forms.end(), covers);
}

// Notes the forms of `word` and gives those that become entries.
QStringList addForms(SearchRun& run, const QString& word) {
    const QStringList forms = text::soundForms(word);
    QStringList entries;
    for (const QString& form : forms) {
        const auto isForm = [&](const QStringList& list) {
            return AyniKelimeVar(form, list, list.size(), run.KarsilastirmaKipi);
        };
        SoundForm::Use use = SoundForm::Use::Counted;
        if (isForm(run.AramaKelimeleri) || isForm(run.TumVaryantlar) || isForm(entries))
            use = SoundForm::Use::Repeats;
        else if (!run.request.options.wholeWord && isCovered(form, word, forms, run.KarsilastirmaKipi))
            use = SoundForm::Use::Covered;
        if (use != SoundForm::Use::Repeats) entries.append(form);
        run.soundForms.push_back({form, word, use});
    }
    return entries;
}

// The form that an entry is, where it is one.
const SoundForm* formOf(const SearchRun& run, const QString& entry) {
    const auto found = std::find_if(run.soundForms.begin(), run.soundForms.end(), [&](const SoundForm& form) {
        return form.use != SoundForm::Use::Repeats && form.form == entry;
    });
    return found == run.soundForms.end() ? nullptr : &*found;
}

qsizetype placeOf(const QString& word, const QStringList& list, text::Comparison comparison) {
    for (qsizetype i = 0; i < list.size(); ++i)
        if (AyniKelimeVar(word, {list.at(i)}, 1, comparison)) return i;
    return -1;
}

}  // namespace

SearchRun startRun(SearchRequest request, const QString& cleaned) {
    SearchRun run;
    const SearchOptions& options = run.request.options;
    run.request = std::move(request);
    run.KarsilastirmaKipi =
        options.caseSensitive ? text::Comparison::Exact : text::Comparison::CaseInsensitive;
    run.AramaKelimeleri = queryWords(cleaned, options.together);
    if (!options.caseSensitive) run.AramaKelimeleri += IVariants(run.AramaKelimeleri);
    return run;
}

bool hasSingleLetter(const SearchRun& run) {
    return std::any_of(run.AramaKelimeleri.begin(), run.AramaKelimeleri.end(),
                       [](const QString& word) { return text::trimBlanks(word).size() == 1; });
}

void completeRun(SearchRun& run, const VariantSource& variants) {
    const SearchOptions& options = run.request.options;
    if (options.soundChanges)
        for (const QString& word : QStringList(run.AramaKelimeleri))
            run.AramaKelimeleri += addForms(run, word);
    for (const QString& word : std::as_const(run.AramaKelimeleri)) {
        QStringList& ofWord = run.KelimeVaryantlari.emplace_back();
        for (const QString& variant : variants(word)) {
            QStringList found{variant};
            run.TumVaryantlar += variant;
            if (options.soundChanges) {
                const QStringList forms = addForms(run, variant);
                run.TumVaryantlar += forms;
                found += forms;
            }
            ofWord += found;
        }
    }
    if (!options.allWords)
        for (auto variant = run.TumVaryantlar.crbegin(); variant != run.TumVaryantlar.crend(); ++variant)
            run.AramaKelimeleri.append(*variant);
    if (!options.wholeWord && !options.allWords) orderLongestFirst(run.AramaKelimeleri);
}

std::vector<CountedWord> countedWords(const QStringList& list, const SearchRun& run) {
    std::vector<CountedWord> counted;
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (AyniKelimeVar(list.at(i), list, i, run.KarsilastirmaKipi)) continue;
        const SoundForm* form = formOf(run, list.at(i));
        if (form && form->use == SoundForm::Use::Covered) continue;
        // Its first mention: what compares equal counts there.
        const qsizetype word = form ? placeOf(form->word, list, run.KarsilastirmaKipi) : i;
        counted.push_back({i, word < 0 ? i : word});
    }
    return counted;
}

std::vector<WordCount> wordCounts(const SearchRun& run) {
    const QStringList list = run.AramaKelimeleri + run.TumVaryantlar;
    std::vector<WordCount> counts;
    for (const CountedWord& counted : countedWords(list, run)) {
        // Variants are entries of their own only where all words are asked for or they joined the list.
        if (counted.word != counted.entry) continue;
        const auto place = static_cast<size_t>(counted.entry);
        counts.push_back(
            {list.at(counted.entry), place < run.tally.counts.size() ? run.tally.counts[place] : 0});
    }
    return counts;
}

}  // namespace lirovan::search
