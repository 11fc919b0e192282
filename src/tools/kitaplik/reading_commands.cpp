#include "browse/book_selector.h"
#include "browse/book_tree.h"
#include "browse/page_layout.h"
#include "browse/topic_page.h"
#include "platform/core/json_line.h"
#include "text/title.h"
#include "tools/kitaplik/commands.h"
#include "tools/kitaplik/open_library.h"

namespace lirovan::tools {

using platform::JsonLine;
using platform::Result;
using namespace Qt::StringLiterals;

namespace {

QByteArray nodeLine(const browse::TreeNode& node, const std::vector<browse::TreeNode>& nodes) {
    JsonLine line;
    line.text("anahtar", node.key);
    if (node.parent < 0)
        line.null("ust");
    else
        line.text("ust", nodes[static_cast<size_t>(node.parent)].key);
    line.text("metin", node.text).text("simge", node.image);
    if (node.hasTag)
        line.number("etiket", node.topic.value);
    else
        line.null("etiket");
    return line.finish();
}

ExitStatus agac(const Arguments& arguments) {
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    const browse::BookTree tree = browse::readBookTree(open->library);
    for (const browse::TreeNode& node : tree.nodes) printBytes(nodeLine(node, tree.nodes) + '\n');
    return tree.failure ? fail(*tree.failure) : ExitStatus::Success;
}

ExitStatus secici(const Arguments& arguments) {
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());
    const browse::BookSelector selector = browse::readBookSelector(open->library);
    for (const browse::SelectorRow& row : selector.rows) {
        JsonLine line;
        line.text("metin", row.text);
        line.number("veri", row.data ? std::optional<qint64>(*row.data) : std::nullopt);
        printBytes(line.finish() + '\n');
    }
    return selector.failure ? fail(*selector.failure) : ExitStatus::Success;
}

ExitStatus konu(const Arguments& arguments) {
    const Result<qint64> id = Arguments::id(arguments.positional[1], u"KONUID");
    if (!id) {
        fail(id.error());
        return ExitStatus::Usage;
    }
    const Result<OpenLibrary> open = openLibrary(arguments.positional[0]);
    if (!open) return fail(open.error());

    const auto heading = open->library.headingWithBook(data::TopicId{*id});
    if (!heading) return fail(heading.error());
    if (const auto topic = open->library.topic(data::TopicId{*id}); !topic) return fail(topic.error());
    std::optional<QString> page;
    if (*heading) {
        const data::BookHeading& row = **heading;
        page = browse::topicPage(
            open->library, platform::AppFolder(*arguments.value(u"klasor")),
            {row.book, row.author, data::TopicId{*id}, row.title, text::ClearTitle(QString(row.bookTitle))});
    }
    // A topic without a text has no page, and a click on it shows none: that is an answer, not a failure.
    if (page)
        printBytes(browse::pageBytes(*page));
    else
        printNote(u"Konu %1: gösterilecek sayfa yok."_s.arg(*id));
    return ExitStatus::Success;
}

}  // namespace

std::vector<Command> readingCommands() {
    return {
        {u"agac", u"DOSYA", u"Kitap ağacını yazar: her düğüm bir satır JSON.", 1, 1, {}, {}, {}, agac},
        {u"secici", u"DOSYA", u"Kitap seçicinin satırlarını yazar, JSON olarak.", 1, 1, {}, {}, {}, secici},
        {u"konu",
         u"DOSYA KONUID --klasor DIR",
         u"Bir konunun sayfasını, sayfa dosyasının baytlarıyla yazar.",
         2,
         2,
         {u"klasor"},
         {},
         {u"klasor"},
         konu},
    };
}

}  // namespace lirovan::tools
