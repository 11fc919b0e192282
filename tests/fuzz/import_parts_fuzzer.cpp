// The parts of an import that read foreign bytes in this program: file header, stored texts and dates, and
// what the import program says. The first byte chooses the part.
#include <cstdlib>
#include <cstring>

#include "platform/core/import/file_format.h"
#include "platform/core/import/import_protocol.h"
#include "platform/core/import/jet_values.h"

using namespace lirovan::platform;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void fuzzHeader(QByteArrayView bytes) {
    const FileHeader header = readHeader(bytes.first(std::min(bytes.size(), HeaderBytes)), bytes.size());
    const bool whole = (header.isJet() || header.format == FileFormat::Sqlite) && !header.truncated;
    require(whole || !checkReadable(header));
}

void fuzzText(QByteArrayView bytes) {
    require(JetTextDecoder::jet4().decode(bytes).size() <= bytes.size());
    for (const quint16 codePage : {932, 1250, 1252, 1254, 1256, 9999})
        require(JetTextDecoder::jet3(codePage).decode(bytes).size() <= bytes.size());
}

void fuzzDate(QByteArrayView bytes) {
    double date = 0;
    if (bytes.size() < 8) return;
    std::memcpy(&date, bytes.data(), sizeof date);
    // "2008-03-14" or "2008-03-14T21:05:00": readers rely on the length.
    if (const auto text = isoDate(date)) require(text->size() == 10 || text->size() == 19);
}

void fuzzProtocol(QByteArrayView bytes) {
    const ImportLine line = parseImportLine(bytes);
    require(line == ImportLine(UnknownLine{}) || writeImportLine(line) == bytes.toByteArray() + '\n');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0) return 0;
    const QByteArrayView bytes(data + 1, static_cast<qsizetype>(size - 1));
    constexpr void (*parts[])(QByteArrayView) = {fuzzHeader, fuzzText, fuzzDate, fuzzProtocol};
    parts[data[0] % std::size(parts)](bytes);
    return 0;
}
