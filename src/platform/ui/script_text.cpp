#include "platform/ui/script_text.h"

#include <algorithm>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

QString scriptText(QStringView text) {
    QString literal;
    literal.reserve(text.size() + text.size() / 8 + 2);
    literal += u'"';
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool pair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (pair) {
            literal += c;
            literal += text[++i];
        } else if (c == u'"' || c == u'\\') {
            literal += u'\\';
            literal += c;
        } else if (c < u' ' || c == QChar(0x2028) || c == QChar(0x2029) || c.isSurrogate()) {
            literal += u"\\u%1"_s.arg(c.unicode(), 4, 16, QLatin1Char('0'));
        } else {
            literal += c;
        }
    }
    literal += u'"';
    return literal;
}

QString readableAddresses(QString html, const PageAccess& access) {
    constexpr QStringView Special = u"#?%:&\"\\";
    const QString& text = access.folder().text();
    if (std::none_of(text.cbegin(), text.cend(), [&](QChar c) { return Special.contains(c); })) return html;
    const QString written = u"src=\""_s + text + u'\\';
    QString address = access.address(text).path(QUrl::FullyEncoded);
    address.replace(u'&', u"&amp;"_s);
    return html.replace(written, u"src=\""_s + address + u'/');
}

}  // namespace lirovan::platform
