#include "text/comparison.h"

#include <gtest/gtest.h>

using namespace lirovan::text;

TEST(Comparison, FoldsDottedAndDotlessIAsTurkishDoes) {
    const std::tuple<QStringView, QStringView, bool> cases[] = {
        {u"İNSAN", u"insan", true}, {u"IŞIK", u"ışık", true},   {u"I", u"i", false},
        {u"ı", u"i", false},        {u"ÂLİM", u"âlim", true},   {u"ğüşöç", u"ĞÜŞÖÇ", true},
        {u"ß", u"ss", false},       {u"ilim", u"ilimi", false}, {u"", u"", true},
    };
    for (const auto& [a, b, same] : cases)
        EXPECT_EQ(equal(a, b, Comparison::CaseInsensitive), same) << a.toUtf8().constData();
    EXPECT_FALSE(equal(u"İNSAN", u"insan", Comparison::Exact));
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const char16_t folded = fold(static_cast<char16_t>(unit));
        EXPECT_TRUE(fold(folded) == folded) << unit;
        EXPECT_TRUE(folded == unit || !QChar::isSurrogate(unit)) << unit;
    }
}

TEST(Comparison, FindsWithEitherComparison) {
    const QStringView text = u"bir İLİM, iki ilim";
    EXPECT_EQ(find(text, u"ilim", 0, Comparison::CaseInsensitive), 4);
    EXPECT_EQ(find(text, u"ilim", 0, Comparison::Exact), 14);
    EXPECT_EQ(find(text, u"ilim", 15, Comparison::CaseInsensitive), -1);
    EXPECT_EQ(find(text, u"", 0, Comparison::Exact), -1);
    EXPECT_EQ(find(text, u"bir", 99, Comparison::CaseInsensitive), -1);
}

TEST(Comparison, OrdersAndChangesCaseAsTurkishDoes) {
    EXPECT_LT(order(u"cam", u"çam"), 0);
    EXPECT_LT(order(u"çam", u"dam"), 0);
    EXPECT_LT(order(u"Isı", u"ilk"), 0);
    EXPECT_EQ(order(u"KİTAP", u"kitap"), 0);
    EXPECT_NE(order(u"kar", u"kâr"), 0);
    EXPECT_EQ(lower(u"IŞIK İÇİN"), u"ışık için");
    EXPECT_EQ(upper(u"Sabri ışık"), u"SABRİ IŞIK");
}
