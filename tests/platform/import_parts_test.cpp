// The pure parts of an import: header, stored values, protocol lines.
#include <gtest/gtest.h>

#include <QtEndian>
#include <cmath>
#include <limits>

#include "platform/core/import/file_format.h"
#include "platform/core/import/import_protocol.h"
#include "platform/core/import/jet_values.h"

namespace lirovan::platform {
namespace {

QByteArray sqliteHeader(quint32 pages, quint32 applicationId) {
    QByteArray page(4096, '\0');
    page.replace(0, 16, QByteArray("SQLite format 3\0", 16));
    qToBigEndian<quint16>(4096, page.data() + 16);
    qToBigEndian<quint32>(pages, page.data() + 28);
    qToBigEndian<quint32>(applicationId, page.data() + 68);
    return page;
}

TEST(FileFormat, TellsWhatAFileIsAndWhatIsWrongWithIt) {
    const QByteArray jet4 = QByteArray("\0\1\0\0Standard Jet DB\0\1", 21).leftJustified(512, '\0');
    const QByteArray jet3 = QByteArray("\0\1\0\0Standard Jet DB\0\0", 21).leftJustified(512, '\0');
    const QByteArray jet9 = QByteArray("\0\1\0\0Standard Jet DB\0\7", 21).leftJustified(512, '\0');
    const struct {
        QByteArray start;
        qint64 size;
        FileFormat format;
        bool truncated;
    } cases[] = {
        {"", 0, FileFormat::Empty, false},
        {"SQLite", 6, FileFormat::Unknown, false},
        {"<html>", 6, FileFormat::Unknown, false},
        {jet4, 40960, FileFormat::Jet4, false},
        {jet4, 8192, FileFormat::Jet4, true},
        {jet4, 40960 - 100, FileFormat::Jet4, true},
        {jet3, 8192, FileFormat::Jet3, false},
        {jet3.first(30), 30, FileFormat::Jet3, true},
        {jet9, 40960, FileFormat::Unknown, false},
        {sqliteHeader(3, 0).first(512), 3 * 4096, FileFormat::Sqlite, false},
        {sqliteHeader(3, 0).first(512), 2 * 4096, FileFormat::Sqlite, true},
        {sqliteHeader(3, 0).first(40), 40, FileFormat::Sqlite, true},
    };
    for (const auto& [start, size, format, truncated] : cases) {
        const FileHeader header = readHeader(start, size);
        EXPECT_EQ(header.format, format)
            << start.first(std::min<qsizetype>(start.size(), 20)).toHex().constData();
        EXPECT_EQ(header.truncated, truncated);
    }
    EXPECT_EQ(readHeader(sqliteHeader(1, 0x4C52564B), 4096).applicationId, LibraryApplicationId);
}

TEST(JetText, DecodesPlainAndCompressedUnicode) {
    const struct {
        QByteArray bytes;
        QString text;
    } cases[] = {
        {QByteArray(), QString()},
        {QByteArray("\x31\x01\x69\x00", 4), QStringLiteral("ıi")},
        {QByteArray("\x31\x01\x69", 3), QStringLiteral("ı")},
        {QByteArray("\xFF\xFE\xE2yet", 6), QStringLiteral("âyet")},
        // "şık": two-byte units, then back to one byte.
        {QByteArray("\xFF\xFE\0\x5F\x01\x31\x01\0k", 9), QStringLiteral("şık")},
        {QByteArray("\xFF\xFE"
                    "a\0\x5F",
                    5),
         QStringLiteral("a")},
        // Half a surrogate pair stays what it is.
        {QByteArray("\x00\xD8\x61\x00", 4), QString(QChar(0xD800)) + u'a'},
    };
    const JetTextDecoder decoder = JetTextDecoder::jet4();
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(decoder.decode(bytes), text) << bytes.toHex().constData();
}

TEST(JetText, DecodesTheCodePageOfOldFiles) {
    const QByteArray turkish("\xD0\xDD\xDE\xF0\xFD\xFE");
    EXPECT_EQ(JetTextDecoder::jet3(1254).decode(turkish), QStringLiteral("ĞİŞğış"));
    EXPECT_EQ(JetTextDecoder::jet3(0).decode(turkish), QStringLiteral("ĞİŞğış"));
    EXPECT_EQ(JetTextDecoder::jet3(1252).decode(turkish), QStringLiteral("ÐÝÞðýþ"));
}

TEST(JetDates, BecomeIsoText) {
    const struct {
        double stored;
        std::optional<QString> text;
    } cases[] = {
        {39521.0, QStringLiteral("2008-03-14")},
        {39521.5, QStringLiteral("2008-03-14T12:00:00")},
        {0.0, QStringLiteral("1899-12-30")},
        {-1.25, QStringLiteral("1899-12-29T06:00:00")},
        {-657434.0, QStringLiteral("0100-01-01")},
        {2958465.0, QStringLiteral("9999-12-31")},
        {1.0 - 1e-9, QStringLiteral("1899-12-31")},
        {-1e9, std::nullopt},
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt},
    };
    for (const auto& [stored, text] : cases) EXPECT_EQ(isoDate(stored), text) << stored;
}

TEST(ImportProtocol, ReadsWhatItWritesAndNothingElse) {
    const ImportLine lines[] = {ProgressLine{1200, 15000}, CheckingLine{},
                                TableLine{QStringLiteral("tbl_Konu"), 0}, DoneLine{LayoutKind::Library},
                                DoneLine{LayoutKind::Notes}};
    for (const ImportLine& line : lines) {
        const QByteArray written = writeImportLine(line);
        EXPECT_TRUE(parseImportLine(QByteArrayView(written).chopped(1)) == line) << written.constData();
    }
    for (const char* line :
         {"", " ", "ilerleme", "ilerleme 1", "ilerleme -1 2", "ilerleme 1 2 3", "ilerleme 1 x",
          "ilerleme 1 99999999999999999999", "tablo  3", "tablo a;b 3", "bitti", "bitti her", "denetim "})
        EXPECT_TRUE(parseImportLine(QByteArrayView(line)) == ImportLine(UnknownLine{})) << line;
}

}  // namespace
}  // namespace lirovan::platform
