// A Jet file as a source, through libmdb: it finds tables, pages, rows and fields; the values are decoded
// here from the stored bytes, since its own texts have a limited size and lose dates before 1900.
// glib brings templates, which its include from within mdbtools.h would put under C linkage.
#include <glib.h>

#include <mdbtools.h>

#include <QFileInfo>
#include <array>
#include <cstring>

#include "platform/core/import/jet_values.h"
#include "tools/jet_import/row_source.h"

namespace lirovan::jet_import {

using namespace Qt::StringLiterals;
namespace {

using platform::Error;
using platform::JetTextDecoder;
using platform::Result;

// The upper bits of a row's place on its page. A row that outgrew its page leaves a pointer in its slot and
// is hidden at its new place, so that it is read once and in its order; a deleted row has both bits.
constexpr int RowHidden = 0x8000, RowPointer = 0x4000, RowOffset = 0x1FFF;

Error damaged() {
    return {u"Dosya bozuk ya da eksik: bir kayıt okunamadı."_s};
}

struct Closer {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using Handle = std::unique_ptr<MdbHandle, Closer>;
using TableDef = std::unique_ptr<MdbTableDef, Closer>;

struct File {
    Handle handle;
    JetTextDecoder decoder;
    qint64 size;  // bytes

    qint64 pages() const { return size / static_cast<qint64>(handle->fmt->pg_size); }
};

template <class T>
T little(QByteArrayView bytes) {
    T value{};
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
}

// A long value: a reference of 12 bytes in the row, the bytes in the row behind it, in a row of another page,
// or in a chain of such rows of which each begins with the place of the next.
Result<QByteArray> longValue(const File& file, QByteArrayView field) {
    constexpr qsizetype reference = MDB_MEMO_OVERHEAD;
    constexpr quint32 inRow = 0x80000000, inOneRow = 0x40000000, flags = inRow | inOneRow;
    if (field.size() < reference) return damaged();
    const auto first = little<quint32>(field);
    const qsizetype length = first & ~flags;
    if (first & inRow)
        return field.sliced(reference).first(std::min(length, field.size() - reference)).toByteArray();
    if (length > file.size) return damaged();
    const bool chained = !(first & inOneRow);

    QByteArray bytes;
    bytes.reserve(length);
    for (auto place = little<quint32>(field.sliced(4)); bytes.size() < length;) {
        void* page = nullptr;
        int offset = 0;
        size_t size = 0;
        if (place == 0 ||
            mdb_find_pg_row(file.handle.get(), static_cast<int>(place), &page, &offset, &size) != 0)
            return damaged();
        QByteArrayView row(static_cast<const char*>(page) + offset, static_cast<qsizetype>(size));
        if (chained) {
            if (row.size() <= 4) return damaged();
            place = little<quint32>(row);
            row = row.sliced(4);
        } else if (row.size() < length) {
            return damaged();
        }
        bytes.append(row.first(std::min(row.size(), length - bytes.size())));
    }
    return bytes;
}

class JetTable : public TableReader {
  public:
    JetTable(std::shared_ptr<const File> file, TableDef table)
        : file_(std::move(file)), table_(std::move(table)) {}

    QStringList columns() const override {
        QStringList names;
        for (unsigned i = 0; i < table_->num_cols; ++i)
            names += QString::fromUtf8(column(static_cast<int>(i)).name);
        return names;
    }
    qint64 rowCount() const override { return table_->num_rows; }
    Result<bool> next() override;
    Result<Value> value(int index) override;

    /// Every data page that the table owns lies within the file.
    bool isComplete() const;

  private:
    const MdbColumn& column(int index) const {
        return *static_cast<const MdbColumn*>(g_ptr_array_index(table_->columns, index));
    }
    bool readRow(int row);

    std::shared_ptr<const File> file_;
    TableDef table_;
    std::array<MdbField, MDB_MAX_COLS> fields_{};  // of the current row, by column
    bool awayFromPage_ = false;                    // the page of a moved row is in the buffer
    int row_ = -1, rowsOnPage_ = 0;                // the current row of the current page
    qint64 read_ = 0;
};

bool JetTable::isComplete() const {
    if (!table_->usage_map || table_->map_sz == 0) return false;
    qint64 page = 0;
    for (;;) {
        const qint64 next =
            mdb_map_find_next(file_->handle.get(), table_->usage_map, static_cast<unsigned>(table_->map_sz),
                              static_cast<guint32>(page));
        if (next <= page) return true;
        if (next >= file_->pages()) return false;
        page = next;
    }
}

// False for a slot without a row of its own.
bool JetTable::readRow(int row) {
    MdbHandle* mdb = file_->handle.get();
    int start = 0;
    size_t size = 0;
    if (mdb_find_row(mdb, row, &start, &size) != 0 || start & RowHidden) return false;
    if (start & RowPointer) {
        if (size < 4) return false;
        const auto place = static_cast<guint32>(mdb_get_int32(mdb->pg_buf, start & RowOffset));
        awayFromPage_ = true;
        if (mdb_read_pg(mdb, place >> 8) != mdb->fmt->pg_size) return false;
        if (mdb_find_row(mdb, static_cast<int>(place & 0xFF), &start, &size) != 0 || start & RowPointer)
            return false;
    }
    return mdb_crack_row(table_.get(), start & RowOffset, size, fields_.data()) > 0;
}

Result<bool> JetTable::next() {
    MdbHandle* mdb = file_->handle.get();
    if (read_ == 0 && rowCount() == 0) return false;
    // Each row takes two bytes at least; more rows than that means that the pages go round in a circle.
    if (read_ > file_->size / 2) return damaged();
    for (;;) {
        if (awayFromPage_) mdb_read_pg(mdb, table_->cur_phys_pg);
        awayFromPage_ = false;
        if (++row_ >= rowsOnPage_) {
            if (!mdb_read_next_dpg(table_.get())) {
                if (read_ >= rowCount()) return false;
                return Error{
                    u"Dosya bozuk ya da eksik: %1 tablosundaki %2 kaydın yalnız %3 tanesi "
                    "okunabildi."_s.arg(QString::fromUtf8(table_->name))
                        .arg(rowCount())
                        .arg(read_)};
            }
            rowsOnPage_ = mdb_get_int16(mdb->pg_buf, mdb->fmt->row_count_offset);
            row_ = -1;
        } else if (readRow(row_)) {
            ++read_;
            return true;
        }
    }
}

Result<Value> JetTable::value(int index) {
    const MdbColumn& stored = column(index);
    const MdbField& field = fields_[static_cast<size_t>(index)];
    if (stored.col_type == MDB_BOOL) return Value(qint64(field.is_null ? 0 : 1));
    if (field.is_null) return Value();
    const QByteArrayView bytes(static_cast<const char*>(field.value), std::max(field.siz, 0));

    const auto fixed = [&](auto sample) -> Result<Value> {
        if (bytes.size() < static_cast<qsizetype>(sizeof sample)) return damaged();
        const auto number = little<decltype(sample)>(bytes);
        if constexpr (std::is_floating_point_v<decltype(sample)>)
            return Value(static_cast<double>(number));
        else
            return Value(static_cast<qint64>(number));
    };
    switch (stored.col_type) {
        case MDB_BYTE:
            return fixed(quint8());
        case MDB_INT:
            return fixed(qint16());
        case MDB_LONGINT:
            return fixed(qint32());
        case MDB_FLOAT:
            return fixed(float());
        case MDB_DOUBLE:
            return fixed(double());
        case MDB_MONEY:  // ten-thousandths
            if (bytes.size() < 8) return damaged();
            return Value(static_cast<double>(little<qint64>(bytes)) / 10000.0);
        case MDB_DATETIME: {
            if (bytes.size() < 8) return damaged();
            const std::optional<QString> date = platform::isoDate(little<double>(bytes));
            return date ? Value(*date) : Value();
        }
        case MDB_TEXT:
            return Value(file_->decoder.decode(bytes));
        case MDB_MEMO: {
            const Result<QByteArray> text = longValue(*file_, bytes);
            if (!text) return text.error();
            return Value(file_->decoder.decode(*text));
        }
        case MDB_NUMERIC: {
            const auto start =
                static_cast<const char*>(field.value) - reinterpret_cast<char*>(file_->handle->pg_buf);
            char* text = mdb_numeric_to_string(file_->handle.get(), static_cast<int>(start), stored.col_scale,
                                               stored.col_prec);
            const QString number = QString::fromLatin1(text);
            g_free(text);
            return Value(number);
        }
        default:
            return Value();
    }
}

class JetSource : public RowSource {
  public:
    explicit JetSource(std::shared_ptr<const File> file) : file_(std::move(file)) {}

    QStringList tables() const override {
        QStringList names;
        for (unsigned i = 0; i < file_->handle->num_catalog; ++i)
            if (entry(i)->object_type == MDB_TABLE) names += QString::fromUtf8(entry(i)->object_name);
        return names;
    }
    Result<std::unique_ptr<TableReader>> open(const QString& name) override {
        for (unsigned i = 0; i < file_->handle->num_catalog; ++i) {
            if (entry(i)->object_type != MDB_TABLE || QString::fromUtf8(entry(i)->object_name) != name)
                continue;
            TableDef table(mdb_read_table(entry(i)));
            if (!table || !mdb_read_columns(table.get()) || table->num_cols > MDB_MAX_COLS ||
                table->columns->len < table->num_cols)
                break;
            auto reader = std::make_unique<JetTable>(file_, std::move(table));
            if (!reader->isComplete()) return Error{u"Dosya eksik: sonu kesilmiş."_s};
            return std::unique_ptr<TableReader>(std::move(reader));
        }
        return Error{u"Dosya bozuk ya da eksik: %1 tablosu okunamadı."_s.arg(name)};
    }

  private:
    MdbCatalogEntry* entry(unsigned index) const {
        return static_cast<MdbCatalogEntry*>(g_ptr_array_index(file_->handle->catalog, index));
    }
    std::shared_ptr<const File> file_;
};

}  // namespace

Result<std::unique_ptr<RowSource>> openJet(const QString& path, const platform::FileHeader& header) {
    const Error failed{u"Dosya bozuk ya da eksik: Jet veritabanı olarak açılamadı."_s};
    Handle handle(mdb_open(path.toUtf8().constData(), MDB_NOFLAGS));
    if (!handle) return failed;
    if (!mdb_read_catalog(handle.get(), MDB_TABLE) || handle->num_catalog == 0) return failed;
    const bool jet3 = header.format == platform::FileFormat::Jet3;
    return std::unique_ptr<RowSource>(std::make_unique<JetSource>(std::make_shared<File>(
        File{std::move(handle), jet3 ? JetTextDecoder::jet3(header.codePage) : JetTextDecoder::jet4(),
             QFileInfo(path).size()})));
}

}  // namespace lirovan::jet_import
