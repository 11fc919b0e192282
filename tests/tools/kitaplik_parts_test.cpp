// The parts of the companion: words of a call, a line of JSON, the manifest.
#include <gtest/gtest.h>

#include "platform/core/json_line.h"
#include "tools/kitaplik/command.h"
#include "tools/kitaplik/manifest.h"

using namespace lirovan::tools;
using lirovan::platform::JsonLine;
using namespace Qt::StringLiterals;

static const Command Konu{u"konu", u"", u"", 1, 2, {u"klasor", u"yazar"}, {u"json"}, {u"klasor"}, {}};

TEST(Arguments, AreSortedIntoWordsValuesAndFlags) {
    const auto parsed = parseArguments(Konu, u"a --klasor --json --json -- --b"_s.split(u' '));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->positional, (QStringList{u"a"_s, u"--b"_s}));
    EXPECT_EQ(parsed->value(u"klasor"), u"--json"_s);  // an option's value may look like an option
    EXPECT_EQ(parsed->value(u"yazar"), std::nullopt);
    EXPECT_TRUE(parsed->has(u"json"));
}

TEST(Arguments, AreRefusedWithAReason) {
    const std::pair<QString, QStringView> cases[] = {{u"--klasor d"_s, u"Eksik"},
                                                     {u"a b c --klasor d"_s, u"“c”"},
                                                     {u"a"_s, u"“--klasor” seçeneği eksik"},
                                                     {u"a --klasor"_s, u"değeri eksik"},
                                                     {u"a --klasor d --klasor d"_s, u"iki kez"},
                                                     {u"a --klasor d --hepsi"_s, u"“--hepsi”"}};
    for (const auto& [words, reason] : cases) {
        const auto parsed = parseArguments(Konu, words.split(u' '));
        ASSERT_FALSE(parsed);
        EXPECT_TRUE(parsed.error().message.contains(reason)) << parsed.error().message.toStdString();
    }
    for (const QString& word : {u""_s, u"0"_s, u"-4"_s, u"3x"_s, u"99999999999999999999"_s})
        EXPECT_FALSE(Arguments::id(word, u"KONUID")) << word.toStdString();
}

TEST(JsonLine, EscapesWhatJsonForbidsAndKeepsTheOrderOfKeys) {
    const QString text = u"\"\\\n\t\u0001ğ"_s + QChar(0xD800);
    const QByteArray line = JsonLine().text("b", text).number("a", std::nullopt).number("c", -7).finish();
    EXPECT_EQ(line, QByteArray("{\"b\":\"\\\"\\\\\\n\\u0009\\u0001ğ?\",\"a\":null,\"c\":-7}"));
}

TEST(Manifest, IsRefusedWithThePlaceOfItsFault) {
    const auto topic = [](const QByteArray& fields) {
        return R"({"surum":1,"yazarlar":[{"id":1,"ad":"A","kitaplar":[{"id":1,"ad":"K","konular":[)"
               R"({"id":1,"baslik":"B","dosya":"a.html"},{)" +
               fields + "}]}]}]}";
    };
    const auto file = [&](const QByteArray& name) {
        return topic(R"("id":2,"baslik":"B","dosya":")" + name + '"');
    };
    const std::pair<QByteArray, QStringView> cases[] = {
        {"", u"JSON"},
        {"{\n\n\"surum\": }", u"3. satır"},
        {"\xff\xfe", u"JSON"},
        {"[]", u"nesne"},
        {"{\"surum\":2,\"yazarlar\":[]}", u"“surum” 1"},
        {"{\"surum\":1}", u"“yazarlar” bir dizi"},
        {"{\"surum\":1,\"yazarlar\":[],\"yazar\":1}", u"“yazar” diye"},
        {"{\"surum\":1,\"yazarlar\":[3]}", u"yazarlar[0]: bir nesne"},
        {"{\"surum\":1,\"betik\":\"/etc/passwd\",\"yazarlar\":[]}", u"“betik” klasörün içinde"},
        {topic(R"("id":1,"baslik":"B","dosya":"b")"), u"konular[1]: 1 numarası başka bir konuya"},
        {topic(R"("id":2,"baslik":"B")"), u"yazarlar[0].kitaplar[0].konular[1]: “dosya”"},
        {topic(R"("id":2,"baslik":"  ","dosya":"b")"), u"“baslik” boş"},
        {topic(R"("id":2.5,"baslik":"B","dosya":"b")"), u"“id”"},
        {topic(R"("id":1e300,"baslik":"B","dosya":"b")"), u"“id”"},
        {topic(R"("id":2,"baslik":"B","dosya":"b","parca":"yedi")"), u"“parca” bir sayı"},
        {file("a/../../b"), u"“dosya” klasörün içinde"},
        {file("./a/.."), u"“dosya” klasörün içinde"},
        {file("C:/b"), u"“dosya” klasörün içinde"},
        {file("..\\\\b"), u"“dosya” klasörün içinde"},
    };
    for (const auto& [json, reason] : cases) {
        const auto manifest = readManifest(json);
        ASSERT_FALSE(manifest) << json.toStdString();
        EXPECT_TRUE(manifest.error().message.contains(reason)) << manifest.error().message.toStdString();
    }
}
