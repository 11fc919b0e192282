// Book names and topic headings as they are shown: without markup, every word lower-cased behind its first
// letter.
#pragma once

#include <QString>
#include <QStringView>

namespace lirovan::text {

/// ClearValue — removes paragraph, bold, strong and line-break tags, leaving single blanks. Returns the text
/// without any such tag; `text` is left with the tags gone that had a blank beside them. One oddity is on
/// purpose: a
/// "</STRONG>" with a blank beside it vanishes together with the blank.
QString ClearValue(QString& text);

/// ClearTitle — the title for display: tags removed, trimmed, every word in lower case behind its first
/// letter (or behind an opening quote or bracket and the letter after it), each followed by one blank.
/// «ALLAH'IN İSİMLERİ» gives «Allah'ın İsimleri », «(KUR'AN)» gives «(Kur'an) », a title of tags alone gives
/// « ». `text` is left with the trimmed text without tags, its case unchanged.
QString ClearTitle(QString& text);

/// The same where only the title matters.
inline QString ClearTitle(QString&& text) {
    return ClearTitle(text);
}

/// ConvertTurkce — lowers exactly İ, I, Ğ, Ç, Ü, Ş and Ö: «IŞIK İÇİN» gives «ışıK içiN».
QString ConvertTurkce(QStringView text);

}  // namespace lirovan::text
