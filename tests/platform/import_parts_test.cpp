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
    const struct {
        QByteArray start;
        qint64 size;
        FileFormat format;
        bool truncated;
    } cases[] = {
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
    constexpr int unicode = -1;
    const QByteArray turkish("\xD0\xDD\xDE\xF0\xFD\xFE");
    const struct {
        int codePage;
        QByteArray bytes;
        QString text;
    } cases[] = {
        {unicode, QByteArray(), QString()},
        {unicode, QByteArray("\x31\x01\x69\x00", 4), u"ıi"_s},
        {unicode, QByteArray("\x31\x01\x69", 3), u"ı"_s},
        {unicode, QByteArray("\xFF\xFE\xE2yet", 6), u"âyet"_s},
        // Two-byte units, then back to one byte.
        {unicode, QByteArray("\xFF\xFE\0\x5F\x01\x31\x01\0k", 9), u"şık"_s},
        {unicode, QByteArray("\xFF\xFE\x61\0\x5F", 5), u"a"_s},
        // Half a surrogate pair stays what it is.
        {unicode, QByteArray("\x00\xD8\x61\x00", 4), QChar(0xD800) + u"a"_s},
        {1254, turkish, u"ĞİŞğış"_s},
        {0, turkish, u"ĞİŞğış"_s},
        {1252, turkish, u"ÐÝÞðýþ"_s},
    };
    for (const auto& [codePage, bytes, text] : cases) {
        const auto decoder = codePage == unicode ? JetTextDecoder::jet4()
                                                 : JetTextDecoder::jet3(static_cast<quint16>(codePage));
        EXPECT_EQ(decoder.decode(bytes), text) << bytes.toHex().constData();
    }
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
        {std::numeric_limits<double>::quiet_NaN(), std::nullopt},
    };
    for (const auto& [stored, text] : cases) EXPECT_EQ(isoDate(stored), text) << stored;
}

TEST(ImportProtocol, ReadsWhatItWritesAndNothingElse) {
    for (const ImportLine& line :
         {ImportLine(ProgressLine{1200, 15000}), ImportLine(CheckingLine{}),
          ImportLine(TableLine{u"tbl_Konu"_s, 0}), ImportLine(DoneLine{LayoutKind::Library}),
          ImportLine(DoneLine{LayoutKind::Notes})}) {
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
