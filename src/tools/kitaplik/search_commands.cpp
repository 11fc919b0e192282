#include <QCoreApplication>
#include <QProcess>

#include "search/runs/companion.h"
#include "tools/kitaplik/commands.h"
#include "tools/kitaplik/make_file.h"
#include "tools/kitaplik/open_library.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;
using search::SearchRequest;

namespace {

constexpr QStringView OptionUsage = u"[--harf] [--tum-kelime] [--hepsi] [--birlikte] [--ses]";
const std::vector<QStringView> OptionFlags = {u"harf", u"tum-kelime", u"hepsi", u"birlikte", u"ses"};

std::vector<QStringView> flagsAnd(QStringView flag) {
    std::vector<QStringView> flags = OptionFlags;
    flags.push_back(flag);
    return flags;
}

SearchRequest requestOf(const QString& query, const Arguments& arguments) {
    SearchRequest request;
    request.query = query;
    request.options = {.caseSensitive = arguments.has(u"harf"),
                       .wholeWord = arguments.has(u"tum-kelime"),
                       .allWords = arguments.has(u"hepsi"),
                       .together = arguments.has(u"birlikte"),
                       .clearResult = false,
                       .soundChanges = arguments.has(u"ses")};
    return request;
}

// Order and scope: --sira, --yazar, --kitap.
Result<void> addScope(SearchRequest& request, const Arguments& arguments) {
    const QString order = arguments.value(u"sira").value_or(u"kitap"_s);
    if (order == u"kitap")
        request.order = search::ListOrder::Kitap;
    else if (order == u"konu")
        request.order = search::ListOrder::Konu;
    else if (order == u"oran")
        request.order = search::ListOrder::Oran;
    else
        return Error{u"--sira kitap, konu ya da oran olmalı."_s};
    if (const auto author = arguments.value(u"yazar")) {
        const Result<qint64> id = Arguments::id(*author, u"--yazar");
        if (!id) return id.error();
        request.scope.authorId = *id;
    }
    if (const auto book = arguments.value(u"kitap")) {
        const Result<qint64> id = Arguments::id(*book, u"--kitap");
        if (!id) return id.error();
        if (request.scope.authorId == 0) return Error{u"--kitap ile birlikte --yazar da verilmeli."_s};
        request.scope.bookId = *id;
    }
    return {};
}

ExitStatus print(const Result<QByteArray>& bytes) {
    if (!bytes) return fail(bytes.error());
    printBytes(*bytes);
    return ExitStatus::Success;
}

ExitStatus failUsage(const Error& error) {
    fail(error);
    return ExitStatus::Usage;
}

ExitStatus ara(const Arguments& arguments) {
    SearchRequest request = requestOf(arguments.positional[1], arguments);
    if (const Result<void> scoped = addScope(request, arguments); !scoped) return failUsage(scoped.error());
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    return print(search::companion::ara(open->library, request));
}

ExitStatus vurgula(const Arguments& arguments) {
    const Result<qint64> id = Arguments::id(arguments.positional[1], u"KONUID");
    if (!id) return failUsage(id.error());
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    if (const auto topic = open->library.topic({*id}); !topic) return fail(topic.error());
    const QByteArray page =
        search::companion::vurgula(open->library, platform::AppFolder(*arguments.value(u"klasor")), {*id},
                                   requestOf(arguments.positional[2], arguments), arguments.has(u"json"));
    if (page.isEmpty()) printNote(u"Konu %1: gösterilecek sayfa yok."_s.arg(*id));
    printBytes(page);
    return ExitStatus::Success;
}

// PDF and ODT need fonts: the reader's program makes them.
Result<QByteArray> madeByReader(const QByteArray& html, const QString& format, const QString& title) {
    QProcess reader;
    reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    reader.start(QCoreApplication::applicationDirPath() + u"/lirovan"_s, {u"--belge"_s, format, title});
    const Error failure{u"Belge yapılamadı: lirovan programı çalıştırılamadı ya da bitmedi."_s};
    if (!reader.waitForStarted()) return failure;
    reader.write(html);
    reader.closeWriteChannel();
    if (!reader.waitForFinished(-1) || reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0)
        return failure;
    return reader.readAllStandardOutput();
}

ExitStatus printDocument(const data::Library& library, const SearchRequest& request, int group,
                         const QString& format) {
    QByteArray html;  // of what is laid out; the rest is printed as it comes
    const auto output = [&](const QByteArray& piece) {
        if (format == u"html")
            printBytes(piece);
        else
            html += piece;
    };
    if (const auto made = search::companion::ozetBelgesi(library, request, group, output); !made)
        return fail(made.error());
    return format == u"html" ? ExitStatus::Success : print(madeByReader(html, format, request.query));
}

ExitStatus ozet(const Arguments& arguments) {
    const auto format = arguments.value(u"bicim");
    if (format && *format != u"html" && *format != u"pdf" && *format != u"odt")
        return failUsage({u"--bicim html, pdf ya da odt olmalı."_s});
    bool isNumber = format.has_value();
    const auto typed = arguments.value(u"grup");
    const int group = typed ? typed->toInt(&isNumber) : -1;
    if (!isNumber || (typed && group < 0))
        return failUsage({u"--grup 0 ya da daha büyük bir tam sayı olmalı."_s});
    SearchRequest request = requestOf(arguments.positional[1], arguments);
    if (const Result<void> scoped = addScope(request, arguments); !scoped) return failUsage(scoped.error());
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    if (format) return printDocument(open->library, request, group, *format);
    return print(search::companion::ozet(open->library, request, group));
}

// Context and distribution: what they need, and where it goes.
using Printed = Result<void> (*)(const data::Library&, const SearchRequest&, qsizetype,
                                 const search::companion::Output&);
constexpr qsizetype ContextWidth = 60, WidestContext = 100'000;

ExitStatus printRun(const Arguments& arguments, Printed print) {
    SearchRequest request = requestOf(arguments.positional[1], arguments);
    if (const Result<void> scoped = addScope(request, arguments); !scoped) return failUsage(scoped.error());
    bool isNumber = true;
    const auto typed = arguments.value(u"genislik");
    const qsizetype width = typed ? typed->toLongLong(&isNumber) : ContextWidth;
    if (!isNumber || width < 0 || width > WidestContext)
        return failUsage({u"--genislik 0 ile %1 arasında bir tam sayı olmalı."_s.arg(WidestContext)});
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    const Result<void> printed =
        print(open->library, request, width, [](const QByteArray& bytes) { printBytes(bytes); });
    return printed ? ExitStatus::Success : fail(printed.error());
}

ExitStatus baglam(const Arguments& arguments) {
    return printRun(arguments, [](const data::Library& library, const SearchRequest& request, qsizetype width,
                                  const search::companion::Output& output) {
        return search::companion::baglam(library, request, width, output);
    });
}

ExitStatus dagilim(const Arguments& arguments) {
    return printRun(arguments, [](const data::Library& library, const SearchRequest& request, qsizetype,
                                  const search::companion::Output& output) {
        return search::companion::dagilim(library, request, output);
    });
}

// The file is changed, so a Jet or plain SQLite file is brought into our layout first, as the program does.
Result<QByteArray> rebuiltTable(const QString& path) {
    const auto ensured = platform::Importer().ensureLayout(path, platform::LayoutKind::Library);
    if (!ensured) return ensured.error();
    if (ensured->imported) printNote(u"Dosya kitaplık biçimine çevrildi; eskisi: %1"_s.arg(ensured->backup));
    const Result<data::Library> library = data::Library::openFile(path, platform::OpenMode::ReadWrite);
    if (!library) return library.error();
    return search::companion::kelimeler(*library);
}

Result<QByteArray> rebuiltCopy(const QString& source, const QString& target) {
    QByteArray rows;
    const Result<void> made = makeFile(target, [&](const QString& path) -> Result<void> {
        const Result<OpenLibrary> open = openLibrary(source);
        if (!open) return open.error();
        if (const Result<void> copied = open->library.copyTo(path); !copied) return copied;
        const Result<QByteArray> rebuilt = rebuiltTable(path);
        if (!rebuilt) return rebuilt.error();
        rows = *rebuilt;
        return {};
    });
    if (!made) return made.error();
    return rows;
}

ExitStatus kelimeler(const Arguments& arguments) {
    const QStringList& words = arguments.positional;
    return print(words.size() == 1 ? rebuiltTable(words[0]) : rebuiltCopy(words[0], words[1]));
}

}  // namespace

std::vector<Command> searchCommands() {
    static const QString araUsage =
        u"DOSYA SORGU [--sira kitap|konu|oran] [--yazar ID [--kitap ID]] "_s + OptionUsage.toString();
    static const QString baglamUsage = araUsage + u" [--genislik N]"_s;
    static const QString vurgulaUsage =
        u"DOSYA KONUID SORGU --klasor DIR [--json] "_s + OptionUsage.toString();
    static const QString ozetUsage =
        u"DOSYA SORGU --grup K | --bicim html|pdf|odt [--grup K] [--sira kitap|konu|oran] [--yazar ID [--kitap ID]] "_s +
        OptionUsage.toString();
    const std::vector<QStringView> scope = {u"sira", u"yazar", u"kitap"};
    return {
        {u"ara",
         araUsage,
         u"Arar; kelimeleri, sonuç ağacını ve isabet kaydını JSON olarak yazar.",
         2,
         2,
         scope,
         OptionFlags,
         {},
         ara},
        {u"vurgula",
         vurgulaUsage,
         u"Bir konunun, aranan kelimeleri işaretli sayfasını yazar.",
         3,
         3,
         {u"klasor"},
         flagsAnd(u"json"),
         {u"klasor"},
         vurgula},
        {u"ozet",
         ozetUsage,
         u"Bir yazarın bulunan konularının özet sayfasını yazar; K yazarın sırası, 0'dan. --bicim ile "
         u"kaynaklı bir "
         "belge, --grup verilmezse bütün yazarların.",
         2,
         2,
         {u"grup", u"bicim", u"sira", u"yazar", u"kitap"},
         OptionFlags,
         {},
         ozet},
        {u"baglam",
         baglamUsage,
         u"Her isabeti, çevresindeki metinle bir satır JSON olarak yazar; N karakter sayısı, yoksa 60.",
         2,
         2,
         {u"sira", u"yazar", u"kitap", u"genislik"},
         OptionFlags,
         {},
         baglam},
        {u"dagilim",
         araUsage,
         u"İsabetlerin kitaplardaki yerlerini yazar: her kitap bir satır JSON.",
         2,
         2,
         scope,
         OptionFlags,
         {},
         dagilim},
        {u"kelimeler",
         u"DOSYA [HEDEF]",
         u"Özel kelimeler tablosunu (HEDEF verilirse bir kopyada) yeniden kurar.",
         1,
         2,
         {},
         {},
         {},
         kelimeler},
    };
}

}  // namespace lirovan::tools
