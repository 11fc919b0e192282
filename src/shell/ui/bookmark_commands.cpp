// The commands about bookmarks: a place is kept, the list is shown, a kept place is opened.
#include <QHash>

#include "desk/reader_file.h"
#include "desk/ui/bookmarks_window.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using desk::Bookmark;
using desk::Target;

namespace {

const QString Title = u"Yer İmleri"_s;
constexpr qsizetype PromptLength = 80;

QString nameOf(const QString& heading, const QString& book) {
    return heading + u'\n' + book;
}

/// Where bookmarks stand in the book tree: by id as long as the heading is the same, or else by the titles.
desk::BookmarkList::TreePosition treePositions(const std::vector<browse::TreeNode>& nodes) {
    QHash<qint64, qsizetype> byId;
    QHash<QString, qsizetype> byName;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        const browse::TreeNode& node = nodes[n];
        if (node.kind != browse::TreeNode::Kind::Topic) continue;
        const auto place = static_cast<qsizetype>(n);
        if (!byId.contains(node.topic.value)) byId.insert(node.topic.value, place);
        const QString book = nodes[static_cast<std::size_t>(node.parent)].text.trimmed();
        const QString name = nameOf(node.text.trimmed(), book);
        if (!byName.contains(name)) byName.insert(name, place);
    }
    return [byId, byName, &nodes](const Bookmark& bookmark) -> qsizetype {
        const qsizetype same = byId.value(bookmark.topic.value, -1);
        if (same >= 0 && nodes[static_cast<std::size_t>(same)].text.trimmed() == bookmark.heading)
            return same;
        return byName.value(nameOf(bookmark.heading, bookmark.bookTitle), same);
    };
}

}  // namespace

bool ChildWindows::tellReaderFile(const platform::Error& error) {
    const QString path = desk::readerFilePath(services_.folder);
    if (!desk::isDamagedReaderFile(path)) {
        services_.dialogs.show(platform::errorMessage(error.message, Title));
        return false;
    }
    const platform::Message question{
        error.message + u"\n\nBozuk dosya başka bir adla saklanıp yenisine başlansın mı?"_s, Title,
        platform::Icon::Question, platform::Buttons::YesNo};
    if (services_.dialogs.show(question) != platform::Answer::Yes) return false;
    const platform::Result<QString> aside = desk::setReaderFileAside(path);
    services_.dialogs.show(aside ? platform::noticeMessage(u"Eski dosya: "_s + *aside, Title)
                                 : platform::errorMessage(aside.error().message, Title));
    return bool(aside);
}

void ChildWindows::addBookmark() {
    if (isBusy()) return;
    const qsizetype node = shownNode();
    if (node < 0 || !content_) {
        frame_.showPassingText(u"Yer imi için önce bir konu açın."_s);
        return;
    }
    platform::Reply<platform::PagePlace> place;
    {
        const platform::MdiChild::Hold hold(*content_);
        content_->shownPage().waitUntilComplete();
        place = content_->shownPage().place(true);
        if (!place) place = content_->shownPage().place(false);
    }
    if (!place) return frame_.showPassingText(u"Sayfa yanıt vermiyor; yer imi eklenemedi."_s);
    const browse::TreeNode& topic = browse_->decisions().nodes()[static_cast<std::size_t>(node)];
    std::optional<Bookmark> bookmark = desk::bookmarkOf(library_, topic.topic, topic.book, *place.value);
    if (!bookmark) {
        frame_.showPassingText(u"Bu konu artık kitaplıkta yok."_s);
        return;
    }
    // A topic may stand under two authors.
    if (const auto author = library_.author(topic.author); author && *author)
        bookmark->author = (**author).name.trimmed();
    const QString& passage = bookmark->place.passage;
    const QString prompt = u"“%1”\n\nYer imine bir satır yazabilirsiniz:"_s.arg(
        passage.size() > PromptLength ? passage.left(PromptLength) + u"…"_s : passage);
    const desk::Bookmarks store(desk::readerFilePath(services_.folder));
    // What was typed comes again until it is kept, or given up.
    while (const auto line = services_.dialogs.ask({prompt, u"Yer İmi Ekle"_s, bookmark->line})) {
        bookmark->line = line->trimmed();
        platform::Result<qint64> added = store.add(*bookmark);
        if (!added && tellReaderFile(added.error())) added = store.add(*bookmark);
        if (added) return frame_.showPassingText(u"Yer imi eklendi."_s);
    }
}

void ChildWindows::showBookmarks() {
    if (isBusy()) return;
    desk::BookmarkList list(desk::Bookmarks(desk::readerFilePath(services_.folder)),
                            treePositions(browseWindow().decisions().nodes()));
    platform::Result<void> read = list.load();
    if (!read && tellReaderFile(read.error())) read = list.load();
    if (!read) return;
    desk::BookmarksWindow window(std::move(list), services_.dialogs, area_.window());
    window.exec();
    area_.window()->activateWindow();
    if (window.chosen()) openBookmark(*window.chosen());
}

void ChildWindows::openBookmark(const Bookmark& bookmark) {
    const Target target = desk::targetOf(library_, bookmark);
    if (target.kind == Target::Kind::None || !openPlace(target.topic, target.book, bookmark.place, true)) {
        services_.dialogs.show(platform::noticeMessage(
            u"Bu yer kitaplıkta bulunamadı:\n%1\n\nYer imi silinmedi."_s.arg(bookmark.where()), Title));
        return;
    }
    if (target.kind == Target::Kind::Topic)
        frame_.showPassingText(u"Yer iminin metni bu konuda artık yok."_s);
}

bool ChildWindows::openPlace(data::TopicId topic, data::BookId book, const platform::PagePlace& place,
                             bool select) {
    if (isBusy()) return false;
    const auto text = library_.topic(topic);
    if (!text || !*text || !browseWindow().openTopic(topic, book)) return false;
    const platform::MdiChild::Hold hold(*content_);
    content_->wb_Icerik->waitUntilComplete();
    content_->wb_Icerik->goTo(place, select);
    focusContentView();
    return true;
}

}  // namespace lirovan::shell
