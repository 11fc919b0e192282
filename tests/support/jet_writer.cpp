#include "support/jet_writer.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <bit>
#include <numeric>

namespace lirovan::test {
namespace {

constexpr qsizetype PageSize = 4096;
constexpr quint8 DataPage = 1, TablePage = 2;
constexpr quint32 CataloguePage = 2;
constexpr quint32 LongValues = 0x4C41564C;  // "LVAL", in the place of the owner
constexpr qsizetype RowCount = 12, RowOffsets = 14;
constexpr quint16 Hidden = 0x8000, Pointer = 0x4000;

template <class T>
void put(QByteArray& page, qsizetype at, T value) {
    qToLittleEndian(value, page.data() + at);
}
template <class T>
T get(const QByteArray& page, qsizetype at) {
    return qFromLittleEndian<T>(page.constData() + at);
}
template <class T>
QByteArray bytes(T value) {
    QByteArray result(sizeof value, '\0');
    put(result, 0, value);
    return result;
}

QByteArray utf16(const QString& text) {
    QByteArray result;
    for (const QChar unit : text) result += bytes<quint16>(unit.unicode());
    return result;
}

// Compressed where every unit fits a byte, as the makers of such files do.
QByteArray stored(const QString& text) {
    const bool fits = std::all_of(text.begin(), text.end(),
                                  [](QChar unit) { return unit.unicode() > 0 && unit.unicode() < 256; });
    return fits && text.size() > 2 ? "\xFF\xFE" + text.toLatin1() : utf16(text);
}

bool isFixed(JetType type) {
    return type != JetType::Text && type != JetType::Memo;
}
qsizetype fixedSize(JetType type) {
    return type == JetType::Long ? 4 : isFixed(type) ? 8 : 0;
}

// The mask over the header, RC4 with its fixed key.
void maskHeader(QByteArray& page) {
    constexpr std::array<quint8, 4> key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), quint8(0));
    for (quint32 i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + key[i % 4]) & 255;
        std::swap(state[i], state[j]);
    }
    for (quint32 n = 0, i = 0, j = 0; n < 128; ++n) {
        i = (i + 1) & 255;
        j = (j + state[i]) & 255;
        std::swap(state[i], state[j]);
        page[0x18 + n] =
            static_cast<char>(page[0x18 + n] ^ static_cast<char>(state[(state[i] + state[j]) & 255]));
    }
}

qsizetype lowestRow(const QByteArray& page) {
    const auto rows = get<quint16>(page, RowCount);
    return rows == 0 ? PageSize : get<quint16>(page, RowOffsets + 2 * (rows - 1)) & 0x1FFF;
}

qsizetype freeSpace(const QByteArray& page) {
    return lowestRow(page) - RowOffsets - 2 * (get<quint16>(page, RowCount) + 1);
}

}  // namespace

JetWriter::JetWriter() {
    pages_ += QByteArray(PageSize, '\0');  // the header, written last
    addPage(DataPage, 0);
    addPage(TablePage, 0);  // the catalogue, written last
}

quint32 JetWriter::addPage(quint8 type, quint32 owner) {
    QByteArray page(PageSize, '\0');
    page[0] = static_cast<char>(type);
    page[1] = 1;
    put<quint32>(page, 4, type == DataPage ? owner : 0);
    pages_ += page;
    return static_cast<quint32>(pages_.size() - 1);
}

// Puts a row on `page`, or on a new one when it does not fit there; answers its place.
quint32 JetWriter::addRow(quint32& page, quint32 owner, const QByteArray& row, quint16 flags) {
    if (page == 0 || freeSpace(pages_[page]) < row.size() || get<quint16>(pages_[page], RowCount) == 255)
        page = addPage(DataPage, owner);
    QByteArray& data = pages_[page];
    const auto number = get<quint16>(data, RowCount);
    const qsizetype start = lowestRow(data) - row.size();
    data.replace(start, row.size(), row);
    put<quint16>(data, RowOffsets + 2 * number, static_cast<quint16>(start | flags));
    put<quint16>(data, RowCount, static_cast<quint16>(number + 1));
    return page << 8 | number;
}

// The reference that stands in the row: value in the row, in one other row, or in a chain of them.
QByteArray JetWriter::longValue(const QString& text) {
    constexpr qsizetype inRow = 64, inOneRow = 4000;
    const QByteArray value = stored(text);
    const auto size = static_cast<quint32>(value.size());
    if (size <= inRow) return bytes<quint32>(size | 0x80000000) + QByteArray(8, '\0') + value;
    quint32 place = 0;
    if (size <= inOneRow) {
        place = addRow(longPage_, LongValues, value);
        return bytes<quint32>(size | 0x40000000) + bytes(place) + QByteArray(4, '\0');
    }
    // From the end: each part names the place of the next.
    for (qsizetype start = (size - 1) / inOneRow * inOneRow; start >= 0; start -= inOneRow) {
        const QByteArray part = value.mid(start, inOneRow);
        place = addRow(longPage_, LongValues, bytes(place) + part);
    }
    return bytes<quint32>(size) + bytes(place) + QByteArray(4, '\0');
}

// Number of columns, fixed values, variable values, their ends from the last to the first, mask of values.
QByteArray JetWriter::packed(const QList<JetColumn>& columns, const JetRow& row) {
    QByteArray fixed, variable, mask((columns.size() + 7) / 8, '\0');
    QList<quint16> starts;
    qsizetype fixedTotal = 0;
    for (const JetColumn& column : columns) fixedTotal += fixedSize(column.type);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const JetType type = columns[i].type;
        const JetCell& cell = row.cells[i];
        if (!isFixed(type)) starts += static_cast<quint16>(2 + fixedTotal + variable.size());
        if (cell.index() != 0) mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << (i % 8));
        if (const auto* text = std::get_if<QString>(&cell))
            variable += type == JetType::Memo ? longValue(*text) : stored(*text);
        else if (const auto* number = std::get_if<qint32>(&cell))
            fixed += bytes(*number);
        else if (const auto* real = std::get_if<double>(&cell))
            fixed += bytes(std::bit_cast<quint64>(*real));
        else
            fixed += QByteArray(fixedSize(type), '\0');
    }
    QByteArray ends = bytes(static_cast<quint16>(2 + fixedTotal + variable.size()));
    for (qsizetype i = starts.size(); i-- > 0;) ends += bytes(starts[i]);
    return bytes(static_cast<quint16>(columns.size())) + fixed + variable + ends +
           bytes(static_cast<quint16>(starts.size())) + mask;
}

// Writes the rows and the definition of a table onto its page.
quint32 JetWriter::writeTable(quint32 page, const QList<JetColumn>& columns, const QList<JetRow>& rows) {
    QList<quint32> dataPages;
    quint32 current = 0, elsewhere = 0, count = 0;
    QList<QByteArray> values;  // first all of them: their long parts take pages of their own
    for (const JetRow& row : rows) values += packed(columns, row);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        quint32 place = 0;
        if (rows[i].state == JetRowState::Moved) {
            const quint32 target = addRow(elsewhere, page, values[i], Hidden);
            place = addRow(current, page, bytes(target), Pointer);
            if (!dataPages.contains(elsewhere)) dataPages += elsewhere;
        } else {
            place = addRow(current, page, values[i],
                           rows[i].state == JetRowState::Deleted ? Hidden | Pointer : 0);
        }
        if (!dataPages.contains(place >> 8)) dataPages += place >> 8;
        if (rows[i].state != JetRowState::Deleted) ++count;
    }

    // Which pages hold the rows: a bit each, from the first of them on.
    const quint32 first = dataPages.isEmpty() ? 0 : *std::min_element(dataPages.begin(), dataPages.end());
    const quint32 last = dataPages.isEmpty() ? 0 : *std::max_element(dataPages.begin(), dataPages.end());
    QByteArray map(5 + std::max<qsizetype>(64, (last - first) / 8 + 1), '\0');
    put<quint32>(map, 1, first);
    for (const quint32 data : dataPages)
        map[5 + (data - first) / 8] =
            static_cast<char>(map[5 + (data - first) / 8] | 1 << ((data - first) % 8));
    quint32 mapPage = 0;
    const quint32 used = addRow(mapPage, 0, map);
    const quint32 free = addRow(mapPage, 0, QByteArray(69, '\0'));

    QByteArray definition = pages_[page].first(63);
    const auto variableColumns = static_cast<quint16>(std::count_if(
        columns.begin(), columns.end(), [](const JetColumn& column) { return !isFixed(column.type); }));
    put<quint32>(definition, 16, count);
    definition[40] = page == CataloguePage ? 'S' : 'N';
    put<quint16>(definition, 41, static_cast<quint16>(columns.size()));
    put<quint16>(definition, 43, variableColumns);
    put<quint16>(definition, 45, static_cast<quint16>(columns.size()));
    put<quint32>(definition, 55, used);
    put<quint32>(definition, 59, free);
    quint16 number = 0, variable = 0, offset = 0;
    for (const JetColumn& column : columns) {
        QByteArray entry(25, '\0');
        entry[0] = static_cast<char>(column.type);
        put<quint16>(entry, 5, number);
        put<quint16>(entry, 7, variable);
        put<quint16>(entry, 9, number++);
        entry[15] = isFixed(column.type) ? 3 : 2;
        put<quint16>(entry, 21, offset);
        put<quint16>(entry, 23,
                     static_cast<quint16>(column.type == JetType::Text ? 510 : fixedSize(column.type)));
        offset = static_cast<quint16>(offset + fixedSize(column.type));
        if (!isFixed(column.type)) ++variable;
        definition += entry;
    }
    for (const JetColumn& column : columns) {
        const QByteArray name = utf16(column.name);
        definition += bytes(static_cast<quint16>(name.size())) + name;
    }
    put<quint32>(definition, 8, static_cast<quint32>(definition.size()));
    pages_[page].replace(0, definition.size(), definition);
    return page;
}

void JetWriter::addTable(const QString& name, const QList<JetColumn>& columns, const QList<JetRow>& rows) {
    const quint32 page = writeTable(addPage(TablePage, 0), columns, rows);
    catalogue_ += JetRow{{static_cast<qint32>(page), name, qint32(1), qint32(0), std::monostate()}};
}

QByteArray JetWriter::file(const QByteArray& password) const {
    JetWriter whole = *this;
    const QList<JetColumn> columns{{QStringLiteral("Id"), JetType::Long},
                                   {QStringLiteral("Name"), JetType::Text},
                                   {QStringLiteral("Type"), JetType::Long},
                                   {QStringLiteral("Flags"), JetType::Long},
                                   {QStringLiteral("LvProp"), JetType::Memo}};
    whole.writeTable(CataloguePage, columns, catalogue_);
    QByteArray& header = whole.pages_[0];
    header.replace(0, 21, QByteArray("\0\1\0\0Standard Jet DB\0\1", 21));
    put<quint16>(header, 0x3C, 1254);
    // A creation date of 38143 days and a fraction; its whole days mask the password.
    put<quint64>(header, 0x72, std::bit_cast<quint64>(38143.5));
    for (qsizetype i = 0; i < 40; i += 4) put<quint32>(header, 0x42 + i, 38143);
    for (qsizetype i = 0; i < std::min<qsizetype>(password.size(), 20); ++i)
        header[0x42 + 2 * i] = static_cast<char>(header[0x42 + 2 * i] ^ password[i]);
    maskHeader(header);
    return whole.pages_.join();
}

}  // namespace lirovan::test
