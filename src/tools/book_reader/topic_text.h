// Writes the text of one topic after another. Elements are opened when something that is read stands in them,
// so that empty ones never appear; text outside a paragraph gets one; a word that tags split is put together.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace lirovan::book_reader {

class TopicText {
  public:
    /// `holdsText`: a paragraph, heading, list item, cell: it needs no paragraph for its text. `textOnly`: it
    /// cannot hold another block. `keepEmpty`: it stays without content (cells).
    struct BlockKind {
        QByteArray name;
        QByteArray attributes;  ///< with a blank in front
        bool holdsText = false, textOnly = false, keepEmpty = false, keepLines = false;
    };

    void openBlock(const BlockKind& kind);
    void closeBlock();
    /// The beginning or end of an element that only divides.
    void boundary();

    /// `name` empty: an element without output, for the balance.
    void openInline(const QByteArray& name, const QByteArray& attributes = {});
    void closeInline();

    /// Raw text of the source; `counts`: it belongs to the source's words.
    void text(QString piece, bool counts = true);
    void lineBreak();
    void rule();
    void picture(const QByteArray& attributes);
    /// A place that links lead to, at what is written next.
    void place(const QByteArray& id);
    /// Written before the first text that follows, inside its paragraph.
    void before(const QByteArray& markup) { before_ = markup; }

    /// Ends the topic and begins the next one inside the same elements.
    struct Finished {
        QByteArray text;  ///< UTF-8; empty where nothing was read
        qint64 words = 0;
        bool hasPictures = false;
    };
    Finished take();
    qsizetype size() const { return out_.size(); }

  private:
    struct Block {
        BlockKind kind;
        bool written = false, implicit = false;
        bool reopened = false;  ///< its beginning stands in an earlier topic, or before a block inside it
    };
    struct Inline {
        quint64 serial;
        QByteArray name, attributes;
    };

    bool sameInlines() const;
    bool joinsOpening() const;
    void takeWordEnd(QString& piece);
    void settle();
    void closeExtra();
    void appendBlank();
    void flush();
    void endInlines();
    void endRun();
    void writeBlocks();
    void ensureHolder();
    void writePlaces();
    void closeImplicit();
    void suspendTextOnly();
    Block* innermost() { return blocks_.empty() ? nullptr : &blocks_.back(); }

    QByteArray out_;
    QString run_;  // text not yet in its final form, inside `written_`
    QByteArray before_;
    std::vector<Block> blocks_;
    std::vector<Inline> wanted_, written_;
    std::vector<QByteArray> places_;
    std::vector<bool> silent_;  // per open inline: whether it has no output
    quint64 serial_ = 0;
    bool blankBefore_ = true;   // at a block's beginning, or behind a blank
    bool breakWanted_ = false;  // between two divisions of one holder
    bool wroteInBlock_ = false;
    bool inWord_ = false;  // a counted word has not ended yet
    bool runCounts_ = true;
    qint64 words_ = 0;
    bool pictures_ = false;
};

}  // namespace lirovan::book_reader
