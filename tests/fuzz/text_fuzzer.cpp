// Title clean-up, folding, variant extraction and page text on any input: what the tree shows ends with a
// blank and holds none of the tags, what goes into the variant table fits between the quotes of a statement,
// and page bytes say the same when they are read and written again.
#include <cstdlib>

#include "platform/core/code_page.h"
#include "text/alphabet.h"
#include "text/title.h"
#include "text/variant_builder.h"

using namespace lirovan::platform;
using namespace lirovan::text;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QString title = text;
    const QString shown = ClearTitle(title);
    if (!shown.endsWith(u' ') || title.startsWith(u' ') || title.endsWith(u' ')) std::abort();
    if (shown.size() < title.size()) std::abort();
    for (const WordVariant& variant : extractVariants(text)) {
        if (variant.written.isEmpty() || variant.textForm.size() > MaxVariantLength) std::abort();
        if (variant.written.contains(u'\'') || variant.textForm.contains(u'\'')) std::abort();
        if (SapkasizYaz(variant.written) != variant.written) std::abort();
    }
    const QStringView units(reinterpret_cast<const char16_t*>(data), static_cast<qsizetype>(size / 2));
    const QByteArray page = toWindows1254(units.toString());
    if (toWindows1254(fromWindows1254(page)) != page) std::abort();
    return 0;
}
