#include "browse/topic_link.h"

#include <gtest/gtest.h>

#include "browse/page_finding.h"

using namespace lirovan::browse;
using namespace Qt::StringLiterals;

TEST(TopicLink, LeadsToAPassageAndComesBack) {
    const QString longPassage = u"sözcük "_s.repeated(40);
    const std::pair<TopicLink, QString> cases[] = {
        {{{12}, {}}, u"konu:12"_s},
        {{{7}, u"Bahçe & \"gül\""_s}, u"konu:7?yer=Bah%C3%A7e%20%26%20%22g%C3%BCl%22"_s},
    };
    for (const auto& [link, address] : cases) {
        EXPECT_EQ(topicAddress(link), address);
        EXPECT_EQ(topicLinkOf(address), link) << address.toStdString();
    }
    EXPECT_EQ(topicLinkOf(topicAddress({{1}, longPassage}))->passage, longPassage.left(100));
    EXPECT_EQ(topicLinkOf(u"konu:3#yer"_s), (TopicLink{{3}, {}}));
    for (const QString& foreign : {u"https://x.tr"_s, u"konu:"_s, u"konu:x?yer=a"_s, u""_s})
        EXPECT_FALSE(topicLinkOf(foreign)) << foreign.toStdString();
    EXPECT_EQ(sourceLine(u"Yazar"_s, u" "_s, u"İki<BR>satır"_s), u"Yazar, İki satır");
}

TEST(PageFinding, SaysWhatIsFound) {
    EXPECT_EQ(foundText(1234, 7, true), u"7 / 1.234");
    EXPECT_EQ(foundText(3, 1, false), u"1 / 3…");
    EXPECT_EQ(foundText(0, 0, true), u"Bulunamadı");
    EXPECT_EQ(queryAtOpening(u" söz "_s, u"eski"_s), u"söz");
    for (const QString& selection : {u""_s, u"iki\nsatır"_s, u"x"_s.repeated(81)})
        EXPECT_EQ(queryAtOpening(selection, u"eski"_s), u"eski");
}
