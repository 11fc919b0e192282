#include "platform/core/page_place.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

// Less of a text stands in it by chance.
constexpr qsizetype LeastPassage = 12;

double within(double value, double least, double most) {
    return std::clamp(std::isfinite(value) ? value : 0.0, least, most);
}

}  // namespace

QByteArray placeJson(const PagePlace& place) {
    return QJsonDocument(QJsonObject{{u"atTop"_s, place.atTop},
                                     {u"passage"_s, place.passage},
                                     {u"before"_s, place.before},
                                     {u"share"_s, within(place.share, 0, 1)},
                                     {u"gap"_s, within(place.gap, -1000, 1000)}})
        .toJson(QJsonDocument::Compact);
}

std::optional<PagePlace> placeFromJson(const QByteArray& json) {
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject()) return std::nullopt;
    const QJsonObject values = document.object();
    return PagePlace{values[u"atTop"_s].toBool(), values[u"passage"_s].toString().left(LongestPassage),
                     values[u"before"_s].toString().left(LongestPassage),
                     within(values[u"share"_s].toDouble(), 0, 1),
                     within(values[u"gap"_s].toDouble(), -1000, 1000)};
}

QString withoutBlanks(QStringView text) {
    QString result;
    result.reserve(text.size());
    for (const QChar unit : text)
        if (!unit.isSpace()) result += unit;
    return result;
}

qsizetype findPlace(const QString& textWithoutBlanks, const PagePlace& place) {
    const QString passage = withoutBlanks(place.passage);
    if (passage.isEmpty()) return -1;
    if (const qsizetype at = textWithoutBlanks.indexOf(place.before + passage); at >= 0)
        return at + place.before.size();
    if (const qsizetype at = textWithoutBlanks.indexOf(passage); at >= 0) return at;
    const qsizetype half = passage.size() / 2;
    if (half < LeastPassage) return -1;
    if (const qsizetype at = textWithoutBlanks.indexOf(passage.first(half)); at >= 0) return at;
    return textWithoutBlanks.indexOf(passage.sliced(half));
}

}  // namespace lirovan::platform
