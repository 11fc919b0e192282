// EPUB containers through libzip. Nothing is ever written to disk, and no name is used as a path; names that
// would lead out of a folder are refused all the same, since no honest program makes them.
#include <zip.h>
#include <QFile>

#include "tools/book_reader/files.h"
#include "tools/book_reader/limits.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

struct Closer {
    void operator()(zip_t* archive) const { zip_discard(archive); }
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

Error damaged() {
    return {u"Dosya bozuk ya da yarım: içindekiler okunamıyor."_s};
}
Error encrypted() {
    return {u"Kitap şifreli (kopya korumalı); yalnız şifresiz kitaplar eklenebilir."_s};
}
Error tooLarge(const QString& name) {
    return {u"Kitabın içindeki “%1” çok büyük."_s.arg(name)};
}

bool leadsOut(QStringView name) {
    if (name.startsWith(u'/') || name.contains(u'\\') || (name.size() > 1 && name[1] == u':')) return true;
    for (const QStringView part : name.split(u'/'))
        if (part == u"..") return true;
    return false;
}

bool isLink(zip_t* archive, zip_uint64_t index) {
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0) return false;
    constexpr zip_uint32_t kind = 0170000, link = 0120000;
    return system == ZIP_OPSYS_UNIX && ((attributes >> 16) & kind) == link;
}

bool isTrap(qint64 unpacked, qint64 packed) {
    return unpacked > TrapBytes && unpacked / std::max<qint64>(packed, 1) > TrapFactor;
}

class ZipFiles : public Files {
  public:
    explicit ZipFiles(zip_t* archive) : archive_(archive) {}

    // Looks at every entry before any is unpacked.
    Result<void> index() {
        const zip_int64_t count = zip_get_num_entries(archive_.get(), 0);
        if (count > MaximalEntries)
            return Error{u"Dosyada çok fazla parça var (%1); bu bir kitap değil."_s.arg(count)};
        qint64 unpacked = 0, packed = 0;
        for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
            zip_stat_t stat;
            if (zip_stat_index(archive_.get(), i, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME))
                return damaged();
            const QString name = QString::fromUtf8(stat.name);
            if (leadsOut(name) || isLink(archive_.get(), i))
                return Error{
                    u"Dosyada kendi dışına çıkan bir ad var: “%1”. Kitap alınmadı."_s.arg(name.left(100))};
            unpacked += static_cast<qint64>(std::min<zip_uint64_t>(stat.size, MaximalSourceBytes));
            packed += static_cast<qint64>(std::min<zip_uint64_t>(stat.comp_size, MaximalSourceBytes));
            if (isTrap(static_cast<qint64>(stat.size), static_cast<qint64>(stat.comp_size))) return trap();
            if (!names_.contains(name)) names_.insert(name, i);
        }
        return isTrap(unpacked, packed) ? Result<void>(trap()) : Result<void>();
    }

    bool has(const QString& name) const override { return names_.contains(name); }

    Result<QByteArray> read(const QString& name, qint64 limit) override {
        const auto found = names_.constFind(name);
        if (found == names_.cend()) return Error{u"Kitapta “%1” yok."_s.arg(name)};
        zip_stat_t stat;
        if (zip_stat_index(archive_.get(), *found, 0, &stat) != 0) return damaged();
        if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) && stat.encryption_method != ZIP_EM_NONE)
            return encrypted();
        if (static_cast<qint64>(stat.size) > limit) return tooLarge(name);
        read_ += static_cast<qint64>(stat.size);
        if (read_ > MaximalReadBytes) return Error{u"Kitap çok büyük."_s};
        const std::unique_ptr<zip_file_t, Closer> file(zip_fopen_index(archive_.get(), *found, 0));
        if (!file) return damaged();
        QByteArray bytes(static_cast<qsizetype>(stat.size), Qt::Uninitialized);
        qsizetype filled = 0;
        while (filled < bytes.size()) {
            const zip_int64_t got = zip_fread(file.get(), bytes.data() + filled,
                                              static_cast<zip_uint64_t>(bytes.size() - filled));
            if (got <= 0) return damaged();
            filled += static_cast<qsizetype>(got);
        }
        char more = 0;  // reading to the end also checks the sum
        if (zip_fread(file.get(), &more, 1) != 0) return damaged();
        return bytes;
    }

  private:
    static Error trap() { return {u"Dosya açılınca ölçüsüz büyüyor; bu bir kitap değil."_s}; }

    std::unique_ptr<zip_t, Closer> archive_;
    QHash<QString, zip_uint64_t> names_;
    qint64 read_ = 0;
};

}  // namespace

Result<std::unique_ptr<Files>> openZip(const QString& path) {
    int code = 0;
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
    if (!archive) return damaged();
    auto files = std::make_unique<ZipFiles>(archive);
    if (const Result<void> indexed = files->index(); !indexed) return indexed.error();
    return std::unique_ptr<Files>(std::move(files));
}

}  // namespace lirovan::book_reader
