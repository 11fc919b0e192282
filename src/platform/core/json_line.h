// One JSON object on one line, with its keys in the order in which they are added.
#pragma once

#include <QByteArray>
#include <QStringView>
#include <optional>
#include <string_view>

namespace lirovan::platform {

/// `text` as a JSON string with its quotes, UTF-8. Control characters are escaped; a lone surrogate becomes
/// U+FFFD.
QByteArray jsonString(QStringView text);
/// The same of UTF-8, appended to `json`.
void appendJsonString(QByteArray& json, std::string_view utf8);

///     JsonLine().text("metin", u"a").number("veri", 3).finish() == "{\"metin\":\"a\",\"veri\":3}"
class JsonLine {
  public:
    JsonLine& text(const char* key, QStringView value) { return raw(key, jsonString(value)); }
    JsonLine& number(const char* key, qint64 value) { return raw(key, QByteArray::number(value)); }
    JsonLine& number(const char* key, std::optional<qint64> value) {
        return value ? number(key, *value) : null(key);
    }
    JsonLine& null(const char* key) { return raw(key, "null"); }
    /// `value`: JSON already.
    JsonLine& raw(const char* key, const QByteArray& value) {
        line_ += line_.isEmpty() ? '{' : ',';
        line_ += '"' + QByteArray(key) + "\":" + value;
        return *this;
    }
    QByteArray finish() const { return line_.isEmpty() ? QByteArray("{}") : line_ + '}'; }

  private:
    QByteArray line_;
};

}  // namespace lirovan::platform
