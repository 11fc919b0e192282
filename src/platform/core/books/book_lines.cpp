#include "platform/core/books/book_lines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "platform/core/books/book_markup.h"
#include "platform/core/books/book_protocol.h"
#include "platform/core/books/picture_check.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestName = 4096, LongestMessage = 4096;
constexpr qsizetype MostAuthors = 1000;
constexpr qint64 LargestCount = qint64(1) << 40;

// Takes values out of an object and remembers the first that is not as it should be.
class Fields {
  public:
    explicit Fields(const QJsonObject& object) : object_(object) {}

    QString text(QLatin1StringView key, qsizetype longest) {
        const QJsonValue value = object_.value(key);
        const QString text = value.toString();
        if (!value.isString() || text.size() > longest || !isText(text)) fail(key);
        return text;
    }
    // A name or title: one line.
    QString line(QLatin1StringView key, qsizetype longest = LongestName) {
        QString text = this->text(key, longest);
        if (std::any_of(text.cbegin(), text.cend(),
                        [](QChar c) { return c.category() == QChar::Other_Control; }))
            fail(key);
        return text;
    }
    qint64 number(QLatin1StringView key, qint64 least, qint64 most) {
        const QJsonValue value = object_.value(key);
        const double number = value.toDouble(-0.5);
        if (!value.isDouble() || number < double(least) || number > double(most) ||
            number != double(value.toInteger()))
            fail(key);
        return value.toInteger();
    }
    bool truth(QLatin1StringView key) {
        if (!object_.value(key).isBool()) fail(key);
        return object_.value(key).toBool();
    }
    QJsonArray list(QLatin1StringView key) {
        if (!object_.value(key).isArray()) fail(key);
        return object_.value(key).toArray();
    }
    void fail(QLatin1StringView what) {
        if (fault_.isEmpty()) fault_ = what;
    }

    // The line, or what is wrong with it.
    Result<BookLine> result(BookLine line) const {
        if (!fault_.isEmpty()) return Error{u"“%1” bozuk"_s.arg(fault_)};
        return line;
    }

  private:
    // No part of a character, and no NUL, which would end a text for the database.
    static bool isText(QStringView text) { return text.isValidUtf16() && !text.contains(QChar(u'\0')); }

    QJsonObject object_;
    QString fault_;
};

BookHead head(Fields& fields) {
    BookHead book;
    book.title = fields.line("ad"_L1);
    book.subtitle = fields.line("altad"_L1);
    book.series = fields.line("dizi"_L1);
    const QJsonArray authors = fields.list("yazarlar"_L1);
    if (authors.size() > MostAuthors) fields.fail("yazarlar"_L1);
    for (const QJsonValue value : authors) {
        Fields author(value.toObject());
        book.authors.push_back({author.line("ad"_L1), author.line("rol"_L1, 40)});
        if (!author.result(BookLine())) fields.fail("yazarlar"_L1);
    }
    book.language = fields.line("dil"_L1, 100);
    book.identifier = fields.line("kimlik"_L1);
    book.digest = fields.line("ozet"_L1, 64);
    const bool hex = std::all_of(book.digest.cbegin(), book.digest.cend(), [](QChar c) {
        return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
    });
    if (!hex || book.digest.size() != 64) fields.fail("ozet"_L1);
    book.format = fields.line("bicim"_L1, 100);
    book.fromHeadings = fields.truth("basliklardan"_L1);
    return book;
}

Result<BookLine> picture(Fields& fields, const QJsonObject& object) {
    BookPictureLine line;
    line.number = fields.number("no"_L1, 0, MaximalBookTopics * 10);
    line.name = fields.line("ad"_L1);
    line.type = fields.line("bicim"_L1, 40);
    const auto decoded =
        QByteArray::fromBase64Encoding(object.value("veri"_L1).toString().toLatin1(),
                                       QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    line.bytes = decoded.decoded;
    if (!decoded || line.bytes.size() > MaximalPictureBytes) fields.fail("veri"_L1);
    if (std::none_of(std::begin(BookPictureTypes), std::end(BookPictureTypes),
                     [&](const char* type) { return line.type == QLatin1StringView(type); }))
        fields.fail("bicim"_L1);
    Result<BookLine> result = fields.result(std::move(line));
    if (!result) return result;
    const auto& checked = std::get<BookPictureLine>(*result);
    if (const auto fault = pictureFault(checked.bytes, checked.type)) return Error{*fault};
    return result;
}

Result<BookLine> topic(Fields& fields) {
    BookTopicLine line;
    line.number = fields.number("no"_L1, 0, MaximalBookTopics - 1);
    line.parent = fields.number("ust"_L1, -1, line.number - 1);
    line.depth = fields.number("derinlik"_L1, 0, MaximalBookDepth);
    line.title = fields.line("baslik"_L1);
    line.text = fields.text("metin"_L1, MaximalTopicBytes);
    line.words = fields.number("sozcuk"_L1, 0, LargestCount);
    if (line.title.trimmed().isEmpty()) fields.fail("baslik"_L1);
    if (!line.text.isEmpty() && (!line.text.startsWith(u'<') || !line.text.endsWith(u'>')))
        fields.fail("metin"_L1);
    if (line.text.isEmpty() && line.words != 0) fields.fail("sozcuk"_L1);
    Result<BookLine> result = fields.result(std::move(line));
    if (!result) return result;
    if (const auto fault = bookMarkupFault(std::get<BookTopicLine>(*result).text))
        return Error{u"metinde izin verilmeyen bir şey var: %1"_s.arg(*fault)};
    return result;
}

Result<BookLine> lineOf(const QJsonObject& object) {
    Fields fields(object);
    const QString kind = fields.line("tur"_L1, 40);
    if (kind == QLatin1StringView(BookLineProgress))
        return fields.result(BookProgressLine{fields.number("yapilan"_L1, 0, LargestCount),
                                              fields.number("toplam"_L1, 0, LargestCount)});
    if (kind == QLatin1StringView(BookLineBook)) {
        BookHead book = head(fields);
        return fields.result(std::move(book));
    }
    if (kind == QLatin1StringView(BookLinePicture)) return picture(fields, object);
    if (kind == QLatin1StringView(BookLineTopic)) return topic(fields);
    if (kind == QLatin1StringView(BookLineSkipped)) {
        BookSkippedLine line{fields.line("ad"_L1), fields.line("neden"_L1, LongestMessage)};
        return fields.result(std::move(line));
    }
    if (kind == QLatin1StringView(BookLineFailure)) {
        BookFailureLine line{fields.line("metin"_L1, LongestMessage)};
        if (line.message.trimmed().isEmpty()) fields.fail("metin"_L1);
        return fields.result(std::move(line));
    }
    if (kind == QLatin1StringView(BookLineDone)) {
        BookDoneLine line{fields.number("konu"_L1, 0, MaximalBookTopics),
                          fields.number("resim"_L1, 0, LargestCount)};
        return fields.result(line);
    }
    return Error{u"“tur” bilinmiyor"_s};
}

}  // namespace

Result<BookLine> parseBookLine(const QByteArray& line) {
    if (line.size() > MaximalBookLineBytes) return Error{u"satır çok uzun"_s};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(line, &error);
    if (!document.isObject()) return Error{u"satır bir JSON nesnesi değil"_s};
    return lineOf(document.object());
}

}  // namespace lirovan::platform
