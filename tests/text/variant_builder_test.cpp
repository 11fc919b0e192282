#include "text/variant_builder.h"

#include <gtest/gtest.h>

using namespace lirovan::text;

TEST(VariantBuilder, TakesWordsOutOfTheirSurroundings) {
    const std::pair<QStringView, const char*> cases[] = {
        {u"<p>hakîkat ve îman</p>", "hakikat|hakîkat iman|îman"},
        {u"Kur'ân'ı Kur’ân", "Kuranı|Kur`ân`ı Kuran|Kur’ân"},
        {u"îman' hâl’ rûh`", "hal|hâl ruh|rûh iman|îman"},  // by letter, then by place; one mark goes
        {u"'îman'", "iman|`îman`"},                         // two marks stay in the text form
        {u"\"îman\" “hâl”", "hal|hâl iman|îman"},
        {u"“hâl", "hal|“hâl"},
        {u"&quot;îman&quot;", "iman|îman"},
        {u"a\tîman\r\nhâl\u00A0x «rûh»", "hal|hâl ruh|rûh iman|îman"},
        {u"ahlâk-ı (hasenê)", "ahlak|ahlâk hasene|hasenê"},
        {u"hâlâ", "hala|hâlâ hala|hâlâ"},
        {u"sade metin", ""},
    };
    for (const auto& [text, expected] : cases) {
        QString lines;
        for (const WordVariant& v : extractVariants(text)) lines += v.written + u'|' + v.textForm + u' ';
        EXPECT_EQ(lines.trimmed().toStdString(), expected);
    }
}

TEST(VariantBuilder, PassesOverRunsThatAreTooLongForAWord) {
    const QString longest = QString(MaxVariantLength - 1, u'x') + u'â';
    EXPECT_EQ(extractVariants(longest).size(), 1u);
    EXPECT_TRUE(extractVariants(u'y' + longest).empty());
    EXPECT_TRUE(extractVariants(QString(200'000, u'â')).empty());  // and does so in linear time
}
