#include "text/title.h"

#include <gtest/gtest.h>

using namespace lirovan::text;
using namespace Qt::StringLiterals;

TEST(ClearTitle, ShowsATitleWithoutMarkup) {
    // The text, its title, and what the argument holds afterwards.
    const std::tuple<QStringView, const char*, const char*> cases[] = {
        {u"ALLAH'IN İSİMLERİ", "Allah'ın İsimleri ", "ALLAH'IN İSİMLERİ"},
        {u"Önsöz <br> Giriş", "Önsöz  Giriş ", "Önsöz  Giriş"},
        {u"<p><b></b></p>", " ", ""},
        {u"bir </STRONG>iki", "biriki ", "biriki"},
        {u"bir</STRONG>iki", "bir iki ", "bir iki"},
        {u"<B>BİR</B> <STRONG>İKİ</STRONG>", "Bir İki ", "BİR İKİ"},
        {u"‘‘ALLAH’’", "‘‘Allah’’ ", "‘‘ALLAH’’"},
        {u"«IŞIK» \"Ç ,K", "«Işık» \"Ç ,K ", "«IŞIK» \"Ç ,K"},
        {u"X<BR>Y<i>Z", "X Y<i>z ", "X Y<i>Z"},
        {u"<b<br>r>A", "<b r>a ", "<b r>A"},
    };
    for (const auto& [given, title, left] : cases) {
        QString text = given.toString();
        EXPECT_EQ(ClearTitle(text).toStdString(), title);
        EXPECT_EQ(text.toStdString(), left);
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
