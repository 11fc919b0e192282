// Rich text, whatever the bytes: reading ends, and what was read is written in one way only.
#include <cstdlib>

#include "platform/core/rtf/html_writer.h"
#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

using namespace lirovan::platform::rtf;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const Document document = read(bytes);
    const QByteArray written = write(document);
    const Document again = read(QByteArrayView(written));
    if (again != document || write(again) != written) std::abort();
    if (read(QByteArrayView(write(document, Ending::Inline))) != document) std::abort();
    (void)toHtml(document);

    // The same through a text column, and only the beginning.
    const QString text = QString::fromUtf8(bytes);
    const QByteArray fromText = write(read(QStringView(text)));
    if (write(read(QByteArrayView(fromText))) != fromText) std::abort();
    (void)read(QStringView(text), {50});
    return 0;
}
