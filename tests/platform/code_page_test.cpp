#include "platform/core/code_page.h"

#include <gtest/gtest.h>

using namespace lirovan::platform;

TEST(CodePage, WritesTurkishAndReferencesForTheRest) {
    EXPECT_EQ(toWindows1254(u"ğüşıöç İĞÜŞÖÇ âîû “x”"),
              QByteArray("\xF0\xFC\xFE\xFD\xF6\xE7 \xDD\xD0\xDC\xDE\xD6\xC7 \xE2\xEE\xFB \x93x\x94"));
    EXPECT_EQ(toWindows1254(u"∞\U0001F600"), QByteArray("&#8734;&#128512;"));
    const QChar lone[] = {QChar(u'a'), QChar(char16_t(0xD83D)), QChar(u'b')};
    EXPECT_EQ(toWindows1254(QStringView(lone, 3)), QByteArray("a&#65533;b"));
    EXPECT_EQ(fromWindows1254(toWindows1254(u"Şimdi «işte» €")), u"Şimdi «işte» €");
}
