// The lines of the window "Bağlam Listesi" as an item model. A line's texts are read when it is seen.
#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <memory>
#include <vector>

#include "search/study/hit_lines.h"

namespace lirovan::search {

class ContextModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { Left, Word, Right, Source, Columns };

    /// `library` outlives the model.
    ContextModel(const data::Library& library, std::shared_ptr<const RunHits> run, QObject* parent = nullptr);

    /// Which hits are shown, in which order.
    void setHits(std::vector<quint32> hits);
    const std::vector<quint32>& hits() const { return hits_; }
    const HitLine& line(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::shared_ptr<const RunHits> run_;
    std::vector<QString> colours_;  // by entry
    std::vector<quint32> hits_;
    mutable HitLines lines_;
    mutable QCache<quint32, HitLine> seen_;
};

}  // namespace lirovan::search
