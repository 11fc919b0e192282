// Plain twins of what the search does for someone who studies: sound forms, ratios, contexts.
#pragma once

#include <QMap>
#include <QRegularExpression>

#include "reference.h"

namespace lirovan::reference {

/// The forms of a word; of the irregular ones only those that the tests use.
inline QStringList forms(const QString& word) {
    static const QMap<QString, QString> irregular{{u"hak"_s, u"hakk"_s}, {u"burun"_s, u"burn"_s}};
    QStringList forms;
    const QString soft = QMap<QChar, QString>{{u'p', u"b"_s}, {u't', u"d"_s}, {u'k', u"ğg"_s}}.value(
        word.isEmpty() ? QChar() : word.back());
    if (word.size() > 1)
        for (const QChar letter : word.endsWith(u"nk") ? u"g"_s : soft) forms += word.chopped(1) + letter;
    if (irregular.contains(word)) forms += irregular[word];
    return forms;
}

/// Every hit of a word and its forms in one text, each place once.
inline QList<qint64> hitsOfWord(const Topic& topic, const QString& word, const QStringList& typed) {
    QList<qint64> places;
    QStringList entries{word};
    for (const QString& form : forms(word))
        if (!typed.contains(form)) entries += form;
    for (const QString& entry : entries) {
        qsizetype p = 1;
        while (const qsizetype q = topic.hit(entry, p)) {
            if (!places.contains(q)) places += q;
            p = q + entry.size();
        }
    }
    return places;
}

inline bool wordFound(const Topic& topic, const QString& word) {
    const QStringList all = forms(word) + QStringList(word);
    return std::any_of(all.begin(), all.end(),
                       [&](const QString& entry) { return topic.hit(entry, 1) != 0; });
}

inline const QRegularExpression& markup() {
    static const QRegularExpression tag(u"<!--.*?-->|<[A-Za-z/!?][^<>]*>|&#?[A-Za-z0-9]{1,30};"_s,
                                        QRegularExpression::DotMatchesEverythingOption);
    return tag;
}

inline qint64 wordsOfText(QString text) {
    qint64 words = 0;
    for (const QString& piece :
         text.replace(markup(), u" "_s).split(QRegularExpression(u"[\\x00-\\x20\\s\\x{2028}]+"_s)))
        words += std::any_of(piece.begin(), piece.end(), [](QChar c) { return c.isLetterOrNumber(); });
    return words;
}

/// The text without markup, blanks joined. `joined`: something stands before it that does not end in a blank.
inline QString plain(const QString& text) {
    QString result;
    const auto blank = [&] {
        if (!result.isEmpty() && !result.endsWith(u' ')) result += u' ';
    };
    for (qsizetype at = 0; at < text.size();) {
        const auto match = markup().match(text, at, QRegularExpression::NormalMatch,
                                          QRegularExpression::AnchorAtOffsetMatchOption);
        const QString token = match.hasMatch() ? match.captured() : QString(text[at]);
        at += token.size();
        static const QRegularExpression inlineTag(u"^</?(a|i|I|font|span|sup)(?![A-Za-z0-9])"_s);
        if (token == u"&quot;")
            result += u'"';
        else if (token == u"&nbsp;" || token == u" " ||
                 (token.startsWith(u'<') && token.size() > 1 && !inlineTag.match(token).hasMatch()))
            blank();
        else if (token.size() == 1 || token.startsWith(u'&'))
            result += token;
    }
    return result;
}

}  // namespace lirovan::reference
