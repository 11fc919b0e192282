#include "platform/core/import/jet_values.h"

#include <unicode/ucnv.h>

#include <QDateTime>
#include <QTimeZone>
#include <cmath>

namespace lirovan::platform {
namespace {

char16_t unit(QByteArrayView bytes, qsizetype at) {
    return static_cast<char16_t>(static_cast<uchar>(bytes[at]) | static_cast<uchar>(bytes[at + 1]) << 8);
}

// After the mark FF FE one byte is one unit below U+0100; a zero byte switches to two-byte units and back.
QString decompressed(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    bool compressed = true;
    for (qsizetype i = 2; i < bytes.size();) {
        if (bytes[i] == 0) {
            compressed = !compressed;
            ++i;
        } else if (compressed) {
            text += QLatin1Char(bytes[i]);
            ++i;
        } else if (i + 1 < bytes.size()) {
            text += QChar(unit(bytes, i));
            i += 2;
        } else {
            break;
        }
    }
    return text;
}

QString fromUtf16(QByteArrayView bytes) {
    QString text(bytes.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i) text[i] = QChar(unit(bytes, 2 * i));
    return text;
}

}  // namespace

void JetTextDecoder::Closer::operator()(UConverter* converter) const {
    ucnv_close(converter);
}
JetTextDecoder::JetTextDecoder(JetTextDecoder&&) noexcept = default;
JetTextDecoder& JetTextDecoder::operator=(JetTextDecoder&&) noexcept = default;
JetTextDecoder::~JetTextDecoder() = default;

JetTextDecoder JetTextDecoder::jet4() {
    return {};
}

JetTextDecoder JetTextDecoder::jet3(quint16 codePage) {
    JetTextDecoder decoder;
    const QByteArray name = "windows-" + QByteArray::number(codePage);
    UErrorCode status = U_ZERO_ERROR;
    decoder.converter_.reset(ucnv_open(name.constData(), &status));
    if (U_FAILURE(status)) {
        status = U_ZERO_ERROR;
        decoder.converter_.reset(ucnv_open("windows-1254", &status));
    }
    return decoder;
}

QString JetTextDecoder::decode(QByteArrayView bytes) const {
    if (!converter_) return bytes.startsWith("\xFF\xFE") ? decompressed(bytes) : fromUtf16(bytes);
    // Every byte gives at most one unit in the code pages of Windows, a surrogate pair needs two bytes or
    // more.
    QString text(bytes.size(), Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = ucnv_toUChars(converter_.get(), reinterpret_cast<UChar*>(text.data()),
                                         static_cast<int32_t>(text.size()), bytes.data(),
                                         static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) return QString::fromLatin1(bytes);
    text.truncate(length);
    return text;
}

std::optional<QString> isoDate(double jetDate) {
    // 100-01-01 to 9999-12-31, the range of the stored type.
    if (!(jetDate > -657435.0 && jetDate < 2958466.0)) return std::nullopt;
    double days = 0;
    const double fraction = std::abs(std::modf(jetDate, &days));
    constexpr qint64 secondsOfDay = 86400;
    const qint64 seconds = std::llround(fraction * secondsOfDay);
    const QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(days) + seconds / secondsOfDay);
    if (seconds % secondsOfDay == 0) return date.toString(Qt::ISODate);
    const QTime time = QTime(0, 0).addSecs(static_cast<int>(seconds));
    return date.toString(Qt::ISODate) + u'T' + time.toString(Qt::ISODate);
}

}  // namespace lirovan::platform
