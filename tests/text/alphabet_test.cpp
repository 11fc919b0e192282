#include "text/alphabet.h"

#include <gtest/gtest.h>

using namespace lirovan::text;

TEST(KontTumKelime, AsksForABoundaryOnBothSides) {
    const std::tuple<QStringView, qsizetype, qsizetype, bool> cases[] = {
        {u"ilim ve irfan", 1, 4, false},  // its own first letter counts as the character before
        {u"ilim ve irfan", 6, 2, true},
        {u"ilim ve irfan", 9, 5, false},  // nothing follows
        {u"<p>ilim</p>", 4, 4, true},
        {u"Xilim.", 2, 4, false},
        {u" ilimÎ", 2, 4, false},
        {u" ilimß", 2, 4, true},  // not in the alphabet
        {u"-a-", 1, 1, false},    // a boundary before, but a letter after
        {u"--", 1, 1, true},
        {u"ab", 9, 1, false},
    };
    for (const auto& [text, position, length, whole] : cases)
        EXPECT_EQ(KontTumKelime(position, text, length), whole) << text.toUtf8().constData();
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
