// What a line of a list of hits says: read when the line is seen.
#pragma once

#include <QCache>
#include <QHash>
#include <QString>
#include <optional>

#include "search/study/contexts.h"
#include "search/study/hit_list.h"

namespace lirovan::search {

struct HitLine {
    QString left, hit, right;
    QString source;   ///< "Yazar, Kitap, Konu"; says so where the topic is gone
    qint32 word = 0;  ///< the entry that the hit counts for
};

class HitLines {
  public:
    /// Characters on each side of a hit.
    static constexpr qsizetype Width = 90;

    /// Both outlive this object. From one thread, the one that has the library's connection.
    HitLines(const data::Library& library, const HitList& list);

    HitLine line(quint32 hit);
    QString source(size_t topic);
    const data::Library& library() const { return library_; }

  private:
    const TopicContexts* contextsOf(size_t topic);

    const data::Library& library_;
    const HitList& list_;
    QCache<size_t, TopicContexts> contexts_;
    QHash<size_t, QString> sources_;
};

/// A title as it stands in a line: tags and marks of order are gone.
QString plainTitle(QString title);

/// "Yazar, Kitap, Konu" of a topic under one of its headings.
QString sourceOf(const data::Library& library, data::TopicId topic, qint64 headingRow);

/// A line as it is copied: «… sol isabet sağ … (Yazar, Kitap, Konu)».
QString copiedLine(const HitLine& line);

}  // namespace lirovan::search
