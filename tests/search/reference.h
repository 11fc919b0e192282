// The search as it is described, step by step and without any thought of speed: what the fast one is compared
// with. All positions are 1-based, 0 is "not found".
#pragma once

#include <QString>
#include <QStringList>
#include <algorithm>
#include <vector>

#include "search/pages/highlighter.h"
#include "search/runs/search_run.h"

namespace lirovan::reference {

using namespace Qt::StringLiterals;
using text::Comparison;

inline QString mid(const QString& text, qsizetype from, qsizetype length) {
    QString result;
    for (qsizetype i = std::max<qsizetype>(from, 1); i < from + length && i <= text.size(); ++i)
        result += text[i - 1];
    return result;
}

inline qsizetype find(const QString& text, const QString& what, qsizetype from,
                      Comparison comparison = Comparison::CaseInsensitive) {
    if (what.isEmpty()) return 0;
    for (qsizetype at = from; at + what.size() - 1 <= text.size(); ++at)
        if (text::equal(mid(text, at, what.size()), what, comparison)) return at;
    return 0;
}

inline bool isWholeWord(const QString& text, qsizetype position, qsizetype length) {
    const auto isLetter = [](const QString& c) {
        return c.isEmpty() || find(u"abcçdefgğhıijklmnoöprsştuüvyzqwxâûîôêİÖÜĞŞJÂÊÔÛÎ"_s, c, 1) != 0;
    };
    return !isLetter(mid(text, std::max<qsizetype>(position - 1, 1), 1)) &&
           !isLetter(mid(text, position + length, 1));
}

inline bool insideTag(const QString& text, qsizetype at) {
    return find(text, u"<"_s, at) > find(text, u">"_s, at);
}

inline bool repeats(const QString& word, const QStringList& list, qsizetype n, Comparison comparison) {
    return std::any_of(list.begin(), list.begin() + n, [&](const QString& earlier) {
        return text::equal(earlier.trimmed(), word.trimmed(), comparison);
    });
}

/// One topic's text under the words and options of a run.
struct Topic {
    const search::SearchRun& run;
    const search::SearchOptions& options;
    const QString& text;
    Comparison comparison = run.KarsilastirmaKipi;

    bool fits(qsizetype at, const QString& word) const {
        return !options.wholeWord || isWholeWord(text, at, word.size());
    }

    // The first accepted hit at or after `from`.
    qsizetype hit(const QString& word, qsizetype from) const {
        while (const qsizetype at = find(text, word, from, comparison)) {
            const bool outside = !insideTag(text, at);
            if (outside && fits(at, word)) return at;
            from = outside ? at + 1 : at + word.size();
        }
        return 0;
    }

    bool entryFound(qsizetype entry) const {
        if (hit(run.AramaKelimeleri[entry], 1)) return true;
        if (!options.allWords || entry >= std::ssize(run.KelimeVaryantlari)) return false;
        for (const QString& variant : run.KelimeVaryantlari[static_cast<size_t>(entry)])
            for (qsizetype at = 0; (at = find(text, variant, at + 1, comparison)) != 0;)
                if (fits(at, variant)) return true;
        return false;
    }

    bool matches() const {
        qsizetype found = 0;
        for (qsizetype i = 0; i < run.AramaKelimeleri.size(); ++i) found += entryFound(i);
        return options.allWords ? found > 0 && found == run.AramaKelimeleri.size() : found > 0;
    }

    /// Counts and appends to `record`. Book and topic decide about the shortcut of the large books.
    qint64 count(qint64 topic, qint64 book, QString& record) const {
        qint64 total = 0;
        const bool large = (topic >= 1197 && topic <= 1203) || topic == 1205;
        const auto countWord = [&](const QString& word) {
            qsizetype p = 1;
            while (const qsizetype q = hit(word, p)) {
                if (++total == 1) record += u"#"_s + QString::number(topic);
                record += u";"_s + QString::number(q);
                p = q + word.size();
                if (book != 33 && book != 34) continue;
                qint64 occurrences = 0;
                for (qsizetype o = 1; (o = find(text, word, o)) != 0; o += word.size()) ++occurrences;
                if (total > 1 && (large || occurrences > 333)) {
                    total += occurrences;
                    return;
                }
            }
        };
        const QStringList &words = run.AramaKelimeleri, &variants = run.TumVaryantlar;
        for (qsizetype i = 0; i < words.size(); ++i)
            if (!repeats(words[i], words, i, comparison)) countWord(words[i]);
        for (qsizetype i = 0; options.allWords && i < variants.size(); ++i)
            if (!repeats(variants[i], variants, i, comparison) &&
                !repeats(variants[i], words, words.size(), comparison))
                countWord(variants[i]);
        return total;
    }
};

inline search::HighlightedText highlight(QString text, const QStringList& words, Comparison comparison,
                                         bool wholeWord) {
    search::HighlightedText page;
    for (qsizetype k = 0; k < words.size(); ++k) {
        const QString& word = words[k];
        if (word.trimmed().isEmpty() || repeats(word, words, k, comparison)) continue;
        const QString colour = search::VurguRenkleri[page.colours.size() % 16].toString();
        page.colours.emplace_back(word, colour);
        if (word.contains(u'<')) continue;
        QString anchor = u"<a name='ggggittt'></a>"_s, blank;
        qsizetype p = 1;
        while (const qsizetype q = find(text, word, p, comparison)) {
            const QString around = mid(text, std::max<qsizetype>(1, q - 4), 8).toLower();
            if (insideTag(text, q) || find(text, u"<"_s, q) == 0 || around.contains(u"quot")) {
                p = q + word.size();
                continue;
            }
            if (wholeWord && !isWholeWord(text, q, word.size())) {
                p = q + 1;
                continue;
            }
            const QString marked =
                anchor +
                u"<input type='submit' name='ggggittt%1' style='width:0px; height:0px;'>"_s.arg(page.hits++) +
                u"<font color='#000080'><span style='background-color:"_s + blank + colour + u"'>"_s +
                mid(text, q, word.size());
            anchor.clear();
            blank = u" "_s;
            text = mid(text, 1, q - 1) + marked + u"</font></span>"_s + text.sliced(q - 1 + word.size());
            p = q + marked.size() + QStringView(u"</font>").size() + (word.size() == 1 ? 1 : 0);
        }
    }
    page.text = text;
    return page;
}

// The end of a passage for a hit at p.
inline qsizetype passageEnd(const QString& text, qsizetype p) {
    int counter = 0;
    for (qsizetype at = p; at <= text.size(); ++at) {
        if (mid(text, at, 4) != u"</P>" && mid(text, at, 4) != u"<br>") continue;
        counter += at - p > 200 ? 2 : 1;
        if (counter > 1 && find(text, u"</font></span>"_s, p, Comparison::Exact) < at) return at;
    }
    return text.size() + 1;
}

inline qsizetype passageStart(const QString& text, qsizetype p) {
    int met = 0;
    for (qsizetype at = p; at >= 1; --at)
        if (mid(text, at, 3) == u"<P>" || mid(text, at, 4) == u"<br>")
            if (++met == 2) return at;
    return 1;
}

/// Passages of one topic. `phraseLength` -1: mark words. Stops after `limit` passages.
inline void passages(QString& output, QString text, const QString& book, const QString& heading,
                     std::vector<qint64> positions, qsizetype phraseLength, int limit) {
    std::sort(positions.begin(), positions.end());
    qsizetype lastMarkEnd = 0;
    int marked = 0;
    for (qint64& position : positions) {
        position += 75 * marked;
        const QString rest = mid(text, position, text.size());
        if (position <= lastMarkEnd || rest.isEmpty()) continue;
        qsizetype end = 0;
        for (qsizetype o = 1; o <= rest.size() && end == 0; ++o)
            if (u" .,<-\"`;“”’"_s.contains(rest[o - 1])) end = o;
        const qsizetype length = phraseLength >= 0 ? phraseLength : end - 1;
        if (length <= 0) continue;
        const QString before = mid(text, 1, position - 1) +
                               u"<font color='#000080'><span style='background-color:#00FF00'>"_s +
                               mid(rest, 1, length) + u"</font></span>"_s;
        text = before + mid(rest, length + 1, rest.size());
        lastMarkEnd = before.size();
        ++marked;
    }

    qsizetype lastEnd = 0;
    for (size_t j = 0; j < positions.size(); ++j) {
        qsizetype continued = 0;
        for (size_t k = j; k < positions.size() && positions[k] < lastEnd; ++k) {
            continued = lastEnd;
            j = k;
        }
        const qsizetype start = continued == 0 ? passageStart(text, positions[j]) : continued;
        lastEnd = std::max<qsizetype>({lastEnd, passageEnd(text, positions[j]), 1});
        const QString type = u"<font face=Verdana size =2>"_s,
                      passage = type + mid(text, start, lastEnd - start);
        if (continued == 0)
            output += type + u"<font color='#000080'><b>>>>>>"_s + book + u" >>>>>"_s + heading +
                      u"</b></font></font><br>"_s + passage +
                      u"</font></font><br></u></p></b></i></strong><hr>"_s;
        else
            output = output.first(output.size() - 4) + passage +
                     u"</font><br></u></p></b></i></strong></font><hr>"_s;
        if (--limit == 0) return;
    }
}

}  // namespace lirovan::reference
