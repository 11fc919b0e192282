// Paints the strips of "Dağılım", on the screen as in a file.
#pragma once

#include <QPainter>
#include <QRect>
#include <vector>

#include "search/study/strips.h"

namespace lirovan::search {

/// Where things are, in pixels.
class StripLayout {
  public:
    StripLayout(const std::vector<Lane>& lanes, const std::vector<Strip>& strips, const QFontMetrics& font,
                int width);

    int rowHeight() const { return laneHeight_ * lanes_ + Gap; }
    int legendHeight() const { return legendHeight_; }
    /// Of all rows, without the legend.
    int height() const { return rowHeight() * static_cast<int>(strips_.size()); }
    int labelWidth() const { return labelWidth_; }
    /// A row's strip; `top` is the row's.
    QRect strip(size_t row, int top) const;
    /// The lane at a height within a row; the nearest one.
    qint32 laneAt(int y) const;
    QRect lane(const QRect& strip, qint32 lane) const;
    /// The legend's entries, from its upper left corner.
    const std::vector<QRect>& legend() const { return legend_; }

    static constexpr int Gap = 14, Margin = 8, Swatch = 12;

  private:
    const std::vector<Strip>& strips_;
    qint64 longest_ = 0;
    int lanes_, laneHeight_, labelWidth_, room_, legendHeight_ = 0;
    std::vector<QRect> legend_;
};

/// The colour of a lane's ticks: that of the marks, dark enough to be seen on white.
QColor tickColour(const Lane& lane);

void paintLegend(QPainter& painter, const StripLayout& layout, const std::vector<Lane>& lanes);
/// One row with its name, its count and its ticks.
void paintRow(QPainter& painter, const StripLayout& layout, const std::vector<Lane>& lanes,
              const Strip& strip, size_t row, int top);

/// The whole picture as a file, by its suffix SVG or else PNG. The error says what could not be written.
platform::Result<void> savePicture(const QString& path, const QString& title, const std::vector<Lane>& lanes,
                                   const std::vector<Strip>& strips, const QFont& font);

}  // namespace lirovan::search
