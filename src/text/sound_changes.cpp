#include "text/sound_changes.h"

#include "text/comparison.h"
#include "text/irregular_stems.h"

namespace lirovan::text {
namespace {

struct Softening {
    char16_t hard;
    QStringView soft;  // each unit makes a form
};
constexpr Softening Softenings[] = {{u'p', u"b"}, {u'P', u"B"}, {u'ç', u"c"},  {u'Ç', u"C"},
                                    {u't', u"d"}, {u'T', u"D"}, {u'k', u"ğg"}, {u'K', u"ĞG"}};

QStringView softOnes(QStringView word) {
    for (const Softening& softening : Softenings) {
        if (word.back() != softening.hard) continue;
        const bool behindN = fold(word[word.size() - 2].unicode()) == u'n';
        return behindN && softening.soft.size() > 1 ? softening.soft.last(1) : softening.soft;
    }
    return {};
}

bool isCapital(QChar letter) {
    return letter.unicode() != fold(letter.unicode());
}

// `stem` in the case of `word`: all capitals, the first one, or none.
QString inCaseOf(QStringView word, QStringView stem) {
    if (!isCapital(word.front())) return stem.toString();
    if (isCapital(word.back())) return upper(stem);
    return upper(stem.first(1)) + stem.sliced(1).toString();
}

}  // namespace

QStringList soundForms(QStringView phrase) {
    const QStringView word = phrase.sliced(phrase.lastIndexOf(u' ') + 1);
    if (word.size() < 2) return {};
    const QStringView before = phrase.chopped(word.size());
    QStringList forms;
    for (const QChar soft : softOnes(word)) forms.append(phrase.chopped(1).toString() + soft);
    for (const IrregularStem& irregular : IrregularStems)
        if (equal(word, irregular.word, Comparison::CaseInsensitive))
            forms.append(before.toString() + inCaseOf(word, irregular.stem));
    return forms;
}

}  // namespace lirovan::text
