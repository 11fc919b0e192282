// The pure parts of an import: header, stored values, protocol lines.
#include <gtest/gtest.h>

#include <QtEndian>
#include <limits>

#include "platform/core/import/file_format.h"
#include "platform/core/import/import_protocol.h"
#include "platform/core/import/jet_values.h"

namespace lirovan::platform {
namespace {

using namespace Qt::StringLiterals;

TEST(FileFormat, TellsWhatAFileIsAndWhatIsWrongWithIt) {
    const auto jet = [](char version) {
        return (QByteArray("\0\1\0\0Standard Jet DB\0", 20) + version).leftJustified(512, '\0');
    };
    QByteArray sqlite = QByteArray("SQLite format 3\0\x10", 17).leftJustified(512, '\0');
    qToBigEndian<quint32>(3, sqlite.data() + 28);
    qToBigEndian<quint32>(0x4C52564B, sqlite.data() + 68);
    const std::tuple<QByteArray, qint64, FileFormat, bool> cases[] = {
        // the last: cut off
        {"", 0, FileFormat::Empty, false},
        {"SQLite", 6, FileFormat::Unknown, false},
        {jet(1), 40960, FileFormat::Jet4, false},
        {jet(1), 8192, FileFormat::Jet4, true},
        {jet(1), 40960 - 100, FileFormat::Jet4, true},
        {jet(0), 8192, FileFormat::Jet3, false},
        {jet(0).first(30), 30, FileFormat::Jet3, true},
        {jet(7), 40960, FileFormat::Unknown, false},
        {sqlite, 3 * 4096, FileFormat::Sqlite, false},
        {sqlite, 2 * 4096, FileFormat::Sqlite, true},
        {sqlite.first(40), 40, FileFormat::Sqlite, true},
    };
    for (const auto& [start, size, format, truncated] : cases) {
        SCOPED_TRACE(start.first(std::min<qsizetype>(start.size(), 21)).toHex().toStdString());
        EXPECT_EQ(readHeader(start, size).format, format);
        EXPECT_EQ(readHeader(start, size).truncated, truncated);
    }
    EXPECT_EQ(readHeader(sqlite, 3 * 4096).applicationId, LibraryApplicationId);
}

TEST(JetText, IsDecodedPlainCompressedAndFromOldCodePages) {
    const std::pair<QByteArray, QString> cases[] = {
        {QByteArray(), QString()},
        {QByteArray("\x31\x01\x69\x00", 4), u"ıi"_s},
        {QByteArray("\x31\x01\x69", 3), u"ı"_s},
        {QByteArray("\xFF\xFE\xE2yet", 6), u"âyet"_s},
        {QByteArray("\xFF\xFE\0\x5F\x01\x31\x01\0k", 9), u"şık"_s},  // two-byte units, then one byte
        {QByteArray("\xFF\xFE\x61\0\x5F", 5), u"a"_s},
        {QByteArray("\x00\xD8\x61\x00", 4), QChar(0xD800) + u"a"_s},  // half a surrogate pair
    };
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(JetTextDecoder::jet4().decode(bytes), text) << bytes.toHex().constData();
    const QByteArray turkish("\xD0\xDD\xDE\xF0\xFD\xFE");
    EXPECT_EQ(JetTextDecoder::jet3(0).decode(turkish), u"ĞİŞğış");
    EXPECT_EQ(JetTextDecoder::jet3(1254).decode(turkish), u"ĞİŞğış");
    EXPECT_EQ(JetTextDecoder::jet3(1252).decode(turkish), u"ÐÝÞðýþ");
}

TEST(JetDates, BecomeIsoText) {
    const std::pair<double, std::optional<QString>> cases[] = {
        {39521.0, u"2008-03-14"_s},
        {39521.5, u"2008-03-14T12:00:00"_s},
        {0.0, u"1899-12-30"_s},
        {-1.25, u"1899-12-29T06:00:00"_s},
        {-657434.0, u"0100-01-01"_s},
        {2958465.0, u"9999-12-31"_s},
        {1.0 - 1e-9, u"1899-12-31"_s},
        {-1e9, std::nullopt},
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt}};
    for (const auto& [stored, text] : cases) EXPECT_EQ(isoDate(stored), text) << stored;
}

TEST(ImportProtocol, ReadsWhatItWritesAndNothingElse) {
    for (const QByteArray line :
         {"ilerleme 1200 15000", "denetim", "tablo tbl_Konu 0", "bitti kitaplik", "bitti notlar"}) {
        EXPECT_FALSE(parseImportLine(line) == ImportLine(UnknownLine{})) << line.constData();
        EXPECT_EQ(writeImportLine(parseImportLine(line)), line + '\n');
    }
    EXPECT_TRUE(parseImportLine("ilerleme 1200 15000") == ImportLine(ProgressLine{1200, 15000}));
    for (const char* line :
         {"", " ", "ilerleme", "ilerleme 1", "ilerleme -1 2", "ilerleme 1 2 3", "ilerleme 1 x",
          "ilerleme 1 99999999999999999999", "tablo  3", "tablo a;b 3", "bitti", "bitti her", "denetim "})
        EXPECT_TRUE(parseImportLine(QByteArrayView(line)) == ImportLine(UnknownLine{})) << line;
}

}  // namespace
}  // namespace lirovan::platform
