#include "text/sound_changes.h"

#include <gtest/gtest.h>

#include <QSet>

#include "text/comparison.h"
#include "text/irregular_stems.h"

using namespace lirovan::text;

TEST(SoundForms, SoftenTheLastLetterAndKnowIrregularStems) {
    const std::pair<QStringView, QStringView> cases[] = {
        {u"kitap", u"kitab"},
        {u"Ağaç", u"Ağac"},
        {u"KANAT", u"KANAD"},
        {u"renk", u"reng"},
        {u"RENK", u"RENG"},
        {u"çocuk", u"çocuğ|çocug"},
        {u"hak", u"hağ|hag|hakk"},
        {u"Burun", u"Burn"},
        {u"BURUN", u"BURN"},
        {u"İSİM", u"İSM"},
        {u"İsim", u"İsm"},
        {u"sır", u"sırr"},
        {u"kayıp", u"kayıb|kayb"},
        {u"emîr", u""},
        {u"kitâp", u"kitâb"},
        {u"derin akıl", u"derin akl"},
        {u"kitap ", u""},
        {u"ev", u""},
        {u"k", u""},
        {u"", u""},
        {u"satır", u""},
        {u"nk", u"ng"},
        {u"&quot;", u""},
        {u"kasıt", u"kasıd|kast|kasd"},
    };
    for (const auto& [word, forms] : cases)
        EXPECT_EQ(soundForms(word).join(u'|'), forms) << word.toUtf8().constData();
}

TEST(SoundForms, HaveAnExampleForEveryIrregularStem) {
    QSet<QString> words, examples;
    for (const IrregularStem& row : IrregularStems) {
        const auto trace = row.example.toUtf8();
        words += row.word.toString();
        EXPECT_FALSE(examples.contains(row.example.toString())) << trace.constData();
        examples += row.example.toString();
        EXPECT_TRUE(soundForms(row.word).contains(row.stem)) << trace.constData();
        // The stem is what the example needs: at least the case ending stands behind it, beginning with a
        // vowel.
        ASSERT_TRUE(row.example.startsWith(row.stem)) << trace.constData();
        ASSERT_GT(row.example.size(), row.stem.size()) << trace.constData();
        EXPECT_TRUE(QStringView(u"aeıioöuü").contains(row.example[row.stem.size()])) << trace.constData();
        EXPECT_EQ(row.word, folded(row.word)) << trace.constData();
        // Either the last vowel is gone, or the last letter stands twice; a final consonant may be soft.
        const bool doubled = row.stem.size() == row.word.size() + 1 &&
                             row.stem.back() == row.stem[row.stem.size() - 2] &&
                             row.stem.first(row.word.size() - 1) == row.word.chopped(1);
        const bool lost = row.stem.size() == row.word.size() - 1 &&
                          row.stem.first(row.word.size() - 3) == row.word.first(row.word.size() - 3);
        EXPECT_TRUE(doubled || lost) << trace.constData();
    }
    EXPECT_GE(words.size(), 120);
}
