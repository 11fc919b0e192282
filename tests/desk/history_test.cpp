// Pages shown before: order, places, and pages that are no more.
#include "desk/history.h"

#include <gtest/gtest.h>

#include "browse/book_tree.h"
#include "search/runs/found_topics.h"

using namespace lirovan;
using browse::PageIdentity;
using desk::History;
using namespace Qt::StringLiterals;

namespace {

PageIdentity topic(qint64 id) {
    return {PageIdentity::Kind::Topic, {id}, {1}, 0, 0, 0};
}

struct HistoryTest : testing::Test {
    History history;
    std::vector<qint64> gone;  // topics that cannot be shown

    /// Steps and answers the topic that is shown then; -1: there was none to go to.
    qint64 go(int step) {
        const bool went = history.go(step, [this](const History::Entry& entry) {
            history.shown(entry.page);  // as the window does that shows it
            return std::find(gone.begin(), gone.end(), entry.page.topic.value) == gone.end();
        });
        return went ? history.current()->page.topic.value : -1;
    }
};

}  // namespace

TEST_F(HistoryTest, GoesBackAndForwardAndForgetsWhatLayAhead) {
    EXPECT_EQ(go(-1), -1);
    for (const qint64 id : {1, 2, 2, 3}) history.shown(topic(id));
    EXPECT_EQ(go(+1), -1);
    EXPECT_EQ(go(-1), 2) << "the same page twice is one";
    EXPECT_EQ(go(-1), 1);
    EXPECT_EQ(go(-1), -1);
    EXPECT_EQ(go(+1), 2);
    history.shown(topic(4));
    EXPECT_EQ(go(+1), -1);
    EXPECT_EQ(go(-1), 2);
    for (int id = 10; id < 10 + 2 * int(History::Most); ++id) history.shown(topic(id));
    int steps = 0;
    while (go(-1) >= 0) ++steps;
    EXPECT_EQ(steps, int(History::Most) - 1);
}

TEST_F(HistoryTest, PassesOverPagesThatAreGone) {
    for (const qint64 id : {1, 2, 3, 4, 5}) history.shown(topic(id));
    gone = {3, 4};
    EXPECT_EQ(go(-1), 2);
    EXPECT_EQ(go(+1), 5);
    gone = {1, 2};
    EXPECT_EQ(go(-1), -1);
    EXPECT_EQ(history.current()->page.topic.value, 5) << "where nothing is left, nothing changes";
}

TEST_F(HistoryTest, KeepsThePlaceAndTheHitOfEachPage) {
    history.shown(topic(1));
    platform::PagePlace place;
    place.passage = u"su akar"_s;
    history.stands(place, 3);
    history.shown(topic(2));
    history.stands(std::nullopt, 0);
    EXPECT_EQ(go(-1), 1);
    EXPECT_EQ(history.current()->place, place);
    EXPECT_EQ(history.current()->hit, 3);
    history.stands(std::nullopt, 5);
    EXPECT_EQ(history.current()->place, place) << "a page that did not answer keeps its place";
}

TEST(Neighbours, OfTheBookTreeGoOnIntoTheNextBook) {
    using Kind = browse::TreeNode::Kind;
    std::vector<browse::TreeNode> nodes;
    for (const auto& [kind, book, id] : {std::tuple(Kind::Author, 0, 0),
                                         {Kind::Book, 1, 0},
                                         {Kind::Topic, 1, 11},
                                         {Kind::Book, 2, 0},
                                         {Kind::Book, 3, 0},
                                         {Kind::Topic, 3, 11}}) {
        browse::TreeNode node;
        node.kind = kind;
        node.book = {book};
        node.topic = {id};
        nodes.push_back(node);
    }
    for (const auto& [from, step, to] :
         {std::tuple(2, 1, 5), {5, -1, 2}, {5, 1, -1}, {2, -1, -1}, {-1, 1, 2}, {-1, -1, 5}})
        EXPECT_EQ(browse::neighbourTopic(nodes, from, step), to) << from << ' ' << step;
    EXPECT_EQ(browse::topicNode(nodes, {11}, {3}), 5) << "a topic with two headings";
    EXPECT_EQ(browse::topicNode(nodes, {11}, {9}), 2);
    EXPECT_EQ(browse::topicNode(nodes, {12}, {3}), -1);
}

TEST(Neighbours, OfTheResultTreeAreFoundTopicsOfTheRun) {
    using search::NodeKind;
    search::ResultTree tree;
    const auto add = [&](search::ResultNode* parent, NodeKind kind, search::NodeValue tag) {
        search::ResultNode node;
        node.kind = kind;
        node.tag = std::move(tag);
        return &tree.add(parent, std::move(node));
    };
    EXPECT_EQ(search::outermostTopic(tree, 1), nullptr);
    std::vector<search::ResultNode*> topics;
    for (const qint64 run : {1, 2}) {
        auto* root = add(nullptr, NodeKind::Run, run);
        for (const int author : {0, 1}) {
            auto* above = add(root, NodeKind::Author, {});
            add(above, NodeKind::Summary, u"OZET%1"_s.arg(author));
            for (const int book : {1, 2}) {
                auto* shelf = add(above, NodeKind::Book, {});
                for (const int id : {1, 2})
                    topics.push_back(add(shelf, NodeKind::Topic, qint64(100 * book + id)));
            }
        }
    }
    const std::size_t half = topics.size() / 2;
    for (std::size_t n = 0; n < half; ++n) {
        EXPECT_EQ(search::neighbourTopic(*topics[n], 1), n + 1 < half ? topics[n + 1] : nullptr) << n;
        EXPECT_EQ(search::neighbourTopic(*topics[n], -1), n > 0 ? topics[n - 1] : nullptr) << n;
    }
    EXPECT_EQ(search::outermostTopic(tree, 1), topics[half]);
    EXPECT_EQ(search::outermostTopic(tree, -1), topics.back());
    EXPECT_EQ(search::nodeOf(tree, search::pageOf(*topics[half])), topics[half]) << "of its own run";
    tree.removeLastRun();
    EXPECT_EQ(search::nodeOf(tree, {PageIdentity::Kind::MarkedPage, {101}, {}, 0, 2, 0}), nullptr);
    const search::ResultNode& summary = *tree.run(0).children[1]->children[0];
    EXPECT_EQ(search::pageOf(summary), (PageIdentity{PageIdentity::Kind::Summary, {}, {}, 0, 1, 1}));
    EXPECT_EQ(search::nodeOf(tree, search::pageOf(summary)), &summary);
}
