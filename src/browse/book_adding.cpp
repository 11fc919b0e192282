#include "browse/book_adding.h"

#include <QFileInfo>
#include <QLocale>
#include <QSet>
#include <algorithm>

namespace lirovan::browse {

using namespace Qt::StringLiterals;

namespace {

QString number(qint64 value) {
    return QLocale(QLocale::Turkish, QLocale::Turkey).toString(value);
}

}  // namespace

BookCandidate candidate(const QString& file, platform::Result<platform::BookContent> read,
                        std::optional<data::AddedBook> present) {
    if (!read) return {file, std::nullopt, read.error().message, std::nullopt, {}, false};
    BookCandidate result{file, std::move(*read), {}, std::move(present), {}};
    result.request.author = data::authorOf(*result.book, {});
    result.request.title = data::titleOf(*result.book, {});
    return result;
}

QString candidateLine(const BookCandidate& candidate) {
    const QString name = QFileInfo(candidate.file).fileName();
    QString line = candidate.book ? candidate.request.title + u" – "_s + candidate.request.author
                                  : name + u": "_s + candidate.failure;
    if (!candidate.outcome.isEmpty()) line += u" ("_s + candidate.outcome + u')';
    return line;
}

OutlineCount countOutline(const platform::BookContent& book, const std::vector<bool>& left) {
    OutlineCount count;
    QSet<qint64> pictures;
    for (std::size_t i = 0; i < book.outline().size(); ++i) {
        const platform::BookEntry& entry = book.outline()[i];
        if (!entry.isTopic() || (i < left.size() && left[i])) continue;
        ++count.topics;
        count.words += entry.words;
        pictures.unite(QSet<qint64>(entry.pictures.begin(), entry.pictures.end()));
    }
    count.pictures = pictures.size();
    return count;
}

QString countText(const OutlineCount& count) {
    return u"%1 konu, %2 sözcük, %3 resim"_s.arg(number(count.topics), number(count.words),
                                                 number(count.pictures));
}

QStringList about(const platform::BookHead& head) {
    // MARC relator codes.
    static constexpr struct {
        QStringView role, label;
    } Others[] = {{u"trl", u"Çeviren"}, {u"edt", u"Hazırlayan"}, {u"ill", u"Resimleyen"}};
    QStringList lines;
    if (!head.subtitle.isEmpty()) lines << u"Alt başlık: %1"_s.arg(head.subtitle);
    if (!head.series.isEmpty()) lines << u"Dizi: %1"_s.arg(head.series);
    for (const auto& [role, label] : Others) {
        QStringList names;
        for (const platform::BookAuthor& author : head.authors)
            if (author.role == role) names << author.name.simplified();
        if (!names.isEmpty()) lines << u"%1: %2"_s.arg(label, names.join(u", "_s));
    }
    return lines;
}

QStringList remarks(const platform::BookContent& book) {
    QStringList lines;
    if (book.head().fromHeadings)
        lines << u"Dosyanın içindekiler listesi yok ya da eksik: konular başlıklardan çıkarıldı."_s;
    for (const platform::BookSkippedLine& skipped : book.skipped())
        lines << u"Alınmadı: %1 (%2)"_s.arg(skipped.name, skipped.reason);
    return lines;
}

QString presentText(const data::AddedBook& present) {
    return u"Bu kitap kitaplıkta var: “%1” – %2"_s.arg(present.title, present.author);
}

QString report(const std::vector<BookCandidate>& candidates, int added) {
    QString text = added == 0 ? u"Kitap eklenmedi."_s : u"%1 kitap eklendi."_s.arg(number(added));
    const auto unread = std::count_if(candidates.begin(), candidates.end(),
                                      [](const BookCandidate& each) { return !each.book; });
    if (unread > 0) text += u" %1 dosya okunamadı."_s.arg(number(unread));
    return text;
}

QString addedBookLine(const data::AddedBook& book) {
    return u"%1 – %2 (%3 konu)"_s.arg(book.title, book.author, number(book.topics));
}

QString removalQuestion(const data::AddedBook& book) {
    return u"“%1” kitaplıktan kaldırılsın mı?\n\nKonuları ve resimleri silinir; notlarınız ve kitabın dosyası kalır."_s
        .arg(book.title);
}

}  // namespace lirovan::browse
