// The frame that every generated page shares: head, frame table, header row, title row, content row.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include "data/ids.h"

namespace lirovan::browse {

/// What stands around the content of a page. The texts go onto the page as they are, markup included.
struct PageFrame {
    QString title;       ///< in the head and in the title row
    QString bookName;    ///< left cell of the header row
    QString authorName;  ///< right cell
    data::BookId book;   ///< book 32 has a narrow name cell: 40 % and 60 % instead of 60 % and 40 %
    /// The topic page has a grey page background, the highlighted page none.
    enum class Background { Grey, None } background = Background::Grey;
};

/// The whole page as one text without line breaks between its pieces.
QString framedPage(const PageFrame& frame, QStringView content);

/// The bytes of a page file: the page in windows-1254 and a line end (CR LF).
QByteArray pageBytes(QStringView page);

}  // namespace lirovan::browse
