// Comparison, search, ordering and case of Turkish text. No other module changes case or compares without it.
//
// Text is a sequence of UTF-16 code units. Case-insensitive comparison is Turkish simple folding, one unit to
// one unit (i with İ, ı with I; otherwise ICU's simple case folding), so a position found in folded text is
// the position in the text itself. Units of surrogate pairs fold to themselves.
#pragma once

#include <QString>
#include <QStringView>
#include <string_view>

namespace lirovan::text {

enum class Comparison {
    Exact = 0,           ///< unit by unit
    CaseInsensitive = 1  ///< unit by unit after fold()
};

/// The folded form of one unit: fold(u'İ') == u'i', fold(u'I') == u'ı', fold(u'Ş') == u'ş'.
char16_t fold(char16_t unit) noexcept;

/// Every unit folded; same length as the input.
QString folded(QStringView text);

bool equal(QStringView a, QStringView b, Comparison comparison) noexcept;

/// Zero-based index of the first occurrence of `needle` at or after `from`, -1 when there is none.
/// An empty needle is found nowhere: callers never search for nothing.
qsizetype find(QStringView haystack, QStringView needle, qsizetype from, Comparison comparison) noexcept;

/// Order of two texts in a Turkish list: negative, zero or positive. Texts that differ only in case (as
/// fold() sees it) compare equal, so that the same rule serves `=` and `ORDER BY` in the database.
int order(QStringView a, QStringView b);
/// The same for texts in UTF-8.
int orderUtf8(std::string_view a, std::string_view b);

/// Lower and upper case by the Turkish rules (I to ı, i to İ); the length may change.
QString lower(QStringView text);
QString upper(QStringView text);

}  // namespace lirovan::text
