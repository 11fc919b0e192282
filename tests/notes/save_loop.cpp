// Saves one note over and over and tells each save that was done: save_loop FILE. Made to be killed.
#include <unistd.h>

#include <cstdio>

#include "notes/notes_database.h"

using namespace lirovan::notes;

int main(int, char** argv) {
    auto notes = NotesDatabase::openFile(QString::fromLocal8Bit(argv[1]));
    if (!notes) return 1;
    const auto first = notes->find({1});
    if (!first || !*first) return 2;
    QString stored = (**first).rtf;
    for (int number = stored.section(u' ', 0, 0).toInt() + 1;; ++number) {
        const QString next =
            QString::number(number) + u' ' + QString(20'000 + number % 7 * 15'000, QChar(u'a' + number % 26));
        const auto change = notes->replaceRtf({1}, stored, next);
        if (!change || *change != Change::Done) return 3;
        stored = next;
        char line[16];
        const int length = std::snprintf(line, sizeof line, "%d\n", number);
        if (write(STDOUT_FILENO, line, static_cast<size_t>(length)) != length) return 4;
    }
}
