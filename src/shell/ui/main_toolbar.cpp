#include "shell/ui/main_toolbar.h"

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

#include "platform/core/main_frame.h"
#include "platform/ui/icons.h"
#include "shell/ui/command_table.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

namespace {

constexpr int IconSize = 24;
constexpr int ProgressWidth = 160;
constexpr int SelectorWidth = 320;
constexpr int SelectorLetters = 16;
// As wide as its resting text in most fonts: 1125 twips.
constexpr int ToolTextWidth = 75;

}  // namespace

MainToolBar::MainToolBar(QWidget* parent) : QToolBar(parent) {
    setObjectName(u"Toolbar1"_s);
    setWindowTitle(u"Araç Çubuğu"_s);
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(QSize(IconSize, IconSize));
    addButtons();
}

void MainToolBar::addButtons() {
    for (const CommandRow& row : toolbarRows()) {
        QAction* action = row.name == platform::button::Bosluk ? addSpacer()
                          : row.isSeparator()                  ? addSeparator()
                                                               : addButton(row);
        if (row.name.isEmpty()) continue;
        action->setObjectName(row.name.toString());
        actions_.insert(row.name.toString(), action);
        show({row.name.toString(), !has(row.state, RowState::Hidden), !has(row.state, RowState::Disabled)});
    }
}

QAction* MainToolBar::addButton(const CommandRow& row) {
    QAction* action = addAction(platform::icon(row.name), row.caption.toString());
    connect(action, &QAction::triggered, this, [this, &row] { Q_EMIT pressed(row); });
    QWidget* button = widgetForAction(action);
    button->setObjectName(row.name.toString());
    button->setAccessibleName(row.caption.toString());
    button->setFocusPolicy(Qt::TabFocus);
    return action;
}

QAction* MainToolBar::addSpacer() {
    addSelector();
    spacer_ = new QWidget;
    QAction* action = addStretch(spacer_);
    stretch_ = addStretch(new QWidget);
    addProgress();
    return action;
}

QAction* MainToolBar::addStretch(QWidget* widget) {
    widget->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return addWidget(widget);
}

void MainToolBar::addSelector() {
    lbl_toolkitap = new QLabel(u"Kitap Seçimi:"_s);
    lbl_toolkitap->setObjectName(u"lbl_toolkitap"_s);
    lbl_toolkitap->setContentsMargins(12, 0, 6, 0);
    cmb_Kitaplar = new QComboBox;
    cmb_Kitaplar->setObjectName(u"cmb_Kitaplar"_s);
    cmb_Kitaplar->setAccessibleName(u"Kitap Seçimi"_s);
    cmb_Kitaplar->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmb_Kitaplar->setMinimumContentsLength(SelectorLetters);
    cmb_Kitaplar->setMaximumWidth(SelectorWidth);
    cmb_Kitaplar->setMaxVisibleItems(20);
    lbl_toolkitap->setBuddy(cmb_Kitaplar);
    selectorActions_ = {addWidget(lbl_toolkitap), addWidget(cmb_Kitaplar)};
    setSelectorVisible(false);
}

void MainToolBar::addProgress() {
    lbl_tool = new QLabel(u"Araştırılıyor..."_s);
    lbl_tool->setObjectName(u"lbl_tool"_s);
    lbl_tool->setTextFormat(Qt::PlainText);
    lbl_tool->setMinimumWidth(ToolTextWidth);
    lbl_tool->setContentsMargins(6, 0, 6, 0);
    lbl_tool->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    prg_gosterge = new QProgressBar;
    prg_gosterge->setObjectName(u"prg_gosterge"_s);
    prg_gosterge->setAccessibleName(u"İlerleme"_s);
    prg_gosterge->setFixedWidth(ProgressWidth);
    prg_gosterge->setTextVisible(false);
    toolTextAction_ = addWidget(lbl_tool);
    progressAction_ = addWidget(prg_gosterge);
    setToolTextVisible(false);
    setProgressVisible(false);
}

void MainToolBar::show(const CommandState& state) {
    QAction* action = actions_.value(state.name);
    if (!action) return;
    action->setVisible(state.visible);
    action->setEnabled(state.enabled);
    if (state.name == platform::button::Bosluk) stretch_->setVisible(!state.visible);
}

void MainToolBar::setSpacerWidth(int pixels) {
    spacer_->setMaximumWidth(qMax(0, pixels));
}

void MainToolBar::setSelectorVisible(bool visible) {
    for (QAction* action : selectorActions_) action->setVisible(visible);
}

void MainToolBar::setProgressVisible(bool visible) {
    progressAction_->setVisible(visible);
}

void MainToolBar::setToolTextVisible(bool visible) {
    toolTextAction_->setVisible(visible);
}

void MainToolBar::setToolTextWidth(int pixels) {
    lbl_tool->setMinimumWidth(pixels);
}

}  // namespace lirovan::shell
