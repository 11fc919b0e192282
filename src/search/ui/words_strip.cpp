#include "search/ui/words_strip.h"

#include <QPainter>
#include <QPainterPath>
#include <QToolButton>

namespace lirovan::search {

using namespace Qt::StringLiterals;

namespace {

constexpr int Side = 8, LineRoom = 6;

void drawCue(QPainter& painter, const CueLine& cue, int left, int right, int y) {
    using Style = CueLine::Style;
    QPen pen(QColor(0, 0, 128), cue.thick ? 3 : 1.4);
    pen.setCapStyle(Qt::FlatCap);
    if (cue.style == Style::Dashed) pen.setStyle(Qt::DashLine);
    if (cue.style == Style::Dotted) pen.setStyle(Qt::DotLine);
    painter.setPen(pen);
    if (cue.style == Style::Wavy) {
        QPainterPath wave(QPointF(left, y));
        for (int x = left, side = 1; x < right; x += 4, side = -side)
            wave.quadTo(x + 2, y + 3 * side, x + 4, y);
        painter.drawPath(wave);
        return;
    }
    painter.drawLine(left, y, right, y);
    if (cue.style == Style::Double) painter.drawLine(left, y + 3, right, y + 3);
}

class WordButton : public QToolButton {
  public:
    explicit WordButton(const RunWord& word) : colour_(word.colour) {
        setText(wordCaption(word));
        setEnabled(word.onPage > 0);
        setFocusPolicy(Qt::TabFocus);
        const QString told = u"“%1”: bu sayfada %2, aramanın bütününde %3"_s.arg(
            word.word.trimmed(), QString::number(word.onPage), QString::number(word.inRun));
        setAccessibleName(told);
        setToolTip(told);
    }

    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(text()) + 2 * Side + 2,
                fontMetrics().height() + 2 * LineRoom};
    }
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRect room = rect().adjusted(1, 1, -1, -1);
        const QColor ground(VurguRenkleri[static_cast<size_t>(colour_)].toString());
        painter.setPen(hasFocus() || underMouse() ? QPen(palette().color(QPalette::Highlight), 2)
                                                  : QPen(ground.darker(140)));
        painter.setBrush(isEnabled() ? ground : ground.lighter(115));
        painter.drawRoundedRect(room, 3, 3);
        painter.setPen(QColor(0, 0, 128));
        painter.drawText(room, Qt::AlignCenter, text());
        const CueLine cue = cueLine(colour_);
        const int width = fontMetrics().horizontalAdvance(text().section(u"  "_s, 0, 0));
        const int below = (height() + fontMetrics().height()) / 2 + 1;
        drawCue(painter, cue, Side, Side + width, below);
        if (cue.above) drawCue(painter, cue, Side, Side + width, 4);
    }

  private:
    int colour_;
};

}  // namespace

WordsStrip::WordsStrip(QWidget* parent) : QToolBar(parent) {
    setObjectName(u"kelimeSeridi"_s);
    setAccessibleName(u"Kelime Şeridi"_s);
    setContextMenuPolicy(Qt::PreventContextMenu);
    hide();
}

void WordsStrip::setWords(std::vector<RunWord> words) {
    qDeleteAll(actions());
    words_ = std::move(words);
    for (const RunWord& word : words_) {
        auto* button = new WordButton(word);
        connect(button, &QToolButton::clicked, this, [this, &word] {
            if (chosen) chosen(word);
        });
        addWidget(button);
    }
    showOrHide();
}

void WordsStrip::setWanted(bool wanted) {
    wanted_ = wanted;
    showOrHide();
}

void WordsStrip::showOrHide() {
    setVisible(wanted_ && !words_.empty());
}

}  // namespace lirovan::search
