#include "platform/core/books/picture_check.h"

#include <QXmlStreamReader>
#include <QtEndian>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

struct Size {
    qint64 width = 0, height = 0;
};

template <class Number>
qint64 big(const QByteArray& bytes, qsizetype at) {
    return at + qsizetype(sizeof(Number)) <= bytes.size() ? qint64(qFromBigEndian<Number>(bytes.data() + at))
                                                          : 0;
}
qint64 little16(const QByteArray& bytes, qsizetype at) {
    return at + 2 <= bytes.size() ? qint64(qFromLittleEndian<quint16>(bytes.data() + at)) : 0;
}

std::optional<Size> pngSize(const QByteArray& bytes) {
    if (!bytes.startsWith("\x89PNG\r\n\x1a\n") || bytes.mid(12, 4) != "IHDR") return std::nullopt;
    return Size{big<quint32>(bytes, 16), big<quint32>(bytes, 20)};
}

std::optional<Size> gifSize(const QByteArray& bytes) {
    if (!bytes.startsWith("GIF87a") && !bytes.startsWith("GIF89a")) return std::nullopt;
    return Size{little16(bytes, 6), little16(bytes, 8)};
}

// Goes from segment to segment up to the one that tells the size (SOF0 to SOF15, without DHT, JPG and DAC).
std::optional<Size> jpegSize(const QByteArray& bytes) {
    if (!bytes.startsWith("\xff\xd8\xff")) return std::nullopt;
    for (qsizetype at = 2; at + 9 <= bytes.size();) {
        if (quint8(bytes[at]) != 0xff) return std::nullopt;
        const quint8 marker = quint8(bytes[at + 1]);
        if (marker == 0xff) {  // padding
            ++at;
            continue;
        }
        if (marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc)
            return Size{big<quint16>(bytes, at + 7), big<quint16>(bytes, at + 5)};
        const bool alone = marker == 0x01 || (marker >= 0xd0 && marker <= 0xd7);
        at += 2 + (alone ? 0 : std::max<qint64>(2, big<quint16>(bytes, at + 2)));
    }
    return std::nullopt;
}

bool isName(QStringView name, QStringView wanted) {
    return name.compare(wanted, Qt::CaseInsensitive) == 0;
}

// A style or a presentation value may name an address too.
bool namesAddress(QStringView value) {
    if (value.contains(u'\\') || value.contains(u"@import", Qt::CaseInsensitive)) return true;
    for (qsizetype at = 0; (at = value.indexOf(u"url(", at, Qt::CaseInsensitive)) >= 0; at += 4) {
        QStringView address = value.sliced(at + 4).trimmed();
        if (address.startsWith(u'"') || address.startsWith(u'\'')) address = address.sliced(1);
        if (!address.startsWith(u'#')) return true;
    }
    return false;
}

bool isOwnAddress(QStringView value) {
    const QStringView address = value.trimmed();
    for (const QStringView type : {u"data:image/png;", u"data:image/jpeg;", u"data:image/gif;"})
        if (address.startsWith(type, Qt::CaseInsensitive)) return true;
    return address.isEmpty() || address.startsWith(u'#');
}

std::optional<QString> elementFault(const QXmlStreamReader& xml) {
    for (const QStringView name : {u"script", u"foreignObject", u"iframe", u"handler", u"set", u"animate"})
        if (isName(xml.name(), name)) return u"çizimde <%1> var"_s.arg(name);
    for (const QXmlStreamAttribute& attribute : xml.attributes()) {
        if (attribute.name().startsWith(u"on", Qt::CaseInsensitive)) return u"çizimde olay komutu var"_s;
        const bool link = isName(attribute.name(), u"href") || isName(attribute.name(), u"src");
        if ((link && !isOwnAddress(attribute.value())) || namesAddress(attribute.value()))
            return u"çizimde yabancı adres var"_s;
    }
    return std::nullopt;
}

std::optional<QString> drawingFault(const QByteArray& bytes) {
    QXmlStreamReader xml(bytes);
    bool root = true, style = false;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
            case QXmlStreamReader::DTD:
            case QXmlStreamReader::EntityReference:
            case QXmlStreamReader::ProcessingInstruction:
                return u"çizimde belge türü ya da işlem komutu var"_s;
            case QXmlStreamReader::StartElement:
                if (root && xml.name() != u"svg") return u"çizim değil"_s;
                root = false;
                style = isName(xml.name(), u"style");
                if (auto fault = elementFault(xml)) return fault;
                break;
            case QXmlStreamReader::EndElement:
                style = false;
                break;
            case QXmlStreamReader::Characters:
                if (style && namesAddress(xml.text())) return u"çizimde yabancı adres var"_s;
                break;
            default:
                break;
        }
    }
    if (xml.hasError()) return u"çizim okunamıyor"_s;
    return std::nullopt;
}

}  // namespace

std::optional<QString> pictureFault(const QByteArray& bytes, QStringView type) {
    if (type == u"image/svg+xml") return drawingFault(bytes);
    std::optional<Size> size;
    if (type == u"image/png") size = pngSize(bytes);
    if (type == u"image/gif") size = gifSize(bytes);
    if (type == u"image/jpeg") size = jpegSize(bytes);
    if (!size) return u"resim %1 türünde değil"_s.arg(type);
    if (size->width <= 0 || size->height <= 0) return u"resmin boyutu yok"_s;
    if (size->height > MaximalPicturePixels / size->width) return u"resim çok büyük"_s;
    return std::nullopt;
}

}  // namespace lirovan::platform
