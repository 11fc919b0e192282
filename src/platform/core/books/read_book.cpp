#include "platform/core/books/read_book.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include "platform/core/books/book_protocol.h"

#ifdef Q_OS_UNIX
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

constexpr int PollMilliseconds = 50;
// Everything that a book may hold, in base64 and with JSON's escapes.
constexpr qint64 MostOutput = 2 * MaximalPicturesBytes + 4 * MaximalBookTextBytes;

Error cancelled() {
    return {u"Kitap okunması iptal edildi."_s};
}

// Reader and what it starts itself (pandoc) are one group, so that they end together.
class ReaderProcess {
  public:
    ~ReaderProcess() { end(); }

    Result<void> start(const QString& file, const BookReaderOptions& options) {
        const QString program = options.program.isEmpty() ? QCoreApplication::applicationDirPath() + u'/' +
                                                                QLatin1StringView(BookReaderProgram)
                                                          : options.program;
        // Absolute paths cannot be taken for options.
        QStringList words{QFileInfo(file).absoluteFilePath()};
        if (!options.pictures) words += u"--resimsiz"_s;
        process_.setStandardInputFile(QProcess::nullDevice());
        process_.setStandardErrorFile(QProcess::nullDevice());
#ifdef Q_OS_UNIX
        process_.setChildProcessModifier([memory = options.memory] {
            setpgid(0, 0);
            const auto limit = [](auto resource, rlim_t most) {
                const rlimit both{most, most};
                (void)setrlimit(resource, &both);
            };
            limit(RLIMIT_CORE, 0);
            limit(RLIMIT_DATA, rlim_t(memory));
        });
#endif
        process_.start(program, words);
        if (!process_.waitForStarted())
            return Error{u"Kitabı okuyan program başlatılamadı (%1)."_s.arg(program)};
        group_ = process_.processId();
        return {};
    }

    void end() {
        if (process_.state() == QProcess::NotRunning) return;
#ifdef Q_OS_UNIX
        if (group_ > 0) ::kill(-pid_t(group_), SIGKILL);
#endif
        process_.kill();
        process_.waitForFinished();
    }

    QProcess& process() {
        return process_;
    }

  private:
    QProcess process_;
    qint64 group_ = 0;
};

class Reading {
  public:
    Reading(const QString& file, const BookReaderOptions& options, const BookProgress& progress)
        : options_(options), progress_(progress), content_(file) {
        if (!options.pictures) content_.expectNoPictures();
    }

    Result<BookContent> run() {
        ReaderProcess reader;
        if (const auto started = reader.start(content_.file(), options_); !started) return started.error();
        const Result<void> watched = watch(reader.process());
        reader.end();
        if (!watched) return watched.error();
        if (!failure_.isEmpty()) return Error{failure_};
        const QProcess& process = reader.process();
        if (process.exitStatus() == QProcess::CrashExit)
            return Error{u"Dosya okunamadı: kitabı okuyan program çöktü ya da belleği yetmedi."_s};
        if (process.exitCode() != 0)
            return Error{u"Kitabı okuyan program başarısız oldu (durum %1)."_s.arg(process.exitCode())};
        if (const Result<void> whole = content_.finish(); !whole) return whole.error();
        return std::move(content_);
    }

  private:
    // Ends with the reader's end, or when it falls silent, takes too long or talks nonsense.
    Result<void> watch(QProcess& process) {
        QElapsedTimer silence, running, asked;
        silence.start();
        running.start();
        while (process.state() != QProcess::NotRunning || process.bytesAvailable() > 0) {
            process.waitForReadyRead(PollMilliseconds);
            const QByteArray more = process.readAllStandardOutput();
            if (!more.isEmpty()) silence.restart();
            if (const Result<void> taken = take(more, asked); !taken) return taken;
            if (!goOn(asked)) return cancelled();
            if (silence.hasExpired(options_.silence.count()) || running.hasExpired(options_.longest.count()))
                return Error{u"Kitabın okunması çok uzun sürdü ve durduruldu."_s};
        }
        if (!rest_.isEmpty() && failure_.isEmpty()) return takeLine(rest_);
        return {};
    }

    // Asked ten times a second, also while a great many lines are at hand.
    bool goOn(QElapsedTimer& asked) {
        if (!progress_ || (asked.isValid() && asked.elapsed() < PollMilliseconds)) return true;
        asked.start();
        return progress_(at_.done, at_.total);
    }

    Result<void> take(const QByteArray& more, QElapsedTimer& asked) {
        size_ += more.size();
        if (size_ > MostOutput) return Error{u"Kitap çok büyük."_s};
        qsizetype begin = 0;
        for (qsizetype end = 0; (end = more.indexOf('\n', begin)) >= 0; begin = end + 1) {
            rest_ += more.sliced(begin, end - begin);
            if (const Result<void> taken = takeLine(rest_); !taken) return taken;
            rest_.clear();
            if (!goOn(asked)) return cancelled();
        }
        rest_ += more.sliced(begin);
        if (rest_.size() > MaximalBookLineBytes) return Error{u"Kitabın bir bölümü çok uzun."_s};
        return {};
    }

    Result<void> takeLine(const QByteArray& bytes) {
        Result<BookLine> line = parseBookLine(bytes);
        if (!line)
            return Error{
                u"Kitabı okuyan program anlaşılmaz bir şey söyledi (%1)."_s.arg(line.error().message)};
        if (!failure_.isEmpty()) return {};
        if (const auto* progress = std::get_if<BookProgressLine>(&*line)) at_ = *progress;
        if (const auto* failure = std::get_if<BookFailureLine>(&*line)) failure_ = failure->message;
        return content_.take(std::move(*line));
    }

    const BookReaderOptions& options_;
    const BookProgress& progress_;
    BookContent content_;
    BookProgressLine at_;
    QString failure_;
    QByteArray rest_;
    qint64 size_ = 0;
};

}  // namespace

Result<BookContent> readBook(const QString& file, const BookReaderOptions& options,
                             const BookProgress& progress) {
    if (!QFileInfo::exists(file)) return Error{u"Dosya bulunamadı."_s};
    return Reading(file, options, progress).run();
}

}  // namespace lirovan::platform
