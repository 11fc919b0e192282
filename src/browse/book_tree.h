// The outline of the library as the book tree shows it: authors, their books, the books' topic headings.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>
#include <vector>

#include "browse/page_identity.h"
#include "data/library.h"
#include "platform/core/result.h"

namespace lirovan::browse {

/// Image keys of tree nodes.
namespace image {
inline constexpr QStringView FirstAuthor = u"vq", ClosedBook = u"Lirovan", OpenBook = u"Ac",
                             UnreadTopic = u"Acik", ReadTopic = u"Incele";
}

struct TreeNode {
    enum class Kind { Author, Book, Topic };

    Kind kind = Kind::Author;
    QString key;            ///< "T0", "P1", "C1", ...: unique in the tree
    QString text;           ///< author's name; ClearTitle of a book's title or heading, with its last blank
    QStringView image;      ///< one of the image keys
    qsizetype parent = -1;  ///< index of the parent among the nodes; -1: a root
    qsizetype children = 0;
    data::AuthorId author;  ///< of the author, or of the book's author
    data::BookId book;      ///< none for an author
    data::TopicId topic;    ///< a topic's tag; none for others
    bool hasTag = false;    ///< `topic` is one; a heading may lack its id
};

/// Nodes in tree order: an author, its first book, that book's topics, its second book, ...
struct BookTree {
    std::vector<TreeNode> nodes;
    /// Why the filling ended early; the nodes read so far stand.
    std::optional<platform::Error> failure;
};

/// What the reader is told when the tree or the selector could not be filled to the end.
QString incompleteListMessage(const platform::Error& failure);

/// Told while the tree is filled, with titles as the tree shows them. May be empty.
struct TreeProgress {
    std::function<void()> started;
    std::function<void(const QString& book)> bookStarted;
    std::function<void(const QString& topic)> topicAdded;
};

/// Lines of the splash window.
QString loadingText();                          ///< before the fill
QString bookLoadingText(const QString& book);   ///< "Kitap Adı: … kitabı yükleniyor."
QString topicLoadedText(const QString& topic);  ///< "Konu: … yüklendi."

/// Reads the whole outline once. Progress is called for every book and topic; a caller that paints does so at
/// frame rate.
BookTree readBookTree(const data::Library& library, const TreeProgress& progress = {});

/// Which node of another reading of the outline is the same author, book or heading; -1 where there is none
/// any more. By position among the nodes of `before`.
std::vector<qsizetype> sameNodes(const std::vector<TreeNode>& before, const std::vector<TreeNode>& now);

/// What a click on a node shows.
enum class ClickTarget {
    StartPage,  ///< every author and every book
    Topic
};
ClickTarget clickTarget(const std::vector<TreeNode>& nodes, qsizetype node);

/// The page of a topic's node; the start page for others.
PageIdentity pageOf(const TreeNode& node);
/// The node of a topic: in `book`, where that has it, or else the first. -1: none.
qsizetype topicNode(const std::vector<TreeNode>& nodes, data::TopicId topic, data::BookId book = {});
/// The topic after (`step` 1) or before (-1) a node, on into the next book; -1 at the end. From -1 it is the
/// first or the last one.
qsizetype neighbourTopic(const std::vector<TreeNode>& nodes, qsizetype from, int step);

/// A node's image after it was expanded, collapsed or, for a topic, opened.
QStringView expandedImage(QStringView image);
QStringView collapsedImage(QStringView image);
QStringView openedImage(QStringView image);

}  // namespace lirovan::browse
