#include "text/title.h"

#include <QList>
#include <algorithm>
#include <span>

#include "text/blanks.h"
#include "text/comparison.h"

namespace lirovan::text {
namespace {

struct Replacement {
    QStringView what;
    QStringView by;
};

// The order counts: each replacement works on the result of the one before it.
constexpr Replacement blankBefore[] = {
    {u" <br>", u" "},      {u" <P>", u" "},      {u" <p>", u" "},      {u" </p>", u" "}, {u" </P>", u" "},
    {u" <B>", u" "},       {u" </B>", u" "},     {u" <b>", u" "},      {u" </b>", u" "}, {u" <strong>", u" "},
    {u" </strong>", u" "}, {u" <STRONG>", u" "}, {u" </STRONG>", u""}, {u" <br>", u" "}, {u" <BR>", u" "},
};
constexpr Replacement blankAfter[] = {
    {u"<br> ", u" "},      {u"<P> ", u" "},      {u"<p> ", u" "},      {u"</p> ", u" "}, {u"</P> ", u" "},
    {u"<B> ", u" "},       {u"</B> ", u" "},     {u"<b> ", u" "},      {u"</b> ", u" "}, {u"<strong> ", u" "},
    {u"</strong> ", u" "}, {u"<STRONG> ", u" "}, {u"</STRONG> ", u""}, {u"<br> ", u" "}, {u" <BR>", u" "},
};
constexpr Replacement bareTags[] = {
    {u"<br>", u" "},      {u"<P>", u" "},      {u"<p>", u" "},       {u"</p>", u" "}, {u"</P>", u" "},
    {u"<B>", u" "},       {u"</B>", u" "},     {u"<b>", u" "},       {u"</b>", u" "}, {u"<strong>", u" "},
    {u"</strong>", u" "}, {u"<STRONG>", u" "}, {u"</STRONG>", u" "}, {u"<br>", u" "}, {u"<BR>", u" "},
};

void replaceAll(QString& text, std::span<const Replacement> replacements) {
    // Every pattern holds a tag; most titles hold none.
    if (!text.contains(u'<')) return;
    for (const Replacement& r : replacements)
        text.replace(r.what.data(), r.what.size(), r.by.data(), r.by.size(), Qt::CaseSensitive);
}

// How many characters at the head of a word keep their case.
qsizetype prefixLength(QStringView word) {
    if (word.startsWith(u"’’") || word.startsWith(u"‘‘")) return 3;
    if (!word.isEmpty() && QStringView(u",(\"«»").contains(word.front())) return 2;
    return 1;
}

}  // namespace

QString ClearValue(QString& text) {
    replaceAll(text, blankBefore);
    replaceAll(text, blankAfter);
    QString cleared = text;
    replaceAll(cleared, bareTags);
    return cleared;
}

QString ClearTitle(QString& text) {
    const QString cleared = ClearValue(text);
    text = trimBlanks(cleared).toString();

    QString title;
    title.reserve(text.size() + 1);
    for (const QStringView word : QStringView(text).split(u' ')) {
        const qsizetype prefix = std::min(prefixLength(word), word.size());
        title += word.first(prefix);
        title += lower(ConvertTurkce(word.sliced(prefix)));
        title += u' ';
    }
    return title;
}

QString ConvertTurkce(QStringView text) {
    QString result = text.toString();
    for (QChar& unit : result) switch (unit.unicode()) {
            case u'İ':
                unit = u'i';
                break;
            case u'I':
                unit = u'ı';
                break;
            case u'Ğ':
                unit = u'ğ';
                break;
            case u'Ç':
                unit = u'ç';
                break;
            case u'Ü':
                unit = u'ü';
                break;
            case u'Ş':
                unit = u'ş';
                break;
            case u'Ö':
                unit = u'ö';
                break;
            default:
                break;
        }
    return result;
}

}  // namespace lirovan::text
