#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryFile>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

#include "tools/book_reader/limits.h"
#include "tools/book_reader/open_source.h"
#include "tools/book_reader/source_text.h"

namespace lirovan::book_reader {
namespace {

constexpr qint64 LongestRun = 60'000;  // milliseconds
constexpr int Poll = 200;

}  // namespace

Result<QByteArray> throughPandoc(const QString& path, const QString& format) {
    // It takes no code page and loses the letter behind some characters.
    QTemporaryFile rewritten;
    QString input = path;
    if (format == u"rtf") {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return Error{QStringLiteral("Dosya açılamıyor: %1").arg(file.errorString())};
        if (file.size() > 3 * MaximalDocumentBytes) return Error{QStringLiteral("Belge çok büyük.")};
        const QByteArray plain = plainRtf(file.readAll());
        if (!rewritten.open() || rewritten.write(plain) != plain.size() || !rewritten.flush())
            return Error{QStringLiteral("Geçici dosya yazılamıyor.")};
        input = rewritten.fileName();
    } else if (format == u"odt") {
        if (!rewritten.open()) return Error{QStringLiteral("Geçici dosya yazılamıyor.")};
        if (const Result<void> plain = writePlainOdt(path, rewritten.fileName()); !plain)
            return plain.error();
        input = rewritten.fileName();
    } else if (format == u"docx") {
        if (const auto files = openZip(path); !files)
            return files.error();  // traps are told before they open
    }
    const QString program = QStandardPaths::findExecutable(QStringLiteral("pandoc"));
    if (program.isEmpty())
        return Error{QStringLiteral(
            "Bu dosya türü için “pandoc” paketi gerekiyor; kurulu değil (sudo apt install pandoc).")};
    QProcess pandoc;
    pandoc.setStandardErrorFile(QProcess::nullDevice());
    pandoc.setStandardInputFile(QProcess::nullDevice());
#ifdef Q_OS_UNIX
    pandoc.setChildProcessModifier([] {
        rlimit memory{};
        getrlimit(RLIMIT_AS, &memory);
        memory.rlim_cur = memory.rlim_max;
        setrlimit(RLIMIT_AS, &memory);
    });
#endif
    pandoc.start(program, {QStringLiteral("--sandbox"), QStringLiteral("--standalone"),
                           QStringLiteral("--from=") + format, QStringLiteral("--to=html5"),
                           QStringLiteral("--mathml"), QStringLiteral("--"), input});
    QByteArray html;
    QElapsedTimer clock;
    clock.start();
    bool ended = !pandoc.waitForStarted();
    while (!ended && clock.elapsed() < LongestRun && html.size() <= MaximalDocumentBytes) {
        ended = pandoc.waitForFinished(Poll) || pandoc.state() == QProcess::NotRunning;
        html += pandoc.readAllStandardOutput();
    }
    if (!ended) {
        pandoc.kill();
        pandoc.waitForFinished();
        return Error{QStringLiteral("Belge çok büyük ya da çevrilmesi çok uzun sürüyor.")};
    }
    if (pandoc.exitStatus() != QProcess::NormalExit || pandoc.exitCode() != 0 || html.isEmpty())
        return Error{QStringLiteral("Belge bozuk ya da okunamıyor (pandoc çeviremedi).")};
    if (html.size() > MaximalDocumentBytes) return Error{QStringLiteral("Belge çok büyük.")};
    return html;
}

}  // namespace lirovan::book_reader
