#include "browse/ui/find_strip.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

#include "browse/page_finding.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::WebView;

FindStrip::FindStrip(WebView* page, WebView* startPage, QWidget* parent)
    : QWidget(parent), page_(page), startPage_(startPage), line_(new QLineEdit), found_(new QLabel) {
    setObjectName(u"sayfadaBul"_s);
    setAccessibleName(u"Sayfada Bul"_s);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 4, 6, 4);
    auto* caption = new QLabel(u"&Sayfada bul:"_s);
    caption->setBuddy(line_);
    layout->addWidget(caption);
    line_->setObjectName(u"txt_SayfadaBul"_s);
    line_->setAccessibleName(u"Sayfada Bul"_s);
    line_->setMinimumWidth(60);
    line_->setClearButtonEnabled(true);
    line_->installEventFilter(this);
    layout->addWidget(line_, 1);
    const auto step = [this](int by) { return [this, by] { shown().stepFound(by); }; };
    connect(addButton(u"cmd_OncekiBulunan"_s, u"▲"_s, u"Önceki (Shift+Enter)"_s), &QToolButton::clicked, this,
            step(-1));
    connect(addButton(u"cmd_SonrakiBulunan"_s, u"▼"_s, u"Sonraki (Enter)"_s), &QToolButton::clicked, this,
            step(+1));
    found_->setObjectName(u"lbl_Bulunan"_s);
    found_->setMinimumWidth(found_->fontMetrics().horizontalAdvance(u"0.000 / 0.000"_s));
    layout->addWidget(found_);
    connect(addButton(u"cmd_BulKapat"_s, u"✕"_s, u"Kapat (Esc)"_s), &QToolButton::clicked, this,
            &FindStrip::leave);

    connect(line_, &QLineEdit::textChanged, this, &FindStrip::look);
    for (const WebView* view : {page_, startPage_})
        connect(view, &WebView::foundChanged, this, [this, view](int count, int current, bool complete) {
            const bool any = !line_->text().trimmed().isEmpty();
            (view == page_ ? onPage_ : onStartPage_) = any ? foundText(count, current, complete) : QString();
            showFound();
        });
    page_->installEventFilter(this);  // it comes and goes for the start page
    escape_ = new QShortcut(Qt::Key_Escape, parent, this, &FindStrip::leave);
    escape_->setContext(Qt::WidgetWithChildrenShortcut);
    escape_->setEnabled(false);
    hide();
}

QToolButton* FindStrip::addButton(const QString& name, const QString& text, const QString& tip) {
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip.section(u" ("_s, 0, 0));
    button->setAutoRaise(true);
    layout()->addWidget(button);
    return button;
}

WebView& FindStrip::shown() const {
    return page_->isShown() ? *page_ : *startPage_;
}

void FindStrip::open() {
    const QString query = queryAtOpening(shown().selectedText(), line_->text());
    const bool wasOpen = isVisible();
    show();
    escape_->setEnabled(true);
    line_->setFocus();
    if (query != line_->text())
        line_->setText(query);
    else if (!wasOpen)
        look();
    line_->selectAll();
}

void FindStrip::leave() {
    hide();
    escape_->setEnabled(false);
    for (WebView* view : {page_, startPage_}) view->findOnPage({});
    shown().setFocus();
}

void FindStrip::look() {
    for (WebView* view : {page_, startPage_}) view->findOnPage(line_->text());
}

void FindStrip::showFound() {
    found_->setText(&shown() == page_ ? onPage_ : onStartPage_);
}

bool FindStrip::eventFilter(QObject* watched, QEvent* event) {
    if (watched == page_ && (event->type() == QEvent::Show || event->type() == QEvent::Hide)) showFound();
    if (watched != line_ || event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
    shown().stepFound(key.modifiers() & Qt::ShiftModifier ? -1 : +1);
    return true;
}

}  // namespace lirovan::browse
