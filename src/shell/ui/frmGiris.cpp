#include "shell/ui/frmGiris.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

#include "platform/ui/icons.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
namespace {

// How long showAtOnce() waits for the window to come onto the screen. Starting is not held up for it.
constexpr int ShowLimitMs = 300;

// One line of plain text; what does not fit ends in an ellipsis instead of widening the window.
class ProgressLabel : public QLabel {
  public:
    ProgressLabel(const QString& name, const QString& accessibleName, QWidget* parent) : QLabel(parent) {
        setObjectName(name);
        setAccessibleName(accessibleName);
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        setMinimumHeight(fontMetrics().height());
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(text(), Qt::ElideRight, width()));
    }
};

}  // namespace

frmGiris::frmGiris(reg_api& registry, const QString& folder, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint),
      Frame1(new BrandFrame(this)),
      Label1(new ProgressLabel(u"Label1"_s, u"Yüklenen kitap"_s, Frame1)),
      Label2(new ProgressLabel(u"Label2"_s, u"Yüklenen konu"_s, Frame1)) {
    setObjectName(u"frmGiris"_s);
    setWindowTitle(u"Lirovan"_s);
    setWindowIcon(platform::applicationIcon());
    recordInstallPath(registry, folder);

    const int em = fontMetrics().height();
    for (QLabel* line : {Label1, Label2}) Frame1->addFootLine(line);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(Frame1);
    setFixedSize(32 * em, 16 * em);
}

void frmGiris::showAtOnce() {
    const QRect screen = this->screen()->availableGeometry();
    move(screen.center() - rect().center());
    show();
    QElapsedTimer waiting;
    waiting.start();
    while (!windowHandle()->isExposed() && waiting.elapsed() < ShowLimitMs)
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents, 20);
    repaint();
}

void frmGiris::repaintLabels() {
    Label1->repaint();
    Label2->repaint();
}

void frmGiris::closeEvent(QCloseEvent* event) {
    splashShown = false;
    QWidget::closeEvent(event);
}

}  // namespace lirovan::shell
