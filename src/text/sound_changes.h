// What becomes of a Turkish word before an ending that begins with a vowel.
//
// The softening of the last letter is a plain rule over letters, without a dictionary: it also gives "ed" for
// "et" and "süd" for "süt", which do soften or do not as their meaning has it ("eti", but "güdü"). Who asks
// for these forms gets some that no text holds, and misses none.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace lirovan::text {

/// The forms of the last word of `phrase`, each with the rest of the phrase before it; none where the word
/// does not change. The last letter softened: p to b, ç to c, t to d, nk to ng, k otherwise to ğ and to g;
/// then the stems that the word has in IrregularStems. Case is kept as far as it goes: «Kitap» gives «Kitab»,
/// «RENK» gives «RENG», «çocuk» gives «çocuğ» and «çocug», «hak» gives «hağ», «hag» and «hakk», «derin burun»
/// gives «derin burn». A word of one letter has none.
QStringList soundForms(QStringView phrase);

}  // namespace lirovan::text
