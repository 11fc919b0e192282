// The texts of all entries, and the last decisions about them: which entries are topics, which only levels,
// and what their titles are.
#pragma once

#include <map>
#include <vector>

#include "tools/book_reader/lines.h"
#include "tools/book_reader/outline.h"
#include "tools/book_reader/pictures.h"
#include "tools/book_reader/topic_text.h"

namespace lirovan::book_reader {

class FinishedBook {
  public:
    explicit FinishedBook(const Outline& outline);

    void append(int entry, const TopicText::Finished& piece);
    /// Notes stand at the end of their entry in the order of their numbers.
    void appendNote(int entry, int note, TopicText::Finished text);

    Result<void> write(Pictures& pictures, bool withPictures, Lines& lines);

  private:
    struct Part {
        Entry entry;
        QByteArray text;
        qint64 words = 0;
        bool hasPictures = false;
        bool isTopic = false;
        bool isDropped = false;
        int number = -1;   ///< of its line
        int carrier = -1;  ///< the entry that has its text
        std::map<int, TopicText::Finished> notes;
    };

    void joinNotes();
    void chooseTopics();
    void carryLevels();
    void carry(size_t from, size_t to, bool before);
    void nameTopics();
    void numberLines();
    Result<void> writeTopic(const Part& part, Pictures& pictures, bool withPictures, Lines& lines);

    std::vector<Part> parts_;
    std::map<int, int> pictureNumbers_;
    qint64 pictureBytes_ = 0;
};

}  // namespace lirovan::book_reader
