// kitaplik-uret TARGET [TOPICS]: writes a generated library; texts shrink and grow with the number of topics.
#include <QCoreApplication>
#include <QStringList>
#include <cstdio>

#include "support/library_generator.h"

int main(int count, char* words[]) {
    const QCoreApplication application(count, words);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 2) {
        std::fputs("kitaplik-uret TARGET [TOPICS]\n", stderr);
        return 2;
    }
    lirovan::bench::GeneratorOptions options;
    if (arguments.size() > 2) {
        options.textBytes = options.textBytes / options.topics * arguments[2].toInt();
        options.topics = arguments[2].toInt();
    }
    const auto made = lirovan::bench::generateLibrary(arguments[1], options);
    if (!made) std::fprintf(stderr, "%s\n", qPrintable(made.error().message));
    return made ? 0 : 1;
}
