#include "text/alphabet.h"

#include <gtest/gtest.h>

using namespace lirovan::text;

TEST(KontTumKelime, AsksForABoundaryOnBothSides) {
    EXPECT_TRUE(KontTumKelime(u'>', u'<'));
    EXPECT_TRUE(KontTumKelime(u' ', u'ß'));  // not in the alphabet
    EXPECT_FALSE(KontTumKelime(u'X', u'.'));
    EXPECT_FALSE(KontTumKelime(u' ', u'Î'));
    EXPECT_FALSE(KontTumKelime(u' ', std::nullopt));  // the end of the text
    for (const QChar letter : QStringView(u"QWXÇçIıİiÂâÔôÊêjJ")) EXPECT_TRUE(isWordLetter(letter.unicode()));
    for (const QChar other : QStringView(u"0 .<>&;'’_ñé\u00A0")) EXPECT_FALSE(isWordLetter(other.unicode()));
}

TEST(SapkasizYaz, ReplacesTheTenLetters) {
    EXPECT_EQ(SapkasizYaz(u"Kur'ân ÂÛÎÔÊâûîôê"), u"Kur'an AUİÖEauiöe");
}

TEST(IVaryanti, LetsTheFirstRowDecide) {
    const std::pair<QStringView, QStringView> cases[] = {{u"İnsan", u"insan"}, {u"Işık", u"ışık"},
                                                         {u"ışık", u"IşIk"},   {u"bilgi", u"bİlgİ"},
                                                         {u"İlmıİ", u"ilmıi"}, {u"Iıi", u"ııi"}};
    for (const auto& [word, variant] : cases) EXPECT_EQ(IVaryanti(word), variant.toString());
    EXPECT_EQ(IVaryanti(u"ruh"), std::nullopt);
}
