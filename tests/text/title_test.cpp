#include "text/title.h"

#include <gtest/gtest.h>

using namespace lirovan::text;
using namespace Qt::StringLiterals;

TEST(ClearTitle, ShowsATitleWithoutMarkup) {
    struct Case {
        QString text;
        QString title;
        QString left;  ///< what the argument holds afterwards
    };
    const Case cases[] = {
        {u"ALLAH'IN İSİMLERİ"_s, u"Allah'ın İsimleri "_s, u"ALLAH'IN İSİMLERİ"_s},
        {u"Önsöz<br>Giriş"_s, u"Önsöz Giriş "_s, u"Önsöz Giriş"_s},
        {u"Önsöz <br> Giriş"_s, u"Önsöz  Giriş "_s, u"Önsöz  Giriş"_s},
        {u"<p><b></b></p>"_s, u" "_s, u""_s},
        {u"bir </STRONG>iki"_s, u"biriki "_s, u"biriki"_s},
        {u"bir</STRONG>iki"_s, u"bir iki "_s, u"bir iki"_s},
        {u"<B>BİR</B> <STRONG>İKİ</STRONG>"_s, u"Bir İki "_s, u"BİR İKİ"_s},
        {u"A  B"_s, u"A  B "_s, u"A  B"_s},
        {u"  (KUR'AN)  "_s, u"(Kur'an) "_s, u"(KUR'AN)"_s},
        {u"‘‘ALLAH’’"_s, u"‘‘Allah’’ "_s, u"‘‘ALLAH’’"_s},
        {u"«IŞIK» \"Ç ,K"_s, u"«Işık» \"Ç ,K "_s, u"«IŞIK» \"Ç ,K"_s},
        {u"X<BR>Y<i>Z"_s, u"X Y<i>z "_s, u"X Y<i>Z"_s},
        {u"<b<br>r>A"_s, u"<b r>a "_s, u"<b r>A"_s},
        {u""_s, u" "_s, u""_s},
    };
    for (const Case& c : cases) {
        QString text = c.text;
        EXPECT_EQ(ClearTitle(text).toStdString(), c.title.toStdString()) << c.text.toStdString();
        EXPECT_EQ(text.toStdString(), c.left.toStdString()) << c.text.toStdString();
    }
}

TEST(ClearValue, LeavesBareTagsInItsArgument) {
    QString text = u"a <p>b<b> c<strong>d <BR>e"_s;
    EXPECT_EQ(ClearValue(text), u"a b c d e");
    EXPECT_EQ(text, u"a b c<strong>d e");
}

TEST(ConvertTurkce, LowersOnlySevenCapitals) {
    EXPECT_EQ(ConvertTurkce(u"IŞIK İÇİN ĞÜÖ"), u"ışıK içiN ğüö");
}
