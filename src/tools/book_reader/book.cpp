#include "tools/book_reader/book.h"

#include "platform/core/books/book_protocol.h"
#include "tools/book_reader/cleaner.h"
#include "tools/book_reader/finished_book.h"
#include "tools/book_reader/limits.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

class BookRun {
  public:
    BookRun(Source& source, Lines& lines)
        : package_(source.package), files_(*source.files), lines_(lines), pictures_(files_) {}

    // First pass: what stands where. Second pass: the texts.
    Result<void> read() {
        if (const Result<void> scanned = scan(); !scanned) return scanned;
        const Plan plan(package_, std::move(scans_), std::move(links_), covers_);
        book_.emplace(plan.outline);
        if (const Result<void> cleaned = clean(plan); !cleaned) return cleaned;
        fromHeadings_ = plan.outline.fromHeadings;
        return {};
    }

    Result<void> write(const QByteArray& hash, bool withPictures) {
        package_.title = inTextForm(package_.title).simplified();
        for (Creator& creator : package_.creators) creator.name = inTextForm(creator.name).simplified();
        lines_.book(package_, hash, fromHeadings_);
        for (const Skipped& skipped : package_.skipped) lines_.skipped(skipped.name, skipped.reason);
        for (const Skipped& skipped : pictures_.skipped()) lines_.skipped(skipped.name, skipped.reason);
        return book_->write(pictures_, withPictures, lines_);
    }

  private:
    Result<Markup> document(int number) {
        const Result<QByteArray> bytes = files_.read(package_.documents[number], MaximalDocumentBytes);
        return bytes ? Markup::parse(*bytes) : Result<Markup>(bytes.error());
    }

    // A page in front that holds nothing but a picture, or calls itself so. One with words is read.
    bool isCover(int number, const DocumentScan& scan) const {
        if (scan.words > 0) return false;
        const QString& name = package_.documents[number];
        const auto named = [&name](const ContentsEntry& entry) { return entry.document == name; };
        const bool listed = std::any_of(package_.contents.begin(), package_.contents.end(), named);
        return scan.saysCover || package_.covers.contains(name) ||
               (number == 0 && scan.pictures == 1 && !listed && package_.documents.size() > 1);
    }

    Result<void> scan() {
        qint64 words = 0;
        const int count = static_cast<int>(package_.documents.size());
        for (int i = 0; i < count; ++i) {
            const Result<Markup> markup = document(i);
            if (!markup) return markup.error();
            scans_.push_back(scanDocument(*markup, i, package_.documents[i], links_));
            words += scans_.back().words;
            if (isCover(i, scans_.back())) {
                covers_ += package_.documents[i];
                package_.skipped.push_back({package_.documents[i], u"kapak"_s});
            }
            lines_.progress(i + 1, qint64{2} * count);
            if (!lines_.good()) return Error{u"Okuma durduruldu."_s};
        }
        if (words > 0) return {};
        return Error{
            package_.fixedLayout
                ? u"Bu kitap sabit sayfa düzeninde ve resimlerden oluşuyor; içinde aranacak metin yok."_s
                : u"Bu kitapta metin yok (yalnız resim ya da boş sayfa); eklenemez."_s};
    }

    Result<void> clean(const Plan& plan) {
        qint64 bytes = 0;
        Cleaner cleaner(
            plan, pictures_,
            [&](int entry, const TopicText::Finished& piece) {
                bytes += piece.text.size();
                book_->append(entry, piece);
            },
            [&](int note, TopicText::Finished text) {
                bytes += text.text.size();
                book_->appendNote(plan.notes[static_cast<size_t>(note)].entry, note, std::move(text));
            });
        const int count = static_cast<int>(package_.documents.size());
        for (int i = 0; i < count; ++i) {
            const QString& name = package_.documents[i];
            const Result<Markup> markup = document(i);
            if (!markup) return markup.error();
            if (!covers_.contains(name)) cleaner.clean(*markup, i, name, package_.language);
            if (bytes > platform::MaximalBookTextBytes) return Error{u"Kitap çok büyük."_s};
            lines_.progress(count + i + 1, qint64{2} * count);
            if (!lines_.good()) return Error{u"Okuma durduruldu."_s};
        }
        cleaner.finish();
        return {};
    }

    Package& package_;
    Files& files_;
    Lines& lines_;
    Pictures pictures_;
    std::vector<DocumentScan> scans_;
    std::vector<Link> links_;
    QStringList covers_;
    std::optional<FinishedBook> book_;
    bool fromHeadings_ = false;
};

}  // namespace

Result<void> handOver(Source& source, const QByteArray& hash, bool withPictures, Lines& lines) {
    BookRun run(source, lines);
    const Result<void> read = run.read();
    return read ? run.write(hash, withPictures) : read;
}

}  // namespace lirovan::book_reader
