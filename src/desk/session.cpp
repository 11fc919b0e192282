#include "desk/session.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "desk/reader_file.h"

namespace lirovan::desk {

using namespace Qt::StringLiterals;
using platform::Database;
using platform::Result;
using platform::Statement;
using platform::Step;

namespace {

template <class Id>
QJsonArray idArray(const std::vector<Id>& ids) {
    QJsonArray array;
    for (const Id& id : ids) array.append(id.value);
    return array;
}

template <class Id>
std::vector<Id> ids(const QJsonValue& value) {
    std::vector<Id> result;
    for (const auto& each : value.toArray()) result.push_back({each.toInteger()});
    return result;
}

QJsonObject pageObject(const LastPage& page) {
    QJsonObject object{{u"konu"_s, page.topic.value},
                       {u"kitap"_s, page.book.value},
                       {u"baslik"_s, page.heading},
                       {u"kitapAdi"_s, page.bookTitle}};
    if (page.place) object[u"yer"_s] = QString::fromUtf8(platform::placeJson(*page.place));
    return object;
}

LastPage pageOf(const QJsonObject& object) {
    return {{object[u"konu"_s].toInteger()},
            {object[u"kitap"_s].toInteger()},
            object[u"baslik"_s].toString(),
            object[u"kitapAdi"_s].toString(),
            platform::placeFromJson(object[u"yer"_s].toString().toUtf8())};
}

constexpr QStringView Key = u"oturum";

}  // namespace

QByteArray sessionJson(const Session& session) {
    QJsonArray searches;
    for (const search::AskedSearch& search : session.searches.all())
        searches.append(QJsonArray{search.query, search::optionBits(search.options)});
    const QRect& window = session.window;
    QJsonObject object{{u"surdur"_s, session.continues},
                       {u"pencere"_s, QJsonArray{window.x(), window.y(), window.width(), window.height()}},
                       {u"buyutulmus"_s, session.maximized},
                       {u"genislik"_s, session.browseWidth},
                       {u"sekme"_s, session.tab},
                       {u"yazarlar"_s, idArray(session.unfoldedAuthors)},
                       {u"kitaplar"_s, idArray(session.unfoldedBooks)},
                       {u"aramalar"_s, searches}};
    if (session.page) object[u"sayfa"_s] = pageObject(*session.page);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

Session sessionFromJson(const QByteArray& json) {
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    Session session;
    session.continues = object[u"surdur"_s].toBool();
    const QJsonArray window = object[u"pencere"_s].toArray();
    if (window.size() == 4)
        session.window = {window[0].toInt(), window[1].toInt(), window[2].toInt(), window[3].toInt()};
    session.maximized = object[u"buyutulmus"_s].toBool(true);
    session.browseWidth = object[u"genislik"_s].toDouble();
    session.tab = std::clamp(object[u"sekme"_s].toInt(), 0, 1);
    session.unfoldedAuthors = ids<data::AuthorId>(object[u"yazarlar"_s]);
    session.unfoldedBooks = ids<data::BookId>(object[u"kitaplar"_s]);
    if (object[u"sayfa"_s].isObject()) session.page = pageOf(object[u"sayfa"_s].toObject());
    const QJsonArray searches = object[u"aramalar"_s].toArray();
    for (qsizetype i = searches.size(); i-- > 0;) {
        const QJsonArray each = searches[i].toArray();
        session.searches.add({each.at(0).toString(), search::optionsOf(each.at(1).toInt())});
    }
    return session;
}

Result<Session> readSession(const QString& path) {
    const Result<Database> database = readReaderFile(path);
    if (!database) return database.error();
    Result<Statement> row = database->prepare(u"SELECT Deger FROM tbl_Oturum WHERE Anahtar=?");
    if (!row) return row.error();
    if (const auto bound = row->bind(1, Key); !bound) return bound.error();
    const Result<Step> step = row->step();
    if (!step) return step.error();
    return *step == Step::Row ? sessionFromJson(row->text(0).toUtf8()) : Session();
}

Result<void> writeSession(const QString& path, const Session& session) {
    const Result<Database> database = openReaderFile(path);
    if (!database) return database.error();
    Result<Statement> row = database->prepare(u"INSERT OR REPLACE INTO tbl_Oturum VALUES (?, ?)");
    if (!row) return row.error();
    if (const auto bound = row->bind(1, Key); !bound) return bound.error();
    const QString json = QString::fromUtf8(sessionJson(session));
    if (const auto bound = row->bind(2, QStringView(json)); !bound) return bound.error();
    if (const Result<Step> done = row->step(); !done) return done.error();
    return {};
}

}  // namespace lirovan::desk
