#include "data/book_text.h"

#include <QRegularExpression>

namespace lirovan::data {

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LongestTitle = 1000;
}

QString storedTitle(QStringView title) {
    QString stored = title.toString().simplified().normalized(QString::NormalizationForm_C);
    for (const char16_t gone : {u'\u00AD', u'\u200B', u'\uFEFF'}) stored.remove(QChar(gone));
    stored.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    stored.replace(u'<', u'‹').replace(u'>', u'›').replace(u'’', u'\'');
    // What a page would take for a character reference.
    static const QRegularExpression reference(u"&(?=#|[A-Za-z][A-Za-z0-9]*;)"_s);
    stored.replace(reference, u"＆"_s);
    return stored.left(LongestTitle).trimmed();
}

std::vector<qint64> linkTargets(const platform::BookContent& book, const std::vector<bool>& left) {
    const auto& outline = book.outline();
    std::vector<qint64> targets(outline.size(), -1);
    const auto isLeft = [&](size_t i) { return i < left.size() && left[i]; };
    for (size_t i = outline.size(); i-- > 0;) {
        if (outline[i].isTopic() && !isLeft(i)) targets[i] = qint64(i);
        // Those below are known already.
        for (size_t below = i + 1;
             targets[i] < 0 && below < outline.size() && outline[below].depth > outline[i].depth; ++below)
            targets[i] = targets[below];
    }
    return targets;
}

}  // namespace lirovan::data
