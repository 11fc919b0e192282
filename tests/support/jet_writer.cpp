#include "support/jet_writer.h"

#include <QtEndian>

namespace lirovan::test {
namespace {

using namespace Qt::StringLiterals;
using enum JetType;

constexpr qsizetype PageSize = 4096, RowCount = 12, RowOffsets = 14;
constexpr char DataPage = 1, TablePage = 2;
constexpr quint32 CataloguePage = 2;
constexpr quint32 LongValues = 0x4C41564C;  // "LVAL", in the place of the owner
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
QByteArray bytes16(qsizetype value) {
    return bytes(static_cast<quint16>(value));
}
quint16 number16(const QByteArray& page, qsizetype at) {
    return qFromLittleEndian<quint16>(page.constData() + at);
}
void setBit(QByteArray& bits, qsizetype bit) {
    bits[bit / 8] = static_cast<char>(bits[bit / 8] | 1 << bit % 8);
}

QByteArray utf16(const QString& text) {
    QByteArray result;
    for (const QChar unit : text) result += bytes(unit.unicode());
    return result;
}

// 0: of variable size.
quint16 fixedSize(JetType type) {
    return type == Text || type == Memo ? 0 : type == Long ? 4 : 8;
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

struct Writer {
    QList<QByteArray> pages;
    quint32 longPage = 0;  // the one that takes further long values; 0: none yet

    quint32 addPage(char type, quint32 owner = 0) {
        pages += (QByteArray(1, type) + QByteArray("\1\0\0", 3) + bytes(owner)).leftJustified(PageSize, '\0');
        return static_cast<quint32>(pages.size() - 1);
    }

    // Puts a row on `page`, or on a new one when it does not fit there; answers its place.
    quint32 addRow(quint32& page, quint32 owner, const QByteArray& row, quint16 flags = 0) {
        quint16 rows = 0;
        const auto start = [&] {
            rows = number16(pages[page], RowCount);
            const qsizetype end =
                rows == 0 ? PageSize : number16(pages[page], RowOffsets + 2 * (rows - 1)) & 0x1FFF;
            return end - row.size();
        };
        if (page == 0 || start() < RowOffsets + 2 * (rows + 1) || rows == 255)
            page = addPage(DataPage, owner);
        const qsizetype at = start();
        QByteArray& data = pages[page];
        data.replace(at, row.size(), row);
        put(data, RowOffsets + 2 * rows, static_cast<quint16>(at | flags));
        put<quint16>(data, RowCount, rows + 1);
        return page << 8 | rows;
    }

    // The reference that stands in the row: value in the row, in one other row, or in a chain of them.
    QByteArray longValue(const QString& text) {
        constexpr qsizetype inRow = 64, inOneRow = 4000;
        const QByteArray value = utf16(text), end(4, '\0');
        const auto size = static_cast<quint32>(value.size());
        if (size <= inRow) return bytes(size | 0x80000000) + end + end + value;
        if (size <= inOneRow)
            return bytes(size | 0x40000000) + bytes(addRow(longPage, LongValues, value)) + end;
        quint32 place = 0;  // from the end: each part names the place of the next
        for (qsizetype start = (size - 1) / inOneRow * inOneRow; start >= 0; start -= inOneRow)
            place = addRow(longPage, LongValues, bytes(place) + value.mid(start, inOneRow));
        return bytes(size) + bytes(place) + end;
    }

    // Number of columns, fixed values, variable values, their ends from the last to the first, mask of
    // values.
    QByteArray packed(const QList<JetColumn>& columns, const JetRow& row) {
        QByteArray fixed, variable, starts, mask((columns.size() + 7) / 8, '\0');
        qsizetype before = 2;
        for (const JetColumn& column : columns) before += fixedSize(column.type);
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const JetCell& cell = row.cells[i];
            if (fixedSize(columns[i].type) == 0) starts.prepend(bytes16(before + variable.size()));
            if (cell.index() != 0) setBit(mask, i);
            if (const auto* text = std::get_if<QString>(&cell))
                variable += columns[i].type == Memo ? longValue(*text) : utf16(*text);
            else if (const auto* number = std::get_if<qint32>(&cell))
                fixed += bytes(*number);
            else if (const auto* real = std::get_if<double>(&cell))
                fixed += bytes(*real);
            else
                fixed += QByteArray(fixedSize(columns[i].type), '\0');
        }
        return bytes16(columns.size()) + fixed + variable + bytes16(before + variable.size()) + starts +
               bytes16(starts.size() / 2) + mask;
    }

    // Writes the rows, and the definition of the table onto its page.
    void writeTable(quint32 page, const JetTable& table) {
        QList<QByteArray> values;  // first all of them: their long parts take pages of their own
        for (const JetRow& row : table.rows) values += packed(table.columns, row);
        quint32 current = 0, elsewhere = 0, maps = 0, count = 0;
        const auto first = static_cast<quint32>(pages.size());
        QByteArray used(3800,
                        '\0');  // which pages from the first on hold the rows: a bit each behind five bytes
        put(used, 1, first);
        const auto add = [&](quint32& target, const QByteArray& row, quint16 flags) {
            const quint32 place = addRow(target, page, row, flags);
            setBit(used, 40 + target - first);
            return place;
        };
        for (qsizetype i = 0; i < values.size(); ++i) {
            const JetRowState state = table.rows[i].state;
            if (state == JetRowState::Moved)
                add(current, bytes(add(elsewhere, values[i], Hidden)), Pointer);
            else
                add(current, values[i], state == JetRowState::Deleted ? Hidden | Pointer : 0);
            count += state != JetRowState::Deleted;
        }

        QByteArray columns, names;
        quint16 number = 0, variable = 0, offset = 0;
        for (const auto& [name, type] : table.columns) {
            const quint16 size = fixedSize(type);
            const QByteArray fixed(1, size != 0 ? '\3' : '\2');
            columns += QByteArray(1, static_cast<char>(type)) + QByteArray(4, '\0') + bytes(number) +
                       bytes(variable) + bytes(number) + QByteArray(4, '\0') + fixed + QByteArray(5, '\0') +
                       bytes(offset) + bytes16(type == Text ? 510 : size);
            names += bytes16(2 * name.size()) + utf16(name);
            ++number;
            offset = static_cast<quint16>(offset + size);
            if (size == 0) ++variable;
        }
        QByteArray definition = pages[page].first(63) + columns + names;
        put(definition, 8, static_cast<quint32>(definition.size()));
        put(definition, 16, count);
        put(definition, 43, variable);
        put(definition, 45, number);
        put(definition, 55, addRow(maps, 0, used));
        put(definition, 59, maps << 8);
        pages[page].replace(0, definition.size(), definition);
    }
};

}  // namespace

QByteArray jetFile(const QList<JetTable>& tables, bool locked) {
    Writer writer{{headerPage(locked)}};
    writer.addPage(DataPage);
    writer.addPage(TablePage);
    JetTable catalogue{
        {},
        {{u"Id"_s, Long}, {u"Name"_s, Text}, {u"Type"_s, Long}, {u"Flags"_s, Long}, {u"LvProp"_s, Memo}},
        {}};
    for (const JetTable& table : tables) {
        const quint32 page = writer.addPage(TablePage);
        writer.writeTable(page, table);
        catalogue.rows += JetRow{{static_cast<qint32>(page), table.name, 1, 0, std::monostate()}};
    }
    writer.writeTable(CataloguePage, catalogue);
    return writer.pages.join();
}

QByteArray jetNotes() {
    return jetFile(
        {{u"tbl_Notlar"_s,
          {{u"NotID"_s, Long}, {u"NotTarihi"_s, Date}, {u"NotBaslik"_s, Text}, {u"NotRTF"_s, Memo}},
          {{{5, 39521.0, u"Not"_s, QString(20'000, u'ş')}},
           {{7, 39521.5, JetCell(), u"kısa"_s}, JetRowState::Moved},
           {{8, JetCell(), u"silinmiş"_s, JetCell()}, JetRowState::Deleted},
           {{9, -6800.25, QString(), u"{\\rtf1 a}"_s}}}}});
}

}  // namespace lirovan::test
