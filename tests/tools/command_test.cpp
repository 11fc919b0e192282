#include "tools/kitaplik/command.h"

#include <gtest/gtest.h>

#include "platform/core/json_line.h"

using namespace lirovan::tools;
using lirovan::platform::JsonLine;
using namespace Qt::StringLiterals;

namespace {

const Command Konu{u"konu", u"", u"", 1, 2, {u"klasor", u"yazar"}, {u"json"}, {u"klasor"}, {}};

}  // namespace

TEST(Arguments, AreSortedIntoWordsValuesAndFlags) {
    const auto parsed =
        parseArguments(Konu, {u"a"_s, u"--klasor"_s, u"--json"_s, u"--json"_s, u"--"_s, u"--b"_s});
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->positional, (QStringList{u"a"_s, u"--b"_s}));
    EXPECT_EQ(parsed->value(u"klasor"), u"--json"_s);  // an option's value may look like an option
    EXPECT_EQ(parsed->value(u"yazar"), std::nullopt);
    EXPECT_TRUE(parsed->has(u"json"));
}

TEST(Arguments, AreRefusedWithAReason) {
    struct {
        QStringList words;
        QStringView reason;
    } const cases[] = {
        {{u"--klasor"_s, u"d"_s}, u"Eksik"},
        {{u"a"_s, u"b"_s, u"c"_s, u"--klasor"_s, u"d"_s}, u"“c”"},
        {{u"a"_s}, u"“--klasor” seçeneği eksik"},
        {{u"a"_s, u"--klasor"_s}, u"değeri eksik"},
        {{u"a"_s, u"--klasor"_s, u"d"_s, u"--klasor"_s, u"d"_s}, u"iki kez"},
        {{u"a"_s, u"--klasor"_s, u"d"_s, u"--hepsi"_s}, u"“--hepsi”"},
    };
    for (const auto& one : cases) {
        const auto parsed = parseArguments(Konu, one.words);
        ASSERT_FALSE(parsed);
        EXPECT_TRUE(parsed.error().message.contains(one.reason)) << parsed.error().message.toStdString();
    }
    for (const QString& word : {u""_s, u"0"_s, u"-4"_s, u"3x"_s, u"99999999999999999999"_s})
        EXPECT_FALSE(Arguments::id(word, u"KONUID")) << word.toStdString();
}

TEST(JsonLine, EscapesWhatJsonForbidsAndKeepsTheOrderOfKeys) {
    const QString text = u"\"\\\n\t\u0001ğ"_s + QChar(0xD800);
    const QByteArray line = JsonLine().text("b", text).number("a", std::nullopt).number("c", -7).finish();
    EXPECT_EQ(line, QByteArray("{\"b\":\"\\\"\\\\\\n\\u0009\\u0001ğ?\",\"a\":null,\"c\":-7}"));
}
