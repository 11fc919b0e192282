#include "platform/core/import/file_format.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <array>
#include <cmath>
#include <cstring>
#include <numeric>

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

// Offsets in the first page of a Jet file.
constexpr qsizetype JetVersion = 0x14;
constexpr qsizetype JetMasked = 0x18;  // from here on the header is masked
constexpr qsizetype JetCodePage = 0x3C;
constexpr qsizetype JetPassword = 0x42;
constexpr qsizetype JetDate = 0x72;  // of creation, Jet 4: masks the password

// Offsets in the first page of an SQLite file; numbers are big-endian.
constexpr qsizetype SqlitePageSize = 16;
constexpr qsizetype SqliteChangeCounter = 24;
constexpr qsizetype SqlitePageCount = 28;
constexpr qsizetype SqliteApplicationId = 68;
constexpr qsizetype SqliteCountValidFor = 92;
constexpr qsizetype SqliteHeaderSize = 100;

// The RC4 key stream with which every Jet file masks its header; the key is fixed, it hides nothing.
QByteArray unmasked(QByteArrayView bytes) {
    constexpr std::array<quint8, 4> key{0xC7, 0xDA, 0x39, 0x6B};
    std::array<quint8, 256> state;
    std::iota(state.begin(), state.end(), quint8(0));
    quint8 j = 0;
    for (size_t i = 0; i < state.size(); ++i) {
        j = static_cast<quint8>(j + state[i] + key[i % key.size()]);
        std::swap(state[i], state[j]);
    }
    QByteArray result = bytes.toByteArray();
    quint8 i = 0;
    j = 0;
    for (char& byte : result) {
        i = static_cast<quint8>(i + 1);
        j = static_cast<quint8>(j + state[i]);
        std::swap(state[i], state[j]);
        byte = static_cast<char>(static_cast<quint8>(byte) ^ state[static_cast<quint8>(state[i] + state[j])]);
    }
    return result;
}

// A password takes 20 bytes in Jet 3, 40 in Jet 4, zeros where there is none. Jet 4 masks it once more, with
// the whole days of the creation date.
bool hasPassword(QByteArrayView page, bool jet4) {
    std::array<char, 4> mask{};
    if (jet4) {
        double date = 0;
        std::memcpy(&date, page.data() + JetDate, sizeof date);
        if (std::isfinite(date) && std::abs(date) < 2147483647.0)
            qToLittleEndian(static_cast<qint32>(date), mask.data());
    }
    const QByteArrayView password = page.sliced(JetPassword, jet4 ? 40 : 20);
    for (qsizetype i = 0; i < password.size(); ++i)
        if (password[i] != mask[static_cast<size_t>(i % 4)]) return true;
    return false;
}

FileHeader readJetHeader(QByteArrayView start, qint64 fileSize) {
    FileHeader header;
    const bool jet4 = start[JetVersion] != 0;
    header.format = jet4 ? FileFormat::Jet4 : FileFormat::Jet3;
    // A file is whole pages, and the catalogue begins on the third. What is missing of a page would be read
    // as zeros, and the rows of a page stand at its end.
    const qint64 pageSize = jet4 ? 4096 : 2048;
    header.truncated = fileSize < 3 * pageSize || fileSize % pageSize != 0;
    constexpr qsizetype masked = 126;
    if (start.size() < JetMasked + masked) return header;
    const QByteArray page = start.first(JetMasked).toByteArray() + unmasked(start.sliced(JetMasked, masked));
    header.codePage = qFromLittleEndian<quint16>(page.constData() + JetCodePage);
    header.password = hasPassword(page, jet4);
    return header;
}

FileHeader readSqliteHeader(QByteArrayView start, qint64 fileSize) {
    FileHeader header;
    header.format = FileFormat::Sqlite;
    if (start.size() < SqliteHeaderSize) {
        header.truncated = true;
        return header;
    }
    const auto number = [&](qsizetype offset) { return qFromBigEndian<quint32>(start.data() + offset); };
    header.applicationId = static_cast<qint32>(number(SqliteApplicationId));
    qint64 pageSize = qFromBigEndian<quint16>(start.data() + SqlitePageSize);
    if (pageSize == 1) pageSize = 65536;
    // The page count is right only when its writer said so.
    const bool counted = number(SqliteChangeCounter) == number(SqliteCountValidFor);
    header.truncated = fileSize < pageSize || (counted && fileSize < pageSize * number(SqlitePageCount));
    return header;
}

}  // namespace

FileHeader readHeader(QByteArrayView start, qint64 fileSize) {
    constexpr QByteArrayView jet("\0\1\0\0Standard Jet DB\0", 20);
    constexpr QByteArrayView sqlite("SQLite format 3\0", 16);
    FileHeader header;
    if (fileSize == 0)
        header.format = FileFormat::Empty;
    else if (start.startsWith(jet) && start.size() > JetVersion &&
             (start[JetVersion] == 0 || start[JetVersion] == 1))
        header = readJetHeader(start, fileSize);
    else if (start.startsWith(sqlite))
        header = readSqliteHeader(start, fileSize);
    return header;
}

FileHeader probeFile(const QString& path) {
    FileHeader header;
    const QFileInfo info(path);
    if (info.isDir()) {
        header.format = FileFormat::Folder;
        return header;
    }
    if (!info.exists()) {
        header.format = FileFormat::Missing;
        return header;
    }
    if (!info.isFile()) {  // to open a pipe would wait for its writer
        header.format = FileFormat::Unreadable;
        header.reason = u"bu bir dosya değil"_s;
        return header;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        header.format = FileFormat::Unreadable;
        header.reason = file.error() == QFileDevice::PermissionsError || !info.isReadable()
                            ? u"izin yok"_s
                            : file.errorString();
        return header;
    }
    const QByteArray start = file.read(HeaderBytes);
    return readHeader(start, file.size());
}

Result<void> checkReadable(const FileHeader& header) {
    switch (header.format) {
        case FileFormat::Missing:
            return Error{u"Dosya bulunamadı."_s};
        case FileFormat::Folder:
            return Error{u"Bu bir klasör, dosya değil."_s};
        case FileFormat::Unreadable:
            return Error{u"Dosya okunamıyor (%1)."_s.arg(header.reason)};
        case FileFormat::Empty:
            return Error{u"Dosya boş (0 bayt)."_s};
        case FileFormat::Unknown:
            return Error{u"Dosya bir veritabanı değil."_s};
        case FileFormat::Sqlite:
        case FileFormat::Jet3:
        case FileFormat::Jet4:
            break;
    }
    if (header.truncated) return Error{u"Dosya eksik: sonu kesilmiş."_s};
    if (header.password)
        return Error{
            u"Dosya parola ile korunuyor. Parolayı dosyayı yapan programda kaldırıp yeniden deneyin."_s};
    return {};
}

}  // namespace lirovan::platform
