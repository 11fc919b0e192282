// tvw_Kitaplar_Bul without its widget: the nodes of all runs that the result tree holds.
//
// Keys and texts are what the tree shows and names; nodes are found by their address, since keys of different
// runs can coincide ("ana1" + "11" and "ana11" + "1").
#pragma once

#include <QString>
#include <deque>
#include <memory>
#include <variant>
#include <vector>

namespace lirovan::search {

enum class NodeKind { Run, Author, Summary, Book, Topic };

/// An image or tag: none, a number, or a text.
using NodeValue = std::variant<std::monostate, qint64, QString>;

struct ResultNode {
    NodeKind kind = NodeKind::Run;
    QString key;
    QString text;
    NodeValue image;
    NodeValue tag;
    qint64 headingRow = 0;         ///< topics: id of the heading's row in tbl_KonuBaslik
    ResultNode* parent = nullptr;  ///< null: the root of a run
    int row = 0;                   ///< position among its siblings
    std::vector<ResultNode*> children = {};

    /// The root of the run that the node belongs to.
    const ResultNode& root() const { return parent ? parent->root() : *this; }
    /// The number in the tag; 0 where it holds none.
    qint64 tagNumber() const;
};

class ResultTree {
  public:
    /// Told of every change as it happens; a widget may show it later.
    class Listener {
      public:
        virtual ~Listener() = default;
        virtual void nodeAdded(ResultNode& node) = 0;  ///< last of its siblings
        virtual void textChanged(ResultNode& node) = 0;
        virtual void aboutToRemove(ResultNode& root) = 0;  ///< the last run, with all its nodes
        virtual void removed() = 0;
    };

    void setListener(Listener* listener) { listener_ = listener; }

    /// Adds behind the parent's other children; without parent it is the root of a new run. Nodes keep their
    /// addresses until their run is removed.
    ResultNode& add(ResultNode* parent, ResultNode node);
    void setText(ResultNode& node, QString text);

    /// SonuclariTemizle — removes everything.
    void SonuclariTemizle();
    /// Removes the last run.
    void removeLastRun();

    int runCount() const { return static_cast<int>(runs_.size()); }
    ResultNode& run(int index) const { return runs_[static_cast<size_t>(index)]->front(); }
    /// The nodes of a run in the order in which they were added, its root first.
    const std::deque<ResultNode>& nodes(int index) const { return *runs_[static_cast<size_t>(index)]; }

  private:
    std::vector<std::unique_ptr<std::deque<ResultNode>>> runs_;
    Listener* listener_ = nullptr;
};

}  // namespace lirovan::search
