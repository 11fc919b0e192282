// The fast search against the plain one, on random texts and queries. The seed is printed; LIROVAN_SEED
// repeats a run.
#include <gtest/gtest.h>

#include <map>

#include "random_text.h"
#include "reference.h"
#include "search/matching/scan_ahead.h"
#include "search/matching/search_query.h"
#include "search/matching/stored_text.h"
#include "search/matching/topic_scanner.h"
#include "search/pages/passages.h"
#include "support/library_file.h"

using namespace lirovan;
using namespace Qt::StringLiterals;
using test::Marks;
using test::Random;
using test::randomText;
using test::Words;
using text::Comparison;

namespace {

struct Case {
    search::SearchOptions options;
    search::SearchRun run;
    QString text;

    explicit Case(Random& random) : text(randomText(random)) {
        options = {random.oneIn(2), random.oneIn(2), random.oneIn(2), random.oneIn(5), false};
        run.request.options = options;
        run.KarsilastirmaKipi = options.caseSensitive ? Comparison::Exact : Comparison::CaseInsensitive;
        // Sometimes so many that words are sieved.
        QStringList& list = run.AramaKelimeleri;
        for (int i = random.oneIn(4) ? 20 + random.below(20) : 1 + random.below(4); i > 0; --i)
            list += random.from(Words);
        if (!options.caseSensitive) list += search::IVariants(list);
        // The table gives words that compare equal the same variants.
        std::map<QString, QStringList> table;
        for (const QString& word : list) {
            const auto [row, isNew] = table.try_emplace(options.caseSensitive ? word : text::folded(word));
            while (isNew && random.oneIn(3)) row->second += random.from(Words);
            run.TumVaryantlar += row->second;
            run.KelimeVaryantlari.push_back(row->second);
        }
        if (random.oneIn(20)) list += QString();
        // A hit at the very first and at the very last character.
        if (random.oneIn(4)) text.prepend(list.first());
        if (random.oneIn(4)) text.append(list.first());
    }
};

}  // namespace

TEST(FastSearch, MatchesCountsAndMarksAsTheReferenceDoes) {
    Random random;
    for (int round = 0; round < 3000; ++round) {
        const Case c(random);
        const std::string bytes = c.text.toStdString();
        SCOPED_TRACE((c.run.AramaKelimeleri + c.run.TumVaryantlar).join(u'|').toStdString() + '\n' + bytes);
        const search::TopicScanner scanner(c.run);
        const reference::Topic plain{c.run, c.options, c.text};
        ASSERT_EQ(scanner.matches(bytes), plain.matches());

        const qint64 topic = random.from(QList{7, 1199, 40000}), book = random.from(QList{1, 33, 34});
        QString record = u"$"_s, expectedRecord = u"$"_s;
        const qint64 count = scanner.BulKelimeSay(bytes, {{topic}, {book}}, {record}, [] { return true; });
        ASSERT_EQ(count, plain.count(topic, book, expectedRecord));
        ASSERT_EQ(record.toStdString(), expectedRecord.toStdString());

        const QStringList words = search::wordsToMark(c.run);
        const auto page = search::markHits(c.text, words, c.run);
        const auto expected =
            reference::highlight(c.text, words, c.run.KarsilastirmaKipi, c.options.wholeWord);
        ASSERT_EQ(page.text.toStdString(), expected.text.toStdString());
        ASSERT_EQ(page.hits, expected.hits);
        ASSERT_EQ(page.colours, expected.colours);
    }
}

TEST(StoredText, IsProperWhereTheToolkitSaysSo) {
    Random random;
    const QByteArray characters[] = {"a", "abc def", "ş", "ığüş", "“", "\u20AC", "😀", QByteArray(40, 'x')};
    const QByteArray faults[] = {
        "\x80",         "\xC5", "\xE2\x80", "\xC0\xAF",    "\xED\xA0\x80", "\xF4\x90\x80\x80",
        "\xF0\x9F\x98", "\xFF", "\xC1\x81", "\xC5\x9F\x9F"};
    for (int round = 0; round < 20'000; ++round) {
        QByteArray text;
        for (int pieces = random.below(60); pieces > 0; --pieces) text += random.from(characters);
        if (random.oneIn(2)) text.insert(random.below(int(text.size()) + 1), random.from(faults));
        const std::string_view bytes(text.constData(), size_t(text.size()));
        ASSERT_EQ(search::properUtf8(bytes).isNull(), QByteArrayView(text).isValidUtf8())
            << text.toPercentEncoding().toStdString();
    }
}

TEST(FastSearch, CountsManyOccurrencesInALargeBookByTheShortcut) {
    for (const int times : {333, 334}) {
        search::SearchRun run;
        run.KarsilastirmaKipi = Comparison::CaseInsensitive;
        run.AramaKelimeleri = {u"su"_s};
        run.KelimeVaryantlari = {{}};
        const QString text = u"Su, "_s.repeated(times);
        QString record, expected;
        const qint64 count = search::TopicScanner(run).BulKelimeSay(text.toStdString(), {{7}, {33}}, {record},
                                                                    [] { return true; });
        EXPECT_EQ(count, (reference::Topic{run, {}, text}.count(7, 33, expected)));
        EXPECT_EQ(record, expected);
    }
}

TEST(FastSearch, FindsOnManyThreadsWhatTheReferenceFinds) {
    Random random;
    for (int round = 0; round < 3; ++round) {
        const Case c(random);
        test::LibraryFile file;
        file.execute(u"BEGIN").author(1, u"a").book(1, 1, u"b");
        std::vector<qint64> rows;
        std::vector<bool> expected;
        for (int i = 0; i < 600; ++i) {
            rows.push_back(i + 1);
            const QString text = random.oneIn(3) ? c.text : randomText(random);
            expected.push_back(reference::Topic{c.run, c.options, text}.matches());
            file.topic(rows.back(), 1, u"k", text);
        }
        file.execute(u"DELETE FROM tbl_Konu WHERE rowid%7=0");  // a row that is gone matches nothing
        for (size_t i = 6; i < expected.size(); i += 7) expected[i] = false;
        const data::Library library = file.execute(u"COMMIT").open();
        const search::TopicScanner scanner(c.run);
        search::KeptTexts kept(library);
        kept.refresh();
        // Without kept texts, while they are being kept, and from them.
        for (search::KeptTexts* texts : {static_cast<search::KeptTexts*>(nullptr), &kept, &kept}) {
            search::ScanAhead scan(library, scanner, rows, texts);
            for (size_t i = 0; i < rows.size(); ++i) {
                while (!scan.ready(rows[i])) {
                }
                ASSERT_EQ(*scan.matches(rows[i]), expected[i]) << i;
            }
            const search::ScanAhead stopped(library, scanner, rows, texts);
        }
    }
}

TEST(FastSearch, SummarisesAsTheReferenceDoes) {
    Random random;
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
        for (char16_t c = 1; c != 0; ++c) {
            if (QChar::isSurrogate(c)) continue;
            const QString text = u"..x"_s + QChar(c) + u"x, and more than sixteen bytes"_s;
            const std::string bytes = text.toStdString();
            const auto hit = pattern.find(bytes, 0);
            const qsizetype expected = text::find(text, word, 0, Comparison::CaseInsensitive);
            ASSERT_EQ(hit.has_value(), expected >= 0) << word.toStdString() << " in " << bytes;
            if (!hit) continue;
            ASSERT_EQ(hit->begin, static_cast<size_t>(text.first(expected).toUtf8().size()));
        }
    }
}
