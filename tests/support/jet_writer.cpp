#include "support/jet_writer.h"

#include <QtEndian>
#include <algorithm>

namespace lirovan::test {
namespace {

constexpr qsizetype PageSize = 4096;
constexpr char DataPage = 1, TablePage = 2;
constexpr quint32 CataloguePage = 2;
constexpr quint32 LongValues = 0x4C41564C;  // "LVAL", in the place of the owner
constexpr qsizetype RowCount = 12, RowOffsets = 14;
constexpr quint16 Hidden = 0x8000, Pointer = 0x4000;

template <class T>
void put(QByteArray& page, qsizetype at, T value) {
    qToLittleEndian(value, page.data() + at);
}
template <class T>
QByteArray bytes(T value) {
    QByteArray result(sizeof value, '\0');
    put(result, 0, value);
    return result;
}
quint16 number16(const QByteArray& page, qsizetype at) {
    return qFromLittleEndian<quint16>(page.constData() + at);
}

QByteArray utf16(const QString& text) {
    QByteArray result;
    for (const QChar unit : text) result += bytes(unit.unicode());
    return result;
}

// Compressed where every unit fits a byte, as the makers of such files do.
QByteArray stored(const QString& text) {
    const auto fits = [](QChar unit) { return unit.unicode() > 0 && unit.unicode() < 256; };
    const bool compressed = text.size() > 2 && std::all_of(text.begin(), text.end(), fits);
    return compressed ? "\xFF\xFE" + text.toLatin1() : utf16(text);
}

// 0: of variable size.
quint16 fixedSize(JetType type) {
    return type == JetType::Text || type == JetType::Memo ? 0 : type == JetType::Long ? 4 : 8;
}

QByteArray headerPage(bool locked) {
    // The code page, the place of the password and the date of creation, whose whole days mask the password.
    QByteArray content(98, '\0');
    put<quint16>(content, 36, 1254);
    for (qsizetype i = 42; i < 82; i += 4) put<quint32>(content, i, 38143);
    if (locked) put<quint16>(content, 42, 'p');
    put(content, 90, 38143.5);
    // All of it is masked with the same stream in every file.
    const auto mask = QByteArray::fromHex(
        "b56f03626108c255eba96772433f009c7a9f90ff809a31c579baed30bcdfcc9d63d9e4c37b42fb8abc4e86fbec375d449c"
        "fac65e28e613b68a6054947b36f572dfb177f41343cfafb1333461795b92b57c2a05f17c99011b98fd124f4a946c3e6026");
    for (qsizetype i = 0; i < mask.size(); ++i) content[i] = static_cast<char>(content[i] ^ mask[i]);
    return (QByteArray("\0\1\0\0Standard Jet DB\0\1\0\0\0", 24) + content).leftJustified(PageSize, '\0');
}

class Writer {
  public:
    QList<QByteArray> pages;

    quint32 addPage(char type, quint32 owner = 0) {
        QByteArray page(PageSize, '\0');
        page[0] = type;
        page[1] = 1;
        put(page, 4, owner);
        pages += page;
        return static_cast<quint32>(pages.size() - 1);
    }
    void writeTable(quint32 page, const JetTable& table);

  private:
    quint32 addRow(quint32& page, quint32 owner, const QByteArray& row, quint16 flags = 0);
    QByteArray longValue(const QString& text);
    QByteArray packed(const QList<JetColumn>& columns, const JetRow& row);

    quint32 longPage_ = 0;  // the one that takes further long values; 0: none yet
};

// Puts a row on `page`, or on a new one when it does not fit there; answers its place.
quint32 Writer::addRow(quint32& page, quint32 owner, const QByteArray& row, quint16 flags) {
    const auto end = [this](quint32 of) -> qsizetype {
        const int rows = number16(pages[of], RowCount);
        return rows == 0 ? PageSize : number16(pages[of], RowOffsets + 2 * (rows - 1)) & 0x1FFF;
    };
    const auto takes = [&](int rows) {
        return rows < 255 && end(page) - row.size() >= RowOffsets + 2 * (rows + 1);
    };
    if (page == 0 || !takes(number16(pages[page], RowCount))) page = addPage(DataPage, owner);
    const qsizetype start = end(page) - row.size();
    QByteArray& data = pages[page];
    const quint16 number = number16(data, RowCount);
    data.replace(start, row.size(), row);
    put(data, RowOffsets + 2 * number, static_cast<quint16>(start | flags));
    put<quint16>(data, RowCount, number + 1);
    return page << 8 | number;
}

// The reference that stands in the row: value in the row, in one other row, or in a chain of them.
QByteArray Writer::longValue(const QString& text) {
    constexpr qsizetype inRow = 64, inOneRow = 4000;
    const QByteArray value = stored(text);
    const auto size = static_cast<quint32>(value.size());
    const auto reference = [](quint32 sizeAndKind, quint32 place) {
        return bytes(sizeAndKind) + bytes(place) + QByteArray(4, '\0');
    };
    if (size <= inRow) return reference(size | 0x80000000, 0) + value;
    if (size <= inOneRow) return reference(size | 0x40000000, addRow(longPage_, LongValues, value));
    quint32 place = 0;  // from the end: each part names the place of the next
    for (qsizetype start = (size - 1) / inOneRow * inOneRow; start >= 0; start -= inOneRow)
        place = addRow(longPage_, LongValues, bytes(place) + value.mid(start, inOneRow));
    return reference(size, place);
}

// Number of columns, fixed values, variable values, their ends from the last to the first, mask of values.
QByteArray Writer::packed(const QList<JetColumn>& columns, const JetRow& row) {
    QByteArray fixed, variable, starts, mask((columns.size() + 7) / 8, '\0');
    qsizetype before = 2;
    for (const JetColumn& column : columns) before += fixedSize(column.type);
    const auto reached = [&] { return bytes(static_cast<quint16>(before + variable.size())); };
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const quint16 size = fixedSize(columns[i].type);
        const JetCell& cell = row.cells[i];
        if (size == 0) starts.prepend(reached());
        if (cell.index() != 0) mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << (i % 8));
        if (const auto* text = std::get_if<QString>(&cell))
            variable += columns[i].type == JetType::Memo ? longValue(*text) : stored(*text);
        else if (const auto* number = std::get_if<qint32>(&cell))
            fixed += bytes(*number);
        else if (const auto* real = std::get_if<double>(&cell))
            fixed += bytes(*real);
        else
            fixed += QByteArray(size, '\0');
    }
    const auto count = static_cast<quint16>(starts.size() / 2);
    return bytes(static_cast<quint16>(columns.size())) + fixed + variable + reached() + starts +
           bytes(count) + mask;
}

// Writes the rows, and the definition of the table onto its page.
void Writer::writeTable(quint32 page, const JetTable& table) {
    quint32 current = 0, elsewhere = 0, maps = 0, count = 0;
    QByteArray used(3800, '\0');  // which pages hold the rows: a bit each behind five bytes
    const auto add = [&](quint32& target, const QByteArray& row, quint16 flags) {
        const quint32 place = addRow(target, page, row, flags);
        char& bits = used.data()[5 + target / 8];
        bits = static_cast<char>(bits | 1 << target % 8);
        return place;
    };
    for (const JetRow& row : table.rows) {
        const QByteArray values = packed(table.columns, row);
        if (row.state == JetRowState::Moved)
            add(current, bytes(add(elsewhere, values, Hidden)), Pointer);
        else
            add(current, values, row.state == JetRowState::Deleted ? Hidden | Pointer : 0);
        count += row.state != JetRowState::Deleted;
    }

    QByteArray columns, names;
    quint16 number = 0, variable = 0, offset = 0;
    for (const JetColumn& column : table.columns) {
        const quint16 size = fixedSize(column.type);
        QByteArray entry(25, '\0');
        entry[0] = static_cast<char>(column.type);
        put(entry, 5, number);
        put(entry, 7, variable);
        put(entry, 9, number++);
        entry[15] = size != 0 ? 3 : 2;
        put(entry, 21, offset);
        put<quint16>(entry, 23, column.type == JetType::Text ? 510 : size);
        offset = static_cast<quint16>(offset + size);
        if (size == 0) ++variable;
        columns += entry;
        names += bytes(static_cast<quint16>(2 * column.name.size())) + utf16(column.name);
    }
    QByteArray definition = pages[page].first(63) + columns + names;
    put(definition, 8, static_cast<quint32>(definition.size()));
    put(definition, 16, count);
    definition[40] = page == CataloguePage ? 'S' : 'N';
    put(definition, 41, number);
    put(definition, 43, variable);
    put(definition, 45, number);
    put(definition, 55, addRow(maps, 0, used));
    put(definition, 59, addRow(maps, 0, QByteArray(69, '\0')));
    pages[page].replace(0, definition.size(), definition);
}

}  // namespace

QByteArray jetFile(const QList<JetTable>& tables, bool locked) {
    using enum JetType;
    Writer writer;
    writer.pages = {headerPage(locked)};
    writer.addPage(DataPage);
    writer.addPage(TablePage);
    JetTable catalogue{QString(),
                       {{QStringLiteral("Id"), Long},
                        {QStringLiteral("Name"), Text},
                        {QStringLiteral("Type"), Long},
                        {QStringLiteral("Flags"), Long},
                        {QStringLiteral("LvProp"), Memo}},
                       {}};
    for (const JetTable& table : tables) {
        const quint32 page = writer.addPage(TablePage);
        writer.writeTable(page, table);
        catalogue.rows += JetRow{{static_cast<qint32>(page), table.name, 1, 0, std::monostate()}};
    }
    writer.writeTable(CataloguePage, catalogue);
    return writer.pages.join();
}

}  // namespace lirovan::test
