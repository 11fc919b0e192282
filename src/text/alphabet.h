// The word alphabet, the whole-word test built on it, circumflex folding, and the dotted/dotless I variant.
//
// Replacements are exact and take every occurrence from left to right. Positions are 1-based UTF-16 units.
#pragma once

#include <QString>
#include <QStringView>
#include <array>
#include <optional>

namespace lirovan::text {

/// KelimeHarfleri — the letters that make up words. Membership ignores case, so not every capital is listed.
inline constexpr QStringView KelimeHarfleri = u"abcçdefgğhıijklmnoöprsştuüvyzqwxâûîôêİÖÜĞŞJÂÊÔÛÎ";

struct CircumflexPair {
    char16_t circumflex;
    char16_t plain;
};

/// In the order in which the letters are looked for. Note ô to ö (not o) and Î to İ (not I).
inline constexpr std::array<CircumflexPair, 10> CircumflexPairs{{{u'â', u'a'},
                                                                 {u'û', u'u'},
                                                                 {u'î', u'i'},
                                                                 {u'ô', u'ö'},
                                                                 {u'ê', u'e'},
                                                                 {u'Â', u'A'},
                                                                 {u'Û', u'U'},
                                                                 {u'Î', u'İ'},
                                                                 {u'Ô', u'Ö'},
                                                                 {u'Ê', u'E'}}};

/// Whether `unit`, in either case, is a letter of KelimeHarfleri.
bool isWordLetter(char16_t unit) noexcept;

/// KontTumKelime — whether a hit between these units is a whole word: no letter on either side. At the very
/// beginning of a text the hit's own first unit stands for the one before; nothing behind it, the end of the
/// text, is no boundary to be seen. In "<p>ilim</p>" ilim is one, in "ilim ve" and "ve ilim" it is not.
bool KontTumKelime(char16_t before, std::optional<char16_t> behind) noexcept;

/// SapkasizYaz — the word without circumflexes: «hakîkat» to «hakikat», «rôl» to «röl», «Îman» to «İman».
QString SapkasizYaz(QStringView word);

/// IVaryanti — the word with its dotted or dotless I exchanged: the first of İ, I, ı, i that occurs becomes
/// i, ı, I, İ everywhere. «İnsan» gives «insan», «bilgi» gives «bİlgİ», «ruh» gives nothing.
std::optional<QString> IVaryanti(QStringView word);

}  // namespace lirovan::text
