// A document as a book of its own, from any bytes: the first one says what it is taken for. Every text that
// comes out must be balanced and free of what a library must not hold.
#include <cstdlib>

#include "tools/book_reader/open_source.h"
#include "tools/book_reader/pictures.h"

using namespace lirovan::book_reader;
using namespace Qt::StringLiterals;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void fuzzBook(const QByteArray& bytes) {
    Source source = singleDocument(u"a.html"_s, bytes, nullptr);
    source.package.title = u"a"_s;
    char* text = nullptr;
    size_t size = 0;
    std::FILE* channel = open_memstream(&text, &size);
    Lines lines(channel);
    const bool done = static_cast<bool>(handOver(source, "0", true, lines));
    std::fclose(channel);
    const QByteArray all(text, static_cast<qsizetype>(size));
    std::free(text);
    // Titles are plain text, texts are markup.
    for (const QByteArray& line : all.split('\n'))
        if (const qsizetype at = line.indexOf("\"metin\":"); at >= 0)
            require(!line.sliced(at).contains("<script"));
    require(!done || all.contains("\"bitti\""));
}

void fuzzDrawing(const QByteArray& bytes) {
    const auto markup = Markup::parse(bytes);
    for (quint32 i = 0; markup && i < markup->size(); ++i)
        if (markup->isStart(i)) {
            const QByteArray drawing =
                sanitisedDrawing(*markup, i, [](std::string_view) { return QByteArray(); });
            for (const char* end : {">", " "})
                require(!drawing.contains(QByteArray("<script") + end) &&
                        !drawing.contains(QByteArray("<foreignObject") + end));
            return;
        }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size == 0) return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data + 1), static_cast<qsizetype>(size - 1));
    switch (data[0] % 4) {
        case 0:
            fuzzBook(bytes);
            break;
        case 1:
            fuzzBook(fromMarkdown(bytes).html);
            break;
        case 2:
            fuzzBook(fromPlainText(bytes).html);
            break;
        default:
            fuzzDrawing(bytes);
    }
    return 0;
}
