#include "reference.h"

#include <algorithm>

namespace lirovan::reference {

using namespace Qt::StringLiterals;
using search::SearchOptions;
using search::SearchRun;

namespace {

QString mid(const QString& text, qsizetype from, qsizetype length) {
    QString result;
    for (qsizetype i = std::max<qsizetype>(from, 1); i < from + length && i <= text.size(); ++i)
        result += text[i - 1];
    return result;
}

bool insideTag(const QString& text, qsizetype at) {
    return find(text, u"<"_s, at, Comparison::CaseInsensitive) >
           find(text, u">"_s, at, Comparison::CaseInsensitive);
}

// The first accepted hit at or after `from`.
qsizetype acceptedHit(const QString& text, const QString& word, qsizetype from, Comparison comparison,
                      bool wholeWord) {
    qsizetype p = from;
    while (true) {
        const qsizetype q = find(text, word, p, comparison);
        if (q == 0) return 0;
        if (insideTag(text, q))
            p = q + word.size();
        else if (wholeWord && !isWholeWord(text, q, word.size()))
            p = q + 1;
        else
            return q;
    }
}

bool equalsEarlier(const QString& word, const QStringList& list, qsizetype n, Comparison comparison) {
    for (qsizetype i = 0; i < n; ++i)
        if (text::equal(list[i].trimmed(), word.trimmed(), comparison)) return true;
    return false;
}

bool variantFound(const QString& text, const QString& variant, Comparison comparison, bool wholeWord) {
    for (qsizetype q = find(text, variant, 1, comparison); q != 0; q = find(text, variant, q + 1, comparison))
        if (!wholeWord || isWholeWord(text, q, variant.size())) return true;
    return false;
}

bool entryFound(const SearchRun& run, const SearchOptions& options, const QString& text, qsizetype i) {
    const Comparison comparison = run.KarsilastirmaKipi;
    if (acceptedHit(text, run.AramaKelimeleri[i], 1, comparison, options.wholeWord)) return true;
    if (!options.allWords || i >= static_cast<qsizetype>(run.KelimeVaryantlari.size())) return false;
    for (const QString& variant : run.KelimeVaryantlari[static_cast<size_t>(i)])
        if (variantFound(text, variant, comparison, options.wholeWord)) return true;
    return false;
}

// The end of a passage for a hit at p.
qsizetype passageEnd(const QString& text, qsizetype p) {
    int counter = 0;
    for (qsizetype at = p; at <= text.size(); ++at) {
        if (mid(text, at, 4) != u"</P>" && mid(text, at, 4) != u"<br>") continue;
        ++counter;
        if (at - p > 200) ++counter;
        const qsizetype closing = find(text, u"</font></span>"_s, p, Comparison::Exact);
        if (counter > 1 && closing < at) return at;
    }
    return text.size() + 1;
}

qsizetype passageStart(const QString& text, qsizetype p) {
    int met = 0;
    for (qsizetype at = p; at >= 1; --at)
        if (mid(text, at, 3) == u"<P>" || mid(text, at, 4) == u"<br>")
            if (++met == 2) return at;
    return 1;
}

}  // namespace

qsizetype find(const QString& text, const QString& what, qsizetype from, Comparison comparison) {
    if (what.isEmpty()) return 0;
    for (qsizetype at = from; at + what.size() - 1 <= text.size(); ++at)
        if (text::equal(mid(text, at, what.size()), what, comparison)) return at;
    return 0;
}

bool isWholeWord(const QString& text, qsizetype position, qsizetype length) {
    const QString letters = u"abcçdefgğhıijklmnoöprsştuüvyzqwxâûîôêİÖÜĞŞJÂÊÔÛÎ"_s;
    const auto isLetter = [&](const QString& c) {
        return c.isEmpty() || find(letters, c, 1, Comparison::CaseInsensitive) != 0;
    };
    return !isLetter(mid(text, position == 1 ? 1 : position - 1, 1)) &&
           !isLetter(mid(text, position + length, 1));
}

bool matches(const SearchRun& run, const SearchOptions& options, const QString& text) {
    qsizetype found = 0;
    for (qsizetype i = 0; i < run.AramaKelimeleri.size(); ++i) {
        const bool hit = entryFound(run, options, text, i);
        if (!options.allWords && hit) return true;
        found = hit ? found + 1 : 0;
        if (options.allWords && found == run.AramaKelimeleri.size()) return true;
    }
    return false;
}

qint64 count(const SearchRun& run, const SearchOptions& options, const QString& text, qint64 topic,
             qint64 book, QString& record) {
    const Comparison comparison = run.KarsilastirmaKipi;
    qint64 total = 0;
    bool first = true;
    const auto countWord = [&](const QString& word) {
        qsizetype p = 1;
        while (const qsizetype q = acceptedHit(text, word, p, comparison, options.wholeWord)) {
            ++total;
            if (first) record += u"#"_s + QString::number(topic);
            first = false;
            record += u";"_s + QString::number(q);
            p = q + word.size();
            if (book != 33 && book != 34) continue;
            qint64 occurrences = 0;
            for (qsizetype o = find(text, word, 1, Comparison::CaseInsensitive); o != 0;
                 o = find(text, word, o + word.size(), Comparison::CaseInsensitive))
                ++occurrences;
            const bool large = (topic >= 1197 && topic <= 1203) || topic == 1205;
            if (total > 1 && (large || occurrences > 333)) {
                total += occurrences;
                return;
            }
        }
    };
    const QStringList& words = run.AramaKelimeleri;
    for (qsizetype i = 0; i < words.size(); ++i)
        if (!equalsEarlier(words[i], words, i, comparison)) countWord(words[i]);
    if (options.allWords)
        for (qsizetype i = 0; i < run.TumVaryantlar.size(); ++i)
            if (!equalsEarlier(run.TumVaryantlar[i], run.TumVaryantlar, i, comparison) &&
                !equalsEarlier(run.TumVaryantlar[i], words, words.size(), comparison))
                countWord(run.TumVaryantlar[i]);
    return total;
}

Page highlight(QString text, const QStringList& words, Comparison comparison, bool wholeWord) {
    const QStringList colours =
        u"#00FF00 #00FFFF #FFFF00 #FD7C57 #918BF8 #FB537D #FFB366 #C1F0C8 #FDA2A2 #FECDA0 #FEE7A0 #DFFEA0 "
        u"#BFFEA0 "
        "#A0FEB8 #A0FEE9 #FF9FA2"_s.split(u' ');
    Page page;
    int c = 0;
    for (qsizetype k = 0; k < words.size(); ++k) {
        const QString& word = words[k];
        if (word.trimmed().isEmpty() || equalsEarlier(word, words, k, comparison)) continue;
        if (c > 15) c = 0;
        bool first = true;
        qsizetype p = 1;
        while (const qsizetype q = find(text, word, p, comparison)) {
            const QString around = mid(text, std::max<qsizetype>(1, q - 4), 8).toLower();
            if (insideTag(text, q) || find(text, u"<"_s, q, Comparison::Exact) == 0 ||
                around.contains(u"quot")) {
                p = q + word.size();
                continue;
            }
            if (wholeWord && !isWholeWord(text, q, word.size())) {
                p = q + 1;
                continue;
            }
            const QString hit = mid(text, q, word.size());
            const QString number = QString::number(page.hits++);
            const QString opening =
                first ? u"<a name='ggggittt'></a><input type='submit' name='ggggittt"_s + number +
                            u"' style='width:0px; height:0px;'><font color='#000080'><span "
                            "style='background-color:"_s +
                            colours[c] + u"'>"_s
                      : u"<input type='submit' name='ggggittt"_s + number +
                            u"' style='width:0px; height:0px;'><font color='#000080'><span "
                            "style='background-color: "_s +
                            colours[c] + u"'>"_s;
            first = false;
            text =
                mid(text, 1, q - 1) + opening + hit + u"</font></span>"_s + text.sliced(q - 1 + word.size());
            p = q + opening.size() + hit.size() + QStringView(u"</font>").size() + (word.size() == 1 ? 1 : 0);
        }
        page.colours.emplace_back(word, colours[c]);
        ++c;
    }
    page.text = text;
    return page;
}

void passages(QString& output, QString text, const QString& book, const QString& heading,
              std::vector<qint64> positions, qsizetype phraseLength, int limit) {
    std::sort(positions.begin(), positions.end());
    const QString opening = u"<font color='#000080'><span style='background-color:#00FF00'>"_s;
    const QString closing = u"</font></span>"_s;
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
        const QString before = mid(text, 1, position - 1) + opening + mid(rest, 1, length) + closing;
        text = before + mid(rest, length + 1, rest.size());
        lastMarkEnd = before.size();
        ++marked;
    }

    qsizetype lastEnd = 0;
    const auto m = positions.size();
    for (size_t j = 0; j < m; ++j) {
        qsizetype continued = 0;
        for (size_t k = j; k < m && positions[k] < lastEnd; ++k) {
            continued = lastEnd;
            j = k;
        }
        const qsizetype start = continued == 0 ? passageStart(text, positions[j]) : continued;
        lastEnd = std::max(lastEnd, passageEnd(text, positions[j]));
        if (lastEnd == 0) lastEnd = 1;
        if (continued == 0) {
            output += u"<font face=Verdana size =2><font color='#000080'><b>>>>>>"_s + book + u" >>>>>"_s +
                      heading + u"</b></font></font><br><font face=Verdana size =2>"_s +
                      mid(text, start, lastEnd - start) +
                      u"</font></font><br></u></p></b></i></strong><hr>"_s;
        } else {
            output = output.first(output.size() - 4) + u"<font face=Verdana size =2>"_s +
                     mid(text, start, lastEnd - start) + u"</font><br></u></p></b></i></strong></font><hr>"_s;
        }
        if (--limit == 0) return;
    }
}

}  // namespace lirovan::reference
