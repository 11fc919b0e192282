// A program killed while it saves loses at most the save that was under way.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QProcess>
#include <QTemporaryDir>
#include <random>

#include "notes/notes_database.h"

using namespace lirovan::notes;
using namespace Qt::StringLiterals;

namespace {

// The number of the save in the file; -1 when the note is not what one whole save wrote.
int savedNumber(const QString& path) {
    auto notes = NotesDatabase::openFile(path);
    if (!notes) return ADD_FAILURE() << notes.error().message.toStdString(), -1;
    auto check = notes->database().prepare(u"PRAGMA integrity_check");
    if (!check || !check->step() || check->text(0) != u"ok") return -1;
    const auto note = notes->find({1});
    if (!note || !*note) return -1;
    const QString rtf = (**note).rtf;
    const int number = rtf.section(u' ', 0, 0).toInt();
    const QString whole =
        QString::number(number) + u' ' + QString(20'000 + number % 7 * 15'000, QChar(u'a' + number % 26));
    return number == 0 || rtf == whole ? number : -1;
}

}  // namespace

TEST(Kill, LosesAtMostTheSaveUnderWay) {
    QTemporaryDir folder;
    const QString path = folder.filePath(u"notlar.vq"_s);
    ASSERT_TRUE(NotesDatabase::openFile(path)->add(u"Not"_s, u"0 "_s, {}));
    const unsigned seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int told = 0, killed = 0;
    for (int round = 0; round < 200; ++round) {
        QProcess program;
        program.start(QStringLiteral(SAVE_LOOP), {path});
        ASSERT_TRUE(program.waitForReadyRead(20'000)) << program.exitCode();
        usleep(random() % 30'000);
        program.kill();
        ASSERT_TRUE(program.waitForFinished());
        killed += program.exitStatus() == QProcess::CrashExit;
        const QStringList lines = QString::fromLatin1(program.readAll()).split(u'\n', Qt::SkipEmptyParts);
        if (!lines.isEmpty()) told = lines.last().toInt();
        const int saved = savedNumber(path);
        ASSERT_GE(saved, told);
        ASSERT_LE(saved, told + 1);
        told = saved;
    }
    EXPECT_EQ(killed, 200);
    RecordProperty("saves", told);
}
