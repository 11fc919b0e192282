#include "shell/ui/appearance.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>

#include "platform/ui/icons.h"
#include "platform/ui/message_boxes.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {

// A menu that is higher than the screen scrolls; in columns it would reach over the screen's edge.
class MenusScroll : public QProxyStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

void setAccent() {
    const QColor stockAccent(48, 140, 198);
    QPalette palette = QApplication::palette();
    if (palette.color(QPalette::Highlight) != stockAccent) return;
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x6f, 0x78));
    palette.setColor(QPalette::Link, QColor(0x1d, 0x6b, 0x76));
    QApplication::setPalette(palette);
}

}  // namespace

void dress(QApplication& application) {
    QApplication::setDesktopFileName(u"lirovan"_s);
    QApplication::setWindowIcon(platform::applicationIcon());
    platform::installTranslations(application);
    QApplication::setStyle(new MenusScroll);
    setAccent();
}

}  // namespace lirovan::shell
