#include "tools/kitaplik/build_library.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include "data/library.h"
#include "data/library_writer.h"
#include "search/matching/variant_table.h"
#include "tools/kitaplik/make_file.h"
#include "tools/kitaplik/manifest.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using data::LibraryWriter;
using platform::Error;
using platform::Result;

namespace {

Result<QByteArray> bytesOf(const QString& path, QStringView name) {
    const QFileInfo info(path);
    if (!info.exists()) return Error{u"%1 bulunamadı."_s.arg(name)};
    // A folder cannot be read, and a pipe never ends.
    if (!info.isFile()) return Error{u"%1 bir dosya değil."_s.arg(name)};
    if (info.size() > LibraryWriter::MostTextBytes)
        return Error{u"%1 bir kitaplık için çok büyük (%2 bayt; en çok %3)."_s.arg(name)
                         .arg(info.size())
                         .arg(LibraryWriter::MostTextBytes)};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return Error{u"%1 okunamıyor."_s.arg(name)};
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) return Error{u"%1 okunamıyor."_s.arg(name)};
    return bytes;
}

class Builder {
  public:
    explicit Builder(const QString& folder) : root_(QFileInfo(folder).canonicalFilePath()) {}

    Result<void> write(LibraryWriter& writer) const {
        if (root_.isEmpty() || !QFileInfo(root_).isDir()) return Error{u"Klasör bulunamadı."_s};
        const Result<QByteArray> json = bytesOf(root_ + u"/kitaplik.json"_s, u"kitaplik.json");
        if (!json) return json.error();
        const Result<Manifest> manifest = readManifest(*json);
        if (!manifest) return manifest.error();

        if (!manifest->scriptFile.isEmpty()) {
            const Result<QString> script = textOf(manifest->scriptFile);
            if (!script) return script.error();
            if (const Result<void> added = writer.addScript(*script); !added) return added;
        }
        for (const ManifestAuthor& author : manifest->authors)
            if (const Result<void> added = writeAuthor(writer, author); !added) return added;
        return {};
    }

  private:
    // A symbolic link may lead out of the folder too.
    Result<QString> textOf(const QString& relative) const {
        const QString path = QFileInfo(root_ + u'/' + relative).canonicalFilePath();
        if (path.isEmpty()) return Error{u"%1 bulunamadı."_s.arg(relative)};
        if (!path.startsWith(root_ + u'/')) return Error{u"%1 klasörün dışında."_s.arg(relative)};
        const Result<QByteArray> bytes = bytesOf(path, relative);
        if (!bytes) return bytes.error();
        // Stateless: a character cut off at the end of the file is an error too.
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString text = decoder(*bytes);
        if (decoder.hasError()) return Error{u"%1 geçerli UTF-8 değil."_s.arg(relative)};
        return text;
    }

    Result<void> writeAuthor(LibraryWriter& writer, const ManifestAuthor& author) const {
        const data::AuthorId id{author.id};
        if (const Result<void> added = writer.add(data::Author{id, author.name}); !added) return added;
        for (const ManifestBook& book : author.books) {
            const data::Book row{data::BookId{book.id}, book.title, id, book.order};
            if (const Result<void> added = writer.add(row); !added) return added;
            for (const ManifestTopic& topic : book.topics)
                if (const Result<void> added = writeTopic(writer, row.id, topic); !added) return added;
        }
        return {};
    }

    Result<void> writeTopic(LibraryWriter& writer, data::BookId book, const ManifestTopic& topic) const {
        const data::TopicId id{topic.id};
        Result<QString> text = textOf(topic.file);
        if (!text) return text.error();
        const Result<void> added = writer.add(data::Heading{id, book, topic.heading, topic.order});
        if (!added) return added;
        return writer.add(data::TopicText{id, std::move(*text), topic.part});
    }

    QString root_;
};

Result<void> writeLibrary(const QString& folder, const QString& path) {
    Result<LibraryWriter> writer = LibraryWriter::create(path);
    if (!writer) return writer.error();
    if (const Result<void> written = Builder(folder).write(*writer); !written) return written;
    return writer->finish();
}

Result<void> fillVariantTable(const QString& path) {
    const Result<data::Library> library = data::Library::openFile(path, platform::OpenMode::ReadWrite);
    if (!library) return library.error();
    const Result<qint64> rows = search::rebuildVariantTable(*library, [] { return true; });
    if (!rows) return rows.error();
    return {};
}

}  // namespace

Result<void> buildLibrary(const QString& folder, const QString& target) {
    return makeFile(target, [&](const QString& path) -> Result<void> {
        if (const Result<void> written = writeLibrary(folder, path); !written) return written;
        return fillVariantTable(path);
    });
}

}  // namespace lirovan::tools
