#include "platform/core/books/book_content.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>
#include <algorithm>

#include "platform/core/books/book_markup.h"
#include "platform/core/books/book_protocol.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

// Left-out parts beyond this are counted by no reader.
constexpr size_t MostSkipped = 10'000;

Error wrong(const QString& what) {
    return {u"Kitabı okuyan program anlaşılmaz bir şey söyledi (%1)."_s.arg(what)};
}

Error noRoom() {
    return {u"Kitabın geçici dosyası yazılamadı; diskte yer kalmamış olabilir."_s};
}

}  // namespace

BookContent::BookContent(QString file) : file_(std::move(file)), spool_(std::make_unique<QTemporaryFile>()) {}
BookContent::BookContent(BookContent&&) noexcept = default;
BookContent& BookContent::operator=(BookContent&&) noexcept = default;
BookContent::~BookContent() = default;

Result<SpoolPart> BookContent::store(const QByteArray& bytes) {
    if (!spool_->isOpen() && !spool_->open()) return noRoom();
    const SpoolPart part{spool_->size(), bytes.size()};
    if (!spool_->seek(part.at) || spool_->write(bytes) != bytes.size() || !spool_->flush()) return noRoom();
    return part;
}

Result<QByteArray> BookContent::stored(SpoolPart part) const {
    if (part.size == 0) return QByteArray();
    if (!spool_->seek(part.at)) return noRoom();
    QByteArray bytes = spool_->read(part.size);
    if (bytes.size() != part.size) return Error{u"Kitabın geçici dosyası okunamadı."_s};
    return bytes;
}

Result<void> BookContent::take(BookLine line) {
    if (done_) return wrong(u"son satırdan sonra satır"_s);
    if (auto* head = std::get_if<BookHead>(&line)) return takeHead(std::move(*head));
    if (const auto* picture = std::get_if<BookPictureLine>(&line)) return takePicture(*picture);
    if (const auto* topic = std::get_if<BookTopicLine>(&line)) return takeTopic(*topic);
    if (auto* skipped = std::get_if<BookSkippedLine>(&line); skipped && skipped_.size() < MostSkipped)
        skipped_.push_back(std::move(*skipped));
    if (const auto* done = std::get_if<BookDoneLine>(&line)) done_ = *done;
    return {};
}

Result<void> BookContent::takeHead(BookHead head) {
    if (hasHead_) return wrong(u"ikinci kitap"_s);
    hasHead_ = true;
    head_ = std::move(head);
    return {};
}

Result<void> BookContent::takePicture(const BookPictureLine& line) {
    if (!hasHead_ || line.number != qint64(pictures_.size())) return wrong(u"resim sırası"_s);
    pictureBytes_ += line.bytes.size();
    if (pictureBytes_ > MaximalPicturesBytes) return wrong(u"resimler çok büyük"_s);
    const Result<SpoolPart> bytes = store(line.bytes);
    if (!bytes) return bytes.error();
    pictures_.push_back({line.name, line.type, *bytes});
    return {};
}

Result<void> BookContent::takeTopic(const BookTopicLine& line) {
    if (!hasHead_ || line.number != qint64(outline_.size())) return wrong(u"konu sırası"_s);
    const qint64 depth = line.parent < 0 ? 0 : outline_[size_t(line.parent)].depth + 1;
    if (line.depth != depth) return wrong(u"konu derinliği"_s);
    const QByteArray bytes = line.text.toUtf8();
    textBytes_ += bytes.size();
    if (bytes.size() > MaximalTopicBytes || textBytes_ > MaximalBookTextBytes)
        return wrong(u"metin çok uzun"_s);
    const Result<SpoolPart> part = store(bytes);
    if (!part) return part.error();
    BookEntry entry{line.parent, line.depth, line.title, line.words, *part, {}};
    noteLinks(line.text, entry);
    if (withPictures_ && !entry.pictures.empty() && entry.pictures.back() >= qint64(pictures_.size()))
        return wrong(u"olmayan resim"_s);
    outline_.push_back(std::move(entry));
    return {};
}

void BookContent::noteLinks(const QString& text, BookEntry& entry) {
    (void)withAddresses(text, [&](const BookAddress& address) {
        if (address.kind == BookAddress::Kind::Topic) lastLinked_ = std::max(lastLinked_, address.number);
        if (address.kind == BookAddress::Kind::Picture) entry.pictures.push_back(address.number);
        return std::optional(address);
    });
    std::sort(entry.pictures.begin(), entry.pictures.end());
    entry.pictures.erase(std::unique(entry.pictures.begin(), entry.pictures.end()), entry.pictures.end());
}

Result<void> BookContent::finish() {
    if (!hasHead_ || !done_) return Error{u"Kitabı okuyan program işini bitirmeden kapandı."_s};
    const qint64 topics =
        std::count_if(outline_.begin(), outline_.end(), [](const BookEntry& e) { return e.isTopic(); });
    // The count of the last line may leave out the levels.
    if ((done_->topics != qint64(outline_.size()) && done_->topics != topics) ||
        (withPictures_ && done_->pictures != qint64(pictures_.size())))
        return wrong(u"sayılar tutmuyor"_s);
    if (topics == 0) return Error{u"Kitapta metin yok."_s};
    if (lastLinked_ >= qint64(outline_.size())) return wrong(u"olmayan konuya bağlantı"_s);
    return {};
}

QString BookContent::authorName() const {
    QStringList named, all;
    for (const BookAuthor& author : head_.authors) {
        const QString name = author.name.simplified();
        if (name.isEmpty()) continue;
        if (author.role.isEmpty() || author.role == u"aut") named += name;
        all += name;
    }
    if (named.isEmpty()) named = all;
    named.removeDuplicates();
    return named.isEmpty() ? u"Bilinmeyen Yazar"_s : named.join(u", "_s);
}

QString BookContent::title() const {
    const QString title = head_.title.simplified();
    if (!title.isEmpty()) return title;
    const QString path = QDir::cleanPath(file_);
    const QString name =
        QFileInfo(path).isDir() ? QFileInfo(path).fileName() : QFileInfo(path).completeBaseName();
    return name.isEmpty() ? u"Adsız Kitap"_s : name;
}

Result<QString> BookContent::text(qint64 entry) const {
    const Result<QByteArray> bytes = stored(outline_.at(size_t(entry)).text);
    if (!bytes) return bytes.error();
    return QString::fromUtf8(*bytes);
}

Result<QByteArray> BookContent::picture(qint64 number) const {
    return stored(pictures_.at(size_t(number)).bytes);
}

}  // namespace lirovan::platform
