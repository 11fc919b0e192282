// Where everything of a book goes, made from the scans before a text is written: which entry owns which
// passage, which notes move, what links lead to.
#pragma once

#include <QHash>
#include <vector>

#include "tools/book_reader/outline.h"

namespace lirovan::book_reader {

/// A note that moves to the end of the entry that refers to it.
struct Note {
    int entry = 0;
    int document = 0;
    quint32 first = 0, last = 0;  ///< Start and End of its element
    QString marker;               ///< digits of its reference, for lists; else empty
    QByteArray backPlace;         ///< set where the note has no link back: the place of its reference
};

struct LinkTarget {
    int entry = -1;    ///< -1: nowhere in the book
    QByteArray place;  ///< empty: its beginning
};

class Plan {
  public:
    Plan(const Package& package, std::vector<DocumentScan> scans, std::vector<Link> links,
         const QStringList& covers);

    Outline outline;
    std::vector<Note> notes;  ///< in the order of their references

    LinkTarget target(const Link& link) const;
    const Link* linkAt(int document, quint32 token) const;
    /// The note that begins at a token, or -1.
    int noteAt(int document, quint32 token) const;
    /// The place that stands for an id, or for the link at `token`; empty where nothing leads there.
    QByteArray placeOf(int document, const QString& id) const;
    QByteArray referencePlace(int document, quint32 token) const;

  private:
    struct Found {
        int document = -1;
        QString id;
        const Place* place = nullptr;
    };
    Found find(const Link& link) const;
    bool linksBack(const Link& link, const Found& found) const;
    bool isNote(const Link& link, const Found& found) const;
    bool staysInPlace(const Link& link, const Found& found, int owner) const;
    void findNotes();
    void addNote(const Link& link, const Found& found);
    void namePlaces();
    size_t firstLink(int document, quint32 token) const;

    std::vector<DocumentScan> scans_;
    std::vector<Link> links_;
    QHash<QString, int> numbers_;
    QHash<QPair<int, QString>, QByteArray> places_;
    QHash<QPair<int, quint32>, QByteArray> references_;
    QHash<QPair<int, quint32>, int> notesAt_;
    std::vector<std::vector<int>> notesOf_;  // by document, to find overlaps
    std::vector<bool> refersToItself_;       // documents with references to notes of their own
};

}  // namespace lirovan::book_reader
