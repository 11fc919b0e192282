#include "shell/ui/frm_yardim.h"

#include <QFile>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/ui/icons.h"
#include "platform/ui/twips_pixels.h"
#include "shell/ui/brand_frame.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
namespace {

QString helpText(QStringView name) {
    QFile file(u":/lirovan/shell/resources/yardim/%1.html"_s.arg(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QLabel* label(const QString& name, const QString& text, QWidget* parent) {
    auto* result = new QLabel(text, parent);
    result->setObjectName(name);
    result->setTextFormat(Qt::PlainText);
    return result;
}

// Scrolled where the text is longer than the window.
QTextBrowser* textBox(const HelpTopic& topic, QWidget* parent) {
    auto* text = new QTextBrowser(parent);
    text->setObjectName(topic.textLabel.toString());
    text->setAccessibleName(topic.title.toString());
    text->setFrameShape(QFrame::NoFrame);
    text->document()->setDocumentMargin(text->fontMetrics().height());
    text->document()->setIndentWidth(2 * text->fontMetrics().height());
    text->document()->setDefaultStyleSheet(
        u"p, li { line-height: 130%; } ol { margin-left: 0; } li { margin-bottom: 6px; }"
        "h3 { font-size: medium; margin-top: 14px; margin-bottom: 4px; }"_s);
    text->setHtml(helpText(topic.textFile));
    text->hide();
    return text;
}

}  // namespace

frm_yardim::frm_yardim(const platform::MainFrame& main, std::function<void(browse::Tab)> showTab,
                       QWidget* parent)
    : QDialog(parent),
      lblBaslik(label(u"lblBaslik"_s, u"Yardım Konuları"_s, this)),
      lblKBaslik(label(u"lblKBaslik"_s, QString(), this)),
      lblIcerik(label(u"lblIcerik"_s, HelpPrompt.toString(), this)),
      showTab_(std::move(showTab)) {
    setObjectName(u"frm_yardim"_s);
    setWindowTitle(u"Yardım"_s);
    setWindowIcon(platform::applicationIcon());

    const int em = fontMetrics().height();
    lblBaslik->setFont(headingFont(1.7));
    lblKBaslik->setFont(headingFont(1.5));
    lblKBaslik->hide();
    lblIcerik->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    lblIcerik->setBackgroundRole(QPalette::Base);
    lblIcerik->setAutoFillBackground(true);
    lblIcerik->setMargin(em);

    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(em / 2);
    layout->setContentsMargins(em, em, em, em);
    layout->addWidget(lblBaslik);
    auto* row = new QHBoxLayout;
    row->setSpacing(em / 2);
    layout->addLayout(row);
    layout->addSpacing(em / 2);
    layout->addWidget(lblKBaslik);
    layout->addWidget(lblIcerik, 1);
    for (const HelpTopic& topic : helpTopics()) addTopic(topic, row);
    row->addStretch(1);
    QWidget* before = nullptr;
    for (auto* button : findChildren<QToolButton*>(Qt::FindDirectChildrenOnly)) {
        if (before) setTabOrder(before, button);
        before = button;
    }
    for (QTextBrowser* text : texts_) {
        layout->addWidget(text, 1);
        setTabOrder(before, text);
        before = text;
    }
    resize(34 * em, 39 * em);
    place(main);
}

void frm_yardim::addTopic(const HelpTopic& topic, QLayout* row) {
    auto* button = new QToolButton(this);
    button->setObjectName(topic.button.toString());
    button->setAccessibleName(topic.title.toString());
    button->setIcon(platform::icon(topic.icon));
    button->setIconSize(QSize(24, 24));
    button->setFocusPolicy(Qt::StrongFocus);
    connect(button, &QToolButton::clicked, this, [this, &topic] { showTopic(topic); });

    QLabel* caption = label(topic.captionLabel.toString(), topic.title.toString(), this);
    caption->setBuddy(button);
    caption->installEventFilter(this);
    caption->setContentsMargins(0, 0, fontMetrics().height(), 0);
    row->addWidget(button);
    row->addWidget(caption);
    texts_.push_back(textBox(topic, this));
}

void frm_yardim::showTopic(const HelpTopic& topic) {
    if (topic.tab) showTab_(*topic.tab);
    lblKBaslik->setText(topic.title.toString());
    lblKBaslik->show();
    lblIcerik->hide();
    for (QTextBrowser* text : texts_) text->setVisible(text->objectName() == topic.textLabel);
}

// Beside the right edge of the main window, as far as the screen has room.
void frm_yardim::place(const platform::MainFrame& main) {
    const QPoint corner = parentWidget() ? parentWidget()->window()->pos() : QPoint();
    const QPoint wanted(
        platform::toPixelsX(helpLeft(main.width(), platform::toTwipsX(width(), *this)), *this),
        platform::toPixelsY(HelpTop, *this));
    const QRect room = screen()->availableGeometry();
    resize(size().boundedTo(room.size()));
    const QPoint last = room.bottomRight() - QPoint(width(), height());
    const QPoint place = corner + wanted;
    move(qBound(room.left(), place.x(), qMax(room.left(), last.x())),
         qBound(room.top(), place.y(), qMax(room.top(), last.y())));
}

// A click on a caption is one on its button.
bool frm_yardim::eventFilter(QObject* watched, QEvent* event) {
    auto* caption = qobject_cast<QLabel*>(watched);
    if (caption && event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (auto* button = qobject_cast<QToolButton*>(caption->buddy())) button->click();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frm_yardim::done(int result) {
    helpShown = false;
    QDialog::done(result);
}

}  // namespace lirovan::shell
