#include "platform/ui/icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

struct Drawing {
    QStringView key;
    QStringView file;
};

// File names differ in more than case, so that they live on every file system.
constexpr Drawing Drawings[] = {
    // Trees
    {u"vq", u"author"},
    {u"Lirovan", u"book_closed"},
    {u"Ac", u"book_open"},
    {u"Acik", u"topic"},
    {u"Incele", u"topic_read"},
    {u"Bul", u"search_root"},
    {u"1", u"book_closed"},
    {u"3", u"topic"},
    // Toolbar of the main and the content windows
    {u"tlbtn_Kitap", u"books"},
    {u"tlbtn_Arama", u"search"},
    {u"tlbtn_Icerik", u"content"},
    {u"cut", u"cut"},
    {u"copy", u"copy"},
    {u"paste", u"paste"},
    {u"not", u"notebook"},
    {u"print", u"print"},
    {u"buyult", u"larger"},
    {u"kucult", u"smaller"},
    {u"New", u"new_window"},
    {u"Up", u"up"},
    {u"Down", u"down"},
    // Notebook
    {u"new", u"note_new"},
    {u"open", u"note_open"},
    {u"save", u"note_save"},
    {u"bold", u"bold"},
    {u"italic", u"italic"},
    {u"underline", u"underline"},
    {u"kirmizi", u"colour_red"},
    {u"mavi", u"colour_blue"},
    {u"yesil", u"colour_green"},
    {u"siyah", u"colour_black"},
};

constexpr QStringView ApplicationDrawing = u"lirovan";

// The palette's text colour, softened a little towards the ground: full black would outweigh the words beside
// it.
QColor lineColour(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Disabled) return palette.color(QPalette::Disabled, QPalette::ButtonText);
    if (mode == QIcon::Selected) return palette.color(QPalette::Active, QPalette::HighlightedText);
    const QColor text = palette.color(QPalette::Active, QPalette::ButtonText);
    const QColor ground = palette.color(QPalette::Active, QPalette::Button);
    const auto mix = [](int of, int with) { return (of * 84 + with * 16) / 100; };
    return {mix(text.red(), ground.red()), mix(text.green(), ground.green()),
            mix(text.blue(), ground.blue())};
}

// The drawing in the colours of `mode`: "currentColor" stands for the palette's; a disabled or selected icon
// has no other colour than that.
QByteArray coloured(const QByteArray& drawing, QIcon::Mode mode) {
    const QString line = lineColour(mode).name();
    QString text = QString::fromLatin1(drawing);
    if (mode == QIcon::Disabled || mode == QIcon::Selected) {
        static const QRegularExpression ownColour(u"#[0-9a-f]{6}"_s);
        text.replace(ownColour, line);
    }
    return text.replace(u"currentColor"_s, line).toLatin1();
}

// Draws one SVG, anew for each size and colour; the results are kept in the pixmap cache.
class DrawingEngine final : public QIconEngine {
  public:
    explicit DrawingEngine(QStringView file) : file_(file.toString()) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer renderer(file_ == ApplicationDrawing ? source() : coloured(source(), mode));
        const int side = qMin(rect.width(), rect.height());
        QRect square(0, 0, side, side);
        square.moveCenter(rect.center());
        renderer.render(painter, square);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const QString name = u"lirovan-icon/%1/%2x%3/%4/%5"_s.arg(file_)
                                 .arg(size.width())
                                 .arg(size.height())
                                 .arg(mode)
                                 .arg(lineColour(mode).rgba(), 0, 16);
        QPixmap result;
        if (QPixmapCache::find(name, &result)) return result;
        result = QPixmap(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        painter.end();
        QPixmapCache::insert(name, result);
        return result;
    }

    QIconEngine* clone() const override { return new DrawingEngine(file_); }
    QString key() const override { return u"lirovan-drawing"_s; }
    bool isNull() override { return false; }

  private:
    QByteArray source() const {
        QFile file(u":/lirovan/icons/"_s + file_ + u".svg"_s);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString file_;
};

/// Another icon as it looks when it is selected.
class SelectedEngine final : public QIconEngine {
  public:
    explicit SelectedEngine(QIcon icon) : icon_(std::move(icon)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        icon_.paint(painter, rect, Qt::AlignCenter, QIcon::Selected);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QPainter painter(&result);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return result;
    }
    QIconEngine* clone() const override { return new SelectedEngine(icon_); }
    bool isNull() override { return icon_.isNull(); }

  private:
    QIcon icon_;
};

}  // namespace

QIcon icon(QStringView key) {
    for (const Drawing& drawing : Drawings)
        if (drawing.key == key) return QIcon(new DrawingEngine(drawing.file));
    return {};
}

QStringList iconKeys() {
    QStringList keys;
    for (const Drawing& drawing : Drawings) keys << drawing.key.toString();
    return keys;
}

QIcon selectedIcon(const QIcon& icon) {
    return icon.isNull() ? icon : QIcon(new SelectedEngine(icon));
}

QIcon applicationIcon() {
    return QIcon(new DrawingEngine(ApplicationDrawing));
}

}  // namespace lirovan::platform
