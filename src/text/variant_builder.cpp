#include "text/variant_builder.h"

#include <array>
#include <bitset>
#include <optional>

#include "text/alphabet.h"

namespace lirovan::text {
namespace {

using DelimiterSet = std::bitset<256>;  // every delimiter lies in Latin-1

// White space other than the blank and the angle quotes end a word like the other marks do.
constexpr QStringView commonDelimiters = u" ;&\n.,!?/\\*()[]%-+:\r\t\u00A0«»";

DelimiterSet delimiters(char16_t bracket) {
    DelimiterSet set;
    for (const QChar mark : commonDelimiters) set.set(mark.unicode());
    set.set(bracket);
    return set;
}

// Backwards a tag's end stops a word, forwards a tag's begin.
const DelimiterSet& leftDelimiters() {
    static const DelimiterSet set = delimiters(u'>');
    return set;
}

const DelimiterSet& rightDelimiters() {
    static const DelimiterSet set = delimiters(u'<');
    return set;
}

bool contains(const DelimiterSet& set, QChar unit) {
    return unit.unicode() < 256 && set[unit.unicode()];
}

// The run of characters around `at` up to the delimiters; empty when it is too long to be a word.
QStringView wordAround(QStringView text, qsizetype at) {
    qsizetype begin = at;
    while (begin > 0 && at - begin <= MaxVariantLength && !contains(leftDelimiters(), text[begin - 1]))
        --begin;
    qsizetype end = at + 1;
    while (end < text.size() && end - begin <= MaxVariantLength && !contains(rightDelimiters(), text[end]))
        ++end;
    return end - begin <= MaxVariantLength ? text.sliced(begin, end - begin) : QStringView();
}

// A quote mark at the end belongs to the sentence; in the middle it belongs to the word.
QString withoutEdges(QStringView word) {
    QString result = word.toString();
    for (const char16_t mark : {u'\'', u'’', u'`'})
        if (result.endsWith(mark) && result.count(mark) == 1) result.chop(1);
    if (result.startsWith(u'"') && result.endsWith(u'"')) result.remove(u'"');
    if (result.startsWith(u'“') && result.endsWith(u'”')) result = result.sliced(1, result.size() - 2);
    return result;
}

WordVariant variantOf(QStringView word) {
    const QString clean = withoutEdges(word);
    WordVariant variant{SapkasizYaz(clean), clean};
    for (const char16_t mark : {u'\'', u'`', u'’', u'”', u'“', u'"'}) variant.written.remove(mark);
    variant.textForm.replace(u'\'', u'`').remove(u'"');
    return variant;
}

std::optional<size_t> circumflexIndex(QChar unit) {
    // All ten letters lie between U+00C2 and U+00FB: one test skips nearly every character.
    if (unit < u'Â' || unit > u'û') return std::nullopt;
    for (size_t m = 0; m < CircumflexPairs.size(); ++m)
        if (unit == CircumflexPairs[m].circumflex) return m;
    return std::nullopt;
}

}  // namespace

std::vector<WordVariant> extractVariants(QStringView topicText) {
    std::array<std::vector<qsizetype>, CircumflexPairs.size()> occurrences;
    for (qsizetype at = 0; at < topicText.size(); ++at)
        if (const auto m = circumflexIndex(topicText[at])) occurrences[*m].push_back(at);

    std::vector<WordVariant> variants;
    for (const auto& ofLetter : occurrences)
        for (const qsizetype at : ofLetter) {
            const QStringView word = wordAround(topicText, at);
            if (!word.isEmpty()) variants.push_back(variantOf(word));
        }
    return variants;
}

}  // namespace lirovan::text
