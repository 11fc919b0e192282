// A small library in a folder of its own, made row by row.
#pragma once

#include <QDir>
#include <QTemporaryDir>
#include <memory>
#include <stdexcept>

#include "data/library.h"
#include "platform/core/library_layout.h"
#include "support/files.h"

namespace lirovan::test {

/// An application folder that holds `kitaplar.vq` and an empty `OKU`. A failing step throws
/// std::runtime_error with the message, which ends the test.
class LibraryFile {
  public:
    LibraryFile() : folder_(std::make_unique<QTemporaryDir>()) {
        if (!QDir(folder_->path()).mkdir(QStringLiteral("OKU"))) throw std::runtime_error("no folder");
        database_ = must(platform::Database::open(path(), platform::OpenMode::Create));
        execute(u"PRAGMA synchronous=OFF");  // nothing here has to outlive a power cut
        must(platform::createLayout(database_, platform::LayoutKind::Library));
    }

    LibraryFile& author(qint64 id, QStringView name) { return insert(u"tbl_Yazar", id, name); }
    LibraryFile& book(qint64 id, qint64 author, QStringView title, double order = 0) {
        return insert(u"tbl_Kitaplar (KitapID, KitapAdi, YazarID, KitapSiraID)", id, title, author, order);
    }
    /// Heading and text; `order` 0 puts it after the earlier ones.
    LibraryFile& topic(qint64 id, qint64 book, QStringView heading, QStringView text, double part = 0,
                       double order = 0) {
        ++topics_;
        insert(u"tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira)", id, book, heading,
               order == 0 ? topics_ : order);
        return insert(u"tbl_Konu (KonuID, Konu, PartNumber)", id, text, part);
    }
    LibraryFile& script(QStringView fragment) { return insert(u"tbl_scripts (Script)", fragment); }
    LibraryFile& variant(QStringView written, QStringView searchForm) {
        return insert(u"tbl_KelimeKont (KelimeKontYazili, KelimeKontAra)", written, searchForm);
    }
    /// Gives the topic a long text that cannot be read: the chain of its pages leads nowhere.
    LibraryFile& damage(qint64 topic) {
        execute(QStringLiteral("UPDATE tbl_Konu SET Konu=printf('%.99999c','x') WHERE KonuID=%1").arg(topic));
        const QByteArray run(1000, 'x');
        QByteArray bytes = readFile(path());
        for (qsizetype page = 0; page < bytes.size(); page += 32768)
            if (bytes.mid(page + 4, run.size()) == run) bytes.replace(page, 4, QByteArray(4, '\xFF'));
        writeFile(path(), bytes);
        return *this;
    }
    LibraryFile& execute(QStringView sql) { return must(database_.execute(sql)), *this; }

    data::Library open(platform::OpenMode mode = platform::OpenMode::ReadWrite) const {
        return must(data::Library::open(appFolder(), mode));
    }
    QString folder() const { return folder_->path(); }
    QString path() const { return filePath(QStringLiteral("kitaplar.vq")); }
    QString filePath(const QString& name) const { return folder_->filePath(name); }
    platform::AppFolder appFolder() const { return platform::AppFolder(folder()); }

  private:
    template <class T>
    static T must(platform::Result<T> result) {
        if (!result) throw std::runtime_error(result.error().message.toStdString());
        if constexpr (!std::is_void_v<T>) return std::move(*result);
    }
    static QString sql(qint64 number) { return QString::number(number); }
    static QString sql(double number) { return QString::number(number, 'g', 17); }
    static QString sql(QStringView text) {
        return u'\'' + text.toString().replace(u'\'', QStringLiteral("''")) + u'\'';
    }
    template <class... Values>
    LibraryFile& insert(QStringView into, const Values&... values) {
        const QStringList list{sql(values)...};
        return execute(QStringLiteral("INSERT INTO %1 VALUES (%2)").arg(into, list.join(u',')));
    }

    std::unique_ptr<QTemporaryDir> folder_;
    platform::Database database_;
    double topics_ = 0;
};

/// Two authors with three books of two topics each: author 1 "Sabri Işık" has books 1, 2 and 5, author 2
/// "Zeynep Ersoy" has books 32, 35 (the hidden one) and 40. Topic ids are book × 100 + 1 and + 2.
inline LibraryFile smallLibrary() {
    LibraryFile file;
    file.execute(u"BEGIN").author(1, u"Sabri Işık").author(2, u"Zeynep Ersoy");
    file.script(u"<script>/**/</script>");
    file.book(1, 1, u"YAZ DEFTERİ", 2).book(2, 1, u"Kuran (Kuran Sırası)", 1).book(5, 1, u"<B>SÖYLEV</B>", 3);
    file.book(32, 2, u"ALİ'NİN KİTABI", 1).book(35, 2, u"GİZLİ", 2).book(40, 2, u"AĞAÇLAR", 3);
    for (const qint64 book : {1, 2, 5, 32, 35, 40}) {
        file.topic(book * 100 + 1, book, u"  GİRİŞ  ", u"<P>Şu dağın ardı ışıktır.</P>");
        file.topic(book * 100 + 2, book, u"IRMAK BOYU", u"<P>Su akar, yatağını bulur.</P>");
    }
    file.execute(u"COMMIT");
    return file;
}

}  // namespace lirovan::test
