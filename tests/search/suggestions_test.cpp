// The words of the library and what is offered while a query is typed.
#include "search/matching/suggestions.h"

#include <gtest/gtest.h>

#include <map>

#include "random_text.h"
#include "support/library_file.h"
#include "text/comparison.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

WordIndex indexOf(const data::Library& library) {
    return **WordIndex::build(library, [] { return true; });
}

}  // namespace

TEST(WordIndex, CountsWordsInAllTheirSpellings) {
    test::LibraryFile file;
    file.author(1, u"a").book(1, 1, u"b");
    file.topic(1, 1, u"k",
               u"<P>Kâr kar, KAR&nbsp;kar<b>ı</b>n</P><P>Kur'an Kur’ân</P>İlim &quot;ilim&quot; a x1y 1908");
    file.topic(2, 1, u"k", u"karlı <a name='karga'>"_s + QString(50, u'k') + u"</P>"_s);
    const WordIndex index = indexOf(file.open());
    const auto shown = [&](const QString& typed, size_t most = 9) {
        QString all;
        for (const IndexedWord& word : index.beginningWith(typed, most))
            all += word.shown + u':' + QString::number(word.count) + u' ';
        return all.trimmed();
    };
    EXPECT_EQ(shown(u"KÂR"_s), u"kar, kâr:3 karın:1 karlı:1");
    EXPECT_EQ(shown(u"kar"_s, 1), u"kar, kâr:3");
    EXPECT_EQ(shown(u"Kur'a"_s), u"kur'an, kur’ân:2");
    EXPECT_EQ(shown(u"i"_s), u"ilim:2");
    EXPECT_EQ(shown(u"ı"_s) + shown(u"'"_s) + shown(u"karg"_s) + shown(u"kkk"_s), QString());
    EXPECT_FALSE(WordIndex::build(file.open(), [] { return false; })->has_value());
    file.execute(u"DELETE FROM tbl_Konu");
    EXPECT_EQ(indexOf(file.open()).size(), 0u);
}

TEST(WordIndex, IsThatOfAPlainTwin) {
    test::Random random;
    test::LibraryFile file;
    file.execute(u"BEGIN").author(1, u"a").book(1, 1, u"b");
    std::map<QString, qint64> twin;
    for (int topic = 1; topic <= 200; ++topic) {
        QString text;
        for (int i = random.below(40); i > 0; --i) {
            const QString word = random.from(u"kâr|kar|ilim|İLİM|ışık|anana|Göl|gölge"_s.split(u'|'));
            ++twin[WordIndex::keyOf(word)];
            text += word + random.from(u" |, |<br>|&nbsp;|</P><P>|. |-"_s.split(u'|'));
        }
        file.topic(topic, 1, u"k", text);
    }
    const WordIndex index = indexOf(file.execute(u"COMMIT").open());
    EXPECT_EQ(index.size(), twin.size());
    for (const auto& [key, count] : twin) {
        const auto found = index.beginningWith(key, 99);
        const auto same =
            std::find_if(found.begin(), found.end(), [&](const auto& word) { return word.key == key; });
        ASSERT_NE(same, found.end());
        EXPECT_EQ(same->count, count) << key.toStdString();
    }
}

TEST(Suggestions, CompleteTheWordAtTheCaretOrTheWholeQuery) {
    test::LibraryFile file;
    file.author(1, u"a").book(1, 1, u"b").topic(1, 1, u"k", u"<P>ilim ilim irfan</P>");
    const WordIndex index = indexOf(file.open());
    AskedSearches asked;
    for (const QString& query : {u"irfan"_s, u"ilim ve"_s, u" "_s, u"irfan"_s}) asked.add({query, {}});
    asked.add({u"irfan"_s, {.wholeWord = true}});
    const auto offered = [&](const QString& text, qsizetype caret) {
        QStringList all;
        for (const Suggestion& each : suggestionsFor(text, caret, asked, &index))
            all += each.query + u'@' + QString::number(each.caret);
        return all.join(u'|');
    };
    EXPECT_EQ(offered(u"İ"_s, 1), u"irfan@5|ilim ve@7|ilim@4|irfan@5");
    EXPECT_EQ(offered(u"il irfan"_s, 2), u"ilim irfan@4");
    EXPECT_EQ(offered(u"ilim"_s, 4), u"ilim ve@7");  // what stands there is not offered
    EXPECT_EQ(offered(u"ilim "_s, 5) + offered({}, 0), QString());
    EXPECT_TRUE(suggestionsFor(u"x"_s, 1, asked, nullptr).empty());
}
