// lirovan-jet-aktar — imports a Jet or plain SQLite file into a new file of ours, as a program of its own:
// whatever a broken file does to the reading library, it does not do it to the program that asked.
//
//     lirovan-jet-aktar [--tur kitaplik|notlar] KAYNAK HEDEF
//     lirovan-jet-aktar --help | --version
//
// Standard output: the lines of platform/core/import/import_protocol.h. Standard error: what went wrong, in
// Turkish. Exit status 0, 1 failure (HEDEF is removed again), 2 usage.
#include <QFile>
#include <QFileInfo>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#endif

#include "platform/core/ended_from_outside.h"
#include "platform/core/import/import_protocol.h"
#include "platform/core/version.h"
#include "tools/jet_import/copy_tables.h"

#if defined(__SANITIZE_ADDRESS__)
#define LIROVAN_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LIROVAN_SANITIZED 1
#endif
#endif

namespace {

using namespace lirovan;
using platform::Error;
using platform::FileHeader;
using platform::LayoutKind;
using platform::Result;
using namespace Qt::StringLiterals;

constexpr auto Usage = "Kullanım: lirovan-jet-aktar [--tur kitaplik|notlar] KAYNAK HEDEF\n";
constexpr auto About =
    "\nBir Jet/Access ya da SQLite dosyasını yeni bir Lirovan dosyasına aktarır; HEDEF önceden var "
    "olmamalı.\n"
    "--tur dosyanın türünü söyler; verilmezse tablolarına bakılır.\n"
    "Elle aktarmak için: lirovan-kitaplik aktar KAYNAK HEDEF\n\n"
    "Çıkış: 0 başarılı, 1 hata, 2 yanlış kullanım. İletiler standart hataya yazılır.\n";

// Our own ends of the standard channels. The library below writes its remarks to the usual ones.
FILE* output = stdout;
FILE* errors = stderr;

void keepChannels() {
#ifdef Q_OS_UNIX
    output = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10), "w");
    errors = fdopen(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 10), "w");
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (!output || !errors || nowhere < 0) std::abort();
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
#endif
}

// A broken file may ask for any amount of memory; no core files, and a full disk is an error and not a
// signal.
void limitResources() {
#ifdef Q_OS_UNIX
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
#ifndef LIROVAN_SANITIZED
    const rlimit memory{rlim_t(2) << 30, rlim_t(2) << 30};
    setrlimit(RLIMIT_AS, &memory);
#endif
    std::signal(SIGXFSZ, SIG_IGN);
#endif
}

void print(FILE* channel, const QByteArray& text) {
    std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), channel);
    std::fflush(channel);
}

struct Call {
    std::optional<LayoutKind> kind;
    QString source, target;
};

std::optional<Call> parseCall(QStringList words) {
    Call call;
    if (words.size() == 4 && words[0] == u"--tur") {
        for (const LayoutKind kind : {LayoutKind::Library, LayoutKind::Notes})
            if (words[1] == platform::kindWord(kind)) call.kind = kind;
        if (!call.kind) return std::nullopt;
        words = words.sliced(2);
    }
    if (words.size() != 2 || words[0].isEmpty() || words[1].isEmpty()) return std::nullopt;
    call.source = words[0];
    call.target = words[1];
    return call;
}

Result<std::unique_ptr<jet_import::RowSource>> openSource(const QString& path) {
    const FileHeader header = platform::probeFile(path);
    if (const Result<void> readable = platform::checkReadable(header); !readable) return readable.error();
    return header.isJet() ? jet_import::openJet(path, header) : jet_import::openSqlite(path);
}

Result<void> run(const Call& call) {
    if (QFileInfo::exists(call.target)) return Error{u"Hedef dosya zaten var."_s};
    auto source = openSource(call.source);
    if (!source) return source.error();
    const Result<LayoutKind> kind = jet_import::kindOf(**source, call.kind);
    if (!kind) return kind.error();
    const jet_import::LineSink sink = [](const platform::ImportLine& line) {
        print(output, platform::writeImportLine(line));
    };
    const platform::RemovedAtSignal removedAtSignal(call.target);
    const Result<void> copied = jet_import::copyTables(**source, *kind, call.target, sink);
    if (!copied) {
        QFile::remove(call.target);
        return copied;
    }
    sink(platform::DoneLine{*kind});
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i) words += QFile::decodeName(argv[i]);
    if (words.value(0) == u"--help" || words.value(0) == u"-h") {
        print(output, QByteArray(Usage) + About);
        return 0;
    }
    if (words.value(0) == u"--version") {
        print(output, "lirovan-jet-aktar " + platform::version().toUtf8() + '\n');
        return 0;
    }
    const std::optional<Call> call = parseCall(words);
    if (!call) {
        print(errors, Usage);
        return 2;
    }
    keepChannels();
    limitResources();
    platform::cleanUpAtSignals();
    const Result<void> done = run(*call);
    if (done) return 0;
    print(errors, done.error().message.toUtf8() + '\n');
    return 1;
}
