// SVG drawings: what a library keeps of them.
#include <algorithm>
#include <array>

#include "tools/book_reader/pictures.h"

namespace lirovan::book_reader {
namespace {

bool isName(std::string_view name) {
    return !name.empty() && name.size() < 64 &&
           std::all_of(name.begin(), name.end(),
                       [](char c) {
                           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                                  (c >= '0' && c <= '9') || c == '-' || c == '_' || c == '.';
                       }) &&
           (name[0] < '0' || name[0] > '9') && name[0] != '-' && name[0] != '.';
}

std::string lowered(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    return out;
}

bool isKept(const std::string& name) {
    constexpr std::array<std::string_view, 18> left{
        "script",       "foreignobject", "set",      "animate", "animatemotion", "animatetransform",
        "animatecolor", "handler",       "listener", "iframe",  "audio",         "video",
        "metadata",     "object",        "embed",    "canvas",  "feimage",       "discard"};
    return std::find(left.begin(), left.end(), name) == left.end();
}

// Whether a value, or a style sheet, asks for something outside the drawing.
bool isHarmless(std::string_view value) {
    const std::string low = lowered(value);
    if (low.find('\\') != std::string::npos || low.find("@import") != std::string::npos ||
        low.find("javascript:") != std::string::npos || low.find("expression(") != std::string::npos)
        return false;
    for (size_t at = low.find("url("); at != std::string::npos; at = low.find("url(", at + 1)) {
        const size_t target = low.find_first_not_of(" '\"", at + 4);
        if (target == std::string::npos || low[target] != '#') return false;
    }
    return true;
}

void appendEscaped(QByteArray& out, std::string_view text) {
    for (const char c : text) {
        if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else if (c == '&')
            out += "&amp;";
        else if (c == '"')
            out += "&quot;";
        else
            out += c;
    }
}

void appendAttribute(QByteArray& out, std::string_view name, std::string_view value) {
    out += ' ';
    out += QByteArrayView(name.data(), static_cast<qsizetype>(name.size()));
    out += "=\"";
    appendEscaped(out, value);
    out += '"';
}

}  // namespace

QByteArray sanitisedDrawing(const Markup& markup, quint32 svg,
                            const std::function<QByteArray(std::string_view)>& embedded) {
    QByteArray out;
    const auto name = [&](quint32 i) {
        return QByteArray(markup.name(i).data(), static_cast<qsizetype>(markup.name(i).size()));
    };
    for (quint32 i = svg; i <= markup[svg].partner; ++i) {
        const Markup::Token& token = markup[i];
        if (token.kind == Markup::Kind::Text) {
            appendEscaped(out, markup.text(i));
        } else if (token.kind == Markup::Kind::End) {
            if (const std::string low = lowered(markup.name(token.partner)); low != "a")
                out += "</" + name(token.partner) + '>';
        } else {
            const std::string low = lowered(markup.name(i));
            const bool badStyle = low == "style" && !isHarmless(markup.simplifiedText(i).toStdString());
            if (!isName(markup.name(i)) || !isKept(low) || badStyle) {
                i = token.partner;
                continue;
            }
            if (low == "a") continue;  // its content stays
            out += '<' + name(i);
            if (i == svg)
                out += " xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"";
            for (const Markup::Attribute& attribute : markup.attributes(i)) {
                const bool link = attribute.name == "href" || attribute.name == "xlink:href";
                if (link && low == "image") {
                    if (const QByteArray data = embedded(attribute.value); !data.isEmpty())
                        appendAttribute(out, attribute.name,
                                        {data.constData(), static_cast<size_t>(data.size())});
                } else if (link
                               ? attribute.value.starts_with('#')
                               : attribute.name == "xml:space" ||
                                     (isName(attribute.name) && lowered(attribute.name).rfind("on", 0) != 0 &&
                                      attribute.name != "xmlns")) {
                    if (isHarmless(attribute.value)) appendAttribute(out, attribute.name, attribute.value);
                }
            }
            out += '>';
        }
    }
    return out;
}

}  // namespace lirovan::book_reader
