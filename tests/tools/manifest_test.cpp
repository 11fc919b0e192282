#include "tools/kitaplik/manifest.h"

#include <gtest/gtest.h>

using namespace lirovan::tools;

TEST(Manifest, IsReadWithItsDefaults) {
    const auto manifest =
        readManifest(R"({"surum":1,"betik":"b.html","yazarlar":[{"id":3,"ad":"Ç","kitaplar":[
        {"id":5,"ad":"K","konular":[{"id":1,"baslik":"A","dosya":"x/../a.html"},
                                    {"id":700000,"baslik":"B","dosya":"b.html","parca":7,"sira":0.5}]},
        {"id":6,"ad":"L","sira":9,"konular":[]}]}]})");
    ASSERT_TRUE(manifest) << manifest.error().message.toStdString();
    EXPECT_EQ(manifest->scriptFile, u"b.html");
    const ManifestAuthor& author = manifest->authors.at(0);
    EXPECT_EQ(author.name, u"Ç");
    EXPECT_EQ(author.books.at(0).order, 1);
    EXPECT_EQ(author.books.at(1).order, 9);
    const std::vector<ManifestTopic>& topics = author.books.at(0).topics;
    EXPECT_EQ(topics.at(0).file, u"a.html");
    EXPECT_EQ(topics.at(0).part, 1);
    EXPECT_EQ(topics.at(0).order, 1);
    EXPECT_EQ(topics.at(1).id, 700000);
    EXPECT_EQ(topics.at(1).part, 7);
    EXPECT_EQ(topics.at(1).order, 0.5);
}

TEST(Manifest, IsRefusedWithThePlaceOfItsFault) {
    const auto topic = [](const char* fields) {
        return QByteArray(
                   R"({"surum":1,"yazarlar":[{"id":1,"ad":"A","kitaplar":[{"id":1,"ad":"K","konular":[)"
                   R"({"id":1,"baslik":"B","dosya":"a.html"},{)") +
               fields + "}]}]}]}";
    };
    struct {
        QByteArray json;
        QStringView reason;
    } const cases[] = {
        {"", u"JSON"},
        {"{\n\n\"surum\": }", u"3. satır"},
        {"\xff\xfe", u"JSON"},
        {"[]", u"nesne"},
        {"{\"yazarlar\":[]}", u"“surum” 1"},
        {"{\"surum\":2,\"yazarlar\":[]}", u"“surum” 1"},
        {"{\"surum\":1}", u"“yazarlar” bir dizi"},
        {"{\"surum\":1,\"yazarlar\":[],\"yazar\":1}", u"“yazar” diye"},
        {"{\"surum\":1,\"yazarlar\":[3]}", u"yazarlar[0]: bir nesne"},
        {"{\"surum\":1,\"betik\":\"/etc/passwd\",\"yazarlar\":[]}", u"“betik” klasörün içinde"},
        {topic(R"("id":1,"baslik":"B","dosya":"b")"), u"konular[1]: 1 numarası başka bir konuya"},
        {topic(R"("id":2,"baslik":"B")"), u"yazarlar[0].kitaplar[0].konular[1]: “dosya”"},
        {topic(R"("id":2,"baslik":"  ","dosya":"b")"), u"“baslik” boş"},
        {topic(R"("id":2.5,"baslik":"B","dosya":"b")"), u"“id”"},
        {topic(R"("id":"2","baslik":"B","dosya":"b")"), u"“id”"},
        {topic(R"("id":1e300,"baslik":"B","dosya":"b")"), u"“id”"},
        {topic(R"("id":2,"baslik":"B","dosya":"b","parca":"yedi")"), u"“parca” bir sayı"},
        {topic(R"("id":2,"baslik":"B","dosya":"../b")"), u"“dosya” klasörün içinde"},
        {topic(R"("id":2,"baslik":"B","dosya":"a/../../b")"), u"“dosya” klasörün içinde"},
        {topic(R"("id":2,"baslik":"B","dosya":"./a/..")"), u"“dosya” klasörün içinde"},
        {topic(R"("id":2,"baslik":"B","dosya":"C:/b")"), u"“dosya” klasörün içinde"},
        {topic(R"("id":2,"baslik":"B","dosya":"..\\b")"), u"“dosya” klasörün içinde"},
    };
    for (const auto& one : cases) {
        const auto manifest = readManifest(one.json);
        ASSERT_FALSE(manifest) << one.json.toStdString();
        EXPECT_TRUE(manifest.error().message.contains(one.reason)) << manifest.error().message.toStdString();
    }
}
