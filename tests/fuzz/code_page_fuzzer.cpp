// Page text in windows-1254: whatever goes in, the bytes decode, and what decoded writes the same bytes
// again.
#include <cstdlib>

#include "platform/core/code_page.h"

using namespace lirovan::platform;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QStringView text(reinterpret_cast<const char16_t*>(data), static_cast<qsizetype>(size / 2));
    const QByteArray once = toWindows1254(text.toString());
    if (toWindows1254(fromWindows1254(once)) != once) std::abort();
    return 0;
}
