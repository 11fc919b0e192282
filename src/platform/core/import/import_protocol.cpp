#include "platform/core/import/import_protocol.h"

#include <QList>
#include <algorithm>
#include <optional>

namespace lirovan::platform {
namespace {

std::optional<qint64> count(const QByteArray& word) {
    bool ok = false;
    const qint64 value = word.toLongLong(&ok);
    // A leading plus or zero would not come back as it was.
    if (!ok || value < 0 || value > MaximalRows || QByteArray::number(value) != word) return std::nullopt;
    return value;
}

bool isName(const QByteArray& word) {
    return !word.isEmpty() && std::all_of(word.begin(), word.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

struct Writer {
    QByteArray operator()(const UnknownLine&) const { return {}; }
    QByteArray operator()(const ProgressLine& line) const {
        return "ilerleme " + QByteArray::number(line.done) + ' ' + QByteArray::number(line.total) + '\n';
    }
    QByteArray operator()(const CheckingLine&) const { return "denetim\n"; }
    QByteArray operator()(const TableLine& line) const {
        return "tablo " + line.table.toLatin1() + ' ' + QByteArray::number(line.rows) + '\n';
    }
    QByteArray operator()(const DoneLine& line) const {
        return "bitti " + kindWord(line.kind).toLatin1() + '\n';
    }
};

}  // namespace

QStringView kindWord(LayoutKind kind) {
    return kind == LayoutKind::Library ? u"kitaplik" : u"notlar";
}

ImportLine parseImportLine(QByteArrayView line) {
    const QList<QByteArray> words = line.toByteArray().split(' ');
    if (words.size() == 1 && words[0] == "denetim") return CheckingLine{};
    if (words.size() == 2 && words[0] == "bitti") {
        for (const LayoutKind kind : {LayoutKind::Library, LayoutKind::Notes})
            if (words[1] == kindWord(kind).toLatin1()) return DoneLine{kind};
    }
    if (words.size() != 3) return UnknownLine{};
    const std::optional<qint64> last = count(words[2]);
    if (!last) return UnknownLine{};
    if (words[0] == "ilerleme") {
        if (const std::optional<qint64> done = count(words[1])) return ProgressLine{*done, *last};
    }
    if (words[0] == "tablo" && isName(words[1])) return TableLine{QString::fromLatin1(words[1]), *last};
    return UnknownLine{};
}

QByteArray writeImportLine(const ImportLine& line) {
    return std::visit(Writer{}, line);
}

}  // namespace lirovan::platform
