#include "browse/font_size.h"

#include <gtest/gtest.h>

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;

TEST(FontSize, InsertsAStyleBlockFirstAndReplacesItLater) {
    EXPECT_EQ(withFontSize(u"<HEAD><TITLE>t</TITLE></HEAD>"_s, 16, 17),
              u"<HEAD><TITLE>t</TITLE><style>td {font-size: 17px;font-family: Arial;}</style></HEAD>");
    const QString shown =
        u"<TITLE>t</TITLE>\r\n<STYLE>td {font-size: 17px;font-family: Arial;}</STYLE>\r\n</HEAD>"_s;
    EXPECT_EQ(withFontSize(shown, 17, 16),
              u"<TITLE>t</TITLE><style>td {font-size: 16px;font-family: Arial;}</style></HEAD>");
    EXPECT_EQ(withFontSize(shown, 16, 15), shown);  // another size: not the block that was inserted
}

TEST(FontSize, MovesVerdanaTagsPastZero) {
    struct {
        int from, to;
        QStringView before, after;
    } const cases[] = {
        {16, 17, u"<FONT face=Verdana size=2>", u"<FONT face=Verdana size=3>"},
        {16, 15, u"<FONT face=Verdana size=2>", u"<FONT face=Verdana size=1>"},
        {15, 14, u"<FONT face=Verdana size=1>", u"<FONT face=Verdana size=0>"},
        {14, 13, u"<FONT face=Verdana size=0>", u"<FONT face=Verdana size=-1>"},
        {16, 17, u"<FONT face=Verdana size=4>", u"<FONT face=Verdana size=4>"},
        {16, 17, u"<font face=Verdana size=2>", u"<font face=Verdana size=2>"},
    };
    for (const auto& one : cases) EXPECT_EQ(withFontSize(one.before.toString(), one.from, one.to), one.after);
}

TEST(FontSize, MakesImagesOfThePageAbsolute) {
    EXPECT_EQ(
        withAbsoluteImages(u"<IMG src=\"print.gif\"><IMG src=\"duaimages/a.gif\"><IMG src=\"x/print.gif\">"_s,
                           platform::AppFolder(u"C:\\L"_s)),
        u"<IMG src=\"C:\\L\\OKU\\print.gif\"><IMG src=\"C:\\L\\OKU\\duaimages/a.gif\"><IMG "
        u"src=\"x/print.gif\">");
}
