#include "shell/update_check.h"

#include <QStringList>
#include <QXmlStreamReader>
#include <array>
#include <charconv>

using namespace Qt::StringLiterals;

namespace lirovan::shell {

namespace {

constexpr int VersionParts = 4;

/// Texts of the first elements below the root's first element. The rest of the document is read to its end,
/// as only a whole document counts.
QStringList firstTexts(QXmlStreamReader& reader) {
    QStringList texts;
    if (!reader.readNextStartElement()) return texts;
    if (reader.readNextStartElement()) {
        while (reader.readNextStartElement()) {
            const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
            if (texts.size() < VersionParts) texts.append(text);
        }
    }
    while (!reader.atEnd()) reader.readNext();
    return texts;
}

QString shortest(float value) {
    std::array<char, 64> digits{};
    // Without an exponent, which a round number like 100000 would get otherwise.
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return error == std::errc() ? QString::fromLatin1(digits.data(), end - digits.data()) : u"0"_s;
}

bool declaresDocumentType(const QByteArray& xml) {
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        switch (reader.readNext()) {
            case QXmlStreamReader::DTD:
                return true;
            case QXmlStreamReader::StartElement:
                return false;
            default:
                break;
        }
    }
    return false;
}

}  // namespace

float leadingNumber(QStringView text) {
    text = text.trimmed();
    QByteArray digits;
    bool point = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        const bool sign = i == 0 && (unit == u'-' || unit == u'+');
        const bool firstPoint = unit == u'.' && !point;
        if (!sign && !firstPoint && (unit < u'0' || unit > u'9')) break;
        point = point || firstPoint;
        digits.append(static_cast<char>(unit));
    }
    bool ok = false;
    const float value = digits.toFloat(&ok);
    return ok ? value : 0.0F;
}

std::optional<QString> manifestVersion(const QByteArray& xml) {
    if (declaresDocumentType(xml)) return std::nullopt;
    QXmlStreamReader reader(xml);
    const QStringList texts = firstTexts(reader);
    if (reader.hasError()) return std::nullopt;
    QStringList parts;
    for (int p = 0; p < VersionParts; ++p) parts.append(shortest(leadingNumber(texts.value(p))));
    return parts.join(u'.');
}

bool isNewer(QStringView version, QStringView than) {
    return version.compare(than) > 0;
}

platform::Message newVersionMessage(const QString& webSite) {
    return platform::noticeMessage(
        u"Lirovan programının yeni versiyonunu \r\n"_s + webSite + u" adresinden yükleyebilirsiniz."_s,
        u"Yeni Versiyon"_s);
}

void UpdateCheck::check(std::function<void(bool done)> finished) {
    source_.fetch([this, finished = std::move(finished)](const std::optional<QByteArray>& body) {
        const std::optional<QString> version = body ? manifestVersion(*body) : std::nullopt;
        finished(version.has_value());
        if (!version || !isNewer(*version, ownVersion_)) return;
        whenIdle_([this] {
            dialogs_.show(newVersionMessage(webSite_));
            download_();
        });
    });
}

}  // namespace lirovan::shell
