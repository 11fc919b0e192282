#include "search/ui/distribution_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {
// Pixels between the pointer and a tick that is still meant.
constexpr double Reach = 4;
}  // namespace

DistributionView::DistributionView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    layOut();
}

void DistributionView::setStrips(std::vector<Lane> lanes, std::vector<Strip> strips) {
    lanes_ = std::move(lanes);
    strips_ = std::move(strips);
    row_ = 0;
    hit_.reset();
    verticalScrollBar()->setValue(0);
    layOut();
    viewport()->update();
}

void DistributionView::layOut() {
    layout_ = std::make_unique<StripLayout>(lanes_, strips_, fontMetrics(), viewport()->width());
    const int room = viewport()->height() - layout_->legendHeight();
    verticalScrollBar()->setRange(0, std::max(0, layout_->height() - room));
    verticalScrollBar()->setPageStep(std::max(1, room));
    verticalScrollBar()->setSingleStep(layout_->rowHeight());
}

int DistributionView::topOf(size_t row) const {
    return layout_->legendHeight() + static_cast<int>(row) * layout_->rowHeight() -
           verticalScrollBar()->value();
}

std::optional<size_t> DistributionView::rowAt(int y) const {
    if (y < layout_->legendHeight()) return std::nullopt;
    const auto row = static_cast<size_t>((y - layout_->legendHeight() + verticalScrollBar()->value()) /
                                         layout_->rowHeight());
    return row < strips_.size() ? std::optional(row) : std::nullopt;
}

std::optional<size_t> DistributionView::hitAt(size_t row, QPoint place) const {
    const QRect strip = layout_->strip(row, topOf(row));
    return hitNear(strips_[row], strip.width(), place.x() - strip.left() + 0.5, Reach,
                   layout_->laneAt(place.y() - topOf(row)));
}

void DistributionView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), Qt::white);
    const QRect rows = viewport()->rect().adjusted(0, layout_->legendHeight(), 0, 0);
    painter.setClipRect(rows);
    for (size_t row = rowAt(rows.top()).value_or(0); row < strips_.size() && topOf(row) < rows.bottom();
         ++row)
        paintRow(painter, *layout_, lanes_, strips_[row], row, topOf(row));
    if (hasFocus() && !strips_.empty()) paintCurrent(painter);
    painter.setClipping(false);
    paintLegend(painter, *layout_, lanes_);
}

void DistributionView::paintCurrent(QPainter& painter) {
    const QRect row(0, topOf(row_), viewport()->width(), layout_->rowHeight());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
    painter.drawRect(row.adjusted(1, 1, -2, -2));
    if (!hit_) return;
    const Strip& strip = strips_[row_];
    const QRect place = layout_->strip(row_, topOf(row_));
    const double share =
        static_cast<double>(strip.hits[*hit_].position - 1) / static_cast<double>(strip.length);
    const int x = place.left() + static_cast<int>(share * place.width());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const int half = StripLayout::Gap / 2 - 1;
    painter.drawPolygon(QPolygon({QPoint(x - half, place.top() - half),
                                  QPoint(x + half + 1, place.top() - half), QPoint(x + 1, place.top())}));
}

void DistributionView::resizeEvent(QResizeEvent*) {
    layOut();
}

void DistributionView::mousePressEvent(QMouseEvent* event) {
    const auto row = rowAt(event->position().toPoint().y());
    if (!row || event->button() != Qt::LeftButton) return;
    const QPoint place = event->position().toPoint();
    if (place.x() <= layout_->labelWidth() + StripLayout::Margin) {
        goTo(*row, std::nullopt);
        Q_EMIT stripWanted(static_cast<int>(*row));
        return;
    }
    const auto hit = hitAt(*row, place);
    goTo(*row, hit);
    if (hit) Q_EMIT hitWanted(placeOf(strips_[*row], *hit));
}

bool DistributionView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip || event->type() == QEvent::MouseMove) {
        const auto* help = event->type() == QEvent::ToolTip ? static_cast<QHelpEvent*>(event) : nullptr;
        const QPoint place = help ? help->pos() : static_cast<QMouseEvent*>(event)->position().toPoint();
        const auto row = rowAt(place.y());
        const bool inLabel = place.x() <= layout_->labelWidth() + StripLayout::Margin;
        const auto hit = row && !inLabel ? hitAt(*row, place) : std::nullopt;
        viewport()->setCursor(hit || (row && inLabel) ? Qt::PointingHandCursor : Qt::ArrowCursor);
        if (help && hit) {
            showPassage(*row, *hit, help->globalPos());
        } else if (help && row && inLabel) {
            const Strip& strip = strips_[*row];
            QToolTip::showText(
                help->globalPos(),
                (strip.author.isEmpty() ? strip.name : strip.author + u", "_s + strip.name).toHtmlEscaped(),
                viewport());
        } else if (!hit) {
            QToolTip::hideText();
        }
        if (help) return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void DistributionView::showPassage(size_t row, size_t hit, QPoint place) {
    if (!passage) return;
    const QString text = passage(placeOf(strips_[row], hit)).toHtmlEscaped();
    // As HTML it is wrapped.
    QToolTip::showText(place, u"<p>"_s + QString(text).replace(u'\n', u"<br>"_s) + u"</p>"_s, viewport());
}

void DistributionView::goTo(size_t row, std::optional<size_t> hit) {
    row_ = row;
    hit_ = hit;
    const int top = static_cast<int>(row) * layout_->rowHeight();
    const int room = viewport()->height() - layout_->legendHeight();
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(std::min(top, std::max(bar->value(), top + layout_->rowHeight() - room)));
    viewport()->update();
}

void DistributionView::goToNeighbour(int step) {
    const auto count = static_cast<qint64>(strips_[row_].hits.size());
    if (count == 0) return;
    const qint64 from = hit_ ? static_cast<qint64>(*hit_) + step : step > 0 ? 0 : count - 1;
    goTo(row_, static_cast<size_t>(std::clamp<qint64>(from, 0, count - 1)));
    const QRect strip = layout_->strip(row_, topOf(row_));
    showPassage(row_, *hit_, viewport()->mapToGlobal(strip.bottomLeft()));
}

void DistributionView::keyPressEvent(QKeyEvent* event) {
    if (strips_.empty()) return QAbstractScrollArea::keyPressEvent(event);
    switch (event->key()) {
        case Qt::Key_Up:
            return goTo(row_ > 0 ? row_ - 1 : 0, std::nullopt);
        case Qt::Key_Down:
            return goTo(std::min(row_ + 1, strips_.size() - 1), std::nullopt);
        case Qt::Key_Home:
            return goTo(0, std::nullopt);
        case Qt::Key_End:
            return goTo(strips_.size() - 1, std::nullopt);
        case Qt::Key_Left:
            return goToNeighbour(-1);
        case Qt::Key_Right:
            return goToNeighbour(1);
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (hit_)
                Q_EMIT hitWanted(placeOf(strips_[row_], *hit_));
            else
                Q_EMIT stripWanted(static_cast<int>(row_));
            return;
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

}  // namespace lirovan::search
