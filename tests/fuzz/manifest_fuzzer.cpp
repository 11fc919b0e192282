// Any bytes as a manifest: an error or a manifest whose paths stay inside the folder.
#include <QDir>
#include <cstdlib>

#include "tools/kitaplik/manifest.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray json(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto manifest = lirovan::tools::readManifest(json);
    if (!manifest) {
        if (manifest.error().message.isEmpty()) std::abort();
        return 0;
    }
    for (const auto& author : manifest->authors)
        for (const auto& book : author.books)
            for (const auto& topic : book.topics) {
                const QString path = QDir::cleanPath(u"/klasor/"_s + topic.file);
                if (topic.id <= 0 || !path.startsWith(u"/klasor/"_s)) std::abort();
            }
    return 0;
}
