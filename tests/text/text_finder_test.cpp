#include "text/text_finder.h"

#include <gtest/gtest.h>

using namespace lirovan::text;

TEST(TextFinder, FindsAsASearchDoes) {
    struct Case {
        QStringView query, text;
        std::vector<TextRange> hits;
    };
    const Case cases[] = {
        {u"ilim", u"İLİM ve ilim", {{0, 4}, {8, 12}}},
        {u"ISPARTA", u"ısparta isparta", {{0, 7}}},
        {u"kuran", u"Kur'ân Kur'an Kuran", {{0, 6}, {14, 19}}},
        {u"kur'ân", u"Kur`ân Kurân", {{0, 6}}},
        {u"hakikat", u"hakîkat hakikat", {{0, 7}, {8, 15}}},
        {u"hakîkat", u"hakikat hakîkat", {{8, 15}}},
        {u"rol röl", u"rôl röl", {}},
        {u" bir  iki ", u"bir\n\u00a0iki biriki bir iki", {{0, 8}, {16, 23}}},
        {u"aa", u"aaaaa", {{0, 2}, {2, 4}}},
        {u"son", u"so", {}},
        {u"  ", u"  x", {}},
    };
    for (const Case& each : cases)
        EXPECT_EQ(TextFinder(each.query).all(each.text), each.hits) << each.query.toUtf8().toStdString();
}
