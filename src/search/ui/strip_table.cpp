#include "search/ui/strip_table.h"

#include "search/matching/search_query.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

void StripTable::setStrips(const QString& nameOfStrips, std::vector<Lane> lanes,
                           const std::vector<Strip>& strips) {
    beginResetModel();
    nameOfStrips_ = nameOfStrips;
    lanes_ = std::move(lanes);
    rows_.clear();
    for (const Strip& strip : strips)
        rows_.push_back({strip.author.isEmpty() ? strip.name : strip.author + u", "_s + strip.name,
                         strip.length, static_cast<qint64>(strip.hits.size()), strip.counts});
    endResetModel();
}

int StripTable::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int StripTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Fixed + static_cast<int>(lanes_.size());
}

QVariant StripTable::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Row& row = rows_[static_cast<size_t>(index.row())];
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (index.column() == Name ? Qt::AlignLeft : Qt::AlignRight));
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
        case Name:
            return row.name;
        case Length:
            return formatCount(row.length);
        case Hits:
            return formatCount(row.hits);
        default:
            return formatCount(row.counts[static_cast<size_t>(index.column() - Fixed)]);
    }
}

QVariant StripTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    switch (section) {
        case Name:
            return nameOfStrips_;
        case Length:
            return u"Uzunluk"_s;
        case Hits:
            return u"İsabet"_s;
        default:
            return section - Fixed < std::ssize(lanes_)
                       ? QVariant(lanes_[static_cast<size_t>(section - Fixed)].word)
                       : QVariant();
    }
}

}  // namespace lirovan::search
