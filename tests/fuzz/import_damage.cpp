// import_damage SECONDS IMPORT_PROGRAM [SEED] — damages Jet and SQLite files at random and has them imported
// in place, over and over. The reading library is foreign and may crash in its own process; what is checked
// is ours: a failure has a message, leaves the file as it was and nothing beside it; a success leaves the
// original as its backup; no run takes too long; the sanitizers find nothing in our part of the program.
// Exit status 1 on a finding; the seed is printed, and the damaged file is left in the current folder.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <cstdio>
#include <random>

#include "platform/core/import/importer.h"
#include "support/files.h"
#include "support/jet_writer.h"

namespace {

using namespace lirovan;
using platform::LayoutKind;
using namespace Qt::StringLiterals;
using Random = std::mt19937;

constexpr qsizetype PageSize = 4096;
constexpr auto Silence = std::chrono::seconds(5);

QByteArray sqliteNotes() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a"_s);
    const auto database = platform::Database::open(path, platform::OpenMode::Create).value();
    if (!database.execute(
            u"CREATE TABLE tbl_Notlar (NotID INTEGER PRIMARY KEY, NotTarihi, NotBaslik, NotRTF);"
            u"WITH RECURSIVE n(i) AS (SELECT 1 UNION SELECT i+1 FROM n WHERE i<200) "
            u"INSERT INTO tbl_Notlar SELECT i, i, 'Not '||i, hex(zeroblob(i*20)) FROM n"))
        std::abort();
    return test::readFile(path);
}

// Bytes or numbers changed, mostly near the start of a page where its structure is; pages emptied or doubled.
QByteArray damaged(QByteArray bytes, Random& random) {
    const auto below = [&](qsizetype limit) {
        return static_cast<qsizetype>(random() % static_cast<quint64>(limit));
    };
    for (qsizetype left = qsizetype(1) << below(6); left > 0; --left) {
        const qsizetype page = below(bytes.size() / PageSize) * PageSize;
        const qsizetype place = page + below(below(2) ? 100 : PageSize - 4);
        const qsizetype kind = below(10);
        if (kind == 0)
            bytes.replace(page, PageSize, QByteArray(PageSize, '\0'));
        else if (kind == 1)
            bytes.replace(page, PageSize, bytes.mid(below(bytes.size() / PageSize) * PageSize, PageSize));
        else if (kind == 2)
            bytes.replace(place, 4,
                          QByteArray::fromHex("ffffffffffffff7f0000008000000000").mid(4 * below(4), 4));
        else
            bytes[place] = static_cast<char>(below(4) ? random() : 0);
    }
    if (below(8) == 0) bytes.truncate(below(bytes.size()));
    return bytes;
}

// The sanitizers' report when its first frame outside the C library belongs to us.
QString ourReport(const QString& folder) {
    static const QRegularExpression frame(u"#\\d+ 0x\\S+ in (\\S+)"_s), libraryName(u"^(__|mem|str)"_s);
    for (const QString& name : QDir(folder).entryList({u"log.*"_s}, QDir::Files)) {
        const QString report = QString::fromUtf8(test::readFile(folder + u'/' + name));
        QFile::remove(folder + u'/' + name);
        const bool undefined = report.contains(u"runtime error:");
        for (auto match = frame.globalMatch(report); match.hasNext();) {
            const QString function = match.next().captured(1);
            if (function.contains(libraryName)) continue;
            if (undefined || function.contains(u"lirovan")) return report;
            break;
        }
    }
    return {};
}

// What is wrong with this run; empty when nothing is.
QString runOnce(const platform::Importer& importer, const QString& folder, const QByteArray& bytes) {
    const QString path = folder + u"/notlar.vq"_s;
    for (const QString& name : QDir(folder).entryList(QDir::Files)) QFile::remove(folder + u'/' + name);
    test::writeFile(path, bytes);
    QElapsedTimer timer;
    timer.start();
    const auto ensured = importer.ensureLayout(path, LayoutKind::Notes);
    if (timer.elapsed() > 1000 * 4 * Silence.count()) return u"took %1 ms"_s.arg(timer.elapsed());
    const bool imported = ensured && ensured->imported;
    const QStringList names = QDir(folder).entryList(QDir::Files);
    if (names.size() != 1 + imported) return u"left "_s + names.join(u' ');
    if (!ensured && ensured.error().message.isEmpty()) return u"no message"_s;
    if (ensured && !imported) return {};
    return test::readFile(imported ? ensured->backup : path) == bytes ? QString() : u"the original changed"_s;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) return 2;
    const qint64 seconds = QByteArray(argv[1]).toLongLong();
    const quint32 seed = argc > 3 ? QByteArray(argv[3]).toUInt() : std::random_device{}();
    std::printf("seed %u\n", seed);
    Random random(seed);
    const QTemporaryDir work, logs;
    qputenv("ASAN_OPTIONS",
            "detect_leaks=0:allocator_may_return_null=1:log_path=" + logs.filePath(u"log"_s).toUtf8());
    qputenv("UBSAN_OPTIONS", "print_stacktrace=1:log_path=" + logs.filePath(u"log"_s).toUtf8());
    const platform::Importer importer({QFile::decodeName(argv[2]), Silence});
    const QList<QByteArray> sources{test::jetNotes(), test::jetNotes(), sqliteNotes()};

    QElapsedTimer timer;
    timer.start();
    qint64 runs = 0, imported = 0;
    for (; timer.elapsed() < 1000 * seconds; ++runs) {
        const QByteArray bytes = damaged(sources[static_cast<qsizetype>(random() % 3)], random);
        QString finding = runOnce(importer, work.path(), bytes);
        if (finding.isEmpty()) finding = ourReport(logs.path());
        if (QDir(work.path()).entryList(QDir::Files).size() == 2) ++imported;
        if (finding.isEmpty()) continue;
        std::printf("run %lld: %s\n", runs, finding.toUtf8().constData());
        test::writeFile(u"import_damage-%1-%2"_s.arg(seed).arg(runs), bytes);
        return 1;
    }
    std::printf("%lld runs, %lld imported all the same\n", runs, imported);
    // Nothing imported, or everything, means that the damage was not what it should be.
    return imported > 0 && imported < runs ? 0 : 1;
}
