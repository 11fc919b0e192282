#include "shell/ui/document_mode.h"

#include <QFile>
#include <QGuiApplication>
#include <cstdio>

#include "search/ui/summary_file.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

bool isDocumentMode(int argc, char** argv) {
    return argc == 4 && QLatin1StringView(argv[1]) == "--belge"_L1;
}

int writeDocument(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList words = QGuiApplication::arguments();
    QFile in, out;
    if (!in.open(stdin, QIODevice::ReadOnly) || !out.open(stdout, QIODevice::WriteOnly)) return 1;
    const auto bytes = search::documentBytes(QString::fromUtf8(in.readAll()), words.value(3),
                                             search::documentFormat(words.value(2)));
    if (!bytes) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(bytes.error().message));
        return 1;
    }
    return out.write(*bytes) == bytes->size() && out.flush() ? 0 : 1;
}

}  // namespace lirovan::shell
