// How a page looks in its view: the look of all pages, the outline of a mark, the wheel.
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineView>
#include <QWheelEvent>

#include "platform/ui/content_page.h"
#include "platform/ui/script_text.h"
#include "platform/ui/web_view.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

const QString LookScript = u"page_look"_s;

}  // namespace

PageStyle::PageStyle(QWebEngineProfile& profile) : profile_(profile) {
    insert();
}

void PageStyle::insert() {
    QWebEngineScriptCollection& scripts = *profile_.scripts();
    for (const QWebEngineScript& script : scripts.find(LookScript)) scripts.remove(script);
    QWebEngineScript script = WebEngine::pageScript(LookScript);
    script.setSourceCode(script.sourceCode().replace(u"(LOOK)"_s, u"(%1)"_s.arg(scriptText(sheet_))));
    scripts.insert(script);
}

void PageStyle::set(const QString& sheet, const QColor& ground) {
    if (sheet == sheet_ && ground == ground_) return;
    sheet_ = sheet;
    ground_ = ground;
    insert();
    Q_EMIT changed();
}

void WebView::takeLook() {
    page_->setBackgroundColor(engine_->style().ground());
    page_->runJavaScript(u"lirovanLook.set(%1)"_s.arg(scriptText(engine_->style().sheet())),
                         QWebEngineScript::ApplicationWorld);
}

void WebView::outlineMark(QStringView prefix, int number) {
    page_->runJavaScript(
        u"lirovanLook.outline(%1)"_s.arg(scriptText(prefix.toString() + QString::number(number))),
        QWebEngineScript::ApplicationWorld);
}

bool WebView::zoomsWith(QEvent& event) {
    if (event.type() != QEvent::Wheel) return false;
    const auto& wheel = static_cast<const QWheelEvent&>(event);
    if (!(wheel.modifiers() & Qt::ControlModifier)) return false;
    // Fine wheels and touch pads tell a notch in parts.
    wheelTurned_ += wheel.angleDelta().y();
    const int steps = wheelTurned_ / QWheelEvent::DefaultDeltasPerStep;
    wheelTurned_ -= steps * QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0) Q_EMIT zoomWanted(steps);
    return true;
}

}  // namespace lirovan::platform
