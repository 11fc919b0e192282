#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

#include "tools/book_reader/limits.h"
#include "tools/book_reader/open_source.h"
#include "tools/book_reader/source_text.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

constexpr qint64 LongestRun = 60'000;  // milliseconds
constexpr int Poll = 200;

}  // namespace

Result<QByteArray> throughPandoc(const QString& path, const QString& format) {
    // It takes no code page and loses the letter behind some characters. The name stays: it is what pandoc
    // makes the title of a document without one.
    const QTemporaryDir folder;
    const QString rewritten = folder.filePath(QFileInfo(path).fileName());
    QString input = path;
    if (format == u"rtf") {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) return Error{u"Dosya açılamıyor: %1"_s.arg(file.errorString())};
        if (file.size() > 3 * MaximalDocumentBytes) return Error{u"Belge çok büyük."_s};
        const QByteArray plain = plainRtf(file.readAll());
        QFile into(rewritten);
        if (!into.open(QIODevice::WriteOnly) || into.write(plain) != plain.size() || !into.flush())
            return Error{u"Geçici dosya yazılamıyor."_s};
        input = rewritten;
    } else if (format == u"odt") {
        if (const Result<void> plain = writePlainOdt(path, rewritten); !plain) return plain.error();
        input = rewritten;
    } else if (format == u"docx") {
        if (const auto files = openZip(path); !files)
            return files.error();  // traps are told before they open
    }
    const QString program = QStandardPaths::findExecutable(u"pandoc"_s);
    if (program.isEmpty())
        return Error{
            u"Bu dosya türü için “pandoc” paketi gerekiyor; kurulu değil (sudo apt install pandoc)."_s};
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
    pandoc.start(program, {u"--sandbox"_s, u"--standalone"_s, u"--from="_s + format, u"--to=html5"_s,
                           u"--mathml"_s, u"--"_s, input});
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
        return Error{u"Belge çok büyük ya da çevrilmesi çok uzun sürüyor."_s};
    }
    if (pandoc.exitStatus() != QProcess::NormalExit || pandoc.exitCode() != 0 || html.isEmpty())
        return Error{u"Belge bozuk ya da okunamıyor (pandoc çeviremedi)."_s};
    if (html.size() > MaximalDocumentBytes) return Error{u"Belge çok büyük."_s};
    return html;
}

}  // namespace lirovan::book_reader
