#include "search/matching/search_query.h"

#include <utility>

#include "text/alphabet.h"
#include "text/blanks.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

QString cleanQuery(QStringView query) {
    QString cleaned = query.toString();
    for (const QChar mark : u".!?()&"_s) cleaned.remove(mark);
    cleaned.replace(u'"', u"&quot;"_s);
    for (const QChar mark : u"/-=,%"_s) cleaned.remove(mark);
    return cleaned.replace(u"  "_s, u" "_s).replace(u"   "_s, u" "_s);
}

QStringList queryWords(const QString& cleaned, bool together) {
    if (!together) return cleaned.split(u' ', Qt::SkipEmptyParts);
    return text::trimBlanks(cleaned).isEmpty() ? QStringList() : QStringList(cleaned);
}

QStringList IVariants(const QStringList& words) {
    QStringList variants;
    for (const QString& word : words)
        if (const auto variant = text::IVaryanti(word)) variants.append(*variant);
    return variants;
}

void orderLongestFirst(QStringList& words) {
    for (qsizetype a = 0; a < words.size(); ++a)
        for (qsizetype b = a + 1; b < words.size(); ++b)
            if (words.at(b).size() >= words.at(a).size()) words.swapItemsAt(a, b);
}

bool AyniKelimeVar(QStringView word, const QStringList& list, qsizetype n, text::Comparison comparison) {
    const QStringView wanted = text::trimBlanks(word);
    for (qsizetype i = 0; i < n && i < list.size(); ++i)
        if (text::equal(wanted, text::trimBlanks(list.at(i)), comparison)) return true;
    return false;
}

QString withoutQuoteMarks(QStringView word) {
    return word.toString().remove(u'\'').remove(u'’').remove(u'`');
}

QString withoutSingleLetters(const QString& typed) {
    QStringList kept;
    for (const QString& word : typed.split(u' ', Qt::SkipEmptyParts))
        if (cleanQuery(word).size() != 1) kept.append(word);
    return kept.join(u' ');
}

QString formatCount(qint64 count) {
    QString digits = QString::number(count);
    for (qsizetype at = digits.size() - 3; at > (count < 0 ? 1 : 0); at -= 3) digits.insert(at, u'.');
    return digits;
}

}  // namespace lirovan::search
