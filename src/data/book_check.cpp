#include "data/book_check.h"

#include <algorithm>

#include "data/book_tables.h"
#include "platform/core/books/book_markup.h"
#include "platform/core/books/picture_check.h"
#include "platform/core/library_layout.h"

namespace lirovan::data {

using namespace Qt::StringLiterals;
using platform::BookAddress;
using platform::Result;
using platform::Statement;

void BookCheck::look(const QString& topic, const QString& text) {
    if (!text.contains(u"=\"konu:") && !text.contains(u"=\"resim:")) return;
    (void)platform::withAddresses(text, [&](const BookAddress& address) {
        auto& links = address.kind == BookAddress::Kind::Picture ? shown_ : topicLinks_;
        if (address.kind != BookAddress::Kind::Place && !links.contains(address.number))
            links.insert(address.number, topic);
        return std::optional(address);
    });
}

Result<void> BookCheck::checkPictures(QStringList& faults) {
    return forEachRow(database_,
                      u"SELECT ResimID, Bicim, Resim, KitapID IN (SELECT KitapID FROM tbl_Kitaplar) FROM "
                      u"tbl_Resim ORDER BY "
                      u"ResimID",
                      [&](const Statement& row) {
                          if (row.integer(3) != 1) faults += u"Resim %1: kitabı yok."_s.arg(row.text(0));
                          if (!shown_.remove(row.integer(0)))
                              faults += u"Resim %1: hiçbir konuda yok."_s.arg(row.text(0));
                          if (const auto fault = platform::pictureFault(row.bytes(2), row.text(1)))
                              faults += u"Resim %1: %2."_s.arg(row.text(0), *fault);
                      });
}

Result<QStringList> BookCheck::faults() {
    QStringList faults;
    const Result<bool> all = hasBookTables(database_);
    if (!all) return QStringList{all.error().message};
    if (*all) {
        if (const Result<void> checked = checkPictures(faults); !checked) return checked.error();
        const Result<void> sources =
            forEachRow(database_,
                       u"SELECT KitapID FROM tbl_Kaynak WHERE KitapID NOT IN (SELECT KitapID FROM "
                       u"tbl_Kitaplar WHERE KitapID "
                       u"IS NOT NULL)",
                       [&](const Statement& row) { faults += u"Kaynak %1: kitabı yok."_s.arg(row.text(0)); });
        if (!sources) return sources.error();
    } else {
        for (const QStringView table : {PictureTable, SourceTable, CounterTable}) {
            const Result<bool> found = platform::hasTable(database_, table);
            if (found && *found)
                faults += u"Eklenen kitapların tablolarından yalnız bir bölümü var (%1)."_s.arg(table);
        }
    }
    for (auto shown = shown_.cbegin(); shown != shown_.cend(); ++shown)
        faults += u"Konu %1: gösterdiği resim yok (%2)."_s.arg(shown.value()).arg(shown.key());
    for (auto link = topicLinks_.cbegin(); link != topicLinks_.cend(); ++link) {
        const auto found =
            database_.integer(u"SELECT count(*) FROM tbl_KonuBaslik WHERE KonuID=%1"_s.arg(link.key()));
        if (!found) return found.error();
        if (*found == 0) faults += u"Konu %1: bağlandığı konu yok (%2)."_s.arg(link.value()).arg(link.key());
    }
    // The links come out of hash tables.
    std::sort(faults.begin(), faults.end());
    return faults;
}

}  // namespace lirovan::data
