// The fast search against the plain one, on random texts and queries. The seed is printed; LIROVAN_SEED
// repeats a run.
#include <gtest/gtest.h>

#include <QByteArray>
#include <iostream>
#include <map>
#include <random>

#include "reference.h"
#include "search/highlighter.h"
#include "search/passages.h"
#include "search/search_query.h"
#include "search/topic_scanner.h"
#include "text/comparison.h"

using namespace lirovan;
using namespace Qt::StringLiterals;
using search::SearchOptions;
using search::SearchRun;
using text::Comparison;

namespace {

class Random {
  public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(engine_); }
    bool oneIn(int n) { return below(n) == 0; }
    template <class List>
    auto from(const List& list) {
        return list[static_cast<decltype(std::size(list))>(below(static_cast<int>(std::size(list))))];
    }

  private:
    std::mt19937 engine_;
};

// Few letters, so that words overlap and repeat; letters with partners of other lengths among them.
const QStringList Words =
    u"i|İ|ı|I|a|ana|anana|ilim|İLİM|kâr|KÂR|Kar|ſu|su|quot|span|font|ş|😀|a😀|âbı|kar'|ve ilim|#0"_s.split(
        u'|');
const QStringList Marks =
    u" | |<P>|</P>|<br>|.|, |-|&quot;|<a name='ilim'>|'|’|&nbsp;|<|>|\u2028|“|\u212A|</font></span>|<p>"_s
        .split(u'|');

QString randomText(Random& random) {
    QString text;
    const int pieces = random.below(60);
    for (int i = 0; i < pieces; ++i) {
        text += random.from(Words);
        if (!random.oneIn(3)) text += random.from(Marks);
        if (random.oneIn(25)) text += QString(random.below(230), u'x');
    }
    return text;
}

struct Case {
    SearchOptions options;
    SearchRun run;
    QString text;
};

Case randomCase(Random& random) {
    Case c;
    c.options = {random.oneIn(2), random.oneIn(2), random.oneIn(2), random.oneIn(5), false};
    c.run.KarsilastirmaKipi = c.options.caseSensitive ? Comparison::Exact : Comparison::CaseInsensitive;
    // Sometimes so many that words are sieved.
    const int words = random.oneIn(4) ? 20 + random.below(20) : 1 + random.below(4);
    for (int i = 0; i < words; ++i) c.run.AramaKelimeleri.append(random.from(Words));
    if (!c.options.caseSensitive) c.run.AramaKelimeleri += search::IVariants(c.run.AramaKelimeleri);
    // The table gives words that compare equal the same variants.
    std::map<QString, QStringList> table;
    for (const QString& word : c.run.AramaKelimeleri) {
        const auto [row, isNew] = table.try_emplace(c.options.caseSensitive ? word : text::folded(word));
        while (isNew && random.oneIn(3)) row->second.append(random.from(Words));
        c.run.TumVaryantlar += row->second;
        c.run.KelimeVaryantlari.push_back(row->second);
    }
    if (random.oneIn(20)) c.run.AramaKelimeleri.append(QString());
    c.text = randomText(random);
    // A hit at the very first and at the very last character.
    if (random.oneIn(4)) c.text.prepend(c.run.AramaKelimeleri.first());
    if (random.oneIn(4)) c.text.append(c.run.AramaKelimeleri.first());
    return c;
}

std::string describe(const Case& c) {
    return "words: " + c.run.AramaKelimeleri.join(u'|').toStdString() +
           "\nvariants: " + c.run.TumVaryantlar.join(u'|').toStdString() + "\ntext: " + c.text.toStdString();
}

unsigned seed() {
    static const unsigned value = [] {
        const QByteArray wanted = qgetenv("LIROVAN_SEED");
        const unsigned chosen = wanted.isEmpty() ? std::random_device{}() : wanted.toUInt();
        std::cout << "LIROVAN_SEED=" << chosen << std::endl;
        return chosen;
    }();
    return value;
}

}  // namespace

TEST(FastSearch, MatchesAndCountsAsTheReferenceDoes) {
    Random random(seed());
    constexpr qint64 topics[] = {7, 1199, 40000};
    constexpr qint64 books[] = {1, 33, 34};
    for (int round = 0; round < 4000; ++round) {
        const Case c = randomCase(random);
        const QByteArray stored = c.text.toUtf8();
        const std::string_view bytes(stored.constData(), static_cast<size_t>(stored.size()));
        const search::TopicScanner scanner(c.run, c.options);
        ASSERT_EQ(scanner.matches(bytes), reference::matches(c.run, c.options, c.text)) << describe(c);

        const search::CountedTopic topic{{random.from(topics)}, {random.from(books)}};
        QString record = u"$"_s, expectedRecord = u"$"_s;
        const qint64 count = scanner.BulKelimeSay(bytes, topic, record, [] { return true; });
        const qint64 expected = reference::count(c.run, c.options, c.text, topic.AktifKonuID.value,
                                                 topic.AktifKitapID.value, expectedRecord);
        ASSERT_EQ(count, expected) << describe(c);
        ASSERT_EQ(record.toStdString(), expectedRecord.toStdString()) << describe(c);
    }
}

TEST(FastSearch, HighlightsAsTheReferenceDoes) {
    Random random(seed());
    for (int round = 0; round < 3000; ++round) {
        const Case c = randomCase(random);
        const QStringList words = search::wordsToMark(c.run, c.options.allWords);
        const auto page = search::markHits(c.text, words, c.run.KarsilastirmaKipi, c.options.wholeWord);
        const auto expected =
            reference::highlight(c.text, words, c.run.KarsilastirmaKipi, c.options.wholeWord);
        ASSERT_EQ(page.text.toStdString(), expected.text.toStdString()) << describe(c);
        ASSERT_EQ(page.hits, expected.hits) << describe(c);
        ASSERT_EQ(page.colours, expected.colours) << describe(c);
    }
}

TEST(FastSearch, SummarisesAsTheReferenceDoes) {
    Random random(seed());
    for (int round = 0; round < 3000; ++round) {
        const QString text = randomText(random);
        std::vector<qint64> positions;
        for (int i = random.below(12); i >= 0; --i)
            positions.push_back(1 + random.below(static_cast<int>(text.size()) + 5));
        const qsizetype phrase = random.oneIn(3) ? random.below(9) : -1;
        const int limit = random.oneIn(5) ? 1 + random.below(3) : 1000;
        QString page = u"…"_s, expected = u"…"_s;
        int passages = 0;
        search::appendPassages(page, {text, u"KİTAP"_s, u"BAŞLIK"_s}, positions,
                               phrase < 0 ? std::nullopt : std::optional(phrase),
                               [&] { return ++passages < limit; });
        reference::passages(expected, text, u"KİTAP"_s, u"BAŞLIK"_s, positions, phrase, limit);
        ASSERT_EQ(page.toStdString(), expected.toStdString()) << text.toStdString();
    }
}

TEST(FastSearch, FindsEveryUnitInEverySpelling) {
    // One letter against every unit that there is, alone and behind another letter.
    for (const QString& word : {u"k"_s, u"i"_s, u"ı"_s, u"s"_s, u"â"_s, u"θ"_s, u"Å"_s, u"xk"_s, u"kx"_s}) {
        const search::Utf8Pattern pattern(word, Comparison::CaseInsensitive);
        for (char32_t c = 1; c < 0x10000; ++c) {
            if (QChar::isSurrogate(c)) continue;
            const QString text =
                u"..x"_s + QChar(static_cast<char16_t>(c)) + u"x, and more than sixteen bytes"_s;
            const std::string bytes = text.toStdString();
            const auto hit = pattern.find(bytes, 0);
            const qsizetype expected = text::find(text, word, 0, Comparison::CaseInsensitive);
            ASSERT_EQ(hit.has_value(), expected >= 0) << word.toStdString() << " in " << bytes;
            if (!hit) continue;
            ASSERT_EQ(hit->begin, static_cast<size_t>(text.first(expected).toUtf8().size()));
        }
    }
}
