#include "tools/book_reader/pictures.h"

#include "platform/core/books/book_protocol.h"
#include "tools/book_reader/limits.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

using platform::MaximalPictureBytes;
constexpr qint64 MaximalDrawings = 64 << 20;  // all drawings of a book together
const QString Svg = u"image/svg+xml"_s;

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QString pictureType(const QByteArray& bytes) {
    if (bytes.startsWith("\x89PNG\r\n\x1a\n")) return u"image/png"_s;
    if (bytes.startsWith("\xFF\xD8\xFF")) return u"image/jpeg"_s;
    if (bytes.startsWith("GIF87a") || bytes.startsWith("GIF89a")) return u"image/gif"_s;
    return {};
}

void Pictures::skip(const QString& name, const QString& reason) {
    if (named_.insert(name).second) skipped_.push_back({name, reason});
}

int Pictures::add(const QString& name, const QString& type, QByteArray drawing) {
    pictures_.push_back({name.section(u'/', -1), type, std::move(drawing)});
    return static_cast<int>(pictures_.size()) - 1;
}

int Pictures::ofFile(const QString& name) {
    if (const auto known = byName_.constFind(name); known != byName_.cend()) return *known;
    byName_.insert(name, -1);
    if (name.isEmpty() || !files_.has(name)) {
        skip(name, u"resim dosyada yok"_s);
        return -1;
    }
    const Result<QByteArray> read = files_.read(name, MaximalPictureBytes);
    if (!read) {
        skip(name, u"resim okunamıyor ya da çok büyük"_s);
        return -1;
    }
    if (const QString type = pictureType(*read); !type.isEmpty()) {
        pictures_.push_back({name, type, {}});
        return byName_[name] = static_cast<int>(pictures_.size()) - 1;
    }
    if (read->size() < MaximalDocumentBytes && read->left(4096).contains("<svg"))
        if (const Result<Markup> markup = Markup::parse(*read))
            for (quint32 i = 0; i < markup->size(); ++i)
                if (markup->isStart(i) && (*markup)[i].tag == Tag::Svg) {
                    const int number = ofDrawing(*markup, i, name);
                    if (number >= 0) pictures_[static_cast<size_t>(number)].name = name;
                    return byName_[name] = number;
                }
    skip(name, u"tanınmayan resim biçimi"_s);
    return -1;
}

int Pictures::ofDrawing(const Markup& markup, quint32 svg, const QString& base) {
    const QByteArray drawing = sanitisedDrawing(markup, svg, [&](std::string_view href) -> QByteArray {
        const Result<QByteArray> read = files_.read(resolvedName(base, text(href)), MaximalPictureBytes / 2);
        const QString type = read ? pictureType(*read) : QString();
        return type.isEmpty() ? QByteArray() : "data:" + type.toLatin1() + ";base64," + read->toBase64();
    });
    drawings_ += drawing.size();
    if (drawing.size() > MaximalPictureBytes || drawings_ > MaximalDrawings) {
        skip(base, u"çizim çok büyük"_s);
        return -1;
    }
    return add(base.section(u'/', -1).section(u'.', 0, 0) + u"-%1.svg"_s.arg(pictures_.size() + 1), Svg,
               drawing);
}

Result<QByteArray> Pictures::bytes(int number) const {
    const Picture& picture = (*this)[number];
    return picture.type == Svg ? Result<QByteArray>(picture.drawing)
                               : files_.read(picture.name, MaximalPictureBytes);
}

}  // namespace lirovan::book_reader
