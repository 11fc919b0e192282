// The strips of "Dağılım" as a table, for the keyboard and for who cannot see the picture.
#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "search/study/strips.h"

namespace lirovan::search {

class StripTable : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// `nameOfStrips`: the first column's title.
    void setStrips(const QString& nameOfStrips, std::vector<Lane> lanes, const std::vector<Strip>& strips);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    static constexpr int Name = 0, Length = 1, Hits = 2, Fixed = 3;
    struct Row {
        QString name;
        qint64 length, hits;
        std::vector<qint64> counts;
    };

    QString nameOfStrips_;
    std::vector<Lane> lanes_;
    std::vector<Row> rows_;
};

}  // namespace lirovan::search
