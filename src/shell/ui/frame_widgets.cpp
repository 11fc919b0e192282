#include "shell/ui/frame_widgets.h"

#include <QComboBox>
#include <QCursor>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>

#include "browse/window_places.h"
#include "platform/ui/twips_pixels.h"
#include "shell/main_layout.h"
#include "shell/ui/main_menu.h"
#include "shell/ui/main_toolbar.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

using platform::Twips;

namespace {
constexpr int PassingTextMs = 10'000;
}

FrameWidgets::FrameWidgets(QMainWindow& window, QMdiArea& area)
    : window_(window), area_(area), menu_(new MainMenu(window.menuBar())), toolBar_(new MainToolBar) {
    window.addToolBar(toolBar_);
    addStatusBar();
    states_.buttonChanged = [this](const CommandState& state) { toolBar_->show(state); };
    states_.menuChanged = [this](const CommandState& state) { menu_->show(state); };
    connect(toolBar_, &MainToolBar::pressed, this, &FrameWidgets::commandChosen);
    connect(menu_, &MainMenu::chosen, this, &FrameWidgets::commandChosen);
}

void FrameWidgets::addStatusBar() {
    QStatusBar* bar = window_.statusBar();
    bar->setObjectName(u"StatusBar1"_s);
    for (int i = 0; i < 3; ++i) {
        auto* label = new QLabel;
        label->setObjectName(u"StatusBar1_%1"_s.arg(i + 1));
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(8, 2, 8, 2);
        bar->addWidget(label, i == 0 ? 1 : 0);
        label->setVisible(i == 0);
        panels_[static_cast<std::size_t>(i)] = label;
    }
    FrameWidgets::setPanelText(1, status::Idle.toString());
}

QLabel* FrameWidgets::panel(int number) const {
    return number >= 1 && number <= 3 ? panels_[static_cast<std::size_t>(number - 1)] : nullptr;
}

void FrameWidgets::setSpacerWidth(Twips width) {
    toolBar_->setSpacerWidth(platform::toPixelsX(width, window_));
}

void FrameWidgets::popUpMenu(QStringView item) {
    if (QMenu* menu = menu_->popUp(item)) menu->popup(QCursor::pos());
}

QMenu* FrameWidgets::menu(QStringView name) const {
    return menu_->popUp(name);
}

QList<QAction*> FrameWidgets::typeSizeItems() const {
    return menu_->popUp(u"mnu_yazi")->actions();
}

void FrameWidgets::setPanelText(int number, const QString& text) {
    QLabel* label = panel(number);
    if (!label || label->text() == text) return;
    window_.statusBar()->clearMessage();
    label->setText(text);
}

void FrameWidgets::setPanelVisible(int number, bool visible) {
    QLabel* label = panel(number);
    if (!label) return;
    // The panels come back before one of them is hidden or shown for good.
    window_.statusBar()->clearMessage();
    label->setVisible(visible);
}

void FrameWidgets::showPassingText(const QString& text) {
    window_.statusBar()->showMessage(text, PassingTextMs);
}

void FrameWidgets::setProgressVisible(bool visible) {
    toolBar_->setProgressVisible(visible);
}

void FrameWidgets::setProgressMaximum(int maximum) {
    toolBar_->progress()->setMaximum(qMax(1, maximum));
}

void FrameWidgets::setProgressValue(int value) {
    QProgressBar* bar = toolBar_->progress();
    bar->setValue(qBound(bar->minimum(), value, bar->maximum()));
}

void FrameWidgets::setToolTextVisible(bool visible) {
    toolBar_->setToolTextVisible(visible);
}

void FrameWidgets::setToolText(const QString& text) {
    toolBar_->toolText()->setText(text);
}

void FrameWidgets::setToolTextWidth(Twips width) {
    toolBar_->setToolTextWidth(platform::toPixelsX(width, window_));
}

void FrameWidgets::setSelectorVisible(bool visible) {
    toolBar_->setSelectorVisible(visible);
}

platform::BookSelection FrameWidgets::selectedBooks() const {
    const int row = toolBar_->selector()->currentIndex();
    if (row < 0 || static_cast<std::size_t>(row) >= rows_.size()) return {};
    const browse::SelectorRow& chosen = rows_[static_cast<std::size_t>(row)];
    return {chosen.text, chosen.author.value, chosen.book.value};
}

void FrameWidgets::fillSelector(std::vector<browse::SelectorRow> rows) {
    rows_ = std::move(rows);
    QComboBox* selector = toolBar_->selector();
    selector->clear();
    for (const browse::SelectorRow& row : rows_)
        selector->addItem(row.text, row.data ? QVariant(*row.data) : QVariant());
    selector->setCurrentIndex(0);
}

Twips FrameWidgets::width() const {
    return platform::toTwipsX(area_.width(), area_) + browse::ChromeWidth;
}

Twips FrameWidgets::height() const {
    return platform::toTwipsY(area_.height(), area_) + browse::ChromeHeight;
}

void FrameWidgets::setBusyPointer(bool busy) {
    if (busy)
        window_.setCursor(Qt::WaitCursor);
    else
        window_.unsetCursor();
}

}  // namespace lirovan::shell
