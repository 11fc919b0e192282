#include "browse/topic_link.h"

#include <QStringList>
#include <QUrl>

namespace lirovan::browse {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestPassage = 100;
const QString Scheme = u"konu:"_s, Place = u"?yer="_s;

}  // namespace

QString topicAddress(const TopicLink& link) {
    QString address = Scheme + QString::number(link.topic.value);
    QString passage = link.passage.simplified();
    if (passage.size() > LongestPassage) {
        // A word that is cut off would not be found as one, but its letters are.
        passage.truncate(LongestPassage);
        if (passage.back().isHighSurrogate()) passage.chop(1);
    }
    if (!passage.isEmpty()) address += Place + QString::fromLatin1(QUrl::toPercentEncoding(passage));
    return address;
}

std::optional<TopicLink> topicLinkOf(const QString& address) {
    if (!address.startsWith(Scheme)) return std::nullopt;
    const qsizetype end = address.indexOf(Place);
    bool isNumber = false;
    const qint64 topic = address.sliced(Scheme.size(), (end < 0 ? address.size() : end) - Scheme.size())
                             .section(u'#', 0, 0)
                             .toLongLong(&isNumber);
    if (!isNumber) return std::nullopt;
    TopicLink link{data::TopicId{topic}, {}};
    if (end >= 0) link.passage = QUrl::fromPercentEncoding(address.sliced(end + Place.size()).toLatin1());
    return link;
}

QString sourceLine(const QString& author, const QString& book, const QString& heading) {
    QStringList parts;
    for (QString part : {author, book, heading}) {
        part.replace(u"<br>"_s, u" "_s, Qt::CaseInsensitive);
        part = part.simplified();
        if (!part.isEmpty()) parts << part;
    }
    return parts.join(u", "_s);
}

}  // namespace lirovan::browse
