// lirovan-kitap-oku — reads a book file and hands it over, as a program of its own: whatever a broken file
// does to the reading libraries, it does not do it to the program that asked.
//
//     lirovan-kitap-oku DOSYA [--resimsiz]
//     lirovan-kitap-oku --help | --version
//
// Standard output: the lines of platform/core/books/book_protocol.h. Exit status 0, 1 failure, 2 usage.
#include <libxml/parser.h>

#include <QCoreApplication>
#include <QFile>
#include <cstdio>
#include <new>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>
#endif

#include "platform/core/version.h"
#include "tools/book_reader/open_source.h"

#if defined(__SANITIZE_ADDRESS__)
#define LIROVAN_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LIROVAN_SANITIZED 1
#endif
#endif

namespace {

using namespace lirovan;
using book_reader::Lines;
using namespace Qt::StringLiterals;

// The libraries write their remarks to the usual channel.
std::FILE* ownOutput() {
#ifdef Q_OS_UNIX
    std::FILE* output = fdopen(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 10), "w");
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (!output || nowhere < 0) std::abort();
    dup2(nowhere, STDOUT_FILENO);
    return output;
#else
    return stdout;
#endif
}

#ifdef Q_OS_UNIX
int outputChannel = STDOUT_FILENO;

// The time is over somewhere inside a parser; only what a signal handler may do is done.
void giveUp(int) {
    constexpr char line[] =
        "\n{\"tur\":\"hata\",\"metin\":\"Kitabın okunması çok uzun sürüyor; dosya çok büyük ya da "
        "bozuk.\"}\n";
    _exit(write(outputChannel, line, sizeof line - 1) > 0 ? 1 : 3);
}
#endif

// A hostile file may ask for any amount of memory and time; no core files, and a reader that went away is an
// error and not a signal. Real books take a second.
void limitResources([[maybe_unused]] std::FILE* output) {
#ifdef Q_OS_UNIX
    outputChannel = fileno(output);
    std::signal(SIGXCPU, giveUp);
    const rlimit noCore{0, 0}, time{10, 15};
    setrlimit(RLIMIT_CORE, &noCore);
    setrlimit(RLIMIT_CPU, &time);
#ifndef LIROVAN_SANITIZED
    // The soft limits alone: pandoc reserves more address space than it uses.
    const rlimit data{rlim_t(440) << 20, rlim_t(440) << 20}, memory{rlim_t(1) << 30, RLIM_INFINITY};
    setrlimit(RLIMIT_DATA, &data);
    setrlimit(RLIMIT_AS, &memory);
#endif
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
#endif
}

book_reader::Result<void> run(const QString& path, bool withPictures, Lines& lines) {
    auto source = book_reader::openSource(path);
    if (!source) return source.error();
    const auto hash = book_reader::sourceHash(path);
    if (!hash) return hash.error();
    return book_reader::handOver(*source, *hash, withPictures, lines);
}

int usage(const QString& word) {
    if (word == u"--version")
        return std::printf("lirovan-kitap-oku %s\n", qUtf8Printable(lirovan::platform::version())) < 0;
    std::fputs("Kullanım: lirovan-kitap-oku DOSYA [--resimsiz]\n", word == u"--help" ? stdout : stderr);
    return word == u"--help" ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
    QString path, asked;
    bool withPictures = true, wrong = argc < 2;
    for (int i = 1; i < argc; ++i) {
        const QString word = QFile::decodeName(argv[i]);
        if (word == u"--resimsiz")
            withPictures = false;
        else if (word == u"--help" || word == u"--version")
            asked = word;
        else if (path.isEmpty() && !word.startsWith(u"--"))
            path = word;
        else
            wrong = true;
    }
    if (wrong || path.isEmpty() || !asked.isEmpty()) return usage(asked);
    std::FILE* output = ownOutput();
    limitResources(output);
    Lines lines(output);
    try {
        const auto done = run(path, withPictures, lines);
        if (done && lines.good()) return 0;
        lines.failure(done ? u"Sonuç yazılamadı."_s : done.error().message);
    } catch (const std::bad_alloc&) {
        lines.failure(u"Kitap okunurken bellek yetmedi; dosya çok büyük ya da bozuk."_s);
    }
    return 1;
}
