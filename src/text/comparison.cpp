#include "text/comparison.h"

#include <unicode/coll.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <QStringDecoder>
#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <memory>

#include "text/sort_key.h"

namespace lirovan::text {
namespace {

using FoldTable = std::array<char16_t, 65536>;

FoldTable makeFoldTable() {
    FoldTable table;
    for (UChar32 c = 0; c < 65536; ++c) {
        // The special-I option pairs i with İ and I with ı, as Turkish does.
        const UChar32 f = u_foldCase(c, U_FOLD_CASE_EXCLUDE_SPECIAL_I);
        table[static_cast<size_t>(c)] = static_cast<char16_t>(f < 65536 ? f : c);
    }
    return table;
}

const FoldTable& foldTable() {
    static const FoldTable table = makeFoldTable();
    return table;
}

const icu::Collator& turkishCollator() {
    static const std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(icu::Locale("tr"), status));
        if (U_FAILURE(status) || !made) qFatal("ICU has no Turkish collator: %s", u_errorName(status));
        return made;
    }();
    return *collator;
}

const icu::Locale& turkish() {
    static const icu::Locale locale("tr");
    return locale;
}

const UChar* units(QStringView text) {
    return reinterpret_cast<const UChar*>(text.utf16());
}

}  // namespace

char16_t fold(char16_t unit) noexcept {
    return foldTable()[unit];
}

QString folded(QStringView text) {
    const FoldTable& table = foldTable();
    QString result(text.size(), Qt::Uninitialized);
    std::transform(text.utf16(), text.utf16() + text.size(), reinterpret_cast<char16_t*>(result.data()),
                   [&](char16_t unit) { return table[unit]; });
    return result;
}

bool equal(QStringView a, QStringView b, Comparison comparison) noexcept {
    if (a.size() != b.size()) return false;
    if (comparison == Comparison::Exact) return a == b;
    const FoldTable& table = foldTable();
    return std::equal(a.utf16(), a.utf16() + a.size(), b.utf16(),
                      [&](char16_t x, char16_t y) { return table[x] == table[y]; });
}

qsizetype find(QStringView haystack, QStringView needle, qsizetype from, Comparison comparison) noexcept {
    if (needle.isEmpty() || from < 0 || from > haystack.size()) return -1;
    if (comparison == Comparison::Exact) return haystack.indexOf(needle, from);
    const FoldTable& table = foldTable();
    const char16_t* text = haystack.utf16();
    const char16_t* word = needle.utf16();
    const char16_t first = table[word[0]];
    for (qsizetype at = from; at + needle.size() <= haystack.size(); ++at) {
        if (table[text[at]] != first) continue;
        qsizetype k = 1;
        while (k < needle.size() && table[text[at + k]] == table[word[k]]) ++k;
        if (k == needle.size()) return at;
    }
    return -1;
}

namespace {

// Titles and words fit; comparing them then takes no memory. A sort compares a hundred thousand times.
using Folded = QVarLengthArray<char16_t, 128>;

int orderFolded(const Folded& left, const Folded& right) {
    UErrorCode status = U_ZERO_ERROR;
    const int byCollator =
        turkishCollator().compare(left.data(), static_cast<int32_t>(left.size()), right.data(),
                                  static_cast<int32_t>(right.size()), status);
    // Texts that the collator takes for equal but that are not the same need an order of their own, or a
    // database index would lose one of them.
    return byCollator != 0
               ? byCollator
               : QStringView(left.data(), left.size()).compare(QStringView(right.data(), right.size()));
}

Folded foldedUnits(QStringView text) {
    Folded units(text.size());
    std::transform(text.utf16(), text.utf16() + text.size(), units.begin(), fold);
    return units;
}

Folded foldedUnits(std::string_view utf8) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QByteArrayView bytes(utf8.data(), static_cast<qsizetype>(utf8.size()));
    Folded units(decoder.requiredSpace(bytes.size()));
    const QChar* end = decoder.appendToBuffer(reinterpret_cast<QChar*>(units.data()), bytes);
    units.resize(end - reinterpret_cast<const QChar*>(units.data()));
    std::transform(units.begin(), units.end(), units.begin(), fold);
    return units;
}

}  // namespace

int order(QStringView a, QStringView b) {
    return orderFolded(foldedUnits(a), foldedUnits(b));
}

void appendSortKey(std::string& keys, QStringView text) {
    // Enough for most: several bytes a unit.
    constexpr size_t BytesPerUnit = 4, Least = 16;
    const Folded units = foldedUnits(text);
    const auto size = static_cast<int32_t>(units.size());
    const size_t begin = keys.size();
    keys.resize(begin + static_cast<size_t>(units.size()) * BytesPerUnit + Least);
    const auto write = [&] {
        return static_cast<size_t>(
            turkishCollator().getSortKey(units.data(), size, reinterpret_cast<uint8_t*>(keys.data() + begin),
                                         static_cast<int32_t>(keys.size() - begin)));
    };
    const size_t needed = write();
    const bool fits = needed <= keys.size() - begin;
    keys.resize(begin + needed);
    if (!fits) write();
}

int orderUtf8(std::string_view a, std::string_view b) {
    return a == b ? 0 : orderFolded(foldedUnits(a), foldedUnits(b));
}

QString lower(QStringView text) {
    icu::UnicodeString result(units(text), static_cast<int32_t>(text.size()));
    result.toLower(turkish());
    return QString(reinterpret_cast<const QChar*>(result.getBuffer()), result.length());
}

QString upper(QStringView text) {
    icu::UnicodeString result(units(text), static_cast<int32_t>(text.size()));
    result.toUpper(turkish());
    return QString(reinterpret_cast<const QChar*>(result.getBuffer()), result.length());
}

}  // namespace lirovan::text
