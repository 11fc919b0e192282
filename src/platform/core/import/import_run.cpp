#include "platform/core/import/import_run.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>

#include "platform/core/ended_from_outside.h"

namespace lirovan::platform {

using namespace Qt::StringLiterals;
namespace {

constexpr int PollMilliseconds = 50;
constexpr qsizetype LongestLine = 4096;

QString importProgram(const ImporterOptions& options) {
    if (!options.program.isEmpty()) return options.program;
    return QCoreApplication::applicationDirPath() + u"/lirovan-jet-aktar"_s;
}

QStringList arguments(const ImportRun& run) {
    QStringList words;
    if (run.kind) words << u"--tur"_s << kindWord(*run.kind).toString();
    // Absolute paths cannot be taken for options.
    return words << QFileInfo(run.source).absoluteFilePath() << QFileInfo(run.target).absoluteFilePath();
}

// What the program has said so far.
class Report {
  public:
    /// True when the program showed that it is alive.
    bool read(QProcess& process) {
        rest_ += process.readAllStandardOutput();
        // The last words are what counts of a flood of errors.
        errors_ = (errors_ + process.readAllStandardError()).right(LongestLine);
        bool alive = false;
        for (qsizetype end = 0; (end = rest_.indexOf('\n')) >= 0; rest_.remove(0, end + 1)) {
            take(parseImportLine(QByteArrayView(rest_).first(end)));
            alive = true;
        }
        if (rest_.size() > LongestLine) rest_.clear();
        return alive;
    }

    const ProgressLine& progress() const { return progress_; }
    std::optional<LayoutKind> done() const { return done_; }
    const QMap<QString, qint64>& rows() const { return rows_; }
    QString message() const { return QString::fromUtf8(errors_.trimmed().split('\n').constLast()).trimmed(); }

  private:
    void take(const ImportLine& line) {
        if (const auto* progress = std::get_if<ProgressLine>(&line)) progress_ = *progress;
        if (const auto* table = std::get_if<TableLine>(&line)) rows_[table->table] = table->rows;
        if (const auto* done = std::get_if<DoneLine>(&line)) done_ = done->kind;
    }

    QByteArray rest_, errors_;
    ProgressLine progress_;
    std::optional<LayoutKind> done_;
    QMap<QString, qint64> rows_;
};

// Ends with the program's end, when it falls silent, or when the caller has had enough.
Result<void> watch(QProcess& process, Report& report, const ImporterOptions& options,
                   const ImportProgress& progress) {
    QElapsedTimer silence;
    silence.start();
    while (process.state() != QProcess::NotRunning) {
        process.waitForReadyRead(PollMilliseconds);
        if (report.read(process)) silence.restart();
        if (progress && !progress(report.progress().done, report.progress().total))
            return Error{u"Aktarma iptal edildi."_s};
        if (silence.hasExpired(options.silence.count()))
            return Error{u"Aktarma durdu: %1 saniyedir ilerleme yok."_s.arg(
                std::chrono::ceil<std::chrono::seconds>(options.silence).count())};
    }
    report.read(process);
    return {};
}

// What the end of the program means.
Result<LayoutKind> outcome(const QProcess& process, const Report& report) {
    if (process.exitStatus() == QProcess::CrashExit)
        return Error{u"Dosya bozuk: aktarma programı onu okurken çöktü."_s};
    if (process.exitCode() != 0) {
        if (!report.message().isEmpty()) return Error{report.message()};
        return Error{u"Aktarma başarısız oldu (durum %1)."_s.arg(process.exitCode())};
    }
    if (!report.done()) return Error{u"Aktarma programı işini bitirmeden kapandı."_s};
    return *report.done();
}

// The program checked the content; here the new file is opened as its user will open it, and the rows are
// counted.
Result<void> checkTarget(const QString& target, LayoutKind kind, const QMap<QString, qint64>& rows) {
    const Result<Database> database = Database::open(target, OpenMode::ReadOnly);
    if (!database) return database.error();
    if (const Result<void> layout = checkLayout(*database, kind); !layout) return layout;
    for (const TableLayout& table : tablesOf(kind)) {
        const auto count = database->integer(u"SELECT count(*) FROM %1"_s.arg(table.name));
        if (!count) return count.error();
        if (*count != rows.value(table.name.toString()))
            return Error{u"Yazılan dosyada %1 tablosu eksik."_s.arg(table.name)};
    }
    return {};
}

Result<LayoutKind> runAndCheck(const ImporterOptions& options, const ImportRun& run,
                               const ImportProgress& progress) {
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(importProgram(options), arguments(run));
    if (!process.waitForStarted())
        return Error{u"Aktarma programı başlatılamadı (%1)."_s.arg(importProgram(options))};
    const EndedAtSignal endedAtSignal(process.processId());
    Report report;
    if (const Result<void> watched = watch(process, report, options, progress); !watched) {
        process.kill();
        process.waitForFinished();
        return watched.error();
    }
    const Result<LayoutKind> kind = outcome(process, report);
    if (!kind) return kind;
    if (const Result<void> checked = checkTarget(run.target, *kind, report.rows()); !checked)
        return checked.error();
    return kind;
}

}  // namespace

Result<LayoutKind> runImport(const ImporterOptions& options, const ImportRun& run,
                             const ImportProgress& progress) {
    const Result<LayoutKind> kind = runAndCheck(options, run, progress);
    if (!kind) QFile::remove(run.target);
    return kind;
}

}  // namespace lirovan::platform
