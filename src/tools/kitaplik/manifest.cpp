#include "tools/kitaplik/manifest.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

constexpr qint64 ManifestVersion = 1;

// Reads the values of one object. The first error stays, and later reads give empty values.
class Entry {
  public:
    Entry(const QJsonValue& value, QString place, std::optional<Error>& error)
        : object_(value.toObject()), place_(std::move(place)), error_(error) {
        if (!value.isObject()) fail(u"bir nesne { … } olmalı"_s);
    }

    const QString& place() const { return place_; }

    void allow(std::initializer_list<QStringView> keys) {
        for (auto it = object_.begin(); it != object_.end(); ++it)
            if (std::find(keys.begin(), keys.end(), QStringView(it.key())) == keys.end())
                fail(u"“%1” diye bir anahtar yok"_s.arg(it.key()));
    }

    QString text(QStringView key, bool required = true) {
        const QJsonValue value = object_.value(key);
        if (value.isUndefined() && !required) return {};
        if (!value.isString()) fail(u"“%1” bir metin olmalı"_s.arg(key));
        if (required && value.toString().trimmed().isEmpty()) fail(u"“%1” boş ya da eksik"_s.arg(key));
        if (!value.toString().isValidUtf16() || value.toString().contains(QChar::Null))
            fail(u"“%1” geçersiz bir karakter içeriyor"_s.arg(key));
        return value.toString();
    }

    qint64 id() {
        const double value = object_.value(u"id").toDouble(0);
        // Whole numbers are exact in a double below 2^53.
        if (!(value >= 1) || value >= 9007199254740992.0 || value != std::floor(value)) {
            fail(u"“id” sıfırdan büyük bir tam sayı olmalı"_s);
            return 0;
        }
        return static_cast<qint64>(value);
    }

    double number(QStringView key, double otherwise) {
        const QJsonValue value = object_.value(key);
        if (value.isUndefined()) return otherwise;
        if (!value.isDouble()) fail(u"“%1” bir sayı olmalı"_s.arg(key));
        return value.toDouble();
    }

    // A file inside the folder: no way up, no root, no drive.
    QString path(QStringView key, bool required = true) {
        const QString path = text(key, required);
        if (path.isEmpty()) return path;
        const QString clean = QDir::cleanPath(path);
        const bool leavesFolder = path.contains(u'\\') || path.contains(u':') || path.contains(u'\0') ||
                                  QDir::isAbsolutePath(clean) || clean == u"." || clean == u".." ||
                                  clean.startsWith(u"../");
        if (leavesFolder) fail(u"“%1” klasörün içinde bir dosya olmalı: “%2”"_s.arg(key, path));
        return clean;
    }

    // Calls `read(entry, index from 1)` for every element.
    template <class Read>
    void each(QStringView key, Read read) {
        const QJsonValue value = object_.value(key);
        if (!value.isArray()) return fail(u"“%1” bir dizi [ … ] olmalı"_s.arg(key));
        const QJsonArray elements = value.toArray();
        for (qsizetype i = 0; i < elements.size() && !error_; ++i) {
            const QString prefix = place_.isEmpty() ? QString() : place_ + u'.';
            Entry entry(elements[i], u"%1%2[%3]"_s.arg(prefix, key, QString::number(i)), error_);
            read(entry, i + 1);
        }
    }

    void fail(const QString& what) {
        if (error_) return;
        error_ = Error{place_.isEmpty() ? u"kitaplik.json: %1."_s.arg(what)
                                        : u"kitaplik.json, %1: %2."_s.arg(place_, what)};
    }

  private:
    QJsonObject object_;
    QString place_;
    std::optional<Error>& error_;
};

class Reader {
  public:
    Result<Manifest> read(const QJsonValue& root) {
        Entry entry(root, {}, error_);
        entry.allow({u"surum", u"betik", u"yazarlar"});
        if (entry.number(u"surum", 0) != ManifestVersion)
            entry.fail(u"“surum” %1 olmalı"_s.arg(ManifestVersion));
        Manifest manifest;
        manifest.scriptFile = entry.path(u"betik", false);
        entry.each(u"yazarlar",
                   [&](Entry& author, qsizetype) { manifest.authors.push_back(readAuthor(author)); });
        if (error_) return *error_;
        return manifest;
    }

  private:
    ManifestAuthor readAuthor(Entry& entry) {
        entry.allow({u"id", u"ad", u"kitaplar"});
        ManifestAuthor author{entry.id(), entry.text(u"ad"), {}};
        unique(entry, authors_, author.id, u"yazara");
        entry.each(u"kitaplar", [&](Entry& book, qsizetype number) {
            author.books.push_back(readBook(book, static_cast<double>(number)));
        });
        return author;
    }

    ManifestBook readBook(Entry& entry, double position) {
        entry.allow({u"id", u"ad", u"sira", u"konular"});
        ManifestBook book{entry.id(), entry.text(u"ad"), entry.number(u"sira", position), {}};
        unique(entry, books_, book.id, u"kitaba");
        entry.each(u"konular", [&](Entry& topic, qsizetype number) {
            book.topics.push_back(readTopic(topic, static_cast<double>(number)));
        });
        return book;
    }

    ManifestTopic readTopic(Entry& entry, double position) {
        entry.allow({u"id", u"baslik", u"dosya", u"parca", u"sira"});
        ManifestTopic topic{entry.id(), entry.text(u"baslik"), entry.path(u"dosya"),
                            entry.number(u"parca", 1), entry.number(u"sira", position)};
        unique(entry, topics_, topic.id, u"konuya");
        return topic;
    }

    static void unique(Entry& entry, QSet<qint64>& known, qint64 id, QStringView whom) {
        if (known.contains(id)) entry.fail(u"%1 numarası başka bir %2 verilmiş"_s.arg(id).arg(whom));
        known.insert(id);
    }

    QSet<qint64> authors_, books_, topics_;
    std::optional<Error> error_;
};

QString jsonFault(QJsonParseError::ParseError fault) {
    switch (fault) {
        case QJsonParseError::UnterminatedObject:
        case QJsonParseError::UnterminatedArray:
        case QJsonParseError::UnterminatedString:
            return u"nesne, dizi ya da metin kapanmamış"_s;
        case QJsonParseError::MissingNameSeparator:
            return u"“:” eksik"_s;
        case QJsonParseError::MissingValueSeparator:
            return u"“,” eksik"_s;
        case QJsonParseError::IllegalUTF8String:
            return u"geçerli UTF-8 değil"_s;
        case QJsonParseError::IllegalEscapeSequence:
            return u"“\\” işaretinden sonrası yanlış"_s;
        case QJsonParseError::GarbageAtEnd:
            return u"sonda fazla yazı var"_s;
        case QJsonParseError::DeepNesting:
        case QJsonParseError::DocumentTooLarge:
            return u"çok büyük ya da çok derin"_s;
        default:
            return u"geçersiz değer"_s;
    }
}

}  // namespace

Result<Manifest> readManifest(const QByteArray& json) {
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        const qsizetype offset = std::min<qsizetype>(parseError.offset, json.size());
        return Error{u"kitaplik.json geçerli bir JSON dosyası değil: %1. satır (%2)."_s
                         .arg(json.first(std::max<qsizetype>(offset, 0)).count('\n') + 1)
                         .arg(jsonFault(parseError.error))};
    }
    return Reader().read(document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array()));
}

}  // namespace lirovan::tools
