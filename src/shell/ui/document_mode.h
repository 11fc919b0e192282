// The program without its windows: makes a document for the companion, which has no fonts.
#pragma once

namespace lirovan::shell {

/// Whether the program was called as `lirovan --belge pdf|odt BAŞLIK`.
bool isDocumentMode(int argc, char** argv);
/// Reads HTML from standard input and writes the document to standard output; the program's exit status.
int writeDocument(int argc, char** argv);

}  // namespace lirovan::shell
