#include "search/ui/context_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>

#include "search/pages/word_colours.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {
// More than a screen shows.
constexpr qsizetype KeptLines = 512;
}  // namespace

ContextModel::ContextModel(const data::Library& library, std::shared_ptr<const RunHits> run, QObject* parent)
    : QAbstractTableModel(parent),
      run_(std::move(run)),
      colours_(coloursOfEntries(run_->run)),
      lines_(library, run_->list),
      seen_(KeptLines) {}

void ContextModel::setHits(std::vector<quint32> hits) {
    beginResetModel();
    hits_ = std::move(hits);
    endResetModel();
}

const HitLine& ContextModel::line(int row) const {
    const quint32 hit = hits_[static_cast<size_t>(row)];
    if (const HitLine* known = seen_.object(hit)) return *known;
    auto* made = new HitLine(lines_.line(hit));
    seen_.insert(hit, made);
    return *made;
}

int ContextModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(hits_.size());
}

int ContextModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QVariant ContextModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const bool isWord = index.column() == Word;
    const auto text = [&]() -> QString {
        const HitLine& at = line(index.row());
        switch (index.column()) {
            case Left:
                return at.left;
            case Word:
                return at.hit;
            case Right:
                return at.right;
            default:
                return at.source;
        }
    };
    switch (role) {
        case Qt::DisplayRole:
            return text();
        case Qt::ToolTipRole:
            // A tag in a title is shown, not obeyed.
            return index.column() == Source ? QVariant(text().toHtmlEscaped()) : QVariant();
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignVCenter | (index.column() == Left ? Qt::AlignRight
                                                : isWord               ? Qt::AlignHCenter
                                                                       : Qt::AlignLeft));
        case Qt::BackgroundRole: {
            if (!isWord) return {};
            const auto word = static_cast<size_t>(line(index.row()).word);
            const QColor colour(word < colours_.size() ? colours_[word] : QString());
            return colour.isValid() ? QVariant(QBrush(colour)) : QVariant(QBrush(Qt::white));
        }
        case Qt::ForegroundRole:
            // On the marks' colours, whatever the palette.
            return isWord ? QVariant(QBrush(Qt::black)) : QVariant();
        case Qt::FontRole: {
            QFont font;
            font.setBold(true);
            return isWord ? QVariant(font) : QVariant();
        }
        default:
            return {};
    }
}

QVariant ContextModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    static const QStringList names{u"Sol"_s, u"Kelime"_s, u"Sağ"_s, u"Kaynak"_s};
    return names.value(section);
}

}  // namespace lirovan::search
