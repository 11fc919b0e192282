#include "browse/page_finding.h"

#include <QLocale>

namespace lirovan::browse {

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype LongestQuery = 80;
}

QString foundText(int count, int current, bool complete) {
    if (count == 0) return complete ? u"Bulunamadı"_s : u"Aranıyor…"_s;
    const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
    return turkish.toString(current) + u" / "_s + turkish.toString(count) + (complete ? u""_s : u"…"_s);
}

QString queryAtOpening(const QString& selection, const QString& before) {
    const QString text = selection.trimmed();
    return text.isEmpty() || text.size() > LongestQuery || text.contains(u'\n') ? before : text;
}

}  // namespace lirovan::browse
