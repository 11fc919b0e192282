#include "search/pages/hit_anchor.h"

#include <QString>

#include "search/pages/highlighter.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

// The pieces that marking puts in; see highlighter.cpp.
const QString Button = u"<input type='submit' name='"_s + HitAnchor.toString();
const QString ButtonEnd = u"'>"_s;  // of the span that follows the button
const QString First = u"<a name='"_s + HitAnchor.toString() + u"'></a>"_s;
const QString MarkEnd = u"</font></span>"_s;

}  // namespace

std::optional<qint32> anchorOf(QStringView stored, QStringView marked, qint64 position) {
    std::optional<qint32> best;
    qsizetype at = 0;  // in the stored text
    int open = 0;      // marks
    for (qsizetype i = 0; i < marked.size();) {
        const QStringView rest = marked.sliced(i);
        if (rest.front() == u'<') {
            if (rest.startsWith(Button)) {
                // Marks within a mark belong to the same place.
                if (best && at >= position) return best;
                const qsizetype number = Button.size();
                const qsizetype numberEnd = rest.indexOf(u'\'', number);
                const qsizetype end = rest.indexOf(ButtonEnd, rest.indexOf(u"background-color:", numberEnd));
                if (numberEnd < 0 || end < 0) break;
                best = rest.sliced(number, numberEnd - number).toInt();
                i += end + ButtonEnd.size();
                ++open;
                continue;
            }
            if (rest.startsWith(First)) {
                i += First.size();
                continue;
            }
            // The text may have such tags of its own, outside of marks.
            if (open > 0 && rest.startsWith(MarkEnd)) {
                i += MarkEnd.size();
                --open;
                continue;
            }
        }
        if (at >= stored.size()) break;
        ++at;
        ++i;
    }
    return best;
}

}  // namespace lirovan::search
