// The strips of "Dağılım" on the screen: pointing shows a passage, a click opens it. Arrow keys go from hit
// to hit and from strip to strip, Enter opens.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <memory>
#include <optional>

#include "search/ui/strip_painter.h"

namespace lirovan::search {

class DistributionView : public QAbstractScrollArea {
    Q_OBJECT

  public:
    explicit DistributionView(QWidget* parent = nullptr);

    /// What pointing at a hit says.
    std::function<QString(const HitPlace& hit)> passage;

    void setStrips(std::vector<Lane> lanes, std::vector<Strip> strips);
    const std::vector<Lane>& lanes() const { return lanes_; }
    const std::vector<Strip>& strips() const { return strips_; }

  Q_SIGNALS:
    void hitWanted(const lirovan::search::HitPlace& place);
    void stripWanted(int row);  ///< a click on its name

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    void layOut();
    int topOf(size_t row) const;
    std::optional<size_t> rowAt(int y) const;
    std::optional<size_t> hitAt(size_t row, QPoint place) const;
    void goTo(size_t row, std::optional<size_t> hit);
    void goToNeighbour(int step);
    void showPassage(size_t row, size_t hit, QPoint place);
    void paintCurrent(QPainter& painter);

    std::vector<Lane> lanes_;
    std::vector<Strip> strips_;
    std::unique_ptr<StripLayout> layout_;
    size_t row_ = 0;
    std::optional<size_t> hit_;  // of that strip
};

}  // namespace lirovan::search
