#include "search/ui/strip_painter.h"

#include <QBuffer>
#include <QFileInfo>
#include <QFontMetrics>
#include <QImage>
#include <QSvgGenerator>
#include <algorithm>

#include "platform/core/file_writer.h"
#include "search/matching/search_query.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

// All lanes of a strip together are so high, unless they are many.
constexpr int StripHeight = 20, LeastLane = 5;
constexpr int LabelCharacters = 30, TickWidth = 2;
constexpr int PictureWidth = 1400, TallestPicture = 30000;
constexpr QColor Ground(0xF4, 0xF4, 0xF2), Edge(0xB0, 0xB0, 0xAC);

QString countOf(const Strip& strip) {
    return formatCount(static_cast<qint64>(strip.hits.size()));
}

}  // namespace

StripLayout::StripLayout(const std::vector<Lane>& lanes, const std::vector<Strip>& strips,
                         const QFontMetrics& font, int width)
    : strips_(strips), lanes_(std::max(1, static_cast<int>(lanes.size()))) {
    for (const Strip& strip : strips) longest_ = std::max(longest_, strip.length);
    laneHeight_ = std::max(LeastLane, StripHeight / lanes_);
    labelWidth_ = std::min(font.averageCharWidth() * LabelCharacters, width / 3);
    room_ = std::max(1, width - labelWidth_ - 3 * Margin);
    int x = Margin, y = Margin;
    for (const Lane& lane : lanes) {
        const QString text = lane.word + u" ("_s + formatCount(lane.hits) + u')';
        const QSize size(Swatch + Margin + font.horizontalAdvance(text), font.height());
        if (x > Margin && x + size.width() > width - Margin) {
            x = Margin;
            y += font.height() + Margin / 2;
        }
        legend_.emplace_back(QPoint(x, y), size);
        x += size.width() + 2 * Margin;
    }
    legendHeight_ = y + font.height() + Margin;
}

QRect StripLayout::strip(size_t row, int top) const {
    return {labelWidth_ + 2 * Margin, top + Gap / 2, widthOf(strips_[row], longest_, room_),
            laneHeight_ * lanes_};
}

qint32 StripLayout::laneAt(int y) const {
    return std::clamp((y - Gap / 2) / laneHeight_, 0, lanes_ - 1);
}

QRect StripLayout::lane(const QRect& strip, qint32 lane) const {
    return {strip.left(), strip.top() + lane * laneHeight_, strip.width(), laneHeight_};
}

QColor tickColour(const Lane& lane) {
    const QColor colour(lane.colour.isEmpty() ? u"#00FF00"_s : lane.colour);
    return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(), std::min(colour.lightness(), 100));
}

void paintLegend(QPainter& painter, const StripLayout& layout, const std::vector<Lane>& lanes) {
    for (size_t i = 0; i < lanes.size(); ++i) {
        const QRect place = layout.legend()[i];
        // The swatch says with its bar which lane it is.
        const QRect swatch(place.left(), place.center().y() - StripLayout::Swatch / 2, StripLayout::Swatch,
                           StripLayout::Swatch);
        painter.fillRect(swatch, Ground);
        const auto count = static_cast<int>(lanes.size());
        const int top = swatch.height() * static_cast<int>(i) / count;
        const int bottom = std::max(top + 2, swatch.height() * (static_cast<int>(i) + 1) / count);
        painter.fillRect(swatch.left(), swatch.top() + top, swatch.width(), bottom - top,
                         tickColour(lanes[i]));
        painter.setPen(Edge);
        painter.drawRect(swatch);
        painter.setPen(Qt::black);
        painter.drawText(place.adjusted(StripLayout::Swatch + StripLayout::Margin, 0, 2, 0),
                         Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         lanes[i].word + u" ("_s + formatCount(lanes[i].hits) + u')');
    }
}

void paintRow(QPainter& painter, const StripLayout& layout, const std::vector<Lane>& lanes,
              const Strip& strip, size_t row, int top) {
    const QRect label(StripLayout::Margin, top, layout.labelWidth(), layout.rowHeight());
    const QString count = u"  "_s + countOf(strip);
    const QFontMetrics font = painter.fontMetrics();
    const int countWidth = font.horizontalAdvance(count);
    painter.setPen(Qt::black);
    painter.drawText(label.adjusted(0, 0, -countWidth, 0),
                     Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine,
                     font.elidedText(strip.name, Qt::ElideRight, label.width() - countWidth));
    painter.setPen(Qt::darkGray);
    painter.drawText(label, Qt::AlignVCenter | Qt::AlignRight | Qt::TextSingleLine, count);

    const QRect place = layout.strip(row, top);
    painter.fillRect(place, Ground);
    std::vector<QList<QRect>> ticks(lanes.size());
    for (const Tick& tick : ticksOf(strip, place.width())) {
        const QRect lane = layout.lane(place, tick.lane);
        ticks[static_cast<size_t>(tick.lane)].append(
            QRect(lane.left() + tick.x, lane.top(), TickWidth, lane.height()) & place);
    }
    painter.setPen(Qt::NoPen);
    for (size_t lane = 0; lane < lanes.size(); ++lane) {
        painter.setBrush(tickColour(lanes[lane]));
        painter.drawRects(ticks[lane]);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(Edge);
    painter.drawRect(place.adjusted(0, 0, 0, -1));
}

Result<void> savePicture(const QString& path, const QString& title, const std::vector<Lane>& lanes,
                         const std::vector<Strip>& strips, const QFont& font) {
    const QFontMetrics metrics(font);
    const StripLayout layout(lanes, strips, metrics, PictureWidth);
    const int titleHeight = metrics.height() + 2 * StripLayout::Margin;
    const QSize size(PictureWidth,
                     titleHeight + layout.legendHeight() + layout.height() + StripLayout::Margin);
    const auto paint = [&](QPainter& painter) {
        painter.setFont(font);
        painter.fillRect(QRect(QPoint(), size), Qt::white);
        painter.setPen(Qt::black);
        painter.drawText(QRect(StripLayout::Margin, 0, PictureWidth, titleHeight), Qt::AlignVCenter, title);
        painter.translate(0, titleHeight);
        paintLegend(painter, layout, lanes);
        for (size_t row = 0; row < strips.size(); ++row)
            paintRow(painter, layout, lanes, strips[row], row,
                     layout.legendHeight() + static_cast<int>(row) * layout.rowHeight());
    };
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (text::folded(QFileInfo(path).suffix()) == u"svg") {
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setSize(size);
        svg.setViewBox(QRect(QPoint(), size));
        svg.setTitle(title);
        QPainter painter(&svg);
        paint(painter);
    } else {
        if (size.height() > TallestPicture)
            return Error{u"Resim PNG için çok uzun. SVG olarak kaydedin ya da bir kitap seçin."_s};
        QImage image(size, QImage::Format_RGB32);
        if (image.isNull()) return Error{u"Resim için bellek yetmedi."_s};
        QPainter painter(&image);
        paint(painter);
        painter.end();
        if (!image.save(&buffer, "PNG")) return Error{u"Resim PNG olarak yazılamadı."_s};
    }
    return platform::writeWholeFile(path, bytes);
}

}  // namespace lirovan::search
