// A large library of invented Turkish, the same for the same options on every machine.
#pragma once

#include <QString>

#include "platform/core/result.h"

namespace lirovan::bench {

struct GeneratorOptions {
    quint32 seed = 5101;
    int authors = 3;
    int books = 60;
    int topics = 15000;
    qint64 textBytes = 65'000'000;  ///< UTF-8, all topics together
};

/// Writes the library file `path`. Words are made of syllables by Turkish letter frequencies and vowel
/// harmony and come as often as words do (Zipf); one in forty is spelled with a circumflex. Texts are
/// paragraphs with some bold words, line breaks and quotes as `&quot;`; their lengths vary by a factor of
/// twenty.
platform::Result<void> generateLibrary(const QString& path, const GeneratorOptions& options = {});

/// The path of the library with the standard options, made at the first call in a build folder.
/// Ends the program with a message when that fails.
QString standardLibrary();

}  // namespace lirovan::bench
