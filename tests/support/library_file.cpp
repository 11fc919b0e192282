#include "support/library_file.h"

#include <QDir>
#include <QVariant>
#include <stdexcept>

#include "platform/core/library_layout.h"

namespace lirovan::test {

using platform::Database;
using platform::OpenMode;
using platform::Result;

namespace {

template <class T>
T must(Result<T> result) {
    if (!result) throw std::runtime_error(result.error().message.toStdString());
    if constexpr (!std::is_void_v<T>) return std::move(*result);
}

void bind(platform::Statement& statement, int parameter, const QVariant& value) {
    if (value.typeId() == QMetaType::QString)
        must(statement.bind(parameter, QStringView(value.toString())));
    else if (value.typeId() == QMetaType::Double)
        must(statement.bind(parameter, value.toDouble()));
    else
        must(statement.bind(parameter, value.toLongLong()));
}

}  // namespace

LibraryFile::LibraryFile() : folder_(std::make_unique<QTemporaryDir>()) {
    if (!folder_->isValid() || !QDir(folder_->path()).mkdir(QStringLiteral("OKU")))
        throw std::runtime_error("no temporary folder");
    database_ = must(Database::open(path(), OpenMode::Create));
    execute(u"PRAGMA synchronous=OFF");  // nothing here has to outlive a power cut
    must(platform::createLayout(database_, platform::LayoutKind::Library));
}

LibraryFile& LibraryFile::insert(QStringView sql, std::initializer_list<QVariant> values) {
    platform::Statement statement = must(database_.prepare(sql));
    int parameter = 0;
    for (const QVariant& value : values) bind(statement, ++parameter, value);
    must(statement.step());
    return *this;
}

LibraryFile& LibraryFile::author(qint64 id, QStringView name) {
    return insert(u"INSERT INTO tbl_Yazar VALUES (?, ?)", {id, name.toString()});
}

LibraryFile& LibraryFile::book(qint64 id, qint64 author, QStringView title, double order) {
    return insert(u"INSERT INTO tbl_Kitaplar (KitapID, KitapAdi, YazarID, KitapSiraID) VALUES (?, ?, ?, ?)",
                  {id, title.toString(), author, order});
}

LibraryFile& LibraryFile::topic(qint64 id, qint64 book, QStringView heading, QStringView text, double part,
                                double order) {
    ++topics_;
    insert(u"INSERT INTO tbl_KonuBaslik (KonuID, KitapID, KonuBaslik, Konu_Sira) VALUES (?, ?, ?, ?)",
           {id, book, heading.toString(), order == 0 ? double(topics_) : order});
    return insert(u"INSERT INTO tbl_Konu (KonuID, Konu, PartNumber) VALUES (?, ?, ?)",
                  {id, text.toString(), part});
}

LibraryFile& LibraryFile::script(QStringView fragment) {
    return insert(u"INSERT INTO tbl_scripts (Script) VALUES (?)", {fragment.toString()});
}

LibraryFile& LibraryFile::variant(QStringView written, QStringView searchForm) {
    return insert(u"INSERT INTO tbl_KelimeKont (KelimeKontYazili, KelimeKontAra) VALUES (?, ?)",
                  {written.toString(), searchForm.toString()});
}

LibraryFile& LibraryFile::execute(QStringView sql) {
    must(database_.execute(sql));
    return *this;
}

data::Library LibraryFile::open(OpenMode mode) const {
    return must(data::Library::open(appFolder(), mode));
}

LibraryFile smallLibrary() {
    LibraryFile file;
    file.execute(u"BEGIN")
        .author(1, u"Sabri Işık")
        .author(2, u"Zeynep Ersoy")
        .script(u"<script>/**/</script>");
    struct {
        qint64 id, author;
        QStringView title;
        double order;
    } const books[] = {{1, 1, u"YAZ DEFTERİ", 2},   {2, 1, u"Kuran (Kuran Sırası)", 1},
                       {5, 1, u"<B>SÖYLEV</B>", 3}, {32, 2, u"ALİ'NİN KİTABI", 1},
                       {35, 2, u"GİZLİ", 2},        {40, 2, u"AĞAÇLAR", 3}};
    for (const auto& book : books) {
        file.book(book.id, book.author, book.title, book.order);
        file.topic(book.id * 100 + 1, book.id, u"  GİRİŞ  ", u"<P>Şu dağın ardı ışıktır.</P>");
        file.topic(book.id * 100 + 2, book.id, u"IRMAK BOYU", u"<P>Su akar, yatağını bulur.</P>");
    }
    file.execute(u"COMMIT");
    return file;
}

}  // namespace lirovan::test
