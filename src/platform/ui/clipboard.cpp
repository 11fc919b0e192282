#include "platform/ui/clipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QWidget>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

const QStringList& rtfFormats() {
    static const QStringList formats{u"text/rtf"_s, u"application/rtf"_s, u"Rich Text Format"_s,
                                     u"text/richtext"_s,
                                     u"application/x-qt-windows-mime;value=\"Rich Text Format\""_s};
    return formats;
}

}  // namespace

std::unique_ptr<QMimeData> toMimeData(const FormattedText& text) {
    auto data = std::make_unique<QMimeData>();
    if (!text.plain.isEmpty()) data->setText(text.plain);
    if (!text.html.isEmpty()) data->setHtml(text.html);
    if (!text.rtf.isEmpty()) {
        // Two names are in use; the third is the one of Windows.
        data->setData(rtfFormats().at(0), text.rtf);
        data->setData(rtfFormats().at(1), text.rtf);
        data->setData(rtfFormats().at(2), text.rtf);
    }
    return data;
}

void putOnClipboard(const FormattedText& text) {
    QGuiApplication::clipboard()->setMimeData(toMimeData(text).release());
}

std::optional<QByteArray> rtfIn(const QMimeData& data) {
    for (const QString& format : rtfFormats()) {
        if (!data.hasFormat(format)) continue;
        if (QByteArray rtf = data.data(format); rtf.trimmed().startsWith("{\\rtf")) return rtf;
    }
    return std::nullopt;
}

bool hasText(const QMimeData& data) {
    return data.hasText() || data.hasHtml() || rtfIn(data);
}

bool clipboardHasText() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && hasText(*data);
}

void cutInFocus() {
    QWidget* focused = QApplication::focusWidget();
    if (focused && focused->metaObject()->indexOfMethod("cut()") >= 0)
        QMetaObject::invokeMethod(focused, "cut");
}

}  // namespace lirovan::platform
