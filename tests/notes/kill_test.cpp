// A program killed while it saves loses at most the save that was under way.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <csignal>
#include <random>

#include "notes/notes_database.h"
#include "support/files.h"

using namespace lirovan::notes;
using namespace Qt::StringLiterals;

namespace {

QString textOfSave(int number) {
    return QString::number(number) + u' ' + QString(20'000 + number % 7 * 15'000, QChar(u'a' + number % 26));
}

// Saves one note over and over and tells the number of each save that was done; ends only where one fails.
void saveForEver(const QString& path, int pipe) {
    auto notes = NotesDatabase::openFile(path);
    QString stored = (**notes->find({1})).rtf;
    for (int number = stored.section(u' ', 0, 0).toInt() + 1;; ++number) {
        const QString next = textOfSave(number);
        const auto change = notes->replaceRtf({1}, stored, next);
        if (!change || *change != Change::Done || write(pipe, &number, sizeof number) < 0) _exit(1);
        stored = next;
    }
}

// The number of the save in the file; -1 when the note is not what one whole save wrote.
int savedNumber(const QString& path) {
    const auto notes = NotesDatabase::openFile(path);
    if (!notes || lirovan::test::rows(notes->database(), u"PRAGMA integrity_check") != "ok") return -1;
    const QString rtf = (**notes->find({1})).rtf;
    const int number = rtf.section(u' ', 0, 0).toInt();
    return rtf == textOfSave(number) ? number : -1;
}

}  // namespace

TEST(Kill, LosesAtMostTheSaveUnderWay) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"notlar.vq"_s);
    ASSERT_TRUE(NotesDatabase::openFile(path)->add(u"Not"_s, textOfSave(0), {}));
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0, told = 0; round < 200; ++round) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t program = fork();
        if (program == 0) saveForEver(path, ends[1]);
        close(ends[1]);
        ASSERT_EQ(read(ends[0], &told, sizeof told), ssize_t(sizeof told)) << "no save was told";
        usleep(random() % 30'000);
        kill(program, SIGKILL);
        int status = 0;
        waitpid(program, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        while (read(ends[0], &told, sizeof told) > 0) {
        }
        close(ends[0]);
        const int saved = savedNumber(path);
        ASSERT_GE(saved, told);
        ASSERT_LE(saved, told + 1);
    }
}
