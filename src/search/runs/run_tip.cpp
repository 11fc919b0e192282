#include "search/runs/run_tip.h"

#include <QStringList>

#include "search/matching/search_query.h"
#include "search/matching/word_list.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

// A query can have hundreds of words, a tip cannot.
constexpr int MostWords = 20;

QString nameOfOrder(ListOrder order) {
    switch (order) {
        case ListOrder::Konu:
            return u"konu başlığına göre"_s;
        case ListOrder::Oran:
            return u"orana göre"_s;
        default:
            return u"kitap adına göre"_s;
    }
}

}  // namespace

QString asTyped(const QString& entry, const SearchRun& run, const QString& typed) {
    for (const QString& each : run.AramaKelimeleri)
        if (AyniKelimeVar(entry, {each}, 1, run.KarsilastirmaKipi) && typed.contains(each)) return each;
    return entry;
}

QString namesOfOptions(const SearchOptions& options) {
    QStringList names;
    if (options.caseSensitive) names += u"büyük / küçük harf duyarlı"_s;
    if (options.wholeWord) names += u"yalnız tüm kelime"_s;
    if (options.allWords) names += u"tüm kelimeleri içeren konular"_s;
    if (options.together) names += u"tümü birlikte"_s;
    if (options.soundChanges) names += u"ses değişimleri"_s;
    return names.join(u", "_s);
}

QString runTip(const SearchRun& run, const QString& title) {
    QStringList lines{title};
    const std::vector<WordCount> counts = wordCounts(run);
    for (const WordCount& each : counts) {
        if (lines.size() > MostWords) {
            lines += u"…"_s;
            break;
        }
        lines += asTyped(each.word, run, title) + u": "_s + formatCount(each.hits);
    }
    lines +=
        u"Kitaplar: "_s + (run.request.scope.authorId == 0 ? u"hepsi"_s : run.request.scope.text.trimmed());
    lines += u"Sıra: "_s + nameOfOrder(run.request.order);
    const QString options = namesOfOptions(run.request.options);
    lines += u"Seçenekler: "_s + (options.isEmpty() ? u"yok"_s : options);
    return lines.join(u'\n');
}

}  // namespace lirovan::search
