// Turns a document's elements into topic texts: what carries reading stays, everything else goes; where an
// entry begins, a new text begins.
#pragma once

#include <functional>

#include "tools/book_reader/pictures.h"
#include "tools/book_reader/plan.h"
#include "tools/book_reader/topic_text.h"

namespace lirovan::book_reader {

class Cleaner {
  public:
    /// Called with what belongs to an entry, piece by piece in reading order; a piece may be empty.
    using Sink = std::function<void(int entry, TopicText::Finished piece)>;
    /// Called with the text of a note that moves.
    using NoteSink = std::function<void(int note, TopicText::Finished text)>;

    Cleaner(const Plan& plan, Pictures& pictures, Sink sink, NoteSink noteSink)
        : plan_(plan), pictures_(pictures), sink_(std::move(sink)), noteSink_(std::move(noteSink)) {}

    /// Documents come in reading order. `language` decides the direction where the document says none.
    void clean(const Markup& markup, int document, const QString& name, const QString& language);
    /// The last entry ends.
    void finish();

  private:
    struct Open {
        quint32 token = 0;
        int blocks = 0;  // to close
        int inlines = 0;
        bool boundary = false;
        bool leavesRightToLeft = false, rightToLeftBefore = false;
        bool quote = false;
        QString address;  // foreign, to be shown behind the link's text
    };

    quint32 start(quint32 i);
    void end(quint32 i);
    void block(quint32 i, const TagRule& rule, Open& open);
    void inlineElement(quint32 i, const TagRule& rule, Open& open);
    void link(quint32 i, Open& open);
    quint32 picture(quint32 i);
    void showPicture(int number, std::string_view alt);
    void drawing(quint32 i);
    void placesAt(quint32 i);
    void beginEntries(quint32 token);
    void beginNote(quint32 i, int note);
    void endNote();
    bool changesDirection(quint32 i, bool& rightToLeft) const;

    const Plan& plan_;
    Pictures& pictures_;
    Sink sink_;
    NoteSink noteSink_;
    const Markup* markup_ = nullptr;
    int document_ = 0;
    QString name_;
    size_t nextCut_ = 0;
    int entry_ = -1;
    bool rightToLeft_ = false;
    TopicText main_, noteText_;
    TopicText* text_ = &main_;
    int note_ = -1;
    std::vector<Open> open_;
};

}  // namespace lirovan::book_reader
