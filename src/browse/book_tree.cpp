#include "browse/book_tree.h"

#include <map>
#include <tuple>

#include "data/each_row.h"
#include "text/blanks.h"
#include "text/title.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

// One pass over the library. The counters run through the whole tree, so that no key comes twice.
class Reader {
  public:
    Reader(const data::Library& library, const TreeProgress& progress)
        : library_(library), progress_(progress) {}

    BookTree read() {
        if (const Result<void> done = readAuthors(); !done) tree_.failure = done.error();
        return std::move(tree_);
    }

  private:
    Result<void> readAuthors() {
        return data::eachRow(library_.authors(), [&](const data::Author& author) {
            const bool first = authors_ == 0;
            TreeNode node;
            node.kind = TreeNode::Kind::Author;
            node.key = u'T' + QString::number(authors_++);
            node.text = author.name;
            node.image = first ? image::FirstAuthor : image::ClosedBook;
            node.author = author.id;
            return readBooks(add(std::move(node)));
        });
    }

    Result<void> readBooks(qsizetype authorNode) {
        const data::AuthorId author = tree_.nodes[static_cast<size_t>(authorNode)].author;
        return data::eachRow(library_.treeBooks(author), [&](data::Book& book) {
            TreeNode node;
            node.kind = TreeNode::Kind::Book;
            node.text = text::ClearTitle(book.title);
            if (progress_.bookStarted) progress_.bookStarted(node.text);
            node.key = u'P' + QString::number(++books_);
            node.image = image::ClosedBook;
            node.parent = authorNode;
            node.author = author;
            node.book = book.id;
            return readTopics(add(std::move(node)));
        });
    }

    Result<void> readTopics(qsizetype bookNode) {
        const data::BookId book = tree_.nodes[static_cast<size_t>(bookNode)].book;
        const data::AuthorId author = tree_.nodes[static_cast<size_t>(bookNode)].author;
        return data::eachRow(library_.headings(book), [&](const data::Heading& heading) {
            TreeNode node;
            node.kind = TreeNode::Kind::Topic;
            node.key = u'C' + QString::number(++topics_);
            node.text = text::ClearTitle(text::trimBlanks(heading.title).toString());
            node.image = image::UnreadTopic;
            node.parent = bookNode;
            node.author = author;
            node.book = book;
            node.topic = heading.topic;
            node.hasTag = heading.hasTopic;
            const qsizetype at = add(std::move(node));
            if (progress_.topicAdded) progress_.topicAdded(tree_.nodes[static_cast<size_t>(at)].text);
        });
    }

    qsizetype add(TreeNode node) {
        if (node.parent >= 0) ++tree_.nodes[static_cast<size_t>(node.parent)].children;
        tree_.nodes.push_back(std::move(node));
        return static_cast<qsizetype>(tree_.nodes.size()) - 1;
    }

    const data::Library& library_;
    const TreeProgress& progress_;
    BookTree tree_;
    qint64 authors_ = 0, books_ = 0, topics_ = 0;
};

}  // namespace

QString loadingText() {
    return u"Program bilgileri yükleniyor."_s;
}

QString bookLoadingText(const QString& book) {
    return u"Kitap Adı: "_s + book + u" kitabı yükleniyor."_s;
}

QString topicLoadedText(const QString& topic) {
    return u"Konu: "_s + topic + u" yüklendi."_s;
}

BookTree readBookTree(const data::Library& library, const TreeProgress& progress) {
    return Reader(library, progress).read();
}

QString incompleteListMessage(const platform::Error& failure) {
    return u"kitaplar.vq sonuna kadar okunamadı, kitap listesi eksik.\n"_s + failure.message;
}

std::vector<qsizetype> sameNodes(const std::vector<TreeNode>& before, const std::vector<TreeNode>& now) {
    const auto identity = [](const TreeNode& node) {
        return std::tuple(node.kind, node.author, node.book, node.topic);
    };
    std::map<decltype(identity(now.front())), qsizetype> places;
    for (std::size_t i = 0; i < now.size(); ++i) places.emplace(identity(now[i]), qsizetype(i));
    std::vector<qsizetype> same;
    for (const TreeNode& node : before) {
        const auto found = places.find(identity(node));
        same.push_back(found == places.end() ? -1 : found->second);
    }
    return same;
}

ClickTarget clickTarget(const std::vector<TreeNode>& nodes, qsizetype node) {
    const bool isTopic = node >= 0 && nodes[static_cast<size_t>(node)].kind == TreeNode::Kind::Topic;
    return isTopic ? ClickTarget::Topic : ClickTarget::StartPage;
}

PageIdentity pageOf(const TreeNode& node) {
    if (node.kind != TreeNode::Kind::Topic) return {};
    return {PageIdentity::Kind::Topic, node.topic, node.book, 0, 0, 0};
}

qsizetype topicNode(const std::vector<TreeNode>& nodes, data::TopicId topic, data::BookId book) {
    qsizetype first = -1;
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        if (nodes[n].kind != TreeNode::Kind::Topic || nodes[n].topic != topic) continue;
        if (nodes[n].book == book) return static_cast<qsizetype>(n);
        if (first < 0) first = static_cast<qsizetype>(n);
    }
    return first;
}

qsizetype neighbourTopic(const std::vector<TreeNode>& nodes, qsizetype from, int step) {
    const qsizetype count = static_cast<qsizetype>(nodes.size());
    for (qsizetype n = from < 0 && step < 0 ? count - 1 : from + step; n >= 0 && n < count; n += step)
        if (nodes[static_cast<std::size_t>(n)].kind == TreeNode::Kind::Topic) return n;
    return -1;
}

QStringView expandedImage(QStringView image) {
    return image == image::ClosedBook ? image::OpenBook : image;
}

QStringView collapsedImage(QStringView image) {
    return image == image::OpenBook ? image::ClosedBook : image;
}

QStringView openedImage(QStringView image) {
    return image == image::UnreadTopic ? image::ReadTopic : image;
}

}  // namespace lirovan::browse
