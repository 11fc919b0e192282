#include "search/search_messages.h"

#include "search/matching/search_query.h"
#include "text/blanks.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Message;

Message nothingTyped() {
    return platform::errorMessage(u"Aranacak kelime girmediniz!"_s, u"Arama Hatası"_s);
}

Message singleLetterTyped() {
    return {
        u"Aranacak Kelime(ler) alanına harf girdiniz.\r\n"
        "Arama işlemi Yalnız Tüm Kelime özelliği aktif olarak yapılacaktır.\r\n"
        "Devam etmek için 'OK/Tamam', işlemi durdurmak ve harfi silmek için 'Cancel/İptal' "
        "düğmesini seçin."_s,
        u"Tek Harf Arama"_s, platform::Icon::Information, platform::Buttons::OkCancel};
}

Message nothingFound() {
    return platform::noticeMessage(NothingFound.toString(), u"Aranan Kelime Bulunamadı"_s);
}

Message failure(const platform::Error& error) {
    return platform::errorMessage(error.message, u"Hata"_s);
}

QString foundText(qint64 headings) {
    return u"Arama Sonucu: "_s + QString::number(headings) + u" başlık bulundu."_s;
}

QString hitsText(qint32 hits) {
    return u"Seçili başlıkta bulunan kelime sayısı: "_s + QString::number(hits);
}

QString scanningText(QStringView word) {
    return u'\'' + text::trimBlanks(word).toString() + u"' Taranıyor..."_s;
}

QString variantsText(qint64 variants) {
    return formatCount(variants) + u" özel kelime belirlendi."_s;
}

}  // namespace lirovan::search
