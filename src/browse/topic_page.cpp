#include "browse/topic_page.h"

#include "browse/page_file.h"
#include "browse/page_layout.h"
#include "data/special_books.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;

namespace {

// Positions in the shaping are counted from 1; 0 means that the text is not there.
qsizetype position(QStringView text, QStringView of) {
    return text.indexOf(of) + 1;
}

// How much of a part is no list: behind the items of part 7, and around the first paragraph of part 2.
constexpr qsizetype LastPartTail = 259, IntroductionEnd = 90, ItemsBegin = 93;
constexpr qsizetype CutWindow = 22;

// Drops what follows the last paragraph, looked for in the last 22 characters only.
void cutTail(QString& content) {
    if (content.size() < CutWindow) return;
    const qsizetype end = position(QStringView(content).last(CutWindow), u"</P>");
    content.truncate(content.size() - 20 + end);
}

}  // namespace

QString shapedListPart(QString content, double partNumber) {
    QString aside;
    if (partNumber == 7) {
        // One character is in both: the aside begins with the last one that stays.
        if (content.size() >= LastPartTail) {
            aside = content.last(LastPartTail);
            content.truncate(content.size() - LastPartTail + 1);
        }
    } else if (partNumber == 2) {
        const qsizetype first = position(content, u"<P>");
        aside = content.left(first + IntroductionEnd);
        aside.remove(u"<P>"_s).remove(u"</P>"_s);
        aside = u"<li>"_s + aside + u"</li>"_s;
        content = content.mid(first + ItemsBegin - 1);
    }
    cutTail(content);
    content.replace(u"<P>"_s, u"<li>"_s).replace(u"</P>"_s, u"</li>"_s);
    if (partNumber == 7) content += aside;
    if (partNumber == 2) content.prepend(aside);

    const double start = (partNumber - 2) * 100 + 1;
    return u"<ol start="_s + QString::number(start, 'f', 0) + u" style='line-height:200%'>"_s + content +
           u"</ol><br><br>"_s;
}

QString scriptFragment(const data::Library& library, const platform::AppFolder& folder) {
    platform::Result<QString> script = library.script();
    if (!script) return {};
    return script->replace(u"homehomehomehome"_s, folder.pageText(StartPage));
}

QString topicContent(QStringView script, const data::TopicText& topic, data::BookId book) {
    QString content = script.toString();
    content += QString(topic.text).remove(u"<html>"_s);
    if (book == data::ListBook && topic.partNumber > 1)
        return shapedListPart(std::move(content), topic.partNumber);
    return content;
}

std::optional<QString> topicPage(const data::Library& library, const platform::AppFolder& folder,
                                 const TopicRequest& request) {
    const auto topic = library.topic(request.topic);
    if (topic && !*topic) return std::nullopt;
    const auto author = library.author(request.author);

    PageFrame frame;
    frame.title = request.title;
    frame.bookName = request.bookName;
    if (author && *author) frame.authorName = (**author).name;
    frame.book = request.book;
    const data::TopicText text = topic ? **topic : data::TopicText();
    return framedPage(frame, topicContent(scriptFragment(library, folder), text, request.book));
}

}  // namespace lirovan::browse
