// What must be known of every document before the first text is written: where links lead, where headings
// stand, which passages are notes.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <vector>

#include "tools/book_reader/markup.h"

namespace lirovan::book_reader {

/// A place in the book: number of the document in reading order and token in it. Ordered as the book is read.
struct Position {
    int document = -1;
    quint32 token = 0;
    friend auto operator<=>(const Position&, const Position&) = default;
};

/// An element with an id.
struct Place {
    quint32 token = 0;       ///< where its text begins; an id inside a heading stands for the heading
    quint32 bodyFirst = 0;   ///< the block that it names or stands in, if that may be a note
    quint32 bodyLast = 0;    ///< its End; 0: no note
    bool typedNote = false;  ///< it says that it is a note
    quint32 notesPart = 0;   ///< where the part of the book begins that says that it holds notes; 0: none
};

struct Link {
    int document = 0;
    quint32 token = 0, end = 0;
    QString target;  ///< name of a document; empty: foreign
    QString fragment;
    bool typedReference = false;  ///< it says that it leads to a note
    bool isMarker = false;        ///< its text is a number or sign
    QString marker;               ///< its digits, if it has nothing else but brackets
    std::vector<QString> ownIds;  ///< what a link back would name
};

struct Heading {
    quint32 token = 0;
    int level = 1;
    QString text;
    bool isTitle = false;  ///< marked as the title of the whole
};

struct DocumentScan {
    QString title, language;
    qint64 words = 0;
    int pictures = 0;
    bool saysCover = false;
    QHash<QString, Place> places;
    std::vector<Heading> headings;
    QString firstWords;
    QString author;  ///< HTML: <meta name="author">
};

/// Scans one document; its links are appended to `links`.
DocumentScan scanDocument(const Markup& markup, int number, const QString& name, std::vector<Link>& links);

/// A fragment with its percent signs decoded.
QString decodedFragment(const QString& fragment);

}  // namespace lirovan::book_reader
