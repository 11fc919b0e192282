// Title clean-up, folding and variant extraction on any text: what the tree shows ends with a blank and holds
// none of the tags, and what goes into the variant table fits between the quotes of a statement.
#include <cstdlib>

#include "text/alphabet.h"
#include "text/title.h"
#include "text/variant_builder.h"

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
    return 0;
}
